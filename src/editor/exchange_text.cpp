// Reading and writing the text exchange file.
#include "editor/exchange_text.h"

#include <fstream>

#include "card/table_rows_file.h"
#include "host/svc/utf8.h"

namespace tabulon::editor {

std::vector<std::wstring> CutExchangeLine(std::wstring_view line) {
  std::vector<std::wstring> fields;
  std::size_t pos = line.starts_with(L'"') ? 1 : 0;
  while (true) {
    const std::size_t sep = line.find(L"\"\t", pos);
    if (sep == std::wstring_view::npos) break;
    fields.emplace_back(line.substr(pos, sep - pos));
    if (line.size() - (sep + 2) < 2) break;
    pos = sep + 3;
  }
  return fields;
}

Result<ExchangeColumns> ParseExchangeText(std::wstring_view text, const std::string& source) {
  ExchangeColumns columns;
  std::size_t start = 0;
  std::size_t lineNumber = 0;
  while (start < text.size()) {
    std::size_t end = text.find(L'\n', start);
    if (end == std::wstring_view::npos) end = text.size();
    std::wstring_view line = text.substr(start, end - start);
    if (line.ends_with(L'\r')) line.remove_suffix(1);
    start = end + 1;
    ++lineNumber;
    std::vector<std::wstring> fields = CutExchangeLine(line);
    if (lineNumber == 1) {
      if (fields.empty()) return MakeError("the header line has no field (\"name\" and a tab)").inFile(source).atLine(1);
      columns.names = std::move(fields);
      columns.values.resize(columns.names.size());
      continue;
    }
    for (std::size_t i = 0; i < fields.size() && i < columns.values.size(); ++i) columns.values[i].push_back(std::move(fields[i]));
  }
  return columns;
}

Result<ExchangeColumns> ReadExchangeFile(const std::filesystem::path& path) {
  auto text = ReadTextFile(path);
  if (!text.ok()) return text.error();
  return ParseExchangeText(*text, path.string());
}

std::wstring FormatExchangeText(const KrmDataGrid& grid) {
  std::wstring out;
  auto field = [&out](const std::wstring& text) {
    out += L'"';
    out += text;
    out += L"\"\t";
  };
  for (const KrmDataTCol& col : grid.cols) field(col.att.GetShowName());
  out += L'\n';
  const int rows = grid.RowCount();
  for (int r = 0; r < rows; ++r) {
    for (const KrmDataTCol& col : grid.cols) field(r < static_cast<int>(col.values.size()) ? col.values[static_cast<std::size_t>(r)] : L"");
    out += L'\n';
  }
  return out;
}

Status WriteExchangeFile(const KrmDataGrid& grid, const std::filesystem::path& path) {
  const std::string bytes = svc::toUtf8(FormatExchangeText(grid));
  std::filesystem::path temp = path;
  temp += ".tmp";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out) {
      std::error_code ec;
      std::filesystem::remove(temp, ec);
      return MakeError("cannot write the text file").inFile(path.string());
    }
  }
  std::error_code ec;
  std::filesystem::rename(temp, path, ec);
  if (ec) {
    std::filesystem::remove(temp, ec);
    return MakeError("cannot replace the text file").inFile(path.string());
  }
  return Status::Ok();
}

}  // namespace tabulon::editor

int ImportText(KrmDataGrid& grid, const std::wstring& path) {
  auto columns = tabulon::editor::ReadExchangeFile(tabulon::svc::toPath(path));
  if (!columns.ok()) return 0;
  tabulon::editor::ApplyExchangeColumns(grid, *columns);
  return 1;
}

int ExportText(const KrmDataGrid& grid, const std::wstring& path) {
  return tabulon::editor::WriteExchangeFile(grid, tabulon::svc::toPath(path)).ok() ? 1 : 0;
}
