#include "drawing/page_placer.h"

#include <gtest/gtest.h>

namespace {

// Pages 100 x 50 with gaps 10 and 5 at frame scale 2: one step is 120 across, 60 up.
KrmPagePlacer Placer(int fstT, int dir) {
  KrmPagePlacer placer;
  placer.origin = {1000, 2000, 7};
  placer.dir.SetHor(10);
  placer.dir.SetVer(5);
  placer.dir.SetFstT(fstT);
  placer.dir.SetDir(dir);
  placer.dir.SetFstN(3);
  placer.pageWidth = 100;
  placer.pageHeight = 50;
  placer.scale = 2;
  return placer;
}

struct PagePointCase {
  int fstT, dir, index, stepsX, stepsY;
};

class PagePoint : public ::testing::TestWithParam<PagePointCase> {};

TEST_P(PagePoint, StepsByPageSizeAndGapInTheDirectionsOfTheArrangement) {
  const PagePointCase& c = GetParam();
  const QaGePoint3d p = PagePointAt(Placer(c.fstT, c.dir), c.index);
  EXPECT_DOUBLE_EQ(p.x, 1000 + 120.0 * c.stepsX);
  EXPECT_DOUBLE_EQ(p.y, 2000 + 60.0 * c.stepsY);
  EXPECT_DOUBLE_EQ(p.z, 0.0);
}

INSTANTIATE_TEST_SUITE_P(
    PagePlacer, PagePoint,
    ::testing::Values(
        // Row first, 3 a row: page 3 starts the next row.
        PagePointCase{1, 0, 2, 2, 0}, PagePointCase{1, 0, 3, 0, 1}, PagePointCase{1, 1, 4, -1, 1},
        PagePointCase{1, 2, 4, -1, -1}, PagePointCase{1, 3, 5, 2, -1},
        // Column first, 3 a column.
        PagePointCase{0, 0, 2, 0, 2}, PagePointCase{0, 1, 4, -1, 1}, PagePointCase{0, 2, 2, 0, -2},
        PagePointCase{0, 2, 3, -1, 0}, PagePointCase{0, 3, 4, 1, -1},
        // Truncated division: -4 is one row and one column back, -2 two pages back.
        PagePointCase{1, 0, -4, -1, -1}, PagePointCase{1, 0, -2, -2, 0}, PagePointCase{1, 2, -4, 1, 1},
        PagePointCase{0, 0, -2, 0, -2}),
    [](const ::testing::TestParamInfo<PagePointCase>& info) {
      const PagePointCase& c = info.param;
      return std::string(c.fstT == 1 ? "RowFirst" : "ColumnFirst") + "Dir" + std::to_string(c.dir) + "Page" +
             (c.index < 0 ? "Minus" + std::to_string(-c.index) : std::to_string(c.index));
    });

TEST(PagePlacer, FirstPointIsTheOriginWithItsZAndZeroGapsTouch) {
  KrmPagePlacer placer = Placer(1, 0);
  placer.dir.SetHor(0);
  EXPECT_EQ(NextPagePoint(placer), QaGePoint3d(1000, 2000, 7));
  EXPECT_EQ(NextPagePoint(placer), QaGePoint3d(1100, 2000, 0));
  EXPECT_EQ(placer.placed, 2);
  placer.dir.SetFstN(0);
  EXPECT_THROW(NextPagePoint(placer), std::invalid_argument);
}

}  // namespace
