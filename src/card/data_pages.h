// Where one page number of a card goes: the block class and the attribute's
// show name. Both empty when the template binds no attribute to that number.
#pragma once

#include <string>

struct KrmDataPages {
  std::wstring blockName;
  std::wstring attName;

  friend bool operator==(const KrmDataPages&, const KrmDataPages&) = default;
};
