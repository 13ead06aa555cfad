#include "drawing/render/render_color.h"

#include <array>
#include <cstdio>

namespace tabulon::render {

namespace {

RenderColor rgb(int r, int g, int b) {
  return {static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g), static_cast<std::uint8_t>(b)};
}

// Indexes 10..249 run through 24 hues in steps of 15 degrees. Within a hue the index's
// last digit picks one of five brightness levels; odd digits are the pale variant,
// whose weakest component is half the strongest instead of zero.
RenderColor hueColor(int index) {
  static constexpr std::array<int, 5> kLevels = {255, 204, 153, 127, 76};
  const int hue = (index - 10) / 10;  // 0..23
  const int digit = index % 10;
  const int top = kLevels[static_cast<std::size_t>(digit / 2)];
  const int low = (digit % 2 == 1) ? top / 2 : 0;
  // Position of the hue within its sixth of the colour wheel (4 steps of 15 degrees).
  const int sector = hue / 4;
  const double frac = (hue % 4) / 4.0;
  const int rising = low + static_cast<int>((top - low) * frac);
  const int falling = low + static_cast<int>((top - low) * (1.0 - frac));
  switch (sector) {
    case 0: return rgb(top, rising, low);   // red -> yellow
    case 1: return rgb(falling, top, low);  // yellow -> green
    case 2: return rgb(low, top, rising);   // green -> cyan
    case 3: return rgb(low, falling, top);  // cyan -> blue
    case 4: return rgb(rising, low, top);   // blue -> magenta
    default: return rgb(top, low, falling);  // magenta -> red
  }
}

}  // namespace

RenderColor AciToRgb(int index) {
  switch (index) {
    case 1: return rgb(255, 0, 0);
    case 2: return rgb(255, 255, 0);
    case 3: return rgb(0, 255, 0);
    case 4: return rgb(0, 255, 255);
    case 5: return rgb(0, 0, 255);
    case 6: return rgb(255, 0, 255);
    case 7: return rgb(255, 255, 255);
    case 8: return rgb(128, 128, 128);
    case 9: return rgb(192, 192, 192);
    case 250: return rgb(51, 51, 51);
    case 251: return rgb(80, 80, 80);
    case 252: return rgb(105, 105, 105);
    case 253: return rgb(130, 130, 130);
    case 254: return rgb(190, 190, 190);
    case 255: return rgb(255, 255, 255);
    default: break;
  }
  if (index >= 10 && index <= 249) return hueColor(index);
  return rgb(255, 255, 255);
}

RenderColor AciOnWhite(int index) {
  if (index == 7 || index == 255 || index < 1 || index > 255) return rgb(0, 0, 0);
  return AciToRgb(index);
}

std::string ToHex(const RenderColor& color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", color.r, color.g, color.b);
  return text;
}

}  // namespace tabulon::render
