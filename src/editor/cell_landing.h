// How a cell's text will land in the drawing, told while the cell is edited: as it
// stands, squeezed into the cell's width (a "kFit" cell), or over how many row blocks a
// "kNewline" text will run. Measured with the text style, width factor and height of the
// attribute definition the cell is written from, the way generation writes the cell.
#pragma once

#include <string>

#include "card/att_set.h"
#include "card/data_grid.h"
#include "host/db/qadb_object_id.h"

class QaDbDatabase;

struct KrmCellLanding {
  enum class Kind { kAsIs, kSqueezed, kRowBlocks };
  Kind kind = Kind::kAsIs;
  int rowBlocks = 1;  // the row blocks the text takes (1 unless kRowBlocks)
};

// What a cell's text is written with.
struct KrmCellLook {
  QaDbObjectId style;        // the plain font when null
  double widthFactor = 1.0;
  double oblique = 0.0;
  double height = 0.0;       // the cell's height when 0
};

// The look of `cell` of `grid` in `db`: that of the attribute definition with the cell's
// tag in a block of the grid (one the card already uses, else one whose name matches
// the grid's, prefixed or not); the drawing's "Standard" style when there is none.
KrmCellLook FindCellLook(const KrmDataGrid& grid, const KrmAttSet& cell, QaDbDatabase* db);

// The landing of `text` in a cell described by `cell`, written with `look` (at the
// cell's height when the look has none, 2.5 when neither has).
KrmCellLanding MeasureCellLanding(const KrmAttSet& cell, const std::wstring& text, const KrmCellLook& look = {});

// The line the editor shows for a landing; "" when the text lands as it stands.
std::wstring DescribeCellLanding(const KrmCellLanding& landing);
