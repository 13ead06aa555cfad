// A small Excel 97-2003 (.xls) writer: one sheet of text and number cells in a BIFF8
// workbook stream inside a compound file. Texts that read back exactly as numbers are
// stored as numbers; empty texts leave the cell empty.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/svc/result.h"

namespace tabulon::editor {

using TextRows = std::vector<std::vector<std::wstring>>;

// The bytes of the file. Fails past 65,536 rows or 256 columns, the format's limits.
Result<std::string> BuildXlsWorkbook(const TextRows& rows, const std::wstring& sheetName = L"Sheet1");
// Writes them to `path` through a temporary file beside it, so a failure keeps an old file.
Status WriteXlsFile(const std::filesystem::path& path, const TextRows& rows);

}  // namespace tabulon::editor
