#include "drawing/fill_order.h"

#include <gtest/gtest.h>

#include <string>

#include "drawing/page_placer.h"
#include "host/db/qadb_block_reference.h"

namespace {

// A 2 x 2 grid in the order BR TL BL TR; the top-left point stands `d` right of the
// bottom-left one, the top-right one `d` above the top-left one.
std::string Sorted(double d, int code) {
  const QaGePoint3d tl(d, 10, 0), tr(20, 10 + d, 0), bl(0, 0, 0), br(20, 0, 0);
  std::vector<QaGePoint3d> points = {br, tl, bl, tr};
  KrmSortByFillOrder(points, code, [](const QaGePoint3d& p) { return p; });
  std::string out;
  for (const QaGePoint3d& p : points) out += p == tl ? "TL " : p == tr ? "TR " : p == bl ? "BL " : "BR ";
  return out;
}

struct FillOrderCase {
  int code;
  const char* within;  // 0.9 apart: same row, same column
  const char* beyond;  // 1.1 apart: rows and columns of their own
};

class FillOrderOfCode : public ::testing::TestWithParam<FillOrderCase> {};

TEST_P(FillOrderOfCode, OrdersAGridWithinTheTolerance) { EXPECT_EQ(Sorted(0.9, GetParam().code), GetParam().within); }

TEST_P(FillOrderOfCode, OrdersAGridBeyondTheTolerance) { EXPECT_EQ(Sorted(1.1, GetParam().code), GetParam().beyond); }

INSTANTIATE_TEST_SUITE_P(
    FillOrder, FillOrderOfCode,
    ::testing::Values(FillOrderCase{0, "TL BL TR BR ", "BL TL TR BR "}, FillOrderCase{1, "TL TR BL BR ", "TR TL BL BR "},
                      FillOrderCase{2, "BL TL BR TR ", "BL TL BR TR "}, FillOrderCase{3, "BL BR TL TR ", "BL BR TL TR "},
                      // Code 4 compares x within a column and y across: BR stays ahead of TR.
                      FillOrderCase{4, "TL BR TR BL ", "TL BR TR BL "}, FillOrderCase{5, "TR TL BR BL ", "TR TL BR BL "},
                      FillOrderCase{6, "BR TR BL TL ", "BR TR TL BL "}, FillOrderCase{7, "BR BL TR TL ", "BR BL TL TR "},
                      FillOrderCase{8, "BR TL BL TR ", "BR TL BL TR "}),
    [](const ::testing::TestParamInfo<FillOrderCase>& info) { return "Code" + std::to_string(info.param.code); });

TEST(FillOrder, CodeSixTakesExactlyOneUnitAsOneColumnTheOthersAsTwo) {
  const QaGePoint3d low(0, 0, 0), high(1.0, 10, 0);
  EXPECT_FALSE(KrmFillOrderSwaps(0, low, high));
  EXPECT_TRUE(KrmFillOrderSwaps(6, high, low));
}

TEST(FillOrder, SortsReferencesByTheirPositions) {
  QaDbBlockReference low({0, 0, 0}, {}), high({0.5, 30, 0}, {});
  std::vector<QaDbEntity*> refs = {&low, &high}, none;
  EXPECT_EQ(SortRefsByFillOrder(refs, 0), 1);
  EXPECT_EQ(refs, (std::vector<QaDbEntity*>{&high, &low}));
  EXPECT_EQ(SortRefsByFillOrder(none, 0), 0);
}

}  // namespace
