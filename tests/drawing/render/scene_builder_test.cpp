#include "drawing/render/scene_builder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "drawing/render/scene_text.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_text.h"
#include "render_test_drawing.h"
#include "support/test_support.h"

namespace {

using namespace tabulon::render;
using tabulon::render::test::TestDrawing;

std::vector<RenderPath> pathsOf(const RenderScene& scene) {
  std::vector<RenderPath> out;
  for (const auto& item : scene.items)
    if (auto* p = std::get_if<RenderPath>(&item)) out.push_back(*p);
  return out;
}

std::vector<RenderText> textsOf(const RenderScene& scene) {
  std::vector<RenderText> out;
  for (const auto& item : scene.items)
    if (auto* t = std::get_if<RenderText>(&item)) out.push_back(*t);
  return out;
}

std::unique_ptr<QaDbLine> line(QaGePoint3d a, QaGePoint3d b, int color = QaDb::kColorByLayer,
                               const std::wstring& layer = L"0") {
  auto l = std::make_unique<QaDbLine>(a, b);
  l->setColorIndex(color);
  l->setLayer(layer);
  return l;
}

TEST(SceneBuilder, ExpandsNestedBlocksWithTheirTransforms) {
  TestDrawing d;
  const auto inner = d.block(L"INNER");
  d.add(line({0, 0, 0}, {1, 0, 0}), inner);
  const auto outer = d.block(L"OUTER");
  auto nested = std::make_unique<QaDbBlockReference>(QaGePoint3d(10, 0, 0), inner);
  nested->setRotation(std::numbers::pi / 2);
  d.add(std::move(nested), outer);
  auto top = std::make_unique<QaDbBlockReference>(QaGePoint3d(100, 100, 0), outer);
  top->setScaleFactors(QaGeScale3d(2, 2, 2));
  d.add(std::move(top));

  const RenderScene scene = BuildModelSpaceScene(d.db);
  const auto paths = pathsOf(scene);
  ASSERT_EQ(paths.size(), 1u);
  ASSERT_EQ(paths[0].rings.size(), 1u);
  const auto& ring = paths[0].rings[0];
  ASSERT_EQ(ring.size(), 2u);
  // (0,0)-(1,0) turned a quarter and moved to (10,0), then doubled and moved to (100,100).
  EXPECT_TRUE(ring[0].isEqualTo({120, 100})) << ring[0].x << "," << ring[0].y;
  EXPECT_TRUE(ring[1].isEqualTo({120, 102})) << ring[1].x << "," << ring[1].y;
  EXPECT_TRUE(scene.extents.minPoint().isEqualTo({120, 100, 0}));
  EXPECT_TRUE(scene.extents.maxPoint().isEqualTo({120, 102, 0}));
}

TEST(SceneBuilder, ResolvesByBlockAndByLayerColoursThroughTheReference) {
  TestDrawing d;
  d.layer(L"RED", 1);
  d.layer(L"CYAN", 4);
  const auto blk = d.block(L"B");
  d.add(line({0, 0, 0}, {1, 0, 0}, QaDb::kColorByBlock), blk);           // takes the reference's colour
  d.add(line({0, 1, 0}, {1, 1, 0}, QaDb::kColorByLayer), blk);           // layer 0: the reference's layer
  d.add(line({0, 2, 0}, {1, 2, 0}, QaDb::kColorByLayer, L"CYAN"), blk);  // its own layer
  d.add(line({0, 3, 0}, {1, 3, 0}, 3), blk);                             // its own colour
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), blk);
  ref->setLayer(L"RED");
  ref->setColorIndex(5);
  d.add(std::move(ref));
  d.add(line({0, 9, 0}, {1, 9, 0}));  // model space, layer 0 (white): black on paper

  const auto paths = pathsOf(BuildModelSpaceScene(d.db));
  ASSERT_EQ(paths.size(), 5u);
  EXPECT_EQ(paths[0].color, AciToRgb(5));
  EXPECT_EQ(paths[1].color, AciToRgb(1));
  EXPECT_EQ(paths[2].color, AciToRgb(4));
  EXPECT_EQ(paths[3].color, AciToRgb(3));
  EXPECT_EQ(paths[4].color, (RenderColor{0, 0, 0}));
}

