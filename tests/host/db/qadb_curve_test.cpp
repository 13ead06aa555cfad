// Vertex editing of polylines, spline evaluation, dimension blocks and hatch edges.
#include <cmath>
#include <numbers>

#include "db_test_util.h"

namespace {

using namespace qadbtest;
constexpr double kPi = std::numbers::pi;

TEST(QaDbPolyline, VertexAccessChecksIndexes) {
  QaDbPolyline p;
  EXPECT_EQ(p.addVertexAt(1, {0, 0}), Qa::eInvalidIndex);
  ASSERT_EQ(p.addVertexAt(0, {0, 0}), Qa::eOk);
  ASSERT_EQ(p.addVertexAt(1, {2, 0}), Qa::eOk);
  ASSERT_EQ(p.addVertexAt(1, {1, 5}), Qa::eOk);  // inserted between
  QaGePoint2d pt;
  ASSERT_EQ(p.getPointAt(1, pt), Qa::eOk);
  EXPECT_TRUE(pt.isEqualTo({1, 5}));
  EXPECT_EQ(p.getPointAt(3, pt), Qa::eInvalidIndex);
  EXPECT_EQ(p.setWidthsAt(0, -1, 0), Qa::eInvalidInput);
  ASSERT_EQ(p.setConstantWidth(0.5), Qa::eOk);
  double s = 0, e = 0;
  p.getWidthsAt(2, s, e);
  EXPECT_DOUBLE_EQ(e, 0.5);
  ASSERT_EQ(p.removeVertexAt(1), Qa::eOk);
  EXPECT_EQ(p.numVerts(), 2u);
  p.setNormal({0, 0, -1});
  p.setElevation(3);
  QaGePoint3d w;
  p.getPointAt(1, w);
  // In the plane of -z the x axis points the other way and the elevation goes down.
  expectPoint(w, -2, 0, -3);
}

TEST(QaDbPolyline, TransformWithWidthsScalesThem) {
  QaDbPolyline p;
  p.addVertexAt(0, {0, 0}, 0.0, 1.0, 2.0);
  p.addVertexAt(1, {1, 0});
  ASSERT_EQ(p.transformBy(QaGeMatrix3d::scaling(3.0)), Qa::eOk);
  double s = 0, e = 0;
  p.getWidthsAt(0, s, e);
  EXPECT_DOUBLE_EQ(s, 3.0);
  EXPECT_DOUBLE_EQ(e, 6.0);
  // A transform that tilts the plane out of itself cannot be followed.
  EXPECT_EQ(p.transformBy(QaGeMatrix3d::rotation(kPi / 4, QaGeVector3d::kXAxis) *
                          QaGeMatrix3d::scaling(QaGeScale3d(1, 1, 2))),
            Qa::eOk);
}

TEST(QaDb2dPolyline, ExplodesTwoDimensionalKindsOnly) {
  QaDb2dPolyline p;
  QaDb2dPolyline::Vertex a, b, c;
  b.position = {4, 0, 0};
  b.bulge = 1.0;
  c.position = {4, 4, 0};
  p.appendVertex(a);
  p.appendVertex(b);
  p.appendVertex(c);
  std::vector<std::unique_ptr<QaDbEntity>> parts;
  ASSERT_EQ(p.explode(parts), Qa::eOk);
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_NE(QaDbLine::cast(parts[0].get()), nullptr);
  auto* arc = QaDbArc::cast(parts[1].get());
  ASSERT_NE(arc, nullptr);
  expectPoint(arc->center(), 4, 2);
  p.setPolylineFlags(QaDb2dPolyline::kPolyfaceMesh);
  parts.clear();
  EXPECT_EQ(p.explode(parts), Qa::eNotApplicable);
  EXPECT_EQ(p.setVertexAt(9, a), Qa::eInvalidIndex);
}

TEST(QaDbSpline, EvaluatesCurvesAndRejectsBadData) {
  QaDbSpline s;
  EXPECT_EQ(s.setNurbsData(2, {{0, 0, 0}, {1, 1, 0}}, {0, 0, 0, 1, 1}), Qa::eInvalidInput);
  EXPECT_EQ(s.setNurbsData(2, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {0, 0, 0, 1, 1}), Qa::eInvalidInput);
  EXPECT_EQ(s.setNurbsData(2, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}, {0, 0, 1, 0, 1, 1}), Qa::eInvalidInput);
  // A quarter circle as a rational quadratic.
  const double w = std::sqrt(0.5);
  ASSERT_EQ(s.setNurbsData(2, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {0, 0, 0, 1, 1, 1}, {1, w, 1}), Qa::eOk);
  EXPECT_TRUE(s.isRational());
  for (double u : {0.0, 0.25, 0.5, 0.9, 1.0}) {
    QaGePoint3d p = s.evaluate(u);
    EXPECT_NEAR(p.distanceTo(QaGePoint3d::kOrigin), 1.0, 1e-12) << u;
  }
  expectPoint(s.evaluate(-5), 1, 0);  // clamped to the knot range
  QaDbExtents ext;
  s.getGeomExtents(ext);
  expectBox(ext, {0, 0, 0}, {1, 1, 0}, 1e-9);
  ASSERT_EQ(s.transformBy(QaGeMatrix3d::translation({0, 0, 5})), Qa::eOk);
  expectPoint(s.evaluate(0), 1, 0, 5);
}

