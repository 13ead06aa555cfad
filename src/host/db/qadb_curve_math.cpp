#include "host/db/qadb_curve_math.h"

#include <cmath>
#include <numbers>

namespace QaDbGeom {

double normalizeAngle(double a) {
  a = std::fmod(a, kTwoPi);
  if (a < 0.0) a += kTwoPi;
  if (a >= kTwoPi) a -= kTwoPi;
  return a;
}

double ccwSweep(double start, double end) {
  double s = normalizeAngle(end - start);
  if (s <= 1e-14) s = kTwoPi;
  return s;
}

void addParamArc(QaDbExtents& ext, const QaGePoint3d& c, const QaGeVector3d& u, const QaGeVector3d& v, double t0,
                 double sweep) {
  auto at = [&](double t) { return c + u * std::cos(t) + v * std::sin(t); };
  ext.addPoint(at(t0));
  ext.addPoint(at(t0 + sweep));
  const double uc[3] = {u.x, u.y, u.z};
  const double vc[3] = {v.x, v.y, v.z};
  for (int i = 0; i < 3; ++i) {
    if (uc[i] == 0.0 && vc[i] == 0.0) continue;
    // d/dt (u cos t + v sin t) = 0 where tan t = v/u.
    double base = std::atan2(vc[i], uc[i]);
    for (int k = 0; k < 2; ++k) {
      double t = base + k * std::numbers::pi;
      double off = normalizeAngle(t - t0);
      if (off <= sweep) ext.addPoint(at(t0 + off));
    }
  }
}

BulgeArc bulgeArc(const QaGePoint2d& p1, const QaGePoint2d& p2, double bulge) {
  BulgeArc arc;
  QaGeVector2d chord = p2 - p1;
  double d = chord.length();
  double theta = 4.0 * std::atan(bulge);  // signed sweep
  arc.radius = d / (2.0 * std::sin(std::abs(theta) / 2.0));
  QaGePoint2d mid((p1.x + p2.x) / 2.0, (p1.y + p2.y) / 2.0);
  QaGeVector2d left = QaGeVector2d(-chord.y, chord.x).normal();
  // Distance from the chord's middle to the center, towards the left for ccw arcs.
  double h = arc.radius * std::cos(std::abs(theta) / 2.0);
  double side = bulge > 0 ? 1.0 : -1.0;
  arc.center = mid + left * (side * h);
  const QaGePoint2d& from = bulge > 0 ? p1 : p2;
  arc.startAngle = normalizeAngle(std::atan2(from.y - arc.center.y, from.x - arc.center.x));
  arc.sweep = std::abs(theta);
  return arc;
}

void addBulgeSegment(QaDbExtents& ext, const QaGeMatrix3d& toWorld, const QaGePoint2d& p1, const QaGePoint2d& p2,
                     double bulge) {
  if (bulge == 0.0 || p1.isEqualTo(p2)) {
    ext.addPoint(toWorld * QaGePoint3d(p1));
    ext.addPoint(toWorld * QaGePoint3d(p2));
    return;
  }
  BulgeArc arc = bulgeArc(p1, p2, bulge);
  QaGeVector3d u = toWorld * QaGeVector3d(arc.radius, 0, 0);
  QaGeVector3d v = toWorld * QaGeVector3d(0, arc.radius, 0);
  addParamArc(ext, toWorld * QaGePoint3d(arc.center), u, v, arc.startAngle, arc.sweep);
}

PlaneMap mapPlane(const QaGeMatrix3d& m, const QaGeVector3d& normal) {
  PlaneMap pm;
  QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(normal);
  QaGeVector3d x = ocs * QaGeVector3d::kXAxis;
  QaGeVector3d y = ocs * QaGeVector3d::kYAxis;
  QaGeVector3d n = ocs * QaGeVector3d::kZAxis;
  QaGeVector3d xm = m * x;
  QaGeVector3d ym = m * y;
  QaGeVector3d cross = xm.crossProduct(ym);
  double lx = xm.length(), ly = ym.length();
  pm.scale = lx;
  double tol = 1e-9 * std::max(1.0, std::max(lx, ly));
  pm.uniform = std::abs(lx - ly) <= tol && std::abs(xm.dotProduct(ym)) <= tol * std::max(lx, ly);
  QaGeVector3d cn = cross.normal();
  if (cn.isZeroLength()) {
    pm.newNormal = n;
    return pm;
  }
  if (cn.dotProduct(n) < -1.0 + 1e-9) {
    pm.newNormal = n;
    pm.flipped = true;
  } else {
    pm.newNormal = cn;
  }
  return pm;
}

double angleInPlane(const QaGeVector3d& v, const QaGeVector3d& normal) {
  QaGeVector3d local = QaGeMatrix3d::worldToPlane(normal) * v;
  return normalizeAngle(std::atan2(local.y, local.x));
}

QaGeVector3d directionInPlane(double a, const QaGeVector3d& normal) {
  return QaGeMatrix3d::planeToWorld(normal) * QaGeVector3d(std::cos(a), std::sin(a), 0.0);
}

}  // namespace QaDbGeom
