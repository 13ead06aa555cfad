#include "host/db/qadb_group.h"

#include <algorithm>

#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_id_mapping.h"
#include "host/db/qadb_open.h"

QARX_DEFINE_MEMBERS(QaDbGroup, QaDbObject, L"GROUP")

Qa::ErrorStatus QaDbGroup::setDescription(const std::wstring& d) {
  assertWriteEnabled();
  description_ = d;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbGroup::setSelectable(bool on) {
  assertWriteEnabled();
  selectable_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbGroup::setAnonymous() { return setAnonymous(true); }

Qa::ErrorStatus QaDbGroup::setAnonymous(bool on) {
  assertWriteEnabled();
  anonymous_ = on;
  return Qa::eOk;
}

std::wstring QaDbGroup::name() const {
  std::wstring key;
  if (auto* dict = QaDbDictionary::cast(ownerId().rawObject())) dict->nameAt(objectId(), key);
  return key;
}

void QaDbGroup::setReactorOn(QaDbObjectId member, bool on) {
  if (!isDatabaseResident() || member.database() != database()) return;
  QaDbObjectPointer<QaDbObject> p(member, QaDb::kForWrite, true);
  if (!p) return;
  if (on) p->addPersistentReactor(objectId());
  else p->removePersistentReactor(objectId());
}

Qa::ErrorStatus QaDbGroup::append(QaDbObjectId id) {
  if (id.isNull()) return Qa::eNullObjectId;
  if (!id.isValid()) return Qa::eUnknownHandle;
  if (isDatabaseResident() && id.database() != database()) return Qa::eWrongDatabase;
  if (!members_.empty() && members_.front().database() != id.database()) return Qa::eWrongDatabase;
  if (id == objectId()) return Qa::eSelfReference;
  if (std::find(members_.begin(), members_.end(), id) != members_.end()) return Qa::eDuplicateKey;
  assertWriteEnabled();
  members_.push_back(id);
  if (!isErased()) setReactorOn(id, true);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbGroup::append(const std::vector<QaDbObjectId>& ids) {
  Qa::ErrorStatus result = Qa::eOk;
  for (QaDbObjectId id : ids) {
    Qa::ErrorStatus es = append(id);
    if (es != Qa::eOk && result == Qa::eOk) result = es;
  }
  return result;
}

Qa::ErrorStatus QaDbGroup::remove(QaDbObjectId id) {
  auto it = std::find(members_.begin(), members_.end(), id);
  if (it == members_.end()) return Qa::eKeyNotFound;
  assertWriteEnabled();
  members_.erase(it);
  setReactorOn(id, false);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbGroup::clear() {
  assertWriteEnabled();
  std::vector<QaDbObjectId> old;
  old.swap(members_);
  for (QaDbObjectId id : old) setReactorOn(id, false);
  return Qa::eOk;
}

bool QaDbGroup::has(QaDbObjectId id) const {
  return !id.isErased() && std::find(members_.begin(), members_.end(), id) != members_.end();
}

std::vector<QaDbObjectId> QaDbGroup::allEntityIds() const {
  std::vector<QaDbObjectId> out;
  for (QaDbObjectId id : members_)
    if (id.isValid() && !id.isErased()) out.push_back(id);
  return out;
}

Qa::ErrorStatus QaDbGroup::allEntityIds(std::vector<QaDbObjectId>& ids) const {
  ids = allEntityIds();
  return Qa::eOk;
}

int QaDbGroup::numEntities() const { return static_cast<int>(allEntityIds().size()); }

void QaDbGroup::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbObject::remapIds(mapping, target);
  std::vector<QaDbObjectId> kept;
  for (QaDbObjectId id : members_) {
    QaDbObjectId m = mapping.destinationOf(id);
    if (!m.isNull()) kept.push_back(m);
    else if (id.database() == target) kept.push_back(id);
  }
  members_ = std::move(kept);
  if (isDatabaseResident() && !isErased())
    for (QaDbObjectId id : members_) setReactorOn(id, true);
}

void QaDbGroup::onAddedToDatabase() {
  // Members that came from elsewhere cannot be kept.
  std::erase_if(members_, [&](QaDbObjectId id) { return id.database() != database(); });
  for (QaDbObjectId id : members_) setReactorOn(id, true);
}

void QaDbGroup::onErased(bool erasing) {
  QaDbObject::onErased(erasing);
  for (QaDbObjectId id : members_) setReactorOn(id, !erasing);
}
