// Where a card goes: the point suggested for the next card of a series, and asking the
// user for a point through the host's input, with a rubber band from a base point.
#pragma once

#include <string>

#include "card/card_dir.h"
#include "host/ge/qage_point3d.h"

// The point for the next card beside the cards placed so far, whose extents run from
// `lower` to `upper`: at their top (Dir 2, 3: `upper.y` - `pageHeight`) or bottom
// (otherwise), one gap Hor (at scale 1) to the right of `upper.x` (Dir 0, 3) or left of
// `lower.x` (Dir 1, 2). Empty extents (x of both corners within 0.1) take no gap. z 0.
QaGePoint3d SuggestInsertPoint(const KrmCardDir& dir, const QaGePoint3d& lower, const QaGePoint3d& upper,
                               double pageHeight);

// Asks for a point with `prompt`, from `base`. Returns 1 with `out` the picked point, or
// `base` on Enter; 0 on anything else (cancel), with `out` left at `base`.
int AskPoint(const std::wstring& prompt, const QaGePoint3d& base, QaGePoint3d& out);

// The prompt for the insertion point of a whole card.
std::wstring NewInsertPointPrompt();
// The prompt for the insertion point of page `pageNumber` (one-based).
std::wstring PageInsertPointPrompt(int pageNumber);
