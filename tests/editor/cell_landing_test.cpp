#include "editor/cell_landing.h"

#include <gtest/gtest.h>

#include "drawing/cell_test_support.h"
#include "host/db/qadb_open.h"

namespace {

KrmAttSet Cell(const wchar_t* rowType, double width) {
  KrmAttSet cell;
  cell.SetInName(L"工序");
  cell.SetRowType(rowType);
  cell.SetWidth(width);
  cell.SetHeight(2.5);
  return cell;
}

TEST(CellLanding, ShortTextLandsAsItStandsInEitherKindOfCell) {
  for (const wchar_t* type : {kKrmRowFit, kKrmRowNewline}) {
    const KrmCellLanding landing = MeasureCellLanding(Cell(type, 60), L"车");
    EXPECT_EQ(landing.kind, KrmCellLanding::Kind::kAsIs);
    EXPECT_EQ(DescribeCellLanding(landing), L"");
  }
}

TEST(CellLanding, TooWideTextIsSqueezedInAFitCell) {
  const KrmCellLanding landing = MeasureCellLanding(Cell(kKrmRowFit, 10), L"粗车外圆至尺寸并倒角");
  EXPECT_EQ(landing.kind, KrmCellLanding::Kind::kSqueezed);
  EXPECT_EQ(landing.rowBlocks, 1);
  EXPECT_FALSE(DescribeCellLanding(landing).empty());
}

TEST(CellLanding, WrappingTextCountsTheRowBlocksItRunsOver) {
  const KrmAttSet cell = Cell(kKrmRowNewline, 12);
  const KrmCellLanding some = MeasureCellLanding(cell, L"粗车外圆至尺寸并倒角");
  const KrmCellLanding more = MeasureCellLanding(cell, L"粗车外圆至尺寸并倒角粗车外圆至尺寸并倒角");
  EXPECT_EQ(some.kind, KrmCellLanding::Kind::kRowBlocks);
  EXPECT_GT(some.rowBlocks, 1);
  EXPECT_GT(more.rowBlocks, some.rowBlocks);
  EXPECT_NE(DescribeCellLanding(some).find(std::to_wstring(some.rowBlocks)), std::wstring::npos);
}

TEST(CellLanding, ForcedLineBreakTakesASecondRowBlock) {
  const KrmCellLanding landing = MeasureCellLanding(Cell(kKrmRowNewline, 60), L"车\n铣");
  EXPECT_EQ(landing.rowBlocks, 2);
}

// A drawing whose block "P1_工序卡" (a card's prefixed copy of the class) carries the
// cell's attribute definition in a narrow style.
class CellLook : public ::testing::Test {
 protected:
  CellLook() {
    narrow = tabulon::test::addTextStyle(db, L"NARROW", 0.5);
    block = tabulon::test::addBlock(db, L"P1_工序卡", {{L"工序", QaGePoint3d(0, 0, 0)}});
    QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForRead);
    std::unique_ptr<QaDbBlockTableRecordIterator> it = record->newIterator();
    it->start();
    QaDbObjectPointer<QaDbAttributeDefinition> def(it->entityId(), QaDb::kForWrite);
    def->setTextStyle(narrow);
    def->setWidthFactor(0.5);
    def->setHeight(3.5);
    grid.blockName = L"工序卡";
  }
  QaDbDatabase db;
  QaDbObjectId narrow, block;
  KrmDataGrid grid;
};

TEST_F(CellLook, ComesFromTheDefinitionOfTheCellInABlockOfTheGrid) {
  const KrmCellLook look = FindCellLook(grid, Cell(kKrmRowFit, 60), &db);
  EXPECT_EQ(look.style, narrow);
  EXPECT_DOUBLE_EQ(look.widthFactor, 0.5);
  EXPECT_DOUBLE_EQ(look.height, 3.5);
}

TEST_F(CellLook, IsTheStandardStyleWhenTheDrawingHasNoSuchBlock) {
  grid.blockName = L"材料表";
  const KrmCellLook look = FindCellLook(grid, Cell(kKrmRowFit, 60), &db);
  QaDbObjectPointer<QaDbTextStyleTable> styles(db.textStyleTableId(), QaDb::kForRead);
  EXPECT_EQ(look.style, styles->getAt(L"Standard"));
  EXPECT_DOUBLE_EQ(look.widthFactor, 1.0);
}

TEST_F(CellLook, ANarrowDefinitionTakesTextThatTheDefaultLookSqueezes) {
  const KrmAttSet cell = Cell(kKrmRowFit, 11);
  KrmCellLook look = FindCellLook(grid, cell, &db);
  look.height = 0;  // at the cell's own 2.5 both times
  EXPECT_EQ(MeasureCellLanding(cell, L"粗车外圆倒角").kind, KrmCellLanding::Kind::kSqueezed);
  EXPECT_EQ(MeasureCellLanding(cell, L"粗车外圆倒角", look).kind, KrmCellLanding::Kind::kAsIs);
}

}  // namespace
