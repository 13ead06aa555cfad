#include "card/data_grid.h"

#include <gtest/gtest.h>

#include <functional>

#include "card_fixture.h"

namespace {

// A grid whose columns hold the given texts, column by column.
KrmDataGrid Grid(const std::vector<std::vector<std::wstring>>& columns) {
  KrmDataGrid grid;
  grid.blockName = L"ROW";
  for (size_t c = 0; c < columns.size(); ++c) {
    KrmDataTCol col;
    col.att = cardtest::Att(L"C" + std::to_wstring(c));
    col.values = columns[c];
    grid.cols.push_back(col);
  }
  return grid;
}

using Columns = std::vector<std::vector<std::wstring>>;

Columns ValuesOf(const KrmDataGrid& grid) {
  Columns out;
  for (const auto& col : grid.cols) out.push_back(col.values);
  return out;
}

}  // namespace

TEST(KrmDataGrid, CellsOutsideTheGridReadEmptyAndAreNotStored) {
  KrmDataGrid grid = Grid({{L"a", L"b"}, {L"c", L"d"}});
  EXPECT_EQ(grid.GetCell(1, 1), L"d");
  EXPECT_EQ(grid.GetCell(2, 0), L"");
  EXPECT_EQ(grid.GetCell(0, 2), L"");
  EXPECT_EQ(grid.SetCell(L"x", 1, 0), 1);
  EXPECT_EQ(grid.SetCell(L"y", 2, 0), 0);
  EXPECT_EQ(grid.SetCell(L"y", 0, 2), 0);
  EXPECT_EQ(ValuesOf(grid), (Columns{{L"a", L"x"}, {L"c", L"d"}}));
  EXPECT_THROW(grid.GetCell(-1, 0), std::out_of_range);
  EXPECT_THROW(grid.GetCell(0, -1), std::out_of_range);
  EXPECT_THROW(grid.SetCell(L"z", -1, 0), std::out_of_range);
  EXPECT_THROW(grid.SetCell(L"z", 0, -1), std::out_of_range);
}

TEST(KrmDataGrid, FindColMatchesTheShowNameExactly) {
  KrmDataGrid grid = Grid({{}, {}, {}});
  grid.cols[2].att.SetShowName(L"C1");
  EXPECT_EQ(grid.FindCol(L"C1"), 1);
  EXPECT_EQ(grid.FindCol(L"c1"), -1);
  EXPECT_EQ(grid.FindCol(L""), -1);
}

TEST(KrmDataGrid, RowOperationsActOnEveryColumnThatAllowsThem) {
  struct Case {
    const char* name;
    Columns before;
    std::function<void(KrmDataGrid&)> op;
    Columns after;
  };
  const Case cases[] = {
      {"insert in the middle", {{L"a", L"b"}, {L"c", L"d"}}, [](KrmDataGrid& g) { g.InsertRows(1, 2); },
       {{L"a", L"", L"", L"b"}, {L"c", L"", L"", L"d"}}},
      {"insert at the end", {{L"a"}, {L"c"}}, [](KrmDataGrid& g) { g.InsertRows(1, 1); }, {{L"a", L""}, {L"c", L""}}},
      {"insert past a short column", {{L"a", L"b"}, {L"c"}}, [](KrmDataGrid& g) { g.InsertRows(2, 1); },
       {{L"a", L"b", L""}, {L"c"}}},
      {"insert nothing", {{L"a"}}, [](KrmDataGrid& g) { g.InsertRows(0, 0); }, {{L"a"}}},
      {"insert a negative count", {{L"a"}}, [](KrmDataGrid& g) { g.InsertRows(0, -2); }, {{L"a"}}},
      {"insert at a negative row", {{L"a"}}, [](KrmDataGrid& g) { g.InsertRows(-1, 1); }, {{L"a"}}},
      {"swap down", {{L"a", L"b", L"c"}, {L"1", L"2", L"3"}}, [](KrmDataGrid& g) { g.SwapRowDown(1); },
       {{L"a", L"c", L"b"}, {L"1", L"3", L"2"}}},
      {"swap down the last row", {{L"a", L"b"}}, [](KrmDataGrid& g) { g.SwapRowDown(1); }, {{L"a", L"b"}}},
      {"swap down skips a short column", {{L"a", L"b"}, {L"1"}}, [](KrmDataGrid& g) { g.SwapRowDown(0); },
       {{L"b", L"a"}, {L"1"}}},
      {"swap up", {{L"a", L"b", L"c"}}, [](KrmDataGrid& g) { g.SwapRowUp(2); }, {{L"a", L"c", L"b"}}},
      {"swap up row 0", {{L"a", L"b"}}, [](KrmDataGrid& g) { g.SwapRowUp(0); }, {{L"a", L"b"}}},
      {"remove rows", {{L"a", L"b", L"c"}, {L"1", L"2", L"3"}}, [](KrmDataGrid& g) { g.RemoveRows(1, 5); },
       {{L"a"}, {L"1"}}},
      {"remove past the end", {{L"a"}}, [](KrmDataGrid& g) { g.RemoveRows(1, 1); }, {{L"a"}}},
  };
  for (const auto& c : cases) {
    KrmDataGrid grid = Grid(c.before);
    c.op(grid);
    EXPECT_EQ(ValuesOf(grid), c.after) << c.name;
  }
}

TEST(KrmDataGrid, AutoNumColumnRenumbersFromOneAndUnmarksOthers) {
  KrmDataGrid grid = Grid({{L"x", L"y", L"z"}, {L"9", L"", L"7"}});
  grid.cols[0].isAutoNum = 1;
  grid.SetAutoNumCol(1);
  EXPECT_EQ(grid.cols[0].isAutoNum, 0);
  EXPECT_EQ(grid.cols[1].isAutoNum, 1);
  EXPECT_EQ(grid.AutoNumCol(), 1);
  EXPECT_EQ(ValuesOf(grid), (Columns{{L"x", L"y", L"z"}, {L"1", L"2", L"3"}}));

  grid.InsertRows(0, 9);
  grid.SetAutoNumCol(grid.AutoNumCol());
  EXPECT_EQ(grid.cols[1].values.back(), L"12");

  grid.SetAutoNumCol(-1);
  EXPECT_EQ(grid.AutoNumCol(), -1);
  EXPECT_EQ(grid.cols[1].values.back(), L"12");
}

TEST(KrmDataGrid, SameContentIgnoresAttributeDetailsButNotValues) {
  const KrmDataGrid a = Grid({{L"a"}, {L"b"}});
  KrmDataGrid b = a;
  b.cols[0].att.SetWidth(99);
  b.cols[0].att.SetCalc(L"1+1");
  EXPECT_TRUE(a.SameContent(b));
  b.cols[0].values[0] = L"A";
  EXPECT_FALSE(a.SameContent(b));
  b = a;
  b.cols[1].isAutoNum = 1;
  EXPECT_FALSE(a.SameContent(b));
  b = a;
  b.cols[1].att.SetShowName(L"other");
  EXPECT_FALSE(a.SameContent(b));
  b = a;
  b.rowsNext = 2;
  EXPECT_FALSE(a.SameContent(b));
  b = a;
  b.fillOrder = 4;
  EXPECT_FALSE(a.SameContent(b));
  b = a;
  b.cols.pop_back();
  EXPECT_FALSE(a.SameContent(b));
}
