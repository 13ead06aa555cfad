// Where a text too wide for a cell is cut: the longest prefix no wider than the cell.
// Paging counts the lines a wrapping cell needs with it and text fitting writes each line
// with it, so the page count and the texts written always agree.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

class QaGiTextStyle;

// Finds cuts in the texts of one cell width, measured by one measurer (at its current
// size and X scale). It keeps the measurer by reference, which must outlive it, and
// remembers how much text the last cut needed, so cutting one long text again and again
// measures only a little more than the line it cuts.
class KrmFittingPrefix {
 public:
  // The answer when not even an empty prefix fits (a negative width).
  static constexpr std::size_t kNothingFits = std::wstring::npos;

  KrmFittingPrefix(const QaGiTextStyle& measurer, double width) : measurer_(measurer), width_(width) {}

  // Characters of `text` from `start` that stay in the cell: all the rest when it fits;
  // otherwise the longest prefix whose width is at most the cell's, less its last
  // character when that one has no width (a line break goes on with the rest); or
  // kNothingFits.
  std::size_t Cut(const std::wstring& text, std::size_t start = 0);

 private:
  const QaGiTextStyle& measurer_;
  double width_;
  std::size_t window_ = 0;
  std::vector<double> widths_;
};

// Cut of a whole text, with a fitter of its own.
std::size_t FittingPrefixLength(const std::wstring& text, double width, const QaGiTextStyle& measurer);
