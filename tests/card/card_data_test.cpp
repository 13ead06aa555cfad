#include "card/card_data.h"

#include <gtest/gtest.h>

#include <functional>

#include "card/card_template.h"
#include "card_fixture.h"

using cardtest::Wide;

namespace {

// A store built from the process card: TITLE, ROW (page base, 20 / 30
// references, automatic number in column 0), SIGN (2 references).
class CardDataTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(tmpl.LoadTemplate(cardtest::WriteProcessCard(Wide(dir.path()))), 1);
    data.InitFromTemplate(tmpl);
  }

  int Rows(int grid) const {
    KrmDataGrid g;
    data.GetGridAt(grid, g);
    return g.RowCount();
  }

  // Replaces the page-base grid's column 0 (numbers unmarked) and column 1.
  void SetBaseRows(const std::vector<std::wstring>& first, const std::vector<std::wstring>& second) {
    KrmDataGrid rows;
    data.GetGridAt(1, rows);
    rows.SetAutoNumCol(-1);
    rows.cols[0].values = first;
    rows.cols[1].values = second;
    rows.cols[2].values.assign(first.size(), L"");
    data.SetGridAt(1, rows);
  }

  // Two distinct ids without a database: slots stand in for objects.
  QaDbObjectSlot slotA{nullptr, QaDbHandle(0xA)}, slotB{nullptr, QaDbHandle(0xB)};
  QaDbObjectId idA{&slotA}, idB{&slotB};
  tabulon::test::ScratchDir dir;
  KrmCardTemplate tmpl;
  KrmCardData data;
};

}  // namespace

TEST_F(CardDataTest, InitBuildsOneGridPerBlockWithASingleRowPageBase) {
  std::vector<std::wstring> names;
  data.GetGridNames(names);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"TITLE", L"ROW", L"SIGN"}));
  EXPECT_EQ(data.GetBaseGrid(), 1);
  EXPECT_EQ(data.GetCurGrid(), 1);
  KrmDataGrid row;
  ASSERT_EQ(data.GetGridAt(1, row), 1);
  EXPECT_EQ(row.rowsFirst, 20);
  EXPECT_EQ(row.rowsNext, 30);
  EXPECT_EQ(row.fillOrder, 1);
  for (const auto& col : row.cols) EXPECT_EQ(col.values.size(), 1u);
  EXPECT_EQ(row.cols[0].isAutoNum, 1);
  EXPECT_EQ(row.cols[0].values[0], L"1");
  EXPECT_EQ(Rows(2), 2);  // other grids start at their first-page capacity
  EXPECT_EQ(data.GetFillOrder(2), 3);
  ASSERT_EQ(data.GetPageBindings().size(), 4u);
  EXPECT_EQ(data.GetPageBindings()[1], (KrmDataPages{L"TITLE", L"总页"}));
}

TEST_F(CardDataTest, InitWithoutAKnownPageBaseStartsAtGridZero) {
  KrmTableAttributes first = cardtest::ProcessTable(L"first", 20);
  first.setPageBase(L"ELSEWHERE");
  first.setPageAtt({{kKrmAutoNum, {L"SIGN", L"签名"}}, {kKrmClassCur, {L"TITLE"}}});
  first.OutputTable(Wide(dir / "first.tbl"));
  ASSERT_EQ(tmpl.LoadTemplate(Wide(dir / "card.crd")), 1);
  data.InitFromTemplate(tmpl);
  EXPECT_EQ(data.GetBaseGrid(), 0);
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(Rows(1), 20);
  KrmDataGrid sign;
  data.GetGridAt(2, sign);
  EXPECT_EQ(sign.cols[0].values, (std::vector<std::wstring>{L"1", L"2"}));
  EXPECT_EQ(data.GetPageBindings()[0], KrmDataPages{});
}

TEST_F(CardDataTest, TotalAccessorsAnswerDefaultsAndCellsThrowOnNegatives) {
  for (int index : {-1, 3}) {
    EXPECT_EQ(data.GetRowsFirst(index), 1) << index;
    EXPECT_EQ(data.GetRowsNext(index), 1) << index;
    EXPECT_EQ(data.GetFillOrder(index), 0) << index;
    EXPECT_EQ(data.GetRowsNeeded(index), 0) << index;
    KrmDataGrid out;
    EXPECT_EQ(data.GetGridAt(index, out), 0);
    EXPECT_EQ(data.SetGridAt(index, out), 1) << index;
    EXPECT_EQ(data.AddBlockId(index, idA), 1) << index;
  }
  EXPECT_EQ(data.FindGridOfBlock(idA), -1);
  EXPECT_EQ(data.FindGridLike(L"A1B2_ROW"), 1);
  EXPECT_EQ(data.FindGridLike(L"XROW"), -1);
  data.AddBlockId(2, idB);
  data.AddNullBlockIds();
  EXPECT_EQ(data.FindGridOfBlock(idB), 2);
  EXPECT_EQ(data.FindGridOfBlock(QaDbObjectId()), 0);

  data.SelectGrid(L"TITLE");
  data.SelectGrid(L"MISSING");
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(data.SetCell(L"T-01", 0, 0), 1);
  EXPECT_EQ(data.SetCell(L"lost", 5, 0), 1);
  EXPECT_EQ(data.GetCell(0, 0), L"T-01");
  EXPECT_EQ(data.GetCell(5, 0), L"");
  data.SetCurGrid(3);
  KrmDataGrid out;
  out.blockName = L"unchanged";
  EXPECT_EQ(data.GetCell(0, 0), L"");
  EXPECT_EQ(data.GetCurGridData(out), 1);
  EXPECT_EQ(data.SetCurGridData(out), 1);
  EXPECT_EQ(out.blockName, L"unchanged");
  data.SetCurGrid(-1);
  EXPECT_THROW(data.GetCell(0, 0), std::out_of_range);
  EXPECT_THROW(data.SetCurGridData(out), std::out_of_range);
  data.SetCurGrid(2);
  EXPECT_THROW(data.SetCell(L"x", -1, 0), std::out_of_range);
}