TEST(SceneBuilder, LeavesOutHiddenLayersInvisibleAttributesAndBlockDefinitions) {
  TestDrawing d;
  d.layer(L"OFF", 1, true);
  d.layer(L"FROZEN", 1, false, true);
  d.add(line({0, 0, 0}, {1, 0, 0}, 1, L"OFF"));
  d.add(line({0, 0, 0}, {1, 0, 0}, 1, L"FROZEN"));
  const auto blk = d.block(L"ROW");
  d.add(std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(0, 0, 0), L"default", L"工序号", L"prompt"), blk);
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(5, 5, 0), blk);
  ref->appendAttribute(TestDrawing::attribute({5, 5, 0}, L"工序号", L"10"));
  auto hidden = TestDrawing::attribute({5, 8, 0}, L"SECRET", L"hidden");
  hidden->setInvisible(true);
  ref->appendAttribute(std::move(hidden));
  d.add(std::move(ref));
  // A definition standing in model space shows its tag.
  d.add(std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(0, 20, 0), L"v", L"TAG", L"p"));

  const RenderScene scene = BuildModelSpaceScene(d.db);
  EXPECT_EQ(scene.pathCount(), 0);
  const auto texts = textsOf(scene);
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0].text, L"10");
  EXPECT_EQ(texts[1].text, L"TAG");
}

TEST(SceneBuilder, SetsSingleLineTextOnItsBaselineByJustification) {
  struct Case {
    QaDb::TextHorzMode h;
    QaDb::TextVertMode v;
    RenderText::Anchor anchor;
    QaGePoint2d baseline;
    double fit;
  } cases[] = {
      {QaDb::kTextLeft, QaDb::kTextBase, RenderText::Anchor::Start, {10, 20}, 0},  // position counts
      {QaDb::kTextCenter, QaDb::kTextBase, RenderText::Anchor::Middle, {50, 30}, 0},
      {QaDb::kTextRight, QaDb::kTextTop, RenderText::Anchor::End, {50, 26}, 0},
      {QaDb::kTextCenter, QaDb::kTextVertMid, RenderText::Anchor::Middle, {50, 28}, 0},
      {QaDb::kTextMid, QaDb::kTextBase, RenderText::Anchor::Middle, {50, 28}, 0},
      {QaDb::kTextFit, QaDb::kTextBase, RenderText::Anchor::Start, {10, 20}, 40},  // spread between both points
  };
  for (const auto& c : cases) {
    TestDrawing d;
    auto text = std::make_unique<QaDbText>(QaGePoint3d(10, 20, 0), L"ABC");
    text->setHeight(4);
    text->setHorizontalMode(c.h);
    text->setVerticalMode(c.v);
    text->setAlignmentPoint(QaGePoint3d(50, 30, 0));
    if (c.h == QaDb::kTextFit) text->setAlignmentPoint(QaGePoint3d(50, 20, 0));
    d.add(std::move(text));
    const auto texts = textsOf(BuildModelSpaceScene(d.db));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].anchor, c.anchor) << c.h << "/" << c.v;
    EXPECT_TRUE(texts[0].position.isEqualTo(c.baseline)) << c.h << "/" << c.v << ": " << texts[0].position.x << ","
                                                          << texts[0].position.y;
    EXPECT_NEAR(texts[0].fitLength, c.fit, 1e-9);
    EXPECT_DOUBLE_EQ(texts[0].height, 4.0);
    EXPECT_GT(texts[0].fontSize, texts[0].height);  // an em is taller than a capital
    EXPECT_EQ(texts[0].fontFamily, L"WenQuanYi Micro Hei");
  }
}

TEST(SceneBuilder, RotatedAndStretchedReferenceCarriesItsTexts) {
  TestDrawing d;
  const auto blk = d.block(L"T");
  auto text = std::make_unique<QaDbText>(QaGePoint3d(1, 0, 0), L"%%c20");
  text->setHeight(2);
  d.add(std::move(text), blk);
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), blk);
  ref->setRotation(std::numbers::pi / 2);
  ref->setScaleFactors(QaGeScale3d(3, 1, 1));
  d.add(std::move(ref));
  const auto texts = textsOf(BuildModelSpaceScene(d.db));
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_EQ(texts[0].text, ShownText(L"%%c20"));
  EXPECT_EQ(texts[0].text.size(), 3u);  // the diameter sign and "20"
  EXPECT_NEAR(texts[0].rotation, std::numbers::pi / 2, 1e-9);
  EXPECT_TRUE(texts[0].position.isEqualTo({0, 3}));
  EXPECT_NEAR(texts[0].widthFactor, 3.0, 1e-9);
  EXPECT_NEAR(texts[0].height, 2.0, 1e-9);
}

TEST(SceneBuilder, ShownTextReadsControlCodesAndCaretForms) {
  struct Case {
    const wchar_t* stored;
    const wchar_t* shown;
  } cases[] = {
      {L"调质^J", L"调质"},           // a line feed as a file writes it
      {L"a^ b", L"a^b"},              // caret, blank: a caret
      {L"x\r\ny", L"xy"},
      {L"%%p0.1", L"\u00b10.1"},
      {L"100%%%", L"100%"},
      {L"^", L"^"},
  };
  for (const auto& c : cases) EXPECT_EQ(ShownText(c.stored), c.shown) << c.stored;
}

