// The spreadsheet file of one exchange.
#include "editor/excel_operate.h"

#include <algorithm>

#include "editor/xls_reader.h"
#include "editor/xls_writer.h"
#include "editor/xlsx_reader.h"
#include "editor/xlsx_writer.h"
#include "host/svc/utf8.h"

using namespace tabulon;
using namespace tabulon::editor;

int CMyExcelOperate::Fail(Error error) {
  error_ = std::move(error);
  return 0;
}

int CMyExcelOperate::CreateExcelFile(const std::wstring& path) {
  mode_ = Mode::kCreated;
  path_ = path;
  written_.clear();
  read_.clear();
  return 1;
}

int CMyExcelOperate::OpenExcelFile(const std::wstring& path) {
  if (mode_ == Mode::kCreated && path == path_) {
    mode_ = Mode::kWriting;
    return 1;
  }
  mode_ = Mode::kNone;
  path_ = path;
  digits_.clear();
  auto table = xlsx_ ? ReadXlsxFile(svc::toPath(path)) : ReadXlsFile(svc::toPath(path));
  if (!table.ok()) return Fail(table.error());
  read_ = std::move(table).value();
  mode_ = Mode::kReading;
  return 1;
}

int CMyExcelOperate::WriteExcelDataA(int row, const std::vector<std::wstring>& cells) {
  if (mode_ != Mode::kWriting) return Fail(MakeError("no workbook is open for writing"));
  if (row < 0 || row >= (xlsx_ ? 1048576 : 65536)) return Fail(MakeError("row " + std::to_string(row + 1) + " is past the sheet's end"));
  written_[row] = cells;
  return 1;
}

int CMyExcelOperate::GetColumnCount() const {
  if (mode_ == Mode::kReading) return SheetColumnCount(read_);
  std::size_t widest = 0;
  for (const auto& [row, cells] : written_) widest = std::max(widest, cells.size());
  return static_cast<int>(widest);
}

int CMyExcelOperate::GetRowCount() const {
  if (mode_ == Mode::kReading) return static_cast<int>(read_.size());
  return written_.empty() ? 0 : written_.rbegin()->first + 1;
}

int CMyExcelOperate::SetDigitNum(int digits) {
  digits_.push_back(digits);
  return 1;
}

int CMyExcelOperate::ReadData(int row, int columns, std::vector<std::wstring>& out) const {
  out.clear();
  if (mode_ != Mode::kReading || row < 0 || row >= static_cast<int>(read_.size())) return 0;
  const auto& cells = read_[static_cast<std::size_t>(row)];
  for (int c = 0; c < columns; ++c) {
    const int digits = c < static_cast<int>(digits_.size()) ? digits_[static_cast<std::size_t>(c)] : 0;
    out.push_back(c < static_cast<int>(cells.size()) ? CellText(cells[static_cast<std::size_t>(c)], digits) : L"");
  }
  return 1;
}

int CMyExcelOperate::CloseExcelFile() {
  const Mode mode = mode_;
  mode_ = Mode::kNone;
  read_.clear();
  if (mode != Mode::kWriting) return mode == Mode::kReading ? 1 : 0;
  TextRows rows(written_.empty() ? 0 : static_cast<std::size_t>(written_.rbegin()->first) + 1);
  for (auto& [row, cells] : written_) rows[static_cast<std::size_t>(row)] = std::move(cells);
  written_.clear();
  const Status status = xlsx_ ? WriteXlsxFile(svc::toPath(path_), rows) : WriteXlsFile(svc::toPath(path_), rows);
  if (!status.ok()) return Fail(status.error());
  return 1;
}
