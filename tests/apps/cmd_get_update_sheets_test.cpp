// `tabulon get` and `tabulon update` with the editor's exchange formats: the rows of a
// placed card go out as .xlsx, .xls or exchange text and come back changed.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "drawing/generation_library.h"
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

class SheetRoundTrip : public ::testing::Test {
 protected:
  void SetUp() override {
    gentest::WriteSampleLibrary(lib.path());
    writeFile(work / "rows.csv", "工序,内容\n车,外圆\n铣,键槽\n");
    ASSERT_EQ(Run("create --card card --data ROW=" + Path("rows.csv") + " -o " + Path("card.dxf")).exitCode, 0);
    std::istringstream listing(Run("cards " + Path("card.dxf")).output);
    listing >> code;
  }
  CommandResult Run(const std::string& args) {
    return runCommand(shellQuote(cliPath().string()) + " --library " + shellQuote(lib.path().string()) + " " + args + " 2>&1");
  }
  std::string Path(const std::string& name) const { return shellQuote((work / name).string()); }

  ScratchDir lib;
  ScratchDir work;
  std::string code;
};

TEST_F(SheetRoundTrip, RowsEditedInASpreadsheetUpdateTheCard) {
  ASSERT_EQ(code.size(), 8u);
  const CommandResult got = Run("get " + Path("card.dxf") + " --card " + code + " -o " + Path("rows.xlsx"));
  ASSERT_EQ(got.exitCode, 0) << got.output;
  const CommandResult edited = runPython(R"(
import sys, openpyxl
wb = openpyxl.load_workbook(sys.argv[1])
ws = wb.active
ws["B2"] = "精车"
ws.append([None, "磨", "平面"])
wb.save(sys.argv[1])
)",
                                         {(work / "rows.xlsx").string()});
  ASSERT_EQ(edited.exitCode, 0) << edited.output;
  const CommandResult updated =
      Run("update " + Path("card.dxf") + " --card " + code + " --data ROW=" + Path("rows.xlsx") + " -o " + Path("new.dxf"));
  ASSERT_EQ(updated.exitCode, 0) << updated.output;
  ASSERT_EQ(Run("get " + Path("new.dxf") + " --card " + code + " -o " + Path("back.txt")).exitCode, 0);
  EXPECT_EQ(readFile(work / "back.txt"),
            "\"序号\"\t\"工序\"\t\"内容\"\t\n\"\"\t\"精车\"\t\"外圆\"\t\n\"\"\t\"铣\"\t\"键槽\"\t\n\"\"\t\"磨\"\t\"平面\"\t\n");
}

TEST_F(SheetRoundTrip, RowsGoOutAsXlsForXlrd) {
  ASSERT_EQ(Run("get " + Path("card.dxf") + " --card " + code + " -o " + Path("rows.xls")).exitCode, 0);
  const CommandResult read = runPython(R"(
import sys, xlrd
ws = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)
for r in range(ws.nrows):
    print("|".join(ws.row_values(r)))
)",
                                       {(work / "rows.xls").string()});
  EXPECT_EQ(read.output, "序号|工序|内容\n|车|外圆\n|铣|键槽\n");
}

TEST_F(SheetRoundTrip, DamagedSpreadsheetLeavesTheDrawing) {
  writeFile(work / "bad.xls", "not a workbook");
  const std::string before = readFile(work / "card.dxf");
  const CommandResult updated =
      Run("update " + Path("card.dxf") + " --card " + code + " --data ROW=" + Path("bad.xls") + " -o " + Path("card.dxf"));
  EXPECT_NE(updated.exitCode, 0);
  EXPECT_NE(updated.output.find("bad.xls"), std::string::npos) << updated.output;
  EXPECT_EQ(readFile(work / "card.dxf"), before);
}

}  // namespace
