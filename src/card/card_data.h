// The content of one card while it is filled in, generated or read back: one
// grid per block class, the page-number bindings and options, and the block
// references generation gave the batch numbers. Independent of the drawing.
// Owned by whoever built it; copies are deep, except that the two batch id
// arrays are never copied (a copy starts without them, an assignment keeps the
// target's own).
#pragma once

#include <string>
#include <vector>

#include "card/data_grid.h"
#include "card/data_pages.h"
#include "host/db/qadb_object_id.h"

class KrmCardTemplate;

// Indexes into the page bindings, in their fixed order.
enum KrmPageBindingIndex { kKrmBindClassCur = 0, kKrmBindClassSum = 1, kKrmBindBatchCur = 2, kKrmBindBatchSum = 3 };

class KrmCardData {
 public:
  KrmCardData() = default;
  KrmCardData(const KrmCardData& other);
  // Throws std::out_of_range when assigned to itself.
  KrmCardData& operator=(const KrmCardData& other);
  ~KrmCardData() = default;

  // Back to the defaults: no grids, no bindings, no ids, indexes 0, options 1.
  void ClearData();
  // Builds one grid per block class of table 0 (single-record, then
  // multi-record), the four page bindings, and selects the page-base grid.
  // The page-base grid starts with one row, every other grid with rowsFirst
  // rows. Returns 1.
  int InitFromTemplate(const KrmCardTemplate& cardTemplate);

  // 1 when content differs: baseGrid, curRow, the three page options, the
  // grids (KrmDataGrid::SameContent) or the bindings. curGrid and the batch
  // ids are not compared.
  int IsDifferent(const KrmCardData& other) const;

  // Selection and options.
  int GetCurGrid() const { return curGrid_; }
  void SetCurGrid(int index) { curGrid_ = index; }
  int GetBaseGrid() const { return baseGrid_; }
  // The zero-based page the editor shows.
  int GetCurRow() const { return curRow_; }
  void SetCurRow(int page) { curRow_ = page; }
  int& PageStep() { return pageStep_; }
  int& PageStartSum() { return pageStartSum_; }
  int& PageStartCur() { return pageStartCur_; }
  int PageStep() const { return pageStep_; }
  int PageStartSum() const { return pageStartSum_; }
  int PageStartCur() const { return pageStartCur_; }
  // Makes the grid named exactly `name` current, if there is one. Returns 1.
  int SelectGrid(const std::wstring& name);

  // Whole grids, passed by value.
  int GridCount() const { return static_cast<int>(grids_.size()); }
  // 1 and `out` filled, or 0 when `index` is out of range.
  int GetGridAt(int index, KrmDataGrid& out) const;
  // Stores the grid; nothing happens out of range. Returns 1.
  int SetGridAt(int index, const KrmDataGrid& grid);
  // On the current grid; nothing happens when it is past the end; a negative
  // current index throws std::out_of_range. Return 1.
  int GetCurGridData(KrmDataGrid& out) const;
  int SetCurGridData(const KrmDataGrid& grid);
  // First grid named exactly `name`: 1, or 0 when none.
  int GetGridByName(const std::wstring& name, KrmDataGrid& out) const;
  // Index of the first grid named exactly `name`, or -1.
  int FindGrid(const std::wstring& name) const;
  // Index of the first grid whose name BlockNamesMatch `name`, or -1.
  int FindGridLike(const std::wstring& name) const;
  // Index of the first grid whose blockIds hold `id`, or -1.
  int FindGridOfBlock(const QaDbObjectId& id) const;
  // Replaces `out` with every grid name in order.
  void GetGridNames(std::vector<std::wstring>& out) const;
  // Fields of grid `index`; 1, 1 and 0 when out of range.
  int GetRowsFirst(int index) const;
  int GetRowsNext(int index) const;
  int GetFillOrder(int index) const;
  // Physical text lines of grid `index` (see paging.h); 0 out of range.
  int GetRowsNeeded(int index) const;
  // Appends `id` to blockIds of grid `index`; nothing out of range. Returns 1.
  int AddBlockId(int index, const QaDbObjectId& id);
  // Appends a null id to blockIds of every grid. Returns 1.
  int AddNullBlockIds();

