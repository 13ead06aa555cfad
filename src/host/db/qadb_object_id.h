// The reference to an object of a database: a cheap value, null by default. It points at
// a slot that the database owns, so an id stays valid (and keeps its handle) while its
// database lives, also after the object was erased. Usable as a key of ordered and
// unordered maps.
#pragma once

#include <functional>
#include <memory>

#include "host/db/qadb_handle.h"

class QaDbDatabase;
class QaDbObject;

// The slot behind an id. Owned by the database; `object` is empty for a handle that was
// referred to but never filled (a forward reference of a file reader).
struct QaDbObjectSlot {
  QaDbDatabase* database = nullptr;
  QaDbHandle handle;
  std::unique_ptr<QaDbObject> object;

  QaDbObjectSlot();
  QaDbObjectSlot(QaDbDatabase* db, QaDbHandle h);
  ~QaDbObjectSlot();
  QaDbObjectSlot(const QaDbObjectSlot&) = delete;
  QaDbObjectSlot& operator=(const QaDbObjectSlot&) = delete;
};

class QaDbObjectId {
 public:
  constexpr QaDbObjectId() = default;
  explicit QaDbObjectId(QaDbObjectSlot* slot) : slot_(slot) {}

  static const QaDbObjectId kNull;

  bool isNull() const { return slot_ == nullptr; }
  // True when the id names an object that exists (erased or not).
  bool isValid() const;
  bool isErased() const;
  QaDbDatabase* database() const { return slot_ ? slot_->database : nullptr; }
  QaDbHandle handle() const { return slot_ ? slot_->handle : QaDbHandle(); }
  QaDbObjectSlot* slot() const { return slot_; }
  // The object itself, without any open bookkeeping; nullptr when there is none. Prefer
  // qadbOpenObject or QaDbObjectPointer.
  QaDbObject* rawObject() const;

  bool operator==(const QaDbObjectId& o) const { return slot_ == o.slot_; }
  bool operator!=(const QaDbObjectId& o) const { return slot_ != o.slot_; }
  // Ids of one database order by handle; different databases by address.
  bool operator<(const QaDbObjectId& o) const;

 private:
  QaDbObjectSlot* slot_ = nullptr;
};

template <>
struct std::hash<QaDbObjectId> {
  std::size_t operator()(const QaDbObjectId& id) const noexcept { return std::hash<const void*>()(id.slot()); }
};
