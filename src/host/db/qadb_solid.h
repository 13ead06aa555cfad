// A filled triangle or quadrilateral (SOLID): up to four corners in the order of the
// drawing format (the third and fourth are swapped against the outline order).
#pragma once

#include "host/db/qadb_entity.h"

class QaDbSolid : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbSolid)

 public:
  QaDbSolid() = default;
  QaDbSolid(const QaGePoint3d& p0, const QaGePoint3d& p1, const QaGePoint3d& p2, const QaGePoint3d& p3)
      : points_{p0, p1, p2, p3} {}

  // Index 0..3; eInvalidIndex otherwise.
  Qa::ErrorStatus getPointAt(int index, QaGePoint3d& p) const;
  Qa::ErrorStatus setPointAt(int index, const QaGePoint3d& p);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

 private:
  QaGePoint3d points_[4];
  double thickness_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
};
