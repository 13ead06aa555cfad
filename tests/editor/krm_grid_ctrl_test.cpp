#include "editor/krm_grid_ctrl.h"

#include <gtest/gtest.h>

#include "editor/row_page_dialogs.h"
#include "editor_test_support.h"
#include "host/svc/krm_reg_service.h"
#include "support/test_support.h"

namespace {

KrmDataGrid OneColumn(const std::wstring& ctrType, const std::wstring& content, const std::vector<std::wstring>& values) {
  KrmDataGrid grid = edtest::MakeGrid({L"列"}, {});
  grid.cols[0].att.SetCtrType(ctrType);
  grid.cols[0].att.SetCtrContent(content);
  grid.cols[0].values = values;
  return grid;
}

struct KindCase {
  const wchar_t* ctrType;
  const wchar_t* content;
  KrmCellClass cellClass;
  bool readOnly;
  int comboStyle;
};

class CellClassOfControlWord : public ::testing::TestWithParam<KindCase> {};

TEST_P(CellClassOfControlWord, FollowsTheWord) {
  KrmGridCtrl grid;
  grid.LoadData(OneColumn(GetParam().ctrType, GetParam().content, {L"x"}), -1);
  const KrmGridCell* cell = grid.GetCell(1, 1);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->cellClass, GetParam().cellClass);
  EXPECT_EQ(cell->readOnly, GetParam().readOnly);
  EXPECT_EQ(cell->comboStyle, GetParam().comboStyle);
}

INSTANTIATE_TEST_SUITE_P(
    Words, CellClassOfControlWord,
    ::testing::Values(KindCase{L"CMB_DOWN", L"a;b", KrmCellClass::kCombo, false, kKrmComboDropDown},
                      KindCase{L"CMB_LIST", L"a;b", KrmCellClass::kCombo, false, kKrmComboDropDownList},
                      KindCase{L"CMB_LIST_YESNO", L"", KrmCellClass::kCombo, false, kKrmComboDropDownList},
                      // A drop-down without options is an ordinary text cell.
                      KindCase{L"CMB_DOWN", L"", KrmCellClass::kText, false, 0},
                      KindCase{L"NOCTRL", L"", KrmCellClass::kText, true, 0},
                      KindCase{L"EDT_SPIN", L"", KrmCellClass::kText, false, 0},
                      KindCase{L"EDT_NUM", L"", KrmCellClass::kNumeric, false, 0},
                      KindCase{L"EDT_REAL", L"", KrmCellClass::kNumeric, false, 0},
                      KindCase{L"PTI_DATE", L"", KrmCellClass::kDateTime, false, 0},
                      KindCase{L"CHK_CELLCHECK", L"", KrmCellClass::kCheck, true, 0},
                      KindCase{L"SOMETHING", L"", KrmCellClass::kText, false, 0}));

TEST(GridProjection, YesNoColumnOffersTheTwoWords) {
  KrmGridCtrl grid;
  grid.LoadData(OneColumn(L"CMB_LIST_YESNO", L"", {L"是"}), -1);
  const auto* options = grid.GetComboOptions(1);
  ASSERT_NE(options, nullptr);
  EXPECT_NE(std::find(options->begin(), options->end(), L"是"), options->end());
  EXPECT_NE(std::find(options->begin(), options->end(), L"否"), options->end());
  EXPECT_EQ(grid.GetItemText(1, 1), L"是");
}

TEST(GridProjection, NumericCellsKeepWholeNumbers) {
  KrmGridCtrl grid;
  grid.LoadData(OneColumn(L"EDT_REAL", L"", {L"12.75"}), -1);
  EXPECT_EQ(grid.GetItemText(1, 1), L"12");
  EXPECT_EQ(grid.SetItemText(1, 1, L"abc"), 0);
  EXPECT_EQ(grid.GetItemText(1, 1), L"12");
  EXPECT_EQ(grid.SetItemText(1, 1, L"1,234.5"), 1);
  EXPECT_EQ(grid.GetItemText(1, 1), L"1234");
}

TEST(GridProjection, CheckCellsReadOneUnlessTheTextIsZero) {
  KrmGridCtrl grid;
  grid.LoadData(OneColumn(L"CHK_CELLCHECK", L"", {L"", L"0", L"yes"}), -1);
  EXPECT_EQ(grid.GetItemText(1, 1), L"1");
  EXPECT_EQ(grid.GetItemText(2, 1), L"0");
  EXPECT_EQ(grid.GetItemText(3, 1), L"1");
  EXPECT_EQ(grid.ToggleCheck(2, 1), 1);
  EXPECT_EQ(grid.GetItemText(2, 1), L"1");
  EXPECT_EQ(grid.GetModified(2, 1), 1);
  EXPECT_EQ(grid.ToggleCheck(0, 1), 0);  // the header is no check cell
}

