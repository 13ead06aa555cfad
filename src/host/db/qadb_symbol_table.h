// Base of the symbol tables: named records in insertion order, owned by the table.
// Each table takes records of one class (eWrongObjectType otherwise).
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb_open.h"
#include "host/db/qadb_symbol_table_record.h"

class QaDbSymbolTable;

// Walks the records that are not erased. Must not outlive the table.
class QaDbSymbolTableIterator {
 public:
  explicit QaDbSymbolTableIterator(const QaDbSymbolTable* table);
  void start();
  bool done() const;
  void step();
  QaDbObjectId getRecordId() const;
  Qa::ErrorStatus getRecordId(QaDbObjectId& id) const;
  Qa::ErrorStatus getRecord(QaDbSymbolTableRecord*& rec, QaDb::OpenMode mode, bool openErased = false) const;
  template <class T>
  Qa::ErrorStatus getRecord(T*& rec, QaDb::OpenMode mode) const {
    return qadbOpenObject(rec, getRecordId(), mode);
  }

 private:
  void skipErased();
  const QaDbSymbolTable* table_;
  std::size_t index_ = 0;
};

class QaDbSymbolTable : public QaDbObject {
  QARX_DECLARE_MEMBERS(QaDbSymbolTable)

 public:
  QaDbSymbolTable() = default;

  // The class of record this table takes.
  virtual const QaRxClass* recordClass() const = 0;

  Qa::ErrorStatus getAt(const std::wstring& name, QaDbObjectId& id, bool getErased = false) const;
  Qa::ErrorStatus getIdAt(const std::wstring& name, QaDbObjectId& id, bool getErased = false) const {
    return getAt(name, id, getErased);
  }
  QaDbObjectId getAt(const std::wstring& name) const;
  Qa::ErrorStatus getAt(const std::wstring& name, QaDbSymbolTableRecord*& rec, QaDb::OpenMode mode) const;
  template <class T>
  Qa::ErrorStatus getAt(const std::wstring& name, T*& rec, QaDb::OpenMode mode) const {
    rec = nullptr;
    QaDbObjectId id;
    Qa::ErrorStatus es = getAt(name, id);
    return es == Qa::eOk ? qadbOpenObject(rec, id, mode) : es;
  }
  bool has(const std::wstring& name) const;
  bool has(QaDbObjectId id) const;
  // Adds a record (the table must be resident and writable). eDuplicateKey when the
  // name is taken, eBadSymbolTableName for an invalid name. The record is left open for
  // write (close it).
  Qa::ErrorStatus add(std::unique_ptr<QaDbSymbolTableRecord> record, QaDbObjectId& id);
  Qa::ErrorStatus add(std::unique_ptr<QaDbSymbolTableRecord> record);
  std::unique_ptr<QaDbSymbolTableIterator> newIterator() const;
  // Record ids as stored, erased ones included.
  const std::vector<QaDbObjectId>& recordIds() const { return records_; }
  int numRecords() const;

  void ownedIds(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void attachAdoptedChild(QaDbObjectId child) override;

 protected:
  // A copy has no records: they belong to the original.
  QaDbSymbolTable(const QaDbSymbolTable& other);

 private:
  friend class QaDbSymbolTableIterator;
  std::vector<QaDbObjectId> records_;
};

// Declares a table class taking records of RECORD.
#define QADB_DECLARE_SYMBOL_TABLE(TABLE, RECORD)                                     \
  class TABLE : public QaDbSymbolTable {                                             \
    QADB_DECLARE_MEMBERS(TABLE)                                                      \
   public:                                                                           \
    TABLE() = default;                                                               \
    const QaRxClass* recordClass() const override;                                   \
  };
