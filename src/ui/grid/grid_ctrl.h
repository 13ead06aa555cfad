// The spreadsheet grid control of the card editor on Qt's model/view: rows and columns
// of cells with one fixed header row and one fixed label column (the view's headers),
// cell classes with in-place editors, title tips for clipped texts, the clipboard as
// tab-separated text, sorting by a header click, find and replace, and printing.
// Cells are numbered from zero with the fixed row and column counted, as the editor
// calls them. The grid owns its model and delegate.
#pragma once

#include <QPointF>
#include <QPointer>
#include <QTableView>

#include <functional>

#include "ui/grid/grid_cell.h"

class QPagedPaintDevice;
class QPrinter;

namespace tabulon::ui {

class GridModel;
class GridDelegate;
class GridFindDialog;
class UiStrings;

// A range of cells: top row, left column, bottom row, right column; -1 when none.
struct CCellRange {
  int minRow = -1, minCol = -1, maxRow = -1, maxCol = -1;
  bool IsValid() const { return minRow >= 0 && minCol >= 0 && maxRow >= minRow && maxCol >= minCol; }
  int Count() const { return IsValid() ? (maxRow - minRow + 1) * (maxCol - minCol + 1) : 0; }
  bool operator==(const CCellRange &) const = default;
};

struct CCellID {
  int row = -1, col = -1;
  bool IsValid() const { return row >= 0 && col >= 0; }
  bool operator==(const CCellID &) const = default;
};

// Scroll bars, with the numbers the editor passes.
constexpr int SB_HORZ = 0;
constexpr int SB_VERT = 1;

// The notification code of the end of an edit.
constexpr int GVN_ENDLABELEDIT = -176;

class CGridCtrl;

// A cell as the editor reaches it through GetCell: null out of range.
class CGridCellBase {
 public:
  CGridCellBase(CGridCtrl *grid, int row, int col) : grid_(grid), row_(row), col_(col) {}
  bool IsNull() const;
  void SetTextClr(const QColor &colour);
  void SetBackClr(const QColor &colour);
  QString GetText() const;
  GridCellClass GetClass() const;

 private:
  CGridCtrl *grid_;
  int row_, col_;
};

class CGridCtrl : public QTableView {
  Q_OBJECT

 public:
  // Compares two texts: negative, zero or positive.
  using CompareFunction = std::function<int(const QString &, const QString &)>;

  explicit CGridCtrl(QWidget *parent = nullptr);
  ~CGridCtrl() override;

  using QTableView::edit;

  GridModel &gridModel() { return *model_; }
  GridDelegate &gridDelegate() { return *delegate_; }

  // --- shape
  bool SetRowCount(int n);
  bool SetColumnCount(int n);
  bool SetFixedRowCount(int n);
  bool SetFixedColumnCount(int n);
  int GetRowCount() const;
  int GetColumnCount() const;
  int GetFixedRowCount() const;
  int GetFixedColumnCount() const;
  void DeleteAllItems();

  // --- cells; out of range: no effect, resp. "" and false
  bool SetItemText(int row, int col, const QString &text);
  QString GetItemText(int row, int col) const;
  bool SetItemFormat(int row, int col, unsigned format);
  unsigned GetItemFormat(int row, int col) const;
  bool SetItemState(int row, int col, unsigned state);
  unsigned GetItemState(int row, int col) const;
  CGridCellBase GetCell(int row, int col) { return CGridCellBase(this, row, col); }
  // Replaces the cell's class, keeping its text; false (the old cell kept) out of range.
  bool SetCellType(int row, int col, GridCellClass cellClass);
  bool SetComboOptions(int row, int col, const QStringList &options, int style = CBS_DROPDOWN);
  // A cell of the grid (null out of range); changes go through the setters.
  const GridCell *cell(int row, int col) const;
  bool setCell(int row, int col, const GridCell &cell);

  // --- sizes in pixels; 0 hides
  int GetColumnWidth(int col) const;
  bool SetColumnWidth(int col, int width);
  int GetRowHeight(int row) const;
  bool SetRowHeight(int row, int height);
  void AutoSizeColumn(int col, int mode = 0, bool resetScroll = true);
  void AutoSizeRow(int row, bool resetScroll = true);
  // Only sizes above 0 are visited.
  void AutoSizeColumns(int mode = 0);
  void AutoSizeRows();

