#include "host/db/qadb_object_id.h"

#include <functional>

#include "host/db/qadb_object.h"

const QaDbObjectId QaDbObjectId::kNull;

QaDbObjectSlot::QaDbObjectSlot() = default;
QaDbObjectSlot::QaDbObjectSlot(QaDbDatabase* db, QaDbHandle h) : database(db), handle(h) {}
QaDbObjectSlot::~QaDbObjectSlot() = default;

bool QaDbObjectId::isValid() const { return slot_ != nullptr && slot_->object != nullptr; }

bool QaDbObjectId::isErased() const { return isValid() && slot_->object->isErased(); }

QaDbObject* QaDbObjectId::rawObject() const { return slot_ ? slot_->object.get() : nullptr; }

bool QaDbObjectId::operator<(const QaDbObjectId& o) const {
  QaDbDatabase* a = database();
  QaDbDatabase* b = o.database();
  if (a != b) return std::less<QaDbDatabase*>()(a, b);
  return handle() < o.handle();
}
