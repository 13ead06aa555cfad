// Second pass of loading: objects enter the database, references resolve, and
// what a usable drawing needs but the file lacked is added (and reported).
#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "host/dxf/dxf_loader_state.h"
#include "host/dxf/dxf_table_reader.h"
#include "host/dxf/dxf_tag_writer.h"

#include <set>
#include <unordered_set>

namespace tabulon::dxf {

namespace {

std::string hex(std::uint64_t h) { return dxfFormatHandle(h); }

constexpr std::size_t kPrefetchAhead = 8;

inline void dxfPrefetch(const void* p) {
#if defined(__GNUC__)
  __builtin_prefetch(p, 1);
#else
  (void)p;
#endif
}

// Upper-case name -> record id, for one symbol table.
std::unordered_map<std::wstring, QaDbObjectId> namesOf(QaDbObjectId tableId) {
  std::unordered_map<std::wstring, QaDbObjectId> out;
  auto* table = QaDbSymbolTable::cast(tableId.rawObject());
  if (!table) return out;
  for (QaDbObjectId id : table->recordIds())
    if (auto* rec = QaDbSymbolTableRecord::cast(id.rawObject())) out.emplace(dxfUpperName(rec->name()), id);
  return out;
}

QaDbObjectId find(const std::unordered_map<std::wstring, QaDbObjectId>& names, const std::wstring& name) {
  auto it = names.find(dxfUpperName(name));
  return it == names.end() ? QaDbObjectId() : it->second;
}

}  // namespace

void DxfLoaderState::assignHandles() {
  nextFree_ = std::max(maxHandle_, headerSeed_ ? headerSeed_ - 1 : 0) + 1;
  for (DxfPending& p : pending_) {
    if (p.handle != 0) continue;
    if (!ctx_.flatFile() && p.object->dxfRecord() && !p.repaired)
      info_.audit.add(p.line, "object without a handle; given " + hex(nextFree_));
    p.handle = nextFree_++;
    if (!ctx_.flatFile()) p.repaired = true;
  }
}

void DxfLoaderState::commit(QaDbDatabase& db) {
  const std::uint64_t highestInFile = maxHandle_;
  assignHandles();
  db.reserveObjects(pending_.size() + 64);
  // Styles and blocks come before the entities naming them, so most names resolve
  // as the entity enters the database; the rest wait for resolve().
  std::vector<int> styleRecord, blockRecord;
  matchNamesToRecords(styleRecord, blockRecord);
  std::vector<QaDbObjectId> ids(pending_.size());
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    DxfPending& p = pending_[i];
    // The objects were made long before and are out of the cache: ask for the ones a
    // few steps ahead while this one is entered.
    if (i + kPrefetchAhead < pending_.size()) dxfPrefetch(pending_[i + kPrefetchAhead].object.get());
    if (p.name >= 0 && (p.namesStyle || p.namesBlock)) {
      const int record = (p.namesStyle ? styleRecord : blockRecord)[static_cast<std::size_t>(p.name)];
      if (record >= 0 && static_cast<std::size_t>(record) < i && !ids[static_cast<std::size_t>(record)].isNull()) {
        const QaDbObjectId target = ids[static_cast<std::size_t>(record)];
        if (auto* mtext = QaDbMText::cast(p.object.get())) p.nameDone = mtext->setTextStyle(target) == Qa::eOk;
        else if (auto* text = QaDbText::cast(p.object.get())) p.nameDone = text->setTextStyle(target) == Qa::eOk;
        else if (auto* ref = QaDbBlockReference::cast(p.object.get()))
          p.nameDone = ref->setBlockTableRecord(target) == Qa::eOk;
      }
    }
    QaDbObjectId owner;
    if (p.parent >= 0) owner = ids[static_cast<std::size_t>(p.parent)];
    else if (p.owner) owner = db.idForHandle(QaDbHandle(p.owner));
    if (!db.objectIdFromHandle(QaDbHandle(p.handle)).isNull()) {
      // A handle given twice: the second object gets a new one.
      info_.audit.add(p.line, "duplicate handle " + hex(p.handle) + "; renumbered to " + hex(nextFree_));
      p.handle = nextFree_++;
      p.repaired = true;
    }
    QaDbObjectId id;
    db.adoptObject(std::move(p.object), QaDbHandle(p.handle), owner, id);
    ids[i] = id;
    // Read from the file, so unchanged, whatever its setters said: cleared while the
    // object is at hand rather than in a pass over every object at the end.
    if (QaDbObject* o = id.rawObject()) o->clearModified();
  }
  const std::size_t entered = db.numObjects();
  ensureTables(db);
  std::vector<QaDbObjectId> touched;
  resolve(db, ids, touched);
  if (headerSeed_ && headerSeed_ <= highestInFile && sawHeader_ && !ctx_.flatFile())
    info_.audit.add(0, "$HANDSEED " + hex(headerSeed_) + " was not above every handle; raised");
  completeDatabase(db);
  // What changed since: objects made to complete the drawing, those resolving
  // changed, and the tables, records and dictionaries that records and entries
  // were added to.
  db.clearModifiedFrom(entered);
  for (QaDbObjectId id : touched)
    if (QaDbObject* o = id.rawObject()) o->clearModified();
  // Then what was repaired, or read from a file too old to copy back, is to be
  // written from its fields.
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    QaDbObject* o = ids[i].rawObject();
    if (!o) continue;
    const DxfPending& p = pending_[i];
    if (p.role != DxfRole::Entity && p.role != DxfRole::Attribute) o->clearModified();
    if (p.repaired || ctx_.flatFile()) o->setModified();
  }
}

