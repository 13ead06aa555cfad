// Numbers in the text of calculated cells: reading a cell as a number the way the card
// model does everywhere (a leading decimal number, the rest ignored), and formatting a
// result by the string type and decimals of its column. Locale-independent: the decimal
// point is always ".".
#pragma once

#include <optional>
#include <string>
#include <string_view>

class KrmAttSet;

// The decimal number at the start of `text` after blanks: optional sign, digits with an
// optional "." and fraction, optional exponent. Nothing when no digit stands there; an
// overflowing value reads as nothing too.
std::optional<double> KrmLeadingNumber(std::wstring_view text);

// KrmLeadingNumber, or 0 for a text that holds no number.
double KrmTextToDouble(std::wstring_view text);

// `value` with exactly `decimals` digits after the point (none for 0 or fewer), rounded
// to nearest as printf's "%0.<decimals>f" does.
std::wstring KrmFormatFixed(double value, int decimals);

// A calculated result for the column `att`: for "KRM_XDATA_NUMINT" the text read as a
// number with no decimals, for "KRM_XDATA_NUMDOUBLE" with GetDecimalNum() decimals (a
// text that is no number gives zero in that format); any other string type keeps the
// text as it is.
std::wstring FormatCellNumber(const std::wstring& text, const KrmAttSet& att);
