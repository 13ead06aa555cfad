#include "drawing/ostrelm_tabulon.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "placed_card_fixture.h"

namespace {

using reedittest::PlacedCardTest;

// Grids of the sample card in GetCell order: single-record classes, then multi-record.
constexpr int kTitle = 0;
constexpr int kRow = 2;

TEST_F(PlacedCardTest, FacadeOnADrawingWithoutCardsHasNoneAndRefusesIndexes) {
  OstrelmTabulon tabulon;
  tabulon.Init();
  EXPECT_EQ(tabulon.GetCardCount(), 0);
  std::vector<std::wstring> names;
  EXPECT_THROW(tabulon.GetCell(names, 0), std::out_of_range);
  EXPECT_THROW(tabulon.GetItemText(0, 0, 0, 0), std::out_of_range);
}

TEST_F(PlacedCardTest, FacadeListsEachCardOnceWithItsShape) {
  const std::wstring small = Place(Steps(3));
  const std::wstring large = Place(Steps(13), {}, QaGePoint3d(0, 500, 0));
  OstrelmTabulon tabulon;
  tabulon.Init();
  tabulon.Init();  // a second scan adds nothing new
  ASSERT_EQ(tabulon.GetCardCount(), 2);
  EXPECT_EQ(tabulon.GetFlagId(0), small);
  EXPECT_EQ(tabulon.GetFlagId(1), large);
  EXPECT_EQ(tabulon.GetPageCount(0), 1);
  EXPECT_EQ(tabulon.GetPageCount(1), 2);
  EXPECT_EQ(tabulon.GetFilePath(1), cardPath);
  EXPECT_EQ(tabulon.GetShowName(0), L"机加工艺卡");
  EXPECT_EQ(tabulon.GetTblName(0), L"first");
  EXPECT_EQ(tabulon.GetTblName_(0), L"next");

  std::vector<std::wstring> names;
  ASSERT_EQ(tabulon.GetCell(names, 0), 1);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"TITLE", L"BATCH", L"ROW", L"SIGN"}));
  ASSERT_EQ(tabulon.GetCell_(names, 1), 1);
  EXPECT_EQ(names.size(), 4u);
  std::vector<std::wstring> atts;
  ASSERT_EQ(tabulon.GetCellAtt(L"ROW", atts), 1);
  EXPECT_EQ(atts, (std::vector<std::wstring>{L"序号", L"工序", L"内容"}));
  ASSERT_EQ(tabulon.GetCellAtt_(L"BATCH", atts), 1);
  EXPECT_EQ(atts, std::vector<std::wstring>{L"批页"});
  EXPECT_EQ(tabulon.IsBaseBlock(1, kRow), 1);
  EXPECT_EQ(tabulon.IsBaseBlock(1, kTitle), 0);
}

TEST_F(PlacedCardTest, FacadeReadsAndWritesCellsCountingRowsOverAllPages) {
  Place(Steps(13));
  OstrelmTabulon tabulon;
  tabulon.Init();
  EXPECT_EQ(tabulon.GetItemText(0, kRow, 7, 1), L"工序8");  // the third row of page 2
  EXPECT_EQ(tabulon.GetItemText(0, kRow, 40, 1), L"");
  EXPECT_EQ(tabulon.GetItemText(0, kTitle, 0, 0), L"DWG-1");
  EXPECT_EQ(tabulon.GetMaxRowNum(0, kRow), 13);

  ASSERT_EQ(tabulon.SetItemText(0, kRow, L"改后", 7, 1), 1);
  EXPECT_EQ(tabulon.GetItemText(0, kRow, 7, 1), L"改后");
  EXPECT_EQ(DrawnSteps(ReadBack(tabulon.GetFlagId(0))).at(7), L"改后");
  ASSERT_EQ(tabulon.SetItemText(0, kTitle, L"DWG-2", 0, 0), 1);
  EXPECT_EQ(ClassText(ReadBack(tabulon.GetFlagId(0)).pages[1], L"TITLE", L"图号"), L"DWG-2");
}

TEST_F(PlacedCardTest, FacadeGrowsOnlyThePageBaseAndKeepsItsPageCountUntilTheNextInit) {
  const std::wstring code = Place(Steps(3));
  OstrelmTabulon tabulon;
  tabulon.Init();

  // The title has one row: one past it cannot be written, and nothing changes.
  EXPECT_EQ(tabulon.SetItemText(0, kTitle, L"X", 1, 0), 0);
  EXPECT_EQ(tabulon.GetItemText(0, kTitle, 0, 0), L"DWG-1");

  ASSERT_EQ(tabulon.SetItemText(0, kRow, L"第七行", 6, 1), 1);
  const KrmPlacedCard card = ReadBack(code);
  ASSERT_EQ(card.pages.size(), 2u);
  EXPECT_EQ(DrawnSteps(card).at(6), L"第七行");
  EXPECT_EQ(tabulon.GetPageCount(0), 1);
  tabulon.ClearData();
  tabulon.Init();
  EXPECT_EQ(tabulon.GetPageCount(0), 2);

  // Inserting within the grid adds no row; the card is still written through.
  EXPECT_EQ(tabulon.InsertRow(0, kRow, 1), 1);
  EXPECT_EQ(tabulon.GetItemText(0, kRow, 6, 1), L"第七行");
}

}  // namespace
