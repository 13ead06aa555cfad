#include "host/db/qadb_solid.h"

#include "host/db/qadb_curve_math.h"

QARX_DEFINE_MEMBERS(QaDbSolid, QaDbEntity, L"SOLID")

Qa::ErrorStatus QaDbSolid::getPointAt(int index, QaGePoint3d& p) const {
  if (index < 0 || index > 3) return Qa::eInvalidIndex;
  p = points_[index];
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSolid::setPointAt(int index, const QaGePoint3d& p) {
  if (index < 0 || index > 3) return Qa::eInvalidIndex;
  assertWriteEnabled();
  points_[index] = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSolid::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSolid::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSolid::transformBy(const QaGeMatrix3d& m) {
  // Corners are plane coordinates of the normal: map through world space and back.
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  QaGeMatrix3d full = QaGeMatrix3d::worldToPlane(pm.newNormal) * m * QaGeMatrix3d::planeToWorld(normal_);
  assertWriteEnabled();
  for (QaGePoint3d& p : points_) p = full * p;
  thickness_ *= (m * normal_).length();
  normal_ = pm.newNormal;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSolid::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_);
  for (const QaGePoint3d& p : points_) {
    QaGePoint3d w = toWorld * p;
    ext.addPoint(w);
    if (thickness_ != 0.0) ext.addPoint(w + normal_ * thickness_);
  }
  return Qa::eOk;
}
