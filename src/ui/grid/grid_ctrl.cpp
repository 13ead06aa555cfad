#include "ui/grid/grid_ctrl.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

#include "ui/grid/grid_clipboard.h"
#include "ui/grid/grid_delegate.h"
#include "ui/grid/grid_find.h"
#include "ui/grid/grid_model.h"

namespace tabulon::ui {

bool CGridCellBase::IsNull() const { return !grid_ || !grid_->cell(row_, col_); }

void CGridCellBase::SetTextClr(const QColor &colour) {
  if (IsNull()) return;
  GridCell c = *grid_->cell(row_, col_);
  c.textColor = colour;
  grid_->setCell(row_, col_, c);
}

void CGridCellBase::SetBackClr(const QColor &colour) {
  if (IsNull()) return;
  GridCell c = *grid_->cell(row_, col_);
  c.backColor = colour;
  grid_->setCell(row_, col_, c);
}

QString CGridCellBase::GetText() const { return IsNull() ? QString() : grid_->cell(row_, col_)->text; }

GridCellClass CGridCellBase::GetClass() const {
  return IsNull() ? GridCellClass::Text : grid_->cell(row_, col_)->cellClass;
}

CGridCtrl::CGridCtrl(QWidget *parent) : QTableView(parent) {
  model_ = new GridModel(this);
  delegate_ = new GridDelegate(*model_, this);
  setModel(model_);
  setItemDelegate(delegate_);
  setShowGrid(false);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setSelectionBehavior(QAbstractItemView::SelectItems);
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                  QAbstractItemView::EditKeyPressed);
  setWordWrap(false);
  horizontalHeader()->setSectionsClickable(true);
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &CGridCtrl::headerClicked);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &CGridCtrl::selectionToRange);
  syncHeaders();
}

CGridCtrl::~CGridCtrl() = default;

void CGridCtrl::syncHeaders() {
  horizontalHeader()->setVisible(model_->fixedRowCount() > 0 && fixedRowHeight_ > 0);
  verticalHeader()->setVisible(model_->fixedColumnCount() > 0 && fixedColumnWidth_ > 0);
  horizontalHeader()->setFixedHeight(std::max(fixedRowHeight_, 0));
  verticalHeader()->setFixedWidth(std::max(fixedColumnWidth_, 0));
}

// --- shape

bool CGridCtrl::SetRowCount(int n) {
  if (n < 0) return false;
  model_->setGridRowCount(n);
  syncHeaders();
  return true;
}

bool CGridCtrl::SetColumnCount(int n) {
  if (n < 0) return false;
  model_->setGridColumnCount(n);
  syncHeaders();
  return true;
}

bool CGridCtrl::SetFixedRowCount(int n) {
  if (n < 0 || n > 1 || n > model_->gridRowCount()) return false;
  model_->setFixedRowCount(n);
  syncHeaders();
  return true;
}

bool CGridCtrl::SetFixedColumnCount(int n) {
  if (n < 0 || n > 1 || n > model_->gridColumnCount()) return false;
  model_->setFixedColumnCount(n);
  syncHeaders();
  return true;
}

int CGridCtrl::GetRowCount() const { return model_->gridRowCount(); }
int CGridCtrl::GetColumnCount() const { return model_->gridColumnCount(); }
int CGridCtrl::GetFixedRowCount() const { return model_->fixedRowCount(); }
int CGridCtrl::GetFixedColumnCount() const { return model_->fixedColumnCount(); }

void CGridCtrl::DeleteAllItems() {
  model_->clear();
  selected_ = {};
  sortColumn_ = -1;
  syncHeaders();
}

// --- cells

const GridCell *CGridCtrl::cell(int row, int col) const { return model_->cell(row, col); }

bool CGridCtrl::setCell(int row, int col, const GridCell &cell) { return model_->setCell(row, col, cell); }

bool CGridCtrl::SetItemText(int row, int col, const QString &text) { return model_->setText(row, col, text); }

