#include "card/card_data.h"

#include <gtest/gtest.h>

#include <functional>

#include "card/card_template.h"
#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;

namespace {

// A loaded process card: TITLE (5 columns), ROW (page base, 20 / 30
// references, automatic number in column 0), SIGN (2 references).
class CardDataTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(tmpl.LoadTemplate(cardtest::WriteProcessCard(Wide(dir.path()))), 1); }

  KrmCardData Loaded() const {
    KrmCardData data;
    data.InitFromTemplate(tmpl);
    return data;
  }

  // Two distinct ids without a database: slots stand in for objects.
  QaDbObjectSlot slotA{nullptr, QaDbHandle(0xA)};
  QaDbObjectSlot slotB{nullptr, QaDbHandle(0xB)};
  QaDbObjectId idA{&slotA};
  QaDbObjectId idB{&slotB};

  ScratchDir dir;
  KrmCardTemplate tmpl;
};

int Rows(const KrmCardData& data, int grid) {
  KrmDataGrid g;
  data.GetGridAt(grid, g);
  return g.RowCount();
}

}  // namespace

TEST_F(CardDataTest, InitBuildsOneGridPerBlockWithASingleRowPageBase) {
  const KrmCardData data = Loaded();
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
  EXPECT_EQ(row.cols[2].att.GetRowType(), kKrmRowNewline);

  // Other grids start with their first-page capacity; a block without a
  // direction entry has one reference.
  EXPECT_EQ(Rows(data, 0), 1);
  EXPECT_EQ(Rows(data, 2), 2);
  EXPECT_EQ(data.GetFillOrder(2), 3);
  EXPECT_EQ(data.GetRowsFirst(0), 1);

  ASSERT_EQ(data.GetPageBindings().size(), 4u);
  EXPECT_EQ(data.GetPageBindings()[1], (KrmDataPages{L"TITLE", L"总页"}));
}

TEST_F(CardDataTest, InitWithoutAKnownPageBaseStartsAtGridZero) {
  KrmTableAttributes first = cardtest::ProcessTable(L"first", 20);
  first.setPageBase(L"ELSEWHERE");
  first.setPageAtt({{kKrmAutoNum, {L"SIGN", L"签名"}}, {kKrmClassCur, {L"TITLE"}}});
  first.OutputTable(Wide(dir / "first.tbl"));
  ASSERT_EQ(tmpl.LoadTemplate(Wide(dir / "card.crd")), 1);

  const KrmCardData data = Loaded();
  EXPECT_EQ(data.GetBaseGrid(), 0);
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(Rows(data, 1), 20);  // no single-row start anywhere
  KrmDataGrid sign;
  data.GetGridAt(2, sign);
  EXPECT_EQ(sign.cols[0].values, (std::vector<std::wstring>{L"1", L"2"}));
  EXPECT_EQ(data.GetPageBindings()[0], KrmDataPages{});
}

TEST_F(CardDataTest, OutOfRangeAccessorsAnswerTheirDefaults) {
  KrmCardData data = Loaded();
  for (int index : {-1, 3, 100}) {
    EXPECT_EQ(data.GetRowsFirst(index), 1);
    EXPECT_EQ(data.GetRowsNext(index), 1);
    EXPECT_EQ(data.GetFillOrder(index), 0);
    EXPECT_EQ(data.GetRowsNeeded(index), 0);
    KrmDataGrid out;
    out.blockName = L"unchanged";
    EXPECT_EQ(data.GetGridAt(index, out), 0);
    EXPECT_EQ(out.blockName, L"unchanged");
    EXPECT_EQ(data.SetGridAt(index, out), 1);
    EXPECT_EQ(data.AddBlockId(index, idA), 1);
  }
  EXPECT_EQ(data.FindGridOfBlock(idA), -1);
  EXPECT_EQ(data.FindGrid(L"row"), -1);
  KrmDataGrid found;
  EXPECT_EQ(data.GetGridByName(L"NONE", found), 0);
  EXPECT_EQ(data.GetGridByName(L"SIGN", found), 1);
  EXPECT_EQ(found.blockName, L"SIGN");
}

