// Recomputing the calculated columns of a grid: every column whose attribute has a calc
// expression gets, row by row, the value of that expression over the row's cells,
// formatted by the column's string type. KrmCardData::RunColumnCalc applies this to its
// current grid; the functions here work on a grid the caller owns.
#pragma once

#include <limits>

struct KrmDataGrid;

// Every row, as opposed to one row index.
inline constexpr unsigned int kKrmAllRows = std::numeric_limits<unsigned int>::max();

// Computes column `col` of `grid` in row `row` (or every row for kKrmAllRows). A row
// whose expression cannot be evaluated keeps its text; with `skipZero` non-zero so
// does a row whose result is 0. Variables are read from `grid` as it stands, so a
// column computed earlier feeds this one. Nothing happens for a column index out of
// range or a column without expression. Returns the number of cells written.
int KrmRunCalcColumn(KrmDataGrid& grid, int col, unsigned int row, int skipZero);

// KrmRunCalcColumn for each calculated column of `grid`, left to right. Returns the
// number of cells written.
int KrmRunCalcColumns(KrmDataGrid& grid, unsigned int row, int skipZero);
