// `tabulon set`, `tabulon update` and `tabulon run ... KrmCardEdit --data`: placed cards
// changed from the command line, read back by ezdxf, and bad input that must leave the
// drawing alone.
#include <gtest/gtest.h>

#include <filesystem>

#include "placed_card_cli_fixture.h"

namespace {

using clitest::PlacedCardCli;
using tabulon::test::CommandResult;
using tabulon::test::readFile;
using tabulon::test::writeFile;

// Texts of attribute "工序" of the row blocks by page group, and the audit's verdict.
const char* const kRowsByPage = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
pages = []
for name, group in doc.groups:
    rows = [e for e in group if e.dxftype() == 'INSERT' and e.dxf.name.endswith('_ROW')]
    if not rows:
        continue
    rows.sort(key=lambda e: -e.dxf.insert.y)
    pages.append((min(e.dxf.insert.x for e in rows),
                  ' '.join((e.get_attrib_text('工序') or '-') for e in rows)))
for x, texts in sorted(pages):
    print(texts)
print('errors', len(doc.audit().errors))
)";

class PlacedCardChange : public PlacedCardCli {
 protected:
  std::string RowsByPage(const std::string& drawing) const {
    return tabulon::test::runPython(kRowsByPage, {(work / drawing).string()}).output;
  }
};

TEST_F(PlacedCardChange, SetChangesOneCellAndGrowsThePageBaseByRowsAndPages) {
  const CommandResult set = Tabulon("set " + Path("card.dxf") + " --card " + code +
                                    " --block ROW --row 6 --column 工序 --text 改七 -o " + Path("set.dxf"));
  ASSERT_EQ(set.exitCode, 0) << set.output;
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  EXPECT_EQ(RowsByPage("set.dxf"), "工序1 工序2 工序3 工序4 工序5\n工序6 改七 - - - - - -\nerrors 0\n");

  const CommandResult grow = Tabulon("set " + Path("set.dxf") + " --pick 10,56 --block ROW --row 13 --column 工序 "
                                     "--text 第十四 -o " + Path("grown.dxf"));
  ASSERT_EQ(grow.exitCode, 0) << grow.output;
  // The rows in between are kept blank; a third page holds the last one.
  EXPECT_EQ(RowsByPage("grown.dxf"),
            "工序1 工序2 工序3 工序4 工序5\n工序6 改七 - - - - - -\n第十四 - - - - - - -\nerrors 0\n");
}

TEST_F(PlacedCardChange, UpdateTakesTheRowsOfTheDataFilesAndTheNumbering) {
  writeFile(work / "three.csv", "工序\n甲\n乙\n丙\n");
  writeFile(work / "title.json", R"([{"图号": "DWG-9"}])");
  const CommandResult update = Tabulon("update " + Path("card.dxf") + " --card " + code + " --data ROW=" +
                                       Path("three.csv") + " --data TITLE=" + Path("title.json") +
                                       " --page-start 5 -o " + Path("three.dxf"));
  ASSERT_EQ(update.exitCode, 0) << update.output;
  EXPECT_NE(update.output.find("0 pages added, 1 cut"), std::string::npos) << update.output;
  EXPECT_EQ(RowsByPage("three.dxf"), "甲 乙 丙 - -\nerrors 0\n");
  const CommandResult title = TabulonOut("get " + Path("three.dxf") + " --card " + code + " --block TITLE");
  EXPECT_EQ(title.output, "图号,页码,总页,批总\nDWG-9,5,1,1\n");
}