QString CGridCtrl::GetItemText(int row, int col) const { return model_->text(row, col); }

bool CGridCtrl::SetItemFormat(int row, int col, unsigned format) {
  const GridCell *c = cell(row, col);
  if (!c) return false;
  GridCell copy = *c;
  copy.format = format;
  return setCell(row, col, copy);
}

unsigned CGridCtrl::GetItemFormat(int row, int col) const {
  const GridCell *c = cell(row, col);
  return c ? c->format : 0;
}

bool CGridCtrl::SetItemState(int row, int col, unsigned state) {
  const GridCell *c = cell(row, col);
  if (!c) return false;
  GridCell copy = *c;
  copy.state = state;
  return setCell(row, col, copy);
}

unsigned CGridCtrl::GetItemState(int row, int col) const {
  const GridCell *c = cell(row, col);
  return c ? c->state : 0;
}

bool CGridCtrl::SetCellType(int row, int col, GridCellClass cellClass) {
  const GridCell *c = cell(row, col);
  if (!c) return false;
  return setCell(row, col, WithCellClass(*c, cellClass));
}

bool CGridCtrl::SetComboOptions(int row, int col, const QStringList &options, int style) {
  const GridCell *c = cell(row, col);
  if (!c || c->cellClass != GridCellClass::Combo) return false;
  GridCell copy = *c;
  copy.options = options;
  copy.comboStyle = style;
  return setCell(row, col, copy);
}

// --- sizes

int CGridCtrl::GetColumnWidth(int col) const {
  if (col < 0 || col >= GetColumnCount()) return 0;
  if (col < GetFixedColumnCount()) return fixedColumnWidth_;
  const int section = col - GetFixedColumnCount();
  return isColumnHidden(section) ? 0 : columnWidth(section);
}

bool CGridCtrl::SetColumnWidth(int col, int width) {
  if (col < 0 || col >= GetColumnCount() || width < 0) return false;
  if (col < GetFixedColumnCount()) {
    fixedColumnWidth_ = width;
    syncHeaders();
    return true;
  }
  const int section = col - GetFixedColumnCount();
  setColumnHidden(section, width == 0);
  if (width > 0) setColumnWidth(section, width);
  return true;
}

int CGridCtrl::GetRowHeight(int row) const {
  if (row < 0 || row >= GetRowCount()) return 0;
  if (row < GetFixedRowCount()) return fixedRowHeight_;
  const int section = row - GetFixedRowCount();
  return isRowHidden(section) ? 0 : rowHeight(section);
}

bool CGridCtrl::SetRowHeight(int row, int height) {
  if (row < 0 || row >= GetRowCount() || height < 0) return false;
  if (row < GetFixedRowCount()) {
    fixedRowHeight_ = height;
    syncHeaders();
    return true;
  }
  const int section = row - GetFixedRowCount();
  setRowHidden(section, height == 0);
  if (height > 0) setRowHeight(section, height);
  return true;
}

void CGridCtrl::AutoSizeColumn(int col, int, bool resetScroll) {
  if (col < 0 || col >= GetColumnCount()) return;
  if (col < GetFixedColumnCount()) {
    const QFontMetrics fm(verticalHeader()->font());
    int widest = 0;
    for (int r = 0; r < GetRowCount(); ++r) widest = std::max(widest, fm.horizontalAdvance(GetItemText(r, col)));
    SetColumnWidth(col, widest + 12);
  } else {
    resizeColumnToContents(col - GetFixedColumnCount());
  }
  if (resetScroll) horizontalScrollBar()->setValue(0);
}

void CGridCtrl::AutoSizeRow(int row, bool resetScroll) {
  if (row < 0 || row >= GetRowCount()) return;
  if (row >= GetFixedRowCount()) resizeRowToContents(row - GetFixedRowCount());
  if (resetScroll) verticalScrollBar()->setValue(0);
}

