#include "host/ge/qage_matrix3d.h"

#include <algorithm>
#include <cmath>

const QaGeMatrix3d QaGeMatrix3d::kIdentity;

QaGeMatrix3d::QaGeMatrix3d() { setToIdentity(); }

QaGeMatrix3d& QaGeMatrix3d::setToIdentity() {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) entry[r][c] = r == c ? 1.0 : 0.0;
  return *this;
}

QaGeMatrix3d& QaGeMatrix3d::setToTranslation(const QaGeVector3d& v) {
  setToIdentity();
  entry[0][3] = v.x;
  entry[1][3] = v.y;
  entry[2][3] = v.z;
  return *this;
}

QaGeMatrix3d& QaGeMatrix3d::setToScaling(double scale, const QaGePoint3d& center) {
  return setToScaling(QaGeScale3d(scale), center);
}

QaGeMatrix3d& QaGeMatrix3d::setToScaling(const QaGeScale3d& s, const QaGePoint3d& c) {
  setToIdentity();
  entry[0][0] = s.sx;
  entry[1][1] = s.sy;
  entry[2][2] = s.sz;
  // p' = c + S (p - c)
  entry[0][3] = c.x * (1.0 - s.sx);
  entry[1][3] = c.y * (1.0 - s.sy);
  entry[2][3] = c.z * (1.0 - s.sz);
  return *this;
}

QaGeMatrix3d& QaGeMatrix3d::setToRotation(double angle, const QaGeVector3d& axisIn, const QaGePoint3d& center) {
  setToIdentity();
  QaGeVector3d a = axisIn.normal();
  if (a.isZeroLength()) return *this;
  double c = std::cos(angle), s = std::sin(angle), t = 1.0 - c;
  // Rodrigues' rotation matrix.
  entry[0][0] = t * a.x * a.x + c;
  entry[0][1] = t * a.x * a.y - s * a.z;
  entry[0][2] = t * a.x * a.z + s * a.y;
  entry[1][0] = t * a.x * a.y + s * a.z;
  entry[1][1] = t * a.y * a.y + c;
  entry[1][2] = t * a.y * a.z - s * a.x;
  entry[2][0] = t * a.x * a.z - s * a.y;
  entry[2][1] = t * a.y * a.z + s * a.x;
  entry[2][2] = t * a.z * a.z + c;
  QaGeVector3d rc = (*this) * center.asVector();
  entry[0][3] = center.x - rc.x;
  entry[1][3] = center.y - rc.y;
  entry[2][3] = center.z - rc.z;
  return *this;
}

QaGeMatrix3d& QaGeMatrix3d::setToMirroring(const QaGePoint3d& point, const QaGeVector3d& normalIn) {
  setToIdentity();
  QaGeVector3d n = normalIn.normal();
  if (n.isZeroLength()) return *this;
  double nn[3] = {n.x, n.y, n.z};
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 3; ++c) entry[r][c] = (r == c ? 1.0 : 0.0) - 2.0 * nn[r] * nn[c];
  double d = 2.0 * n.dotProduct(point.asVector());
  entry[0][3] = d * n.x;
  entry[1][3] = d * n.y;
  entry[2][3] = d * n.z;
  return *this;
}

QaGeMatrix3d& QaGeMatrix3d::setCoordSystem(const QaGePoint3d& o, const QaGeVector3d& x, const QaGeVector3d& y,
                                           const QaGeVector3d& z) {
  setToIdentity();
  const QaGeVector3d* axes[3] = {&x, &y, &z};
  for (int c = 0; c < 3; ++c) {
    entry[0][c] = axes[c]->x;
    entry[1][c] = axes[c]->y;
    entry[2][c] = axes[c]->z;
  }
  entry[0][3] = o.x;
  entry[1][3] = o.y;
  entry[2][3] = o.z;
  return *this;
}

void QaGeMatrix3d::getCoordSystem(QaGePoint3d& o, QaGeVector3d& x, QaGeVector3d& y, QaGeVector3d& z) const {
  o = {entry[0][3], entry[1][3], entry[2][3]};
  x = {entry[0][0], entry[1][0], entry[2][0]};
  y = {entry[0][1], entry[1][1], entry[2][1]};
  z = {entry[0][2], entry[1][2], entry[2][2]};
}

QaGeMatrix3d QaGeMatrix3d::translation(const QaGeVector3d& v) { return QaGeMatrix3d().setToTranslation(v); }
QaGeMatrix3d QaGeMatrix3d::scaling(double s, const QaGePoint3d& c) { return QaGeMatrix3d().setToScaling(s, c); }
QaGeMatrix3d QaGeMatrix3d::scaling(const QaGeScale3d& s, const QaGePoint3d& c) {
  return QaGeMatrix3d().setToScaling(s, c);
}
QaGeMatrix3d QaGeMatrix3d::rotation(double a, const QaGeVector3d& axis, const QaGePoint3d& c) {
  return QaGeMatrix3d().setToRotation(a, axis, c);
}
QaGeMatrix3d QaGeMatrix3d::mirroring(const QaGePoint3d& p, const QaGeVector3d& n) {
  return QaGeMatrix3d().setToMirroring(p, n);
}

QaGeMatrix3d QaGeMatrix3d::planeToWorld(const QaGeVector3d& normalIn) {
  QaGeVector3d n = normalIn.normal();
  if (n.isZeroLength()) n = QaGeVector3d::kZAxis;
  // Arbitrary axis rule: near the z axis take world y, else world z, to build x.
  const double limit = 1.0 / 64.0;
  QaGeVector3d ax = (std::abs(n.x) < limit && std::abs(n.y) < limit) ? QaGeVector3d::kYAxis.crossProduct(n)
                                                                      : QaGeVector3d::kZAxis.crossProduct(n);
  ax.normalize();
  QaGeVector3d ay = n.crossProduct(ax).normal();
  return QaGeMatrix3d().setCoordSystem(QaGePoint3d::kOrigin, ax, ay, n);
}

