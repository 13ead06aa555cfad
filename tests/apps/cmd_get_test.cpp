// `tabulon cards` and `tabulon get`: the cards of a drawing and the rows read back, also
// the round trip from `create` through `get` and `update` on the sample process card.
#include <gtest/gtest.h>

#include <map>

#include "card/table_rows_file.h"
#include "placed_card_cli_fixture.h"
#include "shell/sample_library.h"

namespace {

using clitest::PlacedCardCli;
using tabulon::test::CommandResult;
using tabulon::test::shellQuote;

TEST_F(PlacedCardCli, CardsListsCodeNameTemplatePagesAndTables) {
  ASSERT_EQ(code.size(), 8u);
  const CommandResult listed = TabulonOut("cards " + Path("card.dxf"));
  ASSERT_EQ(listed.exitCode, 0) << listed.output;
  EXPECT_NE(listed.output.find(code + "  机加工艺卡  2 pages\n"), std::string::npos) << listed.output;
  EXPECT_NE(listed.output.find("  first page: first\n"), std::string::npos);
  EXPECT_NE(listed.output.find("  continuation: next\n"), std::string::npos);
  EXPECT_NE(listed.output.find("    ROW: 序号 工序 内容\n"), std::string::npos);

  const CommandResult json = TabulonOut("cards --json " + Path("card.dxf"));
  tabulon::test::writeFile(work / "cards.json", json.output);
  const auto parsed = tabulon::test::runPython(
      "import json,sys\nc=json.load(open(sys.argv[1]))[0]\nprint(c['pages'], c['template'].endswith('card.crd'), "
      "' '.join(b['name'] for b in c['continuation']['blocks']))",
      {(work / "cards.json").string()});
  EXPECT_EQ(parsed.output, "2 True TITLE BATCH ROW SIGN\n");
}

TEST_F(PlacedCardCli, GetWritesTheRowsByTheOutputsExtension) {
  const CommandResult csv = TabulonOut("get " + Path("card.dxf") + " --card " + code);
  ASSERT_EQ(csv.exitCode, 0) << csv.output;
  const std::string head = "序号,工序,内容\n,工序1,\n,工序2,\n";
  EXPECT_EQ(csv.output.substr(0, head.size()), head);

  ASSERT_EQ(TabulonOut("get " + Path("card.dxf") + " --pick 10,56 --block TITLE -o " + Path("title.tsv")).exitCode, 0);
  EXPECT_EQ(tabulon::test::readFile(work / "title.tsv"), "图号\t页码\t总页\t批总\n\t1\t2\t2\n");
  EXPECT_EQ(Steps("card.dxf", "--card " + code), "工序1\n工序2\n工序3\n工序4\n工序5\n工序6\n工序7\n");
}

TEST_F(PlacedCardCli, GetRefusesWhatTheDrawingOrCardDoesNotHave) {
  struct Case {
    std::string args;
    std::string message;
  };
  const Case cases[] = {
      {"--card NOSUCHCD", "the drawing has no card with the code \"NOSUCHCD\""},
      {"--pick 5000,5000", "has a block at 5000.000000,5000.000000"},
      {"--card " + code + " --block NOSUCH", "--block NOSUCH: the card has no such block (it has TITLE, BATCH, ROW, SIGN)"},
      {"--card " + code + " -o " + Path("rows.xlsx"), "unknown format \".xlsx\""},
      {"", "give the card by --card CODE or --pick X,Y"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const CommandResult result = Tabulon("get " + Path("card.dxf") + " " + c.args);
    EXPECT_NE(result.exitCode, 0);
    EXPECT_NE(result.output.find(c.message), std::string::npos) << result.output;
  }
}

// Rows of a data file by column, for comparing what went in with what came back.
std::map<std::wstring, std::vector<std::wstring>> Columns(const std::filesystem::path& file) {
  std::map<std::wstring, std::vector<std::wstring>> columns;
  auto rows = tabulon::ReadTableRows(file);
  EXPECT_TRUE(rows.ok()) << rows.describe();
  if (!rows.ok()) return columns;
  for (const auto& row : rows.value()) {
    for (const auto& [name, text] : row) columns[name].push_back(text);
  }
  return columns;
}

TEST(ProcessCardRoundTrip, CreateThenGetGivesTheSameRowsAndUpdateWithThemChangesNothing) {
  tabulon::test::ScratchDir lib, work;
  tabulon::samples::WriteSampleLibrary(lib.path());
  // 24 operations over two pages: long texts wrap over row blocks, one breaks by force.
  std::string data = "工序号,工序名称,工序内容,设备\n";
  for (int i = 1; i <= 24; ++i) {
    std::string content = "车外圆" + std::to_string(i);
    if (i % 5 == 0) content = "精车各外圆至图样尺寸，保证同轴度0.02，表面粗糙度Ra1.6，倒角去毛刺，检验合格后转下道工序";
    if (i == 3) content = "\"夹左端外圆，按下列工步加工：\r\n(1) 车右端面见平\r\n(2) 钻中心孔B2.5\"";
    data += std::to_string(10 * i) + ",粗车," + content + ",CA6140\n";
  }
  tabulon::test::writeFile(work / "ops.csv", data);
  const auto tabulon = [&](const std::string& args) {
    return tabulon::test::runCommand(shellQuote(tabulon::test::cliPath().string()) + " --library " +
                                     shellQuote(lib.path().string()) + " " + args + " 2>&1");
  };
  const std::string card = shellQuote(KrmToUtf8(tabulon::samples::kProcessCard));
  const std::string ops = shellQuote((work / "ops.csv").string());
  const std::string made = shellQuote((work / "card.dxf").string());
  ASSERT_EQ(tabulon("create --card " + card + " --data ROW=" + ops + " -o " + made).exitCode, 0);

  const CommandResult back = tabulon("get " + made + " --pick 60,160 -o " + shellQuote((work / "back.csv").string()));
  ASSERT_EQ(back.exitCode, 0) << back.output;
  const auto given = Columns(work / "ops.csv");
  const auto read = Columns(work / "back.csv");
  for (const auto& [name, texts] : given) {
    SCOPED_TRACE(KrmToUtf8(name));
    ASSERT_TRUE(read.count(name));
    EXPECT_EQ(read.at(name), texts);
  }
  EXPECT_EQ(read.at(L"工序内容").at(2), L"夹左端外圆，按下列工步加工：\r\n(1) 车右端面见平\r\n(2) 钻中心孔B2.5");

  const CommandResult same = tabulon("update " + made + " --pick 60,160 --data ROW=" + ops + " -o " +
                                     shellQuote((work / "same.dxf").string()));
  ASSERT_EQ(same.exitCode, 0) << same.output;
  EXPECT_NE(same.output.find(": 0 row blocks and 0 other blocks written, 0 pages added, 0 cut, 0 objects changed"),
            std::string::npos)
      << same.output;
}

}  // namespace
