#include "host/ge/qage_point3d.h"

#include "host/ge/qage_matrix3d.h"

const QaGePoint3d QaGePoint3d::kOrigin{0.0, 0.0, 0.0};

bool QaGePoint3d::isEqualTo(const QaGePoint3d& p, const QaGeTol& tol) const {
  return distanceTo(p) <= tol.equalPoint();
}

QaGePoint3d& QaGePoint3d::transformBy(const QaGeMatrix3d& m) {
  *this = m * *this;
  return *this;
}