QaGeMatrix3d QaGeMatrix3d::worldToPlane(const QaGeVector3d& normal) { return planeToWorld(normal).transpose(); }

QaGeMatrix3d QaGeMatrix3d::operator*(const QaGeMatrix3d& m) const {
  QaGeMatrix3d r;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k) sum += entry[i][k] * m.entry[k][j];
      r.entry[i][j] = sum;
    }
  return r;
}

QaGeMatrix3d& QaGeMatrix3d::operator*=(const QaGeMatrix3d& m) { return postMultBy(m); }
QaGeMatrix3d& QaGeMatrix3d::preMultBy(const QaGeMatrix3d& left) {
  *this = left * *this;
  return *this;
}
QaGeMatrix3d& QaGeMatrix3d::postMultBy(const QaGeMatrix3d& right) {
  *this = *this * right;
  return *this;
}

namespace {
double det3(const double m[4][4], int r0, int r1, int r2, int c0, int c1, int c2) {
  return m[r0][c0] * (m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1]) -
         m[r0][c1] * (m[r1][c0] * m[r2][c2] - m[r1][c2] * m[r2][c0]) +
         m[r0][c2] * (m[r1][c0] * m[r2][c1] - m[r1][c1] * m[r2][c0]);
}
}  // namespace

double QaGeMatrix3d::det() const {
  double d = 0.0;
  int cols[4] = {0, 1, 2, 3};
  for (int c = 0; c < 4; ++c) {
    int rest[3], k = 0;
    for (int j = 0; j < 4; ++j)
      if (j != c) rest[k++] = cols[j];
    double minor = det3(entry, 1, 2, 3, rest[0], rest[1], rest[2]);
    d += ((c % 2) ? -1.0 : 1.0) * entry[0][c] * minor;
  }
  return d;
}

bool QaGeMatrix3d::isSingular(const QaGeTol& tol) const { return std::abs(det()) <= tol.equalVector(); }

QaGeMatrix3d QaGeMatrix3d::inverse() const {
  // Gauss-Jordan elimination with partial pivoting.
  double a[4][8];
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 8; ++c) a[r][c] = c < 4 ? entry[r][c] : (c - 4 == r ? 1.0 : 0.0);
  for (int col = 0; col < 4; ++col) {
    int pivot = col;
    for (int r = col + 1; r < 4; ++r)
      if (std::abs(a[r][col]) > std::abs(a[pivot][col])) pivot = r;
    if (std::abs(a[pivot][col]) < 1e-300) return QaGeMatrix3d();
    if (pivot != col)
      for (int c = 0; c < 8; ++c) std::swap(a[pivot][c], a[col][c]);
    double p = a[col][col];
    for (int c = 0; c < 8; ++c) a[col][c] /= p;
    for (int r = 0; r < 4; ++r) {
      if (r == col) continue;
      double f = a[r][col];
      if (f == 0.0) continue;
      for (int c = 0; c < 8; ++c) a[r][c] -= f * a[col][c];
    }
  }
  QaGeMatrix3d inv;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) inv.entry[r][c] = a[r][c + 4];
  return inv;
}

QaGeMatrix3d& QaGeMatrix3d::invert() {
  *this = inverse();
  return *this;
}

QaGeMatrix3d QaGeMatrix3d::transpose() const {
  QaGeMatrix3d t;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) t.entry[r][c] = entry[c][r];
  return t;
}

double QaGeMatrix3d::scale() const {
  double s = 0.0;
  for (int c = 0; c < 3; ++c) {
    QaGeVector3d col(entry[0][c], entry[1][c], entry[2][c]);
    s = std::max(s, col.length());
  }
  return s;
}

bool QaGeMatrix3d::isUniScaledOrtho(const QaGeTol& tol) const {
  QaGeVector3d cols[3];
  for (int c = 0; c < 3; ++c) cols[c] = {entry[0][c], entry[1][c], entry[2][c]};
  double len = cols[0].length();
  if (len <= tol.equalVector()) return false;
  double rel = 1e-9 * std::max(1.0, len);
  for (int c = 1; c < 3; ++c)
    if (std::abs(cols[c].length() - len) > rel) return false;
  for (int i = 0; i < 3; ++i)
    for (int j = i + 1; j < 3; ++j)
      if (std::abs(cols[i].dotProduct(cols[j])) > rel * len) return false;
  return true;
}

bool QaGeMatrix3d::isEqualTo(const QaGeMatrix3d& m, const QaGeTol& tol) const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::abs(entry[r][c] - m.entry[r][c]) > tol.equalVector()) return false;
  return true;
}

bool QaGeMatrix3d::operator==(const QaGeMatrix3d& m) const {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (entry[r][c] != m.entry[r][c]) return false;
  return true;
}

QaGePoint3d operator*(const QaGeMatrix3d& m, const QaGePoint3d& p) {
  const auto& e = m.entry;
  double x = e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3];
  double y = e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3];
  double z = e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3];
  double w = e[3][0] * p.x + e[3][1] * p.y + e[3][2] * p.z + e[3][3];
  if (w != 1.0 && w != 0.0) return {x / w, y / w, z / w};
  return {x, y, z};
}

QaGeVector3d operator*(const QaGeMatrix3d& m, const QaGeVector3d& v) {
  const auto& e = m.entry;
  return {e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z, e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
          e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z};
}
