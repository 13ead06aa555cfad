// Plane points and vectors: plain values used for polyline vertices, text sizes and the
// like.
#pragma once

#include <cmath>

#include "host/ge/qage_tol.h"

class QaGeVector2d {
 public:
  double x = 0.0;
  double y = 0.0;

  constexpr QaGeVector2d() = default;
  constexpr QaGeVector2d(double xx, double yy) : x(xx), y(yy) {}

  static const QaGeVector2d kIdentity;
  static const QaGeVector2d kXAxis;
  static const QaGeVector2d kYAxis;

  double length() const { return std::hypot(x, y); }
  double angle() const;  // angle to the x axis in [0, 2*pi)
  QaGeVector2d normal() const;
  double dotProduct(const QaGeVector2d& v) const { return x * v.x + y * v.y; }
  double crossProduct(const QaGeVector2d& v) const { return x * v.y - y * v.x; }
  bool isEqualTo(const QaGeVector2d& v, const QaGeTol& tol = qaGeDefaultTol()) const;

  QaGeVector2d operator+(const QaGeVector2d& v) const { return {x + v.x, y + v.y}; }
  QaGeVector2d operator-(const QaGeVector2d& v) const { return {x - v.x, y - v.y}; }
  QaGeVector2d operator-() const { return {-x, -y}; }
  QaGeVector2d operator*(double s) const { return {x * s, y * s}; }
  bool operator==(const QaGeVector2d& v) const { return x == v.x && y == v.y; }
};

class QaGePoint2d {
 public:
  double x = 0.0;
  double y = 0.0;

  constexpr QaGePoint2d() = default;
  constexpr QaGePoint2d(double xx, double yy) : x(xx), y(yy) {}

  static const QaGePoint2d kOrigin;

  double distanceTo(const QaGePoint2d& p) const { return std::hypot(p.x - x, p.y - y); }
  bool isEqualTo(const QaGePoint2d& p, const QaGeTol& tol = qaGeDefaultTol()) const;
  QaGeVector2d asVector() const { return {x, y}; }

  QaGePoint2d operator+(const QaGeVector2d& v) const { return {x + v.x, y + v.y}; }
  QaGePoint2d operator-(const QaGeVector2d& v) const { return {x - v.x, y - v.y}; }
  QaGeVector2d operator-(const QaGePoint2d& p) const { return {x - p.x, y - p.y}; }
  bool operator==(const QaGePoint2d& p) const { return x == p.x && y == p.y; }
};
