// Copying objects between databases and within one: the objects asked for, what they
// own (a block's entities, a reference's attributes) and the records they need.
#include <algorithm>
#include <cwctype>

#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_group.h"

class QaDbCloner {
 public:
  QaDbCloner(QaDbDatabase* source, QaDbDatabase* dest, QaDbIdMapping& mapping, QaDb::DuplicateRecordCloning drc)
      : src_(source), dst_(dest), mapping_(mapping), drc_(drc) {
    mapping_.setOrigDb(source);
    mapping_.setDestDb(dest);
  }

  Qa::ErrorStatus cloneRoot(QaDbObjectId id, QaDbObjectId owner) {
    if (id.isNull()) return Qa::eNullObjectId;
    if (id.database() != src_) return Qa::eWrongDatabase;
    if (!id.isValid()) return Qa::eUnknownHandle;
    if (id.isErased()) return Qa::eWasErased;
    QaDbObjectId out = cloneObject(id, owner);
    return out.isNull() ? Qa::eInvalidInput : Qa::eOk;
  }

  // Translates what could not be translated while copying (members of groups copied
  // before their members, handles in extended data), then closes the copies.
  void finish() {
    // Groups take the copies of their members; members that were not copied stay out.
    for (const auto& [srcGroup, newGroup] : groups_) {
      QaDbObjectPointer<QaDbGroup> g(newGroup, QaDb::kForWrite);
      if (!g) continue;
      for (QaDbObjectId member : srcGroup->memberIds()) {
        QaDbObjectId copy = mapping_.destinationOf(member);
        if (!copy.isNull() && !member.isErased() && !g->has(copy)) g->append(copy);
      }
    }
    QaDbIdMapping ids = idsOnly();
    for (QaDbObjectId id : added_) {
      QaDbObject* obj = id.rawObject();
      obj->remapIds(ids, dst_);
      translateXData(obj);
      for (const std::wstring& app : obj->xDataApps()) dst_->registerApp(app);
    }
    for (QaDbObjectId id : added_) {
      QaDbObject* obj = id.rawObject();
      while (obj->isOpen()) obj->close();
    }
  }

 private:
  // The mapping without the source database: remapIds then leaves extended data alone,
  // which finish() translates once.
  QaDbIdMapping idsOnly() const {
    QaDbIdMapping copy = mapping_;
    copy.setOrigDb(nullptr);
    return copy;
  }

  void translateXData(QaDbObject* obj) {
    QaDbXData xd = obj->allXData();
    bool changed = false;
    for (auto& app : xd)
      for (auto& item : app.items) {
        if (item.code() != QaDbXDataItem::kHandle) continue;
        QaDbObjectId s = src_->objectIdFromHandle(item.asHandle());
        QaDbObjectId d = mapping_.destinationOf(s);
        if (s.isNull() || d.isNull() || d.handle() == item.asHandle()) continue;
        item = QaDbXDataItem::handle(d.handle());
        changed = true;
      }
    if (changed) {
      bool writable = obj->isWriteEnabled();
      if (!writable) qadbOpenObject(obj, obj->objectId(), QaDb::kForWrite);
      obj->setAllXData(std::move(xd));
      if (!writable) obj->close();
    }
  }

  QaDbObjectId destTableFor(const QaDbSymbolTableRecord* rec) const {
    if (QaDbBlockTableRecord::cast(rec)) return dst_->blockTableId();
    if (QaDbLayerTableRecord::cast(rec)) return dst_->layerTableId();
    if (QaDbLinetypeTableRecord::cast(rec)) return dst_->linetypeTableId();
    if (QaDbTextStyleTableRecord::cast(rec)) return dst_->textStyleTableId();
    if (QaDbRegAppTableRecord::cast(rec)) return dst_->regAppTableId();
    if (QaDbViewportTableRecord::cast(rec)) return dst_->viewportTableId();
    if (QaDbViewTableRecord::cast(rec)) return dst_->viewTableId();
    if (QaDbUCSTableRecord::cast(rec)) return dst_->UCSTableId();
    if (QaDbDimStyleTableRecord::cast(rec)) return dst_->dimStyleTableId();
    return QaDbObjectId();
  }

