// A single point (POINT).
#pragma once

#include "host/db/qadb_entity.h"

class QaDbPoint : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbPoint)

 public:
  QaDbPoint() = default;
  explicit QaDbPoint(const QaGePoint3d& p) : position_(p) {}

  const QaGePoint3d& position() const { return position_; }
  Qa::ErrorStatus setPosition(const QaGePoint3d& p);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  double ecsRotation() const { return ecsRotation_; }
  Qa::ErrorStatus setEcsRotation(double angle);

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

 private:
  QaGePoint3d position_;
  double thickness_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  double ecsRotation_ = 0.0;
};
