// A card library and a drawing with one card made by `tabulon create`, for the tests of
// the subcommands on placed cards. The library is that of the generation tests: 5 row
// blocks on the first page, 8 on each continuation; the card is placed at the origin, so
// its first row block covers the point 10,56.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "drawing/generation_library.h"
#include "support/test_support.h"

namespace clitest {

using tabulon::test::CommandResult;
using tabulon::test::shellQuote;

class PlacedCardCli : public ::testing::Test {
 protected:
  void SetUp() override {
    gentest::WriteSampleLibrary(lib.path());
    std::string rows = "工序,内容\n";
    for (int i = 1; i <= 7; ++i) rows += "工序" + std::to_string(i) + ",\n";
    tabulon::test::writeFile(work / "rows.csv", rows);
    const CommandResult made = Tabulon("create --card card --data ROW=" + Path("rows.csv") + " -o " + Path("card.dxf"));
    ASSERT_EQ(made.exitCode, 0) << made.output;
    code = CardCode("card.dxf");
  }

  // Runs `tabulon --library LIB ARGS`, standard error with standard output.
  CommandResult Tabulon(const std::string& args) const {
    return tabulon::test::runCommand(shellQuote(tabulon::test::cliPath().string()) + " --library " +
                                     shellQuote(lib.path().string()) + " " + args + " 2>&1");
  }
  // The same with standard error left out.
  CommandResult TabulonOut(const std::string& args) const {
    return tabulon::test::runCommand(shellQuote(tabulon::test::cliPath().string()) + " --library " +
                                     shellQuote(lib.path().string()) + " " + args + " 2>/dev/null");
  }

  std::string Path(const std::string& name) const { return shellQuote((work / name).string()); }

  // The code of the first card `tabulon cards --json` lists.
  std::string CardCode(const std::string& drawing) const {
    const CommandResult listed = TabulonOut("cards --json " + Path(drawing));
    const auto at = listed.output.find("\"code\": \"");
    if (at == std::string::npos) return "";
    return listed.output.substr(at + 9, 8);
  }

  // The steps (column "工序") of the card's rows, one per line.
  std::string Steps(const std::string& drawing, const std::string& choice) const {
    const CommandResult got = TabulonOut("get " + Path(drawing) + " " + choice + " -o " + Path("steps.json"));
    if (got.exitCode != 0) return "<get failed>";
    return tabulon::test::runPython("import json,sys\nfor r in json.load(open(sys.argv[1])): print(r['工序'])",
                                    {(work / "steps.json").string()})
        .output;
  }

  tabulon::test::ScratchDir lib;
  tabulon::test::ScratchDir work;
  std::string code;
};

}  // namespace clitest
