#include "drawing/page_placer.h"

#include <stdexcept>

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_reference.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_frm_service.h"

namespace {

double FrameScaleAt(const QaGePoint3d& point) {
  const KrmFrmService* frames = qaFindService<KrmFrmService>(KRM_FRM_SERVICE);
  if (frames == nullptr) return 1.0;
  return frames->getScaleByPoint(point, qaWorkingDatabase());
}

}  // namespace

KrmPagePlacer InitPagePlacer(const QaGePoint3d& point, const KrmCardDir& dir) {
  KrmPagePlacer placer;
  placer.origin = point;
  placer.placed = 0;
  placer.dir = dir;
  placer.scale = FrameScaleAt(point);
  return placer;
}

QaGePoint3d PagePointAt(const KrmPagePlacer& placer, int i) {
  const double hor = placer.dir.GetHor() * placer.scale;
  const double ver = placer.dir.GetVer() * placer.scale;
  const int n = placer.dir.GetFstN();
  const int d = placer.dir.GetDir();
  if (n == 0) throw std::invalid_argument("page placement: pages per row or column (FstN) is 0");

  // C++ division truncates toward zero, so a negative index steps back row and column.
  const int q = i / n;
  const int r = i % n;
  int sx = placer.dir.GetFstT() == 1 ? r : q;
  int sy = placer.dir.GetFstT() == 1 ? q : r;
  if (d == 1 || d == 2) sx = -sx;
  if (d == 2 || d == 3) sy = -sy;

  const double x = sx * placer.pageWidth + placer.origin.x + sx * hor;
  const double y = sy * placer.pageHeight + placer.origin.y + sy * ver;
  return {x, y, 0.0};
}

QaGePoint3d NextPagePoint(KrmPagePlacer& placer) {
  if (placer.placed == 0) {
    placer.placed = 1;
    return placer.origin;
  }
  QaGePoint3d point = PagePointAt(placer, placer.placed);
  ++placer.placed;
  return point;
}

int SortRefsByFillOrder(std::vector<QaDbEntity*>& refs, int code) {
  if (refs.empty()) return 0;
  KrmSortByFillOrder(refs, code, [](const QaDbEntity* entity) {
    const QaDbBlockReference* ref = QaDbBlockReference::cast(entity);
    return ref != nullptr ? ref->position() : QaGePoint3d::kOrigin;
  });
  return 1;
}
