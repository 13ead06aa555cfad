// A dictionary (DICTIONARY): named entries in insertion order, each an object the
// dictionary owns. Keys compare without regard to ASCII case. The key "*A" asks for a
// fresh anonymous key "*A1", "*A2", ...
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/db/qadb_object.h"

class QaDbDictionary;

// Walks the entries that are not erased. Must not outlive the dictionary.
class QaDbDictionaryIterator {
 public:
  explicit QaDbDictionaryIterator(const QaDbDictionary* dict);
  bool done() const;
  bool next();  // false at the end
  const std::wstring& name() const;
  QaDbObjectId objectId() const;
  // Opens the current entry.
  Qa::ErrorStatus getObject(QaDbObject*& obj, QaDb::OpenMode mode) const;

 private:
  void skipErased();
  const QaDbDictionary* dict_;
  std::size_t index_ = 0;
};

class QaDbDictionary : public QaDbObject {
  QADB_DECLARE_MEMBERS(QaDbDictionary)

 public:
  struct Entry {
    std::wstring key;
    QaDbObjectId id;
  };

  QaDbDictionary() = default;

  // Adds a new object under `key` (the dictionary must be resident and writable); the
  // object becomes owned by the dictionary, gets the dictionary as persistent reactor,
  // and is left open for write (close it). A key already in use has its old object
  // erased and replaced.
  Qa::ErrorStatus setAt(const std::wstring& key, std::unique_ptr<QaDbObject> object, QaDbObjectId& id);
  // Enters an object that is already in the same database; the dictionary becomes its
  // owner. Used by file readers.
  Qa::ErrorStatus setAt(const std::wstring& key, QaDbObjectId id);
  Qa::ErrorStatus getAt(const std::wstring& key, QaDbObjectId& id) const;
  Qa::ErrorStatus getAt(const std::wstring& key, QaDbObject*& obj, QaDb::OpenMode mode) const;
  bool has(const std::wstring& key) const;
  bool has(QaDbObjectId id) const;
  // The key under which `id` stands.
  Qa::ErrorStatus nameAt(QaDbObjectId id, std::wstring& key) const;
  // Takes the entry out without erasing the object.
  Qa::ErrorStatus remove(const std::wstring& key);
  Qa::ErrorStatus remove(const std::wstring& key, QaDbObjectId& id);
  Qa::ErrorStatus setName(const std::wstring& oldKey, const std::wstring& newKey);
  // Entries whose objects are not erased.
  int numEntries() const;
  std::unique_ptr<QaDbDictionaryIterator> newIterator() const;
  const std::vector<Entry>& entries() const { return entries_; }
  bool isHardOwner() const { return hardOwner_; }
  Qa::ErrorStatus setHardOwner(bool on);
  // Duplicate record cloning flag (group 281).
  int mergeStyle() const { return mergeStyle_; }
  Qa::ErrorStatus setMergeStyle(int style);

  void ownedIds(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;

 protected:
  // A copy has no entries: they belong to the original.
  QaDbDictionary(const QaDbDictionary& other);

 private:
  friend class QaDbDictionaryIterator;
  std::size_t find(const std::wstring& key) const;
  std::wstring resolveKey(const std::wstring& key) const;
  std::vector<Entry> entries_;
  bool hardOwner_ = false;
  int mergeStyle_ = 1;
};
