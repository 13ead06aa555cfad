// How a card's rows turn into pages: the page count from a row count, and the
// physical text lines a grid needs when long texts wrap and forced line
// breaks split cells. KrmCardData::GetRowsNeeded and FillPageNumbers are built
// on these.
#pragma once

#include <string>

#include "card/att_set.h"
#include "card/data_grid.h"

class QaGiTextStyle;

// Pages for `rows` records with `first` rows on the first page and `next` on
// each continuation page: 1 up to `first`, then one more per started `next`.
// `next` must not be 0.
int PageCount(int rows, int first, int next);

// Zero-based index of the last continuation page for `needed` lines, when
// `needed` exceeds `first`; PageCount(needed, first, next) - 2.
int LastContinuationIndex(int needed, int first, int next);

// Lines that a text of a "kNewline" cell wraps into in a cell `width` wide,
// measured by `measurer` at its current size: the text is cut repeatedly at
// the longest prefix that fits (a character of no width at the cut moves to
// the next line), counting at most as many lines as the text has characters.
int WrappedLineCount(const std::wstring& text, double width, const QaGiTextStyle& measurer);

// Physical lines of row `row` of `grid`: 1 at least; a cell with forced line
// breaks sets the count to its number of lines (a later such cell overrides
// earlier ones); a "kNewline" cell raises it to its wrapped line count.
// `measurer` has X scale 1 and no font of its own; its size is set per column.
int RowLinesNeeded(const KrmDataGrid& grid, int row, QaGiTextStyle& measurer);

// Sum of RowLinesNeeded over the rows of the grid's longest column; 0 for a
// grid without columns or rows.
int GridLinesNeeded(const KrmDataGrid& grid);
