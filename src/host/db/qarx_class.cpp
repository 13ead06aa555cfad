#include "host/db/qarx_class.h"

QaRxClass::QaRxClass(const wchar_t* name, const QaRxClass* parent, const wchar_t* dxfName)
    : name_(name), dxfName_(dxfName ? dxfName : L""), parent_(parent) {}

bool QaRxClass::isDerivedFrom(const QaRxClass* other) const {
  for (const QaRxClass* c = this; c != nullptr; c = c->parent_)
    if (c == other) return true;
  return false;
}

const QaRxClass* QaRxObject::desc() {
  static const QaRxClass cls(L"QaRxObject", nullptr, L"");
  return &cls;
}
