// One column of a card's block class: the attribute it shows and one text per
// row. A plain copyable value; the grid that holds it keeps all its columns at
// the same length.
#pragma once

#include <string>
#include <vector>

#include "card/att_set.h"

struct KrmDataTCol {
  // 1 for the automatic row-number column of its grid, else 0.
  int isAutoNum = 0;
  // The attribute definition, copied from the table template.
  KrmAttSet att;
  // One text per row; a text may hold "\n" or "\r\n" line breaks.
  std::vector<std::wstring> values;

  // Same mark, same show name and same values (case-sensitive); the rest of
  // the attribute is not compared.
  bool SameContent(const KrmDataTCol& other) const {
    return isAutoNum == other.isAutoNum && att.GetShowName() == other.att.GetShowName() && values == other.values;
  }
};
