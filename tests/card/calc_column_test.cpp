#include "card/calc_column.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "card/card_attributes.h"
#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/table_attributes.h"
#include "card/utf8_text.h"
#include "support/test_support.h"

namespace {

struct ColumnSpec {
  ColumnSpec(std::wstring showName, std::wstring stringType = kKrmNumStr, int decimalNum = 0,
             std::wstring formula = L"")
      : name(std::move(showName)), type(std::move(stringType)), decimals(decimalNum), calc(std::move(formula)) {}
  std::wstring name;
  std::wstring type;
  int decimals;
  std::wstring calc;
};

KrmAttSet attOf(const ColumnSpec& spec) {
  KrmAttSet att;
  att.SetShowName(spec.name);
  att.SetStringType(spec.type);
  att.SetDecimalNum(spec.decimals);
  att.SetCalc(spec.calc);
  return att;
}

// A grid with the given columns and rows (one text per column in each row).
KrmDataGrid makeGrid(const std::vector<ColumnSpec>& specs, const std::vector<std::vector<std::wstring>>& rows) {
  KrmDataGrid grid;
  grid.blockName = L"明细";
  for (std::size_t c = 0; c < specs.size(); ++c) {
    KrmDataTCol col;
    col.att = attOf(specs[c]);
    for (const auto& row : rows) col.values.push_back(row.at(c));
    grid.cols.push_back(col);
  }
  return grid;
}

std::vector<std::wstring> columnValues(const KrmDataGrid& grid, int col) {
  return grid.cols.at(static_cast<std::size_t>(col)).values;
}

const std::vector<ColumnSpec> kPriceColumns = {
    {L"数量", kKrmNumInt},
    {L"单价", kKrmNumDouble, 2},
    {L"总价", kKrmNumDouble, 2, L"数量*单价"},
};

TEST(CalcColumn, ComputesTotalsFromChineseColumnNames) {
  KrmDataGrid grid = makeGrid(kPriceColumns, {{L"3", L"12.50", L""}, {L"10", L"0.333", L"old"}, {L"", L"", L"x"}});
  EXPECT_EQ(KrmRunCalcColumns(grid, kKrmAllRows, 0), 3);
  EXPECT_EQ(columnValues(grid, 2), (std::vector<std::wstring>{L"37.50", L"3.33", L"0.00"}));
  // The input columns are not reformatted.
  EXPECT_EQ(columnValues(grid, 1), (std::vector<std::wstring>{L"12.50", L"0.333", L""}));
}

TEST(CalcColumn, FormatsByTheTargetColumnsType) {
  struct Case {
    std::wstring type;
    int decimals;
    std::wstring expected;
  };
  for (const Case& c : {Case{kKrmNumInt, 2, L"3"}, Case{kKrmNumDouble, 1, L"2.7"},
                        Case{kKrmNumDouble, 3, L"2.700"}, Case{kKrmNumStr, 3, L"2.7"}}) {
    KrmDataGrid grid = makeGrid({{L"长"}, {L"结果", c.type, c.decimals, L"长*0.9"}}, {{L"3", L""}});
    KrmRunCalcColumns(grid, kKrmAllRows, 0);
    EXPECT_EQ(grid.GetCell(0, 1), c.expected) << testing::PrintToString(c.type);
  }
}

TEST(CalcColumn, SkipZeroLeavesZeroResultsAlone) {
  const std::vector<std::vector<std::wstring>> rows = {{L"0", L"5", L"keep"}, {L"2", L"5", L""}, {L"", L"", L"7"}};
  KrmDataGrid skipping = makeGrid(kPriceColumns, rows);
  EXPECT_EQ(KrmRunCalcColumns(skipping, kKrmAllRows, 1), 1);
  EXPECT_EQ(columnValues(skipping, 2), (std::vector<std::wstring>{L"keep", L"10.00", L"7"}));

  KrmDataGrid writing = makeGrid(kPriceColumns, rows);
  EXPECT_EQ(KrmRunCalcColumns(writing, kKrmAllRows, 0), 3);
  EXPECT_EQ(columnValues(writing, 2), (std::vector<std::wstring>{L"0.00", L"10.00", L"0.00"}));
}

TEST(CalcColumn, OneColumnsResultFeedsTheColumnsAfterIt) {
  // 含税价 uses 总价, which is computed first in the same pass.
  KrmDataGrid grid = makeGrid({{L"数量"}, {L"单价"}, {L"总价", kKrmNumDouble, 2, L"数量*单价"},
                               {L"含税价", kKrmNumDouble, 2, L"总价*1.13"}},
                              {{L"2", L"50", L"", L""}});
  KrmRunCalcColumns(grid, kKrmAllRows, 0);
  EXPECT_EQ(grid.GetCell(0, 2), L"100.00");
  EXPECT_EQ(grid.GetCell(0, 3), L"113.00");

  // A column to the left sees the old value of a column computed after it.
  KrmDataGrid reversed = makeGrid({{L"含税价", kKrmNumDouble, 2, L"总价*2"}, {L"数量"}, {L"单价"},
                                   {L"总价", kKrmNumDouble, 2, L"数量*单价"}},
                                  {{L"", L"2", L"50", L"1"}});
  KrmRunCalcColumns(reversed, kKrmAllRows, 0);
  EXPECT_EQ(reversed.GetCell(0, 0), L"2.00");
  EXPECT_EQ(reversed.GetCell(0, 3), L"100.00");
}

TEST(CalcColumn, AnExpressionThatFailsLeavesTheCell) {
  for (const std::wstring& formula : {std::wstring(L"数量*重量"), std::wstring(L"数量*"), std::wstring(L"数量/0"),
                                      std::wstring(L"备注*2")}) {
    KrmDataGrid grid = makeGrid({{L"数量"}, {L"备注"}, {L"结果", kKrmNumDouble, 2, formula}},
                                {{L"3", L"见图", L"旧值"}, {L"4", L"", L""}});
    const std::vector<std::wstring> before = columnValues(grid, 2);
    KrmRunCalcColumns(grid, kKrmAllRows, 0);
    if (formula == L"备注*2") {
      // Only the row whose note is no number fails; an empty note counts 0.
      EXPECT_EQ(columnValues(grid, 2), (std::vector<std::wstring>{L"旧值", L"0.00"}));
    } else {
      EXPECT_EQ(columnValues(grid, 2), before) << testing::PrintToString(formula);
    }
  }
}

TEST(CalcColumn, ComputesOnlyTheRowAsked) {
  const std::vector<std::vector<std::wstring>> rows = {{L"1", L"1", L"a"}, {L"2", L"2", L"b"}, {L"3", L"3", L"c"}};
  KrmDataGrid one = makeGrid(kPriceColumns, rows);
  EXPECT_EQ(KrmRunCalcColumns(one, 1, 0), 1);
  EXPECT_EQ(columnValues(one, 2), (std::vector<std::wstring>{L"a", L"4.00", L"c"}));

  KrmDataGrid past = makeGrid(kPriceColumns, rows);
  EXPECT_EQ(KrmRunCalcColumns(past, 3, 0), 0);
  EXPECT_EQ(columnValues(past, 2), (std::vector<std::wstring>{L"a", L"b", L"c"}));
}

TEST(CalcColumn, ToleratesRaggedAndOutOfRangeColumns) {
  KrmDataGrid grid = makeGrid(kPriceColumns, {{L"2", L"3", L"x"}, {L"4", L"5", L"y"}});
  grid.cols[2].values.pop_back();  // the computed column is one row short
  grid.cols[1].values.pop_back();  // and a variable is missing in row 1: it reads ""
  EXPECT_EQ(KrmRunCalcColumns(grid, kKrmAllRows, 0), 1);
  EXPECT_EQ(columnValues(grid, 2), std::vector<std::wstring>{L"6.00"});
  EXPECT_EQ(KrmRunCalcColumn(grid, 7, kKrmAllRows, 0), 0);
  EXPECT_EQ(KrmRunCalcColumn(grid, -1, kKrmAllRows, 0), 0);
  EXPECT_EQ(KrmRunCalcColumn(grid, 0, kKrmAllRows, 0), 0);  // no expression
}

// A card whose first-page table has the page-base block "明细" (price columns) and a
// title block "标题" with a calculated column of its own.
class CardDataCalc : public testing::Test {
 protected:
  void SetUp() override {
    KrmTableAttributes table;
    table.setTblName(L"page", L"页");
    table.setPageBase(L"明细");
    std::vector<KrmAttSet> title = {attOf({L"件数"}), attOf({L"双倍", kKrmNumInt, 0, L"件数*2"})};
    std::vector<KrmAttSet> detail;
    for (const ColumnSpec& spec : kPriceColumns) detail.push_back(attOf(spec));
    table.setSCell({KrmBlockSet(L"标题", title)});
    table.setMCell({KrmBlockSet(L"明细", detail)});
    table.setMDirType({{L"明细", {L"0", L"5"}}});
    ASSERT_EQ(table.OutputTable(KrmFromFsPath(dir_ / "page.tbl")), 1);
    KrmCardAttributes card;
    card.setCardName(L"card", L"卡片");
    card.addTblFile(L"page");
    card.addTblFile(L"page");
    ASSERT_EQ(card.OutputCard(KrmFromFsPath(dir_ / "card.crd")), 1);
    KrmCardTemplate cardTemplate;
    ASSERT_EQ(cardTemplate.LoadTemplate(KrmFromFsPath(dir_ / "card.crd")), 1) << cardTemplate.LoadProblems();
    data_.InitFromTemplate(cardTemplate);
    ASSERT_EQ(data_.GridCount(), 2);

    // Three rows in the page-base grid.
    KrmDataGrid detailGrid;
    ASSERT_EQ(data_.GetGridByName(L"明细", detailGrid), 1);
    detailGrid.InsertRows(1, 2);
    const std::vector<std::vector<std::wstring>> rows = {{L"2", L"1.5"}, {L"4", L"0"}, {L"1", L"9.99"}};
    for (int r = 0; r < 3; ++r) {
      detailGrid.SetCell(rows[static_cast<std::size_t>(r)][0], r, 0);
      detailGrid.SetCell(rows[static_cast<std::size_t>(r)][1], r, 1);
    }
    data_.SetGridAt(data_.FindGrid(L"明细"), detailGrid);
    KrmDataGrid titleGrid;
    ASSERT_EQ(data_.GetGridByName(L"标题", titleGrid), 1);
    titleGrid.SetCell(L"5", 0, 0);
    data_.SetGridAt(data_.FindGrid(L"标题"), titleGrid);
    data_.SelectGrid(L"明细");
  }

