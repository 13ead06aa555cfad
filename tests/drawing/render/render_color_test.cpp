#include "drawing/render/render_color.h"

#include <gtest/gtest.h>

namespace {

using tabulon::render::AciOnWhite;
using tabulon::render::AciToRgb;
using tabulon::render::RenderColor;

TEST(RenderColor, IndexedColoursFollowTheStandardTable) {
  struct Case {
    int index;
    RenderColor rgb;
  } cases[] = {
      {1, {255, 0, 0}},     {2, {255, 255, 0}},   {5, {0, 0, 255}},     {8, {128, 128, 128}},
      {10, {255, 0, 0}},    {11, {255, 127, 127}}, {12, {204, 0, 0}},   {19, {76, 38, 38}},
      {20, {255, 63, 0}},   {21, {255, 159, 127}}, {30, {255, 127, 0}}, {60, {191, 255, 0}},
      {130, {0, 255, 255}}, {170, {0, 0, 255}},   {210, {255, 0, 255}}, {250, {51, 51, 51}},
  };
  for (const auto& c : cases) EXPECT_EQ(AciToRgb(c.index), c.rgb) << "index " << c.index;
}

TEST(RenderColor, WhiteTurnsBlackOnPaperOtherColoursStay) {
  EXPECT_EQ(AciToRgb(7), (RenderColor{255, 255, 255}));
  EXPECT_EQ(AciOnWhite(7), (RenderColor{0, 0, 0}));
  EXPECT_EQ(AciOnWhite(255), (RenderColor{0, 0, 0}));
  EXPECT_EQ(AciOnWhite(0), (RenderColor{0, 0, 0}));
  EXPECT_EQ(AciOnWhite(1), AciToRgb(1));
  EXPECT_EQ(ToHex(AciToRgb(21)), "#ff9f7f");
}

}  // namespace
