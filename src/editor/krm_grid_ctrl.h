// KrmGridCtrl: the projection of one table of a card (KrmDataGrid) into the cells of a
// spreadsheet grid, free of any widget. It owns the cells (text, cell class, read-only
// state, format, header colours), the row and column sizes, the selection and focus, the
// page shown, the Return key's moves and the grid font; a widget draws it and feeds it
// keys and edits. Every change is reported to the listener with the cells it touched,
// so that a table model can wrap it. Row 0 and column 0 are the fixed header row and
// label column: store cell (r, c) stands at grid cell (r + 1, c + 1).
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "card/data_grid.h"
#include "editor/dialog_settings.h"

class KrmRegService;

// Cell classes, by what their editors are.
enum class KrmCellClass { kText, kCombo, kCheck, kNumeric, kDateTime };

// Cell formats: all vertically centred.
inline constexpr int kKrmFormatLeft = 4;
inline constexpr int kKrmFormatCentre = 5;
inline constexpr int kKrmFormatRight = 6;
// Combo styles.
inline constexpr int kKrmComboSimple = 1;
inline constexpr int kKrmComboDropDown = 2;
inline constexpr int kKrmComboDropDownList = 3;
// Header text colours, 0xRRGGBB.
inline constexpr unsigned kKrmAutoNumColour = 0x1E90FF;  // (30, 144, 255)
inline constexpr unsigned kKrmNewlineColour = 0xC71585;  // (199, 21, 133)

struct KrmGridCell {
  std::wstring text;
  KrmCellClass cellClass = KrmCellClass::kText;
  int comboStyle = 0;  // for kCombo
  bool readOnly = false;
  int format = kKrmFormatLeft;
  unsigned textColour = 0;  // 0: the grid's default
  bool modified = false;
};

// Top row, left column, bottom row, right column; all -1 when nothing is selected.
struct KrmCellRange {
  int top = -1, left = -1, bottom = -1, right = -1;
  bool IsValid() const { return top >= 0 && left >= 0 && bottom >= top && right >= left; }
  int Count() const { return IsValid() ? (bottom - top + 1) * (right - left + 1) : 0; }
};

// What changed: the whole grid (rebuilt), the texts or states of a range of cells, or
// the sizes of rows or columns.
struct KrmGridChange {
  enum class Kind { kRebuilt, kCells, kRowSizes, kColumnSizes, kSelection, kFont };
  Kind kind = Kind::kRebuilt;
  KrmCellRange range;
};

class KrmGridCtrl {
 public:
  // `settings` keeps the font (may be null; it must outlive the grid).
  explicit KrmGridCtrl(KrmRegService* settings = nullptr) : settings_(settings) {}
  KrmGridCtrl(const KrmGridCtrl&) = delete;
  KrmGridCtrl& operator=(const KrmGridCtrl&) = delete;

  void SetChangeListener(std::function<void(const KrmGridChange&)> listener) { listener_ = std::move(listener); }

  // Rebuilds every cell from `grid`; `page` -1 shows all rows, else that zero-based
  // page's rows (rowsFirst on page 0, rowsNext on each later one).
  void LoadData(const KrmDataGrid& grid, int page);

  void SetMainTable(int isMain) { isMainTable_ = isMain; }
  void SetPageMode(int on) { pageMode_ = on; }
  int GetPageWrap() const { return pageWrap_; }
  void ClearPageWrap() { pageWrap_ = 0; }
  int GetPage() const { return page_; }
  // Grid column of the row-number column, 0 when the table has none.
  int GetAutoNumGridCol() const { return autoNumGridCol_; }
  const KrmDataGrid& GetGridData() const { return gridData_; }
  // Per grid column the cell kind word ("" for the label column).
  const std::vector<std::wstring>& GetCtrlTypes() const { return ctrlTypes_; }
  // The options of a combo column by grid column, or null.
  const std::vector<std::wstring>* GetComboOptions(int col) const;

