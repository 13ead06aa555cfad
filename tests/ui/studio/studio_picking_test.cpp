// The studio's user channel driven by simulated mouse and key events: each host input
// function answers with the host's result codes and the ids picked.
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

#include "host/ed/qaed_prompts.h"
#include "host/ed/qaed_selection.h"
#include "support/test_support.h"
#include "ui/studio/command_line.h"
#include "ui/studio/studio_user_io.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"
#include "ui/view/drawing_view.h"
#include "ui_test_drawing.h"

namespace {

using tabulon::ui::DrawingView;

// Runs `f` once the event loop turns, that is inside the question about to be asked.
void later(std::function<void()> f) { QTimer::singleShot(0, std::move(f)); }

class StudioPicking : public ::testing::Test {
 protected:
  void SetUp() override {
    QaDbDatabase db;
    handles = tabulon::test::FillTestDrawing(db);
    const auto file = dir / "picking.dxf";
    ASSERT_EQ(db.saveAs(file), Qa::eOk);
    window = std::make_unique<tabulon::ui::StudioWindow>(strings);
    ASSERT_TRUE(window->openDrawing(file).ok());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    view()->renderNow();
  }
  void TearDown() override { window.reset(); }

  DrawingView *view() { return window->currentView(); }
  QPoint screen(double x, double y) { return view()->toScreen(QPointF(x, y)).toPoint(); }
  void click(double x, double y) { QTest::mouseClick(view(), Qt::LeftButton, {}, screen(x, y)); }
  void type(const QString &text, Qt::Key key = Qt::Key_Return) {
    QLineEdit *input = window->commandLine().input();
    QTest::keyClicks(input, text);
    QTest::keyClick(input, key);
  }
  // Drawing units per pixel: how near a click lands to where it was aimed.
  double pixel() { return 1.0 / view()->transform().scale(); }

