// Reading decimal texts of the card model leniently: leading blanks, an
// optional sign, then digits; whatever follows is ignored, and a text with no
// digits reads as 0. Values past the range of int are clamped.
#pragma once

#include <string_view>

int KrmTextToInt(std::wstring_view text);