  // A name free in `table`: "prefix1", "prefix2", ... for anonymous blocks ("*U"),
  // "$0$name", "$1$name", ... for mangled ones.
  static std::wstring freeName(const QaDbSymbolTable* table, const std::wstring& name, bool anonymous) {
    if (anonymous) {
      std::wstring prefix = name.substr(0, 2);
      for (int n = 1;; ++n) {
        std::wstring candidate = prefix + std::to_wstring(n);
        if (!table->has(candidate)) return candidate;
      }
    }
    for (int n = 0;; ++n) {
      std::wstring candidate = L"$" + std::to_wstring(n) + L"$" + name;
      if (!table->has(candidate)) return candidate;
    }
  }

  // Adds `copy` under `owner` and lets the owner take it in; records the mapping.
  QaDbObjectId add(QaDbObjectId srcId, std::unique_ptr<QaDbObject> copy, QaDbObjectId owner) {
    {
      // The mapping without the source database, as idsOnly() gives it, but without
      // copying it for every object added (that made copying n objects cost n^2).
      QaDbDatabase* const orig = mapping_.origDb();
      mapping_.setOrigDb(nullptr);
      copy->remapIds(mapping_, dst_);
      mapping_.setOrigDb(orig);
    }
    QaDbObjectId id;
    if (dst_->addObject(std::move(copy), owner, id) != Qa::eOk) return QaDbObjectId();
    if (QaDbObject* o = owner.rawObject()) o->attachAdoptedChild(id);
    added_.push_back(id);
    mapping_.assign(srcId, id, true);
    return id;
  }

  QaDbObjectId cloneRecord(QaDbObjectId srcId, const QaDbSymbolTableRecord* rec) {
    QaDbObjectId tableId = destTableFor(rec);
    auto* table = QaDbSymbolTable::cast(tableId.rawObject());
    if (table == nullptr) return QaDbObjectId();
    auto* btr = QaDbBlockTableRecord::cast(rec);
    bool anonymous = btr && btr->isAnonymous() && rec->name().size() >= 2 && rec->name()[0] == L'*';
    std::wstring name = rec->name();
    QaDbObjectId existing = table->getAt(name);
    if (!existing.isNull() && !anonymous) {
      bool mangle = drc_ == QaDb::kDrcMangleName || drc_ == QaDb::kDrcXrefMangleName || dst_ == src_;
      if (!mangle) {
        mapping_.assign(srcId, existing, false);
        if (drc_ == QaDb::kDrcReplace && btr) replaceContents(btr, existing);
        return existing;
      }
      name = freeName(table, name, false);
    } else if (!existing.isNull() && anonymous) {
      name = freeName(table, name, true);
    }
    cloneReferencedRecords(rec);
    std::unique_ptr<QaDbObject> copy = rec->clone();
    auto* copyRec = static_cast<QaDbSymbolTableRecord*>(copy.get());
    if (name != rec->name()) {
      copyRec->setName(name);
    }
    QaDbObjectId id = add(srcId, std::move(copy), tableId);
    if (btr) cloneChildren(btr, id);
    return id;
  }

  // The destination's block takes the source block's entities in place of its own.
  void replaceContents(const QaDbBlockTableRecord* srcBlock, QaDbObjectId destBlock) {
    auto* dest = QaDbBlockTableRecord::cast(destBlock.rawObject());
    if (dest == nullptr) return;
    for (QaDbObjectId id : dest->liveEntityIds()) {
      QaDbObjectPointer<QaDbEntity> e(id, QaDb::kForWrite);
      if (e) e->erase();
    }
    QaDbObjectPointer<QaDbBlockTableRecord> w(destBlock, QaDb::kForWrite);
    if (w) w->setOrigin(srcBlock->origin());
    cloneChildren(srcBlock, destBlock);
  }

