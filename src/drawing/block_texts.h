// The cell texts of one block reference: reading them out by column, and clearing them.
#pragma once

#include <string>
#include <vector>

#include "drawing/placed_card.h"
#include "host/db/qadb_object_id.h"

class QaDbBlockReference;

// One slot per column name, in order, with only the show name set.
std::vector<KrmAttSort> MakeAttSlots(const std::vector<std::wstring>& colNames);

// Walks the attributes of `reference` (resident or in memory) and stores each one's text
// in every slot whose show name equals its tag exactly. Returns the slots' texts in slot
// order: "" where the reference has no attribute of that tag.
std::vector<std::wstring> ReadBlockTexts(const QaDbBlockReference& reference, std::vector<KrmAttSort>& slots);
// The same from column names.
std::vector<std::wstring> ReadBlockTexts(const QaDbBlockReference& reference, const std::vector<std::wstring>& colNames);

// Opens every attribute of the resident reference for write and empties its text.
// Returns 0 when the id does not open as a block reference, else 1.
int ClearAttributes(QaDbObjectId reference);