TEST_F(CardDataTest, CurrentGridOperationsFollowSelection) {
  KrmCardData data = Loaded();
  data.SelectGrid(L"TITLE");
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(data.SelectGrid(L"MISSING"), 1);
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(data.SetCell(L"T-01", 0, 0), 1);
  EXPECT_EQ(data.GetCell(0, 0), L"T-01");
  EXPECT_EQ(data.SetCell(L"lost", 5, 0), 1);
  EXPECT_EQ(data.GetCell(5, 0), L"");

  data.SetCurGrid(3);
  EXPECT_EQ(data.GetCell(0, 0), L"");
  EXPECT_EQ(data.SetCell(L"x", 0, 0), 1);
  KrmDataGrid out;
  out.blockName = L"unchanged";
  EXPECT_EQ(data.GetCurGridData(out), 1);
  EXPECT_EQ(out.blockName, L"unchanged");
  EXPECT_EQ(data.SetCurGridData(out), 1);
  EXPECT_EQ(data.FindGrid(L"unchanged"), -1);

  data.SetCurGrid(-1);
  EXPECT_THROW(data.GetCell(0, 0), std::out_of_range);
  EXPECT_THROW(data.SetCell(L"x", 0, 0), std::out_of_range);
  EXPECT_THROW(data.GetCurGridData(out), std::out_of_range);
  EXPECT_THROW(data.SetCurGridData(out), std::out_of_range);

  data.SetCurGrid(2);
  EXPECT_THROW(data.GetCell(-1, 0), std::out_of_range);
}

TEST_F(CardDataTest, GridsAreFoundByNameLikenessAndBlockIds) {
  KrmCardData data = Loaded();
  EXPECT_EQ(data.FindGridLike(L"A1B2_ROW"), 1);
  EXPECT_EQ(data.FindGridLike(L"SIGN_2"), 2);
  EXPECT_EQ(data.FindGridLike(L"XROW"), -1);
  data.AddBlockId(2, idB);
  data.AddNullBlockIds();
  EXPECT_EQ(data.FindGridOfBlock(idB), 2);
  EXPECT_EQ(data.FindGridOfBlock(QaDbObjectId()), 0);
  KrmDataGrid sign;
  data.GetGridAt(2, sign);
  EXPECT_EQ(sign.blockIds, (std::vector<QaDbObjectId>{idB, QaDbObjectId()}));
}

TEST_F(CardDataTest, TrimTrailingRowsStopsAtContentAndKeepsOneRow) {
  KrmCardData data = Loaded();
  KrmDataGrid rows;
  data.GetGridAt(1, rows);
  rows.SetAutoNumCol(-1);
  rows.InsertRows(1, 5);
  rows.SetCell(L"铣", 2, 1);
  rows.cols[0].values[0] = L"";
  data.SetGridAt(1, rows);

  data.TrimTrailingRows();
  EXPECT_EQ(Rows(data, 1), 3);
  data.SelectGrid(L"ROW");
  data.SetCell(L"", 2, 1);
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(data, 1), 1);
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(data, 1), 1);
  // Only the base grid is trimmed.
  EXPECT_EQ(Rows(data, 2), 2);
}

TEST_F(CardDataTest, KeepBlankRowsMarksOnlyRowsEmptyEverywhere) {
  KrmCardData data = Loaded();
  KrmDataGrid rows;
  data.GetGridAt(1, rows);
  rows.SetAutoNumCol(-1);
  rows.cols[0].values[0] = L"";
  rows.InsertRows(1, 3);
  rows.SetCell(L"x", 1, 2);
  data.SetGridAt(1, rows);

  data.KeepBlankRows();
  data.GetGridAt(1, rows);
  EXPECT_EQ(rows.cols[0].values, (std::vector<std::wstring>{L" ", L"", L" ", L" "}));
  EXPECT_EQ(rows.cols[2].values[1], L"x");
  // Trimming now keeps every row: blanks count as content.
  data.TrimTrailingRows();
  EXPECT_EQ(Rows(data, 1), 4);
}

TEST_F(CardDataTest, TrimAndKeepLeaveGridsWithoutRowsOrColumnsAlone) {
  KrmCardData data = Loaded();
  KrmDataGrid rows;
  data.GetGridAt(1, rows);
  for (auto& col : rows.cols) col.values.clear();
  data.SetGridAt(1, rows);
  data.TrimTrailingRows();
  data.KeepBlankRows();
  EXPECT_EQ(Rows(data, 1), 0);
  rows.cols.clear();
  data.SetGridAt(1, rows);
  data.TrimTrailingRows();
  data.KeepBlankRows();
  EXPECT_EQ(Rows(data, 1), 0);
  KrmCardData empty;
  EXPECT_EQ(empty.TrimTrailingRows(), 1);
  EXPECT_EQ(empty.KeepBlankRows(), 1);
}