void DxfLoaderState::resolve(QaDbDatabase& db, std::vector<QaDbObjectId>& ids, std::vector<QaDbObjectId>& touched) {
  auto styles = namesOf(db.textStyleTableId());
  auto blocks = namesOf(db.blockTableId());
  auto dimStyles = namesOf(db.dimStyleTableId());
  auto existing = [&](std::uint64_t h) { return db.objectIdFromHandle(QaDbHandle(h)); };

  // Names resolve once each: the index of a name -> the record (resolved or not yet).
  std::vector<std::pair<bool, QaDbObjectId>> styleCache(names_.size()), blockCache(names_.size()),
      dimStyleCache(names_.size());
  auto cached = [&](std::vector<std::pair<bool, QaDbObjectId>>& cache, int index, auto&& lookup) {
    auto& slot = cache[static_cast<std::size_t>(index)];
    if (!slot.first) slot = {true, lookup(names_[static_cast<std::size_t>(index)])};
    return slot.second;
  };
  static const DxfPendingRefs kNoRefs;

  for (std::size_t i = 0; i < pending_.size(); ++i) {
    DxfPending& p = pending_[i];
    if ((p.refs < 0 && (p.name < 0 || p.nameDone) && p.name2 < 0) || ids[i].isNull()) continue;
    const DxfPendingRefs& r = p.refs >= 0 ? refs_[static_cast<std::size_t>(p.refs)] : kNoRefs;
    QaDbObjectPointer<QaDbObject> obj(ids[i], QaDb::kForWrite, true);
    if (!obj) continue;
    touched.push_back(ids[i]);

    for (std::uint64_t h : r.reactors) {
      QaDbObjectId target = existing(h);
      if (target.isNull()) {
        info_.audit.add(p.line, "reactor " + hex(h) + " names no object; dropped");
        p.repaired = true;
      } else {
        obj->addPersistentReactor(target);
      }
    }
    if (r.xdictionary) {
      QaDbObjectId x = existing(r.xdictionary);
      if (x.isNull()) {
        info_.audit.add(p.line, "extension dictionary " + hex(r.xdictionary) + " missing; dropped");
        p.repaired = true;
      } else {
        obj->setExtensionDictionary(x);
      }
    }

    QaDbObject* o = obj.object();
    auto styleNamed = [&](const std::wstring& name) {
      QaDbObjectId s = find(styles, name);
      if (s.isNull()) {
        // A style the table lacks is made with default values, so the text keeps its name.
        QaDbObjectPointer<QaDbTextStyleTable> table(db.textStyleTableId(), QaDb::kForWrite);
        if (table && table->add(std::make_unique<QaDbTextStyleTableRecord>(name), s) == Qa::eOk) {
          s.rawObject()->close();
          styles.emplace(dxfUpperName(name), s);
          info_.audit.add(p.line, "text style \"" + ctx_.codec().encode(name) + "\" is not in the STYLE table; added");
        }
      }
      return s;
    };
    auto styleOf = [&](int index) { return cached(styleCache, index, styleNamed); };
    auto nameOf = [&](int index) { return index >= 0 ? names_[static_cast<std::size_t>(index)] : std::wstring(); };
    auto blockOf = [&](int index) {
      return cached(blockCache, index, [&](const std::wstring& n) { return find(blocks, n); });
    };
    if (auto* mtext = QaDbMText::cast(o)) {
      if (p.name >= 0 && !p.nameDone) mtext->setTextStyle(styleOf(p.name));
    } else if (auto* text = QaDbText::cast(o)) {
      if (p.name >= 0 && !p.nameDone) text->setTextStyle(styleOf(p.name));
      if (p.name2 >= 0) {
        QaDbObjectId s = cached(styleCache, p.name2, [&](const std::wstring& n) { return find(styles, n); });
        if (auto* att = QaDbAttribute::cast(o); att && att->getMTextAttribute()) {
          QaDbMText m(*att->getMTextAttribute());
          m.setTextStyle(s);
          att->setMTextAttribute(m);
        } else if (auto* def = QaDbAttributeDefinition::cast(o); def && def->getMTextAttributeDefinition()) {
          QaDbMText m(*def->getMTextAttributeDefinition());
          m.setTextStyle(s);
          def->setMTextAttributeDefinition(m);
        }
      }
    } else if (auto* ref = QaDbBlockReference::cast(o)) {
      if (!p.nameDone) {
        QaDbObjectId b = p.name >= 0 ? blockOf(p.name) : QaDbObjectId();
        if (b.isNull()) info_.audit.add(p.line, "INSERT of block \"" + ctx_.codec().encode(nameOf(p.name)) + "\" that is not defined");
        else ref->setBlockTableRecord(b);
      }
    } else if (auto* dim = QaDbDimension::cast(o)) {
      if (p.name >= 0) dim->setDimBlockId(blockOf(p.name));
      if (p.name2 >= 0)
        dim->setDimensionStyle(cached(dimStyleCache, p.name2, [&](const std::wstring& n) { return find(dimStyles, n); }));
    } else if (auto* hatch = QaDbHatch::cast(o)) {
      std::vector<QaDbHatchLoop> loops = hatch->loops();
      std::size_t k = 0;
      for (std::size_t l = 0; l < loops.size() && l < r.counts.size(); ++l)
        for (int c = 0; c < r.counts[l] && k < r.handles.size(); ++c, ++k) {
          QaDbObjectId src = existing(r.handles[k]);
          if (!src.isNull()) loops[l].sourceIds.push_back(src);
        }
      while (hatch->numLoops() > 0) hatch->removeLoopAt(hatch->numLoops() - 1);
      for (const auto& loop : loops) hatch->appendLoop(loop);
    } else if (auto* btr = QaDbBlockTableRecord::cast(o)) {
      if (r.handle2) btr->setLayoutId(existing(r.handle2));
    } else if (auto* dict = QaDbDictionary::cast(o)) {
      for (std::size_t k = 0; k < r.handles.size() && k < r.keys.size(); ++k) {
        QaDbObjectId entry = existing(r.handles[k]);
        if (entry.isNull()) {
          info_.audit.add(p.line, "dictionary entry \"" + ctx_.codec().encode(r.keys[k]) + "\" names no object " +
                                      hex(r.handles[k]) + "; dropped");
          p.repaired = true;
          continue;
        }
        dict->setAt(r.keys[k], entry);
      }
    } else if (auto* group = QaDbGroup::cast(o)) {
      for (std::uint64_t h : r.handles) {
        QaDbObjectId member = existing(h);
        if (member.isNull() || member.isErased()) {
          info_.audit.add(p.line, "group member " + hex(h) + " names no object; dropped");
          p.repaired = true;
          continue;
        }
        QaDbObject* m = member.rawObject();
        touched.push_back(member);
        bool hadReactor = m->hasPersistentReactor(ids[i]);
        if (group->append(member) == Qa::eOk && !hadReactor) {
          info_.audit.add(p.line, "group member " + hex(h) + " had no reactor to its group; added");
          for (std::size_t j = 0; j < pending_.size(); ++j)
            if (ids[j] == member) pending_[j].repaired = true;
        }
      }
    }
  }
}

