// A NURBS curve (SPLINE): degree, knots, control points with optional weights, and the
// fit points it was made from. A spline given only by fit points has no control points.
#pragma once

#include <vector>

#include "host/db/qadb_entity.h"

class QaDbSpline : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbSpline)

 public:
  // Spline flags (group 70).
  enum Flags { kClosed = 1, kPeriodic = 2, kRational = 4, kPlanar = 8, kLinear = 16 };

  QaDbSpline() = default;

  int degree() const { return degree_; }
  Qa::ErrorStatus setDegree(int degree);  // 1..25
  int flags() const { return flags_; }
  Qa::ErrorStatus setFlags(int flags);
  bool isClosed() const { return (flags_ & kClosed) != 0; }
  bool isPeriodic() const { return (flags_ & kPeriodic) != 0; }
  bool isRational() const { return (flags_ & kRational) != 0; }

  const std::vector<double>& knots() const { return knots_; }
  const std::vector<QaGePoint3d>& controlPoints() const { return controlPoints_; }
  // Empty, or one per control point.
  const std::vector<double>& weights() const { return weights_; }
  const std::vector<QaGePoint3d>& fitPoints() const { return fitPoints_; }
  // Sets the curve by its control data; eInvalidInput when the counts do not fit
  // (knots = control points + degree + 1, weights empty or one per control point).
  Qa::ErrorStatus setNurbsData(int degree, std::vector<QaGePoint3d> controlPoints, std::vector<double> knots,
                               std::vector<double> weights = {});
  Qa::ErrorStatus setFitPoints(std::vector<QaGePoint3d> fitPoints);
  const QaGeVector3d& startTangent() const { return startTangent_; }
  const QaGeVector3d& endTangent() const { return endTangent_; }
  Qa::ErrorStatus setFitTangents(const QaGeVector3d& start, const QaGeVector3d& end);
  double knotTolerance() const { return knotTol_; }
  double controlPointTolerance() const { return controlTol_; }
  double fitTolerance() const { return fitTol_; }
  Qa::ErrorStatus setTolerances(double knotTol, double controlTol, double fitTol);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);

  bool hasValidNurbsData() const;
  // A point of the curve at knot parameter u (clamped to the knot range); the origin
  // when the control data are invalid.
  QaGePoint3d evaluate(double u) const;

  // Any affine transform (applied to control and fit points and tangents).
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // Valid control data: the curve sampled densely on every knot span together with its
  // end points, which is exact at the ends and for degree 1. Fit points only: their box.
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

 private:
  int degree_ = 3;
  int flags_ = 0;
  std::vector<double> knots_;
  std::vector<QaGePoint3d> controlPoints_;
  std::vector<double> weights_;
  std::vector<QaGePoint3d> fitPoints_;
  QaGeVector3d startTangent_;
  QaGeVector3d endTangent_;
  double knotTol_ = 1e-10;
  double controlTol_ = 1e-10;
  double fitTol_ = 1e-10;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
};
