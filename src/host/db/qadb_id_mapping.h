// The result of a copy between or within databases: for each source id the id of its
// copy (or of the existing record it was mapped to). A plain value.
#pragma once

#include <map>
#include <optional>

#include "host/db/qadb_object_id.h"

struct QaDbIdPair {
  QaDbObjectId key;    // source
  QaDbObjectId value;  // destination
  bool isCloned = true;    // false when mapped to an existing record
  bool isOwnerXlated = true;
};

class QaDbIdMapping {
 public:
  QaDbIdMapping() = default;

  void assign(const QaDbIdPair& pair) { pairs_[pair.key] = pair; }
  void assign(QaDbObjectId key, QaDbObjectId value, bool isCloned = true) { assign({key, value, isCloned, true}); }
  // Finds the pair of `pair.key`; false when there is none.
  bool compute(QaDbIdPair& pair) const;
  std::optional<QaDbObjectId> lookup(QaDbObjectId key) const;
  // The destination id, or null.
  QaDbObjectId destinationOf(QaDbObjectId key) const;
  bool contains(QaDbObjectId key) const { return pairs_.count(key) != 0; }
  std::size_t size() const { return pairs_.size(); }
  void clear() { pairs_.clear(); }

  QaDbDatabase* origDb() const { return orig_; }
  QaDbDatabase* destDb() const { return dest_; }
  void setOrigDb(QaDbDatabase* db) { orig_ = db; }
  void setDestDb(QaDbDatabase* db) { dest_ = db; }

  auto begin() const { return pairs_.begin(); }
  auto end() const { return pairs_.end(); }

 private:
  std::map<QaDbObjectId, QaDbIdPair> pairs_;
  QaDbDatabase* orig_ = nullptr;
  QaDbDatabase* dest_ = nullptr;
};
