#include "host/db/qadb_dictionary.h"

#include <algorithm>
#include <cwctype>

#include "host/db/qadb_database.h"
#include "host/db/qadb_id_mapping.h"
#include "host/db/qadb_open.h"

QARX_DEFINE_MEMBERS(QaDbDictionary, QaDbObject, L"DICTIONARY")

namespace {
bool sameKey(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::towupper(a[i]) != std::towupper(b[i])) return false;
  return true;
}
}  // namespace

QaDbDictionary::QaDbDictionary(const QaDbDictionary& other)
    : QaDbObject(other), hardOwner_(other.hardOwner_), mergeStyle_(other.mergeStyle_) {}

std::size_t QaDbDictionary::find(const std::wstring& key) const {
  for (std::size_t i = 0; i < entries_.size(); ++i)
    if (sameKey(entries_[i].key, key)) return i;
  return entries_.size();
}

std::wstring QaDbDictionary::resolveKey(const std::wstring& key) const {
  if (key != L"*A" && key != L"*a") return key;
  // A fresh anonymous key above every one in use.
  long highest = 0;
  for (const Entry& e : entries_) {
    if (e.key.size() < 3 || e.key[0] != L'*' || std::towupper(e.key[1]) != L'A') continue;
    long n = 0;
    bool digits = true;
    for (std::size_t i = 2; i < e.key.size() && digits; ++i) {
      if (e.key[i] < L'0' || e.key[i] > L'9') digits = false;
      else n = n * 10 + (e.key[i] - L'0');
    }
    if (digits) highest = std::max(highest, n);
  }
  return L"*A" + std::to_wstring(highest + 1);
}

