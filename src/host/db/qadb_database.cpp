#include "host/db/qadb_database.h"

#include <algorithm>

#include "host/db/qadb_open.h"

QaDbDatabase::QaDbDatabase(bool defaults) {
  if (defaults) buildDefaults();
}

QaDbDatabase::~QaDbDatabase() {
  // Objects may look at each other while they go; drop them before the slots.
  for (QaDbObjectSlot* s : order_) s->object.reset();
}

std::string QaDbDatabase::versionName(QaDb::DwgVersion v) {
  switch (v) {
    case QaDb::kDwgCurrent: return "";
    case QaDb::kDwgR12: return "AC1009";
    case QaDb::kDwgR2000: return "AC1015";
    case QaDb::kDwgR2004: return "AC1018";
    case QaDb::kDwgR2007: return "AC1021";
    case QaDb::kDwgR2010: return "AC1024";
    case QaDb::kDwgR2013: return "AC1027";
    case QaDb::kDwgR2018: return "AC1032";
  }
  return "";
}

void QaDbDatabase::setHandseed(QaDbHandle seed) { handseed_ = std::max(seed, slots_.highest().next()); }

QaDbObjectSlot* QaDbDatabase::slotFor(QaDbHandle handle, bool create) {
  if (!create) return slots_.find(handle);
  QaDbObjectSlot* slot = slots_.findOrAdd(handle, this);
  if (handseed_ <= handle) handseed_ = handle.next();
  return slot;
}

void QaDbDatabase::reserveObjects(std::size_t count) {
  slots_.reserve(count);
  order_.reserve(count);
}

