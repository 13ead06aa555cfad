#include "drawing/page_copy.h"

#include <memory>

#include "drawing/entity_copy.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/ge/qage_matrix3d.h"

namespace {
// The host's share mode for reading a drawing that others may read too.
constexpr int kShareDenyNo = 64;
}  // namespace

KrmEntityList ReadSideDrawing(const std::filesystem::path& path, const QaGePoint3d& point, double scale,
                              KrmEntityPool& pool, QaDbDatabase* current) {
  KrmEntityList list;
  if (scale == 0.0) scale = 1.0;

  QaDbDatabase side(false);
  if (side.readDwgFile(path, kShareDenyNo) != Qa::eOk) return list;
  QaDbObjectPointer<QaDbBlockTableRecord> space(side.modelSpaceId(), QaDb::kForRead);
  if (!space) return list;

  const QaGeMatrix3d scaling = QaGeMatrix3d().setToScaling(scale, QaGePoint3d::kOrigin);
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(point - QaGePoint3d::kOrigin);
  for (QaDbObjectId id : space->liveEntityIds()) {
    std::unique_ptr<QaDbEntity> copy;
    {
      QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
      if (!entity) continue;
      copy = CopyEntityAcross(&side, entity.object(), current);
    }
    if (!copy) continue;
    copy->transformBy(scaling);
    copy->transformBy(move);
    list.push_back(pool.adopt(std::move(copy)));
  }
  return list;
}
