// Picking and culling through the view's spatial index, on a drawing rendered as the
// view renders it.
#include <gtest/gtest.h>

#include "drawing/render/scene_builder.h"
#include "ui/view/scene_index.h"
#include "ui/view/view_transform.h"
#include "ui_test_drawing.h"

namespace {

using tabulon::ui::SceneIndex;
using tabulon::ui::WorldBox;

class SceneIndexTest : public ::testing::Test {
 protected:
  SceneIndexTest() : handles(tabulon::test::FillTestDrawing(db)), index(tabulon::render::BuildModelSpaceScene(db)) {}

  QaDbHandle handleAt(double x, double y, double tolerance) const {
    return index.entityAt(QPointF(x, y), tolerance).handle();
  }
  static std::vector<QaDbHandle> handlesOf(const std::vector<QaDbObjectId> &ids) {
    std::vector<QaDbHandle> out;
    for (auto id : ids) out.push_back(id.handle());
    return out;
  }

  QaDbDatabase db;
  tabulon::test::TestDrawing handles;
  SceneIndex index;
};

TEST_F(SceneIndexTest, PickFindsTheGeometryNearestThePointWithinTheTolerance) {
  EXPECT_EQ(handleAt(5, 0.3, 0.5), handles.left);
  EXPECT_EQ(handleAt(55, 5.2, 0.5), handles.right);
  EXPECT_EQ(handleAt(35.2, 30, 0.5), handles.circle);
  EXPECT_EQ(handleAt(1, 41, 0.5), handles.text);
}

TEST_F(SceneIndexTest, PickMissesWhatIsFartherThanTheTolerance) {
  EXPECT_TRUE(index.entityAt(QPointF(5, 2), 0.5).isNull());
  // Inside the circle's box but far from its ring.
  EXPECT_TRUE(index.entityAt(QPointF(30, 30), 1.0).isNull());
}

TEST_F(SceneIndexTest, WindowTakesOnlyWhatLiesWhollyInside) {
  EXPECT_EQ(handlesOf(index.entitiesInside(WorldBox{-1, -1, 11, 1})), std::vector<QaDbHandle>{handles.left});
  EXPECT_TRUE(index.entitiesInside(WorldBox{5, -1, 55, 5}).empty());
}

TEST_F(SceneIndexTest, CrossingTakesWhatCrossesTheEdgeToo) {
  const auto crossed = handlesOf(index.entitiesCrossing(WorldBox{5, -1, 55, 5}));
  EXPECT_EQ(crossed, (std::vector<QaDbHandle>{handles.left, handles.right}));
  // The box lies inside the circle without touching its ring.
  EXPECT_TRUE(index.entitiesCrossing(WorldBox{29, 29, 31, 31}).empty());
}

TEST_F(SceneIndexTest, CullingKeepsOnlyItemsMeetingTheBox) {
  const auto items = index.itemsIn(WorldBox{24, 24, 36, 36});
  ASSERT_EQ(items.size(), 1u);
  EXPECT_EQ(index.scene().owners[items.front()].handle(), handles.circle);
}

// Small windows go through the tree, large ones through one pass over the boxes;
// either way the items come in drawing order, exactly those whose boxes meet it.
TEST_F(SceneIndexTest, CullingGivesTheMeetingItemsInDrawingOrderForEveryWindowSize) {
  for (const WorldBox box : {WorldBox{24, 24, 36, 36}, WorldBox{-1, -1, 61, 12}, WorldBox{-5, -5, 70, 50},
                             WorldBox{100, 100, 200, 200}}) {
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < index.scene().items.size(); ++i) {
      const WorldBox &b = index.itemBox(i);
      if (!b.empty() && b.minX <= box.maxX && b.maxX >= box.minX && b.minY <= box.maxY && b.maxY >= box.minY)
        expected.push_back(i);
    }
    EXPECT_EQ(index.itemsIn(box), expected) << box.minX << "," << box.minY << " " << box.maxX << "," << box.maxY;
  }
}

TEST_F(SceneIndexTest, GreekLineRunsAlongTheTextAtHalfItsHeight) {
  int texts = 0;
  for (std::size_t i = 0; i < index.scene().items.size(); ++i) {
    const QLineF line = index.greekLine(i);
    if (index.scene().owners[i].handle() != handles.text) {
      EXPECT_TRUE(line.isNull());
      continue;
    }
    ++texts;
    // Painting coordinates: y points down, so the text at y 40 and 2.5 high sits at -41.25.
    EXPECT_DOUBLE_EQ(line.y1(), -41.25);
    EXPECT_DOUBLE_EQ(line.y2(), -41.25);
    EXPECT_DOUBLE_EQ(line.x1(), 0.0);
    EXPECT_GT(line.x2(), 0.0);
  }
  EXPECT_EQ(texts, 1);
}

TEST(ViewTransform, ZoomKeepsTheWorldPointUnderTheCursor) {
  tabulon::ui::ViewTransform view;
  view.setWindowSize(QSize(400, 300));
  view.fit(WorldBox{0, 0, 100, 50});
  const QPointF cursor(123, 77);
  const QPointF before = view.toWorld(cursor);
  view.zoomAbout(cursor, 2.5);
  const QPointF after = view.toWorld(cursor);
  EXPECT_NEAR(after.x(), before.x(), 1e-9);
  EXPECT_NEAR(after.y(), before.y(), 1e-9);
}

TEST(ViewTransform, FitShowsTheBoxWholeWithYUp) {
  tabulon::ui::ViewTransform view;
  view.setWindowSize(QSize(400, 300));
  view.fit(WorldBox{0, 0, 100, 50}, 0.0);
  EXPECT_NEAR(view.toScreen(QPointF(0, 25)).x(), 0.0, 1e-9);
  EXPECT_NEAR(view.toScreen(QPointF(100, 25)).x(), 400.0, 1e-9);
  // Higher in the drawing is higher on the screen.
  EXPECT_LT(view.toScreen(QPointF(50, 50)).y(), view.toScreen(QPointF(50, 0)).y());
}

}  // namespace
