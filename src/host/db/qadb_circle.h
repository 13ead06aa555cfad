// A full circle (CIRCLE): center in world coordinates, radius, plane normal.
#pragma once

#include "host/db/qadb_entity.h"

class QaDbCircle : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbCircle)

 public:
  QaDbCircle() = default;
  QaDbCircle(const QaGePoint3d& center, const QaGeVector3d& normal, double radius)
      : center_(center), normal_(normal.normal()), radius_(radius) {}

  const QaGePoint3d& center() const { return center_; }
  Qa::ErrorStatus setCenter(const QaGePoint3d& p);
  double radius() const { return radius_; }
  Qa::ErrorStatus setRadius(double r);  // eInvalidInput for r <= 0
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);

  // Uniform scaling, moves, rotations and mirrors; eCannotScaleNonUniformly otherwise.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  Qa::ErrorStatus getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const override;

 private:
  QaGePoint3d center_;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  double radius_ = 1.0;
  double thickness_ = 0.0;
};
