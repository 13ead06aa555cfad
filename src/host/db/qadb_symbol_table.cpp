#include "host/db/qadb_symbol_table.h"

#include <algorithm>

#include "host/db/qadb_database.h"
#include "host/db/qadb_id_mapping.h"

QARX_DEFINE_MEMBERS(QaDbSymbolTable, QaDbObject, L"TABLE")

namespace {
bool sameName(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    wchar_t x = a[i], y = b[i];
    if (x >= L'a' && x <= L'z') x = static_cast<wchar_t>(x - 32);
    if (y >= L'a' && y <= L'z') y = static_cast<wchar_t>(y - 32);
    if (x != y) return false;
  }
  return true;
}
}  // namespace

QaDbSymbolTable::QaDbSymbolTable(const QaDbSymbolTable& other) : QaDbObject(other) {}

Qa::ErrorStatus QaDbSymbolTable::getAt(const std::wstring& name, QaDbObjectId& id, bool getErased) const {
  id = QaDbObjectId();
  QaDbObjectId erasedHit;
  for (QaDbObjectId rid : records_) {
    auto* rec = QaDbSymbolTableRecord::cast(rid.rawObject());
    if (rec == nullptr || !sameName(rec->name(), name)) continue;
    if (!rec->isErased()) {
      id = rid;
      return Qa::eOk;
    }
    if (erasedHit.isNull()) erasedHit = rid;
  }
  if (getErased && !erasedHit.isNull()) {
    id = erasedHit;
    return Qa::eOk;
  }
  return Qa::eKeyNotFound;
}

QaDbObjectId QaDbSymbolTable::getAt(const std::wstring& name) const {
  QaDbObjectId id;
  getAt(name, id);
  return id;
}

Qa::ErrorStatus QaDbSymbolTable::getAt(const std::wstring& name, QaDbSymbolTableRecord*& rec,
                                       QaDb::OpenMode mode) const {
  rec = nullptr;
  QaDbObjectId id;
  Qa::ErrorStatus es = getAt(name, id);
  return es == Qa::eOk ? qadbOpenObject(rec, id, mode) : es;
}

bool QaDbSymbolTable::has(const std::wstring& name) const { return !getAt(name).isNull(); }

bool QaDbSymbolTable::has(QaDbObjectId id) const {
  return !id.isErased() && std::find(records_.begin(), records_.end(), id) != records_.end();
}

Qa::ErrorStatus QaDbSymbolTable::add(std::unique_ptr<QaDbSymbolTableRecord> record, QaDbObjectId& id) {
  id = QaDbObjectId();
  if (!record) return Qa::eNullObjectPointer;
  if (!isDatabaseResident()) return Qa::eNotInDatabase;
  if (!record->isKindOf(recordClass())) return Qa::eWrongObjectType;
  if (!QaDbSymbolTableRecord::isValidName(record->name())) return Qa::eBadSymbolTableName;
  if (has(record->name())) return Qa::eDuplicateKey;
  assertWriteEnabled();
  Qa::ErrorStatus es = database()->addObject(std::move(record), objectId(), id);
  if (es == Qa::eOk) records_.push_back(id);
  return es;
}

Qa::ErrorStatus QaDbSymbolTable::add(std::unique_ptr<QaDbSymbolTableRecord> record) {
  QaDbObjectId id;
  Qa::ErrorStatus es = add(std::move(record), id);
  if (es == Qa::eOk) id.rawObject()->close();
  return es;
}

std::unique_ptr<QaDbSymbolTableIterator> QaDbSymbolTable::newIterator() const {
  return std::make_unique<QaDbSymbolTableIterator>(this);
}

int QaDbSymbolTable::numRecords() const {
  return static_cast<int>(std::count_if(records_.begin(), records_.end(), [](QaDbObjectId id) {
    return id.isValid() && !id.isErased();
  }));
}

void QaDbSymbolTable::ownedIds(std::vector<QaDbObjectId>& out) const {
  out.insert(out.end(), records_.begin(), records_.end());
}

void QaDbSymbolTable::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbObject::remapIds(mapping, target);
  std::vector<QaDbObjectId> kept;
  for (QaDbObjectId id : records_) {
    QaDbObjectId m = mapping.destinationOf(id);
    if (!m.isNull()) kept.push_back(m);
    else if (id.database() == target) kept.push_back(id);
  }
  records_ = std::move(kept);
}

void QaDbSymbolTable::attachAdoptedChild(QaDbObjectId child) {
  if (QaDbSymbolTableRecord::cast(child.rawObject()) && std::find(records_.begin(), records_.end(), child) == records_.end())
    records_.push_back(child);
}

QaDbSymbolTableIterator::QaDbSymbolTableIterator(const QaDbSymbolTable* table) : table_(table) { skipErased(); }

void QaDbSymbolTableIterator::start() {
  index_ = 0;
  skipErased();
}

bool QaDbSymbolTableIterator::done() const { return index_ >= table_->records_.size(); }

void QaDbSymbolTableIterator::step() {
  if (!done()) ++index_;
  skipErased();
}

void QaDbSymbolTableIterator::skipErased() {
  while (index_ < table_->records_.size()) {
    QaDbObjectId id = table_->records_[index_];
    if (id.isValid() && !id.isErased()) break;
    ++index_;
  }
}

QaDbObjectId QaDbSymbolTableIterator::getRecordId() const {
  return done() ? QaDbObjectId() : table_->records_[index_];
}

Qa::ErrorStatus QaDbSymbolTableIterator::getRecordId(QaDbObjectId& id) const {
  id = getRecordId();
  return id.isNull() ? Qa::eInvalidIndex : Qa::eOk;
}

Qa::ErrorStatus QaDbSymbolTableIterator::getRecord(QaDbSymbolTableRecord*& rec, QaDb::OpenMode mode,
                                                   bool openErased) const {
  return qadbOpenObject(rec, getRecordId(), mode, openErased);
}
