// A circular arc (ARC): counter-clockwise about the normal from startAngle to endAngle,
// angles in radians measured in the plane's own x axis (arbitrary axis rule).
#pragma once

#include "host/db/qadb_entity.h"

class QaDbArc : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbArc)

 public:
  QaDbArc() = default;
  QaDbArc(const QaGePoint3d& center, double radius, double startAngle, double endAngle)
      : center_(center), radius_(radius), startAngle_(startAngle), endAngle_(endAngle) {}
  QaDbArc(const QaGePoint3d& center, const QaGeVector3d& normal, double radius, double startAngle, double endAngle)
      : center_(center), normal_(normal.normal()), radius_(radius), startAngle_(startAngle), endAngle_(endAngle) {}

  const QaGePoint3d& center() const { return center_; }
  Qa::ErrorStatus setCenter(const QaGePoint3d& p);
  double radius() const { return radius_; }
  Qa::ErrorStatus setRadius(double r);  // eInvalidInput for r <= 0
  double startAngle() const { return startAngle_; }
  Qa::ErrorStatus setStartAngle(double a);
  double endAngle() const { return endAngle_; }
  Qa::ErrorStatus setEndAngle(double a);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);

  QaGePoint3d startPoint() const;
  QaGePoint3d endPoint() const;
  // The swept angle in (0, 2*pi].
  double sweep() const;

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  Qa::ErrorStatus getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const override;

 private:
  QaGePoint3d center_;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  double radius_ = 1.0;
  double startAngle_ = 0.0;
  double endAngle_ = 0.0;
  double thickness_ = 0.0;
};
