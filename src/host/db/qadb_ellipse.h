// An ellipse or elliptical arc (ELLIPSE): center, major axis vector (world), ratio of
// minor to major radius, parameters from startParam to endParam counter-clockwise about
// the normal (0 and 2*pi for a full ellipse).
#pragma once

#include "host/db/qadb_entity.h"

class QaDbEllipse : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbEllipse)

 public:
  QaDbEllipse();
  QaDbEllipse(const QaGePoint3d& center, const QaGeVector3d& normal, const QaGeVector3d& majorAxis,
              double radiusRatio, double startParam = 0.0, double endParam = 6.283185307179586476925);

  Qa::ErrorStatus set(const QaGePoint3d& center, const QaGeVector3d& normal, const QaGeVector3d& majorAxis,
                      double radiusRatio, double startParam = 0.0, double endParam = 6.283185307179586476925);
  const QaGePoint3d& center() const { return center_; }
  Qa::ErrorStatus setCenter(const QaGePoint3d& p);
  const QaGeVector3d& majorAxis() const { return majorAxis_; }
  QaGeVector3d minorAxis() const;  // normal x majorAxis, scaled by the ratio
  const QaGeVector3d& normal() const { return normal_; }
  double radiusRatio() const { return ratio_; }
  Qa::ErrorStatus setRadiusRatio(double r);  // 0 < r <= 1
  double startParam() const { return startParam_; }
  double endParam() const { return endParam_; }
  Qa::ErrorStatus setStartParam(double p);
  Qa::ErrorStatus setEndParam(double p);
  bool isClosed() const;
  QaGePoint3d pointAtParam(double t) const;

  // Any affine transform: the image of an ellipse is an ellipse.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

 private:
  QaGePoint3d center_;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  QaGeVector3d majorAxis_ = QaGeVector3d::kXAxis;
  double ratio_ = 1.0;
  double startParam_ = 0.0;
  double endParam_;
};
