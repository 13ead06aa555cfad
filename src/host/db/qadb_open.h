// Opening objects by id. Open/close is bookkeeping for a single thread: opening an
// object already open adds one level; close() removes one; write access lasts while
// any level is open and one of them was for write. QaDbObjectPointer makes "close
// always follows open" automatic.
#pragma once

#include <utility>

#include "host/db/qadb_object.h"

// Opens `id`. Fails with eNullObjectId, eUnknownHandle (a reference never filled) or
// eWasErased (unless openErased). On failure `obj` is nullptr.
Qa::ErrorStatus qadbOpenObject(QaDbObject*& obj, QaDbObjectId id, QaDb::OpenMode mode, bool openErased = false);

inline Qa::ErrorStatus qadbOpenQaDbObject(QaDbObject*& obj, QaDbObjectId id, QaDb::OpenMode mode,
                                          bool openErased = false) {
  return qadbOpenObject(obj, id, mode, openErased);
}

// Typed open: eWrongObjectType (and nothing left open) when the object is no T.
template <class T>
Qa::ErrorStatus qadbOpenObject(T*& obj, QaDbObjectId id, QaDb::OpenMode mode, bool openErased = false) {
  obj = nullptr;
  QaDbObject* base = nullptr;
  Qa::ErrorStatus es = qadbOpenObject(base, id, mode, openErased);
  if (es != Qa::eOk) return es;
  T* typed = T::cast(base);
  if (typed == nullptr) {
    base->close();
    return Qa::eWrongObjectType;
  }
  obj = typed;
  return Qa::eOk;
}

// Holds an object open for the lifetime of the pointer (RAII). Not copyable; movable.
template <class T>
class QaDbObjectPointer {
 public:
  QaDbObjectPointer() = default;
  QaDbObjectPointer(QaDbObjectId id, QaDb::OpenMode mode, bool openErased = false) { open(id, mode, openErased); }
  ~QaDbObjectPointer() { close(); }
  QaDbObjectPointer(const QaDbObjectPointer&) = delete;
  QaDbObjectPointer& operator=(const QaDbObjectPointer&) = delete;
  QaDbObjectPointer(QaDbObjectPointer&& o) noexcept : obj_(std::exchange(o.obj_, nullptr)), status_(o.status_) {}
  QaDbObjectPointer& operator=(QaDbObjectPointer&& o) noexcept {
    if (this != &o) {
      close();
      obj_ = std::exchange(o.obj_, nullptr);
      status_ = o.status_;
    }
    return *this;
  }

  // Closes what is held, then opens `id`.
  Qa::ErrorStatus open(QaDbObjectId id, QaDb::OpenMode mode, bool openErased = false) {
    close();
    status_ = qadbOpenObject(obj_, id, mode, openErased);
    return status_;
  }
  Qa::ErrorStatus close() {
    if (obj_ == nullptr) return Qa::eNullObjectPointer;
    Qa::ErrorStatus es = obj_->close();
    obj_ = nullptr;
    return es;
  }
  Qa::ErrorStatus openStatus() const { return status_; }
  T* object() const { return obj_; }
  T* operator->() const { return obj_; }
  T& operator*() const { return *obj_; }
  explicit operator bool() const { return obj_ != nullptr; }

 private:
  T* obj_ = nullptr;
  Qa::ErrorStatus status_ = Qa::eNullObjectId;
};
