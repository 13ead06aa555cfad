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

using Texts = std::vector<std::wstring>;

KrmAttSet att(const std::wstring& name, const std::wstring& type = kKrmNumStr, int decimals = 0,
              const std::wstring& calc = L"") {
  KrmAttSet a;
  a.SetShowName(name);
  a.SetStringType(type);
  a.SetDecimalNum(decimals);
  a.SetCalc(calc);
  return a;
}

// A grid with the given columns and rows (one text per column in each row).
KrmDataGrid makeGrid(const std::vector<KrmAttSet>& atts, const std::vector<Texts>& rows) {
  KrmDataGrid grid;
  for (std::size_t c = 0; c < atts.size(); ++c) {
    KrmDataTCol col;
    col.att = atts[c];
    for (const Texts& row : rows) col.values.push_back(row.at(c));
    grid.cols.push_back(col);
  }
  return grid;
}

const std::vector<KrmAttSet> kPrice = {att(L"数量", kKrmNumInt), att(L"单价", kKrmNumDouble, 2),
                                       att(L"总价", kKrmNumDouble, 2, L"数量*单价")};

TEST(CalcColumn, ComputesEveryRowAndFormatsByTheColumnsType) {
  KrmDataGrid grid = makeGrid(kPrice, {{L"3", L"12.50", L""}, {L"10", L"0.333", L"old"}, {L"", L"", L"x"}});
  EXPECT_EQ(KrmRunCalcColumns(grid, kKrmAllRows, 0), 3);
  EXPECT_EQ(grid.cols[2].values, (Texts{L"37.50", L"3.33", L"0.00"}));
  EXPECT_EQ(grid.cols[1].values, (Texts{L"12.50", L"0.333", L""})) << "inputs are not reformatted";

  for (const auto& [target, expected] : std::vector<std::pair<KrmAttSet, std::wstring>>{
           {att(L"结果", kKrmNumInt, 2, L"长*0.9"), L"3"},
           {att(L"结果", kKrmNumDouble, 3, L"长*0.9"), L"2.700"},
           {att(L"结果", kKrmNumStr, 3, L"长*0.9"), L"2.7"}}) {
    KrmDataGrid one = makeGrid({att(L"长"), target}, {{L"3", L""}});
    KrmRunCalcColumns(one, kKrmAllRows, 0);
    EXPECT_EQ(one.GetCell(0, 1), expected);
  }
}

TEST(CalcColumn, SkipZeroAndASingleRowLeaveTheOtherCellsAlone) {
  const std::vector<Texts> rows = {{L"0", L"5", L"keep"}, {L"2", L"5", L""}, {L"", L"", L"7"}};
  KrmDataGrid skipping = makeGrid(kPrice, rows);
  EXPECT_EQ(KrmRunCalcColumns(skipping, kKrmAllRows, 1), 1);
  EXPECT_EQ(skipping.cols[2].values, (Texts{L"keep", L"10.00", L"7"}));
  KrmDataGrid writing = makeGrid(kPrice, rows);
  EXPECT_EQ(KrmRunCalcColumns(writing, kKrmAllRows, 0), 3);
  EXPECT_EQ(writing.cols[2].values, (Texts{L"0.00", L"10.00", L"0.00"}));

  KrmDataGrid one = makeGrid(kPrice, rows);
  EXPECT_EQ(KrmRunCalcColumns(one, 2, 0), 1);
  EXPECT_EQ(one.cols[2].values, (Texts{L"keep", L"", L"0.00"}));
  KrmDataGrid past = makeGrid(kPrice, rows);
  EXPECT_EQ(KrmRunCalcColumns(past, 3, 0), 0);
}

TEST(CalcColumn, OneColumnsResultFeedsTheColumnsAfterIt) {
  KrmDataGrid grid = makeGrid({att(L"数量"), att(L"单价"), att(L"总价", kKrmNumDouble, 2, L"数量*单价"),
                               att(L"含税价", kKrmNumDouble, 2, L"总价*1.13")},
                              {{L"2", L"50", L"", L""}});
  KrmRunCalcColumns(grid, kKrmAllRows, 0);
  EXPECT_EQ(grid.GetCell(0, 3), L"113.00");
  // A column to the left sees the old value of a column computed after it.
  KrmDataGrid reversed = makeGrid({att(L"两倍", kKrmNumDouble, 2, L"总价*2"), att(L"数量"), att(L"单价"),
                                   att(L"总价", kKrmNumDouble, 2, L"数量*单价")},
                                  {{L"", L"2", L"50", L"1"}});
  KrmRunCalcColumns(reversed, kKrmAllRows, 0);
  EXPECT_EQ(reversed.GetCell(0, 0), L"2.00");
  EXPECT_EQ(reversed.GetCell(0, 3), L"100.00");
}

