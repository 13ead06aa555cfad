#include "card/fitting_prefix.h"

#include <algorithm>
#include <cmath>

#include "host/gi/qagi_text_style.h"

namespace {

// Widths closer than this count as equal: the character between them has no width.
constexpr double kNoWidth = 1e-6;

// Control codes of CAD text ("%%nnn") span at most five stored characters, so the
// prefix widths of a text cut after `m` characters equal those of the whole text up to
// index m - kCodeSpan + 1.
constexpr std::size_t kCodeSpan = 5;

}  // namespace

std::size_t KrmFittingPrefix::Cut(const std::wstring& text, std::size_t start) {
  const std::size_t restLength = text.size() - std::min(start, text.size());
  // Measures a window of the rest, doubling it until the first prefix wider than the
  // cell lies within what the window can tell.
  for (std::size_t m = std::max<std::size_t>(window_, 2 * kCodeSpan);; m *= 2) {
    const std::size_t taken = std::min(m, restLength);
    widths_ = measurer_.prefixWidths(text.substr(start, taken));
    const bool whole = taken == restLength;
    const std::size_t trusted = whole ? taken : taken + 1 - kCodeSpan;
    // Prefix widths never fall (no character has a negative advance), so the first
    // width past the limit is found by bisection.
    const auto end = widths_.begin() + static_cast<std::ptrdiff_t>(trusted) + 1;
    const auto over = std::upper_bound(widths_.begin(), end, width_);
    if (over == end) {
      if (whole) return restLength;
      continue;
    }
    const auto first = static_cast<std::size_t>(over - widths_.begin());
    window_ = 2 * first + 2 * kCodeSpan;
    if (first == 0) return kNothingFits;
    std::size_t cut = first - 1;
    if (cut > 0 && std::fabs(widths_[cut - 1] - widths_[cut]) < kNoWidth) cut -= 1;
    return cut;
  }
}

std::size_t FittingPrefixLength(const std::wstring& text, double width, const QaGiTextStyle& measurer) {
  return KrmFittingPrefix(measurer, width).Cut(text);
}