  void cloneChildren(const QaDbObject* srcObj, QaDbObjectId destOwner) {
    std::vector<QaDbObjectId> children;
    srcObj->ownedIds(children);
    for (QaDbObjectId child : children)
      if (child.isValid() && !child.isErased()) cloneObject(child, destOwner);
  }

  // Layer and linetype records of an entity (by name), and the layer's linetype.
  void cloneReferencedRecords(const QaDbObject* obj) {
    if (dst_ == src_) return;
    auto cloneByName = [&](QaDbObjectId tableId, const std::wstring& name) {
      auto* table = QaDbSymbolTable::cast(tableId.rawObject());
      if (table == nullptr) return;
      QaDbObjectId rec = table->getAt(name);
      if (!rec.isNull()) cloneObject(rec, QaDbObjectId());
    };
    if (auto* ent = QaDbEntity::cast(obj)) {
      cloneByName(src_->layerTableId(), ent->layer());
      cloneByName(src_->linetypeTableId(), ent->linetype());
    }
    if (auto* layer = QaDbLayerTableRecord::cast(obj)) cloneByName(src_->linetypeTableId(), layer->linetype());
    std::vector<QaDbObjectId> refs;
    obj->hardReferences(refs);
    for (QaDbObjectId ref : refs)
      if (ref.database() == src_ && ref.isValid()) cloneObject(ref, QaDbObjectId());
    if (auto* insert = QaDbBlockReference::cast(obj))
      for (QaDbObjectId att : insert->attributeIds())
        if (auto* a = QaDbObject::cast(att.rawObject())) cloneReferencedRecords(a);
  }

  QaDbObjectId cloneObject(QaDbObjectId srcId, QaDbObjectId destOwner) {
    if (auto hit = mapping_.lookup(srcId)) return *hit;
    QaDbObject* obj = srcId.rawObject();
    if (obj == nullptr) return QaDbObjectId();
    if (auto* rec = QaDbSymbolTableRecord::cast(obj)) return cloneRecord(srcId, rec);
    if (dst_ == src_) {
      // Within one database the records are shared, nothing else to bring along.
    } else {
      cloneReferencedRecords(obj);
    }
    if (auto* ent = QaDbEntity::cast(obj)) {
      QaDbObjectId owner = destOwner;
      if (owner.isNull() || !owner.rawObject()) return QaDbObjectId();
      std::unique_ptr<QaDbObject> copy = ent->clone();
      auto* insert = QaDbBlockReference::cast(obj);
      QaDbObjectId id = add(srcId, std::move(copy), owner);
      if (insert && !id.isNull()) {
        // The copy brought its attributes along in order: map them one to one.
        auto* newInsert = QaDbBlockReference::cast(id.rawObject());
        std::vector<QaDbObjectId> live;
        for (QaDbObjectId a : insert->attributeIds())
          if (a.isValid() && !a.isErased()) live.push_back(a);
        for (std::size_t i = 0; i < live.size() && i < newInsert->attributeIds().size(); ++i) {
          mapping_.assign(live[i], newInsert->attributeIds()[i], true);
          added_.push_back(newInsert->attributeIds()[i]);
        }
      }
      return id;
    }
    // Non-graphical objects: into a dictionary under the same key.
    QaDbObjectId owner = destOwner;
    if (owner.isNull() || !QaDbDictionary::cast(owner.rawObject())) {
      owner = QaDbGroup::cast(obj) ? dst_->groupDictionaryId() : dst_->namedObjectsDictionaryId();
    }
    std::wstring key;
    if (auto* srcDict = QaDbDictionary::cast(obj->ownerId().rawObject())) srcDict->nameAt(srcId, key);
    if (key.empty() || (key.size() >= 2 && key[0] == L'*' && std::towupper(key[1]) == L'A')) key = L"*A";
    std::unique_ptr<QaDbObject> copy = obj->clone();
    QaDbObjectId id = add(srcId, std::move(copy), owner);
    if (id.isNull()) return id;
    if (QaDbDictionary::cast(owner.rawObject())) {
      QaDbObjectPointer<QaDbDictionary> d(owner, QaDb::kForWrite);
      std::wstring finalKey = key;
      if (d->has(key) && key != L"*A")
        for (int n = 1; d->has(finalKey); ++n) finalKey = key + L"_" + std::to_wstring(n);
      d->setAt(finalKey, id);
      id.rawObject()->addPersistentReactor(owner);
    }
    if (auto* group = QaDbGroup::cast(obj)) groups_.emplace_back(group, id);
    cloneChildren(obj, id);
    return id;
  }

