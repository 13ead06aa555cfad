// Exchange columns into a table.
#include "editor/exchange_columns.h"

#include <algorithm>

namespace tabulon::editor {

int ApplyExchangeColumns(KrmDataGrid& grid, const ExchangeColumns& columns) {
  int replaced = 0;
  for (std::size_t i = 0; i < columns.names.size() && i < columns.values.size(); ++i) {
    const int col = grid.FindCol(columns.names[i]);
    if (col < 0) continue;
    grid.cols[static_cast<std::size_t>(col)].values = columns.values[i];
    ++replaced;
  }
  return replaced;
}

KrmTableRows RowsOfColumns(const ExchangeColumns& columns) {
  std::size_t rows = 0;
  for (const auto& values : columns.values) rows = std::max(rows, values.size());
  KrmTableRows out(rows);
  for (std::size_t i = 0; i < columns.names.size() && i < columns.values.size(); ++i) {
    for (std::size_t r = 0; r < columns.values[i].size(); ++r) out[r][columns.names[i]] = columns.values[i][r];
  }
  return out;
}

}  // namespace tabulon::editor
