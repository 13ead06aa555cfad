// `tabulon save` on every real drawing of the fixtures folder, checked by an
// independent reader: ezdxf must find in the saved file the same entities per
// block, the same texts and the same extended data as in the original, and
// no audit error. tests/support/ezdxf_canonical.py says what it found.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/test_support.h"

using tabulon::test::CommandResult;
using tabulon::test::ScratchDir;
using tabulon::test::shellQuote;

namespace {

// How ezdxf is to read an original, where its plain reading does not serve.
struct ReadingOfOriginal {
  std::string mode = "readfile";  // or "recover"
  std::string encoding;           // overrides the file's code page
  std::string why;
};

const std::map<std::string, ReadingOfOriginal>& specialOriginals() {
  static const std::map<std::string, ReadingOfOriginal> table = {
      {"ezdxf_recover01_broken.dxf",
       {"recover", "", "ezdxf.readfile refuses it (ENDSEC without SECTION); its recover mode reads it"}},
      {"ezdxf_recover02_broken.dxf",
       {"recover", "", "ezdxf.readfile refuses it (critical structure error in TABLES); its recover mode reads it"}},
      {"sdcad_poumiantu2_R2000_gbk_nocodepage.dxf",
       {"readfile", "gbk", "no $DWGCODEPAGE: ezdxf would take cp1252, but the bytes are GBK (as we read them)"}},
  };
  return table;
}

std::vector<std::string> fixtureNames() {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(tabulon::test::fixturesDir()))
    if (e.path().extension() == ".dxf") names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// What ezdxf reads in `path`, or a null value with the failure added.
nlohmann::json canonical(const std::filesystem::path& path, const ReadingOfOriginal& how, const ScratchDir& dir,
                         const std::string& name) {
  const std::string script = tabulon::test::readFile(tabulon::test::sourceDir() / "tests/support/ezdxf_canonical.py");
  const std::filesystem::path out = dir / (name + ".json");
  CommandResult r = tabulon::test::runPython(script, {path.string(), out.string(), how.mode, how.encoding});
  if (r.exitCode != 0) {
    ADD_FAILURE() << "ezdxf cannot read " << path << ":\n" << r.output;
    return nullptr;
  }
  return nlohmann::json::parse(tabulon::test::readFile(out));
}

// One expectation per block: the failure names the block that differs.
void expectSamePerBlock(const nlohmann::json& original, const nlohmann::json& saved, const char* what) {
  for (const auto& [block, value] : original.items())
    EXPECT_EQ(saved.value(block, nlohmann::json()), value) << what << " of block " << block;
  for (const auto& [block, value] : saved.items())
    EXPECT_TRUE(original.contains(block)) << "block " << block << " is new in the saved file";
}

class SaveCommandFixtures : public ::testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(SaveCommandFixtures, IndependentReaderFindsTheSameBlocksTextsAndExtendedData) {
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  const std::filesystem::path original = tabulon::test::fixturesDir() / GetParam();
  ScratchDir dir;
  const std::filesystem::path saved = dir / "saved.dxf";
  CommandResult r = tabulon::test::runCommand(shellQuote(tabulon::test::cliPath().string()) + " save -q " +
                                              shellQuote(original.string()) + " " + shellQuote(saved.string()) + " 2>&1");
  ASSERT_EQ(r.exitCode, 0) << r.output;

  ReadingOfOriginal how;
  if (auto it = specialOriginals().find(GetParam()); it != specialOriginals().end()) how = it->second;
  SCOPED_TRACE(how.why.empty() ? std::string("original read by ezdxf.readfile") : how.why);
  const nlohmann::json before = canonical(original, how, dir, "original");
  const nlohmann::json after = canonical(saved, ReadingOfOriginal{}, dir, "saved");
  ASSERT_FALSE(before.is_null());
  ASSERT_FALSE(after.is_null());

  expectSamePerBlock(before["blocks"], after["blocks"], "entities");
  expectSamePerBlock(before["texts"], after["texts"], "texts");
  const auto& xa = before["xdata"];
  const auto& xb = after["xdata"];
  EXPECT_EQ(xa.size(), xb.size()) << "objects with extended data";
  for (std::size_t i = 0; i < std::min(xa.size(), xb.size()); ++i)
    if (xa[i] != xb[i]) {
      ADD_FAILURE() << "first extended data that differs:\n  original " << xa[i].dump() << "\n  saved    " << xb[i].dump();
      break;
    }
  EXPECT_EQ(after["audit"], 0) << "audit errors in the saved file";
}

INSTANTIATE_TEST_SUITE_P(Fixtures, SaveCommandFixtures, ::testing::ValuesIn(fixtureNames()), [](const auto& info) {
  std::string n = info.param.substr(0, info.param.size() - 4);
  for (char& c : n)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return n;
});
