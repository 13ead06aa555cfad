// Reading the rows of a card from data files.
#include "card/table_rows_file.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/svc/utf8.h"

namespace tabulon {
namespace {

// Thrown inside this file only and turned into a Result at each public function.
struct Failure {
  Error error;
};

[[noreturn]] void Fail(std::string message, const std::string& source, std::size_t line = 0) {
  throw Failure{MakeError(std::move(message)).inFile(source).atLine(line)};
}

template <class F>
auto Guard(F&& body) -> Result<decltype(body())> {
  try {
    return body();
  } catch (const Failure& f) {
    return f.error;
  }
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string FromGb18030(const std::string& bytes, const std::string& source) {
  iconv_t cd = iconv_open("UTF-8", "GB18030");
  if (cd == reinterpret_cast<iconv_t>(-1)) Fail("text is neither UTF-8 nor GB18030", source);
  std::string out(bytes.size() * 2 + 16, '\0');
  char* in = const_cast<char*>(bytes.data());
  std::size_t inLeft = bytes.size();
  char* dst = out.data();
  std::size_t outLeft = out.size();
  const std::size_t result = iconv(cd, &in, &inLeft, &dst, &outLeft);
  iconv_close(cd);
  if (result == static_cast<std::size_t>(-1)) Fail("text is neither UTF-8 nor GB18030", source);
  out.resize(out.size() - outLeft);
  return out;
}

std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) Fail("cannot open the data file", path.string());
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) Fail("cannot read the data file", path.string());
  return bytes;
}

std::string Utf8Of(std::string bytes, const std::string& source) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  if (svc::isValidUtf8(bytes)) return bytes;
  return FromGb18030(bytes, source);
}

// Splits text into records of fields; quoted fields may hold separators, line breaks
// and doubled quotes. Returns the records with the line each starts on.
std::vector<std::pair<int, std::vector<std::wstring>>> SplitRecords(const std::wstring& text, wchar_t separator,
                                                                    const std::string& source) {
  std::vector<std::pair<int, std::vector<std::wstring>>> records;
  std::vector<std::wstring> fields;
  std::wstring field;
  bool quoted = false, fieldStarted = false;
  int line = 1, recordLine = 1;
  const auto endRecord = [&] {
    if (fieldStarted || !fields.empty()) {
      fields.push_back(field);
      records.emplace_back(recordLine, fields);
    }
    fields.clear();
    field.clear();
    fieldStarted = false;
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (quoted) {
      if (c == L'"' && i + 1 < text.size() && text[i + 1] == L'"') {
        field += L'"';
        ++i;
      } else if (c == L'"') {
        quoted = false;
      } else {
        if (c == L'\n') ++line;
        field += c;
      }
      continue;
    }
    if (c == L'"' && field.empty()) {
      quoted = fieldStarted = true;
    } else if (c == separator) {
      fields.push_back(field);
      field.clear();
      fieldStarted = true;
    } else if (c == L'\n' || c == L'\r') {
      if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') ++i;
      endRecord();
      ++line;
      recordLine = line;
    } else {
      field += c;
      fieldStarted = true;
    }
  }
  if (quoted) Fail("a quoted field is not closed", source, recordLine);
  endRecord();
  return records;
}

KrmTableRows RowsFromTable(const std::vector<std::wstring>& header,
                           const std::vector<std::pair<int, std::vector<std::wstring>>>& records, std::size_t first,
                           const std::string& source) {
  if (header.empty() || std::all_of(header.begin(), header.end(), [](const std::wstring& h) { return h.empty(); }))
    Fail("the header row names no column", source, 1);
  KrmTableRows rows;
  for (std::size_t r = first; r < records.size(); ++r) {
    const auto& fields = records[r].second;
    if (fields.size() > header.size()) {
      Fail(std::to_string(fields.size()) + " fields, but the header names " + std::to_string(header.size()) + " columns",
           source, records[r].first);
    }
    std::map<std::wstring, std::wstring> row;
    for (std::size_t c = 0; c < header.size(); ++c) row[header[c]] = c < fields.size() ? fields[c] : L"";
    rows.push_back(std::move(row));
  }
  return rows;
}

