// `tabulon demo`, `tabulon render` and `tabulon bom`, run as a user would; the drawings
// and pictures are checked by independent readers (ezdxf, Python's XML parser).
#include <gtest/gtest.h>

#include <string>

#include <nlohmann/json.hpp>

#include "host/svc/utf8.h"
#include "samples/sample_cards.h"
#include "samples/sample_demo.h"
#include "support/test_support.h"

using tabulon::test::cliPath;
using tabulon::test::CommandResult;
using tabulon::test::readFile;
using tabulon::test::runCommand;
using tabulon::test::runPython;
using tabulon::test::ScratchDir;
using tabulon::test::shellQuote;
using tabulon::test::writeFile;

namespace {

CommandResult tabulon(const std::string& args, const std::string& env = "") {
  return runCommand(env + shellQuote(cliPath().string()) + " " + args + " 2>&1");
}

// Audit result, page groups, and the generated references per class (block name
// without the table prefix).
const char* const kDescribeCards = R"(
import sys, ezdxf, collections
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print('audit', len(auditor.errors), len(auditor.fixes))
print('groups', len(doc.groups))
count = collections.Counter(e.dxf.name.split('_', 1)[1] for e in doc.modelspace().query('INSERT') if '_' in e.dxf.name)
print(' '.join('%s=%d' % kv for kv in sorted(count.items())))
)";

// The process card batch of a drawing (everything below the assembly sheets), one line
// per entity in a sorted list: kind and the extents ezdxf finds; for references the
// class and every attribute with its text, points, width factor and alignment.
const char* const kProcessCardEntities = R"(
import sys, ezdxf
from ezdxf import bbox
doc = ezdxf.readfile(sys.argv[1])
lines = []
for e in doc.modelspace():
    box = bbox.extents([e])
    if not box.has_data or box.extmax.y > -5:
        continue
    line = '%s %.3f %.3f %.3f %.3f' % (e.dxftype(), box.extmin.x, box.extmin.y, box.extmax.x, box.extmax.y)
    if e.dxftype() == 'INSERT':
        line += ' ' + e.dxf.name.split('_')[-1]
        for a in e.attribs:
            p, q = a.dxf.insert, a.dxf.get('align_point', (0, 0, 0))
            line += ' | %s=%s %.3f,%.3f %.3f,%.3f w%.3f h%d' % (a.dxf.tag, a.dxf.text, p[0], p[1], q[0], q[1],
                                                              a.dxf.width, a.dxf.halign)
    lines.append(line)
print(len(lines))
print('\n'.join(sorted(lines)))
)";

// The demo is made once for the tests that look at it.
class Demo : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir;
    result_ = new CommandResult(tabulon("demo " + shellQuote((dir_->path() / "tour").string()) + " --no-png"));
  }
  static void TearDownTestSuite() {
    delete result_;
    delete dir_;
  }
  static std::filesystem::path tour() { return dir_->path() / "tour"; }
  static ScratchDir* dir_;
  static CommandResult* result_;
};
ScratchDir* Demo::dir_ = nullptr;
CommandResult* Demo::result_ = nullptr;

TEST_F(Demo, MakesTheLibraryTheCardsAndADrawingThatPassesTheAudit) {
  ASSERT_EQ(result_->exitCode, 0) << result_->output;
  for (const char* line : {"机械加工工艺过程卡片 — 输出轴 XH-01-01: 38 rows on 3 pages",
                           "机械加工工艺过程卡片 — 大齿轮 XH-01-02: 8 rows on 1 page",
                           "零件明细表 — 输出轴组件 XH-01-00 + 箱盖组件 XH-02-00: 13 rows on 1 page",
                           "Process card batch: 4 pages numbered in one run"})
    EXPECT_NE(result_->output.find(line), std::string::npos) << line << "\n" << result_->output;
  for (const char* file : {"library/机械加工工艺过程卡片.crd", "library/零件明细表.crd", "library/工艺过程卡首页.dxf",
                           "config/options.ini", "assembly.dxf", "demo.dxf", "demo.svg"})
    EXPECT_TRUE(std::filesystem::exists(tour() / std::filesystem::u8path(file))) << file;
  EXPECT_FALSE(std::filesystem::exists(tour() / "demo.png"));

  const auto cards = runPython(kDescribeCards, {(tour() / "demo.dxf").string()});
  ASSERT_EQ(cards.exitCode, 0) << cards.output;
  // Three pages of the shaft, one of the gear, one parts list: one group each; every
  // page has its row blocks (18 first, 19 continuation; 29 on the parts list).
  EXPECT_EQ(cards.output,
            "audit 0 0\ngroups 5\n"
            "BATCHNO=5 BATCHSUM=5 BOMHEAD=1 BOMLINE=29 HEAD=4 PAGENO=5 ROW=" + std::to_string(18 + 19 + 19 + 18) +
                " SIGN=4\n");
}

// `create` and the engine inside the demo measure texts alike, so the same cards come
// out with the same extents, placement and fitting.
TEST_F(Demo, CreateMakesTheProcessCardsAsTheDemoDoes) {
  ASSERT_EQ(result_->exitCode, 0) << result_->output;
  using namespace tabulon::samples;
  using tabulon::svc::toUtf8;
  const std::filesystem::path library = tour() / "library";
  nlohmann::json cards = nlohmann::json::array();
  for (const SampleCardContent& content : SampleProcessCards()) {
    nlohmann::json data = nlohmann::json::object();
    for (const auto& [block, rows] : content.blocks) {
      nlohmann::json list = nlohmann::json::array();
      for (const SampleRow& row : SampleRowsWithCalculatedColumns(library, content.card, block, rows)) {
        nlohmann::json object = nlohmann::json::object();
        for (const auto& [column, text] : row) object[toUtf8(column)] = toUtf8(text);
        list.push_back(object);
      }
      data[toUtf8(block)] = list;
    }
    cards.push_back({{"card", toUtf8(content.card)}, {"data", data}});
  }
  const nlohmann::json batch = {{"insert", {kProcessCardsX, kProcessCardsY}}, {"cards", cards}};
  writeFile(dir_->path() / "batch.json", batch.dump());
  const std::filesystem::path created = dir_->path() / "created.dxf";
  const CommandResult made =
      tabulon("--library " + shellQuote(library.string()) + " create --batch " +
                  shellQuote((dir_->path() / "batch.json").string()) + " -o " + shellQuote(created.string()),
              "TABULON_HOME=" + shellQuote((tour() / "config").string()) + " ");
  ASSERT_EQ(made.exitCode, 0) << made.output;

  const CommandResult fromDemo = runPython(kProcessCardEntities, {(tour() / "demo.dxf").string()});
  const CommandResult fromCreate = runPython(kProcessCardEntities, {created.string()});
  ASSERT_EQ(fromDemo.exitCode, 0) << fromDemo.output;
  ASSERT_EQ(fromCreate.exitCode, 0) << fromCreate.output;
  EXPECT_GT(fromDemo.output.size(), 1000u);
  EXPECT_EQ(fromCreate.output, fromDemo.output);
}

TEST_F(Demo, PictureShowsTheWholeDrawing) {
  ASSERT_EQ(result_->exitCode, 0) << result_->output;
  const auto check = runPython(R"(
import sys, xml.etree.ElementTree as ET
root = ET.parse(sys.argv[1]).getroot()
ns = '{http://www.w3.org/2000/svg}'
texts = [t.text for t in root.iter(ns + 'text')]
x, y, w, h = map(float, root.get('viewBox').split())
print(w > 1200, h > 500, '机械加工工艺过程卡片' in texts, '零件明细表' in texts, 'XH-02-00' in texts)
)",
                               {(tour() / "demo.svg").string()});
  EXPECT_EQ(check.output, "True True True True True\n");
}

