// Extents of every entity kind against boxes worked out by hand.
#include <cmath>
#include <functional>
#include <numbers>

#include "db_test_util.h"

namespace {

using namespace qadbtest;
constexpr double kPi = std::numbers::pi;
const double kRoot2 = std::sqrt(2.0);
const double kRoot10 = std::sqrt(10.0);

struct ExtentsCase {
  const char* name;
  std::function<std::unique_ptr<QaDbEntity>()> make;
  QaGePoint3d lo;
  QaGePoint3d hi;
};

QaDbHatchLoop squareLoop(double w, double h) {
  QaDbHatchLoop loop;
  loop.flags = QaDbHatchLoop::kExternal | QaDbHatchLoop::kPolyline;
  loop.vertices = {{0, 0}, {w, 0}, {w, h}, {0, h}};
  return loop;
}

class EntityExtents : public EstimatedTextWidth {};

TEST_F(EntityExtents, MatchHandComputedBoxes) {
  const ExtentsCase cases[] = {
      {"line", [] { return std::make_unique<QaDbLine>(QaGePoint3d(1, 2, 0), QaGePoint3d(4, -1, 0)); }, {1, -1, 0}, {4, 2, 0}},
      {"circle", [] { return std::make_unique<QaDbCircle>(QaGePoint3d(5, 5, 0), QaGeVector3d::kZAxis, 2.0); }, {3, 3, 0}, {7, 7, 0}},
      {"circle in the yz plane",
       [] { return std::make_unique<QaDbCircle>(QaGePoint3d(0, 0, 0), QaGeVector3d::kXAxis, 1.0); }, {0, -1, -1}, {0, 1, 1}},
      {"quarter arc", [] { return std::make_unique<QaDbArc>(QaGePoint3d(0, 0, 0), 10.0, 0.0, kPi / 2); }, {0, 0, 0}, {10, 10, 0}},
      {"arc across angle zero",
       [] { return std::make_unique<QaDbArc>(QaGePoint3d(0, 0, 0), 1.0, 3 * kPi / 2, kPi / 2); }, {0, -1, 0}, {1, 1, 0}},
      {"arc over the top",
       [] { return std::make_unique<QaDbArc>(QaGePoint3d(0, 0, 0), 2.0, kPi / 4, 3 * kPi / 4); }, {-kRoot2, kRoot2, 0}, {kRoot2, 2, 0}},
      {"ellipse",
       [] { return std::make_unique<QaDbEllipse>(QaGePoint3d(0, 0, 0), QaGeVector3d::kZAxis, QaGeVector3d(4, 0, 0), 0.5); },
       {-4, -2, 0}, {4, 2, 0}},
      {"ellipse at 45 degrees",
       [] {
         return std::make_unique<QaDbEllipse>(QaGePoint3d(0, 0, 0), QaGeVector3d::kZAxis, QaGeVector3d(3, 3, 0), 1.0 / 3.0);
       },
       {-kRoot10, -kRoot10, 0}, {kRoot10, kRoot10, 0}},
      {"elliptic arc",
       [] {
         return std::make_unique<QaDbEllipse>(QaGePoint3d(1, 1, 0), QaGeVector3d::kZAxis, QaGeVector3d(4, 0, 0), 0.5, 0.0,
                                              kPi / 2);
       },
       {1, 1, 0}, {5, 3, 0}},
      {"point", [] { return std::make_unique<QaDbPoint>(QaGePoint3d(3, 4, 5)); }, {3, 4, 5}, {3, 4, 5}},
      {"solid",
       [] { return std::make_unique<QaDbSolid>(QaGePoint3d(0, 0, 0), QaGePoint3d(2, 0, 0), QaGePoint3d(0, 3, 0), QaGePoint3d(2, 3, 0)); },
       {0, 0, 0}, {2, 3, 0}},
      {"polyline with a half circle",
       [] {
         auto p = std::make_unique<QaDbPolyline>();
         p->addVertexAt(0, {0, 0}, 1.0);
         p->addVertexAt(1, {10, 0});
         p->addVertexAt(2, {10, 10});
         p->setElevation(2.0);
         return p;
       },
       {0, -5, 2}, {10, 10, 2}},
      {"closed polyline with a clockwise bulge",
       [] {
         auto p = std::make_unique<QaDbPolyline>();
         p->addVertexAt(0, {0, 0});
         p->addVertexAt(1, {0, 4}, -1.0);  // clockwise half circle from (0,4) to (4,4), bulging up
         p->addVertexAt(2, {4, 4});
         p->addVertexAt(3, {4, 0});
         p->setClosed(true);
         return p;
       },
       {0, 0, 0}, {4, 6, 0}},
      {"old-style closed polyline",
       [] {
         auto p = std::make_unique<QaDb2dPolyline>();
         for (QaGePoint3d v : {QaGePoint3d(0, 0, 0), QaGePoint3d(4, 0, 0), QaGePoint3d(4, 3, 0)}) {
           QaDb2dPolyline::Vertex vx;
           vx.position = v;
           p->appendVertex(vx);
         }
         p->setClosed(true);
         return p;
       },
       {0, 0, 0}, {4, 3, 0}},
      {"3-D polyline",
       [] {
         auto p = std::make_unique<QaDb2dPolyline>();
         p->setPolylineFlags(QaDb2dPolyline::k3dPolyline);
         QaDb2dPolyline::Vertex a, b;
         b.position = {1, 2, 3};
         p->appendVertex(a);
         p->appendVertex(b);
         return p;
       },
       {0, 0, 0}, {1, 2, 3}},
      {"spline of degree one",
       [] {
         auto s = std::make_unique<QaDbSpline>();
         s->setNurbsData(1, {{0, 0, 0}, {5, 5, 0}, {10, 0, 0}}, {0, 0, 1, 2, 2});
         return s;
       },
       {0, 0, 0}, {10, 5, 0}},
      {"quadratic spline peaks below its control point",
       [] {
         auto s = std::make_unique<QaDbSpline>();
         s->setNurbsData(2, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {0, 0, 0, 1, 1, 1});
         return s;
       },
       {0, 0, 0}, {2, 1, 0}},
      {"spline from fit points only",
       [] {
         auto s = std::make_unique<QaDbSpline>();
         s->setFitPoints({{0, 0, 0}, {3, -1, 0}, {6, 2, 0}});
         return s;
       },
       {0, -1, 0}, {6, 2, 0}},
      {"hatch with a polyline loop",
       [] {
         auto h = std::make_unique<QaDbHatch>();
         h->appendLoop(squareLoop(6, 4));
         return h;
       },
       {0, 0, 0}, {6, 4, 0}},
      {"hatch with line and arc edges",
       [] {
         auto h = std::make_unique<QaDbHatch>();
         QaDbHatchLoop loop;
         QaDbHatchEdge bottom, arc, top, left;
         bottom.start = {0, 0};
         bottom.end = {4, 0};
         arc.type = QaDbHatchEdge::kCircularArc;
         arc.center = {4, 2};
         arc.radius = 2;
         arc.startAngle = -kPi / 2;
         arc.endAngle = kPi / 2;
         top.start = {4, 4};
         top.end = {0, 4};
         left.start = {0, 4};
         left.end = {0, 0};
         loop.edges = {bottom, arc, top, left};
         h->appendLoop(loop);
         return h;
       },
       {0, 0, 0}, {6, 4, 0}},
      {"left text", [] { return std::make_unique<QaDbText>(QaGePoint3d(10, 20, 0), L"ABCD", QaDbObjectId(), 2.5); },
       {10, 20, 0}, {16, 22.5, 0}},
      {"centred text",
       [] {
         auto t = std::make_unique<QaDbText>(QaGePoint3d(99, 99, 0), L"AB", QaDbObjectId(), 10.0);
         t->setHorizontalMode(QaDb::kTextCenter);
         t->setAlignmentPoint({0, 0, 0});
         return t;
       },
       {-6, 0, 0}, {6, 10, 0}},
      {"middle-right text",
       [] {
         auto t = std::make_unique<QaDbText>(QaGePoint3d(), L"AB", QaDbObjectId(), 10.0);
         t->setHorizontalMode(QaDb::kTextRight);
         t->setVerticalMode(QaDb::kTextVertMid);
         t->setAlignmentPoint({20, 0, 0});
         return t;
       },
       {8, -5, 0}, {20, 5, 0}},
      {"fit text spans its two points",
       [] {
         auto t = std::make_unique<QaDbText>(QaGePoint3d(0, 0, 0), L"A", QaDbObjectId(), 2.0);
         t->setHorizontalMode(QaDb::kTextFit);
         t->setAlignmentPoint({30, 0, 0});
         return t;
       },
       {0, 0, 0}, {30, 2, 0}},
      {"text turned a quarter",
       [] { return std::make_unique<QaDbText>(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 10.0, kPi / 2); },
       {-10, 0, 0}, {0, 12, 0}},
      {"wide characters",
       [] { return std::make_unique<QaDbText>(QaGePoint3d(0, 0, 0), L"工艺卡", QaDbObjectId(), 5.0); }, {0, 0, 0}, {15, 5, 0}},
      {"two-line multi-line text",
       [] {
         auto m = std::make_unique<QaDbMText>();
         m->setContents(L"AB\\P{\\fSimSun|b0;ABCD}");
         m->setTextHeight(3.0);
         m->setLocation({0, 10, 0});
         return m;
       },
       {0, 2, 0}, {7.2, 10, 0}},
      {"centred multi-line text",
       [] {
         auto m = std::make_unique<QaDbMText>();
         m->setContents(L"测试");
         m->setTextHeight(2.0);
         m->setAttachment(QaDbMText::kMiddleCenter);
         return m;
       },
       {-2, -1, 0}, {2, 1, 0}},
      {"dimension without a block",
       [] {
         auto d = std::make_unique<QaDbDimension>();
         d->setDefinitionPoint(10, {0, 5, 0});
         d->setDefinitionPoint(11, {5, 6, 0});
         d->setDefinitionPoint(13, {0, 0, 0});
         d->setDefinitionPoint(14, {10, 0, 0});
         return d;
       },
       {0, 0, 0}, {10, 6, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::unique_ptr<QaDbEntity> e = c.make();
    QaDbExtents ext;
    ASSERT_EQ(e->getGeomExtents(ext), Qa::eOk);
    expectBox(ext, c.lo, c.hi, 1e-9);
  }
}

TEST_F(EntityExtents, KindsWithoutGeometryReportInvalidExtents) {
  QaDbExtents ext;
  EXPECT_EQ(QaDbUnknownEntity(L"WIPEOUT").getGeomExtents(ext), Qa::eInvalidExtents);
  EXPECT_TRUE(ext.isEmpty());
  EXPECT_EQ(QaDbPolyline().getGeomExtents(ext), Qa::eInvalidExtents);
  EXPECT_EQ(QaDbHatch().getGeomExtents(ext), Qa::eInvalidExtents);
}

TEST_F(EntityExtents, InstalledMeasurerDecidesTextWidth) {
  QaDbText text(QaGePoint3d(0, 0, 0), L"ABC", QaDbObjectId(), 2.0);
  text.setWidthFactor(0.5);
  QaDbExtents ext;
  {
    QaDbTextWidthScope square([](const std::wstring& text, QaDbObjectId, double height, double widthFactor) {
      return static_cast<double>(text.size()) * height * widthFactor;  // square characters
    });
    text.getGeomExtents(ext);
    expectBox(ext, {0, 0, 0}, {3, 2, 0});
  }
  text.getGeomExtents(ext);
  expectBox(ext, {0, 0, 0}, {1.8, 2, 0});
}

TEST(QaDbExtents, GrowsAndTransforms) {
  QaDbExtents e;
  EXPECT_TRUE(e.isEmpty());
  e.addPoint({1, 1, 0});
  expectBox(e, {1, 1, 0}, {1, 1, 0});
  e.addExt(QaDbExtents({-1, 3, 0}, {0, 2, 5}));
  expectBox(e, {-1, 1, 0}, {1, 3, 5});
  e.addExt(QaDbExtents());
  expectBox(e, {-1, 1, 0}, {1, 3, 5});
  EXPECT_TRUE(e.contains({0, 2, 1}));
  EXPECT_FALSE(e.contains({0, 4, 1}));
  QaDbExtents square({0, 0, 0}, {1, 1, 0});
  // A square turned 45 degrees has a box sqrt(2) wide.
  expectBox(square.transformed(QaGeMatrix3d::rotation(kPi / 4)), {-kRoot2 / 2, 0, 0}, {kRoot2 / 2, kRoot2, 0});
}

}  // namespace
