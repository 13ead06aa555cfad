#include "host/ge/qage_scale3d.h"

#include <cmath>

#include "host/ge/qage_matrix3d.h"

const QaGeScale3d QaGeScale3d::kIdentity{1.0, 1.0, 1.0};

QaGeMatrix3d QaGeScale3d::getMatrix() const { return QaGeMatrix3d::scaling(*this); }

bool QaGeScale3d::isProportional(const QaGeTol& tol) const {
  return std::abs(sx - sy) <= tol.equalVector() && std::abs(sx - sz) <= tol.equalVector();
}

bool QaGeScale3d::isEqualTo(const QaGeScale3d& s, const QaGeTol& tol) const {
  return std::abs(sx - s.sx) <= tol.equalVector() && std::abs(sy - s.sy) <= tol.equalVector() &&
         std::abs(sz - s.sz) <= tol.equalVector();
}