void CGridCtrl::AutoSizeColumns(int mode) {
  for (int c = 0; c < GetColumnCount(); ++c)
    if (GetColumnWidth(c) > 0) AutoSizeColumn(c, mode, false);
}

void CGridCtrl::AutoSizeRows() {
  for (int r = 0; r < GetRowCount(); ++r)
    if (GetRowHeight(r) > 0) AutoSizeRow(r, false);
}

// --- selection and focus

void CGridCtrl::selectionToRange() {
  if (settingSelection_) return;
  const QModelIndexList list = selectionModel()->selectedIndexes();
  if (list.isEmpty()) {
    selected_ = {};
    return;
  }
  CCellRange r{INT_MAX, INT_MAX, -1, -1};
  for (const QModelIndex &i : list) {
    r.minRow = std::min(r.minRow, model_->gridRow(i));
    r.maxRow = std::max(r.maxRow, model_->gridRow(i));
    r.minCol = std::min(r.minCol, model_->gridColumn(i));
    r.maxCol = std::max(r.maxCol, model_->gridColumn(i));
  }
  selected_ = r;
}

void CGridCtrl::SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRedraw, bool selectCells) {
  selected_ = {minRow, minCol, maxRow, maxCol};
  settingSelection_ = true;
  selectionModel()->clearSelection();
  if (selectCells) {
    const int r0 = std::max(minRow, GetFixedRowCount()), r1 = std::min(maxRow, GetRowCount() - 1);
    const int c0 = std::max(minCol, GetFixedColumnCount()), c1 = std::min(maxCol, GetColumnCount() - 1);
    if (r0 <= r1 && c0 <= c1)
      selectionModel()->select(QItemSelection(model_->indexOf(r0, c0), model_->indexOf(r1, c1)),
                               QItemSelectionModel::Select);
  }
  settingSelection_ = false;
  if (forceRedraw) viewport()->repaint();
}

CCellID CGridCtrl::GetFocusCell() const {
  const QModelIndex i = currentIndex();
  if (!i.isValid()) return {};
  return {model_->gridRow(i), model_->gridColumn(i)};
}

void CGridCtrl::SetFocusCell(int row, int col) {
  const QModelIndex i = model_->indexOf(row, col);
  if (i.isValid()) selectionModel()->setCurrentIndex(i, QItemSelectionModel::NoUpdate);
  else selectionModel()->clearCurrentIndex();
}

int CGridCtrl::GetScrollPos32(int bar, bool) const {
  return bar == SB_HORZ ? horizontalScrollBar()->value() : verticalScrollBar()->value();
}

bool CGridCtrl::SetScrollPos32(int bar, int pos, bool redraw) {
  QScrollBar *b = bar == SB_HORZ ? horizontalScrollBar() : verticalScrollBar();
  b->setValue(pos);
  if (redraw) viewport()->update();
  return b->value() == pos;
}

CCellID CGridCtrl::GetCellFromPt(QPoint point, bool allowFixed) const {
  const QPoint inViewport = viewport()->mapFrom(this, point);
  const int fr = GetFixedRowCount(), fc = GetFixedColumnCount();
  const bool inTop = horizontalHeader()->isVisible() && inViewport.y() < 0;
  const bool inLeft = verticalHeader()->isVisible() && inViewport.x() < 0;
  int row = inTop ? 0 : rowAt(inViewport.y());
  int col = inLeft ? 0 : columnAt(inViewport.x());
  if (!inTop) row = row < 0 ? -1 : row + fr;
  if (!inLeft) col = col < 0 ? -1 : col + fc;
  if (row < 0 || col < 0) return {};
  if (!allowFixed && (row < fr || col < fc)) return {};
  return {row, col};
}

// --- state

bool CGridCtrl::GetModified(int row, int col) const {
  if (row == -1 && col == -1) return model_->modified();
  return GetItemState(row, col) & GVIS_MODIFIED;
}

