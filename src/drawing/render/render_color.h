// Colours of a rendered drawing: the 256 indexed colours of CAD drawings as RGB, and
// how an entity's colour is resolved from its own index, its layer and the block
// reference it is drawn through. Plain values and pure functions.
#pragma once

#include <cstdint>
#include <string>

namespace tabulon::render {

struct RenderColor {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  bool operator==(const RenderColor&) const = default;
};

// The RGB value of an indexed colour 1..255 as CAD programs show it on a dark screen.
// Index 7 is white there; indexes outside 1..255 give white as well.
RenderColor AciToRgb(int index);

// The colour an index shows on a white sheet: as AciToRgb, except that 7 (white on
// screen, black on paper) and the near-white greys turn black, so that nothing drawn
// disappears into the background.
RenderColor AciOnWhite(int index);

// "#rrggbb".
std::string ToHex(const RenderColor& color);

}  // namespace tabulon::render
