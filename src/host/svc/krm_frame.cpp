#include "host/svc/krm_frame.h"

#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"

namespace {

constexpr double kTolerance = 1e-6;

std::vector<QaDbObjectId> modelSpaceIds(QaDbDatabase* db) {
  if (!db) return {};
  QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
  return space ? space->liveEntityIds() : std::vector<QaDbObjectId>{};
}

bool holds(const QaDbExtents& outer, const QaDbExtents& inner) {
  return inner.minPoint().x >= outer.minPoint().x - kTolerance && inner.minPoint().y >= outer.minPoint().y - kTolerance &&
         inner.maxPoint().x <= outer.maxPoint().x + kTolerance && inner.maxPoint().y <= outer.maxPoint().y + kTolerance;
}

}  // namespace

Qa::ErrorStatus KrmFrame::open(QaDbObjectId id, const KrmFrameRules& rules, KrmFrame& out) {
  QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
  if (!ref) return ref.openStatus();
  QaDbDatabase* db = id.database();
  if (!db || ref->ownerId() != db->modelSpaceId() || !rules.isFrame(*ref)) return Qa::eWrongObjectType;
  KrmFrame frame;
  frame.id_ = id;
  frame.scale_ = ref->scaleFactors().sx;
  frame.blockName_ = KrmBlockNameOf(*ref);
  if (ref->getGeomExtents(frame.extents_) != Qa::eOk) frame.extents_ = QaDbExtents(ref->position(), ref->position());
  out = std::move(frame);
  return Qa::eOk;
}

std::wstring KrmFrame::getDicName() const { return id_.handle().text(); }

bool KrmFrame::contains(const QaGePoint3d& point) const {
  if (extents_.isEmpty()) return false;
  return point.x >= extents_.minPoint().x - kTolerance && point.x <= extents_.maxPoint().x + kTolerance &&
         point.y >= extents_.minPoint().y - kTolerance && point.y <= extents_.maxPoint().y + kTolerance;
}

std::vector<KrmFrame> KrmFindFrames(QaDbDatabase* db, const KrmFrameRules& rules) {
  std::vector<KrmFrame> frames;
  for (auto id : modelSpaceIds(db)) {
    KrmFrame frame;
    if (KrmFrame::open(id, rules, frame) == Qa::eOk) frames.push_back(std::move(frame));
  }
  return frames;
}

QaDbObjectId GetKrmFrameXdata(QaDbObjectId entityId) { return GetKrmFrameXdata(entityId, KrmFrameRules::load()); }

QaDbObjectId GetKrmFrameXdata(QaDbObjectId entityId, const KrmFrameRules& rules) {
  KrmFrame self;
  if (KrmFrame::open(entityId, rules, self) == Qa::eOk) return entityId;
  QaDbExtents ext;
  {
    QaDbObjectPointer<QaDbEntity> entity(entityId, QaDb::kForRead);
    if (!entity) return {};
    if (entity->getGeomExtents(ext) != Qa::eOk || ext.isEmpty()) {
      auto* ref = QaDbBlockReference::cast(entity.object());
      if (!ref) return {};
      ext = QaDbExtents(ref->position(), ref->position());
    }
  }
  for (const auto& frame : KrmFindFrames(entityId.database(), rules))
    if (!frame.extents().isEmpty() && holds(frame.extents(), ext)) return frame.objectId();
  return {};
}