void CGridCtrl::SetModified(bool modified, int row, int col) {
  if (row == -1 && col == -1) {
    model_->setModified(modified);
    return;
  }
  const unsigned state = GetItemState(row, col);
  SetItemState(row, col, modified ? state | GVIS_MODIFIED : state & ~GVIS_MODIFIED);
}

void CGridCtrl::SetEditable(bool editable) {
  editable_ = editable;
  setEditTriggers(editable ? (QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                              QAbstractItemView::EditKeyPressed)
                           : QAbstractItemView::NoEditTriggers);
}

void CGridCtrl::SetGridLines(int mode) {
  delegate_->setGridLines(std::clamp(mode, 0, 3));
  viewport()->update();
}

int CGridCtrl::GetGridLines() const { return delegate_->gridLines(); }

// --- sorting

void CGridCtrl::SortByColumn(int col, bool ascending) {
  if (col < 0 || col >= GetColumnCount()) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  auto less = [this](const QString &a, const QString &b) {
    return compare_ ? compare_(a, b) < 0 : QString::localeAwareCompare(a, b) < 0;
  };
  model_->sortRows(col, ascending, less);
  sortColumn_ = col;
  sortAscending_ = ascending;
  QApplication::restoreOverrideCursor();
}

void CGridCtrl::headerClicked(int section) {
  if (!headerSort_) return;
  const int col = section + GetFixedColumnCount();
  SortByColumn(col, col == sortColumn_ ? !sortAscending_ : true);
}

// --- clipboard

QString CGridCtrl::SelectionText() const {
  if (!selected_.IsValid()) return {};
  QVector<QStringList> rows;
  for (int r = selected_.minRow; r <= std::min(selected_.maxRow, GetRowCount() - 1); ++r) {
    QStringList row;
    for (int c = selected_.minCol; c <= std::min(selected_.maxCol, GetColumnCount() - 1); ++c) row << GetItemText(r, c);
    rows << row;
  }
  return ToTabSeparated(rows);
}

void CGridCtrl::OnEditCopy() {
  if (!editable_ || !selected_.IsValid()) return;
  QApplication::clipboard()->setText(SelectionText());
}

void CGridCtrl::OnEditCut() {
  if (!editable_ || !selected_.IsValid()) return;
  OnEditCopy();
  for (int r = selected_.minRow; r <= std::min(selected_.maxRow, GetRowCount() - 1); ++r)
    for (int c = selected_.minCol; c <= std::min(selected_.maxCol, GetColumnCount() - 1); ++c)
      if (!(GetItemState(r, c) & GVIS_READONLY) && !GetItemText(r, c).isEmpty()) SetItemText(r, c, QString());
}

void CGridCtrl::PasteText(int row, int col, const QString &text) {
  const auto rows = FromTabSeparated(text);
  for (int i = 0; i < rows.size(); ++i)
    for (int j = 0; j < rows[i].size(); ++j) {
      const int r = row + i, c = col + j;
      if (model_->isValid(r, c) && !(GetItemState(r, c) & GVIS_READONLY)) SetItemText(r, c, rows[i][j]);
    }
}

void CGridCtrl::OnEditPaste() {
  if (!editable_) return;
  CCellID at = selected_.IsValid() ? CCellID{selected_.minRow, selected_.minCol} : GetFocusCell();
  if (!at.IsValid()) return;
  PasteText(at.row, at.col, QApplication::clipboard()->text());
}

void CGridCtrl::OnEditSelectAll() {
  if (!editable_) return;
  SetSelectedRange(GetFixedRowCount(), GetFixedColumnCount(), GetRowCount() - 1, GetColumnCount() - 1);
}

void CGridCtrl::ClearSelection() {
  if (!editable_) return;
  settingSelection_ = true;
  selectionModel()->clearSelection();
  settingSelection_ = false;
  selected_ = {};
}

// --- find and replace