Qa::ErrorStatus QaDbDatabase::addObject(std::unique_ptr<QaDbObject> object, QaDbObjectId ownerId,
                                        QaDbObjectId& id) {
  id = QaDbObjectId();
  if (!object) return Qa::eNullObjectPointer;
  if (object->isDatabaseResident()) return Qa::eAlreadyInDb;
  if (!ownerId.isNull() && ownerId.database() != this) return Qa::eWrongDatabase;
  while (slots_.find(handseed_) != nullptr) handseed_ = handseed_.next();
  QaDbObjectSlot* slot = slotFor(handseed_, true);
  QaDbObject* obj = object.get();
  slot->object = std::move(object);
  order_.push_back(slot);
  obj->id_ = QaDbObjectId(slot);
  obj->ownerId_ = ownerId;
  obj->modified_ = true;
  obj->openCount_ = 1;
  obj->writeOpen_ = true;
  id = obj->id_;
  obj->onAddedToDatabase();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDatabase::adoptObject(std::unique_ptr<QaDbObject> object, QaDbHandle handle,
                                          QaDbObjectId ownerId, QaDbObjectId& id) {
  id = QaDbObjectId();
  if (!object) return Qa::eNullObjectPointer;
  if (handle.isNull()) return Qa::eInvalidInput;
  if (object->isDatabaseResident()) return Qa::eAlreadyInDb;
  if (!ownerId.isNull() && ownerId.database() != this) return Qa::eWrongDatabase;
  QaDbObjectSlot* slot = slotFor(handle, true);
  if (slot->object) return Qa::eHandleInUse;
  QaDbObject* obj = object.get();
  slot->object = std::move(object);
  order_.push_back(slot);
  obj->id_ = QaDbObjectId(slot);
  obj->ownerId_ = ownerId;
  id = obj->id_;
  if (QaDbSymbolTable::cast(obj)) {
    QaDbObjectId* table = nullptr;
    if (QaDbBlockTable::cast(obj)) table = &blockTable_;
    else if (QaDbLayerTable::cast(obj)) table = &layerTable_;
    else if (QaDbLinetypeTable::cast(obj)) table = &linetypeTable_;
    else if (QaDbTextStyleTable::cast(obj)) table = &textStyleTable_;
    else if (QaDbRegAppTable::cast(obj)) table = &regAppTable_;
    else if (QaDbViewportTable::cast(obj)) table = &viewportTable_;
    else if (QaDbViewTable::cast(obj)) table = &viewTable_;
    else if (QaDbUCSTable::cast(obj)) table = &ucsTable_;
    else if (QaDbDimStyleTable::cast(obj)) table = &dimStyleTable_;
    if (table && table->isNull()) *table = id;
  } else if (QaDbDictionary::cast(obj) && ownerId.isNull() && namedObjects_.isNull()) {
    namedObjects_ = id;
  }
  if (QaDbObject* owner = ownerId.rawObject()) owner->attachAdoptedChild(id);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDatabase::setSymbolTableId(QaDbObjectId id) {
  QaDbObject* obj = id.rawObject();
  if (obj == nullptr || id.database() != this) return Qa::eInvalidInput;
  if (QaDbBlockTable::cast(obj)) blockTable_ = id;
  else if (QaDbLayerTable::cast(obj)) layerTable_ = id;
  else if (QaDbLinetypeTable::cast(obj)) linetypeTable_ = id;
  else if (QaDbTextStyleTable::cast(obj)) textStyleTable_ = id;
  else if (QaDbRegAppTable::cast(obj)) regAppTable_ = id;
  else if (QaDbViewportTable::cast(obj)) viewportTable_ = id;
  else if (QaDbViewTable::cast(obj)) viewTable_ = id;
  else if (QaDbUCSTable::cast(obj)) ucsTable_ = id;
  else if (QaDbDimStyleTable::cast(obj)) dimStyleTable_ = id;
  else return Qa::eWrongObjectType;
  return Qa::eOk;
}

QaDbObjectId QaDbDatabase::objectIdFromHandle(QaDbHandle handle) const {
  QaDbObjectSlot* slot = slots_.find(handle);
  if (slot == nullptr || !slot->object) return QaDbObjectId();
  return QaDbObjectId(slot);
}

Qa::ErrorStatus QaDbDatabase::getObjectId(QaDbObjectId& id, QaDbHandle handle) const {
  id = objectIdFromHandle(handle);
  return id.isNull() ? Qa::eUnknownHandle : Qa::eOk;
}

QaDbObjectId QaDbDatabase::idForHandle(QaDbHandle handle) {
  if (handle.isNull()) return QaDbObjectId();
  return QaDbObjectId(slotFor(handle, true));
}

std::vector<QaDbObjectId> QaDbDatabase::objectIds(bool includeErased) const {
  std::vector<QaDbObjectId> out;
  out.reserve(order_.size());
  for (std::size_t i = 0; i < order_.size(); ++i) {
#if defined(__GNUC__)
    // Looks at every object: fetch a few ahead so that the misses overlap.
    if (!includeErased && i + 32 < order_.size()) __builtin_prefetch(order_[i + 32]->object.get());
#endif
    QaDbObjectSlot* s = order_[i];
    if (s->object && (includeErased || !s->object->isErased())) out.emplace_back(s);
  }
  return out;
}

std::size_t QaDbDatabase::numObjects() const { return order_.size(); }

void QaDbDatabase::clearModifiedFrom(std::size_t first) {
  // Touches every object once and does little with each: fetch far enough ahead
  // that the misses overlap.
  constexpr std::size_t kAhead = 32;
  for (std::size_t i = first; i < order_.size(); ++i) {
#if defined(__GNUC__)
    if (i + kAhead < order_.size()) __builtin_prefetch(order_[i + kAhead]->object.get(), 1);
#endif
    if (QaDbObject* o = order_[i]->object.get()) o->clearModified();
  }
}

namespace {
template <class T>
Qa::ErrorStatus openTable(QaDbObjectId id, T*& table, QaDb::OpenMode mode) {
  table = nullptr;
  if (id.isNull()) return Qa::eNullObjectId;
  return qadbOpenObject(table, id, mode);
}
}  // namespace

Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbBlockTable*& t, QaDb::OpenMode m) const { return openTable(blockTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbLayerTable*& t, QaDb::OpenMode m) const { return openTable(layerTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbLinetypeTable*& t, QaDb::OpenMode m) const { return openTable(linetypeTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbTextStyleTable*& t, QaDb::OpenMode m) const { return openTable(textStyleTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbRegAppTable*& t, QaDb::OpenMode m) const { return openTable(regAppTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbViewportTable*& t, QaDb::OpenMode m) const { return openTable(viewportTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbViewTable*& t, QaDb::OpenMode m) const { return openTable(viewTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbUCSTable*& t, QaDb::OpenMode m) const { return openTable(ucsTable_, t, m); }
Qa::ErrorStatus QaDbDatabase::getSymbolTable(QaDbDimStyleTable*& t, QaDb::OpenMode m) const { return openTable(dimStyleTable_, t, m); }

QaDbObjectId QaDbDatabase::modelSpaceId() const {
  auto* table = QaDbBlockTable::cast(blockTable_.rawObject());
  return table ? table->getAt(L"*Model_Space") : QaDbObjectId();
}

QaDbObjectId QaDbDatabase::paperSpaceId() const {
  auto* table = QaDbBlockTable::cast(blockTable_.rawObject());
  return table ? table->getAt(L"*Paper_Space") : QaDbObjectId();
}

Qa::ErrorStatus QaDbDatabase::getNamedObjectsDictionary(QaDbDictionary*& dict, QaDb::OpenMode mode) {
  dict = nullptr;
  if (namedObjects_.isNull() || namedObjects_.isErased()) {
    QaDbObjectId id;
    Qa::ErrorStatus es = addObject(std::make_unique<QaDbDictionary>(), QaDbObjectId(), id);
    if (es != Qa::eOk) return es;
    id.rawObject()->close();
    namedObjects_ = id;
  }
  return qadbOpenObject(dict, namedObjects_, mode);
}

Qa::ErrorStatus QaDbDatabase::getGroupDictionary(QaDbDictionary*& dict, QaDb::OpenMode mode) {
  dict = nullptr;
  QaDbObjectId id = groupDictionaryId();
  if (id.isNull()) return Qa::eKeyNotFound;
  return qadbOpenObject(dict, id, mode);
}

QaDbObjectId QaDbDatabase::groupDictionaryId() {
  QaDbDictionary* nod = nullptr;
  if (getNamedObjectsDictionary(nod, QaDb::kForWrite) != Qa::eOk) return QaDbObjectId();
  QaDbObjectId id;
  if (nod->getAt(L"ACAD_GROUP", id) != Qa::eOk || id.isErased()) {
    bool wasModified = nod->isModified();
    if (nod->setAt(L"ACAD_GROUP", std::make_unique<QaDbDictionary>(), id) == Qa::eOk) {
      id.rawObject()->close();
    } else if (!wasModified) {
      nod->clearModified();
    }
  }
  nod->close();
  return id;
}

Qa::ErrorStatus QaDbDatabase::registerApp(const std::wstring& appName) {
  if (!QaDbSymbolTableRecord::isValidName(appName)) return Qa::eBadSymbolTableName;
  auto* table = QaDbRegAppTable::cast(regAppTable_.rawObject());
  if (table == nullptr) return Qa::eNullObjectId;
  if (table->has(appName)) return Qa::eOk;
  QaDbObjectPointer<QaDbRegAppTable> t(regAppTable_, QaDb::kForWrite);
  if (!t) return t.openStatus();
  QaDbObjectId id;
  Qa::ErrorStatus es = t->add(std::make_unique<QaDbRegAppTableRecord>(appName), id);
  if (es == Qa::eOk) id.rawObject()->close();
  return es;
}

Qa::ErrorStatus QaDbDatabase::ensureLayer(const std::wstring& name, QaDbObjectId& id) {
  id = QaDbObjectId();
  auto* table = QaDbLayerTable::cast(layerTable_.rawObject());
  if (table == nullptr) return Qa::eNullObjectId;
  if (table->getAt(name, id) == Qa::eOk) return Qa::eOk;
  QaDbObjectPointer<QaDbLayerTable> t(layerTable_, QaDb::kForWrite);
  if (!t) return t.openStatus();
  Qa::ErrorStatus es = t->add(std::make_unique<QaDbLayerTableRecord>(name), id);
  if (es == Qa::eOk) id.rawObject()->close();
  return es;
}

void QaDbDatabase::buildDefaults() {
  auto addTable = [&](std::unique_ptr<QaDbSymbolTable> table, QaDbObjectId& slot) {
    QaDbObjectId id;
    addObject(std::move(table), QaDbObjectId(), id);
    id.rawObject()->close();
    slot = id;
  };
  // Tables in the order a drawing file lists them.
  addTable(std::make_unique<QaDbViewportTable>(), viewportTable_);
  addTable(std::make_unique<QaDbLinetypeTable>(), linetypeTable_);
  addTable(std::make_unique<QaDbLayerTable>(), layerTable_);
  addTable(std::make_unique<QaDbTextStyleTable>(), textStyleTable_);
  addTable(std::make_unique<QaDbViewTable>(), viewTable_);
  addTable(std::make_unique<QaDbUCSTable>(), ucsTable_);
  addTable(std::make_unique<QaDbRegAppTable>(), regAppTable_);
  addTable(std::make_unique<QaDbDimStyleTable>(), dimStyleTable_);
  addTable(std::make_unique<QaDbBlockTable>(), blockTable_);

  auto addRecord = [&](QaDbObjectId tableId, std::unique_ptr<QaDbSymbolTableRecord> rec) {
    QaDbObjectPointer<QaDbSymbolTable> t(tableId, QaDb::kForWrite);
    QaDbObjectId id;
    t->add(std::move(rec), id);
    id.rawObject()->close();
  };
  auto vport = std::make_unique<QaDbViewportTableRecord>(L"*Active");
  addRecord(viewportTable_, std::move(vport));
  for (const wchar_t* name : {L"ByBlock", L"ByLayer"}) addRecord(linetypeTable_, std::make_unique<QaDbLinetypeTableRecord>(name));
  auto continuous = std::make_unique<QaDbLinetypeTableRecord>(L"Continuous");
  continuous->setComments(L"Solid line");
  addRecord(linetypeTable_, std::move(continuous));
  addRecord(layerTable_, std::make_unique<QaDbLayerTableRecord>(L"0"));
  addRecord(textStyleTable_, std::make_unique<QaDbTextStyleTableRecord>(L"Standard"));
  addRecord(regAppTable_, std::make_unique<QaDbRegAppTableRecord>(L"ACAD"));
  addRecord(dimStyleTable_, std::make_unique<QaDbDimStyleTableRecord>(L"Standard"));
  addRecord(blockTable_, std::make_unique<QaDbBlockTableRecord>(L"*Model_Space"));
  addRecord(blockTable_, std::make_unique<QaDbBlockTableRecord>(L"*Paper_Space"));

  QaDbDictionary* nod = nullptr;
  getNamedObjectsDictionary(nod, QaDb::kForRead);
  nod->close();
  groupDictionaryId();
}

void QaDbDatabase::swap(QaDbDatabase& other) {
  if (this == &other) return;
  std::swap(arenas_, other.arenas_);
  std::swap(slots_, other.slots_);
  std::swap(order_, other.order_);
  std::swap(handseed_, other.handseed_);
  std::swap(version_, other.version_);
  std::swap(codePage_, other.codePage_);
  std::swap(insbase_, other.insbase_);
  std::swap(filename_, other.filename_);
  std::swap(dxfHeader_, other.dxfHeader_);
  std::swap(blockTable_, other.blockTable_);
  std::swap(layerTable_, other.layerTable_);
  std::swap(linetypeTable_, other.linetypeTable_);
  std::swap(textStyleTable_, other.textStyleTable_);
  std::swap(regAppTable_, other.regAppTable_);
  std::swap(viewportTable_, other.viewportTable_);
  std::swap(viewTable_, other.viewTable_);
  std::swap(ucsTable_, other.ucsTable_);
  std::swap(dimStyleTable_, other.dimStyleTable_);
  std::swap(namedObjects_, other.namedObjects_);
  slots_.forEach([this](QaDbObjectSlot& slot) { slot.database = this; });
  other.slots_.forEach([&other](QaDbObjectSlot& slot) { slot.database = &other; });
}