// The fields of one line of the exchange format: each field is a quote, its text, a
// quote and a tab; there is no escaping.
std::vector<std::wstring> CutExchangeLine(std::wstring line) {
  std::vector<std::wstring> fields;
  if (!line.empty() && line.back() == L'\r') line.pop_back();
  std::size_t pos = line.starts_with(L'"') ? 1 : 0;
  while (true) {
    const std::size_t sep = line.find(L"\"\t", pos);
    if (sep == std::wstring::npos) break;
    fields.push_back(line.substr(pos, sep - pos));
    if (line.size() - (sep + 2) < 2) break;
    pos = sep + 3;
  }
  return fields;
}

std::wstring JsonText(const nlohmann::json& value) {
  if (value.is_string()) return svc::fromUtf8(value.get<std::string>());
  if (value.is_null()) return L"";
  return svc::fromUtf8(value.dump());
}


TableRowsFormat FormatOf(const std::filesystem::path& path) {
  const std::string ext = Lower(path.extension().string());
  if (ext == ".csv") return TableRowsFormat::kCsv;
  if (ext == ".tsv") return TableRowsFormat::kTsv;
  if (ext == ".json") return TableRowsFormat::kJson;
  if (ext == ".txt") return TableRowsFormat::kText;
  Fail("unknown data format \"" + ext + "\" (use .csv, .tsv, .json or .txt)", path.string());
}

KrmTableRows Delimited(const std::wstring& text, wchar_t separator, const std::string& source) {
  const auto records = SplitRecords(text, separator, source);
  if (records.empty()) Fail("the file is empty; a header row is needed", source);
  return RowsFromTable(records.front().second, records, 1, source);
}

KrmTableRows ExchangeText(const std::wstring& text, const std::string& source) {
  std::vector<std::pair<int, std::vector<std::wstring>>> records;
  std::wstringstream in(text);
  std::wstring line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    if (number > 1 && line.empty()) continue;
    records.emplace_back(number, CutExchangeLine(line));
  }
  if (records.empty()) Fail("the file is empty; a header row is needed", source);
  return RowsFromTable(records.front().second, records, 1, source);
}

KrmTableRows JsonRows(const std::string& utf8, const std::string& source) {
  nlohmann::json doc;
  try {
    doc = nlohmann::json::parse(utf8);
  } catch (const nlohmann::json::parse_error& e) {
    Fail(std::string("not valid JSON: ") + e.what(), source);
  }
  if (!doc.is_array()) Fail("expected an array of rows (one object per row)", source);
  KrmTableRows rows;
  for (std::size_t r = 0; r < doc.size(); ++r) {
    if (!doc[r].is_object()) {
      Fail("row " + std::to_string(r + 1) + " is not an object of column names to texts", source);
    }
    std::map<std::wstring, std::wstring> row;
    for (const auto& [key, value] : doc[r].items()) row[svc::fromUtf8(key)] = JsonText(value);
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

Result<TableRowsFormat> TableRowsFormatOf(const std::filesystem::path& path) {
  return Guard([&] { return FormatOf(path); });
}

Result<std::wstring> ReadTextFile(const std::filesystem::path& path) {
  return Guard([&] { return svc::fromUtf8(Utf8Of(ReadBytes(path), path.string())); });
}

Result<std::wstring> DecodeText(std::string bytes, const std::string& source) {
  return Guard([&] { return svc::fromUtf8(Utf8Of(std::move(bytes), source)); });
}

Result<KrmTableRows> ParseDelimited(const std::wstring& text, wchar_t separator, const std::string& source) {
  return Guard([&] { return Delimited(text, separator, source); });
}

Result<KrmTableRows> ParseExchangeText(const std::wstring& text, const std::string& source) {
  return Guard([&] { return ExchangeText(text, source); });
}

Result<KrmTableRows> ParseJsonRows(const std::string& utf8, const std::string& source) {
  return Guard([&] { return JsonRows(utf8, source); });
}

Result<KrmTableRows> ReadTableRows(const std::filesystem::path& path) {
  return Guard([&] {
    const TableRowsFormat format = FormatOf(path);
    const std::string source = path.string();
    if (format == TableRowsFormat::kJson) return JsonRows(Utf8Of(ReadBytes(path), source), source);
    const std::wstring text = svc::fromUtf8(Utf8Of(ReadBytes(path), source));
    switch (format) {
      case TableRowsFormat::kCsv: return Delimited(text, L',', source);
      case TableRowsFormat::kTsv: return Delimited(text, L'\t', source);
      default: return ExchangeText(text, source);
    }
  });
}

}  // namespace tabulon
