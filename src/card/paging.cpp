#include "card/paging.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "card/card_data.h"
#include "card/fitting_prefix.h"
#include "card/utf8_text.h"
#include "host/gi/qagi_text_style.h"

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
  KrmFittingPrefix fitting(measurer, width);
  for (;;) {
    const size_t cut = fitting.Cut(text, start);
    if (cut == KrmFittingPrefix::kNothingFits) break;
    if (start + cut == text.size()) break;  // the rest fits
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
