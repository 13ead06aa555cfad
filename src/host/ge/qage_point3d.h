// A position in space; a plain value. `p.transformBy(m)` and `m * p` apply a matrix.
#pragma once

#include "host/ge/qage_point2d.h"
#include "host/ge/qage_vector3d.h"

class QaGeMatrix3d;

class QaGePoint3d {
 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr QaGePoint3d() = default;
  constexpr QaGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  constexpr QaGePoint3d(const QaGePoint2d& p, double zz = 0.0) : x(p.x), y(p.y), z(zz) {}

  static const QaGePoint3d kOrigin;

  double distanceTo(const QaGePoint3d& p) const { return (p - *this).length(); }
  bool isEqualTo(const QaGePoint3d& p, const QaGeTol& tol = qaGeDefaultTol()) const;
  QaGeVector3d asVector() const { return {x, y, z}; }
  QaGePoint2d convert2d() const { return {x, y}; }
  QaGePoint3d& transformBy(const QaGeMatrix3d& m);

  QaGePoint3d operator+(const QaGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  QaGePoint3d operator-(const QaGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  QaGeVector3d operator-(const QaGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  QaGePoint3d& operator+=(const QaGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  QaGePoint3d& operator-=(const QaGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  bool operator==(const QaGePoint3d& p) const { return x == p.x && y == p.y && z == p.z; }
};
