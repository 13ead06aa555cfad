#include "editor/cell_landing.h"

#include <gtest/gtest.h>

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
    const KrmCellLanding landing = MeasureCellLanding(Cell(type, 60), L"车", QaDbObjectId());
    EXPECT_EQ(landing.kind, KrmCellLanding::Kind::kAsIs);
    EXPECT_EQ(DescribeCellLanding(landing), L"");
  }
}

TEST(CellLanding, TooWideTextIsSqueezedInAFitCell) {
  const KrmCellLanding landing = MeasureCellLanding(Cell(kKrmRowFit, 10), L"粗车外圆至尺寸并倒角", QaDbObjectId());
  EXPECT_EQ(landing.kind, KrmCellLanding::Kind::kSqueezed);
  EXPECT_EQ(landing.rowBlocks, 1);
  EXPECT_FALSE(DescribeCellLanding(landing).empty());
}

TEST(CellLanding, WrappingTextCountsTheRowBlocksItRunsOver) {
  const KrmAttSet cell = Cell(kKrmRowNewline, 12);
  const KrmCellLanding some = MeasureCellLanding(cell, L"粗车外圆至尺寸并倒角", QaDbObjectId());
  const KrmCellLanding more = MeasureCellLanding(cell, L"粗车外圆至尺寸并倒角粗车外圆至尺寸并倒角", QaDbObjectId());
  EXPECT_EQ(some.kind, KrmCellLanding::Kind::kRowBlocks);
  EXPECT_GT(some.rowBlocks, 1);
  EXPECT_GT(more.rowBlocks, some.rowBlocks);
  EXPECT_NE(DescribeCellLanding(some).find(std::to_wstring(some.rowBlocks)), std::wstring::npos);
}

TEST(CellLanding, ForcedLineBreakTakesASecondRowBlock) {
  const KrmCellLanding landing = MeasureCellLanding(Cell(kKrmRowNewline, 60), L"车\n铣", QaDbObjectId());
  EXPECT_EQ(landing.rowBlocks, 2);
}

}  // namespace
