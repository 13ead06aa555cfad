// Scale factors along the three axes, as a block reference carries them; a plain value.
#pragma once

#include "host/ge/qage_tol.h"

class QaGeMatrix3d;

class QaGeScale3d {
 public:
  double sx = 1.0;
  double sy = 1.0;
  double sz = 1.0;

  constexpr QaGeScale3d() = default;
  constexpr explicit QaGeScale3d(double s) : sx(s), sy(s), sz(s) {}
  constexpr QaGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}

  static const QaGeScale3d kIdentity;

  // The scaling about the origin that these factors describe.
  QaGeMatrix3d getMatrix() const;
  bool isProportional(const QaGeTol& tol = qaGeDefaultTol()) const;
  bool isEqualTo(const QaGeScale3d& s, const QaGeTol& tol = qaGeDefaultTol()) const;
  QaGeScale3d operator*(double f) const { return {sx * f, sy * f, sz * f}; }
  bool operator==(const QaGeScale3d& s) const { return sx == s.sx && sy == s.sy && sz == s.sz; }
};