TEST(QaDbDimension, ExtentsComeFromItsBlockAndFollowTransforms) {
  QaDbDatabase db;
  QaDbObjectId block = addBlock(db, L"*D1");
  append(db, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)), block);
  append(db, std::make_unique<QaDbLine>(QaGePoint3d(0, -1, 0), QaGePoint3d(0, 7, 0)), block);
  QaDbDimension dim;
  dim.setDefinitionPoint(13, {0, 0, 0});
  dim.setDefinitionPoint(14, {10, 0, 0});
  EXPECT_EQ(dim.setDimBlockId(db.modelSpaceId()), Qa::eOk);
  EXPECT_EQ(dim.setDimBlockId(db.layerTableId()), Qa::eWrongObjectType);
  ASSERT_EQ(dim.setDimBlockId(block), Qa::eOk);
  QaDbExtents ext;
  ASSERT_EQ(dim.getGeomExtents(ext), Qa::eOk);
  expectBox(ext, {0, -1, 0}, {10, 7, 0});
  ASSERT_EQ(dim.transformBy(QaGeMatrix3d::translation({5, 5, 0}) * QaGeMatrix3d::scaling(2.0)), Qa::eOk);
  expectPoint(dim.xLine2Point(), 25, 5);
  dim.getGeomExtents(ext);
  expectBox(ext, {5, 3, 0}, {25, 19, 0});
  std::vector<std::unique_ptr<QaDbEntity>> parts;
  ASSERT_EQ(dim.explode(parts), Qa::eOk);
  ASSERT_EQ(parts.size(), 2u);
  expectPoint(QaDbLine::cast(parts[0].get())->endPoint(), 25, 5);
  QaGePoint3d p;
  EXPECT_EQ(dim.getDefinitionPoint(17, p), Qa::eInvalidIndex);
}

TEST(QaDbHatch, ClockwiseAndEllipticEdges) {
  QaDbHatch h;
  QaDbHatchLoop loop;
  QaDbHatchEdge ell;
  ell.type = QaDbHatchEdge::kEllipticArc;
  ell.center = {0, 0};
  ell.majorAxis = {4, 0};
  ell.ratio = 0.5;
  ell.startAngle = 0;
  ell.endAngle = kPi;
  loop.edges = {ell};
  h.appendLoop(loop);
  QaDbExtents ext;
  h.getGeomExtents(ext);
  expectBox(ext, {-4, 0, 0}, {4, 2, 0});
  // The same angles run clockwise: the lower half.
  loop.edges[0].counterClockwise = false;
  QaDbHatch cw;
  cw.appendLoop(loop);
  cw.getGeomExtents(ext);
  expectBox(ext, {-4, -2, 0}, {4, 0, 0});
  EXPECT_EQ(cw.transformBy(QaGeMatrix3d::scaling(QaGeScale3d(2, 1, 1))), Qa::eCannotScaleNonUniformly);
  ASSERT_EQ(cw.transformBy(QaGeMatrix3d::scaling(2.0)), Qa::eOk);
  cw.getGeomExtents(ext);
  expectBox(ext, {-8, -4, 0}, {8, 0, 0});
  EXPECT_DOUBLE_EQ(cw.patternScale(), 2.0);
  EXPECT_EQ(cw.removeLoopAt(3), Qa::eInvalidIndex);
  QaDbHatchLoop bad;
  bad.flags = QaDbHatchLoop::kPolyline;
  bad.vertices = {{0, 0}, {1, 0}};
  bad.bulges = {0.0};
  EXPECT_EQ(cw.appendLoop(bad), Qa::eInvalidInput);
}

TEST(QaDbDatabase, RegisterAppAndGroupDictionaryOnDemand) {
  QaDbDatabase db(false);
  EXPECT_EQ(db.registerApp(L"APP"), Qa::eNullObjectId);  // no APPID table yet
  QaDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, QaDb::kForRead), Qa::eOk);
  groups->close();
  EXPECT_FALSE(db.namedObjectsDictionaryId().isNull());
  QaDbDatabase full;
  EXPECT_EQ(full.registerApp(L"BAD*NAME"), Qa::eBadSymbolTableName);
  EXPECT_EQ(full.registerApp(L"KRM_TABULONPARA"), Qa::eOk);
  EXPECT_EQ(full.registerApp(L"krm_tabulonpara"), Qa::eOk);
  QaDbRegAppTable* apps = nullptr;
  full.getSymbolTable(apps, QaDb::kForRead);
  EXPECT_EQ(apps->numRecords(), 2);
  apps->close();
  EXPECT_STREQ(Qa::errorStatusText(Qa::eWasErased), "eWasErased");
}

}  // namespace
