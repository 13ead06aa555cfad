// A block definition (BLOCK_RECORD with its BLOCK): name, base point, flags, and the
// entities in order, which the record owns. "*Model_Space" and "*Paper_Space..." are
// the layouts.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_symbol_table_record.h"

class QaDbBlockTableRecord;

// Walks the entities that are not erased. Must not outlive the record.
class QaDbBlockTableRecordIterator {
 public:
  explicit QaDbBlockTableRecordIterator(const QaDbBlockTableRecord* record);
  void start();
  bool done() const;
  void step();
  QaDbObjectId entityId() const;
  QaDbObjectId objectId() const { return entityId(); }
  Qa::ErrorStatus getEntityId(QaDbObjectId& id) const;
  Qa::ErrorStatus getEntity(QaDbEntity*& entity, QaDb::OpenMode mode, bool openErased = false) const;

 private:
  void skipErased();
  const QaDbBlockTableRecord* record_;
  std::size_t index_ = 0;
};

class QaDbBlockTableRecord : public QaDbSymbolTableRecord {
  QADB_DECLARE_MEMBERS(QaDbBlockTableRecord)

 public:
  // Block flags (group 70 of BLOCK).
  enum BlockFlags { kAnonymous = 1, kHasAttributes = 2, kExternal = 4, kOverlay = 8, kDependent = 16, kResolved = 32, kReferenced = 64 };

  QaDbBlockTableRecord() = default;
  explicit QaDbBlockTableRecord(const std::wstring& name) : QaDbSymbolTableRecord(name) {}

  const QaGePoint3d& origin() const { return origin_; }
  Qa::ErrorStatus setOrigin(const QaGePoint3d& p);
  const std::wstring& comments() const { return comments_; }
  Qa::ErrorStatus setComments(const std::wstring& text);
  const std::wstring& pathName() const { return xrefPath_; }
  Qa::ErrorStatus setPathName(const std::wstring& path);
  // Flag 1 or a name beginning with "*" (other than the layouts).
  bool isAnonymous() const;
  bool isFromExternalReference() const { return (flags() & kExternal) != 0; }
  bool isLayout() const;
  // True when a live entity of the block is a non-constant attribute definition.
  bool hasAttributeDefinitions() const;
  // Flags as written: the stored flags with 2 set or cleared from the contents.
  int blockFlags() const;
  int insertUnits() const { return insertUnits_; }
  Qa::ErrorStatus setInsertUnits(int units);
  bool explodable() const { return explodable_; }
  Qa::ErrorStatus setExplodable(bool on);
  bool scaleUniformly() const { return scaleUniformly_; }
  Qa::ErrorStatus setScaleUniformly(bool on);
  // The layout object of a layout record (group 340), kept for the codec.
  QaDbObjectId layoutId() const { return layoutId_; }
  Qa::ErrorStatus setLayoutId(QaDbObjectId id);

  // Appends an entity (the record must be resident and writable; the entity must be in
  // memory). The entity becomes owned by the record and is left open for write (close
  // it). A layer the database lacks is created; a linetype it lacks falls back to
  // "ByLayer".
  Qa::ErrorStatus appendQaDbEntity(std::unique_ptr<QaDbEntity> entity, QaDbObjectId& id);
  Qa::ErrorStatus appendQaDbEntity(QaDbObjectId& id, std::unique_ptr<QaDbEntity> entity) {
    return appendQaDbEntity(std::move(entity), id);
  }
  std::unique_ptr<QaDbBlockTableRecordIterator> newIterator() const;
  // Entity ids in order, erased ones included.
  const std::vector<QaDbObjectId>& entityIds() const { return entities_; }
  // Live entity ids in order.
  std::vector<QaDbObjectId> liveEntityIds() const;
  // Box of the live entities (attribute definitions that are not constant skipped).
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const;

  void ownedIds(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void attachAdoptedChild(QaDbObjectId child) override;
  void onErased(bool erasing) override;

 protected:
  // A copy has no entities: they belong to the original.
  QaDbBlockTableRecord(const QaDbBlockTableRecord& other);

 private:
  friend class QaDbBlockTableRecordIterator;
  QaGePoint3d origin_;
  std::wstring comments_;
  std::wstring xrefPath_;
  int insertUnits_ = 0;
  bool explodable_ = true;
  bool scaleUniformly_ = false;
  QaDbObjectId layoutId_;
  std::vector<QaDbObjectId> entities_;
};
