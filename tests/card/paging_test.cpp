#include "card/paging.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card_fixture.h"
#include "host/ge/qage_point2d.h"
#include "host/gi/qagi_text_style.h"

using cardtest::Wide;

namespace {

// The wrapping count the plain way: every prefix of the rest measured on its
// own, from the longest down.
int PlainWrappedLineCount(const std::wstring& text, double width, const QaGiTextStyle& measurer) {
  const auto measure = [&](const std::wstring& s, int n) { return measurer.extents(s, false, n).x; };
  int need = 1;
  std::wstring rest = text;
  while (measure(rest, -1) > width) {
    int i = static_cast<int>(rest.size()) - 1;
    while (i >= 0 && measure(rest, i) > width) --i;
    if (i < 0) break;
    const bool noWidth = i > 0 && std::fabs(measure(rest, i - 1) - measure(rest, i)) < 1e-6;
    rest = rest.substr(static_cast<size_t>(noWidth ? i - 1 : i));
    if (++need >= static_cast<int>(text.size())) break;
  }
  return need;
}

QaGiTextStyle Measurer(double size) {
  QaGiTextStyle measurer;
  measurer.setTextSize(size);
  return measurer;
}

}  // namespace

TEST(PageCount, CountsTheFirstPageThenStartedContinuations) {
  const int cases[][4] = {{0, 20, 30, 1},  {20, 20, 30, 1}, {21, 20, 30, 2}, {50, 20, 30, 2}, {51, 20, 30, 3},
                          {21, 20, 1, 2},  {21, 20, 999, 2}, {5, 1, 1, 5},   {81, 20, 30, 4}, {1, 0, 3, 2}};
  for (const auto& c : cases) EXPECT_EQ(PageCount(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[1] << "/" << c[2];
  for (int first : {1, 3, 20}) {
    for (int next : {1, 2, 7, 30}) {
      for (int needed = first + 1; needed < first + 70; ++needed) {
        EXPECT_EQ(LastContinuationIndex(needed, first, next) + 2, PageCount(needed, first, next));
      }
    }
  }
}

const KrmAttSet kPlain = cardtest::Att(L"p"), kFit = cardtest::Att(L"f", kKrmRowFit, 5.0);
const KrmAttSet kWrap = cardtest::Att(L"w", kKrmRowNewline, 5.0);
const std::wstring kLongText(60, L'中');  // one character or less per line in a 5-unit cell

struct RowLinesCase {
  const char* name;
  std::vector<std::pair<KrmAttSet, std::wstring>> cells;
  int lines;
};

class RowLinesNeededOf : public ::testing::TestWithParam<RowLinesCase> {};

TEST_P(RowLinesNeededOf, ForcedBreaksWrapsOfNewlineCellsAndNeverFitCells) {
  QaGiTextStyle measurer;
  KrmDataGrid grid;
  for (const auto& [att, text] : GetParam().cells) grid.cols.push_back({0, att, {text}});
  EXPECT_EQ(RowLinesNeeded(grid, 0, measurer), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, RowLinesNeededOf,
    ::testing::Values(RowLinesCase{"TwoBreaks", {{kPlain, L"a\nb\n"}}, 2},
                      RowLinesCase{"OneBreakBetweenTexts", {{kPlain, L"a\nb"}}, 2},
                      RowLinesCase{"OneBreakAtTheEnd", {{kPlain, L"a\n"}}, 1},
                      RowLinesCase{"CarriageReturns", {{kPlain, L"a\r\nb\r\nc"}}, 3},
                      RowLinesCase{"AllEmpty", {{kPlain, L""}, {kWrap, L""}}, 1},
                      RowLinesCase{"FitAndPlainNeverWrap", {{kFit, kLongText}, {kPlain, kLongText}}, 1},
                      RowLinesCase{"LaterBreaksOverrideWrapping", {{kWrap, kLongText}, {kPlain, L"x\ny"}}, 2},
                      RowLinesCase{"LaterBreaksOverrideBreaks", {{kPlain, L"1\n2\n3\n4"}, {kPlain, L"x\ny"}}, 2},
                      RowLinesCase{"WrappingRaisesBreaks", {{kPlain, L"x\ny"}, {kWrap, kLongText}}, 60},
                      RowLinesCase{"BreaksInAWrappingCell", {{kWrap, kLongText + L"\n" + kLongText}}, 2}),
    [](const ::testing::TestParamInfo<RowLinesCase>& info) { return std::string(info.param.name); });

TEST(WrappedLineCount, WrapsChineseAndLatinByMeasuredWidth) {
  const QaGiTextStyle measurer = Measurer(3.5);
  const double han = measurer.width(L"中"), latin = measurer.width(L"a");
  ASSERT_GT(han, latin);
  EXPECT_EQ(WrappedLineCount(std::wstring(30, L'中'), 10.5 * han, measurer), 3);
  EXPECT_EQ(WrappedLineCount(std::wstring(31, L'中'), 10.5 * han, measurer), 4);
  EXPECT_EQ(WrappedLineCount(std::wstring(500, L'中'), 10.5 * han, measurer), 50);
  EXPECT_EQ(WrappedLineCount(std::wstring(20, L'a'), 7.5 * latin, measurer), 3);
  // Narrower than one character: as many lines as characters, no more.
  EXPECT_EQ(WrappedLineCount(std::wstring(6, L'中'), 0.5 * han, measurer), 6);
  EXPECT_EQ(WrappedLineCount(L"中文", 0.0, measurer), 2);
  EXPECT_EQ(WrappedLineCount(L"中文", -1.0, measurer), 1);
}

TEST(WrappedLineCount, EqualsThePlainAlgorithmOnMixedTexts) {
  // Chinese, Latin, digits, blanks, CAD control codes, characters of no width.
  const std::vector<std::wstring> pieces = {L"中", L"文", L"工序", L"铣削", L"a", L"W", L"i", L"M12", L" ", L"φ",
                                            L"±0.02", L"%%d", L"%%c", L"%%123", L"\r", L"\t", L"\\P", L"%%%",
                                            L"，", L"Ra1.6", L"%", L"%%"};
  std::mt19937 random(20240611);
  std::uniform_int_distribution<size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 45);
  std::uniform_real_distribution<double> width(0.0, 80.0), size(1.0, 7.0);
  int multiLine = 0;
  for (int n = 0; n < 600; ++n) {
    std::wstring text;
    for (int k = length(random); k > 0; --k) text += pieces[pick(random)];
    const QaGiTextStyle measurer = Measurer(size(random));
    // Now and then a width that falls exactly on a prefix width.
    const double cell = n % 7 == 0 && text.size() > 4 ? measurer.width(text, static_cast<int>(text.size() / 3)) : width(random);
    const int fast = WrappedLineCount(text, cell, measurer);
    ASSERT_EQ(fast, PlainWrappedLineCount(text, cell, measurer)) << KrmToUtf8(text) << " in " << cell;
    multiLine += fast > 1;
  }
  EXPECT_GT(multiLine, 200);
}

class FillPageNumbersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(tmpl.LoadTemplate(cardtest::WriteProcessCard(Wide(dir.path()))), 1);
    data.InitFromTemplate(tmpl);
  }

  // CLASSCUR, CLASSSUM, BATCHCUR, BATCHSUM as the title row holds them.
  std::vector<std::wstring> Numbers() const {
    KrmDataGrid title;
    data.GetGridAt(0, title);
    return {title.GetCell(0, 1), title.GetCell(0, 2), title.GetCell(0, 3), title.GetCell(0, 4)};
  }

  tabulon::test::ScratchDir dir;
  KrmCardTemplate tmpl;
  KrmCardData data;
};

