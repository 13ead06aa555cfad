// What the writer learns of a drawing in one pass over its objects before it
// writes anything: how many fresh handles records that are not database objects
// will take (BLOCK, ENDBLK, VERTEX, SEQEND and missing APPID records whose file
// gave them none, or none that is still free), which extended-data
// applications have no APPID record, and which objects go to OBJECTS.
#pragma once

#include "host/db/qadb_database.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tabulon::dxf {

struct DxfWritePlan {
  // Never fewer than the writer gives: $HANDSEED is the database's seed plus this,
  // so a drawing saved again with nothing added keeps its seed.
  std::uint64_t freshPartHandles = 0;
  std::set<std::wstring> unregisteredApps;
  // Non-graphical objects other than the named objects dictionary, in database order.
  std::vector<const QaDbObject*> sectionObjects;
};

DxfWritePlan dxfPlanWrite(const QaDbDatabase& db);

}  // namespace tabulon::dxf
