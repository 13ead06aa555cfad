#include "host/db/qarx_class.h"

QaRxClass::QaRxClass(const wchar_t* name, const QaRxClass* parent, const wchar_t* dxfName)
    : name_(name), dxfName_(dxfName ? dxfName : L""), parent_(parent) {
  if (parent) {
    depth_ = parent->depth_ + 1;
    for (int d = 0; d < kMaxDepth && d < depth_; ++d) ancestors_[d] = parent->ancestors_[d];
  }
  if (depth_ < kMaxDepth) ancestors_[depth_] = this;
}

bool QaRxClass::isDerivedFromSlow(const QaRxClass* other) const {
  for (const QaRxClass* c = this; c != nullptr; c = c->parent_)
    if (c == other) return true;
  return false;
}

const QaRxClass* QaRxObject::desc() {
  static const QaRxClass cls(L"QaRxObject", nullptr, L"");
  return &cls;
}
