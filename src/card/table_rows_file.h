// Rows for a card read from data files: comma- or tab-separated text with a header row,
// JSON (an array of objects, one per row), or the editor's text exchange format (every
// field quoted and followed by a tab). Each row maps a column name, as the file's header
// gives it (show name or internal code), to the cell text. Failures name the file and,
// where it helps, the line.
#pragma once

#include <filesystem>
#include <string>

#include "card/table_rows.h"
#include "host/svc/result.h"

namespace tabulon {

enum class TableRowsFormat { kCsv, kTsv, kJson, kText };

// The format of a file by its extension: .csv, .tsv, .json, .txt (exchange format).
Result<TableRowsFormat> TableRowsFormatOf(const std::filesystem::path& path);

// Text of a file: UTF-8 (a byte-order mark is skipped), or GB18030 when the bytes are
// not valid UTF-8.
Result<std::wstring> ReadTextFile(const std::filesystem::path& path);
// The same for bytes already read; `source` names them in messages.
Result<std::wstring> DecodeText(std::string bytes, const std::string& source);

// Parsers of a whole file's text; `source` names the file in messages.
Result<KrmTableRows> ParseDelimited(const std::wstring& text, wchar_t separator, const std::string& source);
Result<KrmTableRows> ParseExchangeText(const std::wstring& text, const std::string& source);
Result<KrmTableRows> ParseJsonRows(const std::string& utf8, const std::string& source);

// Reads a data file in the format of its extension.
Result<KrmTableRows> ReadTableRows(const std::filesystem::path& path);

}  // namespace tabulon
