// Tables for the editor tests: a grid of named columns with given texts.
#pragma once

#include <string>
#include <vector>

#include "card/data_grid.h"

namespace edtest {

inline KrmDataGrid MakeGrid(const std::vector<std::wstring>& names, const std::vector<std::vector<std::wstring>>& rows,
                            int rowsFirst = 5, int rowsNext = 8) {
  KrmDataGrid grid;
  grid.blockName = L"ROW";
  grid.rowsFirst = rowsFirst;
  grid.rowsNext = rowsNext;
  for (const auto& name : names) {
    KrmDataTCol col;
    col.att.SetShowName(name);
    grid.cols.push_back(col);
  }
  for (const auto& row : rows) {
    for (std::size_t c = 0; c < grid.cols.size(); ++c) grid.cols[c].values.push_back(c < row.size() ? row[c] : L"");
  }
  return grid;
}

inline std::vector<std::wstring> Column(const KrmDataGrid& grid, int col) { return grid.cols.at(static_cast<std::size_t>(col)).values; }

}  // namespace edtest
