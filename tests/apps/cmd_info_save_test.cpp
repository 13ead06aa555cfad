// `tabulon info` and `tabulon save` on the bundled example and on real
// drawings: what they print, the files they write, and clear failures.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>

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

CommandResult runCli(const std::string& args) { return runCommand(shellQuote(cliPath().string()) + " " + args + " 2>&1"); }

std::string example() { return (tabulon::test::sourceDir() / "resources/examples/process_card_page.dxf").string(); }
std::string fixture(const std::string& name) { return (tabulon::test::fixturesDir() / name).string(); }

}  // namespace

TEST(InfoCommand, DescribesTheBundledExample) {
  CommandResult r = runCli("info " + shellQuote(example()));
  ASSERT_EQ(r.exitCode, 0) << r.output;
  for (const char* line : {"version: R2018 (AC1032)\n", "encoding: UTF-8", "model space: 10 entities\n", "  ATTRIB 4\n",
                           "  INSERT 1\n", "  LINE 4\n", "  MTEXT 1\n", "block TITLE: 6 entities\n", "  ATTDEF 4\n",
                           "groups: 1\n", "  *A1: 3 members \"page 1\"\n", "  KRM_XDATA_CELL 3\n",
                           "  KRM_TABULONPARA 1\n", "text styles: 2\n", "repairs: 0\n"})
    EXPECT_NE(r.output.find(line), std::string::npos) << line << "\n" << r.output;
}

TEST(InfoCommand, JsonCarriesTheSameFacts) {
  CommandResult r = runCommand(shellQuote(cliPath().string()) + " info --json " +
                               shellQuote(fixture("sdcad_zuankong_tuli_R2004_gbk.dxf")));
  ASSERT_EQ(r.exitCode, 0) << r.output;
  auto j = nlohmann::json::parse(r.output);
  EXPECT_EQ(j["version"], "R2004");
  EXPECT_EQ(j["encoding"], "ANSI_936");
  EXPECT_EQ(j["blocks"]["*Model_Space"]["types"]["INSERT"], 27);
  EXPECT_TRUE(j["blocks"].contains("双桥静力触探孔"));
  EXPECT_EQ(j["groups"].size(), 0u);
  EXPECT_TRUE(j["repairs"].is_array());
  EXPECT_TRUE(j["xdataApplications"].contains("ACAD_PSEXT"));
}

TEST(InfoCommand, ReportsRepairsAndFailsClearlyOnBadFiles) {
  CommandResult repaired = runCli("info " + shellQuote(fixture("ezdxf_duplicate_handles_r13.dxf")));
  ASSERT_EQ(repaired.exitCode, 0) << repaired.output;
  EXPECT_NE(repaired.output.find("duplicate handle"), std::string::npos) << repaired.output;

  ScratchDir dir;
  writeFile(dir / "cut.dxf", readFile(example()).substr(0, 2000));
  struct Case {
    std::string path;
    std::string message;
  };
  for (const Case& c : {Case{(dir / "cut.dxf").string(), "cut.dxf:"}, Case{(dir / "none.dxf").string(), "none.dxf"},
                        Case{dir.path().string(), "is a folder"}}) {
    CommandResult r = runCli("info " + shellQuote(c.path));
    EXPECT_NE(r.exitCode, 0) << c.path;
    EXPECT_NE(r.output.find("tabulon: "), std::string::npos) << r.output;
    EXPECT_NE(r.output.find(c.message), std::string::npos) << r.output;
  }
}

TEST(SaveCommand, WritesTheVersionAskedAndKeepsTheContent) {
  ScratchDir dir;
  struct Case {
    std::string input;
    std::string version;  // "" for the default
    std::string acadver;
  };
  for (const Case& c : {Case{example(), "R2000", "AC1015"}, Case{example(), "2010", "AC1024"},
                        Case{fixture("libredwg_example_r12.dxf"), "", "AC1015"},
                        Case{fixture("sdcad_Project3_R2000_gbk.dxf"), "R2018", "AC1032"}}) {
    std::string out = (dir / "out.dxf").string();
    CommandResult r = runCli("save " + shellQuote(c.input) + " " + shellQuote(out) +
                              (c.version.empty() ? "" : " --version " + c.version));
    ASSERT_EQ(r.exitCode, 0) << r.output;
    EXPECT_NE(readFile(out).find("$ACADVER\n  1\n" + c.acadver + "\n"), std::string::npos) << c.input;
    CommandResult again = runCli("info --json " + shellQuote(out));
    ASSERT_EQ(again.exitCode, 0) << again.output;
    auto saved = nlohmann::json::parse(again.output);
    auto original = nlohmann::json::parse(runCli("info --json " + shellQuote(c.input)).output);
    EXPECT_EQ(saved["blocks"]["*Model_Space"], original["blocks"]["*Model_Space"]) << c.input;
    EXPECT_EQ(saved["xdataApplications"], original["xdataApplications"]) << c.input;
    EXPECT_LE(saved["repairs"].size(), original["repairs"].size()) << again.output;
  }
}

TEST(SaveCommand, StandardInputAndOutput) {
  CommandResult r = runCommand("cat " + shellQuote(example()) + " | " + shellQuote(cliPath().string()) +
                               " save - - --version R2004");
  ASSERT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.output.rfind("  0\nSECTION\n", 0), 0u);
  EXPECT_NE(r.output.find("AC1018"), std::string::npos);
  // GBK bytes of the Chinese attribute text "机械加工工艺过程卡片" start the value.
  EXPECT_NE(r.output.find("\xBB\xFA\xD0\xB5\xBC\xD3\xB9\xA4"), std::string::npos);
}

TEST(SaveCommand, RefusesBadVersionsAndKeepsTheTargetOnFailure) {
  ScratchDir dir;
  writeFile(dir / "target.dxf", "old");
  CommandResult bad = runCli("save " + shellQuote(example()) + " " + shellQuote((dir / "target.dxf").string()) +
                              " --version R14");
  EXPECT_EQ(bad.exitCode, 2);
  EXPECT_NE(bad.output.find("unknown version \"R14\""), std::string::npos) << bad.output;
  EXPECT_EQ(readFile(dir / "target.dxf"), "old");

  writeFile(dir / "broken.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n");
  CommandResult broken = runCli("save " + shellQuote((dir / "broken.dxf").string()) + " " +
                                 shellQuote((dir / "target.dxf").string()));
  EXPECT_NE(broken.exitCode, 0);
  EXPECT_NE(broken.output.find("broken.dxf:7: group code 10: file ends after the group code"), std::string::npos)
      << broken.output;
  EXPECT_EQ(readFile(dir / "target.dxf"), "old");

  CommandResult nowhere = runCli("save " + shellQuote(example()) + " " + shellQuote((dir / "no/such/dir/x.dxf").string()));
  EXPECT_NE(nowhere.exitCode, 0);
  EXPECT_NE(nowhere.output.find("no/such/dir/x.dxf: cannot create the file"), std::string::npos) << nowhere.output;
}

TEST(SaveCommand, ConvertedOldDrawingPassesAnIndependentAudit) {
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  ScratchDir dir;
  std::string out = (dir / "r12.dxf").string();
  ASSERT_EQ(runCli("save -q " + shellQuote(fixture("acadsharp_sample_AC1009_ascii.dxf")) + " " + shellQuote(out)).exitCode, 0);
  CommandResult r = runPython("import sys, ezdxf\ndoc = ezdxf.readfile(sys.argv[1])\nprint(doc.dxfversion, len(doc.audit().errors))\n",
                              {out});
  EXPECT_EQ(r.output, "AC1015 0\n");
}
