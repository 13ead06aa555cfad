// The grid projection of one card table.
#include "editor/krm_grid_ctrl.h"

#include <algorithm>

#include "drawing/cell_descriptor.h"

namespace {

constexpr int kLabelColumnWidth = 40;
constexpr int kLineHeight = 20;
constexpr int kRestoredSize = 10;

}  // namespace

std::pair<int, int> PageRowSpan(int page, int rows, int first, int next) {
  int begin = 0, end = first;
  if (page > 0) {
    begin = first + (page - 1) * next;
    end = begin + next;
  }
  begin = std::clamp(begin, 0, rows);
  end = std::clamp(end, begin, rows);
  return {begin, end};
}

bool NumericCellText(const std::wstring& text, std::wstring& out) {
  if (text.empty()) {
    out.clear();
    return true;
  }
  std::wstring digits;
  for (wchar_t c : text.substr(0, text.find(L'.'))) {
    if (c >= L'0' && c <= L'9') digits.push_back(c);
  }
  if (digits.empty()) return false;
  // The number's own form: no leading zeros.
  const auto firstNonZero = digits.find_first_not_of(L'0');
  out = firstNonZero == std::wstring::npos ? L"0" : digits.substr(firstNonZero);
  return true;
}

void KrmGridCtrl::Notify(KrmGridChange::Kind kind, KrmCellRange range) {
  if (listener_) listener_(KrmGridChange{kind, range});
}

const std::vector<std::wstring>* KrmGridCtrl::GetComboOptions(int col) const {
  const auto found = comboLists_.find(std::to_wstring(col));
  return found == comboLists_.end() ? nullptr : &found->second;
}

