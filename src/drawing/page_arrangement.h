// Laying the pages of a card that stands in the drawing out again on the page matrix of
// a placer, for instance after the user chose another arrangement.
#pragma once

#include "drawing/page_placer.h"
#include "drawing/placed_card.h"

// Moves each page of `card`, in order, so that the lower-left of its entities' extents
// lands on the placer's next page point. Returns the number of pages moved.
int ArrangePlacedPages(const KrmPlacedCard& card, KrmPagePlacer& placer);
