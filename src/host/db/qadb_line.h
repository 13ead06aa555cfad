// A straight segment between two points (LINE).
#pragma once

#include "host/db/qadb_entity.h"

class QaDbLine : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbLine)

 public:
  QaDbLine();  // out of line: make_unique then does not clear the object first
  QaDbLine(const QaGePoint3d& start, const QaGePoint3d& end) : start_(start), end_(end) {}

  const QaGePoint3d& startPoint() const { return start_; }
  Qa::ErrorStatus setStartPoint(const QaGePoint3d& p);
  const QaGePoint3d& endPoint() const { return end_; }
  Qa::ErrorStatus setEndPoint(const QaGePoint3d& p);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  double length() const { return start_.distanceTo(end_); }

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

 private:
  QaGePoint3d start_;
  QaGePoint3d end_;
  double thickness_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
};
