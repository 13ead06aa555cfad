// What the writer learns of a drawing in one pass over its objects before it
// writes anything: how many handles it may have to give to parts (BLOCK,
// ENDBLK, VERTEX, SEQEND, missing APPID records), which extended-data
// applications have no APPID record, and which objects go to OBJECTS.
#pragma once

#include "host/db/qadb_database.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tabulon::dxf {

struct DxfWritePlan {
  std::uint64_t partHandleBudget = 16;  // an upper bound
  std::set<std::wstring> unregisteredApps;
  // Non-graphical objects other than the named objects dictionary, in database order.
  std::vector<const QaDbObject*> sectionObjects;
};

DxfWritePlan dxfPlanWrite(const QaDbDatabase& db);

}  // namespace tabulon::dxf
