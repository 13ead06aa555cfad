#include "host/db/qadb_arc.h"

#include <cmath>

#include "host/db/qadb_curve_math.h"

QARX_DEFINE_MEMBERS(QaDbArc, QaDbEntity, L"ARC")

Qa::ErrorStatus QaDbArc::setCenter(const QaGePoint3d& p) {
  assertWriteEnabled();
  center_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::setRadius(double r) {
  if (!(r > 0.0)) return Qa::eInvalidInput;
  assertWriteEnabled();
  radius_ = r;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::setStartAngle(double a) {
  assertWriteEnabled();
  startAngle_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::setEndAngle(double a) {
  assertWriteEnabled();
  endAngle_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

QaGePoint3d QaDbArc::startPoint() const {
  return center_ + QaDbGeom::directionInPlane(startAngle_, normal_) * radius_;
}

QaGePoint3d QaDbArc::endPoint() const { return center_ + QaDbGeom::directionInPlane(endAngle_, normal_) * radius_; }

double QaDbArc::sweep() const { return QaDbGeom::ccwSweep(startAngle_, endAngle_); }

Qa::ErrorStatus QaDbArc::transformBy(const QaGeMatrix3d& m) {
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  if (!pm.uniform) return Qa::eCannotScaleNonUniformly;
  assertWriteEnabled();
  QaGePoint3d c = m * center_;
  QaGePoint3d ps = m * startPoint();
  QaGePoint3d pe = m * endPoint();
  bool full = std::abs(sweep() - QaDbGeom::kTwoPi) < 1e-12;
  double sw = sweep();
  center_ = c;
  radius_ *= pm.scale;
  normal_ = pm.newNormal;
  thickness_ *= (m * normal_).length();
  // A mirror runs the arc the other way round: start and end change places.
  if (pm.flipped) std::swap(ps, pe);
  startAngle_ = QaDbGeom::angleInPlane(ps - c, normal_);
  endAngle_ = full ? startAngle_ + QaDbGeom::kTwoPi : QaDbGeom::normalizeAngle(startAngle_ + sw);
  if (!full) endAngle_ = QaDbGeom::angleInPlane(pe - c, normal_);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbArc::getGeomExtents(QaDbExtents& ext) const {
  return getTransformedExtents(QaGeMatrix3d::kIdentity, ext);
}

Qa::ErrorStatus QaDbArc::getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const {
  ext.reset();
  QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(normal_);
  QaGeVector3d u = m * (ocs * QaGeVector3d(radius_, 0, 0));
  QaGeVector3d v = m * (ocs * QaGeVector3d(0, radius_, 0));
  QaGePoint3d c = m * center_;
  QaDbGeom::addParamArc(ext, c, u, v, startAngle_, sweep());
  if (thickness_ != 0.0) QaDbGeom::addParamArc(ext, c + m * (normal_ * thickness_), u, v, startAngle_, sweep());
  return Qa::eOk;
}
