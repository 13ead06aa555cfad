// One drawing: the database owns every object in it (tables, records, entities,
// dictionaries, groups) and hands out ids that stay valid while it lives. Objects come
// in either new (addObject, handle from the seed) or with the handle a file gave them
// (adoptObject). Not copyable.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/db/qadb_block_table.h"
#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_dxf_record.h"
#include "host/db/qadb_generic_tables.h"
#include "host/db/qadb_id_mapping.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_linetype_table.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_slot_table.h"
#include "host/db/qadb_text_style_table.h"

class QaDbDatabase {
 public:
  // With `buildDefaults` a new drawing: the nine tables with layer "0", linetypes
  // "ByBlock", "ByLayer", "Continuous", text style "Standard", APPID "ACAD", DIMSTYLE
  // "Standard", block records "*Model_Space" and "*Paper_Space", the named objects
  // dictionary with "ACAD_GROUP". Without: an empty database for a file reader.
  explicit QaDbDatabase(bool buildDefaults = true);
  ~QaDbDatabase();
  QaDbDatabase(const QaDbDatabase&) = delete;
  QaDbDatabase& operator=(const QaDbDatabase&) = delete;

  // Exchanges the whole contents (objects, header, file name) with `other`; ids follow
  // their objects into the other database object. Lets a reader fill a scratch
  // database and move it in only on success.
  void swap(QaDbDatabase& other);

  // --- files (through the codec)
  Qa::ErrorStatus readDwgFile(const std::filesystem::path& path, int shareMode = 0, std::string* error = nullptr);
  Qa::ErrorStatus saveAs(const std::filesystem::path& path, QaDb::DwgVersion version = QaDb::kDwgCurrent,
                         std::string* error = nullptr);
  Qa::ErrorStatus saveAs(const std::filesystem::path& path, int versionSelector, std::string* error = nullptr) {
    return saveAs(path, static_cast<QaDb::DwgVersion>(versionSelector), error);
  }
  const std::filesystem::path& filename() const { return filename_; }
  void setFilename(const std::filesystem::path& p) { filename_ = p; }

  // --- header
  // Format version as the file names it ("AC1032"); a new drawing is "AC1032".
  const std::string& version() const { return version_; }
  void setVersion(const std::string& v) { version_ = v; }
  static std::string versionName(QaDb::DwgVersion v);  // "AC1032" for kDwgR2018, "" for kDwgCurrent
  // Code page of the file ("ANSI_936"), "" when unknown.
  const std::string& codePage() const { return codePage_; }
  void setCodePage(const std::string& cp) { codePage_ = cp; }
  const QaGePoint3d& insbase() const { return insbase_; }
  void setInsbase(const QaGePoint3d& p) { insbase_ = p; }
  // Header variables the database does not model, kept by the codec.
  QaDbDxfRecord* dxfHeader() const { return dxfHeader_.get(); }
  // Keeps the arena the objects of a reader came from for as long as the database lives.
  void adoptArena(std::unique_ptr<QaDbObjectArena> arena) { arenas_.push_back(std::move(arena)); }
  void setDxfHeader(std::unique_ptr<QaDbDxfRecord> header) { dxfHeader_ = std::move(header); }
  // The next handle to be given out; always above every handle in use.
  QaDbHandle handseed() const { return handseed_; }
  // Raises the seed (a lower value than needed is lifted to one above the highest handle).
  void setHandseed(QaDbHandle seed);

  // --- objects
  // Adds a new object with a fresh handle and the given owner (null for none). The
  // object is left open for write (close it) and onAddedToDatabase() runs. It does not
  // enter any container: containers call this themselves.
  Qa::ErrorStatus addObject(std::unique_ptr<QaDbObject> object, QaDbObjectId ownerId, QaDbObjectId& id);
  // Takes an object with the handle a file gave it (eHandleInUse when taken, eInvalidInput
  // for the null handle). The owner, when given and resident, is told through
  // attachAdoptedChild (records join their table, entities their block, attributes
  // their reference). A symbol table or root dictionary fills the database's slot
  // when that is empty. The object is not open and keeps its modified flag.
  Qa::ErrorStatus adoptObject(std::unique_ptr<QaDbObject> object, QaDbHandle handle, QaDbObjectId ownerId,
                              QaDbObjectId& id);
  Qa::ErrorStatus addObjectWithHandle(std::unique_ptr<QaDbObject> object, QaDbHandle handle, QaDbObjectId ownerId,
                                      QaDbObjectId& id) {
    return adoptObject(std::move(object), handle, ownerId, id);
  }
  // The id of an existing object by handle; null when there is none.
  QaDbObjectId objectIdFromHandle(QaDbHandle handle) const;
  Qa::ErrorStatus getObjectId(QaDbObjectId& id, QaDbHandle handle) const;
  // The id for a handle, made as a forward reference when no object has it yet (a
  // reader resolving pointers before the object is read); adoptObject fills it.
  QaDbObjectId idForHandle(QaDbHandle handle);
  // Every object in the order it came in; erased ones only on request.
  std::vector<QaDbObjectId> objectIds(bool includeErased = false) const;
  std::size_t numObjects() const;
  // Clears the modified flag of the objects that came in from the `first`-th on (a
  // reader, when done).
  void clearModifiedFrom(std::size_t first);
  // Makes room for `count` objects in all (a reader that knows roughly how many come).
  void reserveObjects(std::size_t count);