void CGridCtrl::FindDialog(bool findOnly) {
  if (find_ && find_->findOnly() == findOnly) {
    find_->raise();
    find_->activateWindow();
    return;
  }
  if (find_) {
    lastSearch_ = find_->searchText();
    find_->close();  // deletes itself
  }
  const CCellID focus = GetFocusCell();
  const QString text = focus.IsValid() ? GetItemText(focus.row, focus.col) : QString();
  find_ = new GridFindDialog(*this, findOnly, strings_);
  find_->setSearchText(text.isEmpty() ? lastSearch_ : text);
  connect(find_, &QDialog::finished, this, [this] {
    if (find_) lastSearch_ = find_->searchText();
  });
  find_->show();
}

// --- printing

void CGridCtrl::Print(QPrinter *printer) {
  if (printer) {
    PrintTo(*printer);
    return;
  }
  QPrinter own;
  QPrintDialog dialog(&own, this);
  if (dialog.exec() == QDialog::Accepted) PrintTo(own);
}

int CGridCtrl::PrintTo(QPagedPaintDevice &device) {
  QPainter p;
  if (!p.begin(&device)) return 0;
  const QFont font(QStringLiteral("Arial"), 9);
  p.setFont(font);
  const QFontMetrics fm(font, &device);
  const int lineHeight = fm.height() + 6;
  const int charWidth =
      fm.horizontalAdvance(QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSATUVWXYZ")) / 52;
  const QRect page(0, 0, device.width(), device.height());
  const int footer = lineHeight * 2;
  const int rowsPerPage = std::max(1, (page.height() - footer - lineHeight) / lineHeight);  // header row repeats
  // Column widths from the screen widths, scaled so the whole grid fits the page width.
  std::vector<int> widths;
  double total = 0;
  for (int c = 0; c < GetColumnCount(); ++c) {
    widths.push_back(GetColumnWidth(c));
    total += widths.back();
  }
  const double scale = total > 0 ? page.width() / total : 1.0;
  const int dataRows = std::max(0, GetRowCount() - GetFixedRowCount());
  const int pages = std::max(1, (dataRows + rowsPerPage - 1) / rowsPerPage);
  auto printRow = [&](int row, int y) {
    double x = 0;
    for (int c = 0; c < GetColumnCount(); ++c) {
      const int w = static_cast<int>(widths[static_cast<std::size_t>(c)] * scale);
      if (w <= 0) continue;
      const QRect cellRect(static_cast<int>(x), y, w, lineHeight);
      p.drawRect(cellRect);
      p.drawText(cellRect.adjusted(charWidth / 2, 0, -charWidth / 2, 0), Qt::AlignVCenter | Qt::AlignLeft,
                 GetItemText(row, c));
      x += w;
    }
  };
  for (int page_ = 0; page_ < pages; ++page_) {
    if (page_ > 0) device.newPage();
    int y = 0;
    if (GetFixedRowCount() > 0) {
      printRow(0, y);
      y += lineHeight;
    }
    const int first = GetFixedRowCount() + page_ * rowsPerPage;
    for (int r = first; r < std::min(first + rowsPerPage, GetRowCount()); ++r, y += lineHeight) printRow(r, y);
    const QRect foot(0, page.height() - lineHeight, page.width(), lineHeight);
    p.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Page %1 of %2").arg(page_ + 1).arg(pages));
    p.drawText(foot, Qt::AlignRight | Qt::AlignVCenter, QDate::currentDate().toString(Qt::ISODate));
  }
  p.end();
  return pages;
}

void CGridCtrl::SetStrings(const UiStrings *strings) {
  strings_ = strings;
  delegate_->setStrings(strings);
}

void CGridCtrl::SetFont(const QFont &font) {
  setFont(font);
  horizontalHeader()->setFont(font);
  verticalHeader()->setFont(font);
}

// --- editing

bool CGridCtrl::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) {
  if (!editable_ && trigger != QAbstractItemView::AllEditTriggers) return false;
  delegate_->setOpenedByKey(trigger == QAbstractItemView::AnyKeyPressed);
  // A click, F2 or Return put the caret after the text; a key decides by itself, and
  // only a key that replaces the text is typed into the editor.
  EditStart start = EditStart::CaretAfterText;
  if (trigger == QAbstractItemView::AnyKeyPressed && event && event->type() == QEvent::KeyPress)
    start = EditStartFor(static_cast<QKeyEvent *>(event)->key());
  const bool opened = QTableView::edit(index, trigger, start == EditStart::ReplaceText ? event : nullptr);
  if (opened && index.isValid() && state() == QAbstractItemView::EditingState) {
    editing_ = {model_->gridRow(index), model_->gridColumn(index)};
    editStartText_ = GetItemText(editing_.row, editing_.col);
    if (auto *line = qobject_cast<QLineEdit *>(indexWidget(index) ? indexWidget(index) : focusWidget())) {
      switch (start) {
        case EditStart::CaretAfterText:
          line->deselect();
          line->setCursorPosition(static_cast<int>(line->text().size()));
          break;
        case EditStart::CaretBeforeText:
          line->deselect();
          line->setCursorPosition(0);
          break;
        case EditStart::SelectAll:
          line->selectAll();
          break;
        case EditStart::AsOpened:
        case EditStart::ReplaceText:
          break;
      }
    }
  }
  return opened;
}

