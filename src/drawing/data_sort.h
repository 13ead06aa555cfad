// The references of one block class gathered from the pages of a card while it is
// generated. A plain value: `refs` refers to entities owned elsewhere (a KrmEntityPool
// until they are appended, the database afterwards).
#pragma once

#include <string>
#include <vector>

class QaDbEntity;

struct KrmDataSort {
  std::vector<QaDbEntity*> refs;  // block references, in page order
  int gridIndex = -1;             // grid of the card data, -1 for none
  std::wstring blockName;
};

