#include "host/rx/qa_lang_resource.h"

#include "host/svc/ini_file.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

TEST(QaStringTable, ReadsIdsAndUndoesEscapes) {
  const auto table = QaStringTable::parse(
      "; texts\n[Strings]\n105=\\n请选择整个卡片实体/R移除实体:\n178=不能包含'\\\\ / :'\n7=tab\\there\n9=keep \\q\n");
  EXPECT_EQ(table.find(105), L"\n请选择整个卡片实体/R移除实体:");
  EXPECT_EQ(table.find(178), L"不能包含'\\ / :'");
  EXPECT_EQ(table.find(7), L"tab\there");
  EXPECT_EQ(table.find(9), L"keep \\q");
  EXPECT_FALSE(table.find(8));
  EXPECT_EQ(table.ids(), (std::vector<unsigned>{7, 9, 105, 178}));
}

TEST(QaStringTable, RefusesKeysThatAreNoIds) {
  EXPECT_THROW(QaStringTable::parse("[Strings]\nabc=x\n", "en.ini"), tabulon::svc::IniError);
  EXPECT_THROW(QaStringTable::parse("12a=x\n", "en.ini"), tabulon::svc::IniError);
  EXPECT_THROW(QaStringTable::parse("-3=x\n", "en.ini"), tabulon::svc::IniError);
}

TEST(QaLangResource, FindsTheTableOfALocaleOrItsLanguage) {
  const auto zh = qaFindStringTable("zh_CN");
  ASSERT_TRUE(zh);
  EXPECT_EQ(zh->filename(), "zh_CN.ini");
  const auto en = qaFindStringTable("en_US");  // no en_US.ini: the language's table
  ASSERT_TRUE(en);
  EXPECT_EQ(en->filename(), "en.ini");
  EXPECT_FALSE(qaFindStringTable("xx_YY"));
}

TEST(QaLangResource, FallsBackOnChineseForALocaleWithoutTable) {
  auto exact = loadLangResourceDLL("KrmTabulon", "xx_YY", 0);
  EXPECT_EQ(exact, nullptr);
  auto fallback = loadLangResourceDLL("KrmTabulon", "xx_YY", 1);
  ASSERT_NE(fallback, nullptr);
  EXPECT_EQ(fallback->locale(), "zh_CN");
  EXPECT_EQ(fallback->strings().find(159), L"卡片源路径不存在");
  auto english = loadLangResourceDLL("KrmTabulon", "en_GB", 1);
  ASSERT_NE(english, nullptr);
  EXPECT_EQ(english->strings().find(159), L"The card library folder does not exist");
}

TEST(KrmLoadString, FallsBackOnTheLiteral) {
  ASSERT_EQ(qaResourceHandle(), nullptr);
  EXPECT_EQ(KrmLoadString(159, L"卡片源路径不存在"), L"卡片源路径不存在");  // no module loaded
  auto english = loadLangResourceDLL("KrmTabulon", "en", 0);
  ASSERT_NE(english, nullptr);
  {
    QaResourceScope scope(english.get());
    EXPECT_EQ(KrmLoadString(159, L"卡片源路径不存在"), L"The card library folder does not exist");
    EXPECT_EQ(KrmLoadString(99999, L"literal"), L"literal");  // id missing in the table
    {
      QaResourceScope none(nullptr);
      EXPECT_EQ(KrmLoadString(159, L"x"), L"x");
    }
    EXPECT_EQ(qaResourceHandle(), english.get());
  }
  EXPECT_EQ(qaResourceHandle(), nullptr);
  qaSetResourceHandle(english.get());
  freeLangResourceDLL(english);  // freeing the current module leaves none current
  EXPECT_EQ(qaResourceHandle(), nullptr);
}

TEST(KrmLoadString, PutsTheArgumentsWhereTheTranslationHasItsPlaceholders) {
  EXPECT_EQ(KrmLoadString(99999, L"命令 %1 正在运行, 不能启动 %2。", {L"A", L"B"}), L"命令 A 正在运行, 不能启动 B。");
  EXPECT_EQ(KrmLoadString(99999, L"%2 before %1", {L"one", L"two"}), L"two before one");
  // A placeholder without an argument, and a lone percent sign, stay as they are.
  EXPECT_EQ(KrmLoadString(99999, L"%1 of %3, 50%", {L"x"}), L"x of %3, 50%");
  auto english = loadLangResourceDLL("KrmTabulon", "en", 0);
  ASSERT_NE(english, nullptr);
  QaResourceScope scope(english.get());
  EXPECT_EQ(KrmLoadString(9501, L"\n找到 %1 个", {L"3"}), L"\n3 found");
}

TEST(QaLangResource, TablesOfEveryLanguageReadAndCarryTheSameIds) {
  const auto folder = tabulon::test::sourceDir() / "resources" / "strings";
  const auto zh = QaStringTable::load(folder / "zh_CN.ini");
  const auto en = QaStringTable::load(folder / "en.ini");
  EXPECT_EQ(zh.ids(), en.ids());
  // Texts with placeholders keep the same placeholders in translation.
  for (unsigned id : zh.ids()) {
    auto count = [](const std::wstring& s) { return std::count(s.begin(), s.end(), L'%'); };
    EXPECT_EQ(count(*zh.find(id)), count(*en.find(id))) << "id " << id;
  }
}