TEST(CalcColumn, AnExpressionThatFailsLeavesTheCell) {
  for (const wchar_t* formula : {L"数量*重量", L"数量*", L"数量/0", L"备注*2"}) {
    KrmDataGrid grid = makeGrid({att(L"数量"), att(L"备注"), att(L"结果", kKrmNumDouble, 2, formula)},
                                {{L"3", L"见图", L"旧值"}, {L"4", L"x", L""}});
    KrmRunCalcColumns(grid, kKrmAllRows, 0);
    EXPECT_EQ(grid.cols[2].values, (Texts{L"旧值", L""})) << testing::PrintToString(std::wstring(formula));
  }
  // Ragged columns: a missing variable reads "", a short target column is not grown.
  KrmDataGrid ragged = makeGrid(kPrice, {{L"2", L"3", L"x"}, {L"4", L"5", L"y"}});
  ragged.cols[2].values.pop_back();
  ragged.cols[1].values.pop_back();
  EXPECT_EQ(KrmRunCalcColumns(ragged, kKrmAllRows, 0), 1);
  EXPECT_EQ(ragged.cols[2].values, Texts{L"6.00"});
  EXPECT_EQ(KrmRunCalcColumn(ragged, 7, kKrmAllRows, 0), 0);
}

// A card whose page-base block "明细" holds the price columns and whose title block
// "标题" has a calculated column of its own.
class CardDataCalc : public testing::Test {
 protected:
  void SetUp() override {
    KrmTableAttributes table;
    table.setTblName(L"page", L"页");
    table.setPageBase(L"明细");
    table.setSCell({KrmBlockSet(L"标题", {att(L"件数"), att(L"双倍", kKrmNumInt, 0, L"件数*2")})});
    table.setMCell({KrmBlockSet(L"明细", kPrice)});
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
    fill(L"明细", makeGrid(kPrice, {{L"2", L"1.5", L""}, {L"4", L"0", L""}, {L"1", L"9.99", L""}}));
    fill(L"标题", makeGrid({att(L"件数"), att(L"双倍", kKrmNumInt, 0, L"件数*2")}, {{L"5", L""}}));
    data_.SelectGrid(L"明细");
  }

  // Replaces the columns of the grid named `name`.
  void fill(const wchar_t* name, const KrmDataGrid& content) {
    KrmDataGrid grid;
    ASSERT_EQ(data_.GetGridByName(name, grid), 1);
    grid.cols = content.cols;
    data_.SetGridAt(data_.FindGrid(name), grid);
  }

  Texts column(const wchar_t* grid, int col) const {
    KrmDataGrid out;
    data_.GetGridByName(grid, out);
    return out.cols.at(static_cast<std::size_t>(col)).values;
  }

  tabulon::test::ScratchDir dir_;
  KrmCardData data_;
};

TEST_F(CardDataCalc, RunsOnTheCurrentGridAndStoresItBack) {
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 1), 1);
  EXPECT_EQ(column(L"明细", 2), (Texts{L"3.00", L"", L"9.99"}));  // 4 * 0 skipped
  EXPECT_EQ(column(L"标题", 1), Texts{L""}) << "another grid was computed";
  EXPECT_EQ(data_.RunColumnCalc(1, 0), 1);
  EXPECT_EQ(column(L"明细", 2), (Texts{L"3.00", L"0.00", L"9.99"}));
}

TEST_F(CardDataCalc, ARowPastTheEndOrAGridWithoutCalculationChangesNothing) {
  const KrmCardData before = data_;
  EXPECT_EQ(data_.RunColumnCalc(3, 0), 1);
  EXPECT_EQ(data_.IsDifferent(before), 0);
  fill(L"标题", makeGrid({att(L"件数"), att(L"双倍")}, {{L"5", L""}}));
  data_.SelectGrid(L"标题");
  const KrmCardData plain = data_;
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 0), 1);
  EXPECT_EQ(data_.IsDifferent(plain), 0);
  data_.SetCurGrid(5);  // past the end: nothing to do, nothing thrown
  EXPECT_EQ(data_.RunColumnCalc(kKrmAllRows, 0), 1);
  EXPECT_EQ(data_.IsDifferent(plain), 0);
}

}  // namespace
