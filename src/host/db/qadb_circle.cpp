#include "host/db/qadb_circle.h"

#include <cmath>

#include "host/db/qadb_curve_math.h"

QARX_DEFINE_MEMBERS(QaDbCircle, QaDbEntity, L"CIRCLE")

Qa::ErrorStatus QaDbCircle::setCenter(const QaGePoint3d& p) {
  assertWriteEnabled();
  center_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbCircle::setRadius(double r) {
  if (!(r > 0.0)) return Qa::eInvalidInput;
  assertWriteEnabled();
  radius_ = r;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbCircle::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbCircle::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbCircle::transformBy(const QaGeMatrix3d& m) {
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  if (!pm.uniform) return Qa::eCannotScaleNonUniformly;
  assertWriteEnabled();
  center_ = m * center_;
  radius_ *= pm.scale;
  normal_ = pm.newNormal;
  thickness_ *= (m * normal_).length();
  return Qa::eOk;
}

namespace {
// Box of a full circle given by conjugate radii u and v: c +- sqrt(u_i^2 + v_i^2).
void addFullEllipse(QaDbExtents& ext, const QaGePoint3d& c, const QaGeVector3d& u, const QaGeVector3d& v) {
  QaGeVector3d r(std::hypot(u.x, v.x), std::hypot(u.y, v.y), std::hypot(u.z, v.z));
  ext.addPoint(c - r);
  ext.addPoint(c + r);
}
}  // namespace

Qa::ErrorStatus QaDbCircle::getGeomExtents(QaDbExtents& ext) const {
  return getTransformedExtents(QaGeMatrix3d::kIdentity, ext);
}

Qa::ErrorStatus QaDbCircle::getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const {
  ext.reset();
  QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(normal_);
  QaGeVector3d u = m * (ocs * QaGeVector3d(radius_, 0, 0));
  QaGeVector3d v = m * (ocs * QaGeVector3d(0, radius_, 0));
  QaGePoint3d c = m * center_;
  addFullEllipse(ext, c, u, v);
  if (thickness_ != 0.0) {
    QaGeVector3d t = m * (normal_ * thickness_);
    addFullEllipse(ext, c + t, u, v);
  }
  return Qa::eOk;
}
