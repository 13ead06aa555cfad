// The grid control's operations as the card editor calls them, its editors driven by
// simulated keys and clicks, and its model under Qt's model checker.
#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QPdfWriter>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include "support/test_support.h"
#include "ui/grid/grid_clipboard.h"
#include "ui/grid/grid_ctrl.h"
#include "ui/grid/grid_delegate.h"
#include "ui/grid/grid_find.h"
#include "ui/grid/grid_model.h"

namespace {

using namespace tabulon::ui;

// A 4 x 3 grid (fixed row and column included) with texts "r,c" in the data cells.
class GridCtrlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    tester = std::make_unique<QAbstractItemModelTester>(&grid.gridModel(),
                                                        QAbstractItemModelTester::FailureReportingMode::Warning);
    grid.SetRowCount(4);
    grid.SetColumnCount(3);
    grid.SetFixedRowCount(1);
    grid.SetFixedColumnCount(1);
    grid.SetItemText(0, 1, QStringLiteral("名称"));
    grid.SetItemText(0, 2, QStringLiteral("数量"));
    for (int r = 1; r < 4; ++r)
      for (int c = 1; c < 3; ++c) grid.SetItemText(r, c, QStringLiteral("%1,%2").arg(r).arg(c));
    grid.SetModified(false);
    grid.resize(400, 300);
  }

  // Opens the editor of a cell as a click on the current cell does.
  QLineEdit *openEditor(int row, int col) {
    grid.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&grid));
    const QModelIndex index = grid.gridModel().indexOf(row, col);
    grid.setCurrentIndex(index);
    grid.edit(index);
    return grid.viewport()->findChild<QLineEdit *>();
  }

  CGridCtrl grid;
  std::unique_ptr<QAbstractItemModelTester> tester;
};

TEST_F(GridCtrlTest, ShapeCountsTheFixedRowAndColumn) {
  EXPECT_EQ(grid.GetRowCount(), 4);
  EXPECT_EQ(grid.GetColumnCount(), 3);
  EXPECT_EQ(grid.gridModel().rowCount(), 3);
  EXPECT_EQ(grid.gridModel().columnCount(), 2);
  EXPECT_EQ(grid.gridModel().headerData(0, Qt::Horizontal).toString(), QStringLiteral("名称"));
}

TEST_F(GridCtrlTest, OutOfRangeReadsGiveNothingAndWritesNoEffect) {
  EXPECT_FALSE(grid.SetItemText(9, 1, QStringLiteral("x")));
  EXPECT_EQ(grid.GetItemText(9, 1), QString());
  EXPECT_EQ(grid.GetItemText(-1, -1), QString());
  EXPECT_FALSE(grid.SetCellType(1, 7, GridCellClass::Check));
  EXPECT_TRUE(grid.GetCell(5, 5).IsNull());
  EXPECT_FALSE(grid.GetModified());
}

TEST_F(GridCtrlTest, TextChangesMarkTheCellAndTheGridModified) {
  grid.SetModified(false, 1, 1);
  grid.SetItemText(2, 2, QStringLiteral("new"));
  EXPECT_TRUE(grid.GetModified());
  EXPECT_TRUE(grid.GetModified(2, 2));
  EXPECT_FALSE(grid.GetModified(1, 1));
}

TEST_F(GridCtrlTest, CellClassChangeKeepsTheText) {
  ASSERT_TRUE(grid.SetCellType(1, 1, GridCellClass::Combo));
  EXPECT_EQ(grid.GetItemText(1, 1), QStringLiteral("1,1"));
  EXPECT_TRUE(grid.SetComboOptions(1, 1, {QStringLiteral("A"), QStringLiteral("B")}, CBS_DROPDOWNLIST));
  EXPECT_EQ(grid.cell(1, 1)->comboStyle, CBS_DROPDOWNLIST);
  // A check box reads its text as on or off.
  ASSERT_TRUE(grid.SetCellType(1, 2, GridCellClass::Check));
  EXPECT_EQ(grid.GetItemText(1, 2), QStringLiteral("1"));
}

