// Every modelled field of every entity kind, set to values other than the
// defaults in code, survives a save and a load, in the oldest and the newest
// version written. A field a writer forgets or a reader misplaces shows here.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include <gtest/gtest.h>

#include <functional>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

void setCommon(QaDbEntity& e) {
  e.setLayer(L"图层A");
  e.setColorIndex(3);
  e.setLinetype(L"DASHED");
  e.setLineWeight(35);
  e.setLinetypeScale(2.5);
  e.setVisibility(false);
}

void expectCommon(const QaDbEntity& e) {
  EXPECT_EQ(e.layer(), L"图层A");
  EXPECT_EQ(e.colorIndex(), 3);
  EXPECT_EQ(e.linetype(), L"DASHED");
  EXPECT_EQ(e.lineWeight(), 35);
  EXPECT_EQ(e.linetypeScale(), 2.5);
  EXPECT_FALSE(e.visible());
}

const QaGeVector3d kTilted = QaGeVector3d(0.0, 0.6, 0.8);

bool same(const QaGePoint3d& a, const QaGePoint3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
bool near(double a, double b) { return std::abs(a - b) < 1e-12 * std::max(1.0, std::abs(a)); }
bool near(const QaGeVector3d& a, const QaGeVector3d& b) { return near(a.x, b.x) && near(a.y, b.y) && near(a.z, b.z); }

struct Kind {
  const char* name;
  std::function<std::unique_ptr<QaDbEntity>(QaDbDatabase&)> make;
  std::function<void(const QaDbEntity&, QaDbDatabase&)> check;
};

std::wstring longMText() {
  std::wstring text;
  for (int i = 0; i < 120; ++i) text += L"第" + std::to_wstring(i) + L"行\\P";
  return text;
}

QaDbObjectId styleNamed(QaDbDatabase& db, const wchar_t* name) {
  return QaDbTextStyleTable::cast(db.textStyleTableId().rawObject())->getAt(name);
}

std::vector<Kind> kinds() {
  std::vector<Kind> k;
  k.push_back({"LINE",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbLine>(QaGePoint3d(1.125, -2, 3), QaGePoint3d(1e-7, 123456.789, -0.5));
                 e->setThickness(4);
                 e->setNormal(kTilted);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbLine::cast(&x);
                 EXPECT_TRUE(same(e.startPoint(), QaGePoint3d(1.125, -2, 3)));
                 EXPECT_TRUE(same(e.endPoint(), QaGePoint3d(1e-7, 123456.789, -0.5)));
                 EXPECT_EQ(e.thickness(), 4);
                 EXPECT_TRUE(near(e.normal(), kTilted));
               }});
  k.push_back({"ARC",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbArc>();
                 e->setCenter(QaGePoint3d(5, 6, 0));
                 e->setRadius(2.75);
                 e->setStartAngle(0.3);
                 e->setEndAngle(4.0);
                 e->setThickness(1);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbArc::cast(&x);
                 EXPECT_TRUE(same(e.center(), QaGePoint3d(5, 6, 0)));
                 EXPECT_EQ(e.radius(), 2.75);
                 EXPECT_TRUE(near(e.startAngle(), 0.3));
                 EXPECT_TRUE(near(e.endAngle(), 4.0));
                 EXPECT_EQ(e.thickness(), 1);
               }});
  k.push_back({"ELLIPSE",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbEllipse>(QaGePoint3d(1, 2, 0), QaGeVector3d(0, 0, 1),
                                                        QaGeVector3d(3, 4, 0), 0.25, 0.5, 2.5);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbEllipse::cast(&x);
                 EXPECT_TRUE(same(e.center(), QaGePoint3d(1, 2, 0)));
                 EXPECT_TRUE(near(e.majorAxis(), QaGeVector3d(3, 4, 0)));
                 EXPECT_EQ(e.radiusRatio(), 0.25);
                 EXPECT_EQ(e.startParam(), 0.5);
                 EXPECT_EQ(e.endParam(), 2.5);
               }});
  k.push_back({"SOLID",
               [](QaDbDatabase&) {
                 return std::make_unique<QaDbSolid>(QaGePoint3d(0, 0, 0), QaGePoint3d(1, 0, 0), QaGePoint3d(0, 1, 0),
                                                    QaGePoint3d(1, 1, 0));
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 QaGePoint3d p;
                 QaDbSolid::cast(&x)->getPointAt(3, p);
                 EXPECT_TRUE(same(p, QaGePoint3d(1, 1, 0)));
               }});
  k.push_back({"LWPOLYLINE",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbPolyline>();
                 e->addVertexAt(0, QaGePoint2d(0, 0), 0.5, 0.1, 0.2);
                 e->addVertexAt(1, QaGePoint2d(10, 0));
                 e->addVertexAt(2, QaGePoint2d(10, 5), -1.0);
                 e->setClosed(true);
                 e->setPlinegen(true);
                 e->setElevation(7);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbPolyline::cast(&x);
                 ASSERT_EQ(e.numVerts(), 3u);
                 EXPECT_EQ(e.vertices()[0].bulge, 0.5);
                 EXPECT_EQ(e.vertices()[0].endWidth, 0.2);
                 EXPECT_EQ(e.vertices()[2].bulge, -1.0);
                 EXPECT_TRUE(e.isClosed());
                 EXPECT_TRUE(e.hasPlinegen());
                 EXPECT_EQ(e.elevation(), 7);
               }});
  k.push_back({"POLYLINE",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDb2dPolyline>();
                 e->setPolylineFlags(QaDb2dPolyline::k3dPolyline | QaDb2dPolyline::kClosed);
                 for (int i = 0; i < 4; ++i) {
                   QaDb2dPolyline::Vertex v;
                   v.position = QaGePoint3d(i, i * i, -i);
                   v.flags = 32;
                   e->appendVertex(v);
                 }
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDb2dPolyline::cast(&x);
                 ASSERT_EQ(e.numVerts(), 4u);
                 EXPECT_TRUE(e.is3d());
                 EXPECT_TRUE(e.isClosed());
                 EXPECT_TRUE(same(e.vertexAt(3).position, QaGePoint3d(3, 9, -3)));
                 EXPECT_EQ(e.vertexAt(2).flags, 32);
               }});
  k.push_back({"SPLINE",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbSpline>();
                 e->setNurbsData(2, {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}}, {0, 0, 0, 0.5, 1, 1, 1},
                                 {1, 0.5, 0.5, 1});
                 e->setFlags(QaDbSpline::kRational | QaDbSpline::kPlanar);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbSpline::cast(&x);
                 EXPECT_EQ(e.degree(), 2);
                 EXPECT_EQ(e.knots(), (std::vector<double>{0, 0, 0, 0.5, 1, 1, 1}));
                 EXPECT_EQ(e.weights(), (std::vector<double>{1, 0.5, 0.5, 1}));
                 ASSERT_EQ(e.controlPoints().size(), 4u);
                 EXPECT_TRUE(same(e.controlPoints()[1], QaGePoint3d(1, 2, 0)));
                 EXPECT_TRUE(e.isRational());
               }});
  k.push_back({"TEXT",
               [](QaDbDatabase& db) {
                 auto e = std::make_unique<QaDbText>(QaGePoint3d(1, 2, 0), L"工艺 ^ \\ {x}", styleNamed(db, L"HZ"), 3.5, 0.5);
                 e->setHorizontalMode(QaDb::kTextCenter);
                 e->setVerticalMode(QaDb::kTextTop);
                 e->setAlignmentPoint(QaGePoint3d(4, 5, 0));
                 e->setWidthFactor(0.8);
                 e->setOblique(0.25);
                 e->mirrorInX(true);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase& db) {
                 auto& e = *QaDbText::cast(&x);
                 EXPECT_EQ(e.textString(), L"工艺 ^ \\ {x}");
                 EXPECT_EQ(e.textStyle(), styleNamed(db, L"HZ"));
                 EXPECT_EQ(e.height(), 3.5);
                 EXPECT_TRUE(near(e.rotation(), 0.5));
                 EXPECT_EQ(e.horizontalMode(), QaDb::kTextCenter);
                 EXPECT_EQ(e.verticalMode(), QaDb::kTextTop);
                 EXPECT_TRUE(same(e.alignmentPoint(), QaGePoint3d(4, 5, 0)));
                 EXPECT_EQ(e.widthFactor(), 0.8);
                 EXPECT_TRUE(near(e.oblique(), 0.25));
                 EXPECT_TRUE(e.isMirroredInX());
               }});
  k.push_back({"ATTDEF",
               [](QaDbDatabase& db) {
                 auto e = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(1, 1, 0), L"默认", L"CELL_1", L"请输入",
                                                                    styleNamed(db, L"HZ"));
                 e->setAttributeFlags(QaDbAttributeData::kInvisible | QaDbAttributeData::kPreset);
                 e->setVerticalMode(QaDb::kTextVertMid);
                 e->setHorizontalMode(QaDb::kTextRight);
                 e->setAlignmentPoint(QaGePoint3d(9, 1, 0));
                 e->setFieldLength(12);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbAttributeDefinition::cast(&x);
                 EXPECT_EQ(e.tag(), L"CELL_1");
                 EXPECT_EQ(e.prompt(), L"请输入");
                 EXPECT_EQ(e.textString(), L"默认");
                 EXPECT_TRUE(e.isInvisible());
                 EXPECT_TRUE(e.isPreset());
                 EXPECT_EQ(e.verticalMode(), QaDb::kTextVertMid);
                 EXPECT_EQ(e.horizontalMode(), QaDb::kTextRight);
                 EXPECT_EQ(e.fieldLength(), 12);
               }});
  k.push_back({"MTEXT",
               [](QaDbDatabase& db) {
                 auto e = std::make_unique<QaDbMText>();
                 e->setContents(longMText());  // more than one 250-byte chunk
                 e->setLocation(QaGePoint3d(3, 4, 0));
                 e->setTextHeight(2);
                 e->setWidth(50);
                 e->setAttachment(QaDbMText::kMiddleCenter);
                 e->setDirection(QaGeVector3d(0, 1, 0));
                 e->setLineSpacingFactor(1.5);
                 e->setLineSpacingStyle(QaDbMText::kExactly);
                 e->setTextStyle(styleNamed(db, L"HZ"));
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase& db) {
                 auto& e = *QaDbMText::cast(&x);
                 EXPECT_EQ(e.contents(), longMText());
                 EXPECT_EQ(e.textHeight(), 2);
                 EXPECT_EQ(e.width(), 50);
                 EXPECT_EQ(e.attachment(), QaDbMText::kMiddleCenter);
                 EXPECT_TRUE(near(e.direction(), QaGeVector3d(0, 1, 0)));
                 EXPECT_EQ(e.lineSpacingFactor(), 1.5);
                 EXPECT_EQ(e.lineSpacingStyle(), QaDbMText::kExactly);
                 EXPECT_EQ(e.textStyle(), styleNamed(db, L"HZ"));
               }});
  k.push_back({"HATCH",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbHatch>();
                 e->setPattern(QaDbHatch::kPreDefined, L"ANSI31");
                 e->setSolidFill(false);
                 e->setPatternAngle(0.5);
                 e->setPatternScale(2);
                 QaDbHatchLoop poly;
                 poly.flags = QaDbHatchLoop::kPolyline | QaDbHatchLoop::kExternal;
                 poly.vertices = {{0, 0}, {10, 0}, {10, 10}};
                 poly.bulges = {0, 0.5, 0};
                 e->appendLoop(poly);
                 QaDbHatchLoop edges;
                 edges.flags = QaDbHatchLoop::kOutermost;
                 QaDbHatchEdge line;
                 line.start = {0, 0};
                 line.end = {5, 0};
                 QaDbHatchEdge arc;
                 arc.type = QaDbHatchEdge::kCircularArc;
                 arc.center = {5, 2};
                 arc.radius = 2;
                 arc.startAngle = -1.5;
                 arc.endAngle = 1.5;
                 QaDbHatchEdge ell;
                 ell.type = QaDbHatchEdge::kEllipticArc;
                 ell.center = {1, 1};
                 ell.majorAxis = {3, 0};
                 ell.ratio = 0.5;
                 ell.endAngle = 3;
                 ell.counterClockwise = false;
                 QaDbHatchEdge spline;
                 spline.type = QaDbHatchEdge::kSpline;
                 spline.degree = 2;
                 spline.knots = {0, 0, 0, 1, 1, 1};
                 spline.controlPoints = {{0, 0}, {1, 2}, {2, 0}};
                 edges.edges = {line, arc, ell, spline};
                 e->appendLoop(edges);
                 e->setSeedPoints({{1, 1}});
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbHatch::cast(&x);
                 EXPECT_EQ(e.patternName(), L"ANSI31");
                 EXPECT_FALSE(e.isSolidFill());
                 EXPECT_TRUE(near(e.patternAngle(), 0.5));
                 EXPECT_EQ(e.patternScale(), 2);
                 ASSERT_EQ(e.numLoops(), 2);
                 EXPECT_EQ(e.loopAt(0).bulges, (std::vector<double>{0, 0.5, 0}));
                 ASSERT_EQ(e.loopAt(1).edges.size(), 4u);
                 EXPECT_TRUE(near(e.loopAt(1).edges[1].startAngle, -1.5));
                 EXPECT_EQ(e.loopAt(1).edges[2].ratio, 0.5);
                 EXPECT_FALSE(e.loopAt(1).edges[2].counterClockwise);
                 EXPECT_EQ(e.loopAt(1).edges[3].knots, (std::vector<double>{0, 0, 0, 1, 1, 1}));
                 ASSERT_EQ(e.seedPoints().size(), 1u);
               }});
  k.push_back({"DIMENSION",
               [](QaDbDatabase&) {
                 auto e = std::make_unique<QaDbDimension>();
                 e->setDimensionFlags(QaDbDimension::kRotated | 32);
                 e->setDefinitionPoint(10, QaGePoint3d(0, 5, 0));
                 e->setDefinitionPoint(11, QaGePoint3d(5, 6, 0));
                 e->setDefinitionPoint(13, QaGePoint3d(0, 0, 0));
                 e->setDefinitionPoint(14, QaGePoint3d(10, 0, 0));
                 e->setRotation(0.25);
                 e->setDimensionText(L"<> 毫米");
                 e->setMeasurement(10);
                 return e;
               },
               [](const QaDbEntity& x, QaDbDatabase&) {
                 auto& e = *QaDbDimension::cast(&x);
                 EXPECT_EQ(e.kind(), QaDbDimension::kRotated);
                 EXPECT_TRUE(same(e.xLine2Point(), QaGePoint3d(10, 0, 0)));
                 EXPECT_TRUE(same(e.textPosition(), QaGePoint3d(5, 6, 0)));
                 EXPECT_TRUE(near(e.rotation(), 0.25));
                 EXPECT_EQ(e.dimensionText(), L"<> 毫米");
                 EXPECT_EQ(e.measurement(), 10);
               }});
  return k;
}

}  // namespace