TEST_F(PlacedCardChange, RunKrmCardEditTakesTheEditorsRowsFromDataFiles) {
  writeFile(work / "edited.csv", "工序\n车\n铣\n");
  const CommandResult run = Tabulon("run " + Path("card.dxf") + " KrmCardEdit --answer 10,56 --data ROW=" +
                                    Path("edited.csv") + " -o " + Path("edited.dxf"));
  ASSERT_EQ(run.exitCode, 0) << run.output;
  EXPECT_EQ(RowsByPage("edited.dxf"), "车 铣 - - -\nerrors 0\n");

  // Without data the card is confirmed as it stands.
  ASSERT_EQ(Tabulon("run " + Path("card.dxf") + " KrmCardEdit --answer 10,56 -o " + Path("same.dxf")).exitCode, 0);
  EXPECT_EQ(Steps("same.dxf", "--card " + code), "工序1\n工序2\n工序3\n工序4\n工序5\n工序6\n工序7\n");

  const CommandResult bad = Tabulon("run " + Path("card.dxf") + " KrmCardEdit --answer 10,56 --data NOSUCH=" +
                                    Path("edited.csv") + " -o " + Path("bad.dxf"));
  EXPECT_NE(bad.exitCode, 0);
  EXPECT_NE(bad.output.find("the card has no block \"NOSUCH\""), std::string::npos) << bad.output;
  EXPECT_FALSE(std::filesystem::exists(work / "bad.dxf"));
}

TEST_F(PlacedCardChange, BadInputSaysWhatIsWrongAndLeavesTheDrawingUntouched) {
  writeFile(work / "rows2.csv", "工序\n甲\n乙\n");
  writeFile(work / "badcol.csv", "工序,颜色\n甲,红\n");
  const std::string before = readFile(work / "card.dxf");
  const std::string set = "set " + Path("card.dxf") + " --card " + code;
  const std::string update = "update " + Path("card.dxf") + " --card " + code;
  struct Case {
    std::string args;
    std::string message;
  };
  const Case cases[] = {
      {"update " + Path("card.dxf") + " --card ABCDEFGH --data ROW=" + Path("rows2.csv") + " -o " + Path("out.dxf"),
       "the drawing has no card with the code \"ABCDEFGH\""},
      {"set " + Path("card.dxf") + " --pick 900,900 --block ROW --row 0 --column 工序 --text x -o " + Path("out.dxf"),
       "no card of"},
      {update + " --data NOSUCH=" + Path("rows2.csv") + " -o " + Path("out.dxf"),
       "the card has no block \"NOSUCH\" (it has TITLE, BATCH, ROW, SIGN)"},
      {update + " --data ROW=" + Path("badcol.csv") + " -o " + Path("out.dxf"),
       "the block ROW has no column \"颜色\" (it has 序号, 工序, 内容)"},
      {set + " --block ROW --row 0 --column 颜色 --text x -o " + Path("out.dxf"), "--column 颜色: the block ROW has no"},
      {set + " --block TITLE --row 1 --column 图号 --text x -o " + Path("out.dxf"),
       "the block TITLE has 1 rows and cannot grow (only ROW adds rows and pages)"},
      {update + " --data ROW=" + Path("missing.csv") + " -o " + Path("out.dxf"), "missing.csv: cannot open the data file"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const CommandResult result = Tabulon(c.args);
    EXPECT_NE(result.exitCode, 0);
    EXPECT_NE(result.output.find(c.message), std::string::npos) << result.output;
    EXPECT_FALSE(std::filesystem::exists(work / "out.dxf"));
  }
  EXPECT_EQ(readFile(work / "card.dxf"), before);

  // A card whose template left the library, and a drawing that has no card at all.
  std::filesystem::remove(lib / "card.crd");
  const CommandResult gone = Tabulon(update + " --data ROW=" + Path("rows2.csv") + " -o " + Path("out.dxf"));
  EXPECT_NE(gone.exitCode, 0);
  EXPECT_NE(gone.output.find("is not in the card library"), std::string::npos) << gone.output;
  writeFile(work / "nocards.dxf", readFile(tabulon::test::fixturesDir() / "qcad_examples_flange.dxf"));
  const CommandResult none = Tabulon("get " + Path("nocards.dxf") + " --card " + code);
  EXPECT_NE(none.exitCode, 0);
  EXPECT_NE(none.output.find("has no cards"), std::string::npos) << none.output;
  EXPECT_EQ(readFile(work / "card.dxf"), before);
}

}  // namespace
