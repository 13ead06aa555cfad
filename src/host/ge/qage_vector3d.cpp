#include "host/ge/qage_vector3d.h"

#include <algorithm>
#include <numbers>

#include "host/ge/qage_matrix3d.h"

const QaGeVector3d QaGeVector3d::kIdentity{0.0, 0.0, 0.0};
const QaGeVector3d QaGeVector3d::kXAxis{1.0, 0.0, 0.0};
const QaGeVector3d QaGeVector3d::kYAxis{0.0, 1.0, 0.0};
const QaGeVector3d QaGeVector3d::kZAxis{0.0, 0.0, 1.0};

QaGeVector3d QaGeVector3d::normal() const {
  // Already of unit length (the usual Z axis of a normal): nothing to divide.
  if (x * x + y * y + z * z == 1.0) return *this;
  double len = length();
  return len == 0.0 ? *this : *this / len;
}

QaGeVector3d& QaGeVector3d::normalize() {
  *this = normal();
  return *this;
}

double QaGeVector3d::angleTo(const QaGeVector3d& v) const {
  double cross = crossProduct(v).length();
  return std::atan2(cross, dotProduct(v));
}

double QaGeVector3d::angleTo(const QaGeVector3d& v, const QaGeVector3d& reference) const {
  double a = angleTo(v);
  if (crossProduct(v).dotProduct(reference) < 0.0) a = 2.0 * std::numbers::pi - a;
  if (a >= 2.0 * std::numbers::pi) a -= 2.0 * std::numbers::pi;
  return a;
}

QaGeVector3d QaGeVector3d::perpVector() const {
  // Cross with the axis least aligned with this vector.
  double ax = std::abs(x), ay = std::abs(y), az = std::abs(z);
  QaGeVector3d axis = (ax <= ay && ax <= az) ? kXAxis : (ay <= az ? kYAxis : kZAxis);
  return crossProduct(axis).normal();
}

bool QaGeVector3d::isParallelTo(const QaGeVector3d& v, const QaGeTol& tol) const {
  QaGeVector3d a = normal(), b = v.normal();
  return a.crossProduct(b).length() <= tol.equalVector();
}

bool QaGeVector3d::isEqualTo(const QaGeVector3d& v, const QaGeTol& tol) const {
  return (*this - v).length() <= tol.equalVector();
}

QaGeVector3d& QaGeVector3d::transformBy(const QaGeMatrix3d& m) {
  *this = m * *this;
  return *this;
}
