// How wide the text editor of a cell opens.
#include <gtest/gtest.h>

#include "ui/grid/grid_delegate.h"

namespace {

struct WidthCase {
  int text, blanks, cell, room, expected;
};

class InPlaceEditWidthTest : public ::testing::TestWithParam<WidthCase> {};

TEST_P(InPlaceEditWidthTest, GrowsWithTheTextWithinItsLimits) {
  const WidthCase c = GetParam();
  EXPECT_EQ(tabulon::ui::InPlaceEditWidth(c.text, c.blanks, c.cell, c.room), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, InPlaceEditWidthTest,
                         ::testing::Values(WidthCase{20, 8, 80, 500, 80},     // short text: the cell
                                           WidthCase{120, 8, 80, 500, 128},   // wider text: text and blanks
                                           WidthCase{400, 8, 80, 500, 240},   // never past 240
                                           WidthCase{400, 8, 80, 150, 150},   // nor past the room
                                           WidthCase{400, 8, 300, 500, 300}));  // a wide cell stays

}  // namespace
