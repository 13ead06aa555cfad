#include "card/card_template.h"

#include <gtest/gtest.h>

#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;

TEST(BlockNamesMatch, FollowsTheGeneratedNameRule) {
  struct Case {
    const wchar_t* a;
    const wchar_t* b;
    bool match;
  };
  const Case cases[] = {
      {L"ABC", L"ABC", true},     {L"ABC", L"abc", false},     {L"ABC", L"X_ABC", true},
      {L"ABC", L"ABC_X", true},   {L"X_ABC", L"ABC", true},    {L"ABC", L"XABC", false},
      {L"ABC", L"ABCX", false},   {L"ABC", L"X_ABCD", false},  {L"AB", L"X_ABC_Y", false},
      {L"行", L"U1F_行", true},   {L"ABC", L"XYZ", false},     {L"ABC", L"_ABC", true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(BlockNamesMatch(c.a, c.b), c.match) << KrmToUtf8(c.a) << " / " << KrmToUtf8(c.b);
  }
}

TEST(KrmCardTemplate, LoadsCardAndBothTables) {
  ScratchDir dir;
  const std::wstring path = cardtest::WriteProcessCard(Wide(dir.path()));
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path), 1) << KrmToUtf8(t.LoadProblems());
  EXPECT_TRUE(t.LoadProblems().empty());
  EXPECT_EQ(t.GetCardShowName(), L"机加工艺卡");
  EXPECT_EQ(t.GetFolder(), Wide(dir.path()) + L"/");
  EXPECT_EQ(t.GetTableFileName(0), L"first");
  EXPECT_EQ(t.GetTableFileName(1), L"next");
  EXPECT_EQ(t.GetTableFileName(2), L"");
  EXPECT_EQ(t.GetTableShowName(), L"first 工艺卡");

  std::vector<std::wstring> names;
  ASSERT_EQ(t.GetBlockNames(names), 1);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"TITLE", L"ROW", L"SIGN"}));

  int count = -5, order = -5;
  EXPECT_EQ(t.GetBlkNum(L"ROW", count, order, 0), 1);
  EXPECT_EQ(count, 20);
  EXPECT_EQ(order, 1);
  EXPECT_EQ(t.GetBlkNum(L"ROW", count, order, 1), 1);
  EXPECT_EQ(count, 30);

  EXPECT_EQ(t.GetFirstTableWidth(), 297);
  EXPECT_EQ(t.GetFirstTableHeight(), 210);
  double w = 0, h = 0;
  EXPECT_EQ(t.GetTableSize(1, w, h), 1);
  EXPECT_DOUBLE_EQ(w, 297.9);

  std::vector<KrmAttSet> atts{KrmAttSet()};
  EXPECT_EQ(t.GetAtts(L"ROW", atts), 1);
  ASSERT_EQ(atts.size(), 3u);
  EXPECT_EQ(atts[2].GetRowType(), kKrmRowNewline);
  EXPECT_EQ(t.GetAtts(L"NONE", atts), 0);
  EXPECT_TRUE(atts.empty());

  KrmCardDir fromCard, working;
  t.GetCardDir(fromCard);
  t.GetDir(working);
  EXPECT_EQ(fromCard, working);
}

TEST(KrmCardTemplate, KeepsATableThatFailsToLoadAsAnEmptyTable) {
  ScratchDir dir;
  const std::wstring path = cardtest::WriteProcessCard(Wide(dir.path()));
  std::filesystem::remove(dir / "next.tbl");
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path), 1);
  EXPECT_NE(KrmToUtf8(t.LoadProblems()).find("next.tbl"), std::string::npos);
  ASSERT_NE(t.GetTable(1), nullptr);
  EXPECT_TRUE(t.GetTable(1)->SCells().empty());
  EXPECT_EQ(t.GetTableFileName(1), L"next");

  std::vector<std::wstring> names{L"stale"};
  EXPECT_EQ(t.GetBlockNames(names, 1), 1);
  EXPECT_TRUE(names.empty());
  int count = 7, order = 8;
  t.GetBlkNum(L"ROW", count, order, 1);
  EXPECT_EQ(count, 7);
  EXPECT_EQ(order, 8);
}

