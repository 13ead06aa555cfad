#include "host/ge/qage_point2d.h"

#include <numbers>

const QaGeVector2d QaGeVector2d::kIdentity{0.0, 0.0};
const QaGeVector2d QaGeVector2d::kXAxis{1.0, 0.0};
const QaGeVector2d QaGeVector2d::kYAxis{0.0, 1.0};
const QaGePoint2d QaGePoint2d::kOrigin{0.0, 0.0};

double QaGeVector2d::angle() const {
  double a = std::atan2(y, x);
  return a < 0.0 ? a + 2.0 * std::numbers::pi : a;
}

QaGeVector2d QaGeVector2d::normal() const {
  double len = length();
  return len == 0.0 ? *this : QaGeVector2d(x / len, y / len);
}

bool QaGeVector2d::isEqualTo(const QaGeVector2d& v, const QaGeTol& tol) const {
  return (*this - v).length() <= tol.equalVector();
}

bool QaGePoint2d::isEqualTo(const QaGePoint2d& p, const QaGeTol& tol) const {
  return distanceTo(p) <= tol.equalPoint();
}
