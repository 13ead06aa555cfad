#include "drawing/fill_order.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "drawing/page_placer.h"
#include "host/db/qadb_block_reference.h"

namespace {

// Four references of a 2 x 2 grid; the top-left one stands `d` right of the
// bottom-left one, and the top-right one `d` above the top-left one.
struct Grid {
  explicit Grid(double d) : tl(d, 10, 0), tr(20, 10 + d, 0), bl(0, 0, 0), br(20, 0, 0) {}
  QaGePoint3d tl, tr, bl, br;

  std::string Name(const QaGePoint3d& p) const {
    if (p == tl) return "TL";
    if (p == tr) return "TR";
    if (p == bl) return "BL";
    return "BR";
  }
  std::string Sorted(int code) const {
    std::vector<QaGePoint3d> points = {br, tl, bl, tr};
    KrmSortByFillOrder(points, code, [](const QaGePoint3d& p) { return p; });
    std::string out;
    for (const QaGePoint3d& p : points) out += (out.empty() ? "" : " ") + Name(p);
    return out;
  }
};

TEST(FillOrder, OrdersAGridWithinAndBeyondTheTolerance) {
  struct Case {
    int code;
    const char* within;  // offsets of 0.9: same row, same column
    const char* beyond;  // offsets of 1.1: a row and a column of their own
  } cases[] = {
      {0, "TL BL TR BR", "BL TL TR BR"},
      {1, "TL TR BL BR", "TR TL BL BR"},
      {2, "BL TL BR TR", "BL TL BR TR"},
      {3, "BL BR TL TR", "BL BR TL TR"},
      {5, "TR TL BR BL", "TR TL BR BL"},
      {6, "BR TR BL TL", "BR TR TL BL"},
      {7, "BR BL TR TL", "BR BL TL TR"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Grid(0.9).Sorted(c.code), c.within) << "code " << c.code;
    EXPECT_EQ(Grid(1.1).Sorted(c.code), c.beyond) << "code " << c.code;
  }
}

TEST(FillOrder, CodeFourComparesXWithinAColumnAndYOtherwise) {
  // Across columns the higher reference comes first; within the right-hand column the
  // lower one may stay ahead, as y is not compared there.
  EXPECT_EQ(Grid(0.9).Sorted(4), "TL BR TR BL");
  EXPECT_TRUE(KrmFillOrderSwaps(4, {0, 0, 0}, {0.5, -50, 0}));  // same column: larger x first
  EXPECT_FALSE(KrmFillOrderSwaps(4, {0, 0, 0}, {0, 50, 0}));
}

TEST(FillOrder, CodeSixTreatsExactlyOneUnitAsTheSameColumn) {
  const QaGePoint3d low(0, 0, 0), high(1.0, 10, 0);
  // Code 0: a difference of exactly 1.0 is two columns, ordered by x.
  EXPECT_FALSE(KrmFillOrderSwaps(0, low, high));
  // Code 6: not above 1.0, so one column, bottom to top.
  EXPECT_TRUE(KrmFillOrderSwaps(6, high, low));
}

TEST(FillOrder, UnknownCodesKeepTheOrder) {
  for (int code : {-1, 8, 100}) EXPECT_EQ(Grid(0.9).Sorted(code), "BR TL BL TR") << code;
}

TEST(FillOrder, SortsReferencesByTheirPositions) {
  QaDbBlockReference low({0, 0, 0}, {}), high({0.5, 30, 0}, {});
  std::vector<QaDbEntity*> refs = {&low, &high};
  EXPECT_EQ(SortRefsByFillOrder(refs, 0), 1);
  EXPECT_EQ(refs, (std::vector<QaDbEntity*>{&high, &low}));
  EXPECT_EQ(SortRefsByFillOrder(refs, 2), 1);
  EXPECT_EQ(refs, (std::vector<QaDbEntity*>{&low, &high}));

  std::vector<QaDbEntity*> empty;
  EXPECT_EQ(SortRefsByFillOrder(empty, 0), 0);
}

}  // namespace
