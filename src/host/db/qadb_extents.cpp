#include "host/db/qadb_extents.h"

#include <algorithm>
#include <cmath>

QaDbExtents::QaDbExtents(const QaGePoint3d& a, const QaGePoint3d& b) { set(a, b); }

void QaDbExtents::set(const QaGePoint3d& a, const QaGePoint3d& b) {
  reset();
  addPoint(a);
  addPoint(b);
}

void QaDbExtents::addPoint(const QaGePoint3d& p) {
  if (empty_) {
    min_ = max_ = p;
    empty_ = false;
    return;
  }
  min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
  max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
}

void QaDbExtents::addExt(const QaDbExtents& other) {
  if (other.empty_) return;
  addPoint(other.min_);
  addPoint(other.max_);
}

bool QaDbExtents::contains(const QaGePoint3d& p, double tol) const {
  return !empty_ && p.x >= min_.x - tol && p.x <= max_.x + tol && p.y >= min_.y - tol && p.y <= max_.y + tol &&
         p.z >= min_.z - tol && p.z <= max_.z + tol;
}

QaDbExtents QaDbExtents::transformed(const QaGeMatrix3d& m) const {
  QaDbExtents out;
  if (empty_) return out;
  for (int i = 0; i < 8; ++i) {
    QaGePoint3d c((i & 1) ? max_.x : min_.x, (i & 2) ? max_.y : min_.y, (i & 4) ? max_.z : min_.z);
    out.addPoint(m * c);
  }
  return out;
}

void QaDbExtents::transformBy(const QaGeMatrix3d& m) { *this = transformed(m); }

bool QaDbExtents::isEqualTo(const QaDbExtents& o, double tol) const {
  if (empty_ || o.empty_) return empty_ == o.empty_;
  return min_.distanceTo(o.min_) <= tol && max_.distanceTo(o.max_) <= tol;
}
