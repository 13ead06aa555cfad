#include "editor/exchange_text.h"

#include <gtest/gtest.h>

#include "editor_test_support.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

using tabulon::editor::CutExchangeLine;
using tabulon::editor::ParseExchangeText;
using tabulon::svc::fromPath;

namespace {

struct CutCase {
  std::wstring line;
  std::vector<std::wstring> fields;
};

class ExchangeLineCut : public ::testing::TestWithParam<CutCase> {};

TEST_P(ExchangeLineCut, GivesTheFieldsBeforeEachQuoteTab) { EXPECT_EQ(CutExchangeLine(GetParam().line), GetParam().fields); }

INSTANTIATE_TEST_SUITE_P(
    Lines, ExchangeLineCut,
    ::testing::Values(CutCase{L"\"a\"\t\"b\"\t", {L"a", L"b"}},
                      CutCase{L"\"\"\t\"b\"\t", {L"", L"b"}},
                      // A last field without its tab, or with a character after the quote, is lost.
                      CutCase{L"\"a\"\t\"b\"", {L"a"}}, CutCase{L"\"a\"\t\"b\"x", {L"a"}},
                      CutCase{L"\"a\"\t\"b\"\tx", {L"a", L"b"}},
                      // No separator at all: no field.
                      CutCase{L"plain text", {}}, CutCase{L"", {}},
                      // Quotes inside a field are not escaped and stay.
                      CutCase{L"\"say \"hi\"\"\t", {L"say \"hi\""}},
                      // Without the leading quote the first character is kept.
                      CutCase{L"a\"\t\"b\"\t", {L"a", L"b"}}));

TEST(ExchangeText, ExportThenImportGivesTheSameTable) {
  tabulon::test::ScratchDir dir;
  const KrmDataGrid grid = edtest::MakeGrid({L"序号", L"工序", L"内容"}, {{L"1", L"车", L"车外圆 Φ20"}, {L"2", L"", L"钻孔\t2-M6"}, {L"3", L"铣", L""}});
  const std::wstring path = fromPath(dir / "table.txt");
  ASSERT_EQ(ExportText(grid, path), 1);
  KrmDataGrid back = edtest::MakeGrid({L"序号", L"工序", L"内容"}, {});
  ASSERT_EQ(ImportText(back, path), 1);
  for (int c = 0; c < 3; ++c) EXPECT_EQ(edtest::Column(back, c), edtest::Column(grid, c)) << c;
}

TEST(ExchangeText, WritesEveryFieldQuotedWithATab) {
  const KrmDataGrid grid = edtest::MakeGrid({L"a", L"b"}, {{L"", L"x"}});
  EXPECT_EQ(tabulon::editor::FormatExchangeText(grid), L"\"a\"\t\"b\"\t\n\"\"\t\"x\"\t\n");
}

TEST(ExchangeText, ColumnsMatchByShowName) {
  KrmDataGrid grid = edtest::MakeGrid({L"A", L"B", L"C"}, {{L"a1", L"b1", L"c1"}, {L"a2", L"b2", L"c2"}, {L"a3", L"b3", L"c3"}});
  // C is named twice (the later wins), X names nothing, B is not named; one data row.
  auto columns = ParseExchangeText(L"\"C\"\t\"X\"\t\"A\"\t\"C\"\t\n\"c-first\"\t\"x\"\t\"new a\"\t\"c-second\"\t\n", "t.txt");
  ASSERT_TRUE(columns.ok()) << columns.describe();
  EXPECT_EQ(tabulon::editor::ApplyExchangeColumns(grid, *columns), 3);
  EXPECT_EQ(edtest::Column(grid, 0), std::vector<std::wstring>{L"new a"});
  EXPECT_EQ(edtest::Column(grid, 1), (std::vector<std::wstring>{L"b1", L"b2", L"b3"}));
  EXPECT_EQ(edtest::Column(grid, 2), std::vector<std::wstring>{L"c-second"});
}

TEST(ExchangeText, MissingFieldsLeaveAColumnShorter) {
  auto columns = ParseExchangeText(L"\"A\"\t\"B\"\t\r\n\"1\"\t\"2\"\t\r\n\"3\"\t\r\n", "t.txt");
  ASSERT_TRUE(columns.ok());
  EXPECT_EQ(columns->values[0], (std::vector<std::wstring>{L"1", L"3"}));
  EXPECT_EQ(columns->values[1], std::vector<std::wstring>{L"2"});
}

TEST(ExchangeText, HeaderThatNamesNoColumnSucceedsAndChangesNothing) {
  tabulon::test::ScratchDir dir;
  tabulon::test::writeFile(dir / "other.txt", "\"X\"\t\"Y\"\t\n\"1\"\t\"2\"\t\n");
  KrmDataGrid grid = edtest::MakeGrid({L"A"}, {{L"keep"}});
  EXPECT_EQ(ImportText(grid, fromPath(dir / "other.txt")), 1);
  EXPECT_EQ(edtest::Column(grid, 0), std::vector<std::wstring>{L"keep"});
}

struct BadTextCase {
  std::string name;
  std::string bytes;
  int result;
};

class TextImportOfOddFiles : public ::testing::TestWithParam<BadTextCase> {};

TEST_P(TextImportOfOddFiles, LeavesTheTableUnchanged) {
  tabulon::test::ScratchDir dir;
  tabulon::test::writeFile(dir / "in.txt", GetParam().bytes);
  KrmDataGrid grid = edtest::MakeGrid({L"A"}, {{L"keep"}});
  EXPECT_EQ(ImportText(grid, fromPath(dir / "in.txt")), GetParam().result);
  EXPECT_EQ(edtest::Column(grid, 0), std::vector<std::wstring>{L"keep"});
}

INSTANTIATE_TEST_SUITE_P(Files, TextImportOfOddFiles,
                         ::testing::Values(BadTextCase{"Empty", "", 1}, BadTextCase{"HeaderWithoutField", "A\tB\n1\t2\n", 0},
                                           BadTextCase{"HeaderLineEmpty", "\n\"A\"\t\n", 0}),
                         [](const auto& info) { return info.param.name; });

TEST(ExchangeText, MissingFileFails) {
  KrmDataGrid grid = edtest::MakeGrid({L"A"}, {{L"keep"}});
  EXPECT_EQ(ImportText(grid, L"/nonexistent/none.txt"), 0);
  auto columns = tabulon::editor::ReadExchangeFile("/nonexistent/none.txt");
  ASSERT_FALSE(columns.ok());
  EXPECT_EQ(columns.error().file, "/nonexistent/none.txt");
}

TEST(ExchangeText, ReadsGb18030AndSkipsAByteOrderMark) {
  tabulon::test::ScratchDir dir;
  // "工序" in GB18030, then the same header in UTF-8 behind a byte-order mark.
  tabulon::test::writeFile(dir / "gb.txt", "\"\xB9\xA4\xD0\xF2\"\t\n\"\xB3\xB5\"\t\n");
  tabulon::test::writeFile(dir / "bom.txt", "\xEF\xBB\xBF\"工序\"\t\n\"车\"\t\n");
  for (const char* name : {"gb.txt", "bom.txt"}) {
    KrmDataGrid grid = edtest::MakeGrid({L"工序"}, {{L"old"}});
    ASSERT_EQ(ImportText(grid, fromPath(dir / name)), 1) << name;
    EXPECT_EQ(edtest::Column(grid, 0), std::vector<std::wstring>{L"车"}) << name;
  }
}

}  // namespace
