// The columns that a text or spreadsheet exchange file brings in: the header's names
// and the texts under each, and how they replace the columns of a table. Matching is by
// exact show name; a name that matches nothing is dropped, a name given twice wins with
// its later column, and columns the file does not name keep their values.
#pragma once

#include <string>
#include <vector>

#include "card/data_grid.h"
#include "card/table_rows.h"

namespace tabulon::editor {

struct ExchangeColumns {
  std::vector<std::wstring> names;
  // One list per name; a list may be shorter than others when lines lacked fields.
  std::vector<std::vector<std::wstring>> values;
};

// Replaces `values` of each grid column that a file column names. Returns how many
// grid columns were replaced.
int ApplyExchangeColumns(KrmDataGrid& grid, const ExchangeColumns& columns);

// The file's columns as rows for other programs: row i maps each name to its i-th
// text, as far as that column reaches.
KrmTableRows RowsOfColumns(const ExchangeColumns& columns);

}  // namespace tabulon::editor
