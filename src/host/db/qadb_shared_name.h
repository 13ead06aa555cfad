// A name many objects carry (the layer or linetype of an entity), kept once per
// process and referred to by pointer: objects hold no copy, copying one is free and
// equal names compare by address. The pool only grows; names are few.
#pragma once

#include <string>
#include <string_view>

class QaDbSharedName {
 public:
  // The empty name.
  QaDbSharedName();
  explicit QaDbSharedName(std::wstring_view name);

  const std::wstring& str() const { return *name_; }
  bool operator==(const QaDbSharedName& o) const { return name_ == o.name_; }
  // The address identifies the name (for hashing).
  const void* key() const { return name_; }

 private:
  const std::wstring* name_;
};
