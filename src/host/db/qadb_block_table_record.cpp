#include "host/db/qadb_block_table_record.h"

#include <algorithm>

#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_id_mapping.h"

QARX_DEFINE_MEMBERS(QaDbBlockTableRecord, QaDbSymbolTableRecord, L"BLOCK_RECORD")

QaDbBlockTableRecord::QaDbBlockTableRecord(const QaDbBlockTableRecord& other)
    : QaDbSymbolTableRecord(other),
      origin_(other.origin_),
      comments_(other.comments_),
      xrefPath_(other.xrefPath_),
      insertUnits_(other.insertUnits_),
      explodable_(other.explodable_),
      scaleUniformly_(other.scaleUniformly_) {}

Qa::ErrorStatus QaDbBlockTableRecord::setOrigin(const QaGePoint3d& p) {
  assertWriteEnabled();
  origin_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::setComments(const std::wstring& text) {
  assertWriteEnabled();
  comments_ = text;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::setPathName(const std::wstring& path) {
  assertWriteEnabled();
  xrefPath_ = path;
  return Qa::eOk;
}

bool QaDbBlockTableRecord::isLayout() const {
  const std::wstring& n = name();
  auto startsWith = [&](std::wstring_view prefix) {
    if (n.size() < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
      if (std::towupper(n[i]) != std::towupper(prefix[i])) return false;
    return true;
  };
  return startsWith(L"*Model_Space") || startsWith(L"*Paper_Space");
}

bool QaDbBlockTableRecord::isAnonymous() const {
  if (isLayout()) return false;
  return (flags() & kAnonymous) != 0 || (!name().empty() && name()[0] == L'*');
}

bool QaDbBlockTableRecord::hasAttributeDefinitions() const {
  for (QaDbObjectId id : entities_) {
    auto* def = QaDbAttributeDefinition::cast(id.rawObject());
    if (def && !def->isErased() && !def->isConstant()) return true;
  }
  return false;
}

int QaDbBlockTableRecord::blockFlags() const {
  int f = flags() & ~kHasAttributes;
  if (hasAttributeDefinitions()) f |= kHasAttributes;
  return f;
}

Qa::ErrorStatus QaDbBlockTableRecord::setInsertUnits(int units) {
  assertWriteEnabled();
  insertUnits_ = units;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::setExplodable(bool on) {
  assertWriteEnabled();
  explodable_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::setScaleUniformly(bool on) {
  assertWriteEnabled();
  scaleUniformly_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::setLayoutId(QaDbObjectId id) {
  assertWriteEnabled();
  layoutId_ = id;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecord::appendQaDbEntity(std::unique_ptr<QaDbEntity> entity, QaDbObjectId& id) {
  id = QaDbObjectId();
  if (!entity) return Qa::eNullEntityPointer;
  if (!isDatabaseResident()) return Qa::eNotInDatabase;
  if (entity->isDatabaseResident()) return Qa::eAlreadyInDb;
  assertWriteEnabled();
  Qa::ErrorStatus es = database()->addObject(std::move(entity), objectId(), id);
  if (es == Qa::eOk) entities_.push_back(id);
  return es;
}

std::unique_ptr<QaDbBlockTableRecordIterator> QaDbBlockTableRecord::newIterator() const {
  return std::make_unique<QaDbBlockTableRecordIterator>(this);
}

std::vector<QaDbObjectId> QaDbBlockTableRecord::liveEntityIds() const {
  std::vector<QaDbObjectId> out;
  for (QaDbObjectId id : entities_)
    if (id.isValid() && !id.isErased()) out.push_back(id);
  return out;
}

Qa::ErrorStatus QaDbBlockTableRecord::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  for (QaDbObjectId id : entities_) {
    auto* ent = QaDbEntity::cast(id.rawObject());
    if (ent == nullptr || ent->isErased()) continue;
    if (auto* def = QaDbAttributeDefinition::cast(ent); def && !def->isConstant()) continue;
    QaDbExtents e;
    if (ent->getGeomExtents(e) == Qa::eOk) ext.addExt(e);
  }
  return ext.isEmpty() ? Qa::eInvalidExtents : Qa::eOk;
}

void QaDbBlockTableRecord::ownedIds(std::vector<QaDbObjectId>& out) const {
  out.insert(out.end(), entities_.begin(), entities_.end());
}

void QaDbBlockTableRecord::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbSymbolTableRecord::remapIds(mapping, target);
  std::vector<QaDbObjectId> kept;
  for (QaDbObjectId id : entities_) {
    QaDbObjectId m = mapping.destinationOf(id);
    if (!m.isNull()) kept.push_back(m);
    else if (id.database() == target) kept.push_back(id);
  }
  entities_ = std::move(kept);
  if (!layoutId_.isNull() && layoutId_.database() != target) layoutId_ = mapping.destinationOf(layoutId_);
}

void QaDbBlockTableRecord::attachAdoptedChild(QaDbObjectId child) {
  // Callers hand over an object just added to the database, so it cannot be in the
  // list yet; only a repeat of the last call is ignored (a scan would make loading
  // a drawing of n entities take n^2 steps).
  if (QaDbEntity::cast(child.rawObject()) && (entities_.empty() || entities_.back() != child))
    entities_.push_back(child);
}

void QaDbBlockTableRecord::onErased(bool erasing) { QaDbSymbolTableRecord::onErased(erasing); }

QaDbBlockTableRecordIterator::QaDbBlockTableRecordIterator(const QaDbBlockTableRecord* record) : record_(record) {
  skipErased();
}

void QaDbBlockTableRecordIterator::start() {
  index_ = 0;
  skipErased();
}

bool QaDbBlockTableRecordIterator::done() const { return index_ >= record_->entities_.size(); }

void QaDbBlockTableRecordIterator::step() {
  if (!done()) ++index_;
  skipErased();
}

void QaDbBlockTableRecordIterator::skipErased() {
  while (index_ < record_->entities_.size()) {
    QaDbObjectId id = record_->entities_[index_];
    if (id.isValid() && !id.isErased()) break;
    ++index_;
  }
}

QaDbObjectId QaDbBlockTableRecordIterator::entityId() const {
  return done() ? QaDbObjectId() : record_->entities_[index_];
}

Qa::ErrorStatus QaDbBlockTableRecordIterator::getEntityId(QaDbObjectId& id) const {
  id = entityId();
  return id.isNull() ? Qa::eInvalidIndex : Qa::eOk;
}

Qa::ErrorStatus QaDbBlockTableRecordIterator::getEntity(QaDbEntity*& entity, QaDb::OpenMode mode,
                                                        bool openErased) const {
  return qadbOpenObject(entity, entityId(), mode, openErased);
}
