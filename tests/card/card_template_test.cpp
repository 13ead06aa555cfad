#include "card/card_template.h"

#include <gtest/gtest.h>

#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;

TEST(BlockNamesMatch, FollowsTheGeneratedNameRule) {
  const std::tuple<const wchar_t*, const wchar_t*, bool> cases[] = {
      {L"ABC", L"ABC", true},    {L"ABC", L"abc", false},  {L"ABC", L"X_ABC", true},   {L"ABC", L"ABC_X", true},
      {L"X_ABC", L"ABC", true},  {L"ABC", L"XABC", false}, {L"ABC", L"ABCX", false},   {L"AB", L"X_ABC_Y", false},
      {L"行", L"U1F_行", true},  {L"ABC", L"XYZ", false},  {L"ABC", L"X_ABCD", false}, {L"", L"A", false}};
  for (const auto& [a, b, match] : cases) EXPECT_EQ(BlockNamesMatch(a, b), match) << KrmToUtf8(a) << " / " << KrmToUtf8(b);
}

TEST(KrmCardTemplate, LoadsTheCardAndBothTables) {
  ScratchDir dir;
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(cardtest::WriteProcessCard(Wide(dir.path()))), 1);
  EXPECT_TRUE(t.LoadProblems().empty());
  EXPECT_EQ(t.GetCardShowName(), L"机加工艺卡");
  EXPECT_EQ(t.GetFolder(), Wide(dir.path()) + L"/");
  EXPECT_EQ(t.GetTableFileName(1), L"next");
  EXPECT_EQ(t.GetTableShowName(), L"first 工艺卡");
  std::vector<std::wstring> names;
  ASSERT_EQ(t.GetBlockNames(names), 1);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"TITLE", L"ROW", L"SIGN"}));
  int count = -5, order = -5;
  t.GetBlkNum(L"ROW", count, order, 0);
  EXPECT_EQ(count, 20);
  EXPECT_EQ(order, 1);
  t.GetBlkNum(L"ROW", count, order, 1);
  EXPECT_EQ(count, 30);
  // Whole units of the first page: 297.9 x 210.6.
  EXPECT_EQ(t.GetFirstTableWidth(), 297);
  EXPECT_EQ(t.GetFirstTableHeight(), 210);
  std::vector<KrmAttSet> atts;
  EXPECT_EQ(t.GetAtts(L"ROW", atts), 1);
  EXPECT_EQ(atts.size(), 3u);
  EXPECT_EQ(t.GetAtts(L"NONE", atts), 0);
  EXPECT_TRUE(atts.empty());
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), 0);
  EXPECT_EQ(t.GetAutoNumColumn(L"SIGN"), -1);
}

TEST(KrmCardTemplate, KeepsATableThatFailsToLoadAsAnEmptyTable) {
  ScratchDir dir;
  const std::wstring path = cardtest::WriteProcessCard(Wide(dir.path()));
  std::filesystem::remove(dir / "next.tbl");
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path), 1);
  EXPECT_NE(KrmToUtf8(t.LoadProblems()).find("next.tbl"), std::string::npos);
  EXPECT_EQ(t.GetTableFileName(1), L"next");
  std::vector<std::wstring> names{L"stale"};
  EXPECT_EQ(t.GetBlockNames(names, 1), 1);
  EXPECT_TRUE(names.empty());
  int count = 7, order = 8;
  t.GetBlkNum(L"ROW", count, order, 1);
  EXPECT_EQ(count, 7);
  EXPECT_EQ(order, 8);
  // No table at all past the card's list: 0, outputs untouched.
  names = {L"stale"};
  EXPECT_EQ(t.GetBlockNames(names, 2), 0);
  EXPECT_EQ(names, std::vector<std::wstring>{L"stale"});
  EXPECT_EQ(t.GetTableFileName(2), L"");
}

TEST(KrmCardTemplate, ShortPageAttributeEntriesCountAsAbsent) {
  ScratchDir dir;
  KrmTableAttributes first = cardtest::ProcessTable(L"first", 10);
  first.setPageAtt({{kKrmClassCur, {L"TITLE", L"页码"}}, {kKrmClassSum, {L"TITLE"}},
                    {kKrmBatchSum, {L"TITLE", L"批总", L"extra"}}, {kKrmAutoNum, {L"ROW", L"工序"}}});
  first.OutputTable(Wide(dir / "first.tbl"));
  KrmCardAttributes card;
  card.addTblFile(L"first");
  card.OutputCard(Wide(dir / "c.crd"));
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(Wide(dir / "c")), 1);
  std::vector<std::wstring> out;
  ASSERT_EQ(t.GetPageNumberBindings(out), 1);
  EXPECT_EQ(out, (std::vector<std::wstring>{L"TITLE", L"页码", L"", L"", L"", L"", L"", L""}));
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), 1);
}

TEST(KrmCardTemplate, ACardThatDoesNotReadFailsAndResetsTheOptions) {
  ScratchDir dir;
  KrmCardTemplate t;
  t.SetArrangeOptions(1, 0);
  t.SetInsertPoint(QaGePoint3d(1, 2, 3));
  EXPECT_EQ(t.LoadTemplate(Wide(dir / "none.crd")), 0);
  EXPECT_FALSE(t.LoadProblems().empty());
  EXPECT_EQ(t.GetRearrange(), 0);
  EXPECT_EQ(t.GetAutoArrange(), 1);
  EXPECT_EQ(t.GetInsertPoint(), QaGePoint3d(1, 2, 3));
  EXPECT_EQ(t.GetFirstTableWidth(), 0);
  std::vector<std::wstring> bindings{L"x"};
  EXPECT_EQ(t.GetPageNumberBindings(bindings), 0);
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), -1);
}

TEST(KrmCardTemplate, LoadNamesTheCardFileAndWhatIsWrongWithIt) {
  ScratchDir dir;
  KrmCardTemplate t;
  const tabulon::Status missing = t.Load(Wide(dir / "none.crd"));
  ASSERT_FALSE(missing.ok());
  EXPECT_EQ(missing.error().file, (dir / "none.crd").string());
  EXPECT_EQ(missing.error().message.find((dir / "none.crd").string()), std::string::npos) << missing.describe();
  EXPECT_NE(missing.error().message.find("cannot open"), std::string::npos) << missing.describe();

  tabulon::test::writeFile(dir / "broken.crd", "{\"format\": \"something else\"}");
  const tabulon::Status broken = t.Load(Wide(dir / "broken.crd"));
  ASSERT_FALSE(broken.ok());
  EXPECT_EQ(broken.error().file, (dir / "broken.crd").string());
  EXPECT_EQ(broken.error().field, "format") << broken.describe();
}
