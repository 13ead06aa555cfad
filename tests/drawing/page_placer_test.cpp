#include "drawing/page_placer.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_frm_service.h"

namespace {

// Pages 100 x 50 with gaps 10 and 5: one step is 110 across and 55 up.
KrmPagePlacer Placer(int fstT, int dir, int fstN = 3) {
  KrmCardDir cardDir;
  cardDir.SetHor(10);
  cardDir.SetVer(5);
  cardDir.SetFstT(fstT);
  cardDir.SetDir(dir);
  cardDir.SetFstN(fstN);
  KrmPagePlacer placer;
  placer.origin = {1000, 2000, 7};
  placer.dir = cardDir;
  placer.pageWidth = 100;
  placer.pageHeight = 50;
  return placer;
}

TEST(PagePlacer, PagePointsForBothPrioritiesAndAllDirections) {
  struct Case {
    int fstT, dir, index;
    int stepsX, stepsY;
  } cases[] = {
      // Row first, 3 a row: pages 0..2 in a row, page 3 starts the next.
      {1, 0, 0, 0, 0}, {1, 0, 2, 2, 0}, {1, 0, 3, 0, 1}, {1, 0, 5, 2, 1},
      {1, 1, 2, -2, 0}, {1, 1, 4, -1, 1},
      {1, 2, 2, -2, 0}, {1, 2, 4, -1, -1},
      {1, 3, 2, 2, 0}, {1, 3, 4, 1, -1},
      // Column first, 3 a column.
      {0, 0, 2, 0, 2}, {0, 0, 3, 1, 0},
      {0, 1, 4, -1, 1},
      {0, 2, 1, 0, -1}, {0, 2, 2, 0, -2}, {0, 2, 3, -1, 0},
      {0, 3, 4, 1, -1},
      // Negative indices step back by truncated division: -4 is one row and one column back.
      {1, 0, -4, -1, -1}, {1, 0, -2, -2, 0}, {1, 2, -4, 1, 1}, {0, 0, -4, -1, -1},
  };
  for (const Case& c : cases) {
    const QaGePoint3d p = PagePointAt(Placer(c.fstT, c.dir), c.index);
    EXPECT_DOUBLE_EQ(p.x, 1000 + 110.0 * c.stepsX) << "FstT " << c.fstT << " Dir " << c.dir << " page " << c.index;
    EXPECT_DOUBLE_EQ(p.y, 2000 + 55.0 * c.stepsY) << "FstT " << c.fstT << " Dir " << c.dir << " page " << c.index;
    EXPECT_EQ(p.z, 0.0);
  }
}

TEST(PagePlacer, GapsFollowTheFrameScaleAndZeroGapsTouch) {
  KrmPagePlacer scaled = Placer(1, 0);
  scaled.scale = 2.0;
  EXPECT_DOUBLE_EQ(PagePointAt(scaled, 1).x, 1000 + 100 + 20);
  EXPECT_DOUBLE_EQ(PagePointAt(scaled, 3).y, 2000 + 50 + 10);

  KrmPagePlacer touching = Placer(1, 0);
  touching.dir.SetHor(0);
  touching.dir.SetVer(0);
  EXPECT_DOUBLE_EQ(PagePointAt(touching, 1).x, 1000 + touching.pageWidth);
  EXPECT_DOUBLE_EQ(PagePointAt(touching, 3).y, 2000 + touching.pageHeight);
}

TEST(PagePlacer, NextPointStartsAtTheOriginWithItsZ) {
  KrmPagePlacer placer = Placer(1, 0);
  const QaGePoint3d first = NextPagePoint(placer);
  EXPECT_EQ(first, QaGePoint3d(1000, 2000, 7));
  EXPECT_EQ(placer.placed, 1);
  EXPECT_EQ(NextPagePoint(placer), QaGePoint3d(1110, 2000, 0));
  EXPECT_EQ(NextPagePoint(placer), QaGePoint3d(1220, 2000, 0));
  EXPECT_EQ(NextPagePoint(placer), QaGePoint3d(1000, 2055, 0));
  EXPECT_EQ(placer.placed, 4);
}

TEST(PagePlacer, ZeroPagesPerRowIsAnError) {
  EXPECT_THROW(PagePointAt(Placer(1, 0, 0), 1), std::invalid_argument);
}

// A frame service whose frames have scale 2.5 right of x = 0.
class HalfPlaneFrames : public KrmFrmService {
 public:
  double getScaleByPoint(const QaGePoint3d& point, QaDbDatabase*) const override { return point.x > 0 ? 2.5 : 1.0; }
};

TEST(PagePlacer, InitTakesTheFrameScaleAtThePoint) {
  auto previous = qaServiceDictionary().atPut(KRM_FRM_SERVICE, std::make_unique<HalfPlaneFrames>());
  KrmCardDir dir;
  const KrmPagePlacer inFrame = InitPagePlacer({10, 0, 0}, dir);
  const KrmPagePlacer outside = InitPagePlacer({-10, 0, 0}, dir);
  if (previous) qaServiceDictionary().atPut(KRM_FRM_SERVICE, std::move(previous));
  else qaServiceDictionary().remove(KRM_FRM_SERVICE);

  EXPECT_EQ(inFrame.scale, 2.5);
  EXPECT_EQ(outside.scale, 1.0);
  EXPECT_EQ(inFrame.origin, QaGePoint3d(10, 0, 0));
  EXPECT_EQ(inFrame.placed, 0);
  EXPECT_EQ(inFrame.pageWidth, 0.0);
  EXPECT_EQ(inFrame.dir, dir);
}

}  // namespace
