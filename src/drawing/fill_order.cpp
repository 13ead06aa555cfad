#include "drawing/fill_order.h"

#include <cmath>

namespace {

// Same row or same column: the coordinates differ by less than one drawing unit.
constexpr double kLineTolerance = 1.0;

bool Near(double a, double b) { return std::fabs(a - b) < kLineTolerance; }

}  // namespace

bool KrmFillOrderSwaps(int code, const QaGePoint3d& p, const QaGePoint3d& q) {
  switch (code) {
    case 0:
      return Near(p.x, q.x) ? q.y > p.y : p.x > q.x;
    case 1:
      return Near(p.y, q.y) ? p.x > q.x : q.y > p.y;
    case 2:
      return Near(p.x, q.x) ? p.y > q.y : p.x > q.x;
    case 3:
      return Near(p.y, q.y) ? p.x > q.x : p.y > q.y;
    case 4:
      // The column test picks the x rule and the other case the y rule: in effect
      // descending y, x deciding only within a column.
      return Near(p.x, q.x) ? q.x > p.x : q.y > p.y;
    case 5:
      return Near(p.y, q.y) ? q.x > p.x : q.y > p.y;
    case 6:
      return std::fabs(p.x - q.x) > kLineTolerance ? q.x > p.x : p.y > q.y;
    case 7:
      return Near(p.y, q.y) ? q.x > p.x : p.y > q.y;
    default:
      return false;
  }
}
