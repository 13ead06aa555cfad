#include "drawing/page_arrangement.h"

#include <gtest/gtest.h>

#include "host/db/qadb_line.h"
#include "records_test_support.h"

namespace {

using recordstest::addToModelSpace;

TEST(PageArrangement, MovesEachPageOntoItsMatrixPoint) {
  QaDbDatabase db;
  auto line = [&](double x0, double y0, double x1, double y1) {
    return addToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0)));
  };
  KrmPlacedCard card;
  card.pages.resize(2);
  card.pages[0].allIds = {line(5, 5, 15, 5), line(6, 2, 8, 9)};  // lower-left (5, 2)
  card.pages[1].allIds = {line(50, 50, 60, 50)};

  KrmPagePlacer placer;
  placer.origin = {100, 100, 3};
  placer.dir.SetHor(1);
  placer.dir.SetFstN(2);
  placer.pageWidth = 20;
  placer.pageHeight = 10;
  EXPECT_EQ(ArrangePlacedPages(card, placer), 2);
  EXPECT_EQ(placer.placed, 2);

  auto start = [](QaDbObjectId id) { return QaDbLine::cast(id.rawObject())->startPoint(); };
  // The first page takes the origin's z along.
  EXPECT_EQ(start(card.pages[0].allIds[0]), QaGePoint3d(100, 103, 3));
  EXPECT_EQ(start(card.pages[0].allIds[1]), QaGePoint3d(101, 100, 3));
  EXPECT_EQ(start(card.pages[1].allIds[0]), QaGePoint3d(121, 100, 0));
}

}  // namespace
