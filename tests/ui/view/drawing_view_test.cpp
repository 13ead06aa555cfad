// The view's cached picture: a pan shifts it and paints only the strips it uncovers,
// which must give the same picture as painting everything anew; a zoom window shows
// the window's box.
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

#include "drawing/render/scene_builder.h"
#include "ui/view/drawing_view.h"
#include "ui/view/scene_index.h"
#include "ui_test_drawing.h"

namespace {

using tabulon::ui::DrawingView;

// Pixels that differ by more than a little (antialiasing at strip edges aside).
int differingPixels(const QImage &a, const QImage &b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      if (std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q)) > 120) ++count;
    }
  return count;
}

class DrawingViewTest : public ::testing::Test {
 protected:
  DrawingViewTest() {
    tabulon::test::FillTestDrawing(db);
    index = std::make_shared<tabulon::ui::SceneIndex>(tabulon::render::BuildModelSpaceScene(db));
    view.resize(320, 240);
    view.setIndex(index);
    view.renderNow();
  }
  QaDbDatabase db;
  std::shared_ptr<const tabulon::ui::SceneIndex> index;
  DrawingView view;
};

TEST_F(DrawingViewTest, PanShiftsThePictureAsAFreshPaintWouldShowIt) {
  view.panBy(QPointF(37, -23));
  const QImage shifted = view.picture().copy();
  view.renderNow();
  EXPECT_LT(differingPixels(shifted, view.picture()), 20);
}

TEST_F(DrawingViewTest, FirstPictureShowsTheWholeDrawing) {
  const auto box = index->extents();
  const QPointF lo = view.toScreen(QPointF(box.minX, box.minY));
  const QPointF hi = view.toScreen(QPointF(box.maxX, box.maxY));
  EXPECT_GE(lo.x(), 0.0);
  EXPECT_LE(hi.x(), 320.0);
  EXPECT_GE(hi.y(), 0.0);
  EXPECT_LE(lo.y(), 240.0);
}

TEST_F(DrawingViewTest, ZoomWindowShowsTheBoxOfTwoClicks) {
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  view.setMode(DrawingView::Mode::ZoomWindow);
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.toScreen(QPointF(-1, -1)).toPoint());
  QTest::mouseClick(&view, Qt::LeftButton, {}, view.toScreen(QPointF(11, 2)).toPoint());
  EXPECT_EQ(view.mode(), DrawingView::Mode::Idle);
  // The window, 12 units wide, now spans the view's width.
  EXPECT_NEAR(view.transform().scale(), 320.0 / 12.0, 320.0 / 12.0 * 0.1);
}

TEST_F(DrawingViewTest, WheelZoomsAboutTheCursor) {
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  const QPoint cursor(100, 80);
  const QPointF before = view.toWorld(cursor);
  const double scale = view.transform().scale();
  QWheelEvent wheel(cursor, view.mapToGlobal(cursor), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view, &wheel);
  EXPECT_GT(view.transform().scale(), scale);
  EXPECT_NEAR(view.toWorld(cursor).x(), before.x(), 1e-9);
}

}  // namespace
