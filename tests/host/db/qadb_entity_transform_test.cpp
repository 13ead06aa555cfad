// Transforms of every entity kind: the box after the transform, and fields that the
// transform must carry (angles, bulges, mirror flags).
#include <cmath>
#include <functional>
#include <numbers>

#include "db_test_util.h"

namespace {

using namespace qadbtest;
constexpr double kPi = std::numbers::pi;

const QaGeMatrix3d kScale2ThenMove = QaGeMatrix3d::translation({100, 100, 0}) * QaGeMatrix3d::scaling(2.0);
const QaGeMatrix3d kStretchY = QaGeMatrix3d::scaling(QaGeScale3d(1, 3, 1));
const QaGeMatrix3d kMirrorY = QaGeMatrix3d::mirroring(QaGePoint3d::kOrigin, QaGeVector3d::kXAxis);  // x -> -x
const QaGeMatrix3d kQuarterTurn = QaGeMatrix3d::rotation(kPi / 2);

struct TransformCase {
  const char* name;
  std::function<std::unique_ptr<QaDbEntity>()> make;
  QaGeMatrix3d m;
  QaGePoint3d lo;  // box after the transform
  QaGePoint3d hi;
};

std::unique_ptr<QaDbPolyline> bulgedPolyline() {
  auto p = std::make_unique<QaDbPolyline>();
  p->addVertexAt(0, {0, 0}, 1.0);  // half circle below the x axis
  p->addVertexAt(1, {10, 0});
  return p;
}

class EntityTransform : public EstimatedTextWidth {};

TEST_F(EntityTransform, BoxesFollowTheTransform) {
  const TransformCase cases[] = {
      {"line scaled then moved", [] { return std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)); },
       kScale2ThenMove, {100, 100, 0}, {120, 100, 0}},
      {"circle scaled then moved",
       [] { return std::make_unique<QaDbCircle>(QaGePoint3d(1, 1, 0), QaGeVector3d::kZAxis, 1.0); }, kScale2ThenMove,
       {100, 100, 0}, {104, 104, 0}},
      {"arc turned a quarter", [] { return std::make_unique<QaDbArc>(QaGePoint3d(), 1.0, 0.0, kPi / 2); }, kQuarterTurn,
       {-1, 0, 0}, {0, 1, 0}},
      {"arc mirrored", [] { return std::make_unique<QaDbArc>(QaGePoint3d(), 1.0, 0.0, kPi / 2); }, kMirrorY, {-1, 0, 0},
       {0, 1, 0}},
      {"circle-like ellipse stretched",
       [] { return std::make_unique<QaDbEllipse>(QaGePoint3d(), QaGeVector3d::kZAxis, QaGeVector3d(2, 0, 0), 1.0); },
       kStretchY, {-2, -6, 0}, {2, 6, 0}},
      {"elliptic arc stretched",
       [] {
         return std::make_unique<QaDbEllipse>(QaGePoint3d(), QaGeVector3d::kZAxis, QaGeVector3d(2, 0, 0), 1.0, 0.0, kPi / 2);
       },
       kStretchY, {0, 0, 0}, {2, 6, 0}},
      {"elliptic arc mirrored",
       [] {
         return std::make_unique<QaDbEllipse>(QaGePoint3d(), QaGeVector3d::kZAxis, QaGeVector3d(4, 0, 0), 0.5, 0.0, kPi / 2);
       },
       kMirrorY, {-4, 0, 0}, {0, 2, 0}},
      {"point moved", [] { return std::make_unique<QaDbPoint>(QaGePoint3d(1, 2, 3)); }, kScale2ThenMove, {102, 104, 6},
       {102, 104, 6}},
      {"solid stretched",
       [] { return std::make_unique<QaDbSolid>(QaGePoint3d(0, 0, 0), QaGePoint3d(2, 0, 0), QaGePoint3d(0, 1, 0), QaGePoint3d(2, 1, 0)); },
       kStretchY, {0, 0, 0}, {2, 3, 0}},
      {"bulged polyline mirrored", [] { return bulgedPolyline(); }, kMirrorY, {-10, -5, 0}, {0, 0, 0}},
      {"bulged polyline turned", [] { return bulgedPolyline(); }, kQuarterTurn, {0, 0, 0}, {5, 10, 0}},
      {"straight polyline stretched",
       [] {
         auto p = std::make_unique<QaDbPolyline>();
         p->addVertexAt(0, {0, 0});
         p->addVertexAt(1, {4, 2});
         return p;
       },
       kStretchY, {0, 0, 0}, {4, 6, 0}},
      {"old-style polyline scaled then moved",
       [] {
         auto p = std::make_unique<QaDb2dPolyline>();
         QaDb2dPolyline::Vertex a, b;
         a.bulge = 1.0;
         b.position = {10, 0, 0};
         p->appendVertex(a);
         p->appendVertex(b);
         return p;
       },
       kScale2ThenMove, {100, 90, 0}, {120, 100, 0}},
      {"spline stretched",
       [] {
         auto s = std::make_unique<QaDbSpline>();
         s->setNurbsData(2, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {0, 0, 0, 1, 1, 1});
         return s;
       },
       kStretchY, {0, 0, 0}, {2, 3, 0}},
      {"hatch scaled then moved",
       [] {
         auto h = std::make_unique<QaDbHatch>();
         QaDbHatchLoop loop;
         loop.flags = QaDbHatchLoop::kPolyline;
         loop.vertices = {{0, 0}, {3, 0}, {3, 2}};
         h->appendLoop(loop);
         return h;
       },
       kScale2ThenMove, {100, 100, 0}, {106, 104, 0}},
      {"hatch arc edge turned",
       [] {
         auto h = std::make_unique<QaDbHatch>();
         QaDbHatchLoop loop;
         QaDbHatchEdge arc;
         arc.type = QaDbHatchEdge::kCircularArc;
         arc.radius = 1;
         arc.startAngle = 0;
         arc.endAngle = kPi / 2;
         loop.edges = {arc};
         h->appendLoop(loop);
         return h;
       },
       kQuarterTurn, {-1, 0, 0}, {0, 1, 0}},
      {"text scaled then moved", [] { return std::make_unique<QaDbText>(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 5.0); },
       kScale2ThenMove, {100, 100, 0}, {112, 110, 0}},
      {"text mirrored runs backwards",
       [] { return std::make_unique<QaDbText>(QaGePoint3d(1, 0, 0), L"AB", QaDbObjectId(), 5.0); }, kMirrorY, {-7, 0, 0},
       {-1, 5, 0}},
      {"text stretched sideways",
       [] { return std::make_unique<QaDbText>(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 5.0); },
       QaGeMatrix3d::scaling(QaGeScale3d(2, 1, 1)), {0, 0, 0}, {12, 5, 0}},
      {"multi-line text turned",
       [] {
         auto m = std::make_unique<QaDbMText>();
         m->setContents(L"AB");
         m->setTextHeight(5.0);
         m->setAttachment(QaDbMText::kBottomLeft);
         return m;
       },
       kQuarterTurn, {-5, 0, 0}, {0, 6, 0}},
      {"dimension moved",
       [] {
         auto d = std::make_unique<QaDbDimension>();
         d->setDefinitionPoint(13, {0, 0, 0});
         d->setDefinitionPoint(14, {10, 0, 0});
         d->setDefinitionPoint(10, {10, 3, 0});
         d->setDefinitionPoint(11, {5, 3, 0});
         return d;
       },
       QaGeMatrix3d::translation({1, 1, 0}), {1, 1, 0}, {11, 4, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::unique_ptr<QaDbEntity> e = c.make();
    ASSERT_EQ(e->transformBy(c.m), Qa::eOk);
    QaDbExtents ext;
    ASSERT_EQ(e->getGeomExtents(ext), Qa::eOk);
    expectBox(ext, c.lo, c.hi, 1e-9);
  }
}

TEST_F(EntityTransform, CirclesAndArcsRefuseNonUniformScaleButMeasureTheEllipse) {
  QaDbCircle circle(QaGePoint3d(), QaGeVector3d::kZAxis, 1.0);
  const QaGeMatrix3d stretch = QaGeMatrix3d::scaling(QaGeScale3d(2, 1, 1));
  EXPECT_EQ(circle.transformBy(stretch), Qa::eCannotScaleNonUniformly);
  EXPECT_DOUBLE_EQ(circle.radius(), 1.0);
  QaDbExtents ext;
  ASSERT_EQ(circle.getTransformedExtents(stretch, ext), Qa::eOk);
  expectBox(ext, {-2, -1, 0}, {2, 1, 0});
  QaDbArc arc(QaGePoint3d(), 1.0, 0.0, kPi / 2);
  EXPECT_EQ(arc.transformBy(stretch), Qa::eCannotScaleNonUniformly);
  ASSERT_EQ(arc.getTransformedExtents(stretch, ext), Qa::eOk);
  expectBox(ext, {0, 0, 0}, {2, 1, 0});
  auto bulged = bulgedPolyline();
  EXPECT_EQ(bulged->transformBy(stretch), Qa::eCannotScaleNonUniformly);
  // The general fallback: the box of the transformed box.
  ASSERT_EQ(bulged->getTransformedExtents(stretch, ext), Qa::eOk);
  expectBox(ext, {0, -5, 0}, {20, 0, 0});
}

TEST_F(EntityTransform, MirroredArcSwapsItsEndsAndKeepsTheNormal) {
  QaDbArc arc(QaGePoint3d(), 1.0, 0.0, kPi / 2);
  ASSERT_EQ(arc.transformBy(kMirrorY), Qa::eOk);
  EXPECT_TRUE(arc.normal().isEqualTo(QaGeVector3d::kZAxis));
  EXPECT_NEAR(arc.startAngle(), kPi / 2, 1e-12);
  EXPECT_NEAR(arc.endAngle(), kPi, 1e-12);
}

TEST_F(EntityTransform, MirroredPolylineNegatesBulges) {
  auto p = bulgedPolyline();
  ASSERT_EQ(p->transformBy(kMirrorY), Qa::eOk);
  double bulge = 0;
  p->getBulgeAt(0, bulge);
  EXPECT_DOUBLE_EQ(bulge, -1.0);
  EXPECT_TRUE(p->normal().isEqualTo(QaGeVector3d::kZAxis));
  QaGePoint2d end;
  p->getPointAt(1, end);
  EXPECT_TRUE(end.isEqualTo({-10, 0}));
}

TEST_F(EntityTransform, StretchedEllipseFindsItsNewAxes) {
  QaDbEllipse e(QaGePoint3d(), QaGeVector3d::kZAxis, QaGeVector3d(2, 0, 0), 1.0, 0.0, kPi / 2);
  ASSERT_EQ(e.transformBy(kStretchY), Qa::eOk);
  EXPECT_NEAR(e.majorAxis().length(), 6.0, 1e-12);
  EXPECT_NEAR(std::abs(e.majorAxis().y), 6.0, 1e-12);
  EXPECT_NEAR(e.radiusRatio(), 1.0 / 3.0, 1e-12);
  expectPoint(e.pointAtParam(e.startParam()), 2, 0);
  expectPoint(e.pointAtParam(e.endParam()), 0, 6);
}

TEST_F(EntityTransform, TextCarriesHeightWidthFactorRotationAndMirror) {
  QaDbText t(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 5.0);
  ASSERT_EQ(t.transformBy(QaGeMatrix3d::scaling(2.0)), Qa::eOk);
  EXPECT_DOUBLE_EQ(t.height(), 10.0);
  EXPECT_DOUBLE_EQ(t.widthFactor(), 1.0);
  ASSERT_EQ(t.transformBy(QaGeMatrix3d::scaling(QaGeScale3d(2, 1, 1))), Qa::eOk);
  EXPECT_DOUBLE_EQ(t.height(), 10.0);
  EXPECT_DOUBLE_EQ(t.widthFactor(), 2.0);
  ASSERT_EQ(t.transformBy(kQuarterTurn), Qa::eOk);
  EXPECT_NEAR(t.rotation(), kPi / 2, 1e-12);
  EXPECT_FALSE(t.isMirroredInX());
  ASSERT_EQ(t.transformBy(QaGeMatrix3d::mirroring(QaGePoint3d::kOrigin, QaGeVector3d::kYAxis)), Qa::eOk);
  EXPECT_TRUE(t.isMirroredInX());
  // Mirroring twice reads the normal way again.
  ASSERT_EQ(t.transformBy(QaGeMatrix3d::mirroring(QaGePoint3d::kOrigin, QaGeVector3d::kYAxis)), Qa::eOk);
  EXPECT_FALSE(t.isMirroredInX());
  EXPECT_NEAR(t.rotation(), kPi / 2, 1e-12);
}

TEST_F(EntityTransform, MultiLineTextRefusesNonUniformScale) {
  QaDbMText m;
  m.setContents(L"AB");
  EXPECT_EQ(m.transformBy(kStretchY), Qa::eCannotScaleNonUniformly);
  ASSERT_EQ(m.transformBy(QaGeMatrix3d::scaling(2.0)), Qa::eOk);
  EXPECT_DOUBLE_EQ(m.textHeight(), 5.0);
  ASSERT_EQ(m.transformBy(kQuarterTurn), Qa::eOk);
  EXPECT_TRUE(m.direction().isEqualTo(QaGeVector3d::kYAxis));
  EXPECT_NEAR(m.rotation(), kPi / 2, 1e-12);
}

TEST_F(EntityTransform, UnknownEntitiesDoNotMove) {
  QaDbUnknownEntity u(L"WIPEOUT");
  EXPECT_EQ(u.transformBy(kQuarterTurn), Qa::eNotApplicable);
  EXPECT_EQ(u.dxfType(), L"WIPEOUT");
}

TEST_F(EntityTransform, PolylineExplodesIntoLinesAndArcs) {
  auto p = bulgedPolyline();
  p->addVertexAt(2, {10, 10});
  p->setLayer(L"FRAME");
  std::vector<std::unique_ptr<QaDbEntity>> parts;
  ASSERT_EQ(p->explode(parts), Qa::eOk);
  ASSERT_EQ(parts.size(), 2u);
  auto* arc = QaDbArc::cast(parts[0].get());
  ASSERT_NE(arc, nullptr);
  expectPoint(arc->center(), 5, 0);
  EXPECT_DOUBLE_EQ(arc->radius(), 5.0);
  expectPoint(arc->startPoint(), 0, 0);
  expectPoint(arc->endPoint(), 10, 0);
  auto* line = QaDbLine::cast(parts[1].get());
  ASSERT_NE(line, nullptr);
  expectPoint(line->endPoint(), 10, 10);
  EXPECT_EQ(line->layer(), L"FRAME");
}

}  // namespace
