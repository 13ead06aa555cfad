#include "drawing/entity_list.h"

#include <gtest/gtest.h>

#include "records_test_support.h"

namespace {

QaDbLine* Line(KrmEntityPool& pool, double y) {
  return static_cast<QaDbLine*>(pool.adopt(std::make_unique<QaDbLine>(QaGePoint3d(0, y, 0), QaGePoint3d(1, y, 0))));
}

TEST(EntityList, AppendingHandsEntitiesToTheDrawingAndStopsAtAStranger) {
  QaDbDatabase db;
  KrmEntityPool pool;
  QaDbLine *a = Line(pool, 0), *b = Line(pool, 1), *c = Line(pool, 2);
  EXPECT_TRUE(pool.owns(c));
  QaDbLine stranger;  // not held by the pool
  TranslateList({a, nullptr}, {0, 0, 0}, {0, 10, 0});  // in memory, before the drawing
  const std::vector<QaDbObjectId> ids = AppendToModelSpace({a, nullptr, b, &stranger, c}, pool, &db);
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_EQ(ids[0].rawObject(), a);
  EXPECT_FALSE(a->isOpen());
  EXPECT_EQ(pool.size(), 1u);
  EXPECT_EQ(a->startPoint(), QaGePoint3d(0, 10, 0));
}

}  // namespace