TEST(KrmCardTemplate, IndexWithoutTableAnswersZeroAndLeavesOutputs) {
  ScratchDir dir;
  KrmTableAttributes only = cardtest::ProcessTable(L"only", 5);
  only.OutputTable(Wide(dir / "only.tbl"));
  KrmCardAttributes card;
  card.addTblFile(L"only");
  card.OutputCard(Wide(dir / "one.crd"));

  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(Wide(dir / "one.crd")), 1);
  std::vector<std::wstring> names{L"stale"};
  EXPECT_EQ(t.GetBlockNames(names, 1), 0);
  EXPECT_EQ(names, std::vector<std::wstring>{L"stale"});
  std::wstring base = L"kept";
  EXPECT_EQ(t.GetPageBase(-1, base), 0);
  EXPECT_EQ(base, L"kept");
  double w = 1, h = 2;
  EXPECT_EQ(t.GetTableSize(5, w, h), 0);
  EXPECT_EQ(w, 1);
}

TEST(KrmCardTemplate, FailsWhenTheCardDoesNotRead) {
  ScratchDir dir;
  KrmCardTemplate t;
  t.SetArrangeOptions(1, 0);
  EXPECT_EQ(t.LoadTemplate(Wide(dir / "none.crd")), 0);
  EXPECT_FALSE(t.LoadProblems().empty());
  EXPECT_EQ(t.GetRearrange(), 0);
  EXPECT_EQ(t.GetAutoArrange(), 1);
  EXPECT_EQ(t.GetTable(0), nullptr);
  EXPECT_EQ(t.GetFirstTableWidth(), 0);
  std::vector<std::wstring> bindings{L"x"};
  EXPECT_EQ(t.GetPageNumberBindings(bindings), 0);
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), -1);
}

TEST(KrmCardTemplate, AutoNumColumnBelongsToTheBoundBlockOnly) {
  ScratchDir dir;
  const std::wstring path = cardtest::WriteProcessCard(Wide(dir.path()));
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path), 1);
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), 0);
  EXPECT_EQ(t.GetAutoNumColumn(L"SIGN"), -1);
  EXPECT_EQ(t.GetAutoNumColumn(L"TITLE"), -1);
}

TEST(KrmCardTemplate, PageNumberBindingsTreatShortEntriesAsAbsent) {
  ScratchDir dir;
  KrmTableAttributes first = cardtest::ProcessTable(L"first", 10);
  first.setPageAtt({{kKrmClassCur, {L"TITLE", L"页码"}},
                    {kKrmClassSum, {L"TITLE"}},
                    {kKrmBatchSum, {L"TITLE", L"批总", L"extra"}},
                    {kKrmAutoNum, {L"ROW", L"工序"}}});
  first.OutputTable(Wide(dir / "first.tbl"));
  KrmCardAttributes card;
  card.addTblFile(L"first");
  card.addTblFile(L"first");
  card.OutputCard(Wide(dir / "c.crd"));

  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(Wide(dir / "c")), 1);
  std::vector<std::wstring> out;
  ASSERT_EQ(t.GetPageNumberBindings(out), 1);
  EXPECT_EQ(out, (std::vector<std::wstring>{L"TITLE", L"页码", L"", L"", L"", L"", L"", L""}));
  EXPECT_EQ(t.GetAutoNumColumn(L"ROW"), 1);
}

TEST(KrmCardTemplate, GetFolderCutsAtTheLastSeparator) {
  ScratchDir dir;
  cardtest::WriteProcessCard(Wide(dir.path()));
  KrmCardTemplate t;
  // A path without a separator stays as it is.
  t.LoadTemplate(L"card.crd");
  EXPECT_EQ(t.GetFolder(), L"card.crd");
  t.LoadTemplate(Wide(dir / "card.crd"));
  EXPECT_EQ(t.GetFolder(), Wide(dir.path()) + L"/");
}

TEST(KrmCardTemplate, ReloadResetsOptionsButKeepsTheInsertPoint) {
  ScratchDir dir;
  const std::wstring path = cardtest::WriteProcessCard(Wide(dir.path()));
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path), 1);
  KrmCardDir changed;
  changed.SetFstN(9);
  t.SetDir(changed);
  t.SetArrangeOptions(1, 0);
  t.SetInsertPoint(QaGePoint3d(1, 2, 3));
  ASSERT_EQ(t.LoadTemplate(path), 1);
  KrmCardDir working;
  t.GetDir(working);
  EXPECT_EQ(working.GetFstN(), KrmCardDir::kDefaultFstN);
  EXPECT_EQ(t.GetRearrange(), 0);
  EXPECT_EQ(t.GetAutoArrange(), 1);
  EXPECT_EQ(t.GetInsertPoint(), QaGePoint3d(1, 2, 3));
}
