// The card editor's row and page commands, numbering, arrangement and file exchange.
#include <algorithm>
#include <limits>

#include "editor/exchange_text.h"
#include "editor/krm_dlg_create_crd.h"
#include "editor/sheet_exchange.h"
#include "host/ed/qa_message_box.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

int KrmDlgCreateCrd::TableRow(int gridRow) const {
  const int page = GetPageBox();
  if (page == 0) return gridRow;
  return gridRow + m_cardData.GetRowsFirst(m_cardData.GetCurGrid()) * (page - 1);
}

void KrmDlgCreateCrd::StoreRenumbered(KrmDataGrid& grid) {
  grid.SetAutoNumCol(grid.AutoNumCol());
  m_cardData.SetCurGridData(grid);
}

void KrmDlgCreateCrd::AddRow() {
  int row = m_grid.GetRowCount();
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  if (pageModeBox_) row = TableRow(row);
  grid.InsertRows(row - 1, 1);
  StoreRenumbered(grid);
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  ReloadGrid();
  FillPageNumbers();
  ShowPageTotal();
  m_grid.SetSelectedRange(row, 0, row, 0);
  m_grid.SetFocusCell(row, 0);
  AutoUpdate();
}

KrmDlgAddRow KrmDlgCreateCrd::ProposeInsertRows() {
  int position = m_grid.GetRowCount();
  int count = 1;
  const KrmCellRange selected = m_grid.GetSelectedCellRange();
  if (selected.IsValid()) {
    position = selected.top;
    count = selected.Count();
  }
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  return KrmDlgAddRow(count, TableRow(position));
}

void KrmDlgCreateCrd::ApplyInsertRows(const KrmDlgAddRow& dialog, bool ok) {
  if (ok && dialog.Count() >= 1) {
    KrmDataGrid grid;
    m_cardData.GetCurGridData(grid);
    grid.InsertRows(dialog.position - 1, dialog.Count());
    StoreRenumbered(grid);
    SetPageBox(m_cardData.GetCurRow() + 1, 0);
    ReloadGrid();
    FillPageNumbers();
  }
  ShowPageTotal();
  AutoUpdate();
}

KrmDlgDelRow KrmDlgCreateCrd::ProposeDeleteRows() {
  int from = 1, to = m_grid.GetRowCount() - 1;
  const KrmCellRange selected = m_grid.GetSelectedCellRange();
  if (selected.IsValid()) {
    from = selected.top;
    to = selected.bottom;
  }
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  return KrmDlgDelRow(TableRow(from), TableRow(to));
}

void KrmDlgCreateCrd::ApplyDeleteRows(const KrmDlgDelRow& dialog, bool ok) {
  if (ok && dialog.From() >= 1) {
    KrmDataGrid grid;
    m_cardData.GetCurGridData(grid);
    for (int row = dialog.To(); row >= dialog.From(); --row) {
      for (KrmDataTCol& col : grid.cols) {
        if (row - 1 < static_cast<int>(col.values.size())) col.values.erase(col.values.begin() + (row - 1));
      }
    }
    StoreRenumbered(grid);
    SetPageBox(m_cardData.GetCurRow() + 1, 0);
    ReloadGrid();
    FillPageNumbers();
    // The page shown is limited to the pages left.
    SetPageBox(m_cardData.GetCurRow() + 1, 1);
    ShowPageTotal();
    ReloadGrid();
  }
  AutoUpdate();
}

bool KrmDlgCreateCrd::CanMoveRow(bool down) const {
  const int row = m_grid.GetFocusCell().first;
  if (row < 1) return false;
  const int tableRow = TableRow(row);
  return down ? tableRow < m_grid.GetGridData().RowCount() : tableRow > 1;
}

void KrmDlgCreateCrd::MoveRow(bool down) {
  const auto [focusRow, focusCol] = m_grid.GetFocusCell();
  if (focusRow + 1 < 2) return;
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  const int r = TableRow(focusRow);
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  if (down) {
    if (r >= grid.RowCount()) return;
    grid.SwapRowDown(r - 1);
  } else {
    if (r < 2) return;
    grid.SwapRowUp(r - 1);
  }
  StoreRenumbered(grid);
  const int pageIndex = GetPageBox() - 1;
  int page = pageIndex;
  if (down && (pageIndex + 1) * grid.rowsFirst <= r) page = pageIndex + 1;
  if (!down && pageModeBox_ && pageIndex * grid.rowsFirst >= r - 1) page = pageIndex - 1;
  SetPageBox(page + 1, 0);
  ReloadGrid();
  const int moved = (down ? r + 1 : r - 1) - (pageModeBox_ ? grid.rowsFirst * (GetPageBox() - 1) : 0);
  m_grid.SetFocusCell(moved, focusCol);
  m_grid.SetSelectedRange(moved, focusCol, moved, focusCol);
  AutoUpdate();
}

