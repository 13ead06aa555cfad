#include "host/db/qadb_dimension.h"

#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_id_mapping.h"

QARX_DEFINE_MEMBERS(QaDbDimension, QaDbEntity, L"DIMENSION")

Qa::ErrorStatus QaDbDimension::setDimensionFlags(int flags) {
  assertWriteEnabled();
  flags_ = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setDimBlockId(QaDbObjectId id) {
  if (!id.isNull() && !QaDbBlockTableRecord::cast(id.rawObject())) return Qa::eWrongObjectType;
  assertWriteEnabled();
  block_ = id;
  blockTransform_.setToIdentity();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setDimensionStyle(QaDbObjectId id) {
  assertWriteEnabled();
  style_ = id;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setDimensionText(const std::wstring& text) {
  assertWriteEnabled();
  text_ = text;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setMeasurement(double m) {
  assertWriteEnabled();
  measurement_ = m;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::getDefinitionPoint(int code, QaGePoint3d& p) const {
  if (code < 10 || code > 16) return Qa::eInvalidIndex;
  p = points_[code - 10];
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setDefinitionPoint(int code, const QaGePoint3d& p) {
  if (code < 10 || code > 16) return Qa::eInvalidIndex;
  assertWriteEnabled();
  points_[code - 10] = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setRotation(double a) {
  assertWriteEnabled();
  rotation_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setTextRotation(double a) {
  assertWriteEnabled();
  textRotation_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setObliqueAngle(double a) {
  assertWriteEnabled();
  oblique_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setLeaderLength(double l) {
  assertWriteEnabled();
  leaderLength_ = l;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

QaGeMatrix3d QaDbDimension::blockPlacement() const {
  // The insertion point has been moved along with the other points; the block is drawn
  // at where it stood when the block was made, then under the transforms since.
  QaGePoint3d original = blockTransform_.inverse() * blockInsertionPoint();
  return blockTransform_ * QaGeMatrix3d::translation(original.asVector());
}

Qa::ErrorStatus QaDbDimension::transformBy(const QaGeMatrix3d& m) {
  assertWriteEnabled();
  for (QaGePoint3d& p : points_) p = m * p;
  QaGeVector3d n = (m * normal_).normal();
  if (!n.isZeroLength()) normal_ = n;
  blockTransform_ = m * blockTransform_;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  if (auto* btr = QaDbBlockTableRecord::cast(block_.rawObject()); btr && !btr->isErased()) {
    QaGeMatrix3d m = blockPlacement();
    for (QaDbObjectId id : btr->entityIds()) {
      auto* ent = QaDbEntity::cast(id.rawObject());
      if (ent == nullptr || ent->isErased()) continue;
      QaDbExtents e;
      if (ent->getTransformedExtents(m, e) == Qa::eOk) ext.addExt(e);
    }
    if (!ext.isEmpty()) return Qa::eOk;
  }
  // Without a block: the points that the kind of dimension uses.
  ext.addPoint(points_[0]);
  ext.addPoint(points_[1]);
  switch (kind()) {
    case kRotated:
    case kAligned:
    case kOrdinate:
      ext.addPoint(points_[3]);
      ext.addPoint(points_[4]);
      break;
    case kDiameter:
    case kRadius:
      ext.addPoint(points_[5]);
      break;
    case kAngular:
      ext.addPoint(points_[3]);
      ext.addPoint(points_[4]);
      ext.addPoint(points_[5]);
      ext.addPoint(points_[6]);
      break;
    case kAngular3Point:
      ext.addPoint(points_[3]);
      ext.addPoint(points_[4]);
      ext.addPoint(points_[5]);
      break;
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDimension::explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const {
  auto* btr = QaDbBlockTableRecord::cast(block_.rawObject());
  if (btr == nullptr) return Qa::eNotApplicable;
  QaGeMatrix3d m = blockPlacement();
  for (QaDbObjectId id : btr->entityIds()) {
    auto* ent = QaDbEntity::cast(id.rawObject());
    if (ent == nullptr || ent->isErased()) continue;
    std::unique_ptr<QaDbEntity> copy = ent->cloneEntity();
    if (copy->transformBy(m) == Qa::eOk) out.push_back(std::move(copy));
  }
  return Qa::eOk;
}

void QaDbDimension::hardReferences(std::vector<QaDbObjectId>& out) const {
  if (!block_.isNull()) out.push_back(block_);
  if (!style_.isNull()) out.push_back(style_);
}

void QaDbDimension::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbEntity::remapIds(mapping, target);
  if (QaDbObjectId m = mapping.destinationOf(block_); !m.isNull()) block_ = m;
  else if (!block_.isNull() && block_.database() != target) block_ = QaDbObjectId();
  if (QaDbObjectId m = mapping.destinationOf(style_); !m.isNull()) style_ = m;
  else if (!style_.isNull() && style_.database() != target) style_ = QaDbObjectId();
}
