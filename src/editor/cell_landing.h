// How a cell's text will land in the drawing, told while the cell is edited: as it
// stands, squeezed into the cell's width (a "kFit" cell), or over how many row blocks a
// "kNewline" text will run. Measured with the font of a text style of the drawing, the
// way generation writes the cell.
#pragma once

#include <string>

#include "card/att_set.h"
#include "host/db/qadb_object_id.h"

struct KrmCellLanding {
  enum class Kind { kAsIs, kSqueezed, kRowBlocks };
  Kind kind = Kind::kAsIs;
  int rowBlocks = 1;  // the row blocks the text takes (1 unless kRowBlocks)
};

// The landing of `text` in a cell described by `cell`, in text style `style` (the
// plain font when null) at the cell's height (2.5 when it has none).
KrmCellLanding MeasureCellLanding(const KrmAttSet& cell, const std::wstring& text, QaDbObjectId style);

// The line the editor shows for a landing; "" when the text lands as it stands.
std::wstring DescribeCellLanding(const KrmCellLanding& landing);
