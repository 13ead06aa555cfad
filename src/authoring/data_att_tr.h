// The working record of one attribute block class while a table template is being
// made: its name, definition, cells in display order, how often it occurs in the pick,
// the attribute chosen in the chooser and its fill order. A plain copyable value.
#pragma once

#include <string>
#include <vector>

#include "card/att_set.h"
#include "host/db/qadb_object_id.h"

struct KrmDataAttTR {
  std::wstring blockName;  // the shortest name seen for the class
  QaDbObjectId blockId;    // definition of the first reference; null when rebuilt from a template
  std::vector<KrmAttSet> atts;
  int refCount = 0;       // below 2: single-record; above 1: multi-record
  int pageAttIndex = -1;  // index into atts chosen in the chooser, -1 for none
  int fillOrder = 0;      // 0..7

  bool IsSingleRecord() const { return refCount < 2; }
  bool IsMultiRecord() const { return refCount > 1; }
};
