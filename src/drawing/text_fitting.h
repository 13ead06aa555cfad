// Writing a text into a cell: squeezing it into the cell's width ("kFit"), breaking it
// over the following row blocks ("kNewline"), or leaving it as it stands, and the
// alignment of the attribute in its cell. Texts are measured with the real font of the
// attribute's text style. The attribute passed in must be writable (open for write, or
// in memory); nothing here keeps a reference to it.
#pragma once

#include "card/att_set.h"
#include "host/db/qadb_object_id.h"

class QaDbAttribute;

// The frame scale of the last card generation, 1.0 before any: every cell width is
// multiplied by it before it is compared with a text's measure. Set by generation only.
extern double cellScale;

// The x scale of the text style `style`, or 1.0 when the id does not open as one.
double GetStyleXScale(QaDbObjectId style);

// Sets the horizontal mode, alignment point and width factor of `att` for the cell:
// a text wider than the cell in a "kFit" cell is squeezed with the fit mode between two
// points one cell width apart (height kept); otherwise the style's width factor is
// restored and the text is centred, right or left aligned by the cell's align type.
// Multi-line attributes are never squeezed. Returns 1.
int AlignCellText(QaDbAttribute& att, KrmAttSet& cell);

// Fits the attribute's text into the cell. A text with a line break keeps its first
// line (with a trailing "\n") and hands the rest on, unless that line alone is too
// wide for a "kNewline" cell; a "kNewline" text too wide for the cell is cut after the
// longest prefix that fits. Returns 1 when all is written (the cell's content is then
// ""), 0 when the cell's content holds what must go to the next row block.
int FitCellText(QaDbAttribute& att, KrmAttSet& cell);
