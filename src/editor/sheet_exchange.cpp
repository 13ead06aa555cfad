// Tables to and from spreadsheets.
#include "editor/sheet_exchange.h"

#include <algorithm>
#include <cctype>

#include "editor/excel_operate.h"
#include "host/svc/utf8.h"

namespace tabulon::editor {
namespace {

constexpr long long kMaxSheetCells = 5'000'000;

}  // namespace

Result<ExchangeColumns> ReadSheetColumns(const std::filesystem::path& path, bool xlsx, const std::vector<int>& digits) {
  CMyExcelOperate excel(xlsx);
  if (!excel.OpenExcelFile(svc::fromPath(path))) return excel.LastError();
  const int columns = excel.GetColumnCount();
  const int rows = excel.GetRowCount();
  // A table of the editor is far smaller; a sheet past this is refused, not read cell
  // by cell (one far-off cell makes a huge sheet).
  if (static_cast<long long>(rows) * columns > kMaxSheetCells)
    return MakeError("the sheet is too large to import (" + std::to_string(rows) + " rows by " + std::to_string(columns) +
                     " columns)")
        .inFile(path.string());
  for (int c = 0; c < columns && c < static_cast<int>(digits.size()); ++c) excel.SetDigitNum(digits[static_cast<std::size_t>(c)]);
  ExchangeColumns out;
  std::vector<std::wstring> cells;
  if (!excel.ReadData(0, columns, cells) || columns == 0)
    return MakeError("the sheet has no header row naming its columns").inFile(path.string()).atLine(1);
  out.names = cells;
  out.values.assign(out.names.size(), {});
  for (auto& values : out.values) values.reserve(static_cast<std::size_t>(rows));
  for (int r = 1; r < rows; ++r) {
    excel.ReadData(r, columns, cells);
    for (std::size_t i = 0; i < cells.size() && i < out.values.size(); ++i) out.values[i].push_back(std::move(cells[i]));
  }
  excel.CloseExcelFile();
  return out;
}

Status WriteSheetFile(const KrmDataGrid& grid, const std::filesystem::path& path, bool xlsx) {
  CMyExcelOperate excel(xlsx);
  const std::wstring name = svc::fromPath(path);
  if (!excel.CreateExcelFile(name) || !excel.OpenExcelFile(name)) return excel.LastError();
  std::vector<std::wstring> cells;
  for (const KrmDataTCol& col : grid.cols) cells.push_back(col.att.GetShowName());
  if (!excel.WriteExcelDataA(0, cells)) return excel.LastError();
  const int rows = grid.RowCount();
  int written = 1;
  for (int r = 0; r < rows; ++r) {
    cells.clear();
    for (const KrmDataTCol& col : grid.cols) cells.push_back(r < static_cast<int>(col.values.size()) ? col.values[static_cast<std::size_t>(r)] : L"");
    written = excel.WriteExcelDataA(r + 1, cells);
  }
  if (!written) return excel.LastError();
  if (!excel.CloseExcelFile()) return excel.LastError();
  return Status::Ok();
}

bool IsXlsPath(const std::filesystem::path& path) {
  std::string ext = path.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ext == ".xls";
}

}  // namespace tabulon::editor

bool ImportSheet(KrmDataGrid& grid, const std::wstring& path, bool xlsx, const std::vector<int>& digits) {
  auto columns = tabulon::editor::ReadSheetColumns(tabulon::svc::toPath(path), xlsx, digits);
  if (!columns.ok()) return false;
  tabulon::editor::ApplyExchangeColumns(grid, *columns);
  return true;
}

bool ExportSheet(const KrmDataGrid& grid, const std::wstring& path, bool xlsx) {
  return tabulon::editor::WriteSheetFile(grid, tabulon::svc::toPath(path), xlsx).ok();
}
