// Base of everything a drawing database holds. The database owns its objects; an
// object not yet added belongs to whoever holds its unique_ptr and is always writable.
// A database-resident object is reached by opening its id (qadbOpenObject or
// QaDbObjectPointer); every setter calls assertWriteEnabled(), which throws
// std::logic_error on an object that is not open for write, and marks it modified.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/qa_error_status.h"
#include "host/db/qadb_dxf_record.h"
#include "host/db/qadb_enums.h"
#include "host/db/qadb_object_arena.h"
#include "host/db/qadb_object_id.h"
#include "host/db/qadb_xdata.h"
#include "host/db/qarx_class.h"

class QaDbIdMapping;

class QaDbObject : public QaRxObject {
  QARX_DECLARE_MEMBERS(QaDbObject)

 public:
  QaDbObject();
  ~QaDbObject() override;
  QaDbObject& operator=(const QaDbObject&) = delete;

  // Objects a reader makes come from its arena (see QaDbObjectArena), others from the heap.
  static void* operator new(std::size_t size) { return QaDbObjectArena::allocate(size); }
  static void operator delete(void* p, std::size_t size) noexcept { QaDbObjectArena::deallocate(p, size); }

  // --- identity
  QaDbObjectId objectId() const { return id_; }
  QaDbObjectId ownerId() const { return ownerId_; }
  // Sets the owner without any other bookkeeping (used by readers and containers).
  Qa::ErrorStatus setOwnerId(QaDbObjectId owner);
  QaDbHandle handle() const { return id_.handle(); }
  QaDbDatabase* database() const { return id_.database(); }
  bool isDatabaseResident() const { return !id_.isNull(); }
  // The drawing format's type name, e.g. L"INSERT"; the class's name when it has none.
  virtual std::wstring dxfType() const;

  // --- erasing: erased objects stay in memory flagged; erase(false) brings one back.
  bool isErased() const { return erased_; }
  Qa::ErrorStatus erase(bool erasing = true);

  // --- open state
  Qa::ErrorStatus close();
  Qa::ErrorStatus upgradeOpen();
  Qa::ErrorStatus downgradeOpen();
  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  bool isOpen() const { return openCount_ > 0; }
  void assertReadEnabled() const {}
  // Throws std::logic_error unless writable; marks the object modified.
  void assertWriteEnabled() {
    if (!id_.isNull() && !writeOpen_) throwNotOpenForWrite();
    modified_ = true;
  }
  // Modified since loaded (or since clearModified); new objects start modified.
  bool isModified() const { return modified_; }
  void clearModified() { modified_ = false; }
  void setModified() { modified_ = true; }

  // --- persistent reactors: ids of objects that watch this one (a group on its members)
  const std::vector<QaDbObjectId>& reactors() const { return reactors_; }
  bool hasPersistentReactor(QaDbObjectId id) const;
  // Adding one already present, or removing one absent, changes nothing and gives eOk.
  Qa::ErrorStatus addPersistentReactor(QaDbObjectId id);
  Qa::ErrorStatus removePersistentReactor(QaDbObjectId id);

  // --- extension dictionary (kept for the codec; the database does not use it)
  QaDbObjectId extensionDictionary() const { return extensionDictionary_; }
  void setExtensionDictionary(QaDbObjectId id);

  // --- extended data
  // Items of one application (without the 1001 name); empty when it has none.
  std::vector<QaDbXDataItem> xData(std::wstring_view appName) const;
  bool hasXData(std::wstring_view appName) const;
  // Replaces the application's items, or appends the application at the end. Registers
  // the name in the APPID table of the database when the object is resident.
  Qa::ErrorStatus setXData(std::wstring_view appName, std::vector<QaDbXDataItem> items);
  Qa::ErrorStatus removeXData(std::wstring_view appName);
  std::vector<std::wstring> xDataApps() const;
  const QaDbXData& allXData() const { return xdata_; }
  Qa::ErrorStatus setAllXData(QaDbXData xdata);

  // --- the codec's raw data
  QaDbDxfRecord* dxfRecord() const { return dxfRecord_.get(); }
  void setDxfRecord(std::unique_ptr<QaDbDxfRecord> record) { dxfRecord_ = std::move(record); }

  // A deep copy of the fields, extended data and codec record; not of the id, owner,
  // reactors or open state. The copy is not resident and counts as modified.
  std::unique_ptr<QaDbObject> clone() const { return cloneObject(); }

  // --- hooks for the database and the copy machinery (not for general use)
  // Objects this one owns (entities of a block, records of a table, attributes...).
  virtual void ownedIds(std::vector<QaDbObjectId>& out) const;
  // Objects this one needs in the same database (a block reference's block, a text's
  // style) and that a copy into another database must bring along.
  virtual void hardReferences(std::vector<QaDbObjectId>& out) const;
  // After a copy: replaces every id this object holds by its counterpart; ids that have
  // none are kept when they belong to `target`, dropped (or nulled) otherwise.
  virtual void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target);
  // Called by the database when `child` was adopted with this object as owner; containers
  // append it to their list. Default: nothing.
  virtual void attachAdoptedChild(QaDbObjectId child);
  // Called after the object was added (not adopted) to a database, with id and owner set.
  virtual void onAddedToDatabase();
  // Called by erase() after the flag changed.
  virtual void onErased(bool erasing);

 protected:
  QaDbObject(const QaDbObject& other);
  virtual std::unique_ptr<QaDbObject> cloneObject() const = 0;

 private:
  [[noreturn]] void throwNotOpenForWrite() const;

  friend class QaDbDatabase;
  friend Qa::ErrorStatus qadbOpenObject(QaDbObject*& obj, QaDbObjectId id, QaDb::OpenMode mode, bool openErased);

  QaDbObjectId id_;
  QaDbObjectId ownerId_;
  QaDbObjectId extensionDictionary_;
  bool erased_ = false;
  bool modified_ = true;
  int openCount_ = 0;
  bool writeOpen_ = false;
  std::vector<QaDbObjectId> reactors_;
  QaDbXData xdata_;
  std::unique_ptr<QaDbDxfRecord> dxfRecord_;
};

// In a concrete class body: RTTI members and the clone hook.
#define QADB_DECLARE_MEMBERS(CLASS) \
  QARX_DECLARE_MEMBERS(CLASS)       \
 protected:                         \
  std::unique_ptr<QaDbObject> cloneObject() const override { return std::unique_ptr<QaDbObject>(new CLASS(*this)); } \
                                    \
 public:
