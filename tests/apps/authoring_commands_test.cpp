// The authoring commands of `tabulon` without a dialog: a process card's first and
// continuation page drawn by an outside program (ezdxf) become table templates and a
// card template, from which `create` makes a card that ezdxf reads back; the library
// commands; and the refusals that must leave the library as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace {

namespace fs = std::filesystem;
using tabulon::test::cliPath;
using tabulon::test::CommandResult;
using tabulon::test::readFile;
using tabulon::test::runCommand;
using tabulon::test::runPython;
using tabulon::test::ScratchDir;
using tabulon::test::shellQuote;
using tabulon::test::writeFile;

// Two page forms as another CAD program would draw them: a frame, lines, a circle, a
// block without attributes, a TITLE block (first page only), a PAGE number block and
// ROW blocks, whose cells carry their descriptions as plain strings.
const char* const kForms = R"(
import sys, ezdxf
from ezdxf.enums import TextEntityAlignment

def cell(block, tag, x, width, order, extra=()):
    d = block.add_attdef(tag, (x, 2), dxfattribs={'height': 3.0})
    d.set_placement((x, 2), (x + width, 2), align=TextEntityAlignment.FIT)
    d.set_xdata('KRM_XDATA_ORDER', [(1000, str(order))])
    for app, value in extra:
        d.set_xdata(app, [(1000, value)])

def form(path, rows, title):
    doc = ezdxf.new('R2010')
    for app in ('KRM_XDATA_ORDER', 'KRM_XDATA_CODE', 'KRM_XDATA_TEXTLENGTHMODE', 'KRM_XDATA_VTYPE'):
        doc.appids.new(app)
    row = doc.blocks.new('ROW')
    row.add_lwpolyline([(0, 0), (180, 0), (180, 8), (0, 8)], close=True)
    cell(row, '内容', 32, 140, 3, [('KRM_XDATA_TEXTLENGTHMODE', 'kFit')])
    cell(row, '序号', 2, 10, 1, [('KRM_XDATA_VTYPE', 'NumberInt')])
    cell(row, '工序', 14, 16, 2, [('KRM_XDATA_CODE', 'OPNAME')])
    page = doc.blocks.new('PAGE')
    page.add_line((0, 0), (40, 0))
    cell(page, '当前页', 2, 15, 1)
    cell(page, '总页数', 22, 15, 2)
    doc.blocks.new('LOGO').add_circle((0, 0), 3)
    msp = doc.modelspace()
    height = 30 + 8 * rows
    msp.add_lwpolyline([(0, 0), (200, 0), (200, height), (0, height)], close=True)
    msp.add_line((0, height - 20), (200, height - 20))
    msp.add_circle((190, height - 10), 4)
    msp.add_blockref('LOGO', (180, height - 10))
    if title:
        t = doc.blocks.new('TITLE')
        t.add_line((0, 0), (100, 0))
        cell(t, '名称', 2, 40, 2)
        cell(t, '图号', 50, 40, 1)
        msp.add_blockref('TITLE', (5, height - 15)).add_auto_attribs({})
    msp.add_blockref('PAGE', (150, height - 15)).add_auto_attribs({})
    for r in range(rows):
        msp.add_blockref('ROW', (10, height - 30 - 8 * r)).add_auto_attribs({})
    doc.saveas(path)

form(sys.argv[1], 5, True)
form(sys.argv[2], 8, False)
doc = ezdxf.new('R2010')
doc.modelspace().add_line((0, 0), (10, 10))
doc.blocks.new('LOGO').add_circle((0, 0), 3)
doc.modelspace().add_blockref('LOGO', (5, 5))
doc.saveas(sys.argv[3])
)";

// Texts of each tag of the blocks named, references in drawing order; audit errors.
const char* const kCardTexts = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
msp = doc.modelspace()
for blk in ('TITLE', 'PAGE', 'ROW'):
    refs = [e for e in msp.query('INSERT') if e.dxf.name == blk or e.dxf.name.endswith('_' + blk)]
    for tag in sorted({a.dxf.tag for e in refs for a in e.attribs}):
        print(blk, tag, ' '.join(a.dxf.text or '-' for e in refs for a in e.attribs if a.dxf.tag == tag))
print('errors', len(doc.audit().errors))
)";

class AuthoringCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(tabulon::test::ezdxfAvailable());
    const auto made = runPython(kForms, {Form("first.dxf"), Form("next.dxf"), Form("plain.dxf")});
    ASSERT_EQ(made.exitCode, 0) << made.output;
  }
  std::string Form(const std::string& name) const { return (work.path() / name).string(); }
  CommandResult Run(const std::string& args) const {
    return runCommand(shellQuote(cliPath().string()) + " --library " + shellQuote(lib.path().string()) + " " + args +
                      " 2>&1");
  }
  CommandResult MakeTable(const std::string& drawing, const std::string& name, const std::string& extra = "") const {
    return Run("make-table " + shellQuote(Form(drawing)) + " --name " + name +
               " --folder 机加 --multi ROW:0 --page-base ROW --class-cur PAGE:当前页 --class-sum PAGE:总页数"
               " --autonum ROW:序号 --single PAGE" +
               extra);
  }
  ScratchDir lib;
  ScratchDir work;
};

TEST_F(AuthoringCommands, DrawnFormsBecomeACardThatCreateFills) {
  const CommandResult blocks = Run("blocks " + shellQuote(Form("first.dxf")));
  ASSERT_EQ(blocks.exitCode, 0) << blocks.output;
  EXPECT_NE(blocks.output.find("ROW: 5 references, multi-record\n  1. 序号"), std::string::npos) << blocks.output;
  EXPECT_NE(blocks.output.find("2. 工序 code=OPNAME"), std::string::npos) << blocks.output;
  EXPECT_EQ(blocks.output.find("LOGO"), std::string::npos);

  CommandResult made = MakeTable("first.dxf", "P1", " --single TITLE --show-name 工艺卡首页");
  ASSERT_EQ(made.exitCode, 0) << made.output;
  made = MakeTable("next.dxf", "P2");
  ASSERT_EQ(made.exitCode, 0) << made.output;
  made = Run("make-card --name 工艺卡 --folder 机加 --first 机加/P1 --next 机加/P2");
  ASSERT_EQ(made.exitCode, 0) << made.output;
  // The side drawing keeps the plain geometry, and its blocks carry the table's id.
  const auto side = runPython(R"(
import sys, json, ezdxf
doc = ezdxf.readfile(sys.argv[1])
tid = json.load(open(sys.argv[2], encoding='utf-8'))['id']
print(sorted(e.dxftype() for e in doc.modelspace()))
print(sorted(b.name.replace(tid, 'ID') for b in doc.blocks if not b.name.startswith('*')))
print('errors', len(doc.audit().errors))
)",
                              {(lib.path() / "机加" / "P1.dxf").string(), (lib.path() / "机加" / "P1.tbl").string()});
  EXPECT_EQ(side.output,
            "['CIRCLE', 'INSERT', 'INSERT', 'INSERT', 'INSERT', 'INSERT', 'INSERT', 'INSERT', 'INSERT', 'LINE', "
            "'LWPOLYLINE']\n['ID_LOGO', 'ID_PAGE', 'ID_ROW', 'ID_TITLE']\nerrors 0\n");

  std::string rows = "工序,内容\n";
  for (int i = 1; i <= 18; ++i) rows += "工序" + std::to_string(i) + ",内容" + std::to_string(i) + "\n";
  writeFile(work.path() / "rows.csv", rows);
  writeFile(work.path() / "title.csv", "图号,名称\nA-100,轴\n");
  const std::string out = (work.path() / "card.dxf").string();
  const CommandResult created = Run("create --card 机加/工艺卡 --data ROW=" + shellQuote(work.path() / "rows.csv") +
                                    " --data TITLE=" + shellQuote(work.path() / "title.csv") + " -o " + shellQuote(out));
  ASSERT_EQ(created.exitCode, 0) << created.output;

  std::string rowTexts = "ROW 内容";
  for (int i = 1; i <= 18; ++i) rowTexts += " 内容" + std::to_string(i);
  const std::string seen = runPython(kCardTexts, {out}).output;
  EXPECT_NE(seen.find("TITLE 图号 A-100\n"), std::string::npos) << seen;
  EXPECT_NE(seen.find("PAGE 当前页 1 2 3\nPAGE 总页数 3 3 3\n"), std::string::npos) << seen;
  EXPECT_NE(seen.find(rowTexts + " - - -\n"), std::string::npos) << seen;  // 5 + 8 + 8 row places
  EXPECT_NE(seen.find("errors 0"), std::string::npos) << seen;

  const CommandResult listed = Run("library list --json");
  EXPECT_NE(listed.output.find("\"showName\": \"工艺卡首页\""), std::string::npos) << listed.output;
  const CommandResult preview = Run("library preview 机加/工艺卡 --next -o " + shellQuote(work.path() / "next.svg"));
  ASSERT_EQ(preview.exitCode, 0) << preview.output;
  EXPECT_TRUE(fs::exists(work.path() / "next.svg"));
}

