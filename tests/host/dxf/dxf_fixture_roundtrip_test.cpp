#include "dxf_test_util.h"

#include "host/dxf/dxf_error.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

std::vector<std::string> fixtureNames() {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(tabulon::test::fixturesDir()))
    if (e.path().extension() == ".dxf") names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

class DxfFixtureRoundTrip : public ::testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(DxfFixtureRoundTrip, SavedAndReloadedKeepsObjectsTextsAndExtendedData) {
  std::string path = (tabulon::test::fixturesDir() / GetParam()).string();
  DxfLoadInfo info;
  std::unique_ptr<QaDbDatabase> db;
  try {
    db = loadPath(path, &info);
  } catch (const DxfError& e) {
    ASSERT_NE(GetParam().find("broken"), std::string::npos) << e.what();
    EXPECT_NE(std::string(e.what()).find(GetParam()), std::string::npos) << e.what();
    return;
  }
  DrawingSummary before = summarize(*db);
  std::string saved = saveText(*db);
  DxfLoadInfo again;
  auto reloaded = loadText(saved, &again);
  DrawingSummary after = summarize(*reloaded);

  EXPECT_EQ(before.typeCounts, after.typeCounts);
  EXPECT_EQ(before.entitiesPerBlock, after.entitiesPerBlock);
  EXPECT_EQ(before.handles, after.handles);
  EXPECT_EQ(before.texts, after.texts);
  EXPECT_EQ(before.xdata, after.xdata);
  // A file we wrote has no flaw the original did not have.
  std::set<std::string> known;
  for (const auto& f : info.audit.findings()) known.insert(f.message);
  for (const auto& f : again.audit.findings()) EXPECT_TRUE(known.count(f.message)) << f.message;
}

INSTANTIATE_TEST_SUITE_P(Fixtures, DxfFixtureRoundTrip, ::testing::ValuesIn(fixtureNames()),
                         [](const auto& info) {
                           std::string n = info.param.substr(0, info.param.size() - 4);
                           for (char& c : n)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return n;
                         });
