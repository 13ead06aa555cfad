#include "authoring/make_card_model.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring_test_support.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"

namespace {

namespace fs = std::filesystem;
using authtest::Pick;
using tabulon::svc::fromPath;

class MakeCard : public ::testing::Test {
 protected:
  MakeCard() : scope(io), root(fromPath(lib.path())), model(root) {}
  void Tables(const KrmTextListMap& first, const KrmTextListMap& next, const std::wstring& nextBase = L"ROW") {
    authtest::WriteTable(lib.path(), L"F", L"ROW", first);
    authtest::WriteTable(lib.path(), L"N", nextBase, next);
  }
  KrmCardAttributes Written(const std::string& stem) {
    KrmCardAttributes card;
    EXPECT_EQ(card.InitCard(fromPath(lib.path() / (stem + ".crd"))), 1);
    return card;
  }

  tabulon::test::ScratchDir lib;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
  std::wstring root;
  KrmMakeCardModel model;
};

TEST_F(MakeCard, OneTableServesBothPagesWithoutComparing) {
  authtest::WriteTable(lib.path(), L"F", L"ROW");
  EXPECT_EQ(model.Name(), L"卡片名称");
  ASSERT_TRUE(model.ChooseFirst(Pick(L"/", L"F")));
  EXPECT_EQ(model.NextTbl(), L"F");
  EXPECT_EQ(model.NextDisplay(), root + L"/F 显示");
  fs::remove(lib.path() / "F.tbl");  // not read: one file compares equal at once
  ASSERT_TRUE(model.OnOK().ok());
  const KrmCardAttributes card = Written("卡片名称");
  EXPECT_EQ(card.getShowName(), L"显示名称");
  EXPECT_EQ(card.TblFiles(), (std::vector<std::wstring>{L"F", L"F"}));
}

TEST_F(MakeCard, DifferentBindingGivesTwoMessagesAndNoFile) {
  Tables({{kKrmClassSum, {L"TITLE", L"总页"}}}, {{kKrmClassSum, {L"TITLE", L"页数"}}});
  model.ChooseFirst(Pick(L"/", L"F"));
  model.ChooseNext(Pick(L"/", L"N"));
  const tabulon::Status saved = model.OnOK();
  ASSERT_FALSE(saved.ok());
  EXPECT_EQ(saved.error().field, "CLASSSUM");
  ASSERT_EQ(io.messageBoxes().size(), 2u);
  EXPECT_EQ(io.messageBoxes()[0], L"首页模板与续页模板的类总页数属性不一致!");
  EXPECT_EQ(io.messageBoxes()[1], L"找不到模板文件!");
  EXPECT_FALSE(fs::exists(lib.path() / "卡片名称.crd"));
}

struct CompareCase {
  const char* what;
  KrmTextListMap first;
  KrmTextListMap next;
  std::wstring nextBase;
  const wchar_t* message;  // empty: they agree
};

class CardComparison : public MakeCard, public ::testing::WithParamInterface<CompareCase> {};

TEST_P(CardComparison, FirstDifferenceIsNamed) {
  const CompareCase& c = GetParam();
  Tables(c.first, c.next, c.nextBase);
  model.ChooseFirst(Pick(L"/", L"F"));
  model.ChooseNext(Pick(L"/", L"N"));
  const tabulon::Status compared = model.CompareFirstNext();
  EXPECT_EQ(compared.ok(), std::wstring(c.message).empty());
  if (!compared.ok()) {
    EXPECT_EQ(io.messageBoxes().back(), c.message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Items, CardComparison,
    ::testing::Values(CompareCase{"base", {}, {}, L"SIGN", L"首页模板与续页模板的分页基准块不一致!"},
                      CompareCase{"absent in one", {{kKrmAutoNum, {L"ROW", L"序号"}}}, {}, L"ROW",
                                  L"首页模板与续页模板的自动编号字段不一致!"},
                      CompareCase{"block differs",
                                  {{kKrmBatchCur, {L"A", L"页"}}},
                                  {{kKrmBatchCur, {L"B", L"页"}}},
                                  L"ROW",
                                  L"首页模板与续页模板的批当前页数属性不一致!"},
                      CompareCase{"absent in both, sizes aside", {}, {}, L"ROW", L""}),
    [](const auto& info) { return std::to_string(info.index); });

TEST_F(MakeCard, TablesFromDifferentFoldersGiveTheBareMessage) {
  authtest::WriteTable(lib.path() / "a", L"F", L"ROW");
  authtest::WriteTable(lib.path() / "b", L"N", L"ROW");
  model.ChooseFirst(Pick(L"/a/", L"F"));
  model.ChooseNext(Pick(L"/b/", L"N"));
  ASSERT_FALSE(model.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().back(), L"首页模板与续页模板的%s不一致!");
}

TEST_F(MakeCard, SameNameYesKeepsTheIdAndCancelWritesNothing) {
  Tables({}, {});
  model.ChooseFirst(Pick(L"/", L"F"));
  model.SetName(L"C");
  ASSERT_TRUE(model.OnOK().ok());
  const std::wstring id = Written("C").getID();

  KrmMakeCardModel again(root);
  again.ChooseFirst(Pick(L"/", L"N"));
  again.SetName(L"C");
  io.addAnswer(L"cancel");
  EXPECT_FALSE(again.OnOK().ok());
  EXPECT_EQ(Written("C").getTblFile(0), L"F");
  io.addAnswer(L"yes");
  ASSERT_TRUE(again.OnOK().ok());
  EXPECT_EQ(Written("C").getTblFile(0), L"N");
  EXPECT_EQ(Written("C").getID(), id);
  EXPECT_EQ(io.messageBoxes().back(), L"相同名称的卡片已经存在.....");
}

TEST_F(MakeCard, LoadedCardIsLockedWithItsTablesAndArrangement) {
  Tables({}, {});
  authtest::WriteCard(lib.path() / "sub", L"C", L"F", L"N");
  authtest::WriteTable(lib.path() / "sub", L"F", L"ROW");
  authtest::WriteTable(lib.path() / "sub", L"N", L"ROW");
  ASSERT_TRUE(model.LoadCard(Pick(L"/sub/", L"C")).ok());
  EXPECT_TRUE(model.NameLocked());
  EXPECT_EQ(model.Caption(), L"/sub/");
  EXPECT_EQ(model.FirstDisplay(), root + L"/sub/F 显示");
  EXPECT_EQ(model.NextTbl(), L"N");
  EXPECT_FALSE(model.ChooseFirst(Pick(L"/", L"F")));
  EXPECT_FALSE(model.ChooseCardName(Pick(L"/", L"")));
  ASSERT_TRUE(model.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().size(), 0u);
}

TEST_F(MakeCard, NameWithAForbiddenCharacterIsRefusedAndATrailingSpacePasses) {
  Tables({}, {});
  model.ChooseFirst(Pick(L"/", L"F"));
  model.SetName(L"a:b");
  EXPECT_FALSE(model.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().back(), L"卡片名称中不能包含'\\'字符");
  model.SetName(L"尾随空格 ");
  EXPECT_TRUE(model.OnOK().ok());
}

struct SummaryCase {
  int fstT;
  int count;
  int dir;
  const wchar_t* expected;
};

class ArrangementSummary : public ::testing::TestWithParam<SummaryCase> {};

TEST_P(ArrangementSummary, DescribesGapsDirectionAndCount) {
  KrmCardDir dir;
  dir.SetHor(2.5);
  dir.SetVer(10);
  dir.SetFstT(GetParam().fstT);
  dir.SetFstN(GetParam().count);
  dir.SetDir(GetParam().dir);
  EXPECT_EQ(KrmMakeCardModel::SummaryOf(dir), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ArrangementSummary,
    ::testing::Values(SummaryCase{1, 3, 2, L"水平间隙 = 2.50mm;垂直间隙 = 10.00mm;排列方式:左下;行优先 列数 = 3"},
                      SummaryCase{2, 4, 3, L"水平间隙 = 2.50mm;垂直间隙 = 10.00mm;排列方式:右下;列优先 行数 = 4"},
                      SummaryCase{1, 1, 7, L"水平间隙 = 2.50mm;垂直间隙 = 10.00mm;排列方式:右上;行优先 列数 = 1"}));

}  // namespace