TEST_F(GridCtrlTest, ReadOnlyCellsRefuseEditsThroughTheModel) {
  grid.SetItemState(1, 1, GVIS_READONLY);
  const QModelIndex i = grid.gridModel().indexOf(1, 1);
  EXPECT_FALSE(grid.gridModel().flags(i) & Qt::ItemIsEditable);
  EXPECT_FALSE(grid.gridModel().setData(i, QStringLiteral("x")));
  EXPECT_EQ(grid.GetItemText(1, 1), QStringLiteral("1,1"));
}

TEST_F(GridCtrlTest, ZeroSizesHide) {
  grid.SetColumnWidth(2, 0);
  grid.SetRowHeight(3, 0);
  EXPECT_EQ(grid.GetColumnWidth(2), 0);
  EXPECT_EQ(grid.GetRowHeight(3), 0);
  grid.SetColumnWidth(2, 80);
  EXPECT_EQ(grid.GetColumnWidth(2), 80);
  // AutoSizeColumns leaves hidden columns hidden.
  grid.SetColumnWidth(1, 0);
  grid.AutoSizeColumns();
  EXPECT_EQ(grid.GetColumnWidth(1), 0);
  EXPECT_GT(grid.GetColumnWidth(2), 0);
}

TEST_F(GridCtrlTest, SelectedRangeAcceptsTheRowPastTheLast) {
  grid.SetSelectedRange(4, 1, 4, 2);
  const CCellRange r = grid.GetSelectedCellRange();
  EXPECT_EQ(r.minRow, 4);
  EXPECT_EQ(r.maxRow, 4);
  EXPECT_EQ(r.minCol, 1);
  EXPECT_EQ(r.maxCol, 2);
  EXPECT_EQ(grid.GetSelectedCount(), 2);
}

TEST_F(GridCtrlTest, CopyAndPasteExchangeTabSeparatedText) {
  grid.SetSelectedRange(1, 1, 2, 2);
  grid.OnEditCopy();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1,1\t1,2\r\n2,1\t2,2\r\n"));
  QApplication::clipboard()->setText(QStringLiteral("a\t\"b\tc\"\r\nd\te\r\nlost\tlost\r\n"));
  grid.SetSelectedRange(2, 1, 2, 1);
  grid.OnEditPaste();
  EXPECT_EQ(grid.GetItemText(2, 1), QStringLiteral("a"));
  EXPECT_EQ(grid.GetItemText(2, 2), QStringLiteral("b\tc"));
  EXPECT_EQ(grid.GetItemText(3, 1), QStringLiteral("d"));
  EXPECT_EQ(grid.GetRowCount(), 4);  // what falls past the edge is left
}

TEST_F(GridCtrlTest, CutEmptiesTheCellsItCopied) {
  grid.SetSelectedRange(1, 2, 3, 2);
  grid.OnEditCut();
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1,2\r\n2,2\r\n3,2\r\n"));
  EXPECT_EQ(grid.GetItemText(2, 2), QString());
}

TEST_F(GridCtrlTest, ClipboardDoesNothingOnAGridThatIsNotEditable) {
  grid.SetEditable(false);
  QApplication::clipboard()->setText(QStringLiteral("x"));
  grid.SetSelectedRange(1, 1, 1, 1);
  grid.OnEditPaste();
  grid.OnEditCut();
  EXPECT_EQ(grid.GetItemText(1, 1), QStringLiteral("1,1"));
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("x"));
}

TEST_F(GridCtrlTest, HeaderClicksSortAndASecondClickReverses) {
  grid.SetItemText(1, 2, QStringLiteral("b"));
  grid.SetItemText(2, 2, QStringLiteral("c"));
  grid.SetItemText(3, 2, QStringLiteral("a"));
  grid.SetHeaderSort(true);
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  emit grid.horizontalHeader()->sectionClicked(1);
  EXPECT_EQ(grid.GetItemText(1, 2), QStringLiteral("a"));
  EXPECT_EQ(grid.GetItemText(3, 2), QStringLiteral("c"));
  EXPECT_EQ(grid.GetItemText(1, 1), QStringLiteral("3,1"));  // rows move whole
  emit grid.horizontalHeader()->sectionClicked(1);
  EXPECT_EQ(grid.GetItemText(1, 2), QStringLiteral("c"));
  EXPECT_FALSE(grid.GetSortAscending());
  EXPECT_EQ(grid.GetItemText(0, 2), QStringLiteral("数量"));  // the header stays
}

