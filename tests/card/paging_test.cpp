#include "card/paging.h"

#include <gtest/gtest.h>

#include <random>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card_fixture.h"
#include "host/ge/qage_point2d.h"
#include "host/gi/qagi_text_style.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;

namespace {

// The wrapping count computed the plain way: every prefix of the rest is
// measured on its own, from the longest down, as the cut rule reads.
int PlainWrappedLineCount(const std::wstring& text, double width, const QaGiTextStyle& measurer) {
  const auto measure = [&](const std::wstring& s, int n) { return measurer.extents(s, false, n).x; };
  int need = 1;
  std::wstring rest = text;
  double w = measure(rest, -1);
  while (w > width) {
    const int len = static_cast<int>(rest.size());
    int i = len - 1;
    while (i >= 0 && measure(rest, i) > width) --i;
    if (i < 0) break;
    std::wstring tail = rest.substr(static_cast<size_t>(i));
    if (i > 0 && std::fabs(measure(rest, i - 1) - measure(rest, i)) < 1e-6) tail = rest.substr(static_cast<size_t>(i - 1));
    rest = tail;
    ++need;
    w = measure(rest, -1);
    if (need >= static_cast<int>(text.size())) break;
  }
  return need;
}

KrmDataGrid OneRowGrid(const std::vector<std::pair<KrmAttSet, std::wstring>>& cells) {
  KrmDataGrid grid;
  for (const auto& [att, text] : cells) {
    KrmDataTCol col;
    col.att = att;
    col.values = {text};
    grid.cols.push_back(col);
  }
  return grid;
}

QaGiTextStyle Measurer(double size) {
  QaGiTextStyle measurer;
  measurer.setXScale(1.0);
  measurer.setTextSize(size);
  return measurer;
}

}  // namespace

TEST(PageCount, CountsTheFirstPageThenStartedContinuations) {
  struct Case {
    int rows, first, next, pages;
  };
  const Case cases[] = {{0, 20, 30, 1},  {20, 20, 30, 1}, {21, 20, 30, 2}, {50, 20, 30, 2}, {51, 20, 30, 3},
                        {21, 20, 1, 2},  {21, 20, 999, 2}, {5, 1, 1, 5},   {80, 20, 30, 3}, {81, 20, 30, 4},
                        {-4, 0, 3, 1},   {1, 0, 3, 2}};
  for (const auto& c : cases) {
    EXPECT_EQ(PageCount(c.rows, c.first, c.next), c.pages) << c.rows << " rows, " << c.first << "/" << c.next;
  }
}

TEST(PageCount, LastContinuationIndexAgreesWithThePageCount) {
  for (int first : {1, 3, 20}) {
    for (int next : {1, 2, 7, 30}) {
      for (int needed = first + 1; needed < first + 100; ++needed) {
        EXPECT_EQ(LastContinuationIndex(needed, first, next) + 2, PageCount(needed, first, next))
            << needed << " " << first << " " << next;
      }
    }
  }
}

TEST(RowLinesNeeded, CountsForcedBreaksAndIgnoresFitCells) {
  const KrmAttSet plain = cardtest::Att(L"p");
  const KrmAttSet fit = cardtest::Att(L"f", kKrmRowFit, 5.0);
  const KrmAttSet wrap = cardtest::Att(L"w", kKrmRowNewline, 5.0, 3.5);
  const std::wstring longText(60, L'中');
  struct Case {
    const char* name;
    std::vector<std::pair<KrmAttSet, std::wstring>> cells;
    int lines;
  };
  const std::vector<Case> cases = {
      {"a break b break", {{plain, L"a\nb\n"}}, 2},
      {"a break b", {{plain, L"a\nb"}}, 2},
      {"a break", {{plain, L"a\n"}}, 1},
      {"carriage return and line feed", {{plain, L"a\r\nb\r\nc"}}, 3},
      {"only a break", {{plain, L"\n"}}, 1},
      {"all empty", {{plain, L""}, {wrap, L""}}, 1},
      {"fit never wraps", {{fit, longText}}, 1},
      {"plain never wraps", {{plain, longText}}, 1},
      {"later breaks override wrapping", {{wrap, longText}, {plain, L"x\ny"}}, 2},
      {"wrapping raises earlier breaks", {{plain, L"x\ny"}, {wrap, longText}}, 60},
      {"later breaks override earlier", {{plain, L"1\n2\n3\n4"}, {plain, L"x\ny"}}, 2},
      {"breaks in a wrapping cell are not wrapped", {{wrap, longText + L"\n" + longText}}, 2},
  };
  QaGiTextStyle measurer = Measurer(1.0);
  for (const auto& c : cases) EXPECT_EQ(RowLinesNeeded(OneRowGrid(c.cells), 0, measurer), c.lines) << c.name;
}

