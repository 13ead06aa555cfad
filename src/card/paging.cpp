#include "card/paging.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "card/card_data.h"
#include "card/utf8_text.h"
#include "host/gi/qagi_text_style.h"

namespace {

// Widths closer than this count as equal: the character between them has no
// width.
constexpr double kNoWidth = 1e-6;

// Control codes of CAD text ("%%nnn") span at most five stored characters, so
// the prefix widths of a text cut after `m` characters equal those of the whole
// text up to index m - kCodeSpan + 1.
constexpr size_t kCodeSpan = 5;

// The first index j of the prefix widths of `rest` (= text from `start`) whose
// width exceeds `width`, or npos when the whole rest fits. Measures only a
// window of the rest, growing it until the answer is certain; `window` carries
// a good first size from one call to the next. `widths` receives the prefix
// widths of the window, valid at least up to the returned index.
size_t FirstOverflow(const std::wstring& text, size_t start, double width, const QaGiTextStyle& measurer,
                     size_t& window, std::vector<double>& widths) {
  const size_t restLength = text.size() - start;
  for (size_t m = std::max<size_t>(window, 2 * kCodeSpan);; m *= 2) {
    const size_t taken = std::min(m, restLength);
    widths = measurer.prefixWidths(text.substr(start, taken));
    const bool whole = taken == restLength;
    const size_t trusted = whole ? taken : taken + 1 - kCodeSpan;
    // Prefix widths never fall (no character has a negative advance), so the
    // first width past the limit is found by bisection.
    const auto end = widths.begin() + static_cast<std::ptrdiff_t>(trusted) + 1;
    const auto over = std::upper_bound(widths.begin(), end, width);
    if (over != end) {
      window = 2 * static_cast<size_t>(over - widths.begin()) + 2 * kCodeSpan;
      return static_cast<size_t>(over - widths.begin());
    }
    if (whole) return std::wstring::npos;
  }
}

}  // namespace

int PageCount(int rows, int first, int next) {
  if (rows <= first) return 1;
  const int extra = rows - first;
  return extra / next + (extra % next != 0 ? 2 : 1);
}

int LastContinuationIndex(int needed, int first, int next) {
  const int extra = needed - first;
  return extra / next - (extra % next == 0 ? 1 : 0);
}

int WrappedLineCount(const std::wstring& text, double width, const QaGiTextStyle& measurer) {
  const int length = static_cast<int>(text.size());
  int need = 1;
  size_t start = 0;
  size_t window = 0;
  std::vector<double> widths;
  for (;;) {
    const size_t over = FirstOverflow(text, start, width, measurer, window, widths);
    if (over == std::wstring::npos) break;  // the rest fits
    if (over == 0) break;                   // not even an empty prefix fits
    // The longest prefix that fits has over - 1 characters; it is never the
    // whole rest, since the rest does not fit.
    size_t cut = over - 1;
    if (cut > 0 && std::fabs(widths[cut - 1] - widths[cut]) < kNoWidth) cut -= 1;
    start += cut;
    ++need;
    if (need >= length) break;
  }
  return need;
}

int RowLinesNeeded(const KrmDataGrid& grid, int row, QaGiTextStyle& measurer) {
  int lines = 1;
  for (const auto& col : grid.cols) {
    if (row < 0 || static_cast<size_t>(row) >= col.values.size()) continue;
    const std::wstring& text = col.values[static_cast<size_t>(row)];
    if (text.empty()) continue;
    if (text.find(L'\n') != std::wstring::npos) {
      const int breaks = static_cast<int>(std::count(text.begin(), text.end(), L'\n'));
      lines = breaks + (text.back() == L'\n' ? 0 : 1);
    } else if (col.att.GetRowType() == kKrmRowNewline) {
      measurer.setTextSize(col.att.GetHeight());
      lines = std::max(lines, WrappedLineCount(text, col.att.GetWidth(), measurer));
    }
  }
  return lines;
}

int GridLinesNeeded(const KrmDataGrid& grid) {
  size_t maxRows = 0;
  for (const auto& col : grid.cols) maxRows = std::max(maxRows, col.values.size());
  if (maxRows == 0) return 0;
  QaGiTextStyle measurer;
  measurer.setXScale(1.0);
  int total = 0;
  for (size_t r = 0; r < maxRows; ++r) total += RowLinesNeeded(grid, static_cast<int>(r), measurer);
  return total;
}

int KrmCardData::GetRowsNeeded(int index) const {
  KrmDataGrid grid;
  if (!GetGridAt(index, grid)) return 0;
  return GridLinesNeeded(grid);
}

int KrmCardData::FillPageNumbers(int page, int pages) {
  const std::wstring cur = std::to_wstring((page - 1) * pageStep_ + pageStartCur_);
  const std::wstring sum = std::to_wstring((pages - 1) * pageStep_ + pageStartSum_);
  for (size_t k = 0; k < pageBindings_.size(); ++k) {
    const std::wstring text = k == 0 || k == 2 ? cur : k == 1 || k == 3 ? sum : std::wstring();
    const KrmDataPages& binding = pageBindings_[k];
    const int g = FindGrid(binding.blockName);
    if (g < 0) continue;
    KrmDataGrid& grid = grids_[static_cast<size_t>(g)];
    const int col = grid.FindCol(binding.attName);
    if (col < 0) {
      throw std::out_of_range("page number binding: block \"" + KrmToUtf8(binding.blockName) + "\" has no attribute \"" +
                              KrmToUtf8(binding.attName) + "\"");
    }
    auto& values = grid.cols[static_cast<size_t>(col)].values;
    if (!values.empty()) values[0] = text;
  }
  return 1;
}