TEST_F(AuthoringCommands, RefusalsWriteNothing) {
  struct Case {
    std::string args;
    std::string message;
  };
  const std::string first = shellQuote(Form("first.dxf"));
  const Case cases[] = {
      {"make-table " + shellQuote(Form("plain.dxf")) + " --name T --multi ROW --page-base ROW", "没有选择有效的属性块"},
      {"make-table " + first + " --name 'a/b' --multi ROW --page-base ROW", "卡片名称中不能包含"},
      {"make-table " + first + " --name 'a?b' --multi ROW --page-base ROW", "卡片名称中不能包含"},
      {"make-table " + first + " --name T --multi ROW", "请指定分页基准块"},
      {"make-table " + first + " --name T --multi TITLE", "--multi TITLE: no such block class"},
      {"make-table " + first + " --name T --folder ../up --multi ROW --page-base ROW", "climb out"},
      {"make-card --name C --first nowhere", "--first nowhere: there is no such table template"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const CommandResult result = Run(c.args);
    EXPECT_NE(result.exitCode, 0);
    EXPECT_NE(result.output.find(c.message), std::string::npos) << result.output;
  }
  EXPECT_TRUE(fs::is_empty(lib.path()));
}

TEST_F(AuthoringCommands, DamagedTableIsNamedAndDifferingTablesFailTheCard) {
  ASSERT_EQ(MakeTable("first.dxf", "P1").exitCode, 0);
  ASSERT_EQ(Run("make-table " + shellQuote(Form("next.dxf")) +
                " --name P2 --folder 机加 --multi ROW --single PAGE --page-base ROW --class-cur PAGE:总页数")
                .exitCode,
            0);
  const CommandResult compared = Run("make-card --name C --folder 机加 --first 机加/P1 --next 机加/P2");
  EXPECT_NE(compared.exitCode, 0);
  EXPECT_NE(compared.output.find("首页模板与续页模板的类当前页属性不一致!"), std::string::npos) << compared.output;
  EXPECT_FALSE(fs::exists(lib.path() / "机加" / "C.crd"));

  // A damaged table reads as an empty record: its page base differs.
  writeFile(lib.path() / "机加" / "P1.tbl", "{\"format\": \"tabulon-table\", \"pageBase\": [1]}");
  const CommandResult damaged = Run("make-card --name C --folder 机加 --first 机加/P2 --next 机加/P1");
  EXPECT_NE(damaged.exitCode, 0);
  EXPECT_NE(damaged.output.find("首页模板与续页模板的分页基准块不一致!"), std::string::npos) << damaged.output;
  EXPECT_FALSE(fs::exists(lib.path() / "机加" / "C.crd"));
}

TEST_F(AuthoringCommands, SameNameNeedsAnAnswerAndYesKeepsTheId) {
  ASSERT_EQ(MakeTable("first.dxf", "P1").exitCode, 0);
  const std::string before = readFile(lib.path() / "机加" / "P1.tbl");
  const auto idOf = [](const std::string& json) { return json.substr(json.find("\"id\""), 44); };
  EXPECT_NE(MakeTable("first.dxf", "P1").exitCode, 0);
  EXPECT_NE(MakeTable("first.dxf", "P1", " --answer cancel").exitCode, 0);
  EXPECT_EQ(readFile(lib.path() / "机加" / "P1.tbl"), before);
  ASSERT_EQ(MakeTable("first.dxf", "P1", " --answer yes").exitCode, 0);
  EXPECT_EQ(idOf(readFile(lib.path() / "机加" / "P1.tbl")), idOf(before));
  ASSERT_EQ(MakeTable("first.dxf", "P1", " --answer no").exitCode, 0);
  EXPECT_NE(idOf(readFile(lib.path() / "机加" / "P1.tbl")), idOf(before));
}

TEST_F(AuthoringCommands, TransferCopiesFilesUnchangedAndDeleteRemovesATemplate) {
  ASSERT_EQ(MakeTable("first.dxf", "P1").exitCode, 0);
  ASSERT_EQ(Run("make-card --name C --folder 机加 --first 机加/P1").exitCode, 0);
  const fs::path target = work.path() / "other";
  const CommandResult refused = Run("library transfer --from 机加 --to " + shellQuote(target));
  EXPECT_NE(refused.exitCode, 0);
  EXPECT_FALSE(fs::exists(target));
  const CommandResult copied = Run("library transfer --from 机加 --to " + shellQuote(target) + " C --answer yes");
  ASSERT_EQ(copied.exitCode, 0) << copied.output;
  for (const char* name : {"C.crd", "P1.tbl", "P1.dxf"})
    EXPECT_EQ(readFile(target / name), readFile(lib.path() / "机加" / name)) << name;

  EXPECT_NE(Run("library delete 机加/C").exitCode, 0);
  ASSERT_EQ(Run("library delete 机加/C --yes").exitCode, 0);
  EXPECT_FALSE(fs::exists(lib.path() / "机加" / "C.crd"));
  EXPECT_TRUE(fs::exists(lib.path() / "机加" / "P1.tbl"));
}

TEST_F(AuthoringCommands, DescribeWritesCellDescriptionsThatBlocksReads) {
  const std::string out = (work.path() / "described.dxf").string();
  const CommandResult described =
      Run("describe " + shellQuote(Form("first.dxf")) + " --block ROW --tag 内容 --set type=Number --set decimals=2" +
          " --set align=CENTER --clear length -o " + shellQuote(out));
  ASSERT_EQ(described.exitCode, 0) << described.output;
  const CommandResult blocks = Run("blocks " + shellQuote(out) + " --json");
  EXPECT_NE(blocks.output.find("\"type\": \"KRM_XDATA_NUMDOUBLE\""), std::string::npos) << blocks.output;
  EXPECT_NE(blocks.output.find("\"align\": \"CENTER\""), std::string::npos);
  EXPECT_EQ(blocks.output.find("kFit"), std::string::npos);
  const auto audit = runPython("import sys, ezdxf\nprint(len(ezdxf.readfile(sys.argv[1]).audit().errors))\n", {out});
  EXPECT_EQ(audit.output, "0\n");
  const CommandResult bad = Run("describe " + shellQuote(Form("first.dxf")) +
                                " --block ROW --tag 内容 --set align=middle -o " + shellQuote(out + "2"));
  EXPECT_NE(bad.exitCode, 0);
  EXPECT_NE(bad.output.find("align"), std::string::npos) << bad.output;
  EXPECT_FALSE(fs::exists(out + "2"));
}

}  // namespace
