// Reads the first worksheet of an .xlsx workbook into cells: shared strings, inline
// strings, numbers, booleans and formula results; other sheets are not read.
#pragma once

#include <filesystem>
#include <string>

#include "editor/sheet_table.h"
#include "host/svc/result.h"

namespace tabulon::editor {

Result<SheetTable> ReadXlsxFile(const std::filesystem::path& path);
// The same for the bytes of a file already read; `source` names them in messages.
Result<SheetTable> ReadXlsxBytes(const std::string& bytes, const std::string& source);

}  // namespace tabulon::editor