void CGridCtrl::EndEditing() {
  if (!editing_.IsValid()) return;
  QWidget *editor = indexWidget(model_->indexOf(editing_.row, editing_.col));
  if (editor == nullptr) return;
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void CGridCtrl::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) {
  const CCellID cell = editing_;
  editing_ = {};
  QTableView::closeEditor(editor, hint);
  if (!cell.IsValid()) return;
  const bool reverted = hint == QAbstractItemDelegate::RevertModelCache;
  const QString text = reverted ? editStartText_ : GetItemText(cell.row, cell.col);
  emit notify(GVN_ENDLABELEDIT, cell.row, cell.col, text, reverted ? Qt::Key_Escape : delegate_->lastEndKey());
}

void CGridCtrl::keyPressEvent(QKeyEvent *event) {
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && state() != EditingState &&
      currentIndex().isValid()) {
    if (edit(currentIndex(), QAbstractItemView::EditKeyPressed, event)) return;
  }
  // Backspace and Delete start an edit too, as in a spreadsheet: the one keeps the text
  // with the caret after it, the other clears it.
  if ((event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete) && event->modifiers() == Qt::NoModifier &&
      state() != EditingState && currentIndex().isValid()) {
    if (edit(currentIndex(), QAbstractItemView::AnyKeyPressed, event)) return;
  }
  if (event->matches(QKeySequence::Copy)) return OnEditCopy();
  if (event->matches(QKeySequence::Cut)) return OnEditCut();
  if (event->matches(QKeySequence::Paste)) return OnEditPaste();
  if (event->matches(QKeySequence::SelectAll)) return OnEditSelectAll();
  QTableView::keyPressEvent(event);
}

bool CGridCtrl::viewportEvent(QEvent *event) {
  if (event->type() == QEvent::ToolTip) {
    // Title tip: the whole text of a cell that does not fit.
    auto *help = static_cast<QHelpEvent *>(event);
    const QModelIndex i = indexAt(help->pos());
    if (i.isValid()) {
      const QString text = GetItemText(model_->gridRow(i), model_->gridColumn(i));
      const QFontMetrics fm(font());
      if (!text.isEmpty() && fm.horizontalAdvance(text) + 6 > visualRect(i).width()) {
        QToolTip::showText(help->globalPos(), text, viewport(), visualRect(i));
        return true;
      }
    }
    QToolTip::hideText();
    event->ignore();
    return true;
  }
  return QTableView::viewportEvent(event);
}

}  // namespace tabulon::ui
