// `tabulon create`: cards from data files in every supported format, batches, and the
// errors that must leave the drawing alone. The saved drawings are read by ezdxf.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "drawing/generation_library.h"
#include "editor/xls_writer.h"
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

// Prints "BLOCK TAG: text text ..." for the given tags, references in drawing order,
// then the audit's error count.
const char* const kAttributes = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
for cell in sys.argv[2:]:
    block, tag = cell.split('.')
    texts = [a.dxf.text for e in doc.modelspace().query('INSERT') if e.dxf.name.endswith('_' + block)
             for a in e.attribs if a.dxf.tag == tag]
    print(cell + ':', ' '.join(t if t else '-' for t in texts))
print('errors', len(doc.audit().errors))
)";

class CreateCommand : public ::testing::Test {
 protected:
  void SetUp() override { gentest::WriteSampleLibrary(lib.path()); }  // 5 rows first, 8 after

  CommandResult Create(const std::string& args) {
    return runCommand(shellQuote(cliPath().string()) + " --library " + shellQuote(lib.path().string()) + " create " +
                      args + " 2>&1");
  }
  std::string Attributes(const std::filesystem::path& drawing, const std::string& specs) {
    std::vector<std::string> args = {drawing.string()};
    std::istringstream in(specs);
    for (std::string word; in >> word;) args.push_back(word);
    return runPython(kAttributes, args).output;
  }
  std::string Out() const { return shellQuote((work / "out.dxf").string()); }

  ScratchDir lib;
  ScratchDir work;
};

struct FormatCase {
  const char* file;
  const char* text;
};

TEST_F(CreateCommand, ReadsRowsFromEveryDataFormat) {
  const FormatCase cases[] = {
      {"rows.csv", "工序,内容\n车,\"外圆, 端面\"\n铣,键槽\n钻,\n"},
      {"rows.tsv", "工序\t内容\n车\t外圆, 端面\n铣\t键槽\n钻\t\n"},
      {"rows.json", R"([{"工序": "车", "内容": "外圆, 端面"}, {"工序": "铣", "内容": "键槽"}, {"工序": "钻"}])"},
      {"rows.txt", "\"工序\"\t\"内容\"\t\n\"车\"\t\"外圆, 端面\"\t\n\"铣\"\t\"键槽\"\t\n\"钻\"\t\"\"\t\n"},
  };
  for (const FormatCase& c : cases) {
    SCOPED_TRACE(c.file);
    writeFile(work / c.file, c.text);
    const CommandResult result = Create("--card card --data ROW=" + shellQuote((work / c.file).string()) + " -o " + Out());
    ASSERT_EQ(result.exitCode, 0) << result.output;
    EXPECT_EQ(Attributes(work / "out.dxf", "ROW.工序 ROW.内容"),
              "ROW.工序: 车 铣 钻 - -\nROW.内容: 外圆, 端面 键槽 - - -\nerrors 0\n");
  }
}

TEST_F(CreateCommand, ReadsRowsFromSpreadsheets) {
  const auto made = runPython(R"(
import sys, openpyxl
wb = openpyxl.Workbook()
for row in [["工序", "内容"], ["车", "外圆, 端面"], ["铣", "键槽"], ["钻", None]]:
    wb.active.append(row)
wb.save(sys.argv[1])
)",
                              {(work / "rows.xlsx").string()});
  ASSERT_EQ(made.exitCode, 0) << made.output;
  ASSERT_TRUE(tabulon::editor::WriteXlsFile(work / "rows.xls", {{L"工序", L"内容"}, {L"车", L"外圆, 端面"}, {L"铣", L"键槽"}, {L"钻"}}).ok());
  for (const char* file : {"rows.xlsx", "rows.xls"}) {
    SCOPED_TRACE(file);
    const CommandResult result = Create("--card card --data ROW=" + shellQuote((work / file).string()) + " -o " + Out());
    ASSERT_EQ(result.exitCode, 0) << result.output;
    EXPECT_EQ(Attributes(work / "out.dxf", "ROW.工序 ROW.内容"),
              "ROW.工序: 车 铣 钻 - -\nROW.内容: 外圆, 端面 键槽 - - -\nerrors 0\n");
  }
  writeFile(work / "bad.xlsx", "\"工序\"\t\n");
  const CommandResult bad = Create("--card card --data ROW=" + shellQuote((work / "bad.xlsx").string()) + " -o " + Out());
  EXPECT_NE(bad.exitCode, 0);
  EXPECT_NE(bad.output.find("bad.xlsx"), std::string::npos) << bad.output;
}