  tabulon::test::ScratchDir dir;
  tabulon::ui::UiStrings strings{"zh_CN"};
  tabulon::test::TestDrawing handles;
  std::unique_ptr<tabulon::ui::StudioWindow> window;
};

TEST_F(StudioPicking, ClickAnswersAPointWithItsDrawingCoordinates) {
  later([this] { click(20, 20); });
  QaGePoint3d p;
  EXPECT_EQ(qaedGetPoint(nullptr, L"\n点: ", p), RTNORM);
  EXPECT_NEAR(p.x, 20.0, pixel());
  EXPECT_NEAR(p.y, 20.0, pixel());
}

struct TypedCase {
  const char *typed;
  Qt::Key key;
  int expected;
};

class StudioTypedAnswers : public StudioPicking, public ::testing::WithParamInterface<TypedCase> {};

TEST_P(StudioTypedAnswers, GiveTheHostResultCodes) {
  const TypedCase c = GetParam();
  later([this, c] {
    if (c.key == Qt::Key_Escape) QTest::keyClick(window->commandLine().input(), Qt::Key_Escape);
    else type(QString::fromUtf8(c.typed), c.key);
  });
  qaedInitGet(0, L"Base");
  QaGePoint3d p;
  EXPECT_EQ(qaedGetPoint(nullptr, L"\n点 [Base]: ", p), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Keys, StudioTypedAnswers,
                         ::testing::Values(TypedCase{"12,5", Qt::Key_Return, RTNORM},
                                           TypedCase{"12,5", Qt::Key_Space, RTNORM},
                                           TypedCase{"", Qt::Key_Return, RTNONE},
                                           TypedCase{"", Qt::Key_Space, RTNONE},
                                           TypedCase{"base", Qt::Key_Return, RTKWORD},
                                           TypedCase{"", Qt::Key_Escape, RTCAN}));

TEST_F(StudioPicking, KeywordClickedInThePromptIsTheAnswer) {
  later([this] { emit window->commandLine().promptLabel()->linkActivated(QStringLiteral("Base")); });
  qaedInitGet(0, L"Base Other");
  QaGePoint3d p;
  ASSERT_EQ(qaedGetPoint(nullptr, L"\n点: ", p), RTKWORD);
  std::wstring keyword;
  qaedGetInput(keyword);
  EXPECT_EQ(keyword, L"Base");
}

TEST_F(StudioPicking, EntityPickGivesTheEntityAndWhereItWasPicked) {
  later([this] {
    click(30, 10);  // nothing there: the question stays
    click(5, 0);
  });
  QaDbObjectId id;
  QaGePoint3d at;
  ASSERT_EQ(EntSelEx(L"\n选择对象: ", id, at), RTNORM);
  EXPECT_EQ(id.handle(), handles.left);
  EXPECT_NEAR(at.x, 5.0, pixel());
  EXPECT_TRUE(window->commandLine().historyText().contains(QStringLiteral("未选中对象")));
}

TEST_F(StudioPicking, WindowCrossingAndRemoveMakeTheSelection) {
  later([this] {
    click(-2, -2);  // left to right: a window
    click(12, 2);
    click(57, -2);  // right to left: a crossing
    click(45, 3);
    type(QStringLiteral("r"));
    click(5, 0);
    type(QString());
  });
  QaEdSelectionSet set;
  ASSERT_EQ(set.select(), RTNORM);
  const auto ids = set.ids();
  ASSERT_EQ(ids.size(), 1u);
  EXPECT_EQ(ids.front().handle(), handles.right);
}

TEST_F(StudioPicking, EnterWithNothingSelectedEndsEmpty) {
  later([this] { type(QString()); });
  QaEdSelectionSet set;
  EXPECT_EQ(set.select(), RTERROR);
}

TEST_F(StudioPicking, HoverMarksTheEntityUnderTheCursor) {
  QTest::mouseMove(view(), screen(55, 5));
  EXPECT_EQ(view()->hovered().handle(), handles.right);
  QTest::mouseMove(view(), screen(30, 15));
  EXPECT_TRUE(view()->hovered().isNull());
}

TEST_F(StudioPicking, EnterOnAnEmptyLineRepeatsTheLastCommand) {
  QSignalSpy ended(window.get(), &tabulon::ui::StudioWindow::commandEnded);
  QTimer::singleShot(0, [this] { QTest::keyClick(window->commandLine().input(), Qt::Key_Escape); });
  type(QStringLiteral("KrmDelBlkID"));
  ASSERT_EQ(ended.count(), 1);
  QTimer::singleShot(0, [this] { QTest::keyClick(window->commandLine().input(), Qt::Key_Escape); });
  type(QString());
  ASSERT_EQ(ended.count(), 2);
  EXPECT_EQ(ended.at(1).at(0).toString(), QStringLiteral("KrmDelBlkID"));
}

// Two answers in a row, each to its own question: the second must not reach the first
// question while that one winds down.
TEST_F(StudioPicking, ScriptAnswersEachQuestionOnceInTurn) {
  QSignalSpy finished(window.get(), &tabulon::ui::StudioWindow::scriptFinished);
  window->runScript({QStringLiteral("ZOOM"), QStringLiteral("W"), QStringLiteral("0,-1"), QStringLiteral("12,1")});
  ASSERT_TRUE(finished.wait(5000));
  // The 12 units wide window now fills the view's width.
  EXPECT_NEAR(view()->transform().scale(), view()->width() / 12.0, view()->width() / 12.0 * 0.01);
  EXPECT_NEAR(view()->toWorld(QPointF(view()->width() / 2.0, view()->height() / 2.0)).x(), 6.0, 1e-6);
}

TEST_F(StudioPicking, ModeXTakesEverythingWithoutAsking) {
  QaEdSelectionSet set;
  ASSERT_EQ(set.select(L"X"), RTNORM);
  EXPECT_EQ(set.ids().size(), 4u);
  EXPECT_FALSE(window->userIO().waiting());
}

}  // namespace