TEST_F(CardDataTest, CopiesLeaveTheBatchIdsBehind) {
  KrmCardData data = Loaded();
  data.SetBatchCurIds({idA, idB});
  data.SetBatchSumIds({idB});
  data.PageStep() = 2;
  data.SetCurRow(3);

  const KrmCardData copy(data);
  std::vector<QaDbObjectId> ids;
  copy.GetBatchCurIds(ids);
  copy.GetBatchSumIds(ids);
  EXPECT_TRUE(ids.empty());
  EXPECT_EQ(copy.PageStep(), 2);
  EXPECT_EQ(copy.GetCurRow(), 3);
  EXPECT_EQ(copy.IsDifferent(data), 0);

  KrmCardData target;
  target.SetBatchCurIds({idB});
  target = data;
  ids.clear();
  target.GetBatchCurIds(ids);
  EXPECT_EQ(ids, std::vector<QaDbObjectId>{idB});
  target.GetBatchCurIds(ids);  // appends
  EXPECT_EQ(ids.size(), 2u);
  ids.clear();
  target.GetBatchSumIds(ids);
  EXPECT_TRUE(ids.empty());
  EXPECT_EQ(target.GridCount(), 3);

  KrmCardData& self = target;
  EXPECT_THROW(target = self, std::out_of_range);
}

TEST_F(CardDataTest, ClearDataRestoresEveryDefault) {
  KrmCardData data = Loaded();
  data.SetBatchCurIds({idA});
  data.PageStartCur() = 5;
  data.PageStartSum() = 4;
  data.SetCurGrid(2);
  data.SetCurRow(1);
  data.ClearData();
  EXPECT_EQ(data.IsDifferent(KrmCardData()), 0);
  EXPECT_EQ(data.GetCurGrid(), 0);
  EXPECT_EQ(data.PageStartCur(), 1);
  std::vector<QaDbObjectId> ids;
  data.GetBatchCurIds(ids);
  EXPECT_TRUE(ids.empty());
}

TEST_F(CardDataTest, IsDifferentComparesContentNotSelection) {
  const KrmCardData base = Loaded();
  struct Case {
    const char* name;
    std::function<void(KrmCardData&)> change;
    int different;
  };
  const Case cases[] = {
      {"current grid", [](KrmCardData& d) { d.SetCurGrid(0); }, 0},
      {"batch ids", [this](KrmCardData& d) { d.SetBatchCurIds({idA}); }, 0},
      {"column width", [](KrmCardData& d) {
         KrmDataGrid g;
         d.GetGridAt(0, g);
         g.cols[0].att.SetWidth(1);
         d.SetGridAt(0, g);
       }, 0},
      {"shown page", [](KrmCardData& d) { d.SetCurRow(1); }, 1},
      {"page step", [](KrmCardData& d) { d.PageStep() = 3; }, 1},
      {"sum start", [](KrmCardData& d) { d.PageStartSum() = 0; }, 1},
      {"cur start", [](KrmCardData& d) { d.PageStartCur() = 2; }, 1},
      {"cell text case", [](KrmCardData& d) {
         d.SetCell(L"A", 0, 1);
       }, 1},
      {"block id", [this](KrmCardData& d) { d.AddBlockId(2, idA); }, 1},
      {"binding", [](KrmCardData& d) {
         auto b = d.GetPageBindings();
         b[3].attName = L"x";
         d.SetPageBindings(b);
       }, 1},
      {"grid count", [](KrmCardData& d) { d.ClearData(); }, 1},
  };
  for (const auto& c : cases) {
    KrmCardData changed(base);
    c.change(changed);
    EXPECT_EQ(changed.IsDifferent(base), c.different) << c.name;
    EXPECT_EQ(base.IsDifferent(changed), c.different) << c.name;
  }
  KrmCardData lower(base), upper(base);
  lower.SetCell(L"a", 0, 1);
  upper.SetCell(L"A", 0, 1);
  EXPECT_EQ(lower.IsDifferent(upper), 1);
}

TEST_F(CardDataTest, BindingCellsResolveToGridAndColumn) {
  KrmCardData data = Loaded();
  int grid = 9, col = 9;
  data.GetClassCurCell(grid, col);
  EXPECT_EQ(grid, 0);
  EXPECT_EQ(col, 1);
  data.GetBatchSumCell(grid, col);
  EXPECT_EQ(col, 4);
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

  KrmCardData empty;
  grid = col = 5;
  EXPECT_EQ(empty.GetClassCurCell(grid, col), 1);
  EXPECT_EQ(grid, -1);
  EXPECT_EQ(col, -1);
  att = L"kept";
  empty.GetBatchSumAtt(att);
  EXPECT_EQ(att, L"kept");
}