  int GetRowCount() const { return static_cast<int>(cells_.size()); }
  int GetColumnCount() const { return cells_.empty() ? static_cast<int>(colWidths_.size()) : static_cast<int>(cells_.front().size()); }
  // Null out of range.
  const KrmGridCell* GetCell(int row, int col) const;
  // "" out of range; a check cell reads "1" or "0".
  std::wstring GetItemText(int row, int col) const;
  // Sets a cell's text as its class takes it (numbers lose their fraction and all but
  // digits; text without digits is refused). 1 when the cell took it.
  int SetItemText(int row, int col, const std::wstring& text);
  // Store coordinates: grid cell (row + 1, col + 1).
  void SetCellText(int row, int col, const std::wstring& text) { SetItemText(row + 1, col + 1, text); }
  // A press and release within a check box: the box toggles and the cell counts as
  // modified. 1 when (row, col) is a check cell.
  int ToggleCheck(int row, int col);
  // The text of the cell at the selection's top left.
  void SetSelectedText(const std::wstring& text);
  // The grid-wide modified flag with (-1, -1), else the cell's.
  int GetModified(int row = -1, int col = -1) const;
  void SetModified(bool modified);

  // Sizes in the grid's pixel unit; 0 hides a row or column.
  int GetColumnWidth(int col) const;
  void SetColumnWidth(int col, int width);
  int GetRowHeight(int row) const;
  void SetRowHeight(int row, int height);
  void AutoSizeColumn(int col);
  void AutoSizeRow(int row);
  // Only rows or columns whose size is above 0.
  void AutoSizeColumns();
  void AutoSizeRows();

  // Selection; a row equal to the row count is kept, meaning "past the last row".
  void SetSelectedRange(int top, int left, int bottom, int right);
  KrmCellRange GetSelectedCellRange() const { return selection_; }
  int GetSelectedCount() const { return selection_.Count(); }
  void SetFocusCell(int row, int col);
  std::pair<int, int> GetFocusCell() const { return focus_; }

  // The Return key. A key press arms the guard (the Return that ends an open editor
  // comes as key and character); a character Return with the guard off moves down.
  enum class ReturnMove { kNone, kMoved, kWrapped };
  void OnKeyDownReturn() { enterGuard_ = 1; }
  ReturnMove OnChar(wchar_t ch);

  // Clicks on a row label or a column header land the focus on the first data cell.
  void OnLabelClick(bool onRowLabel, bool onColumnHeader);

  void ToggleRowHeader();
  void ToggleColHeader();
  // Hides (size 0) or shows (auto-sized) the selected rows or columns.
  void HideRange(bool rows, bool hide);
  // Gives every selected row or column the size `value`.
  void ApplySize(bool rows, int value);

  const KrmGridFont& GetFont() const { return font_; }
  // read 1: takes the stored font over the current one; 0: stores the current one.
  void LoadFont(int read);
  // A font chosen by the user: applied and stored.
  void ChooseFont(const KrmGridFont& font);

 private:
  void Notify(KrmGridChange::Kind kind, KrmCellRange range = {});
  void MakeCell(int row, int col);
  int TextWidth(const std::wstring& text) const;

  KrmRegService* settings_;
  std::function<void(const KrmGridChange&)> listener_;

  int autoNumGridCol_ = -1;
  int enterGuard_ = 0;
  int isMainTable_ = 0;
  int pageMode_ = 0;
  int page_ = 0;
  int pageWrap_ = 0;
  KrmDataGrid gridData_;
  std::vector<std::wstring> ctrlTypes_;
  std::map<std::wstring, std::vector<std::wstring>> comboLists_;

  std::vector<std::vector<KrmGridCell>> cells_;
  std::vector<int> rowHeights_;
  std::vector<int> colWidths_;
  KrmCellRange selection_;
  std::pair<int, int> focus_{-1, -1};
  bool modified_ = false;
  KrmGridFont font_;
};

// The rows of `page` of a table with these capacities: first and one past the last,
// limited to `rows`. Page 0 holds rows 0 to first - 1; page p holds first + (p - 1) *
// next and up to `next` further rows.
std::pair<int, int> PageRowSpan(int page, int rows, int first, int next);

// What a numeric cell keeps of a text: the digits before the first ".", or nothing
// when there are none.
bool NumericCellText(const std::wstring& text, std::wstring& out);
