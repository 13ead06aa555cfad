// The suite's frame service "KRM_FRM_SERVICE": the drawing frames of a drawing and the
// scale at a point, by the frame rules of options.ini (krm_frame_rules.h), read afresh
// on every call. Owned by the service dictionary.
#pragma once

#include "host/db/qadb_object_id.h"
#include "host/db/qarx_class.h"
#include "host/ge/qage_point3d.h"

#include <vector>

class QaDbDatabase;

class KrmFrmService : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmFrmService)

 public:
  // Replaces `ids` by the frames of the drawing in drawing order; returns their number.
  virtual int getValidFrameCount(std::vector<QaDbObjectId>& ids, QaDbDatabase* db) const;
  // The scale of the first frame whose extents hold the point; 1.0 when none does.
  virtual double getScaleByPoint(const QaGePoint3d& point, QaDbDatabase* db) const;
};
