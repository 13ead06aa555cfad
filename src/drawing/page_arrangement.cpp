#include "drawing/page_arrangement.h"

#include "drawing/entity_list.h"
#include "drawing/extents_util.h"

int ArrangePlacedPages(const KrmPlacedCard& card, KrmPagePlacer& placer) {
  int moved = 0;
  for (const KrmLoadGroup& page : card.pages) {
    // The page's lower-left (the origin when nothing on it has extents); the first page
    // goes to the placer's origin with its z, the others to their matrix points.
    const QaGePoint3d low = LowerLeftOf(page.allIds);
    const QaGePoint3d target = NextPagePoint(placer);
    TranslateIds(page.allIds, low, target);
    ++moved;
  }
  return moved;
}