void KrmDlgCreateCrd::RecalcRow() {
  int row = m_grid.GetFocusCell().first;
  if (row < 1) return;
  if (pageModeBox_) row += m_cardData.GetRowsFirst(m_cardData.GetCurGrid()) * std::max(GetPageBox() - 1, 0);
  m_cardData.RunColumnCalc(static_cast<unsigned>(row - 1), m_calcSkipZero);
  for (int c = 0; c + 1 < m_grid.GetColumnCount(); ++c) m_grid.SetCellText(row - 1, c, m_cardData.GetCell(row - 1, c));
  AutoUpdate();
}

void KrmDlgCreateCrd::RecalcAll() {
  m_cardData.RunColumnCalc(std::numeric_limits<unsigned>::max(), m_calcSkipZero);
  ReloadGrid();
  AutoUpdate();
}

KrmDlgPageSet KrmDlgCreateCrd::ProposePageSet() const {
  return KrmDlgPageSet(m_cardData.PageStep(), m_cardData.PageStartSum(), m_cardData.PageStartCur());
}

void KrmDlgCreateCrd::ApplyPageSet(const KrmDlgPageSet& dialog) {
  if (!dialog.Accept()) return;
  m_cardData.PageStep() = dialog.Step();
  m_cardData.PageStartSum() = dialog.StartSum();
  m_cardData.PageStartCur() = dialog.StartCur();
  FillPageNumbers();
  int classGrid = -1, batchGrid = -1, col = -1;
  m_cardData.GetClassCurCell(classGrid, col);
  m_cardData.GetBatchCurCell(batchGrid, col);
  if (classGrid == m_cardData.GetCurGrid() || batchGrid == m_cardData.GetCurGrid()) ReloadGrid();
}

KrmDlgArrang KrmDlgCreateCrd::ProposeArrang() const {
  KrmDlgArrang dialog;
  KrmCardDir dir;
  m_template.GetDir(dir);
  dialog.SetData(dir);
  return dialog;
}

void KrmDlgCreateCrd::ApplyArrang(const KrmDlgArrang& dialog) {
  KrmCardDir dir;
  dialog.GetData(dir);
  m_template.SetDir(dir);
}

void KrmDlgCreateCrd::OnPlacePages(bool checked) {
  placePages_ = checked;
  if (!checked) autoArrange_ = true;
}

void KrmDlgCreateCrd::OnAutoArrange(bool checked) {
  if (placePages_) autoArrange_ = checked;
}

void KrmDlgCreateCrd::ShowFileError() {
  QaMessageBox(KrmLoadString(153, L"文件格式出错！"), MB_OK | MB_ICONINFORMATION);
}

void KrmDlgCreateCrd::ImportTextFile(const std::wstring& path) {
  m_lastDataFile = path;
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  if (ImportText(grid, path)) {
    m_cardData.SetCurGridData(grid);
    ReloadGrid();
  } else {
    ShowFileError();
  }
  AutoUpdate();
}

tabulon::Status KrmDlgCreateCrd::ExportTextFile(const std::wstring& path) {
  m_lastDataFile = path;
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  return tabulon::editor::WriteExchangeFile(grid, tabulon::svc::toPath(path));
}

void KrmDlgCreateCrd::ImportSheetFile(const std::wstring& path) {
  m_lastDataFile = path;
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  std::vector<int> digits;
  for (const KrmDataTCol& col : grid.cols) digits.push_back(col.att.GetDecimalNum());
  if (ImportSheet(grid, path, !tabulon::editor::IsXlsPath(tabulon::svc::toPath(path)), digits)) {
    m_cardData.SetCurGridData(grid);
    ReloadGrid();
    FillPageNumbers();
    ShowPageTotal();
  } else {
    ShowFileError();
  }
  AutoUpdate();
}

tabulon::Status KrmDlgCreateCrd::ExportSheetFile(const std::wstring& path) {
  m_lastDataFile = path;
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  const auto file = tabulon::svc::toPath(path);
  return tabulon::editor::WriteSheetFile(grid, file, !tabulon::editor::IsXlsPath(file));
}
