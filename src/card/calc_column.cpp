#include "card/calc_column.h"

#include "card/calc_number_format.h"
#include "card/calc_tool.h"
#include "card/card_data.h"
#include "card/data_grid.h"

#include <map>
#include <string>
#include <vector>

int KrmRunCalcColumn(KrmDataGrid& grid, int col, unsigned int row, int skipZero) {
  if (col < 0 || static_cast<std::size_t>(col) >= grid.cols.size()) return 0;
  const KrmAttSet att = grid.cols[static_cast<std::size_t>(col)].att;
  const std::wstring& formula = att.GetCalc();
  if (formula.empty()) return 0;

  KRCalcTool tool;
  if (tool.Init() == 0) return 0;

  std::vector<std::wstring> names;
  names.reserve(grid.cols.size());
  for (const KrmDataTCol& column : grid.cols) names.push_back(column.att.GetShowName());

  int written = 0;
  const int rows = grid.RowCount();
  for (int r = 0; r < rows; ++r) {
    if (row != kKrmAllRows && static_cast<unsigned int>(r) != row) continue;
    tool.clear();
    tool.setExpName(att.GetShowName());
    tool.setFormula(formula);
    std::wstring result = grid.GetCell(r, col);

    // Later columns of the same show name overwrite earlier ones, as a map does.
    std::map<std::wstring, std::wstring> variables;
    for (std::size_t j = 0; j < names.size(); ++j) variables[names[j]] = grid.GetCell(r, static_cast<int>(j));
    tool.setVar(variables);

    // run parses the formula itself; an expression it cannot evaluate leaves the cell.
    if (tool.run(result) == 0) continue;
    if (skipZero != 0 && KrmTextToDouble(result) == 0.0) continue;

    std::vector<std::wstring>& values = grid.cols[static_cast<std::size_t>(col)].values;
    if (static_cast<std::size_t>(r) < values.size()) {
      values[static_cast<std::size_t>(r)] = FormatCellNumber(result, att);
      ++written;
    }
  }
  return written;
}

int KrmRunCalcColumns(KrmDataGrid& grid, unsigned int row, int skipZero) {
  int written = 0;
  for (std::size_t c = 0; c < grid.cols.size(); ++c) {
    if (!grid.cols[c].att.GetCalc().empty()) written += KrmRunCalcColumn(grid, static_cast<int>(c), row, skipZero);
  }
  return written;
}

int KrmCardData::RunColumnCalc(unsigned int row, int skipZero) {
  if (curGrid_ < 0 || static_cast<std::size_t>(curGrid_) >= grids_.size()) return 1;
  KrmDataGrid working = grids_[static_cast<std::size_t>(curGrid_)];
  KrmRunCalcColumns(working, row, skipZero);
  grids_[static_cast<std::size_t>(curGrid_)] = working;
  return 1;
}
