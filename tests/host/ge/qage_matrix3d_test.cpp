#include "host/ge/qage_matrix3d.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

void expectPoint(const QaGePoint3d& p, double x, double y, double z) {
  EXPECT_NEAR(p.x, x, 1e-9);
  EXPECT_NEAR(p.y, y, 1e-9);
  EXPECT_NEAR(p.z, z, 1e-9);
}

struct TransformCase {
  const char* name;
  QaGeMatrix3d m;
  QaGePoint3d in;
  QaGePoint3d out;
};

TEST(QaGeMatrix3d, MapsPointsAsBuilt) {
  const TransformCase cases[] = {
      {"identity", QaGeMatrix3d(), {1, 2, 3}, {1, 2, 3}},
      {"translation", QaGeMatrix3d::translation({10, -5, 2}), {1, 2, 3}, {11, -3, 5}},
      {"scale about origin", QaGeMatrix3d::scaling(2.0), {1, 2, 3}, {2, 4, 6}},
      {"scale about a point", QaGeMatrix3d::scaling(2.0, {100, 100, 0}), {110, 100, 0}, {120, 100, 0}},
      {"non-uniform scale", QaGeMatrix3d::scaling(QaGeScale3d(2, 3, 1), {1, 1, 0}), {2, 2, 5}, {3, 4, 5}},
      {"rotation a quarter turn", QaGeMatrix3d::rotation(kPi / 2), {1, 0, 0}, {0, 1, 0}},
      {"rotation about a center", QaGeMatrix3d::rotation(kPi, QaGeVector3d::kZAxis, {5, 5, 0}), {6, 5, 0}, {4, 5, 0}},
      {"rotation about x", QaGeMatrix3d::rotation(kPi / 2, QaGeVector3d::kXAxis), {0, 1, 0}, {0, 0, 1}},
      {"mirror in the yz plane", QaGeMatrix3d::mirroring({3, 0, 0}, QaGeVector3d::kXAxis), {5, 1, 2}, {1, 1, 2}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    QaGePoint3d p = c.m * c.in;
    expectPoint(p, c.out.x, c.out.y, c.out.z);
    QaGePoint3d q = c.in;
    q.transformBy(c.m);
    EXPECT_TRUE(q.isEqualTo(p));
    // The inverse brings the point back.
    expectPoint(c.m.inverse() * p, c.in.x, c.in.y, c.in.z);
  }
}

TEST(QaGeMatrix3d, ProductAppliesRightOperandFirst) {
  QaGeMatrix3d scale = QaGeMatrix3d::scaling(2.0);
  QaGeMatrix3d move = QaGeMatrix3d::translation({100, 100, 0});
  // Scale, then move: (10,0) -> (20,0) -> (120,100).
  expectPoint((move * scale) * QaGePoint3d(10, 0, 0), 120, 100, 0);
  // Move, then scale: (10,0) -> (110,100) -> (220,200).
  expectPoint((scale * move) * QaGePoint3d(10, 0, 0), 220, 200, 0);
  QaGeMatrix3d m = scale;
  m.preMultBy(move);
  EXPECT_TRUE(m.isEqualTo(move * scale));
  m = scale;
  m.postMultBy(move);
  EXPECT_TRUE(m.isEqualTo(scale * move));
}

TEST(QaGeMatrix3d, VectorsIgnoreTranslation) {
  QaGeMatrix3d m = QaGeMatrix3d::translation({7, 8, 9}) * QaGeMatrix3d::scaling(3.0);
  QaGeVector3d v = m * QaGeVector3d(1, 0, 0);
  EXPECT_TRUE(v.isEqualTo({3, 0, 0}));
  EXPECT_TRUE(m.translation().isEqualTo({7, 8, 9}));
}

TEST(QaGeMatrix3d, DeterminantScaleAndOrthogonality) {
  EXPECT_NEAR(QaGeMatrix3d::scaling(QaGeScale3d(2, 3, 4)).det(), 24.0, 1e-12);
  EXPECT_NEAR(QaGeMatrix3d::mirroring(QaGePoint3d::kOrigin, QaGeVector3d::kYAxis).det(), -1.0, 1e-12);
  EXPECT_NEAR(QaGeMatrix3d::rotation(0.3).scale(), 1.0, 1e-12);
  EXPECT_TRUE((QaGeMatrix3d::rotation(0.3) * QaGeMatrix3d::scaling(5.0)).isUniScaledOrtho());
  EXPECT_FALSE(QaGeMatrix3d::scaling(QaGeScale3d(1, 2, 1)).isUniScaledOrtho());
  QaGeMatrix3d singular = QaGeMatrix3d::scaling(QaGeScale3d(1, 0, 1));
  EXPECT_TRUE(singular.isSingular());
  EXPECT_TRUE(singular.inverse().isEqualTo(QaGeMatrix3d::kIdentity));
}

TEST(QaGeMatrix3d, PlaneAxesFollowTheArbitraryAxisRule) {
  // For the z axis the plane system is the world system.
  EXPECT_TRUE(QaGeMatrix3d::planeToWorld(QaGeVector3d::kZAxis).isEqualTo(QaGeMatrix3d::kIdentity));
  // For -z the x axis turns round.
  QaGeMatrix3d down = QaGeMatrix3d::planeToWorld({0, 0, -1});
  EXPECT_TRUE((down * QaGeVector3d::kXAxis).isEqualTo({-1, 0, 0}));
  EXPECT_TRUE((down * QaGeVector3d::kYAxis).isEqualTo({0, 1, 0}));
  // Far from z the x axis is world z cross the normal.
  QaGeMatrix3d side = QaGeMatrix3d::planeToWorld(QaGeVector3d::kXAxis);
  EXPECT_TRUE((side * QaGeVector3d::kXAxis).isEqualTo({0, 1, 0}));
  EXPECT_TRUE((side * QaGeVector3d::kYAxis).isEqualTo({0, 0, 1}));
  QaGeMatrix3d back = QaGeMatrix3d::worldToPlane({1, 2, 3}) * QaGeMatrix3d::planeToWorld({1, 2, 3});
  EXPECT_TRUE(back.isEqualTo(QaGeMatrix3d::kIdentity, QaGeTol(1e-12, 1e-12)));
}

TEST(QaGeVector3d, AnglesLengthsAndEquality) {
  EXPECT_NEAR(QaGeVector3d::kXAxis.angleTo(QaGeVector3d::kYAxis), kPi / 2, 1e-12);
  EXPECT_NEAR(QaGeVector3d::kYAxis.angleTo(QaGeVector3d::kXAxis, QaGeVector3d::kZAxis), 3 * kPi / 2, 1e-12);
  EXPECT_NEAR(QaGePoint3d(1, 1, 0).distanceTo({4, 5, 0}), 5.0, 1e-12);
  EXPECT_TRUE(QaGePoint3d(1, 1, 0).isEqualTo({1, 1 + 1e-12, 0}));
  EXPECT_FALSE(QaGePoint3d(1, 1, 0).isEqualTo({1, 1.001, 0}));
  EXPECT_TRUE(QaGePoint3d(1, 1, 0).isEqualTo({1, 1.001, 0}, QaGeTol(0.01, 0.01)));
  EXPECT_TRUE(QaGeVector3d(0, 0, 5).isParallelTo({0, 0, -1}));
  EXPECT_NEAR(QaGeVector3d(3, 4, 0).perpVector().dotProduct({3, 4, 0}), 0.0, 1e-12);
  EXPECT_EQ(QaGePoint3d::kOrigin, QaGePoint3d(0, 0, 0));
  EXPECT_NEAR(QaGeVector2d(0, -1).angle(), 3 * kPi / 2, 1e-12);
}

TEST(QaGeScale3d, MatrixAndProportion) {
  QaGeScale3d s(2, 2, 2);
  EXPECT_TRUE(s.isProportional());
  EXPECT_FALSE(QaGeScale3d(2, 1, 2).isProportional());
  EXPECT_TRUE(s.getMatrix().isEqualTo(QaGeMatrix3d::scaling(2.0)));
}

}  // namespace
