#include "drawing/render/curve_sampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/db/qadb_spline.h"

namespace tabulon::render {

int ArcSegmentCount(double sweep) {
  constexpr double kStep = 5.0 * std::numbers::pi / 180.0;
  const int n = static_cast<int>(std::ceil(std::abs(sweep) / kStep));
  return std::clamp(n, 2, 720);
}

std::vector<QaGePoint3d> SampleEllipticArc(const QaGePoint3d& center, const QaGeVector3d& u, const QaGeVector3d& v,
                                           double start, double sweep) {
  const int n = ArcSegmentCount(sweep);
  std::vector<QaGePoint3d> out;
  out.reserve(static_cast<std::size_t>(n) + 1);
  for (int i = 0; i <= n; ++i) {
    const double t = start + sweep * i / n;
    out.push_back(center + u * std::cos(t) + v * std::sin(t));
  }
  return out;
}

void AppendBulgeSegment(std::vector<QaGePoint2d>& out, const QaGePoint2d& from, const QaGePoint2d& to,
                        double bulge) {
  const double chord = from.distanceTo(to);
  if (std::abs(bulge) < 1e-12 || chord < 1e-12) {
    out.push_back(to);
    return;
  }
  // The swept angle is 4 atan(bulge); the centre lies on the chord's perpendicular
  // bisector, at the distance that gives that angle.
  const double sweep = 4.0 * std::atan(bulge);
  const double radius = chord / (2.0 * std::sin(std::abs(sweep) / 2.0));
  const QaGeVector2d along = (to - from) * (1.0 / chord);
  const QaGeVector2d left(-along.y, along.x);
  const double toCentre = radius * std::cos(std::abs(sweep) / 2.0);
  const QaGePoint2d mid(0.5 * (from.x + to.x), 0.5 * (from.y + to.y));
  // Counter-clockwise arcs (positive bulge) have their centre on the left of the chord;
  // past half a turn the cosine turns negative and moves it to the right.
  const double side = bulge > 0 ? 1.0 : -1.0;
  const QaGePoint2d centre = mid + left * (side * toCentre);
  const double a0 = std::atan2(from.y - centre.y, from.x - centre.x);
  const int n = ArcSegmentCount(sweep);
  for (int i = 1; i < n; ++i) {
    const double t = a0 + sweep * i / n;
    out.emplace_back(centre.x + radius * std::cos(t), centre.y + radius * std::sin(t));
  }
  out.push_back(to);
}

std::vector<QaGePoint2d> SampleBulgePolyline(const std::vector<QaGePoint2d>& points,
                                             const std::vector<double>& bulges, bool closed) {
  std::vector<QaGePoint2d> out;
  if (points.empty()) return out;
  out.push_back(points.front());
  auto bulgeAt = [&](std::size_t i) { return i < bulges.size() ? bulges[i] : 0.0; };
  for (std::size_t i = 0; i + 1 < points.size(); ++i) AppendBulgeSegment(out, points[i], points[i + 1], bulgeAt(i));
  if (closed && points.size() > 2) {
    AppendBulgeSegment(out, points.back(), points.front(), bulgeAt(points.size() - 1));
    out.pop_back();  // the first vertex again
  }
  return out;
}

std::vector<QaGePoint3d> SampleSpline(const QaDbSpline& spline) {
  std::vector<QaGePoint3d> out;
  if (!spline.hasValidNurbsData()) return spline.fitPoints();
  const auto& knots = spline.knots();
  const int degree = spline.degree();
  const double first = knots[static_cast<std::size_t>(degree)];
  const double last = knots[knots.size() - 1 - static_cast<std::size_t>(degree)];
  const int spans = std::max<int>(1, static_cast<int>(spline.controlPoints().size()) - degree);
  const int samples = degree == 1 ? spans : spans * 16;
  out.reserve(static_cast<std::size_t>(samples) + 1);
  for (int i = 0; i <= samples; ++i) out.push_back(spline.evaluate(first + (last - first) * i / samples));
  return out;
}

}  // namespace tabulon::render
