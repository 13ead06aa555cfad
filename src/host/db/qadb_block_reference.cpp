#include "host/db/qadb_block_reference.h"

#include <algorithm>
#include <cmath>

#include "host/db/qadb_arc.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_ellipse.h"
#include "host/db/qadb_id_mapping.h"

QARX_DEFINE_MEMBERS(QaDbBlockReference, QaDbEntity, L"INSERT")

QaDbBlockReference::QaDbBlockReference() = default;

namespace {
constexpr int kMaxNesting = 32;
}

QaDbBlockReference::QaDbBlockReference(const QaDbBlockReference& other)
    : QaDbEntity(other),
      block_(other.block_),
      position_(other.position_),
      rotation_(other.rotation_),
      scale_(other.scale_),
      normal_(other.normal_) {
  // The copy holds copies of the attributes, in memory.
  for (QaDbObjectId id : other.attributeIds_)
    if (auto* att = QaDbAttribute::cast(id.rawObject()); att && !att->isErased())
      pending_.emplace_back(static_cast<QaDbAttribute*>(att->clone().release()));
  for (const auto& att : other.pending_) pending_.emplace_back(static_cast<QaDbAttribute*>(att->clone().release()));
}

QaDbBlockReference::~QaDbBlockReference() = default;

Qa::ErrorStatus QaDbBlockReference::setBlockTableRecord(QaDbObjectId id) {
  if (id.isNull()) return Qa::eNullObjectId;
  if (!QaDbBlockTableRecord::cast(id.rawObject())) return Qa::eWrongObjectType;
  if (isDatabaseResident() && id.database() != database()) return Qa::eWrongDatabase;
  assertWriteEnabled();
  block_ = id;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::setPosition(const QaGePoint3d& p) {
  assertWriteEnabled();
  position_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::setRotation(double a) {
  assertWriteEnabled();
  rotation_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::setScaleFactors(const QaGeScale3d& s) {
  if (s.sx == 0.0 || s.sy == 0.0 || s.sz == 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  scale_ = s;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

QaGeMatrix3d QaDbBlockReference::blockTransform() const {
  QaGePoint3d origin;
  if (auto* btr = QaDbBlockTableRecord::cast(block_.rawObject())) origin = btr->origin();
  return QaGeMatrix3d::translation(position_.asVector()) * QaGeMatrix3d::planeToWorld(normal_) *
         QaGeMatrix3d::rotation(rotation_) * QaGeMatrix3d::scaling(scale_) *
         QaGeMatrix3d::translation(-origin.asVector());
}

Qa::ErrorStatus QaDbBlockReference::setBlockTransform(const QaGeMatrix3d& m) {
  QaGePoint3d origin;
  if (auto* btr = QaDbBlockTableRecord::cast(block_.rawObject())) origin = btr->origin();
  QaGeVector3d x = m * QaGeVector3d::kXAxis;
  QaGeVector3d y = m * QaGeVector3d::kYAxis;
  QaGeVector3d z = m * QaGeVector3d::kZAxis;
  double sx = x.length(), sy = y.length(), sz = z.length();
  if (sx == 0.0 || sy == 0.0 || sz == 0.0) return Qa::eInvalidInput;
  // The transform must be scale, then rotation about the (new) normal.
  if (std::abs(x.dotProduct(y)) > 1e-9 * sx * sy || std::abs(x.dotProduct(z)) > 1e-9 * sx * sz ||
      std::abs(y.dotProduct(z)) > 1e-9 * sy * sz)
    return Qa::eCannotScaleNonUniformly;
  QaGeVector3d n = x.crossProduct(y).normal();
  QaGeVector3d xdir = x;
  if (n.dotProduct(normal_) < -1.0 + 1e-9) {
    // A mirror in the plane keeps the normal and shows as a negative x factor.
    n = normal_;
    sx = -sx;
    xdir = -x;
  }
  if (z.dotProduct(n) < 0.0) sz = -sz;
  assertWriteEnabled();
  normal_ = n;
  rotation_ = QaDbGeom::angleInPlane(xdir, normal_);
  scale_ = QaGeScale3d(sx, sy, sz);
  position_ = m * origin;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::appendAttribute(QaDbObjectId& id, std::unique_ptr<QaDbAttribute> attribute) {
  id = QaDbObjectId();
  if (!attribute) return Qa::eNullEntityPointer;
  if (attribute->isDatabaseResident()) return Qa::eAlreadyInDb;
  assertWriteEnabled();
  if (!isDatabaseResident()) {
    pending_.push_back(std::move(attribute));
    return Qa::eOk;
  }
  Qa::ErrorStatus es = database()->addObject(std::move(attribute), objectId(), id);
  if (es == Qa::eOk) attributeIds_.push_back(id);
  return es;
}

QaDbObjectId QaDbBlockReference::appendAttribute(std::unique_ptr<QaDbAttribute> attribute) {
  QaDbObjectId id;
  appendAttribute(id, std::move(attribute));
  return id;
}

std::unique_ptr<QaDbObjectIterator> QaDbBlockReference::attributeIterator() const {
  return std::make_unique<QaDbObjectIterator>(this);
}

int QaDbBlockReference::attributeCount() const {
  int n = 0;
  for (auto it = attributeIterator(); !it->done(); it->step()) ++n;
  return n;
}

Qa::ErrorStatus QaDbBlockReference::transformBy(const QaGeMatrix3d& m) {
  QaGeMatrix3d combined = m * blockTransform();
  // Check the attributes first so that nothing moves when one cannot follow.
  QaDbBlockReference probe(*this);
  probe.attributeIds_.clear();
  Qa::ErrorStatus es = probe.setBlockTransform(combined);
  if (es != Qa::eOk) return es;
  assertWriteEnabled();
  normal_ = probe.normal_;
  rotation_ = probe.rotation_;
  scale_ = probe.scale_;
  position_ = probe.position_;
  for (auto& att : pending_) att->transformBy(m);
  for (QaDbObjectId id : attributeIds_) {
    QaDbObjectPointer<QaDbAttribute> att(id, QaDb::kForWrite, true);
    if (att) att->transformBy(m);
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::extentsUnder(const QaGeMatrix3d& outer, QaDbExtents& ext, int depth) const {
  auto* btr = QaDbBlockTableRecord::cast(block_.rawObject());
  if (btr == nullptr || depth > kMaxNesting) return Qa::eInvalidExtents;
  QaGeMatrix3d m = outer * blockTransform();
  for (QaDbObjectId id : btr->entityIds()) {
    auto* ent = QaDbEntity::cast(id.rawObject());
    if (ent == nullptr || ent->isErased()) continue;
    if (auto* def = QaDbAttributeDefinition::cast(ent); def && !def->isConstant()) continue;
    QaDbExtents e;
    Qa::ErrorStatus es;
    if (auto* nested = QaDbBlockReference::cast(ent)) {
      es = nested->extentsUnder(m, e, depth + 1);
      // Attributes of a nested reference are drawn too.
      for (auto it = nested->attributeIterator(); !it->done(); it->step()) {
        auto* att = QaDbAttribute::cast(it->entity());
        QaDbExtents ae;
        if (att && !att->isInvisible() && att->getTransformedExtents(m, ae) == Qa::eOk) e.addExt(ae);
      }
    } else {
      es = ent->getTransformedExtents(m, e);
    }
    if (es == Qa::eOk) ext.addExt(e);
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockReference::getGeomExtents(QaDbExtents& ext) const {
  return getTransformedExtents(QaGeMatrix3d::kIdentity, ext);
}

Qa::ErrorStatus QaDbBlockReference::getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const {
  ext.reset();
  extentsUnder(m, ext, 0);
  for (auto it = attributeIterator(); !it->done(); it->step()) {
    auto* att = QaDbAttribute::cast(it->entity());
    QaDbExtents e;
    if (att && !att->isInvisible() && att->getTransformedExtents(m, e) == Qa::eOk) ext.addExt(e);
  }
  return ext.isEmpty() ? Qa::eInvalidExtents : Qa::eOk;
}

namespace {
// A circle or arc under a transform that does not keep circles: the ellipse it becomes.
std::unique_ptr<QaDbEntity> asEllipse(const QaDbEntity* ent, const QaGeMatrix3d& m) {
  QaGePoint3d c;
  QaGeVector3d n;
  double r = 0.0, s = 0.0, e = QaDbGeom::kTwoPi;
  if (auto* circle = QaDbCircle::cast(ent)) {
    c = circle->center();
    n = circle->normal();
    r = circle->radius();
  } else if (auto* arc = QaDbArc::cast(ent)) {
    c = arc->center();
    n = arc->normal();
    r = arc->radius();
    s = arc->startAngle();
    e = arc->startAngle() + arc->sweep();
  } else {
    return nullptr;
  }
  QaGeVector3d major = QaGeMatrix3d::planeToWorld(n) * QaGeVector3d(r, 0, 0);
  auto ellipse = std::make_unique<QaDbEllipse>(c, n, major, 1.0, s, e);
  ellipse->setPropertiesFrom(ent);
  ellipse->setAllXData(ent->allXData());
  if (ellipse->transformBy(m) != Qa::eOk) return nullptr;
  return ellipse;
}
}  // namespace

Qa::ErrorStatus QaDbBlockReference::explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const {
  auto* btr = QaDbBlockTableRecord::cast(block_.rawObject());
  if (btr == nullptr) return Qa::eNullObjectId;
  QaGeMatrix3d m = blockTransform();
  for (QaDbObjectId id : btr->entityIds()) {
    auto* ent = QaDbEntity::cast(id.rawObject());
    if (ent == nullptr || ent->isErased()) continue;
    std::unique_ptr<QaDbEntity> copy = ent->cloneEntity();
    if (copy->transformBy(m) != Qa::eOk) {
      copy = asEllipse(ent, m);
      if (!copy) continue;
    }
    out.push_back(std::move(copy));
  }
  return Qa::eOk;
}

void QaDbBlockReference::ownedIds(std::vector<QaDbObjectId>& out) const {
  out.insert(out.end(), attributeIds_.begin(), attributeIds_.end());
}

void QaDbBlockReference::hardReferences(std::vector<QaDbObjectId>& out) const {
  if (!block_.isNull()) out.push_back(block_);
}

void QaDbBlockReference::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbEntity::remapIds(mapping, target);
  for (auto& att : pending_) att->remapIds(mapping, target);
  if (!block_.isNull() && block_.database() != target) block_ = mapping.destinationOf(block_);
  else if (QaDbObjectId m = mapping.destinationOf(block_); !m.isNull()) block_ = m;
}

void QaDbBlockReference::attachAdoptedChild(QaDbObjectId child) {
  if (QaDbAttribute::cast(child.rawObject()) &&
      std::find(attributeIds_.begin(), attributeIds_.end(), child) == attributeIds_.end()) {
    if (attributeIds_.empty()) attributeIds_.reserve(4);  // one allocation for the usual few
    attributeIds_.push_back(child);
  }
}

void QaDbBlockReference::onAddedToDatabase() {
  QaDbEntity::onAddedToDatabase();
  std::vector<std::unique_ptr<QaDbAttribute>> moving;
  moving.swap(pending_);
  for (auto& att : moving) {
    QaDbObjectId id;
    if (database()->addObject(std::move(att), objectId(), id) == Qa::eOk) {
      attributeIds_.push_back(id);
      id.rawObject()->close();
    }
  }
}

void QaDbBlockReference::onErased(bool erasing) { QaDbEntity::onErased(erasing); }

QaDbObjectIterator::QaDbObjectIterator(const QaDbBlockReference* ref) : ref_(ref) { skipErased(); }

void QaDbObjectIterator::start() {
  index_ = 0;
  skipErased();
}

bool QaDbObjectIterator::done() const {
  return index_ >= (ref_->isDatabaseResident() ? ref_->attributeIds_.size() : ref_->pending_.size());
}

void QaDbObjectIterator::step() {
  if (!done()) ++index_;
  skipErased();
}

void QaDbObjectIterator::skipErased() {
  if (!ref_->isDatabaseResident()) return;
  while (index_ < ref_->attributeIds_.size()) {
    QaDbObjectId id = ref_->attributeIds_[index_];
    if (id.isValid() && !id.isErased()) break;
    ++index_;
  }
}

QaDbEntity* QaDbObjectIterator::entity() const {
  if (done()) return nullptr;
  if (!ref_->isDatabaseResident()) return ref_->pending_[index_].get();
  return QaDbEntity::cast(ref_->attributeIds_[index_].rawObject());
}

QaDbObjectId QaDbObjectIterator::objectId() const {
  if (done() || !ref_->isDatabaseResident()) return QaDbObjectId();
  return ref_->attributeIds_[index_];
}