TEST(DxfEntityFields, EveryKindKeepsItsFieldsThroughSaveAndLoad) {
  for (DxfVersion version : {DxfVersion::R2000, DxfVersion::R2018}) {
    QaDbDatabase db;
    buildExamplePage(db);  // styles HZ, layers, blocks
    QaDbObjectId layer;
    db.ensureLayer(L"图层A", layer);
    {
      QaDbObjectPointer<QaDbLinetypeTable> lts(db.linetypeTableId(), QaDb::kForWrite);
      QaDbObjectId id;
      lts->add(std::make_unique<QaDbLinetypeTableRecord>(L"DASHED"), id);
      id.rawObject()->close();
    }
    std::vector<std::pair<const Kind*, QaDbHandle>> made;
    static const std::vector<Kind> all = kinds();
    for (const Kind& kind : all) {
      auto e = kind.make(db);
      setCommon(*e);
      made.push_back({&kind, addTo(db.modelSpaceId(), std::move(e)).handle()});
    }
    DxfLoadInfo info;
    auto back = loadText(saveText(db, DxfWriteOptions{version}), &info);
    EXPECT_TRUE(info.audit.empty()) << info.audit.lines().front();
    for (const auto& [kind, handle] : made) {
      SCOPED_TRACE(std::string(kind->name) + " in " + dxfVersionName(version));
      auto* e = QaDbEntity::cast(back->objectIdFromHandle(handle).rawObject());
      ASSERT_NE(e, nullptr);
      EXPECT_EQ(asciiOf(e->dxfType()), kind->name);
      expectCommon(*e);
      kind->check(*e, *back);
    }
  }
}
