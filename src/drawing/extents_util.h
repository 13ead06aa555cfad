// Corners of the box around a set of entities of the drawing, over the geometric
// extents of those that have any.
#pragma once

#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"

// Smallest x and smallest y over the extents of every entity of `ids` that opens and
// yields extents; z is that of the first such box's lower corner. The origin when none
// does.
QaGePoint3d LowerLeftOf(const std::vector<QaDbObjectId>& ids);
// Both corners of that box, z 0; (0,0) for both when no entity yields extents. Returns
// whether any did.
bool BoxOf(const std::vector<QaDbObjectId>& ids, QaGePoint3d& lowerLeft, QaGePoint3d& upperRight);
