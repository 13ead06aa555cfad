#include "drawing/render/curve_sampling.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using namespace tabulon::render;

// Every sampled point of an arc lies on its circle, and the arc bends to the side its
// bulge says.
TEST(CurveSampling, BulgeSegmentsLieOnTheirCircleOnTheRightSide) {
  struct Case {
    double bulge;
    QaGePoint2d centre;
    double radius;
    double side;  // sign of y of the middle sample
  } cases[] = {
      {1.0, {1, 0}, 1.0, -1.0},   // half circle, counter-clockwise: below the chord
      {-1.0, {1, 0}, 1.0, 1.0},   // clockwise: above
      {std::tan(3 * std::numbers::pi / 8), {1, -1}, std::sqrt(2.0), -1.0},  // three quarters, centre below
      {std::tan(std::numbers::pi / 8), {1, 1}, std::sqrt(2.0), -1.0},     // one quarter, centre above
  };
  for (const auto& c : cases) {
    std::vector<QaGePoint2d> out;
    AppendBulgeSegment(out, {0, 0}, {2, 0}, c.bulge);
    ASSERT_GE(out.size(), 2u) << c.bulge;
    EXPECT_TRUE(out.back().isEqualTo({2, 0})) << c.bulge;
    for (const auto& p : out) EXPECT_NEAR(p.distanceTo(c.centre), c.radius, 1e-9) << c.bulge;
    EXPECT_GT(out[out.size() / 2].y * c.side, 0.0) << c.bulge;
  }
}

TEST(CurveSampling, StraightSegmentAddsOnlyItsEnd) {
  std::vector<QaGePoint2d> out;
  AppendBulgeSegment(out, {0, 0}, {5, 5}, 0.0);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_TRUE(out[0].isEqualTo({5, 5}));
}

TEST(CurveSampling, ClosedPolylineBendsBackWithoutRepeatingTheStart) {
  // A slot: two straight sides and two half circles.
  const std::vector<QaGePoint2d> pts = {{0, 0}, {10, 0}, {10, 4}, {0, 4}};
  const std::vector<double> bulges = {0.0, 1.0, 0.0, 1.0};
  const auto out = SampleBulgePolyline(pts, bulges, true);
  EXPECT_TRUE(out.front().isEqualTo({0, 0}));
  EXPECT_FALSE(out.back().isEqualTo({0, 0}));
  double maxX = 0, minX = 0;
  for (const auto& p : out) {
    maxX = std::max(maxX, p.x);
    minX = std::min(minX, p.x);
  }
  EXPECT_NEAR(maxX, 12.0, 1e-9);  // the right half circle reaches x = 10 + 2
  EXPECT_NEAR(minX, -2.0, 1e-9);
  const auto open = SampleBulgePolyline(pts, bulges, false);
  EXPECT_TRUE(open.back().isEqualTo({0, 4}));
}

TEST(CurveSampling, EllipticArcRunsFromStartThroughSweep) {
  const auto pts = SampleEllipticArc({10, 0, 0}, {4, 0, 0}, {0, 2, 0}, 0.0, std::numbers::pi);
  ASSERT_EQ(pts.size(), static_cast<std::size_t>(ArcSegmentCount(std::numbers::pi)) + 1);
  EXPECT_TRUE(pts.front().isEqualTo({14, 0, 0}));
  EXPECT_TRUE(pts.back().isEqualTo({6, 0, 0}));
  EXPECT_TRUE(pts[pts.size() / 2].isEqualTo({10, 2, 0}));
  EXPECT_EQ(ArcSegmentCount(1e-6), 2);
  EXPECT_EQ(ArcSegmentCount(-2 * std::numbers::pi), 72);
}

}  // namespace