  QaDbDatabase* src_;
  QaDbDatabase* dst_;
  QaDbIdMapping& mapping_;
  QaDb::DuplicateRecordCloning drc_;
  std::vector<QaDbObjectId> added_;
  std::vector<std::pair<const QaDbGroup*, QaDbObjectId>> groups_;
};

Qa::ErrorStatus QaDbDatabase::wblockCloneObjects(const std::vector<QaDbObjectId>& ids, QaDbObjectId ownerIdInDest,
                                                 QaDbIdMapping& mapping, QaDb::DuplicateRecordCloning drc,
                                                 bool /*deferXlation*/) {
  QaDbDatabase* dest = ownerIdInDest.database();
  if (dest == nullptr) return Qa::eNullObjectId;
  if (!ownerIdInDest.isValid()) return Qa::eUnknownHandle;
  for (QaDbObjectId id : ids)
    if (id.database() != this) return Qa::eWrongDatabase;
  QaDbCloner cloner(this, dest, mapping, drc == QaDb::kDrcNotApplicable ? QaDb::kDrcIgnore : drc);
  Qa::ErrorStatus result = Qa::eOk;
  for (QaDbObjectId id : ids) {
    Qa::ErrorStatus es = cloner.cloneRoot(id, ownerIdInDest);
    if (es != Qa::eOk && result == Qa::eOk) result = es;
  }
  cloner.finish();
  return result;
}

Qa::ErrorStatus QaDbDatabase::deepCloneObjects(const std::vector<QaDbObjectId>& ids, QaDbObjectId ownerId,
                                               QaDbIdMapping& mapping, bool /*deferXlation*/) {
  if (ownerId.database() != this) return Qa::eWrongDatabase;
  return wblockCloneObjects(ids, ownerId, mapping, QaDb::kDrcMangleName);
}

Qa::ErrorStatus QaDbDatabase::wblock(std::unique_ptr<QaDbDatabase>& out, const std::vector<QaDbObjectId>& ids,
                                     const QaGePoint3d& base) {
  out.reset();
  for (QaDbObjectId id : ids) {
    if (id.database() != this) return Qa::eWrongDatabase;
    if (!QaDbEntity::cast(id.rawObject())) return Qa::eWrongObjectType;
  }
  auto db = std::make_unique<QaDbDatabase>(true);
  db->setCodePage(codePage_);
  db->setInsbase(base);
  QaDbIdMapping mapping;
  Qa::ErrorStatus es = wblockCloneObjects(ids, db->modelSpaceId(), mapping, QaDb::kDrcIgnore);
  if (es != Qa::eOk) return es;
  out = std::move(db);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDatabase::wblock(QaDbDatabase*& out, const std::vector<QaDbObjectId>& ids,
                                     const QaGePoint3d& base) {
  std::unique_ptr<QaDbDatabase> db;
  Qa::ErrorStatus es = wblock(db, ids, base);
  out = db.release();
  return es;
}
