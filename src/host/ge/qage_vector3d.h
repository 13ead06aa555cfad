// A direction or displacement in space; a plain value. Transforming a vector ignores the
// translation part of a matrix.
#pragma once

#include <cmath>

#include "host/ge/qage_tol.h"

class QaGeMatrix3d;

class QaGeVector3d {
 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr QaGeVector3d() = default;
  constexpr QaGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}

  static const QaGeVector3d kIdentity;  // the zero vector
  static const QaGeVector3d kXAxis;
  static const QaGeVector3d kYAxis;
  static const QaGeVector3d kZAxis;

  double length() const { return std::sqrt(x * x + y * y + z * z); }
  double lengthSqrd() const { return x * x + y * y + z * z; }
  bool isZeroLength(const QaGeTol& tol = qaGeDefaultTol()) const { return length() <= tol.equalVector(); }
  // The unit vector of the same direction; the zero vector stays zero.
  QaGeVector3d normal() const;
  QaGeVector3d& normalize();
  double dotProduct(const QaGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  QaGeVector3d crossProduct(const QaGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  // Angle between the two vectors in [0, pi].
  double angleTo(const QaGeVector3d& v) const;
  // Angle from this vector to v measured counter-clockwise about `reference`, [0, 2*pi).
  double angleTo(const QaGeVector3d& v, const QaGeVector3d& reference) const;
  // Any unit vector perpendicular to this one.
  QaGeVector3d perpVector() const;
  bool isParallelTo(const QaGeVector3d& v, const QaGeTol& tol = qaGeDefaultTol()) const;
  bool isEqualTo(const QaGeVector3d& v, const QaGeTol& tol = qaGeDefaultTol()) const;
  QaGeVector3d& transformBy(const QaGeMatrix3d& m);

  QaGeVector3d operator+(const QaGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  QaGeVector3d operator-(const QaGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  QaGeVector3d operator-() const { return {-x, -y, -z}; }
  QaGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  QaGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
  QaGeVector3d& operator+=(const QaGeVector3d& v) { x += v.x; y += v.y; z += v.z; return *this; }
  QaGeVector3d& operator-=(const QaGeVector3d& v) { x -= v.x; y -= v.y; z -= v.z; return *this; }
  QaGeVector3d& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  bool operator==(const QaGeVector3d& v) const { return x == v.x && y == v.y && z == v.z; }
};

inline QaGeVector3d operator*(double s, const QaGeVector3d& v) { return v * s; }
