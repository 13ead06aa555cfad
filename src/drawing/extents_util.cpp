#include "drawing/extents_util.h"

#include <algorithm>

#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"

namespace {

// Visits the extents of every entity of `ids` that has some; returns how many did.
template <class Visit>
int forEachExtents(const std::vector<QaDbObjectId>& ids, Visit visit) {
  int found = 0;
  for (const QaDbObjectId& id : ids) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (!entity) continue;
    QaDbExtents ext;
    if (entity->getGeomExtents(ext) != Qa::eOk || ext.isEmpty()) continue;
    visit(ext, found == 0);
    ++found;
  }
  return found;
}

}  // namespace

QaGePoint3d LowerLeftOf(const std::vector<QaDbObjectId>& ids) {
  QaGePoint3d low;
  forEachExtents(ids, [&low](const QaDbExtents& ext, bool first) {
    if (first) {
      low = ext.minPoint();
      return;
    }
    low.x = std::min(low.x, ext.minPoint().x);
    low.y = std::min(low.y, ext.minPoint().y);
  });
  return low;
}

bool BoxOf(const std::vector<QaDbObjectId>& ids, QaGePoint3d& lowerLeft, QaGePoint3d& upperRight) {
  QaGePoint3d low;
  QaGePoint3d high;
  const int found = forEachExtents(ids, [&](const QaDbExtents& ext, bool first) {
    if (first) {
      low = ext.minPoint();
      high = ext.maxPoint();
      return;
    }
    low.x = std::min(low.x, ext.minPoint().x);
    low.y = std::min(low.y, ext.minPoint().y);
    high.x = std::max(high.x, ext.maxPoint().x);
    high.y = std::max(high.y, ext.maxPoint().y);
  });
  lowerLeft = QaGePoint3d(low.x, low.y, 0.0);
  upperRight = QaGePoint3d(high.x, high.y, 0.0);
  return found > 0;
}