TEST_F(FillPageNumbersTest, NumbersFollowStepAndBothStarts) {
  const std::tuple<int, int, int, int, int, std::wstring, std::wstring> cases[] = {
      // step, start cur, start sum, page, pages -> current, total
      {1, 1, 1, 1, 1, L"1", L"1"}, {2, 1, 1, 1, 3, L"1", L"5"},  {2, 1, 1, 2, 3, L"3", L"5"},
      {2, 1, 1, 3, 3, L"5", L"5"}, {1, 5, 1, 1, 1, L"5", L"1"},  {2, 10, 1, 3, 3, L"14", L"5"},
      {-1, 1, 1, 3, 3, L"-1", L"-1"}};
  for (const auto& [step, startCur, startSum, page, pages, cur, sum] : cases) {
    data.PageStep() = step;
    data.PageStartCur() = startCur;
    data.PageStartSum() = startSum;
    data.FillPageNumbers(page, pages);
    EXPECT_EQ(Numbers(), (std::vector<std::wstring>{cur, sum, cur, sum})) << step << " " << page << "/" << pages;
  }
}

TEST_F(FillPageNumbersTest, SkipsAbsentBlocksAndThrowsForAbsentAttributes) {
  auto bindings = data.GetPageBindings();
  bindings[0] = {L"", L""};
  bindings[1] = {L"NOBLOCK", L"总页"};
  data.SetPageBindings(bindings);
  KrmDataGrid title;
  data.GetGridAt(0, title);
  title.cols[3].values.clear();
  data.SetGridAt(0, title);
  data.FillPageNumbers(2, 4);
  EXPECT_EQ(Numbers(), (std::vector<std::wstring>{L"", L"", L"", L"4"}));
  bindings[3] = {L"TITLE", L"missing"};
  data.SetPageBindings(bindings);
  EXPECT_THROW(data.FillPageNumbers(1, 1), std::out_of_range);
}

TEST_F(FillPageNumbersTest, RowsNeededOfTheBaseGridSumsLinesOfEveryRow) {
  KrmDataGrid rows;
  data.GetGridAt(data.GetBaseGrid(), rows);
  rows.InsertRows(1, 2);
  const int perLine = static_cast<int>(60.0 / Measurer(3.5).width(L"中"));
  ASSERT_GT(perLine, 1);
  rows.SetCell(std::wstring(static_cast<size_t>(perLine * 2 + 1), L'中'), 0, 2);
  rows.SetCell(L"上\n下", 2, 1);
  data.SetGridAt(data.GetBaseGrid(), rows);
  EXPECT_EQ(data.GetRowsNeeded(data.GetBaseGrid()), 3 + 1 + 2);
  EXPECT_EQ(GridLinesNeeded(KrmDataGrid()), 0);
}