const KrmGridCell* KrmGridCtrl::GetCell(int row, int col) const {
  if (row < 0 || col < 0 || row >= GetRowCount() || col >= static_cast<int>(cells_[static_cast<std::size_t>(row)].size()))
    return nullptr;
  return &cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

std::wstring KrmGridCtrl::GetItemText(int row, int col) const {
  const KrmGridCell* cell = GetCell(row, col);
  if (cell == nullptr) return L"";
  if (cell->cellClass == KrmCellClass::kCheck) return cell->text == L"0" ? L"0" : L"1";
  return cell->text;
}

int KrmGridCtrl::SetItemText(int row, int col, const std::wstring& text) {
  if (GetCell(row, col) == nullptr) return 0;
  KrmGridCell& cell = cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  std::wstring value = text;
  if (cell.cellClass == KrmCellClass::kNumeric && row > 0 && col > 0 && !NumericCellText(text, value)) return 0;
  if (cell.cellClass == KrmCellClass::kCheck) value = text == L"0" ? L"0" : L"1";
  cell.text = std::move(value);
  cell.modified = true;
  modified_ = true;
  Notify(KrmGridChange::Kind::kCells, {row, col, row, col});
  return 1;
}

int KrmGridCtrl::ToggleCheck(int row, int col) {
  const KrmGridCell* cell = GetCell(row, col);
  if (cell == nullptr || cell->cellClass != KrmCellClass::kCheck) return 0;
  return SetItemText(row, col, cell->text == L"0" ? L"1" : L"0");
}

void KrmGridCtrl::SetSelectedText(const std::wstring& text) {
  if (selection_.IsValid()) SetItemText(selection_.top, selection_.left, text);
}

int KrmGridCtrl::GetModified(int row, int col) const {
  if (row < 0 && col < 0) return modified_ ? 1 : 0;
  const KrmGridCell* cell = GetCell(row, col);
  return cell != nullptr && cell->modified ? 1 : 0;
}

void KrmGridCtrl::SetModified(bool modified) {
  modified_ = modified;
  for (auto& row : cells_) {
    for (auto& cell : row) cell.modified = modified;
  }
}

void KrmGridCtrl::MakeCell(int row, int col) {
  KrmGridCell& cell = cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  const std::wstring& kind = ctrlTypes_[static_cast<std::size_t>(col)];
  cell.readOnly = false;
  cell.comboStyle = 0;
  cell.cellClass = KrmCellClass::kText;
  if (kind == L"LG_CBS_DROPDOWN" || kind == L"LG_CBS_DROPDOWNLIST" || kind == L"LG_CBS_SIMPLE") {
    // A combo without options is an ordinary text cell.
    if (GetComboOptions(col) != nullptr) {
      cell.cellClass = KrmCellClass::kCombo;
      cell.comboStyle = kind == L"LG_CBS_SIMPLE" ? kKrmComboSimple : kind == L"LG_CBS_DROPDOWN" ? kKrmComboDropDown : kKrmComboDropDownList;
    }
  } else if (kind == L"LG_EDITNUMERIC") {
    cell.cellClass = KrmCellClass::kNumeric;
  } else if (kind == L"LG_DATETIME") {
    cell.cellClass = KrmCellClass::kDateTime;
  } else if (kind == L"LG_CELLCHECK") {
    cell.cellClass = KrmCellClass::kCheck;
    cell.readOnly = true;  // the box reacts to the mouse alone
  } else if (kind != L"LG_EDIT") {
    cell.readOnly = true;  // "LG_NONE" and kinds the factory does not know
  }
}

void KrmGridCtrl::LoadData(const KrmDataGrid& grid, int page) {
  gridData_ = grid;
  page_ = page;
  KrmDataGrid shown = grid;
  if (page != -1) {
    const auto [begin, end] = PageRowSpan(page, grid.RowCount(), grid.rowsFirst, grid.rowsNext);
    for (KrmDataTCol& col : shown.cols) {
      const int size = static_cast<int>(col.values.size());
      col.values.assign(col.values.begin() + std::min(begin, size), col.values.begin() + std::min(end, size));
    }
  }
  const int rows = shown.RowCount() + 1;
  const int cols = static_cast<int>(shown.cols.size()) + 1;
  cells_.assign(static_cast<std::size_t>(rows), std::vector<KrmGridCell>(static_cast<std::size_t>(cols)));
  rowHeights_.assign(static_cast<std::size_t>(rows), kLineHeight);
  colWidths_.assign(static_cast<std::size_t>(cols), kLabelColumnWidth);
  for (int r = 1; r < rows; ++r) {
    cells_[static_cast<std::size_t>(r)][0].text = std::to_wstring(r);
    cells_[static_cast<std::size_t>(r)][0].format = kKrmFormatCentre;
  }

  // Columns: headers, kinds and option lists, then every data cell's class.
  std::vector<KrmAttSet> atts;
  ctrlTypes_.assign(1, L"");
  for (int c = 1; c < cols; ++c) {
    const KrmAttSet& att = shown.cols[static_cast<std::size_t>(c - 1)].att;
    atts.push_back(att);
    KrmGridCell& header = cells_[0][static_cast<std::size_t>(c)];
    header.text = att.GetShowName();
    header.format = kKrmFormatCentre;
    colWidths_[static_cast<std::size_t>(c)] = 8 * static_cast<int>(att.GetShowName().size()) + 8;
    ctrlTypes_.push_back(ControlKindOfWord(att.GetCtrType()));
  }
  comboLists_.clear();
  BuildControlLists(atts, comboLists_);
  for (int r = 1; r < rows; ++r) {
    for (int c = 1; c < cols; ++c) MakeCell(r, c);
  }

  autoNumGridCol_ = 0;
  for (int c = 1; c < cols; ++c) {
    if (shown.cols[static_cast<std::size_t>(c - 1)].isAutoNum) {
      autoNumGridCol_ = c;
      break;
    }
  }
  cells_[0][static_cast<std::size_t>(autoNumGridCol_)].textColour = kKrmAutoNumColour;
  for (int c = 1; c < cols; ++c) {
    if (shown.cols[static_cast<std::size_t>(c - 1)].att.GetRowType() == kKrmRowNewline)
      cells_[0][static_cast<std::size_t>(c)].textColour = kKrmNewlineColour;
  }

  for (int c = 1; c < cols; ++c) {
    const KrmDataTCol& col = shown.cols[static_cast<std::size_t>(c - 1)];
    const std::wstring& align = col.att.GetAlignType();
    const int format = align == L"RIGHT" ? kKrmFormatRight : align == L"CENTER" ? kKrmFormatCentre : kKrmFormatLeft;
    for (int r = 1; r < rows; ++r) {
      KrmGridCell& cell = cells_[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
      std::wstring text = shown.GetCell(r - 1, c - 1);
      if (cell.cellClass == KrmCellClass::kNumeric) {
        if (!NumericCellText(text, cell.text)) cell.text.clear();
      } else if (cell.cellClass == KrmCellClass::kCheck) {
        cell.text = text == L"0" ? L"0" : L"1";
      } else {
        cell.text = std::move(text);
      }
      cell.format = format;
    }
  }
  AutoSizeRows();
  SetModified(false);
  selection_ = {};
  focus_ = {-1, -1};
  LoadFont(1);
  Notify(KrmGridChange::Kind::kRebuilt);
}

int KrmGridCtrl::TextWidth(const std::wstring& text) const {
  int widest = 0, width = 0;
  for (wchar_t c : text) {
    if (c == L'\n') {
      widest = std::max(widest, width);
      width = 0;
    } else if (c != L'\r') {
      width += c >= 0x2E80 ? 14 : 8;
    }
  }
  return std::max(widest, width) + 8;
}

int KrmGridCtrl::GetColumnWidth(int col) const {
  return col >= 0 && col < static_cast<int>(colWidths_.size()) ? colWidths_[static_cast<std::size_t>(col)] : 0;
}

void KrmGridCtrl::SetColumnWidth(int col, int width) {
  if (col < 0 || col >= static_cast<int>(colWidths_.size())) return;
  colWidths_[static_cast<std::size_t>(col)] = std::max(width, 0);
  Notify(KrmGridChange::Kind::kColumnSizes, {0, col, GetRowCount() - 1, col});
}

int KrmGridCtrl::GetRowHeight(int row) const {
  return row >= 0 && row < static_cast<int>(rowHeights_.size()) ? rowHeights_[static_cast<std::size_t>(row)] : 0;
}

void KrmGridCtrl::SetRowHeight(int row, int height) {
  if (row < 0 || row >= static_cast<int>(rowHeights_.size())) return;
  rowHeights_[static_cast<std::size_t>(row)] = std::max(height, 0);
  Notify(KrmGridChange::Kind::kRowSizes, {row, 0, row, GetColumnCount() - 1});
}

void KrmGridCtrl::AutoSizeColumn(int col) {
  if (col < 0 || col >= GetColumnCount()) return;
  int width = 0;
  for (int r = 0; r < GetRowCount(); ++r) width = std::max(width, TextWidth(GetItemText(r, col)));
  SetColumnWidth(col, width);
}

void KrmGridCtrl::AutoSizeRow(int row) {
  if (row < 0 || row >= GetRowCount()) return;
  int lines = 1;
  for (int c = 0; c < GetColumnCount(); ++c) {
    const std::wstring text = GetItemText(row, c);
    lines = std::max(lines, static_cast<int>(std::count(text.begin(), text.end(), L'\n')) + 1);
  }
  SetRowHeight(row, lines * kLineHeight);
}

void KrmGridCtrl::AutoSizeColumns() {
  for (int c = 0; c < GetColumnCount(); ++c) {
    if (GetColumnWidth(c) > 0) AutoSizeColumn(c);
  }
}

void KrmGridCtrl::AutoSizeRows() {
  for (int r = 0; r < GetRowCount(); ++r) {
    if (GetRowHeight(r) > 0) AutoSizeRow(r);
  }
}

void KrmGridCtrl::SetSelectedRange(int top, int left, int bottom, int right) {
  selection_ = {top, left, bottom, right};
  Notify(KrmGridChange::Kind::kSelection, selection_);
}

void KrmGridCtrl::SetFocusCell(int row, int col) {
  focus_ = {row, col};
  Notify(KrmGridChange::Kind::kSelection, {row, col, row, col});
}

KrmGridCtrl::ReturnMove KrmGridCtrl::OnChar(wchar_t ch) {
  if (ch != L'\r' || enterGuard_ == 1) {
    enterGuard_ = 0;
    return ReturnMove::kNone;
  }
  int r = selection_.top;
  if (r == GetRowCount() - 1 && isMainTable_ == 0) r -= 1;  // a single-record table stays on its last row
  const int next = r + 1;
  if (next < GetRowCount() || pageMode_ == 0) {
    SetSelectedRange(next, 0, next, 0);
    SetFocusCell(next, 0);
    return ReturnMove::kMoved;
  }
  const int limit = page_ != 0 ? gridData_.rowsNext : gridData_.rowsFirst;
  if (r < limit) {
    SetSelectedRange(next, 0, next, 0);
    SetFocusCell(next, 0);
    return ReturnMove::kMoved;
  }
  SetSelectedRange(0, 0, 0, 0);
  SetFocusCell(0, 0);
  pageWrap_ = 1;
  enterGuard_ = 1;
  return ReturnMove::kWrapped;
}

void KrmGridCtrl::OnLabelClick(bool onRowLabel, bool onColumnHeader) {
  if (onRowLabel) SetFocusCell(selection_.top, 1);
  if (onColumnHeader) SetFocusCell(1, selection_.left);
}

void KrmGridCtrl::ToggleRowHeader() {
  if (GetColumnWidth(0) <= 0) {
    SetColumnWidth(0, kRestoredSize);
    AutoSizeColumn(0);
  } else {
    SetColumnWidth(0, 0);
  }
}

void KrmGridCtrl::ToggleColHeader() {
  if (GetRowHeight(0) <= 0) {
    SetRowHeight(0, kRestoredSize);
    AutoSizeRow(0);
  } else {
    SetRowHeight(0, 0);
  }
  if (selection_.IsValid()) {
    for (int c = selection_.left; c <= selection_.right; ++c) AutoSizeColumn(c);
  }
}

void KrmGridCtrl::HideRange(bool rows, bool hide) {
  if (!selection_.IsValid()) return;
  const int first = rows ? selection_.top : selection_.left;
  const int last = rows ? selection_.bottom : selection_.right;
  for (int i = first; i <= last; ++i) {
    if (rows) {
      SetRowHeight(i, hide ? 0 : kRestoredSize);
      if (!hide) AutoSizeRow(i);
    } else {
      SetColumnWidth(i, hide ? 0 : kRestoredSize);
      if (!hide) AutoSizeColumn(i);
    }
  }
}

void KrmGridCtrl::ApplySize(bool rows, int value) {
  if (!selection_.IsValid()) return;
  const int first = rows ? selection_.top : selection_.left;
  const int last = rows ? selection_.bottom : selection_.right;
  for (int i = first; i <= last; ++i) rows ? SetRowHeight(i, value) : SetColumnWidth(i, value);
}

void KrmGridCtrl::LoadFont(int read) {
  if (read) {
    KrmGridFont stored = font_;
    if (ReadGridFont(settings_, stored) && !(stored == font_)) {
      font_ = stored;
      Notify(KrmGridChange::Kind::kFont);
    }
  } else {
    WriteGridFont(settings_, font_);
  }
}

void KrmGridCtrl::ChooseFont(const KrmGridFont& font) {
  font_ = font;
  font_.faceName = font_.faceName.substr(0, 32);
  Notify(KrmGridChange::Kind::kFont);
  LoadFont(0);
}
