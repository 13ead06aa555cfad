#include "host/svc/krm_frm_service.h"

#include "host/svc/krm_frame.h"

QARX_DEFINE_MEMBERS(KrmFrmService, QaRxObject, L"")

int KrmFrmService::getValidFrameCount(std::vector<QaDbObjectId>& ids, QaDbDatabase* db) const {
  ids.clear();
  for (const auto& frame : KrmFindFrames(db, KrmFrameRules::load())) ids.push_back(frame.objectId());
  return static_cast<int>(ids.size());
}

double KrmFrmService::getScaleByPoint(const QaGePoint3d& point, QaDbDatabase* db) const {
  for (const auto& frame : KrmFindFrames(db, KrmFrameRules::load()))
    if (frame.contains(point)) return frame.scale();
  return 1.0;
}
