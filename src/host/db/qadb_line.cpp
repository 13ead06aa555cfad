#include "host/db/qadb_line.h"

QARX_DEFINE_MEMBERS(QaDbLine, QaDbEntity, L"LINE")

QaDbLine::QaDbLine() = default;

Qa::ErrorStatus QaDbLine::setStartPoint(const QaGePoint3d& p) {
  assertWriteEnabled();
  start_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLine::setEndPoint(const QaGePoint3d& p) {
  assertWriteEnabled();
  end_ = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLine::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLine::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLine::transformBy(const QaGeMatrix3d& m) {
  assertWriteEnabled();
  start_ = m * start_;
  end_ = m * end_;
  QaGeVector3d n = (m * normal_).normal();
  if (!n.isZeroLength()) normal_ = n;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLine::getGeomExtents(QaDbExtents& ext) const {
  ext.set(start_, end_);
  if (thickness_ != 0.0) {
    ext.addPoint(start_ + normal_ * thickness_);
    ext.addPoint(end_ + normal_ * thickness_);
  }
  return Qa::eOk;
}