void DxfLoaderState::ensureTables(QaDbDatabase& db) {
  const bool modern = !ctx_.flatFile();
  // The nine tables.
  static const char* kTables[] = {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"};
  for (const char* name : kTables) {
    auto probe = dxfMakeTable(name);
    bool present = false;
    if (std::string_view(name) == "VPORT") present = !db.viewportTableId().isNull();
    else if (std::string_view(name) == "LTYPE") present = !db.linetypeTableId().isNull();
    else if (std::string_view(name) == "LAYER") present = !db.layerTableId().isNull();
    else if (std::string_view(name) == "STYLE") present = !db.textStyleTableId().isNull();
    else if (std::string_view(name) == "VIEW") present = !db.viewTableId().isNull();
    else if (std::string_view(name) == "UCS") present = !db.UCSTableId().isNull();
    else if (std::string_view(name) == "APPID") present = !db.regAppTableId().isNull();
    else if (std::string_view(name) == "DIMSTYLE") present = !db.dimStyleTableId().isNull();
    else present = !db.blockTableId().isNull();
    if (present) continue;
    if (modern && sawHeader_) info_.audit.add(0, std::string("no ") + name + " table; an empty one was made");
    QaDbObjectId id;
    if (db.addObject(std::move(probe), QaDbObjectId(), id) == Qa::eOk) {
      id.rawObject()->close();
      db.setSymbolTableId(id);
    }
  }
}

void DxfLoaderState::completeDatabase(QaDbDatabase& db) {
  const bool modern = !ctx_.flatFile();
  auto addRecord = [&](QaDbObjectId tableId, std::unique_ptr<QaDbSymbolTableRecord> rec, const char* what) {
    auto* table = QaDbSymbolTable::cast(tableId.rawObject());
    if (!table || table->has(rec->name())) return;
    if (modern && sawHeader_) info_.audit.add(0, std::string(what) + " was missing; added");
    QaDbObjectPointer<QaDbSymbolTable> t(tableId, QaDb::kForWrite);
    QaDbObjectId id;
    if (t && t->add(std::move(rec), id) == Qa::eOk) id.rawObject()->close();
  };
  addRecord(db.layerTableId(), std::make_unique<QaDbLayerTableRecord>(L"0"), "layer \"0\"");
  addRecord(db.linetypeTableId(), std::make_unique<QaDbLinetypeTableRecord>(L"ByBlock"), "linetype ByBlock");
  addRecord(db.linetypeTableId(), std::make_unique<QaDbLinetypeTableRecord>(L"ByLayer"), "linetype ByLayer");
  addRecord(db.linetypeTableId(), std::make_unique<QaDbLinetypeTableRecord>(L"Continuous"), "linetype Continuous");
  addRecord(db.regAppTableId(), std::make_unique<QaDbRegAppTableRecord>(L"ACAD"), "application ACAD");

  // Layers named by entities but missing from the table.
  {
    auto* layers = QaDbLayerTable::cast(db.layerTableId().rawObject());
    std::set<std::wstring> missing;
    std::unordered_set<std::wstring> known;
    for (QaDbObjectId id : layers->recordIds())
      if (auto* rec = QaDbSymbolTableRecord::cast(id.rawObject())) known.insert(dxfUpperName(rec->name()));
    for (const QaDbSharedName& layer : layersUsed_)
      if (!known.count(dxfUpperName(layer.str()))) missing.insert(layer.str());
    for (const auto& name : missing) {
      if (modern) info_.audit.add(0, "layer \"" + ctx_.codec().encode(name) + "\" used but not in the LAYER table; added");
      QaDbObjectId id;
      db.ensureLayer(name, id);
    }
  }

  // Every application name of extended data is registered.
  {
    auto* apps = QaDbRegAppTable::cast(db.regAppTableId().rawObject());
    std::set<std::wstring> missing;
    for (const auto& app : xdataApps_)
      if (!apps->has(app)) missing.insert(app);
    for (const auto& name : missing) {
      info_.audit.add(0, "application \"" + ctx_.codec().encode(name) +
                             "\" of extended data is not in the APPID table; added");
      db.registerApp(name);
    }
  }

  // The named objects dictionary and the group dictionary.
  if (db.namedObjectsDictionaryId().isNull()) {
    if (modern && sawHeader_) info_.audit.add(0, "no named objects dictionary; one was made");
    QaDbObjectId id;
    if (db.addObject(std::make_unique<QaDbDictionary>(), QaDbObjectId(), id) == Qa::eOk) {
      id.rawObject()->close();
      db.setNamedObjectsDictionaryId(id);
    }
  }
  db.groupDictionaryId();

  // Header values the database keeps itself.
  db.setVersion(dxfVersionCode(info_.version));
  auto headerCodePage = doc_->header.codePage();
  if (info_.encoding != "UTF-8") db.setCodePage(info_.encoding);
  else if (headerCodePage) db.setCodePage(dxfNormalizeCodePage(*headerCodePage));
  else db.setCodePage("ANSI_1252");
  if (const auto* v = doc_->header.find("$INSBASE")) {
    QaGePoint3d p;
    for (const auto& t : v->tags) {
      auto d = dxfParseDouble(t.value);
      if (!d) continue;
      if (t.code == 10) p.x = *d;
      else if (t.code == 20) p.y = *d;
      else if (t.code == 30) p.z = *d;
    }
    db.setInsbase(p);
  }
  db.setHandseed(QaDbHandle(std::max({headerSeed_, maxHandle_ + 1, nextFree_})));

  doc_->readVersion = info_.version;
  doc_->encoding = info_.encoding;
  doc_->lineEnd = source_->lineEnd();
  doc_->encodingReason = info_.encodingReason;
  doc_->audit = info_.audit;
  db.setDxfHeader(std::move(doc_));
}

}  // namespace tabulon::dxf
