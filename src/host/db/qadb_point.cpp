#include "host/db/qadb_point.h"

#include "host/db/qadb_curve_math.h"

QARX_DEFINE_MEMBERS(QaDbPoint, QaDbEntity, L"POINT")

Qa::ErrorStatus QaDbPoint::setPosition(const QaGePoint3d& p) {
  assertWriteEnabled();
  position_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPoint::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPoint::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPoint::setEcsRotation(double angle) {
  assertWriteEnabled();
  ecsRotation_ = angle;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPoint::transformBy(const QaGeMatrix3d& m) {
  assertWriteEnabled();
  position_ = m * position_;
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  normal_ = pm.newNormal;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPoint::getGeomExtents(QaDbExtents& ext) const {
  ext.set(position_, position_);
  if (thickness_ != 0.0) ext.addPoint(position_ + normal_ * thickness_);
  return Qa::eOk;
}
