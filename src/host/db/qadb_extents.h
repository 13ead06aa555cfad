// An axis-aligned box that grows by points and boxes; starts empty. A plain value.
#pragma once

#include "host/ge/qage_matrix3d.h"
#include "host/ge/qage_point3d.h"

class QaDbExtents {
 public:
  QaDbExtents() = default;
  QaDbExtents(const QaGePoint3d& a, const QaGePoint3d& b);  // box of the two corners

  bool isEmpty() const { return empty_; }
  void reset() { empty_ = true; min_ = max_ = QaGePoint3d(); }
  void addPoint(const QaGePoint3d& p);
  void addExt(const QaDbExtents& other);
  // Meaningless (the origin) while empty.
  const QaGePoint3d& minPoint() const { return min_; }
  const QaGePoint3d& maxPoint() const { return max_; }
  void set(const QaGePoint3d& a, const QaGePoint3d& b);
  bool contains(const QaGePoint3d& p, double tol = 1e-9) const;
  // Replaces the box by the box around its eight corners transformed.
  void transformBy(const QaGeMatrix3d& m);
  // Box of the eight corners transformed, this box unchanged.
  QaDbExtents transformed(const QaGeMatrix3d& m) const;
  bool isEqualTo(const QaDbExtents& o, double tol = 1e-9) const;

 private:
  bool empty_ = true;
  QaGePoint3d min_;
  QaGePoint3d max_;
};
