#include "card/data_grid.h"

#include <gtest/gtest.h>

#include <functional>

#include "card_fixture.h"

namespace {

using Columns = std::vector<std::vector<std::wstring>>;

KrmDataGrid Grid(const Columns& columns) {
  KrmDataGrid grid;
  for (size_t c = 0; c < columns.size(); ++c) {
    KrmDataTCol col;
    col.att = cardtest::Att(L"C" + std::to_wstring(c));
    col.values = columns[c];
    grid.cols.push_back(col);
  }
  return grid;
}

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
  EXPECT_THROW(grid.SetCell(L"z", 0, -1), std::out_of_range);
  grid.cols[1].att.SetShowName(L"C0");
  EXPECT_EQ(grid.FindCol(L"C0"), 0);
  EXPECT_EQ(grid.FindCol(L"c0"), -1);
}

struct RowOperationCase {
  const char* name;
  Columns before;
  std::function<void(KrmDataGrid&)> op;
  Columns after;
};

class RowOperation : public ::testing::TestWithParam<RowOperationCase> {};

TEST_P(RowOperation, ActsOnEveryColumnThatAllowsIt) {
  KrmDataGrid grid = Grid(GetParam().before);
  GetParam().op(grid);
  EXPECT_EQ(ValuesOf(grid), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    KrmDataGrid, RowOperation,
    ::testing::Values(
      RowOperationCase{"Insert", {{L"a", L"b"}, {L"c", L"d"}}, [](KrmDataGrid& g) { g.InsertRows(1, 2); },
       {{L"a", L"", L"", L"b"}, {L"c", L"", L"", L"d"}}},
      RowOperationCase{"InsertPastAShortColumn", {{L"a", L"b"}, {L"c"}}, [](KrmDataGrid& g) { g.InsertRows(2, 1); },
       {{L"a", L"b", L""}, {L"c"}}},
      RowOperationCase{"InsertNone", {{L"a"}},
       [](KrmDataGrid& g) { g.InsertRows(0, 0), g.InsertRows(0, -2), g.InsertRows(-1, 1); }, {{L"a"}}},
      RowOperationCase{"SwapDown", {{L"a", L"b", L"c"}, {L"1", L"2"}}, [](KrmDataGrid& g) { g.SwapRowDown(1); },
       {{L"a", L"c", L"b"}, {L"1", L"2"}}},
      RowOperationCase{"SwapDownTheLastRow", {{L"a", L"b"}}, [](KrmDataGrid& g) { g.SwapRowDown(1); }, {{L"a", L"b"}}},
      RowOperationCase{"SwapUp", {{L"a", L"b", L"c"}}, [](KrmDataGrid& g) { g.SwapRowUp(2); }, {{L"a", L"c", L"b"}}},
      RowOperationCase{"SwapUpRowZero", {{L"a", L"b"}}, [](KrmDataGrid& g) { g.SwapRowUp(0); }, {{L"a", L"b"}}},
      RowOperationCase{"Remove", {{L"a", L"b", L"c"}, {L"1"}}, [](KrmDataGrid& g) { g.RemoveRows(1, 5); },
       {{L"a"}, {L"1"}}}),
    [](const ::testing::TestParamInfo<RowOperationCase>& info) { return std::string(info.param.name); });

TEST(KrmDataGrid, AutoNumColumnRenumbersFromOneAndUnmarksOthers) {
  KrmDataGrid grid = Grid({{L"x", L"y", L"z"}, {L"9", L"", L"7"}});
  grid.cols[0].isAutoNum = 1;
  grid.SetAutoNumCol(1);
  EXPECT_EQ(grid.cols[0].isAutoNum, 0);
  EXPECT_EQ(grid.AutoNumCol(), 1);
  EXPECT_EQ(ValuesOf(grid), (Columns{{L"x", L"y", L"z"}, {L"1", L"2", L"3"}}));
  grid.InsertRows(0, 9);
  grid.SetAutoNumCol(grid.AutoNumCol());
  EXPECT_EQ(grid.cols[1].values.back(), L"12");
  grid.SetAutoNumCol(-1);
  EXPECT_EQ(grid.AutoNumCol(), -1);
  EXPECT_EQ(grid.cols[1].values.back(), L"12");
}