  // --- tables and dictionaries
  QaDbObjectId blockTableId() const { return blockTable_; }
  QaDbObjectId layerTableId() const { return layerTable_; }
  QaDbObjectId linetypeTableId() const { return linetypeTable_; }
  QaDbObjectId textStyleTableId() const { return textStyleTable_; }
  QaDbObjectId regAppTableId() const { return regAppTable_; }
  QaDbObjectId viewportTableId() const { return viewportTable_; }
  QaDbObjectId viewTableId() const { return viewTable_; }
  QaDbObjectId UCSTableId() const { return ucsTable_; }
  QaDbObjectId dimStyleTableId() const { return dimStyleTable_; }
  QaDbObjectId namedObjectsDictionaryId() const { return namedObjects_; }
  void setNamedObjectsDictionaryId(QaDbObjectId id) { namedObjects_ = id; }
  // Sets a table slot by the table's class (readers); eWrongObjectType for no table.
  Qa::ErrorStatus setSymbolTableId(QaDbObjectId id);

  Qa::ErrorStatus getSymbolTable(QaDbBlockTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbLayerTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbLinetypeTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbTextStyleTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbRegAppTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbViewportTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbViewTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbUCSTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getSymbolTable(QaDbDimStyleTable*& table, QaDb::OpenMode mode) const;
  Qa::ErrorStatus getBlockTable(QaDbBlockTable*& table, QaDb::OpenMode mode) const { return getSymbolTable(table, mode); }

  // "*Model_Space" / "*Paper_Space" of the block table; null when missing.
  QaDbObjectId modelSpaceId() const;
  QaDbObjectId paperSpaceId() const;
  Qa::ErrorStatus getNamedObjectsDictionary(QaDbDictionary*& dict, QaDb::OpenMode mode);
  // The "ACAD_GROUP" dictionary; made (with the named objects dictionary when that is
  // missing too) on first use.
  Qa::ErrorStatus getGroupDictionary(QaDbDictionary*& dict, QaDb::OpenMode mode);
  QaDbObjectId groupDictionaryId();
  // Adds an APPID record when the name has none; eBadSymbolTableName for an invalid
  // name, eNullObjectId when the database has no APPID table.
  Qa::ErrorStatus registerApp(const std::wstring& appName);
  // A layer by name, made with default values when missing.
  Qa::ErrorStatus ensureLayer(const std::wstring& name, QaDbObjectId& id);

  // --- copying
  // A new database holding copies of the given entities in model space, with the block
  // definitions, layers, linetypes, text styles and APPIDs they need. `base` becomes
  // the new drawing's insertion base point; entities are not moved.
  Qa::ErrorStatus wblock(std::unique_ptr<QaDbDatabase>& out, const std::vector<QaDbObjectId>& ids,
                         const QaGePoint3d& base);
  Qa::ErrorStatus wblock(QaDbDatabase*& out, const std::vector<QaDbObjectId>& ids, const QaGePoint3d& base);
  // Copies objects of this database (`ids`) into the database of `ownerIdInDest`: a
  // block table record with its entities, attribute definitions and their extended
  // data; symbol table records into the same table of the destination (owner: that
  // table, or the block table for a block); entities into the block `ownerIdInDest`.
  // Records the copied objects need (blocks, layers, linetypes, text styles, dimension
  // styles, APPIDs) come along, with `drc` deciding about names that exist. Ids inside
  // the copies (block of a reference, text style, group members, 1005 handles of
  // extended data) are translated through `mapping`, which is filled.
  Qa::ErrorStatus wblockCloneObjects(const std::vector<QaDbObjectId>& ids, QaDbObjectId ownerIdInDest,
                                     QaDbIdMapping& mapping, QaDb::DuplicateRecordCloning drc,
                                     bool deferXlation = false);
  // Copies objects within this database under `ownerId` (a block table record for
  // entities), translating ids between the copies; referenced records are shared.
  Qa::ErrorStatus deepCloneObjects(const std::vector<QaDbObjectId>& ids, QaDbObjectId ownerId,
                                   QaDbIdMapping& mapping, bool deferXlation = false);

 private:
  friend class QaDbCloner;
  QaDbObjectSlot* slotFor(QaDbHandle handle, bool create);
  void buildDefaults();

  // First, so that they go last: objects and records may live in them.
  std::vector<std::unique_ptr<QaDbObjectArena>> arenas_;
  QaDbSlotTable slots_;
  std::vector<QaDbObjectSlot*> order_;
  QaDbHandle handseed_{1};
  std::string version_ = "AC1032";
  std::string codePage_ = "ANSI_1252";
  QaGePoint3d insbase_;
  std::filesystem::path filename_;
  std::unique_ptr<QaDbDxfRecord> dxfHeader_;
  QaDbObjectId blockTable_, layerTable_, linetypeTable_, textStyleTable_, regAppTable_, viewportTable_,
      viewTable_, ucsTable_, dimStyleTable_, namedObjects_;
};