TEST_F(GridCtrlTest, CompareFunctionDecidesTheOrder) {
  grid.SetItemText(1, 2, QStringLiteral("10"));
  grid.SetItemText(2, 2, QStringLiteral("9"));
  grid.SetItemText(3, 2, QStringLiteral("100"));
  grid.SetCompareFunction([](const QString &a, const QString &b) { return a.toInt() - b.toInt(); });
  grid.SortByColumn(2, true);
  EXPECT_EQ(grid.GetItemText(1, 2), QStringLiteral("9"));
  EXPECT_EQ(grid.GetItemText(2, 2), QStringLiteral("10"));
  EXPECT_EQ(grid.GetItemText(3, 2), QStringLiteral("100"));
}

TEST_F(GridCtrlTest, EscInTheEditorNotifiesWithTheOldText) {
  QSignalSpy spy(&grid, &CGridCtrl::notify);
  QLineEdit *editor = openEditor(2, 1);
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, QStringLiteral("xyz"));
  QTest::keyClick(editor, Qt::Key_Escape);
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(0).toInt(), GVN_ENDLABELEDIT);
  EXPECT_EQ(spy.at(0).at(3).toString(), QStringLiteral("2,1"));
  EXPECT_EQ(spy.at(0).at(4).toInt(), int(Qt::Key_Escape));
  EXPECT_EQ(grid.GetItemText(2, 1), QStringLiteral("2,1"));
}

TEST_F(GridCtrlTest, ReturnCommitsAndNotifiesOnce) {
  QSignalSpy spy(&grid, &CGridCtrl::notify);
  QLineEdit *editor = openEditor(1, 2);
  ASSERT_NE(editor, nullptr);
  // Opened by a click, the caret stands after the text and typing appends.
  QTest::keyClicks(editor, QStringLiteral("+"));
  QTest::keyClick(editor, Qt::Key_Return);
  QApplication::processEvents();  // the view ends the edit once the key is through
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(1).toInt(), 1);
  EXPECT_EQ(spy.at(0).at(2).toInt(), 2);
  EXPECT_EQ(spy.at(0).at(3).toString(), QStringLiteral("1,2+"));
  EXPECT_EQ(grid.GetItemText(1, 2), QStringLiteral("1,2+"));
  EXPECT_TRUE(grid.GetModified(1, 2));
}

TEST_F(GridCtrlTest, ClickingAnotherCellEndsTheEditWithOneNotificationForTheCellLeft) {
  QSignalSpy spy(&grid, &CGridCtrl::notify);
  QLineEdit *editor = openEditor(1, 1);
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, QStringLiteral("!"));
  const QRect other = grid.visualRect(grid.gridModel().indexOf(3, 2));
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, other.center());
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(1).toInt(), 1);
  EXPECT_EQ(spy.at(0).at(2).toInt(), 1);
  EXPECT_EQ(grid.GetItemText(1, 1), QStringLiteral("1,1!"));
}

TEST_F(GridCtrlTest, CtrlArrowAtTheEdgeLeavesTheCellAndMovesOn) {
  QSignalSpy spy(&grid, &CGridCtrl::notify);
  QLineEdit *editor = openEditor(1, 1);
  ASSERT_NE(editor, nullptr);
  QTest::keyClick(editor, Qt::Key_Left, Qt::ControlModifier);  // caret at the end: stays
  EXPECT_EQ(spy.count(), 0);
  QTest::keyClick(editor, Qt::Key_Down, Qt::ControlModifier);
  QApplication::processEvents();
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(4).toInt(), int(Qt::Key_Down));
  EXPECT_EQ(grid.GetFocusCell().row, 2);
  EXPECT_EQ(grid.GetFocusCell().col, 1);
}