// The BOM export on the two sheets the demo leaves: both frames, then the point; a
// cancelled selection makes nothing and leaves the drawing alone.
TEST_F(Demo, BomCommandTurnsTheFramesOfADrawingIntoACard) {
  ASSERT_EQ(result_->exitCode, 0) << result_->output;
  const std::string env = "TABULON_HOME=" + shellQuote((tour() / "config").string()) + " ";
  const std::string library = "--library " + shellQuote((tour() / "library").string()) + " ";
  const auto assembly = tour() / "assembly.dxf";
  const auto out = dir_->path() / "with-bom.dxf";
  const auto made = tabulon(library + "bom " + shellQuote(assembly.string()) + " --answer '' --answer 0,-310 -o " +
                                shellQuote(out.string()),
                            env);
  ASSERT_EQ(made.exitCode, 0) << made.output;
  EXPECT_NE(made.output.find("选择明细表所在的图框"), std::string::npos);
  const auto cards = runPython(kDescribeCards, {out.string()});
  EXPECT_EQ(cards.output, "audit 0 0\ngroups 1\nBATCHNO=1 BATCHSUM=1 BOMHEAD=1 BOMLINE=29 PAGENO=1\n");

  const std::string before = readFile(assembly);
  const auto cancelled = tabulon(library + "bom " + shellQuote(assembly.string()) + " --answer cancel", env);
  EXPECT_EQ(cancelled.exitCode, 2) << cancelled.output;
  EXPECT_NE(cancelled.output.find("no card was made"), std::string::npos);
  EXPECT_EQ(readFile(assembly), before);
}

// A small drawing made by ezdxf: the SVG has one element per entity and the view box
// of its extents; the PNG is a PNG.
TEST(RenderCommand, DrawsASmallKnownDrawing) {
  ScratchDir dir;
  const auto made = runPython(R"(
import sys, ezdxf
doc = ezdxf.new('R2010')
msp = doc.modelspace()
doc.layers.add('RED', color=1)
msp.add_line((0, 0), (100, 0), dxfattribs={'layer': 'RED'})
msp.add_circle((50, 25), 10)
msp.add_lwpolyline([(0, 0), (0, 50), (100, 50)])
msp.add_text('工序', dxfattribs={'height': 5}).set_placement((50, 40), align=ezdxf.enums.TextEntityAlignment.MIDDLE_CENTER)
blk = doc.blocks.new('TAG')
blk.add_line((0, 0), (10, 0))
blk.add_attdef('NO', (0, 1), dxfattribs={'height': 2})
msp.add_blockref('TAG', (80, 10)).add_auto_attribs({'NO': '10'})
doc.saveas(sys.argv[1])
)",
                              {(dir / "small.dxf").string()});
  ASSERT_EQ(made.exitCode, 0) << made.output;

  const auto svg = tabulon("render " + shellQuote((dir / "small.dxf").string()) + " -o " +
                           shellQuote((dir / "small.svg").string()));
  ASSERT_EQ(svg.exitCode, 0) << svg.output;
  const auto check = runPython(R"(
import sys, xml.etree.ElementTree as ET
root = ET.parse(sys.argv[1]).getroot()
ns = '{http://www.w3.org/2000/svg}'
print(root.get('viewBox'))
print(len(list(root.iter(ns + 'path'))), len(list(root.iter(ns + 'circle'))))
print(sorted(t.text for t in root.iter(ns + 'text')))
print(sorted(set(p.get('stroke') for p in root.iter(ns + 'path'))))
)",
                               {(dir / "small.svg").string()});
  // Paths: the line, the polyline and the line of the block; the extents run from
  // (0,0) to (100,50) and gain 2 % of 100 on each side.
  EXPECT_EQ(check.output, "-2 -52 104 54\n3 1\n['10', '工序']\n['#000000', '#ff0000']\n");

  const auto png = tabulon("render " + shellQuote((dir / "small.dxf").string()) + " -o " +
                           shellQuote((dir / "small.png").string()) + " --size 300");
  ASSERT_EQ(png.exitCode, 0) << png.output;
  EXPECT_EQ(readFile(dir / "small.png").substr(0, 8), std::string("\x89PNG\r\n\x1a\n", 8));

  const auto wrong = tabulon("render " + shellQuote((dir / "small.dxf").string()) + " -o " +
                             shellQuote((dir / "small.jpg").string()));
  EXPECT_NE(wrong.exitCode, 0);
  EXPECT_NE(wrong.output.find("must end in .svg or .png"), std::string::npos) << wrong.output;
}

}  // namespace