Qa::ErrorStatus QaDbDictionary::setAt(const std::wstring& keyIn, std::unique_ptr<QaDbObject> object,
                                      QaDbObjectId& id) {
  id = QaDbObjectId();
  if (!object) return Qa::eNullObjectPointer;
  if (keyIn.empty()) return Qa::eInvalidInput;
  if (!isDatabaseResident()) return Qa::eNotInDatabase;
  if (object->isDatabaseResident()) return Qa::eAlreadyInDb;
  assertWriteEnabled();
  std::wstring key = resolveKey(keyIn);
  QaDbObject* raw = object.get();
  Qa::ErrorStatus es = database()->addObject(std::move(object), objectId(), id);
  if (es != Qa::eOk) return es;
  raw->addPersistentReactor(objectId());
  std::size_t at = find(key);
  if (at < entries_.size()) {
    QaDbObjectId old = entries_[at].id;
    entries_[at].id = id;
    QaDbObjectPointer<QaDbObject> p(old, QaDb::kForWrite);
    if (p) p->erase();
  } else {
    entries_.push_back({key, id});
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDictionary::setAt(const std::wstring& keyIn, QaDbObjectId id) {
  if (id.isNull()) return Qa::eNullObjectId;
  if (keyIn.empty()) return Qa::eInvalidInput;
  if (!isDatabaseResident()) return Qa::eNotInDatabase;
  if (id.database() != database()) return Qa::eWrongDatabase;
  assertWriteEnabled();
  std::wstring key = resolveKey(keyIn);
  std::size_t at = find(key);
  if (at < entries_.size()) entries_[at].id = id;
  else entries_.push_back({key, id});
  if (QaDbObject* obj = id.rawObject()) obj->setOwnerId(objectId());
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDictionary::getAt(const std::wstring& key, QaDbObjectId& id) const {
  id = QaDbObjectId();
  std::size_t at = find(key);
  if (at == entries_.size() || entries_[at].id.isErased()) return Qa::eKeyNotFound;
  id = entries_[at].id;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDictionary::getAt(const std::wstring& key, QaDbObject*& obj, QaDb::OpenMode mode) const {
  obj = nullptr;
  QaDbObjectId id;
  Qa::ErrorStatus es = getAt(key, id);
  return es == Qa::eOk ? qadbOpenObject(obj, id, mode) : es;
}

bool QaDbDictionary::has(const std::wstring& key) const {
  QaDbObjectId id;
  return getAt(key, id) == Qa::eOk;
}

bool QaDbDictionary::has(QaDbObjectId id) const {
  return !id.isErased() &&
         std::any_of(entries_.begin(), entries_.end(), [&](const Entry& e) { return e.id == id; });
}

Qa::ErrorStatus QaDbDictionary::nameAt(QaDbObjectId id, std::wstring& key) const {
  for (const Entry& e : entries_)
    if (e.id == id) {
      key = e.key;
      return Qa::eOk;
    }
  return Qa::eKeyNotFound;
}

Qa::ErrorStatus QaDbDictionary::remove(const std::wstring& key) {
  QaDbObjectId id;
  return remove(key, id);
}

Qa::ErrorStatus QaDbDictionary::remove(const std::wstring& key, QaDbObjectId& id) {
  id = QaDbObjectId();
  std::size_t at = find(key);
  if (at == entries_.size()) return Qa::eKeyNotFound;
  assertWriteEnabled();
  id = entries_[at].id;
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(at));
  if (QaDbObject* obj = id.rawObject()) {
    if (obj->ownerId() == objectId()) obj->setOwnerId(QaDbObjectId());
    QaDbObjectPointer<QaDbObject> p(id, QaDb::kForWrite, true);
    if (p) p->removePersistentReactor(objectId());
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDictionary::setName(const std::wstring& oldKey, const std::wstring& newKey) {
  if (newKey.empty()) return Qa::eInvalidInput;
  std::size_t at = find(oldKey);
  if (at == entries_.size()) return Qa::eKeyNotFound;
  std::size_t clash = find(newKey);
  if (clash != entries_.size() && clash != at) return Qa::eDuplicateKey;
  assertWriteEnabled();
  entries_[at].key = newKey;
  return Qa::eOk;
}

int QaDbDictionary::numEntries() const {
  return static_cast<int>(std::count_if(entries_.begin(), entries_.end(),
                                        [](const Entry& e) { return e.id.isValid() && !e.id.isErased(); }));
}

std::unique_ptr<QaDbDictionaryIterator> QaDbDictionary::newIterator() const {
  return std::make_unique<QaDbDictionaryIterator>(this);
}

Qa::ErrorStatus QaDbDictionary::setHardOwner(bool on) {
  assertWriteEnabled();
  hardOwner_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbDictionary::setMergeStyle(int style) {
  assertWriteEnabled();
  mergeStyle_ = style;
  return Qa::eOk;
}

void QaDbDictionary::ownedIds(std::vector<QaDbObjectId>& out) const {
  for (const Entry& e : entries_)
    if (QaDbObject* obj = e.id.rawObject(); obj && obj->ownerId() == objectId()) out.push_back(e.id);
}

void QaDbDictionary::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbObject::remapIds(mapping, target);
  std::vector<Entry> kept;
  for (const Entry& e : entries_) {
    QaDbObjectId m = mapping.destinationOf(e.id);
    if (!m.isNull()) kept.push_back({e.key, m});
    else if (e.id.database() == target) kept.push_back(e);
  }
  entries_ = std::move(kept);
}

QaDbDictionaryIterator::QaDbDictionaryIterator(const QaDbDictionary* dict) : dict_(dict) { skipErased(); }

void QaDbDictionaryIterator::skipErased() {
  while (index_ < dict_->entries_.size()) {
    QaDbObjectId id = dict_->entries_[index_].id;
    if (id.isValid() && !id.isErased()) break;
    ++index_;
  }
}

bool QaDbDictionaryIterator::done() const { return index_ >= dict_->entries_.size(); }

bool QaDbDictionaryIterator::next() {
  if (!done()) ++index_;
  skipErased();
  return !done();
}

const std::wstring& QaDbDictionaryIterator::name() const {
  static const std::wstring empty;
  return done() ? empty : dict_->entries_[index_].key;
}

QaDbObjectId QaDbDictionaryIterator::objectId() const {
  return done() ? QaDbObjectId() : dict_->entries_[index_].id;
}

Qa::ErrorStatus QaDbDictionaryIterator::getObject(QaDbObject*& obj, QaDb::OpenMode mode) const {
  return qadbOpenObject(obj, objectId(), mode);
}
