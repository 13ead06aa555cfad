// The cells of one worksheet as the spreadsheet readers hand them over, and how a
// numeric cell becomes text. Plain values; the reader that fills a table owns nothing
// of the file afterwards.
#pragma once

#include <string>
#include <vector>

namespace tabulon::editor {

struct SheetCell {
  enum class Kind { kEmpty, kText, kNumber, kBool };
  Kind kind = Kind::kEmpty;
  std::wstring text;    // kText
  double number = 0.0;  // kNumber; kBool holds 0 or 1
};

// Rows of cells from row 0; a row may be shorter than the widest one.
using SheetTable = std::vector<std::vector<SheetCell>>;

// The widest row's length.
int SheetColumnCount(const SheetTable& table);

// A number as text: fixed notation with the fewest digits that read back to the same
// value ("12", "12.5", "0.1"); very large or small numbers in exponent notation.
std::wstring NumberText(double value);
// A number rounded to `digits` decimals and written with exactly that many; `digits`
// of 0 or less gives NumberText.
std::wstring NumberText(double value, int digits);
// True, with the value, when `text` is exactly what NumberText writes for some number,
// so that storing it as a number loses nothing ("12.50", "007", "+1" stay text).
bool ExactNumber(const std::wstring& text, double& value);
// The text of a cell as the import sees it; numbers through NumberText(value, digits),
// booleans as "TRUE" / "FALSE".
std::wstring CellText(const SheetCell& cell, int digits);

}  // namespace tabulon::editor
