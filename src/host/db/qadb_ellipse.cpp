#include "host/db/qadb_ellipse.h"

#include <cmath>
#include <numbers>

#include "host/db/qadb_curve_math.h"

QARX_DEFINE_MEMBERS(QaDbEllipse, QaDbEntity, L"ELLIPSE")

QaDbEllipse::QaDbEllipse() : endParam_(QaDbGeom::kTwoPi) {}

QaDbEllipse::QaDbEllipse(const QaGePoint3d& center, const QaGeVector3d& normal, const QaGeVector3d& majorAxis,
                         double radiusRatio, double startParam, double endParam)
    : center_(center),
      normal_(normal.normal()),
      majorAxis_(majorAxis),
      ratio_(radiusRatio),
      startParam_(startParam),
      endParam_(endParam) {}

Qa::ErrorStatus QaDbEllipse::set(const QaGePoint3d& center, const QaGeVector3d& normal, const QaGeVector3d& majorAxis,
                                 double radiusRatio, double startParam, double endParam) {
  if (normal.isZeroLength() || majorAxis.isZeroLength() || !(radiusRatio > 0.0) || radiusRatio > 1.0 + 1e-12)
    return Qa::eInvalidInput;
  assertWriteEnabled();
  center_ = center;
  normal_ = normal.normal();
  majorAxis_ = majorAxis;
  ratio_ = std::min(radiusRatio, 1.0);
  startParam_ = startParam;
  endParam_ = endParam;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEllipse::setCenter(const QaGePoint3d& p) {
  assertWriteEnabled();
  center_ = p;
  return Qa::eOk;
}

QaGeVector3d QaDbEllipse::minorAxis() const { return normal_.crossProduct(majorAxis_) * ratio_; }

Qa::ErrorStatus QaDbEllipse::setRadiusRatio(double r) {
  if (!(r > 0.0) || r > 1.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  ratio_ = r;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEllipse::setStartParam(double p) {
  assertWriteEnabled();
  startParam_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEllipse::setEndParam(double p) {
  assertWriteEnabled();
  endParam_ = p;
  return Qa::eOk;
}

bool QaDbEllipse::isClosed() const { return std::abs(QaDbGeom::ccwSweep(startParam_, endParam_) - QaDbGeom::kTwoPi) < 1e-12; }

QaGePoint3d QaDbEllipse::pointAtParam(double t) const {
  return center_ + majorAxis_ * std::cos(t) + minorAxis() * std::sin(t);
}

Qa::ErrorStatus QaDbEllipse::transformBy(const QaGeMatrix3d& m) {
  QaGeVector3d u = m * majorAxis_;
  QaGeVector3d v = m * minorAxis();
  if (u.crossProduct(v).isZeroLength()) return Qa::eInvalidInput;
  // Principal axes of c + u cos t + v sin t: rotate the parameter by t0.
  double t0 = 0.5 * std::atan2(2.0 * u.dotProduct(v), u.dotProduct(u) - v.dotProduct(v));
  QaGeVector3d a = u * std::cos(t0) + v * std::sin(t0);
  QaGeVector3d b = v * std::cos(t0) - u * std::sin(t0);
  double shift = t0;
  if (b.length() > a.length()) {
    QaGeVector3d na = b;
    b = -a;
    a = na;
    shift += std::numbers::pi / 2.0;
  }
  bool closed = isClosed();
  double s = startParam_ - shift;
  double e = endParam_ - shift;
  QaGeVector3d n = a.crossProduct(b).normal();
  if (n.dotProduct(normal_) < -1.0 + 1e-9) {
    // Keep the old normal for a mirrored ellipse: run the parameter backwards.
    n = normal_;
    b = -b;
    double ns = -e, ne = -s;
    s = ns;
    e = ne;
  }
  assertWriteEnabled();
  center_ = m * center_;
  normal_ = n;
  majorAxis_ = a;
  ratio_ = std::min(1.0, b.length() / a.length());
  if (closed) {
    startParam_ = 0.0;
    endParam_ = QaDbGeom::kTwoPi;
  } else {
    startParam_ = QaDbGeom::normalizeAngle(s);
    endParam_ = QaDbGeom::normalizeAngle(e);
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEllipse::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  QaDbGeom::addParamArc(ext, center_, majorAxis_, minorAxis(), startParam_, QaDbGeom::ccwSweep(startParam_, endParam_));
  return Qa::eOk;
}
