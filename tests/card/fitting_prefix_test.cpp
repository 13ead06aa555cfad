#include "card/fitting_prefix.h"

#include <gtest/gtest.h>

#include "host/gi/qagi_text_style.h"

namespace {

QaGiTextStyle Measurer() {
  QaGiTextStyle measurer;
  measurer.setTextSize(3.5);
  return measurer;
}

struct PrefixCase {
  const char* name;
  std::wstring text;
  std::wstring widthOf;  // the cell is as wide as this text, times `times`
  double times;
  std::size_t cut;
};

class FittingPrefix : public ::testing::TestWithParam<PrefixCase> {};

TEST_P(FittingPrefix, CutsAfterTheLongestPrefixThatFits) {
  const PrefixCase& c = GetParam();
  const QaGiTextStyle measurer = Measurer();
  EXPECT_EQ(FittingPrefixLength(c.text, measurer.width(c.widthOf) * c.times, measurer), c.cut);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FittingPrefix,
    ::testing::Values(PrefixCase{"WholeTextFits", L"工序铣削", L"工序铣削", 1.5, 4},
                      PrefixCase{"ExactWidthFits", L"ABCDEFGH", L"ABCDEFG", 1.0, 7},
                      PrefixCase{"JustBelowAPrefixCutsBeforeIt", L"ABCDEFGH", L"ABCDEFG", 0.999, 6},
                      PrefixCase{"ZeroWidthCharacterGoesOnWithTheRest", L"ABCDEFG\rHIJ", L"ABCDEFG", 1.0, 7},
                      PrefixCase{"LongChineseTextCut", std::wstring(300, L'中'), L"中中中", 1.0, 3},
                      PrefixCase{"NothingButAnEmptyPrefixFits", L"中文", L"中", 0.5, 0},
                      PrefixCase{"EmptyText", L"", L"中", 1.0, 0},
                      PrefixCase{"NegativeWidth", L"中文", L"中", -1.0, KrmFittingPrefix::kNothingFits}),
    [](const ::testing::TestParamInfo<PrefixCase>& info) { return std::string(info.param.name); });

TEST(FittingPrefixCutter, CutsAgainFromWhereTheLastLineEnded) {
  const QaGiTextStyle measurer = Measurer();
  const std::wstring text = std::wstring(40, L'中') + L"abc";
  KrmFittingPrefix fitting(measurer, measurer.width(std::wstring(10, L'中')));
  std::vector<std::size_t> cuts;
  for (std::size_t start = 0; cuts.size() < 10;) {
    const std::size_t cut = fitting.Cut(text, start);
    cuts.push_back(cut);
    if (start + cut == text.size()) break;
    start += cut;
  }
  EXPECT_EQ(cuts, (std::vector<std::size_t>{10, 10, 10, 10, 3}));
}

}  // namespace
