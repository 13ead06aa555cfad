// Reads the first worksheet of an Excel 97-2003 (.xls) workbook into cells, with FreeXL.
#pragma once

#include <filesystem>

#include "editor/sheet_table.h"
#include "host/svc/result.h"

namespace tabulon::editor {

Result<SheetTable> ReadXlsFile(const std::filesystem::path& path);

}  // namespace tabulon::editor
