// The small gadgets: the list that mirrors its texts, the hover button.
#include <QTest>

#include <gtest/gtest.h>

#include "ui/gadgets/hover_button.h"
#include "ui/gadgets/krm_list_box.h"

namespace {

using tabulon::ui::KrmListBox;

TEST(KrmListBox, MirrorsItsItemsAndMeasuresTheWidest) {
  KrmListBox list;
  list.AddString(QStringLiteral("短"));
  list.InsertString(0, QStringLiteral("一个长得多的条目"));
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetText(0), QStringLiteral("一个长得多的条目"));
  EXPECT_EQ(list.item(1)->text(), QStringLiteral("短"));
  const int wide = list.horizontalExtent();
  EXPECT_GT(wide, QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("短")));
  list.DeleteString(0);
  EXPECT_LT(list.horizontalExtent(), wide);
  EXPECT_EQ(list.GetText(5), QString());
  EXPECT_EQ(list.DeleteString(5), -1);
}

TEST(HoverButton, KnowsWhenTheMouseIsOverIt) {
  QWidget parent;
  parent.resize(200, 100);
  auto *button = new tabulon::ui::CHoverButton(&parent);
  button->setGeometry(10, 10, 60, 30);
  parent.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&parent));
  QEnterEvent enter(QPointF(5, 5), QPointF(15, 15), QPointF(15, 15));
  QApplication::sendEvent(button, &enter);
  EXPECT_TRUE(button->hovering());
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(button, &leave);
  EXPECT_FALSE(button->hovering());
}

}  // namespace
