// The content of one block class of a card: one column per attribute, one row
// per reference the class fills, and what generation learnt about the class
// (reference counts, fill order, block definitions). A plain copyable value;
// callers copy a grid out of the card data, edit it and store it back.
#pragma once

#include <string>
#include <vector>

#include "card/data_tcol.h"
#include "host/db/qadb_object_id.h"

struct KrmDataGrid {
  // The block class name as it stands in the table template.
  std::wstring blockName;
  // One per attribute of the class, in the template's order.
  std::vector<KrmDataTCol> cols;
  // References of this class on the first-page and on a continuation table.
  int rowsFirst = 1;
  int rowsNext = 1;
  // Block definitions that the generated card uses for this class.
  std::vector<QaDbObjectId> blockIds;
  // Fill-order code 0..7 of the class on the first-page table.
  int fillOrder = 0;

  // Row count: the size of the first column, 0 without columns.
  int RowCount() const { return cols.empty() ? 0 : static_cast<int>(cols.front().values.size()); }

  // `out` is the text at (row, col), or "" when either is past the end.
  // Throws std::out_of_range for a negative row or column. Returns 1.
  int GetCell(std::wstring& out, int row, int col) const;
  std::wstring GetCell(int row, int col) const {
    std::wstring out;
    GetCell(out, row, col);
    return out;
  }
  // Stores `text` at (row, col) and returns 1; returns 0 and stores nothing
  // when either is past the end (a column never grows here). Throws
  // std::out_of_range for a negative row or column.
  int SetCell(const std::wstring& text, int row, int col);
  // Index of the first column whose show name is `showName`, or -1.
  int FindCol(const std::wstring& showName) const;

  // Inserts `count` empty texts at row `at` of every column for which
  // 0 <= at <= size; `count` <= 0 changes nothing. Returns 1.
  int InsertRows(int at, int count);
  // Removes `count` rows from `at` in every column, as far as they exist.
  // Returns 1.
  int RemoveRows(int at, int count);
  // Swap rows `row` and `row` + 1 (or `row` - 1) in every column that has both.
  // Return 1.
  int SwapRowDown(int row);
  int SwapRowUp(int row);
  // Marks column `col` as the automatic row-number column (all others
  // unmarked) and rewrites its values "1", "2", ... by row; -1 (or any index
  // past the end) unmarks every column. Returns 1.
  int SetAutoNumCol(int col);
  // Index of the first marked row-number column, or -1.
  int AutoNumCol() const;

  // Same name, counts, block ids, fill order and columns (SameContent).
  bool SameContent(const KrmDataGrid& other) const;
};