// A key typed on a cell opens its editor; only keys that type replace the text.
struct FirstKeyCase {
  const char *name;
  Qt::Key key;
  QString text;     // the editor's text right after the key
  int caret;        // where its caret then stands
  bool allSelected;
};

class GridFirstKey : public GridCtrlTest, public ::testing::WithParamInterface<FirstKeyCase> {};

TEST_P(GridFirstKey, DecidesHowTheEditorStarts) {
  const FirstKeyCase &c = GetParam();
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  grid.setCurrentIndex(grid.gridModel().indexOf(1, 1));
  grid.setFocus();
  QTest::keyClick(&grid, c.key);
  auto *editor = grid.viewport()->findChild<QLineEdit *>();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->text(), c.text);
  EXPECT_EQ(editor->cursorPosition(), c.caret);
  EXPECT_EQ(editor->hasSelectedText() && editor->selectedText() == editor->text(), c.allSelected);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, GridFirstKey,
    ::testing::Values(FirstKeyCase{"BackspaceKeepsTheTextWithTheCaretAfterIt", Qt::Key_Backspace, "1,1", 3, false},
                      FirstKeyCase{"LetterReplacesTheText", Qt::Key_X, "x", 1, false},
                      FirstKeyCase{"DeleteReplacesTheTextWithNothing", Qt::Key_Delete, "", 0, false}),
    [](const ::testing::TestParamInfo<FirstKeyCase> &info) { return std::string(info.param.name); });

TEST(GridEditStart, KeysThatDoNotTypeOnlyPlaceTheCaret) {
  using tabulon::ui::EditStart;
  EXPECT_EQ(tabulon::ui::EditStartFor(Qt::Key_Home), EditStart::CaretAfterText);
  EXPECT_EQ(tabulon::ui::EditStartFor(Qt::Key_Tab), EditStart::SelectAll);
  EXPECT_EQ(tabulon::ui::EditStartFor(Qt::Key_End), EditStart::CaretBeforeText);
  EXPECT_EQ(tabulon::ui::EditStartFor(Qt::Key_Space), EditStart::AsOpened);
  EXPECT_EQ(tabulon::ui::EditStartFor(Qt::Key_5), EditStart::ReplaceText);
}

