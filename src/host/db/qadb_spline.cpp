#include "host/db/qadb_spline.h"

#include <algorithm>

QARX_DEFINE_MEMBERS(QaDbSpline, QaDbEntity, L"SPLINE")

Qa::ErrorStatus QaDbSpline::setDegree(int degree) {
  if (degree < 1 || degree > 25) return Qa::eInvalidInput;
  assertWriteEnabled();
  degree_ = degree;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setFlags(int flags) {
  assertWriteEnabled();
  flags_ = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setNurbsData(int degree, std::vector<QaGePoint3d> controlPoints, std::vector<double> knots,
                                         std::vector<double> weights) {
  if (degree < 1 || degree > 25) return Qa::eInvalidInput;
  if (controlPoints.size() < static_cast<std::size_t>(degree) + 1) return Qa::eInvalidInput;
  if (knots.size() != controlPoints.size() + static_cast<std::size_t>(degree) + 1) return Qa::eInvalidInput;
  if (!weights.empty() && weights.size() != controlPoints.size()) return Qa::eInvalidInput;
  if (!std::is_sorted(knots.begin(), knots.end())) return Qa::eInvalidInput;
  assertWriteEnabled();
  degree_ = degree;
  controlPoints_ = std::move(controlPoints);
  knots_ = std::move(knots);
  weights_ = std::move(weights);
  bool rational = std::any_of(weights_.begin(), weights_.end(), [](double w) { return w != 1.0; });
  flags_ = rational ? (flags_ | kRational) : (flags_ & ~kRational);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setFitPoints(std::vector<QaGePoint3d> fitPoints) {
  assertWriteEnabled();
  fitPoints_ = std::move(fitPoints);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setFitTangents(const QaGeVector3d& start, const QaGeVector3d& end) {
  assertWriteEnabled();
  startTangent_ = start;
  endTangent_ = end;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setTolerances(double knotTol, double controlTol, double fitTol) {
  assertWriteEnabled();
  knotTol_ = knotTol;
  controlTol_ = controlTol;
  fitTol_ = fitTol;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

bool QaDbSpline::hasValidNurbsData() const {
  std::size_t n = controlPoints_.size();
  return degree_ >= 1 && n >= static_cast<std::size_t>(degree_) + 1 &&
         knots_.size() == n + static_cast<std::size_t>(degree_) + 1 && (weights_.empty() || weights_.size() == n) &&
         std::is_sorted(knots_.begin(), knots_.end()) && knots_[degree_] < knots_[n];
}

QaGePoint3d QaDbSpline::evaluate(double u) const {
  if (!hasValidNurbsData()) return QaGePoint3d::kOrigin;
  const int p = degree_;
  const std::size_t n = controlPoints_.size();
  double lo = knots_[p], hi = knots_[n];
  u = std::clamp(u, lo, hi);
  // The span k with knots[k] <= u < knots[k+1], within [p, n-1].
  std::size_t k = static_cast<std::size_t>(p);
  while (k + 1 < n && knots_[k + 1] <= u) ++k;
  // de Boor on homogeneous coordinates.
  std::vector<double> wx(p + 1), wy(p + 1), wz(p + 1), ww(p + 1);
  for (int j = 0; j <= p; ++j) {
    const QaGePoint3d& c = controlPoints_[k - p + j];
    double w = weights_.empty() ? 1.0 : weights_[k - p + j];
    wx[j] = c.x * w;
    wy[j] = c.y * w;
    wz[j] = c.z * w;
    ww[j] = w;
  }
  for (int r = 1; r <= p; ++r)
    for (int j = p; j >= r; --j) {
      std::size_t i = k - p + j;
      double denom = knots_[i + p - r + 1] - knots_[i];
      double a = denom == 0.0 ? 0.0 : (u - knots_[i]) / denom;
      wx[j] = (1 - a) * wx[j - 1] + a * wx[j];
      wy[j] = (1 - a) * wy[j - 1] + a * wy[j];
      wz[j] = (1 - a) * wz[j - 1] + a * wz[j];
      ww[j] = (1 - a) * ww[j - 1] + a * ww[j];
    }
  double w = ww[p] == 0.0 ? 1.0 : ww[p];
  return {wx[p] / w, wy[p] / w, wz[p] / w};
}

Qa::ErrorStatus QaDbSpline::transformBy(const QaGeMatrix3d& m) {
  assertWriteEnabled();
  for (QaGePoint3d& c : controlPoints_) c = m * c;
  for (QaGePoint3d& f : fitPoints_) f = m * f;
  startTangent_ = m * startTangent_;
  endTangent_ = m * endTangent_;
  QaGeVector3d n = (m * normal_).normal();
  if (!n.isZeroLength()) normal_ = n;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSpline::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  if (hasValidNurbsData()) {
    const std::size_t n = controlPoints_.size();
    constexpr int kSamplesPerSpan = 64;
    for (std::size_t k = static_cast<std::size_t>(degree_); k < n; ++k) {
      double a = knots_[k], b = knots_[k + 1];
      if (b <= a) continue;
      for (int s = 0; s <= kSamplesPerSpan; ++s) ext.addPoint(evaluate(a + (b - a) * s / kSamplesPerSpan));
    }
    return Qa::eOk;
  }
  const auto& pts = controlPoints_.empty() ? fitPoints_ : controlPoints_;
  for (const QaGePoint3d& p : pts) ext.addPoint(p);
  return ext.isEmpty() ? Qa::eInvalidExtents : Qa::eOk;
}