TEST(GridProjection, HeadersLabelsFormatsAndColours) {
  KrmDataGrid data = edtest::MakeGrid({L"序号", L"内容", L"数量"}, {{L"1", L"a", L"3"}, {L"2", L"b", L"4"}});
  data.cols[0].isAutoNum = 1;
  data.cols[1].att.SetRowType(kKrmRowNewline);
  data.cols[2].att.SetAlignType(L"RIGHT");
  KrmGridCtrl grid;
  grid.LoadData(data, -1);
  EXPECT_EQ(grid.GetRowCount(), 3);
  EXPECT_EQ(grid.GetColumnCount(), 4);
  EXPECT_EQ(grid.GetItemText(0, 2), L"内容");
  EXPECT_EQ(grid.GetItemText(2, 0), L"2");
  EXPECT_EQ(grid.GetAutoNumGridCol(), 1);
  EXPECT_EQ(grid.GetCell(0, 1)->textColour, kKrmAutoNumColour);
  EXPECT_EQ(grid.GetCell(0, 2)->textColour, kKrmNewlineColour);
  EXPECT_EQ(grid.GetCell(0, 3)->textColour, 0u);
  EXPECT_EQ(grid.GetCell(1, 3)->format, kKrmFormatRight);
  EXPECT_EQ(grid.GetCell(1, 2)->format, kKrmFormatLeft);
  EXPECT_EQ(grid.GetCell(0, 3)->format, kKrmFormatCentre);
  EXPECT_EQ(grid.GetModified(), 0);
}

TEST(GridProjection, TableWithoutColumnsHasOnlyTheLabelColumn) {
  KrmDataGrid empty;
  KrmGridCtrl grid;
  grid.LoadData(empty, -1);
  EXPECT_EQ(grid.GetColumnCount(), 1);
  EXPECT_EQ(grid.GetRowCount(), 1);
  EXPECT_EQ(grid.GetAutoNumGridCol(), 0);
  EXPECT_EQ(grid.GetCell(0, 0)->textColour, kKrmAutoNumColour);
}

std::vector<std::vector<std::wstring>> NumberedRows(int count) {
  std::vector<std::vector<std::wstring>> rows;
  for (int r = 1; r <= count; ++r) rows.push_back({std::to_wstring(r)});
  return rows;
}

TEST(GridProjection, PageModeShowsOnePageWithLabelsFromOne) {
  // 5 rows on the first page, 8 on each further one; 15 rows make 3 pages.
  const KrmDataGrid data = edtest::MakeGrid({L"n"}, NumberedRows(15), 5, 8);
  KrmGridCtrl grid;
  grid.LoadData(data, 1);
  EXPECT_EQ(grid.GetRowCount(), 9);
  EXPECT_EQ(grid.GetItemText(1, 1), L"6");
  EXPECT_EQ(grid.GetItemText(1, 0), L"1");
  grid.LoadData(data, 2);
  EXPECT_EQ(grid.GetRowCount(), 3);
  EXPECT_EQ(grid.GetItemText(2, 1), L"15");
  EXPECT_EQ(grid.GetGridData().RowCount(), 15);
}

TEST(GridReturnKey, MovesDownAndAsksForARowPastTheEnd) {
  KrmGridCtrl grid;
  grid.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(2)), -1);
  grid.SetMainTable(1);
  grid.SetSelectedRange(1, 1, 1, 1);
  EXPECT_EQ(grid.OnChar(L'\r'), KrmGridCtrl::ReturnMove::kMoved);
  EXPECT_EQ(grid.GetSelectedCellRange().top, 2);
  EXPECT_EQ(grid.OnChar(L'\r'), KrmGridCtrl::ReturnMove::kMoved);
  EXPECT_EQ(grid.GetSelectedCellRange().top, 3);  // the row count: a row is wanted
}

TEST(GridReturnKey, TheReturnThatEndsAnEditorDoesNotMove) {
  KrmGridCtrl grid;
  grid.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(3)), -1);
  grid.SetSelectedRange(1, 1, 1, 1);
  grid.OnKeyDownReturn();
  EXPECT_EQ(grid.OnChar(L'\r'), KrmGridCtrl::ReturnMove::kNone);
  EXPECT_EQ(grid.GetSelectedCellRange().top, 1);
}

TEST(GridReturnKey, SingleRecordTableStaysOnItsLastRow) {
  KrmGridCtrl grid;
  grid.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(1)), -1);
  grid.SetMainTable(0);
  grid.SetSelectedRange(1, 1, 1, 1);
  grid.OnChar(L'\r');
  EXPECT_EQ(grid.GetSelectedCellRange().top, 1);
}

