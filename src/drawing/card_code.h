// The 8-character code that ties the pages of one placed card together. A card is
// recognised in the drawing by this code, never by an object id, which does not survive
// copying.
#pragma once

#include <ctime>
#include <string>

// A new code from the local time and a random number drawn now.
std::wstring MakeCardCode();

// The code for a given moment and random number: day of month, hour, minute and second
// as 8 digits, then `random` % 999 in decimal; of that the last 8 characters (or the
// text padded with leading "0" to 8 when shorter).
std::wstring FormatCardCode(const std::tm& localTime, unsigned random);