  // --- selection and focus
  CCellRange GetSelectedCellRange() const { return selected_; }
  int GetSelectedCount() const { return selected_.Count(); }
  // Accepts a top row equal to the row count (a row past the last one) and reports it
  // back unchanged through GetSelectedCellRange.
  void SetSelectedRange(int minRow, int minCol, int maxRow, int maxCol, bool forceRedraw = false,
                        bool selectCells = true);
  CCellID GetFocusCell() const;
  void SetFocusCell(int row, int col);
  int GetScrollPos32(int bar, bool track = false) const;
  bool SetScrollPos32(int bar, int pos, bool redraw = true);
  // The cell under a point of the widget; fixed cells only with `allowFixed`.
  CCellID GetCellFromPt(QPoint point, bool allowFixed = true) const;

  // --- state
  // (-1, -1): the grid-wide flag; else the cell's modified state.
  bool GetModified(int row = -1, int col = -1) const;
  void SetModified(bool modified, int row = -1, int col = -1);
  // Ends an open cell editor as a loss of focus does: its text is kept and notified.
  void EndEditing();
  bool IsEditing() const { return editing_.IsValid(); }
  void SetEditable(bool editable);
  bool IsEditable() const { return editable_; }
  // 0 none, 1 horizontal, 2 vertical, 3 both.
  void SetGridLines(int mode);
  int GetGridLines() const;

  // --- sorting
  void SetHeaderSort(bool on) { headerSort_ = on; }
  bool GetHeaderSort() const { return headerSort_; }
  // Null: texts compare as text.
  void SetCompareFunction(CompareFunction compare) { compare_ = std::move(compare); }
  void SortByColumn(int col, bool ascending);
  int GetSortColumn() const { return sortColumn_; }
  bool GetSortAscending() const { return sortAscending_; }

  // --- clipboard; nothing on a grid that is not editable
  void OnEditCut();
  void OnEditCopy();
  void OnEditPaste();
  void OnEditSelectAll();
  void ClearSelection();
  // The selected cells as tab-separated text.
  QString SelectionText() const;
  // Writes tab-separated text from the cell (row, col) on; cells past the grid's edge and
  // read-only ones are left.
  void PasteText(int row, int col, const QString &text);

  // --- find and replace
  void FindDialog(bool findOnly);
  GridFindDialog *findDialog() const { return find_; }

  // --- printing
  void Print(QPrinter *printer = nullptr);
  // Prints every row onto pages of `device`; the number of pages.
  int PrintTo(QPagedPaintDevice &device);

  void SetFont(const QFont &font);
  // Texts of the grid's own windows; null (the default) uses the built-in ones. Must
  // outlive the grid.
  void SetStrings(const UiStrings *strings);

 signals:
  // The end of an edit: GVN_ENDLABELEDIT with the cell, its text, and the key that
  // ended it (Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape, or 0 for a loss of focus).
  void notify(int code, int row, int col, const QString &text, int key);

 protected:
  bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
  void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
  bool viewportEvent(QEvent *event) override;
  void keyPressEvent(QKeyEvent *event) override;

 private:
  void syncHeaders();
  void selectionToRange();
  void headerClicked(int section);

  GridModel *model_;
  GridDelegate *delegate_;
  QPointer<GridFindDialog> find_;
  QString lastSearch_;
  const UiStrings *strings_ = nullptr;
  CCellRange selected_;
  bool settingSelection_ = false;
  bool editable_ = true;
  bool headerSort_ = false;
  CompareFunction compare_;
  int sortColumn_ = -1;
  bool sortAscending_ = true;
  // The cell being edited and its text when the editor opened.
  CCellID editing_;
  QString editStartText_;
  // Sizes of the fixed column and row (the view's headers).
  int fixedColumnWidth_ = 48;
  int fixedRowHeight_ = 24;
};

}  // namespace tabulon::ui