TEST(WrappedLineCount, WrapsChineseAndLatinByMeasuredWidth) {
  const QaGiTextStyle measurer = Measurer(3.5);
  const double han = measurer.width(L"中");
  const double latin = measurer.width(L"a");
  ASSERT_GT(han, latin);
  // Ten Chinese characters fit a line: 30 take 3 lines, 31 take 4.
  EXPECT_EQ(WrappedLineCount(std::wstring(30, L'中'), 10.5 * han, measurer), 3);
  EXPECT_EQ(WrappedLineCount(std::wstring(31, L'中'), 10.5 * han, measurer), 4);
  EXPECT_EQ(WrappedLineCount(std::wstring(10, L'中'), 10.001 * han, measurer), 1);
  // Seven Latin letters per line: 20 letters take 3 lines.
  EXPECT_EQ(WrappedLineCount(std::wstring(20, L'a'), 7.5 * latin, measurer), 3);
  // A cell narrower than one character: every character takes a line, up to
  // as many lines as there are characters.
  EXPECT_EQ(WrappedLineCount(std::wstring(6, L'中'), 0.5 * han, measurer), 6);
  // A cell of no width at all, or a negative one, never cuts past the count.
  EXPECT_EQ(WrappedLineCount(L"中文", 0.0, measurer), 2);
  EXPECT_EQ(WrappedLineCount(L"中文", -1.0, measurer), 1);
  // A longer text than the first window of measuring.
  EXPECT_EQ(WrappedLineCount(std::wstring(500, L'中'), 10.5 * han, measurer), 50);
}

TEST(WrappedLineCount, EqualsThePlainAlgorithmOnMixedTexts) {
  // Pieces of mixed text: Chinese, Latin, digits, blanks, control codes of
  // CAD text, and characters that take no width.
  const std::vector<std::wstring> pieces = {L"中", L"文", L"工序", L"铣削", L"a",   L"W",   L"i",  L"M12",  L" ",
                                            L"φ", L"±0.02", L"%%d", L"%%c", L"%%123", L"\r", L"\t", L"\\P", L"%%%",
                                            L"．", L"，",  L"Ra1.6", L"%",  L"%%"};
  std::mt19937 random(20240611);
  std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 45);
  std::uniform_real_distribution<double> width(0.0, 80.0);
  std::uniform_real_distribution<double> size(1.0, 7.0);
  int multiLine = 0;
  for (int n = 0; n < 600; ++n) {
    std::wstring text;
    for (int k = length(random); k > 0; --k) text += pieces[pick(random)];
    QaGiTextStyle measurer = Measurer(size(random));
    // Now and then a width that falls exactly on a prefix width.
    double cell = width(random);
    if (n % 7 == 0 && text.size() > 4) cell = measurer.width(text, static_cast<int>(text.size() / 3));
    const int fast = WrappedLineCount(text, cell, measurer);
    ASSERT_EQ(fast, PlainWrappedLineCount(text, cell, measurer))
        << "text " << KrmToUtf8(text) << " width " << cell << " size " << measurer.textSize();
    if (fast > 1) ++multiLine;
  }
  EXPECT_GT(multiLine, 200);
}

TEST(GridLinesNeeded, SumsRowsOverTheLongestColumn) {
  KrmDataGrid grid;
  KrmDataTCol a, b;
  a.att = cardtest::Att(L"a");
  b.att = cardtest::Att(L"b");
  a.values = {L"1\n2\n3", L""};
  b.values = {L"", L"", L"x\ny", L""};
  grid.cols = {a, b};
  EXPECT_EQ(GridLinesNeeded(grid), 3 + 1 + 2 + 1);
  EXPECT_EQ(GridLinesNeeded(KrmDataGrid()), 0);
  grid.cols = {a};
  grid.cols[0].values.clear();
  EXPECT_EQ(GridLinesNeeded(grid), 0);
}

class FillPageNumbersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(tmpl.LoadTemplate(cardtest::WriteProcessCard(Wide(dir.path()))), 1);
    data.InitFromTemplate(tmpl);
  }

  // CLASSCUR, CLASSSUM, BATCHCUR, BATCHSUM as the title row shows them.
  std::vector<std::wstring> Numbers() const {
    KrmDataGrid title;
    data.GetGridAt(0, title);
    return {title.GetCell(0, 1), title.GetCell(0, 2), title.GetCell(0, 3), title.GetCell(0, 4)};
  }

  ScratchDir dir;
  KrmCardTemplate tmpl;
  KrmCardData data;
};

TEST_F(FillPageNumbersTest, NumbersFollowStepAndBothStarts) {
  struct Case {
    int step, startCur, startSum, page, pages;
    std::vector<std::wstring> numbers;
  };
  const Case cases[] = {
      {1, 1, 1, 1, 1, {L"1", L"1", L"1", L"1"}},   {2, 1, 1, 1, 3, {L"1", L"5", L"1", L"5"}},
      {2, 1, 1, 2, 3, {L"3", L"5", L"3", L"5"}},   {2, 1, 1, 3, 3, {L"5", L"5", L"5", L"5"}},
      {1, 5, 1, 1, 1, {L"5", L"1", L"5", L"1"}},   {2, 10, 1, 3, 3, {L"14", L"5", L"14", L"5"}},
      {1, 0, 0, 1, 2, {L"0", L"1", L"0", L"1"}},   {-1, 1, 1, 3, 3, {L"-1", L"-1", L"-1", L"-1"}},
  };
  for (const auto& c : cases) {
    data.PageStep() = c.step;
    data.PageStartCur() = c.startCur;
    data.PageStartSum() = c.startSum;
    data.FillPageNumbers(c.page, c.pages);
    EXPECT_EQ(Numbers(), c.numbers) << "step " << c.step << " page " << c.page << "/" << c.pages;
  }
}

TEST_F(FillPageNumbersTest, UnboundOrAbsentBlocksAreSkipped) {
  auto bindings = data.GetPageBindings();
  bindings[0] = {L"", L""};
  bindings[1] = {L"NOBLOCK", L"总页"};
  data.SetPageBindings(bindings);
  data.FillPageNumbers(2, 4);
  EXPECT_EQ(Numbers(), (std::vector<std::wstring>{L"", L"", L"2", L"4"}));
}

TEST_F(FillPageNumbersTest, ABoundBlockWithoutTheAttributeThrows) {
  auto bindings = data.GetPageBindings();
  bindings[3] = {L"TITLE", L"missing"};
  data.SetPageBindings(bindings);
  EXPECT_THROW(data.FillPageNumbers(1, 1), std::out_of_range);
}

TEST_F(FillPageNumbersTest, AColumnWithoutRowsStaysEmpty) {
  KrmDataGrid title;
  data.GetGridAt(0, title);
  title.cols[1].values.clear();
  data.SetGridAt(0, title);
  data.FillPageNumbers(1, 2);
  data.GetGridAt(0, title);
  EXPECT_TRUE(title.cols[1].values.empty());
  EXPECT_EQ(title.GetCell(0, 2), L"2");
}

TEST_F(FillPageNumbersTest, RowsNeededOfTheBaseGridCountsWrappedLines) {
  KrmDataGrid rows;
  data.GetGridAt(data.GetBaseGrid(), rows);
  rows.InsertRows(1, 2);
  const QaGiTextStyle measurer = Measurer(rows.cols[2].att.GetHeight());
  const int perLine = static_cast<int>(rows.cols[2].att.GetWidth() / measurer.width(L"中"));
  ASSERT_GT(perLine, 1);
  rows.SetCell(std::wstring(static_cast<size_t>(perLine * 2 + 1), L'中'), 0, 2);
  rows.SetCell(L"上\n下", 2, 1);
  data.SetGridAt(data.GetBaseGrid(), rows);
  EXPECT_EQ(data.GetRowsNeeded(data.GetBaseGrid()), 3 + 1 + 2);
}