TEST(GridReturnKey, WrapsOnlyAtTheEndOfAFullPage) {
  KrmGridCtrl grid;
  grid.SetMainTable(1);
  grid.SetPageMode(1);
  grid.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(7), 5, 8), 0);  // page 0 full
  grid.SetSelectedRange(5, 1, 5, 1);
  EXPECT_EQ(grid.OnChar(L'\r'), KrmGridCtrl::ReturnMove::kWrapped);
  EXPECT_EQ(grid.GetPageWrap(), 1);
  EXPECT_EQ(grid.GetSelectedCellRange().top, 0);

  KrmGridCtrl partial;
  partial.SetMainTable(1);
  partial.SetPageMode(1);
  partial.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(7), 5, 8), 1);  // page 1 holds 2 of 8
  partial.SetSelectedRange(2, 1, 2, 1);
  EXPECT_EQ(partial.OnChar(L'\r'), KrmGridCtrl::ReturnMove::kMoved);
  EXPECT_EQ(partial.GetPageWrap(), 0);
  EXPECT_EQ(partial.GetSelectedCellRange().top, 3);
}

TEST(GridView, RowLabelsToggledTwiceAreAutoSized) {
  KrmGridCtrl grid;
  grid.LoadData(edtest::MakeGrid({L"n"}, NumberedRows(3)), -1);
  ASSERT_EQ(grid.GetColumnWidth(0), 40);
  grid.ToggleRowHeader();
  EXPECT_EQ(grid.GetColumnWidth(0), 0);
  grid.ToggleRowHeader();
  EXPECT_GT(grid.GetColumnWidth(0), 0);
  EXPECT_NE(grid.GetColumnWidth(0), 40);
}

TEST(GridView, HiddenColumnsComeBackOnRebuildAndChangesAreReported) {
  KrmGridCtrl grid;
  std::vector<KrmGridChange> changes;
  grid.SetChangeListener([&](const KrmGridChange& change) { changes.push_back(change); });
  const KrmDataGrid data = edtest::MakeGrid({L"a", L"b"}, NumberedRows(2));
  grid.LoadData(data, -1);
  grid.SetSelectedRange(1, 2, 2, 2);
  grid.HideRange(false, true);
  EXPECT_EQ(grid.GetColumnWidth(2), 0);
  changes.clear();
  grid.SetItemText(2, 1, L"x");
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].kind, KrmGridChange::Kind::kCells);
  EXPECT_EQ(changes[0].range.top, 2);
  EXPECT_EQ(changes[0].range.left, 1);
  EXPECT_EQ(grid.GetModified(), 1);
  grid.LoadData(data, -1);
  EXPECT_GT(grid.GetColumnWidth(2), 0);
  EXPECT_EQ(grid.GetModified(), 0);
}

TEST(GridView, SizeDialogTakesTenthsInThePixelUnit) {
  KrmDlgRowHeight dialog(true, 20);
  EXPECT_EQ(dialog.valueText, L"20");
  dialog.ChooseUnit(1);
  EXPECT_EQ(dialog.valueText, L"200");
  EXPECT_EQ(dialog.Value(), 20);
  dialog.valueText = L"205";
  EXPECT_EQ(dialog.Value(), 20);
  EXPECT_EQ(dialog.Title(), L"行高(自动测量值为行标高度)");
}

TEST(GridFont, IsStoredAndReadBackByTheNextGrid) {
  tabulon::test::ScratchDir home;
  const std::string previous = getenv("TABULON_HOME") != nullptr ? getenv("TABULON_HOME") : "";
  setenv("TABULON_HOME", home.path().c_str(), 1);
  KrmRegService settings;
  KrmGridFont font;
  font.values[0] = -16;
  font.values[4] = 700;
  font.faceName = L"文泉驿微米黑";
  {
    KrmGridCtrl grid(&settings);
    grid.ChooseFont(font);
  }
  KrmGridCtrl next(&settings);
  next.LoadData(edtest::MakeGrid({L"a"}, {}), -1);
  EXPECT_EQ(next.GetFont().values[0], -16);
  EXPECT_EQ(next.GetFont().values[4], 700);
  EXPECT_EQ(next.GetFont().faceName, L"文泉驿微米黑");
  KrmGridCtrl without;
  without.LoadData(edtest::MakeGrid({L"a"}, {}), -1);
  EXPECT_EQ(without.GetFont(), KrmGridFont());
  setenv("TABULON_HOME", previous.c_str(), 1);
}

}  // namespace