TEST_F(CreateCommand, NumbersTheCardsOfABatchContinuously) {
  std::string rows = "工序\n";
  for (int i = 1; i <= 14; ++i) rows += "工序" + std::to_string(i) + "\n";
  writeFile(work / "rows14.csv", rows);
  writeFile(work / "rows3.csv", "工序\n甲\n乙\n丙\n");
  writeFile(work / "batch.json", R"({"insert": [100, 100], "cards": [
      {"card": "card", "data": {"ROW": [{"工序": "a"}, {"工序": "b"}, {"工序": "c"}, {"工序": "d"}, {"工序": "e"}, {"工序": "f"}]}},
      {"card": "card.crd", "data": {"ROW": "rows3.csv", "TITLE": [{"图号": "TB-2"}]}},
      {"card": "card", "data": {"ROW": "rows14.csv"}}]})");
  const CommandResult result = Create("--batch " + shellQuote((work / "batch.json").string()) + " -o " + Out());
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(Attributes(work / "out.dxf", "BATCH.批页 TITLE.批总 TITLE.页码 TITLE.图号"),
            "BATCH.批页: 1 2 3 4 5 6\nTITLE.批总: 6 6 6 6 6 6\nTITLE.页码: 1 2 1 1 2 3\nTITLE.图号: - - TB-2 - - -\n"
            "errors 0\n");

  // The same batch from repeated --card options, with the batch starting at 11.
  const CommandResult repeated =
      Create("--card card --card card --data 1:ROW=" + shellQuote((work / "rows3.csv").string()) + " --data 2:ROW=" +
             shellQuote((work / "rows14.csv").string()) + " --batch-start 11 -o " + Out());
  ASSERT_EQ(repeated.exitCode, 0) << repeated.output;
  EXPECT_EQ(Attributes(work / "out.dxf", "BATCH.批页 TITLE.批总"), "BATCH.批页: 11 12 13 14\nTITLE.批总: 14 14 14 14\nerrors 0\n");
}

TEST_F(CreateCommand, LeavesOutUnknownColumnsOnlyWhenAskedTo) {
  writeFile(work / "extra.csv", "工序,备注\n车,快\n");
  const CommandResult result =
      Create("--card card --data ROW=" + shellQuote((work / "extra.csv").string()) + " --ignore-unknown-columns -o " + Out());
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(Attributes(work / "out.dxf", "ROW.工序"), "ROW.工序: 车 - - - -\nerrors 0\n");
}

TEST_F(CreateCommand, BadInputLeavesTheDrawingUntouched) {
  writeFile(work / "rows.csv", "工序\n车\n");
  ASSERT_EQ(Create("--card card --data ROW=" + shellQuote((work / "rows.csv").string()) + " -o " + Out()).exitCode, 0);
  const std::string before = readFile(work / "out.dxf");
  writeFile(work / "nosuch.csv", "x\n1\n");
  writeFile(work / "bad.csv", "工序\n\"open\n");
  writeFile(work / "extra.csv", "工序,备注,材料\n车,快,钢\n");
  const std::string in = shellQuote((work / "out.dxf").string()) + " ";

  struct Case {
    std::string args;
    std::string message;
  };
  const Case cases[] = {
      {"--card absent --data ROW=" + shellQuote((work / "rows.csv").string()), "Load card error ! please check card Ppath="},
      {"--card card --data ROW=" + shellQuote((work / "missing.csv").string()), "missing.csv: cannot open the data file"},
      {"--card card --data ROW=" + shellQuote((work / "bad.csv").string()), "bad.csv:2: a quoted field is not closed"},
      {"--card card --data NOSUCH=" + shellQuote((work / "nosuch.csv").string()),
       "the data names the block \"NOSUCH\", which the card does not have (it has TITLE, BATCH, ROW, SIGN)"},
      {"--card card --data ROW=" + shellQuote((work / "rows.ods").string()), "unknown data format \".ods\""},
      {"--card card --data ROW=" + shellQuote((work / "extra.csv").string()),
       "extra.csv: 备注: card card: no cell of the block ROW takes the data columns 备注, 材料 (the block has 序号"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args);
    const CommandResult result = Create(in + c.args + " -o " + Out());
    EXPECT_NE(result.exitCode, 0);
    EXPECT_NE(result.output.find(c.message), std::string::npos) << result.output;
    // Our message starts a line of its own and every line is ended.
    const std::size_t ours = result.output.find("tabulon: ");
    ASSERT_NE(ours, std::string::npos) << result.output;
    EXPECT_TRUE(ours == 0 || result.output[ours - 1] == '\n') << result.output;
    EXPECT_EQ(result.output.back(), '\n');
    EXPECT_EQ(readFile(work / "out.dxf"), before);
  }

  std::filesystem::remove(lib / "first.dxf");
  const CommandResult noDrawing = Create(in + "--card card --data ROW=" + shellQuote((work / "rows.csv").string()) + " -o " + Out());
  EXPECT_NE(noDrawing.exitCode, 0);
  EXPECT_NE(noDrawing.output.find("获取图纸信息失败"), std::string::npos) << noDrawing.output;
  EXPECT_EQ(readFile(work / "out.dxf"), before);
}

}  // namespace
