// Where the pages of a card lie: a cursor that hands out page insertion points on a
// matrix growing from the insertion point in one of four directions, row or column
// first, with the gaps of the card scaled by the drawing frame. Also the fill-order sort
// of the row blocks of a page. KrmPagePlacer is a plain copyable value.
#pragma once

#include <vector>

#include "card/card_dir.h"
#include "drawing/fill_order.h"
#include "host/ge/qage_point3d.h"

class QaDbEntity;

struct KrmPagePlacer {
  QaGePoint3d origin;       // point of page 0
  int placed = 0;           // points handed out so far; index of the next page
  KrmCardDir dir;           // owned copy
  double pageWidth = 0.0;   // page module in drawing units, set by the caller
  double pageHeight = 0.0;
  double scale = 1.0;       // frame scale at the construction point
};

// A placer at `point`: nothing placed, sizes 0, `scale` from the frame service at the
// point in the working database (1.0 when there is no service).
KrmPagePlacer InitPagePlacer(const QaGePoint3d& point, const KrmCardDir& dir);

// The point of page `i` (may be negative), z 0. Quotient and remainder by FstN are
// truncated toward zero. FstN 0 throws std::invalid_argument.
QaGePoint3d PagePointAt(const KrmPagePlacer& placer, int i);

// The first call gives `origin` itself, its z included; later calls give PagePointAt
// of the running index. Counts up.
QaGePoint3d NextPagePoint(KrmPagePlacer& placer);

// Sorts block references in memory by fill-order `code` on their positions; entities
// that are no block reference count at the origin. A code outside 0..7 keeps the order.
// Returns 0 for an empty list, else 1.
int SortRefsByFillOrder(std::vector<QaDbEntity*>& refs, int code);