TEST_F(CardDataTest, TrimTrailingRowsStopsAtContentAndKeepsOneRow) {
  SetBaseRows({L"", L"", L"", L"", L""}, {L"", L"", L"铣", L"", L""});
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(1), 3);
  data.SelectGrid(L"ROW");
  data.SetCell(L"", 2, 1);
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(1), 1);
  EXPECT_EQ(Rows(2), 2);  // only the base grid is trimmed
  SetBaseRows({}, {});
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(1), 0);
}

TEST_F(CardDataTest, KeepBlankRowsMarksRowsEmptyEverywhereSoTrimmingKeepsThem) {
  SetBaseRows({L"", L"", L"", L""}, {L"", L"x", L"", L""});
  data.KeepBlankRows();
  data.TrimTrailingRows();
  KrmDataGrid rows;
  data.GetGridAt(1, rows);
  EXPECT_EQ(rows.cols[0].values, (std::vector<std::wstring>{L" ", L"", L" ", L" "}));
}


TEST_F(CardDataTest, CopiesLeaveTheBatchIdsBehind) {
  data.SetBatchCurIds({idA, idB});
  data.SetBatchSumIds({idB});
  data.PageStep() = 2;
  const KrmCardData copy(data);
  std::vector<QaDbObjectId> ids;
  copy.GetBatchCurIds(ids);
  copy.GetBatchSumIds(ids);
  EXPECT_TRUE(ids.empty());
  EXPECT_EQ(copy.PageStep(), 2);
  EXPECT_EQ(copy.IsDifferent(data), 0);

  KrmCardData target;
  target.SetBatchCurIds({idB});
  target = data;
  target.GetBatchCurIds(ids);
  target.GetBatchCurIds(ids);  // appends
  EXPECT_EQ(ids, (std::vector<QaDbObjectId>{idB, idB}));
  EXPECT_EQ(target.GridCount(), 3);
  KrmCardData& self = target;
  EXPECT_THROW(target = self, std::out_of_range);
}

TEST_F(CardDataTest, IsDifferentComparesContentNotSelection) {
  const auto onGrid = [](int index, std::function<void(KrmDataGrid&)> edit) {
    return [index, edit](KrmCardData& d) {
      KrmDataGrid g;
      d.GetGridAt(index, g);
      edit(g);
      d.SetGridAt(index, g);
    };
  };
  const std::tuple<const char*, std::function<void(KrmCardData&)>, int> cases[] = {
      {"current grid", [](KrmCardData& d) { d.SetCurGrid(0); }, 0},
      {"batch ids", [this](KrmCardData& d) { d.SetBatchCurIds({idA}); }, 0},
      {"column width", onGrid(0, [](KrmDataGrid& g) { g.cols[0].att.SetWidth(1); }), 0},
      {"shown page", [](KrmCardData& d) { d.SetCurRow(1); }, 1},
      {"page step", [](KrmCardData& d) { d.PageStep() = 3; }, 1},
      {"sum start", [](KrmCardData& d) { d.PageStartSum() = 0; }, 1},
      {"cur start", [](KrmCardData& d) { d.PageStartCur() = 2; }, 1},
      {"cell", [](KrmCardData& d) { d.SetCell(L"A", 0, 1); }, 1},
      {"number mark", onGrid(1, [](KrmDataGrid& g) { g.cols[0].isAutoNum = 0; }), 1},
      {"show name", onGrid(1, [](KrmDataGrid& g) { g.cols[2].att.SetShowName(L"x"); }), 1},
      {"rows next", onGrid(2, [](KrmDataGrid& g) { g.rowsNext = 5; }), 1},
      {"block id", [this](KrmCardData& d) { d.AddBlockId(2, idA); }, 1},
      {"binding", [](KrmCardData& d) {
         auto b = d.GetPageBindings();
         b[3].attName = L"x";
         d.SetPageBindings(b);
       }, 1},
  };
  for (const auto& [name, change, different] : cases) {
    KrmCardData changed(data);
    change(changed);
    EXPECT_EQ(changed.IsDifferent(data), different) << name;
    EXPECT_EQ(data.IsDifferent(changed), different) << name << ", compared the other way";
  }
  KrmCardData lower(data), upper(data);
  lower.SetCell(L"a", 0, 1);
  upper.SetCell(L"A", 0, 1);
  EXPECT_EQ(lower.IsDifferent(upper), 1);
}

TEST_F(CardDataTest, BindingsResolveToGridAndColumn) {
  int grid = 9, col = 9;
  data.GetClassCurCell(grid, col);
  EXPECT_EQ(grid, 0);
  EXPECT_EQ(col, 1);
  std::wstring att;
  data.GetBatchCurAtt(att);
  EXPECT_EQ(att, L"批页");
  auto bindings = data.GetPageBindings();
  bindings[2] = {L"TITLE", L"nothing"};
  bindings[3] = {L"NOBLOCK", L"批总"};
  data.SetPageBindings(bindings);
  data.GetBatchCurCell(grid, col);
  EXPECT_EQ(grid, 0);
  EXPECT_EQ(col, -1);
  data.GetBatchSumCell(grid, col);
  EXPECT_EQ(grid, -1);
  EXPECT_EQ(col, -1);
}
