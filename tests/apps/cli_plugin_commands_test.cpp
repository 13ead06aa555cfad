// The `tabulon` program's strip-prefixes and run subcommands, driven as a user would,
// with an independent reader (ezdxf) making and checking the drawings.
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <sstream>

using tabulon::test::cliPath;
using tabulon::test::CommandResult;
using tabulon::test::readFile;
using tabulon::test::runCommand;
using tabulon::test::runPython;
using tabulon::test::ScratchDir;
using tabulon::test::shellQuote;
using tabulon::test::writeFile;

namespace {

// Blocks A_B_C (used twice), X_Y and KEEP_ME (used once each) and a loose line; prints
// the handles of the three references in drawing order.
const char* const kMakeDrawing = R"(
import sys, ezdxf
doc = ezdxf.new('R2010')
msp = doc.modelspace()
for name in ['A_B_C', 'X_Y', 'KEEP_ME']:
    doc.blocks.new(name).add_line((0, 0), (10, 10))
refs = [msp.add_blockref('A_B_C', (0, 0)), msp.add_blockref('X_Y', (20, 0)),
        msp.add_blockref('A_B_C', (40, 0)), msp.add_blockref('KEEP_ME', (60, 0))]
msp.add_line((0, 0), (1, 1))
doc.saveas(sys.argv[1])
print(' '.join(r.dxf.handle for r in refs))
)";

// Prints the block names (without layouts), the names the references use, and the
// number of audit errors and fixes.
const char* const kDescribe = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print(','.join(sorted(b.name for b in doc.blocks if not b.name.startswith('*'))))
print(','.join(e.dxf.name for e in doc.modelspace().query('INSERT')))
print(len(auditor.errors), len(auditor.fixes))
)";

class CliPluginCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(tabulon::test::ezdxfAvailable()) << "/usr/bin/python3 cannot import ezdxf";
    input = dir / "in.dxf";
    const auto made = runPython(kMakeDrawing, {input.string()});
    ASSERT_EQ(made.exitCode, 0) << made.output;
    std::istringstream handles(made.output);
    std::string h;
    while (handles >> h) refs.push_back(h);
    ASSERT_EQ(refs.size(), 4u);
  }

  // Runs the program with its own configuration folder.
  // Runs the program with its own configuration folder; `redirect` is shell text put
  // after the program's arguments, inside a group so that standard error alone is
  // collected when standard output goes elsewhere.
  CommandResult tabulon(const std::string& args, const std::string& redirect = "") {
    return runCommand("(TABULON_HOME=" + shellQuote((dir / "home").string()) + " " + shellQuote(cliPath().string()) + " " +
                      args + " " + redirect + ")");
  }

  std::vector<std::string> describe(const std::filesystem::path& drawing) {
    const auto result = runPython(kDescribe, {drawing.string()});
    EXPECT_EQ(result.exitCode, 0) << result.output;
    std::vector<std::string> lines;
    std::istringstream in(result.output);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  ScratchDir dir;
  std::filesystem::path input;
  std::vector<std::string> refs;
};

}  // namespace

TEST_F(CliPluginCommands, StripPrefixesLeavesTheLastPartAndWritesADrawingThatPassesAudit) {
  const auto out = dir / "out.dxf";
  const auto result = tabulon("strip-prefixes " + shellQuote(input.string()) + " -o " + shellQuote(out.string()));
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_NE(result.output.find("找到 5 个"), std::string::npos) << result.output;
  EXPECT_EQ(describe(out), (std::vector<std::string>{"C,ME,Y", "C,Y,C,ME", "0 0"}));
  EXPECT_EQ(describe(input)[0], "A_B_C,KEEP_ME,X_Y");  // the input stays as it was
}

TEST_F(CliPluginCommands, StripPrefixesWithoutOutputChangesTheDrawingInPlace) {
  const auto result = tabulon("strip-prefixes " + shellQuote(input.string()));
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(describe(input)[0], "C,ME,Y");
}

TEST_F(CliPluginCommands, RunAnswersTheSelectionFromTheCommandLine) {
  const auto out = dir / "out.dxf";
  // Everything but the KEEP_ME reference.
  const auto result = tabulon("run " + shellQuote(input.string()) + " KrmDelBlkID --answer " +
                              shellQuote("all r #" + refs[3]) + " -o " + shellQuote(out.string()));
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(describe(out)[0], "C,KEEP_ME,Y");
}

TEST_F(CliPluginCommands, RunReadsStandardInputAndWritesStandardOutput) {
  const auto out = dir / "piped.dxf";
  const auto result = tabulon("run - _KrmDelBlkID -a all", "< " + shellQuote(input.string()) + " > " + shellQuote(out.string()));
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_NE(result.output.find("找到"), std::string::npos);  // the transcript went to standard error
  EXPECT_EQ(describe(out), (std::vector<std::string>{"C,ME,Y", "C,Y,C,ME", "0 0"}));
}

TEST_F(CliPluginCommands, ACommandWithoutCardLibraryPrintsTheMessageAndLeavesTheFile) {
  const auto before = readFile(input);
  const auto result = tabulon("--library " + shellQuote(dir.path().string()) + " run " + shellQuote(input.string()) +
                              " KrmCreateCard");
  ASSERT_EQ(result.exitCode, 0) << result.output;
  // An existing --library: framed, and the command says the program has no card editor.
  EXPECT_EQ(result.output.find("卡片源路径不存在"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("tabulon create"), std::string::npos) << result.output;
  const auto missing = tabulon("run " + shellQuote(input.string()) + " KrmCreateCard");
  ASSERT_EQ(missing.exitCode, 0) << missing.output;
  EXPECT_NE(missing.output.find("卡片源路径不存在"), std::string::npos) << missing.output;
  EXPECT_EQ(readFile(input), before);  // nothing changed: not saved
}

TEST_F(CliPluginCommands, FailuresEndWithAMessageAndANonZeroStatus) {
  struct Case {
    std::string args;
    std::string message;
  };
  writeFile(dir / "bad.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nnot a number\n");
  const Case cases[] = {
      {"run " + shellQuote(input.string()) + " NoSuchCommand", "unknown command \"NoSuchCommand\""},
      {"run " + shellQuote((dir / "missing.dxf").string()) + " KrmDelBlkID", "no such drawing"},
      {"run " + shellQuote((dir / "bad.dxf").string()) + " KrmDelBlkID", "cannot read the drawing"},
      {"--library /no/such/folder run " + shellQuote(input.string()) + " KrmDelBlkID", "--library: not a folder"},
      {"run " + shellQuote(input.string()), "command is required"},
  };
  for (const auto& c : cases) {
    const auto result = tabulon(c.args);
    EXPECT_NE(result.exitCode, 0) << c.args;
    EXPECT_NE(result.output.find(c.message), std::string::npos) << c.args << "\n" << result.output;
  }
  EXPECT_EQ(tabulon("run --help").exitCode, 0);
  EXPECT_EQ(tabulon("strip-prefixes --help").exitCode, 0);
}