  std::vector<std::wstring> totals() const {
    KrmDataGrid grid;
    data_.GetGridByName(L"明细", grid);
    return columnValues(grid, 2);
  }

  tabulon::test::ScratchDir dir_;
  KrmCardData data_;
};

TEST_F(CardDataCalc, RunsOnTheCurrentGridAndStoresItBack) {
  KrmDataGrid titleBefore;
  data_.GetGridByName(L"标题", titleBefore);
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 1), 1);
  EXPECT_EQ(totals(), (std::vector<std::wstring>{L"3.00", L"", L"9.99"}));  // 4 * 0 skipped
  KrmDataGrid titleAfter;
  data_.GetGridByName(L"标题", titleAfter);
  EXPECT_TRUE(titleAfter.SameContent(titleBefore)) << "another grid was computed";

  EXPECT_EQ(data_.RunColumnCalc(1, 0), 1);
  EXPECT_EQ(totals(), (std::vector<std::wstring>{L"3.00", L"0.00", L"9.99"}));
}

TEST_F(CardDataCalc, ARowPastTheEndOrAGridWithoutCalculationChangesNothing) {
  const KrmCardData before = data_;
  EXPECT_EQ(data_.RunColumnCalc(3, 0), 1);
  EXPECT_EQ(data_.IsDifferent(before), 0);

  data_.SelectGrid(L"标题");
  KrmDataGrid title;
  data_.GetCurGridData(title);
  title.cols[1].att.SetCalc(L"");
  title.SetCell(L"5", 0, 0);
  data_.SetCurGridData(title);
  const KrmCardData plain = data_;
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 0), 1);
  EXPECT_EQ(data_.IsDifferent(plain), 0);

  data_.SetCurGrid(5);  // past the end: nothing to do, nothing thrown
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 0), 1);
  EXPECT_EQ(data_.IsDifferent(plain), 0);
}

}  // namespace
