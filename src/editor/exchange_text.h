// The text exchange file of one table: one record a line, the first line the show
// names; every field written as quote, text, quote, tab, with no escaping. Written in
// UTF-8; read as UTF-8 (a byte-order mark skipped) or, when not valid UTF-8, GB18030.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "card/data_grid.h"
#include "editor/exchange_columns.h"
#include "host/svc/result.h"

namespace tabulon::editor {

// The fields of one line. A leading quote is dropped; each quote-tab ends a field, and
// when at least two characters follow it the next one (the opening quote) is skipped,
// else the line ends. Text after the last quote-tab is lost.
std::vector<std::wstring> CutExchangeLine(std::wstring_view line);

// The columns of a whole file's text: no names for an empty text (nothing to change);
// an error when the header line has no field.
Result<ExchangeColumns> ParseExchangeText(std::wstring_view text, const std::string& source);
Result<ExchangeColumns> ReadExchangeFile(const std::filesystem::path& path);

// The file's text for a table: all rows, the count taken from the first column; a
// column with fewer rows gives empty fields.
std::wstring FormatExchangeText(const KrmDataGrid& grid);
// Writes it in UTF-8 through a temporary file, so a failure keeps an old file.
Status WriteExchangeFile(const KrmDataGrid& grid, const std::filesystem::path& path);

}  // namespace tabulon::editor

// 1 on success, also for an empty file, which changes nothing; 0 when the file can't be
// read or its header has no field, and the grid is as it was.
int ImportText(KrmDataGrid& grid, const std::wstring& path);
// 1 when the file was written, else 0.
int ExportText(const KrmDataGrid& grid, const std::wstring& path);
