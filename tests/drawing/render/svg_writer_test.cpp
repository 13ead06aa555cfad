#include "drawing/render/svg_writer.h"

#include <gtest/gtest.h>

#include <numbers>
#include <regex>

#include "drawing/render/scene_builder.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_text.h"
#include "render_test_drawing.h"
#include "support/test_support.h"

namespace {

using namespace tabulon::render;
using tabulon::render::test::TestDrawing;

int countOf(const std::string& text, const std::string& what) {
  int n = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++n;
  return n;
}

std::string viewBoxOf(const std::string& svg) {
  std::smatch m;
  std::regex re("viewBox=\"([^\"]*)\"");
  return std::regex_search(svg, m, re) ? m[1].str() : "";
}

TEST(SvgWriter, ViewBoxIsTheExtentsWithAMarginAndYPointingUp) {
  TestDrawing d;
  d.add(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(100, 50, 0)));
  const std::string svg = SceneToSvg(BuildModelSpaceScene(d.db));
  // 2 % of the longer side on each side; the drawing's top (y 50) is SVG's y -50.
  EXPECT_EQ(viewBoxOf(svg), "-2 -52 104 54");
  EXPECT_NE(svg.find("width=\"1600\" height=\"831\""), std::string::npos);
  EXPECT_NE(svg.find("<path d=\"M0 0 L100 -50\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("fill=\"#ffffff\""), std::string::npos);  // the sheet
}

TEST(SvgWriter, EmptyDrawingStillMakesAValidPicture) {
  RenderScene empty;
  const std::string svg = SceneToSvg(empty);
  EXPECT_EQ(viewBoxOf(svg), "-2 -102 104 104");
  EXPECT_EQ(countOf(svg, "<path"), 0);
  EXPECT_NE(svg.find("</svg>"), std::string::npos);
}

TEST(SvgWriter, WritesOneElementPerItemWithItsLook) {
  RenderScene scene;
  RenderPath outline;
  outline.rings = {{{0, 0}, {10, 0}, {10, 10}}};
  outline.closed = true;
  outline.color = AciToRgb(1);
  outline.lineWeight = 0.5;
  RenderPath filled;
  filled.rings = {{{0, 0}, {4, 0}, {4, 4}}, {{1, 1}, {2, 1}, {2, 2}}};
  filled.closed = true;
  filled.filled = true;
  filled.color = AciToRgb(3);
  RenderCircle circle{{5, 5}, 2.5, AciToRgb(5), 0.0};
  RenderText plain;
  plain.text = L"工序 <1> & 2";
  plain.position = {1, 2};
  plain.anchor = RenderText::Anchor::Middle;
  plain.height = 3.5;
  plain.fontSize = 4.5;
  plain.fontFamily = L"WenQuanYi Micro Hei";
  RenderText turned = plain;
  turned.text = L"R";
  turned.rotation = std::numbers::pi / 2;
  turned.widthFactor = 0.8;
  turned.fitLength = 20;
  turned.anchor = RenderText::Anchor::End;
  scene.items = {outline, filled, circle, plain, turned};
  scene.extents.addPoint({0, 0, 0});
  scene.extents.addPoint({100, 100, 0});

  const std::string svg = SceneToSvg(scene);
  EXPECT_EQ(countOf(svg, "<path"), 2);
  EXPECT_EQ(countOf(svg, "<circle"), 1);
  EXPECT_EQ(countOf(svg, "<text"), 2);
  EXPECT_NE(svg.find("d=\"M0 0 L10 0 L10 -10Z\" fill=\"none\" stroke=\"#ff0000\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("Z\" fill=\"#00ff00\" fill-rule=\"evenodd\""), std::string::npos);
  EXPECT_NE(svg.find("M0 0 L4 0 L4 -4ZM1 -1 L2 -1 L2 -2Z"), std::string::npos);  // both rings in one path
  EXPECT_NE(svg.find("<circle cx=\"5\" cy=\"-5\" r=\"2.5\""), std::string::npos);
  EXPECT_NE(svg.find("<text x=\"1\" y=\"-2\" font-family=\"WenQuanYi Micro Hei\" font-size=\"4.5\""),
            std::string::npos);
  EXPECT_NE(svg.find("text-anchor=\"middle\""), std::string::npos);
  EXPECT_NE(svg.find(">工序 &lt;1&gt; &amp; 2</text>"), std::string::npos);
  EXPECT_NE(svg.find("transform=\"translate(1 -2) rotate(-90) scale(0.8 1)\""), std::string::npos) << svg;
  EXPECT_NE(svg.find("textLength=\"25\" lengthAdjust=\"spacingAndGlyphs\""), std::string::npos);
  EXPECT_NE(svg.find("text-anchor=\"end\""), std::string::npos);
}

TEST(SvgWriter, HeavierLinesAreDrawnHeavierNeverBelowAHairline) {
  RenderScene scene;
  scene.extents.addPoint({0, 0, 0});
  scene.extents.addPoint({1600, 800, 0});
  SvgOptions options;
  options.margin = 0.0;
  const SvgFrame frame = ComputeSvgFrame(scene, options);
  EXPECT_DOUBLE_EQ(frame.hairline, 1.0);  // one drawing unit per pixel
  EXPECT_DOUBLE_EQ(StrokeWidth(frame, 0.0, 0.0), 1.0);
  EXPECT_DOUBLE_EQ(StrokeWidth(frame, 0.13, 0.0), 1.0);
  EXPECT_DOUBLE_EQ(StrokeWidth(frame, 0.5, 0.0), 2.0);
  EXPECT_DOUBLE_EQ(StrokeWidth(frame, 0.0, 7.0), 7.0);
}

TEST(SvgWriter, PictureOfARealChineseDrawingIsWellFormedXml) {
  QaDbDatabase db(false);
  ASSERT_EQ(db.readDwgFile(tabulon::test::fixturesDir() / "libredwg_2013_gh109_1_cjk_utf8.dxf"), Qa::eOk);
  tabulon::test::ScratchDir dir;
  tabulon::test::writeFile(dir / "out.svg", SceneToSvg(BuildModelSpaceScene(db)));
  const auto result = tabulon::test::runPython(
      "import sys, xml.etree.ElementTree as ET\n"
      "root = ET.parse(sys.argv[1]).getroot()\n"
      "ns = '{http://www.w3.org/2000/svg}'\n"
      "texts = [t.text for t in root.iter(ns + 'text')]\n"
      "print(len(list(root.iter(ns + 'path'))) > 0, '天正单行文字输入' in texts)\n",
      {(dir / "out.svg").string()});
  EXPECT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.output, "True True\n");
}

}  // namespace