  // Cells of the current grid: "" (GetCell) or nothing stored (SetCell, which
  // returns 1 all the same) when the current grid, row or column is past the
  // end. A negative current index, row or column throws std::out_of_range.
  std::wstring GetCell(int row, int col) const;
  int SetCell(const std::wstring& text, int row, int col);

  // On the page-base grid: drop trailing rows that are empty in every column,
  // keeping at least one row. Returns 1.
  int TrimTrailingRows();
  // On the page-base grid: writes " " into the first column of every row that
  // is empty in every column, so that trimming keeps it. Returns 1.
  int KeepBlankRows();

  // Recomputes the calculated columns of the current grid in row `row`, or in
  // every row for the largest unsigned value. `skipZero` non-zero leaves a
  // cell alone when its result is 0. Returns 1.
  int RunColumnCalc(unsigned int row, int skipZero);

  // Writes the class and batch numbers of page `page` of `pages` into row 0
  // of the bound columns. A binding whose block is absent is skipped; one
  // whose block exists but lacks the attribute throws std::out_of_range.
  // Returns 1.
  int FillPageNumbers(int page, int pages);

  // Page bindings, in the order CLASSCUR, CLASSSUM, BATCHCUR, BATCHSUM.
  const std::vector<KrmDataPages>& GetPageBindings() const { return pageBindings_; }
  void SetPageBindings(const std::vector<KrmDataPages>& bindings) { pageBindings_ = bindings; }
  // Grid (FindGrid) and column (FindCol) of a binding; both -1 when it does
  // not resolve or does not exist. Return 1.
  int GetClassCurCell(int& grid, int& col) const { return BindingCell(kKrmBindClassCur, grid, col); }
  int GetBatchCurCell(int& grid, int& col) const { return BindingCell(kKrmBindBatchCur, grid, col); }
  int GetBatchSumCell(int& grid, int& col) const { return BindingCell(kKrmBindBatchSum, grid, col); }
  // Attribute name of a binding; `out` unchanged when it does not exist.
  // Return 1.
  int GetClassCurAtt(std::wstring& out) const { return BindingAtt(kKrmBindClassCur, out); }
  int GetBatchCurAtt(std::wstring& out) const { return BindingAtt(kKrmBindBatchCur, out); }
  int GetBatchSumAtt(std::wstring& out) const { return BindingAtt(kKrmBindBatchSum, out); }

  // Batch id arrays: Set replaces, Get appends to `out` without clearing it.
  int SetBatchCurIds(const std::vector<QaDbObjectId>& ids);
  int SetBatchSumIds(const std::vector<QaDbObjectId>& ids);
  int GetBatchCurIds(std::vector<QaDbObjectId>& out) const;
  int GetBatchSumIds(std::vector<QaDbObjectId>& out) const;

 private:
  int BindingCell(int binding, int& grid, int& col) const;
  int BindingAtt(int binding, std::wstring& out) const;
  // The current grid, nullptr past the end; throws for a negative index.
  const KrmDataGrid* CurrentGrid() const;
  KrmDataGrid* CurrentGrid();
  KrmDataGrid* BaseGrid();

  int curGrid_ = 0;
  int baseGrid_ = 0;
  std::vector<KrmDataGrid> grids_;
  std::vector<KrmDataPages> pageBindings_;
  int curRow_ = 0;
  int pageStep_ = 1;
  int pageStartSum_ = 1;
  int pageStartCur_ = 1;
  std::vector<QaDbObjectId> batchCurIds_;
  std::vector<QaDbObjectId> batchSumIds_;
};
