// Rows for a card read from data files: comma- or tab-separated text with a header row,
// JSON (an array of objects, one per row), or the editor's text exchange format (every
// field quoted and followed by a tab). Each row maps a column name, as the file's header
// gives it (show name or internal code), to the cell text.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "drawing/card_engine.h"

namespace tabulon::cli {

// A data file that cannot be read or understood; the message names the file and, where
// it helps, the line.
struct CardInputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

enum class CardInputFormat { kCsv, kTsv, kJson, kText };

// The format of a file by its extension: .csv, .tsv, .json, .txt (exchange format).
// Throws CardInputError for any other.
CardInputFormat CardInputFormatOf(const std::filesystem::path& path);

// Text of a file: UTF-8 (a byte-order mark is skipped), or GB18030 when the bytes are
// not valid UTF-8. Throws CardInputError when the file cannot be read.
std::wstring ReadTextFile(const std::filesystem::path& path);

// Parsers of a whole file's text; `source` names the file in messages.
KrmTableRows ParseDelimited(const std::wstring& text, wchar_t separator, const std::string& source);
KrmTableRows ParseExchangeText(const std::wstring& text, const std::string& source);
KrmTableRows ParseJsonRows(const std::string& utf8, const std::string& source);

// Reads a data file in the format of its extension.
KrmTableRows ReadCardRows(const std::filesystem::path& path);

}  // namespace tabulon::cli