TEST(SceneBuilder, MultiLineTextStacksItsParagraphsFromTheAttachmentPoint) {
  TestDrawing d;
  auto m = std::make_unique<QaDbMText>();
  m->setContents(L"第一行\\P{\\H2;second}");
  m->setLocation(QaGePoint3d(0, 100, 0));
  m->setTextHeight(3);
  m->setAttachment(QaDbMText::kBottomCenter);
  d.add(std::move(m));
  const auto texts = textsOf(BuildModelSpaceScene(d.db));
  ASSERT_EQ(texts.size(), 2u);
  const double pitch = 3 * 5.0 / 3.0;
  // Two lines: the block is 3 + pitch high and stands on the location.
  EXPECT_TRUE(texts[0].position.isEqualTo({0, 100 + pitch})) << texts[0].position.y;
  EXPECT_TRUE(texts[1].position.isEqualTo({0, 100})) << texts[1].position.y;
  EXPECT_EQ(texts[0].text, L"第一行");
  EXPECT_EQ(texts[1].text, L"second");
  EXPECT_EQ(texts[1].anchor, RenderText::Anchor::Middle);
}

TEST(SceneBuilder, WrapsParagraphsAtBlanksOrBetweenCharacters) {
  auto count = [](const std::wstring& s) { return static_cast<double>(s.size()); };
  EXPECT_EQ(WrapParagraph(L"abc def ghi", 7, count), (std::vector<std::wstring>{L"abc def", L"ghi"}));
  EXPECT_EQ(WrapParagraph(L"一二三四五", 2, count), (std::vector<std::wstring>{L"一二", L"三四", L"五"}));
  EXPECT_EQ(WrapParagraph(L"whole", 0, count), (std::vector<std::wstring>{L"whole"}));
}

TEST(SceneBuilder, CirclesStayCirclesOnlyUnderUniformScale) {
  TestDrawing d;
  const auto blk = d.block(L"C");
  d.add(std::make_unique<QaDbCircle>(QaGePoint3d(0, 0, 0), QaGeVector3d::kZAxis, 5.0), blk);
  auto even = std::make_unique<QaDbBlockReference>(QaGePoint3d(100, 0, 0), blk);
  even->setScaleFactors(QaGeScale3d(2, 2, 2));
  d.add(std::move(even));
  auto squashed = std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), blk);
  squashed->setScaleFactors(QaGeScale3d(2, 1, 1));
  d.add(std::move(squashed));
  const RenderScene scene = BuildModelSpaceScene(d.db);
  ASSERT_EQ(scene.circleCount(), 1);
  const auto& circle = std::get<RenderCircle>(scene.items[0]);
  EXPECT_TRUE(circle.center.isEqualTo({100, 0}));
  EXPECT_DOUBLE_EQ(circle.radius, 10.0);
  const auto paths = pathsOf(scene);
  ASSERT_EQ(paths.size(), 1u);
  EXPECT_TRUE(paths[0].closed);
  for (const auto& p : paths[0].rings[0]) EXPECT_NEAR(p.x * p.x / 100 + p.y * p.y / 25, 1.0, 1e-9);
}

TEST(SceneBuilder, PolylineBulgesBecomeArcs) {
  TestDrawing d;
  auto pl = std::make_unique<QaDbPolyline>();
  pl->addVertexAt(0, {0, 0}, 1.0);
  pl->addVertexAt(1, {10, 0});
  d.add(std::move(pl));
  const auto paths = pathsOf(BuildModelSpaceScene(d.db));
  ASSERT_EQ(paths.size(), 1u);
  EXPECT_GT(paths[0].rings[0].size(), 10u);
  for (const auto& p : paths[0].rings[0]) EXPECT_NEAR(p.distanceTo({5, 0}), 5.0, 1e-9);
}

TEST(SceneBuilder, RealDrawingsGiveOutlinesCirclesAndTexts) {
  QaDbDatabase flange(false);
  ASSERT_EQ(flange.readDwgFile(tabulon::test::fixturesDir() / "qcad_examples_flange.dxf"), Qa::eOk);
  const RenderScene a = BuildModelSpaceScene(flange);
  EXPECT_GT(a.pathCount(), 50);
  EXPECT_GT(a.circleCount(), 10);
  EXPECT_GE(a.textCount(), 1);

  QaDbDatabase cjk(false);
  ASSERT_EQ(cjk.readDwgFile(tabulon::test::fixturesDir() / "libredwg_2013_gh109_1_cjk_utf8.dxf"), Qa::eOk);
  bool found = false;
  for (const auto& t : textsOf(BuildModelSpaceScene(cjk))) found = found || t.text == L"天正单行文字输入";
  EXPECT_TRUE(found);
}

}  // namespace