TEST_F(GridCtrlTest, CtrlDoubleClickInTheEditorAsksForTheWordLibrary) {
  QLineEdit *editor = openEditor(1, 1);
  ASSERT_NE(editor, nullptr);
  EXPECT_FALSE(editor->toolTip().isEmpty());
  auto *delegate = qobject_cast<tabulon::ui::GridDelegate *>(grid.itemDelegate());
  ASSERT_NE(delegate, nullptr);
  QSignalSpy asked(delegate, &tabulon::ui::GridDelegate::wordLibraryRequested);
  QTest::mouseDClick(editor, Qt::LeftButton, Qt::ControlModifier, QPoint(5, 5));
  EXPECT_EQ(asked.count(), 1);
  QTest::mouseDClick(editor, Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(asked.count(), 1);  // a plain double click selects a word, as in any editor
}

TEST_F(GridCtrlTest, CheckBoxTogglesOnAClickAndMarksTheCell) {
  grid.SetItemText(2, 2, QStringLiteral("0"));
  grid.SetCellType(2, 2, GridCellClass::Check);
  grid.SetModified(false);
  const QModelIndex i = grid.gridModel().indexOf(2, 2);
  ASSERT_TRUE(grid.gridModel().setData(i, Qt::Checked, Qt::CheckStateRole));
  EXPECT_EQ(grid.GetItemText(2, 2), QStringLiteral("1"));
  EXPECT_TRUE(grid.GetModified(2, 2));
}

TEST_F(GridCtrlTest, CellFromPointFindsDataAndFixedCells) {
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  const QRect r = grid.visualRect(grid.gridModel().indexOf(2, 1));
  const CCellID data = grid.GetCellFromPt(grid.viewport()->mapTo(&grid, r.center()));
  EXPECT_EQ(data.row, 2);
  EXPECT_EQ(data.col, 1);
  const QPoint header = grid.horizontalHeader()->mapTo(&grid, QPoint(r.center().x(), 3));
  EXPECT_EQ(grid.GetCellFromPt(header).row, 0);
  EXPECT_FALSE(grid.GetCellFromPt(header, false).IsValid());
}

TEST_F(GridCtrlTest, FindGoesFromTheFocusCellAndReplaceAllFromTheTop) {
  grid.SetFocusCell(2, 2);
  GridFindOptions down;
  const auto next = FindInGrid(grid.gridModel(), grid.GetFocusCell(), QStringLiteral(",1"), down);
  ASSERT_TRUE(next.has_value());
  EXPECT_EQ(next->row, 3);
  EXPECT_EQ(next->col, 1);
  GridFindOptions up{false, false};
  const auto back = FindInGrid(grid.gridModel(), grid.GetFocusCell(), QStringLiteral(",1"), up);
  ASSERT_TRUE(back.has_value());
  EXPECT_EQ(back->row, 2);
  EXPECT_EQ(back->col, 1);
  EXPECT_EQ(ReplaceAllInGrid(grid.gridModel(), QStringLiteral(","), QStringLiteral("-"), down), 6);
  EXPECT_EQ(grid.GetItemText(3, 2), QStringLiteral("3-2"));
  EXPECT_EQ(grid.GetItemText(0, 1), QStringLiteral("名称"));  // headers are not searched
}

TEST_F(GridCtrlTest, FindWindowOfTheOtherModeReplacesTheOpenOne) {
  grid.SetFocusCell(1, 2);
  grid.FindDialog(true);
  ASSERT_NE(grid.findDialog(), nullptr);
  EXPECT_EQ(grid.findDialog()->searchText(), QStringLiteral("1,2"));
  GridFindDialog *first = grid.findDialog();
  grid.FindDialog(true);
  EXPECT_EQ(grid.findDialog(), first);  // brought forward, not made again
  grid.FindDialog(false);
  QApplication::processEvents();
  ASSERT_NE(grid.findDialog(), nullptr);
  EXPECT_FALSE(grid.findDialog()->findOnly());
  grid.findDialog()->close();
}

TEST_F(GridCtrlTest, PrintsEveryRowOnPages) {
  grid.SetRowCount(301);
  tabulon::test::ScratchDir dir;
  QPdfWriter pdf(QString::fromStdString((dir / "grid.pdf").string()));
  const int pages = grid.PrintTo(pdf);
  EXPECT_GT(pages, 1);
  EXPECT_GT(std::filesystem::file_size(dir / "grid.pdf"), 0u);
}

TEST(GridClipboard, QuotedCellsSurviveTheRoundTrip) {
  const QVector<QStringList> rows{{QStringLiteral("a\tb"), QStringLiteral("say \"hi\"")},
                                  {QStringLiteral("two\nlines"), QString()}};
  EXPECT_EQ(FromTabSeparated(ToTabSeparated(rows)), rows);
}

TEST(GridClipboard, ReadsPlainLineEndsAndNoTrailingLine) {
  const QVector<QStringList> rows = FromTabSeparated(QStringLiteral("1\t2\n3\t4"));
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[1], (QStringList{QStringLiteral("3"), QStringLiteral("4")}));
}

TEST(GridModelChecker, InsertsRemovesAndResetsPassTheModelTester) {
  GridModel model;
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  model.setGridRowCount(5);
  model.setGridColumnCount(4);
  model.setFixedRowCount(1);
  model.setFixedColumnCount(1);
  model.setText(2, 2, QStringLiteral("x"));
  model.setGridRowCount(3);
  model.setGridColumnCount(6);
  model.sortRows(2, false, [](const QString &a, const QString &b) { return a < b; });
  model.clear();
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
