#include "host/dxf/dxf_write_plan.h"

#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_symbol_table.h"
#include "host/db/qadb_symbol_table_record.h"

namespace tabulon::dxf {

DxfWritePlan dxfPlanWrite(const QaDbDatabase& db) {
  DxfWritePlan plan;
  const auto* apps = QaDbRegAppTable::cast(db.regAppTableId().rawObject());
  const QaDbObjectId root = db.namedObjectsDictionaryId();
  const std::vector<QaDbObjectId> ids = db.objectIds();
  for (std::size_t i = 0; i < ids.size(); ++i) {
#if defined(__GNUC__)
    // Every object is looked at once: fetch a few ahead so that the misses overlap.
    if (i + 32 < ids.size()) __builtin_prefetch(ids[i + 32].rawObject());
#endif
    const QaDbObjectId id = ids[i];
    const QaDbObject* o = id.rawObject();
    if (!o) continue;
    for (const auto& app : o->allXData()) {
      ++plan.partHandleBudget;  // an APPID record the table may lack
      if (apps && !apps->has(app.appName)) plan.unregisteredApps.insert(app.appName);
    }
    if (QaDbEntity::cast(o)) {
      if (auto* p = QaDb2dPolyline::cast(o)) plan.partHandleBudget += p->numVerts() + 1;
      else if (QaDbBlockReference::cast(o)) plan.partHandleBudget += 1;
    } else if (QaDbBlockTableRecord::cast(o)) {
      plan.partHandleBudget += 2;
    } else if (!QaDbSymbolTable::cast(o) && !QaDbSymbolTableRecord::cast(o) && id != root) {
      plan.sectionObjects.push_back(o);
    }
  }
  return plan;
}

}  // namespace tabulon::dxf
