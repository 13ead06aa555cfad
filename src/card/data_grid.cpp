#include "card/data_grid.h"

#include <stdexcept>
#include <string>

namespace {

void RequireNotNegative(int row, int col) {
  if (row < 0 || col < 0) {
    throw std::out_of_range("KrmDataGrid cell (" + std::to_string(row) + ", " + std::to_string(col) +
                            "): negative index");
  }
}

}  // namespace

int KrmDataGrid::GetCell(std::wstring& out, int row, int col) const {
  RequireNotNegative(row, col);
  out.clear();
  if (static_cast<size_t>(col) >= cols.size()) return 1;
  const auto& values = cols[static_cast<size_t>(col)].values;
  if (static_cast<size_t>(row) < values.size()) out = values[static_cast<size_t>(row)];
  return 1;
}

int KrmDataGrid::SetCell(const std::wstring& text, int row, int col) {
  RequireNotNegative(row, col);
  if (static_cast<size_t>(col) >= cols.size()) return 0;
  auto& values = cols[static_cast<size_t>(col)].values;
  if (static_cast<size_t>(row) >= values.size()) return 0;
  values[static_cast<size_t>(row)] = text;
  return 1;
}

int KrmDataGrid::FindCol(const std::wstring& showName) const {
  for (size_t i = 0; i < cols.size(); ++i) {
    if (cols[i].att.GetShowName() == showName) return static_cast<int>(i);
  }
  return -1;
}

int KrmDataGrid::InsertRows(int at, int count) {
  if (count <= 0 || at < 0) return 1;
  for (auto& col : cols) {
    if (static_cast<size_t>(at) > col.values.size()) continue;
    col.values.insert(col.values.begin() + at, static_cast<size_t>(count), std::wstring());
  }
  return 1;
}

int KrmDataGrid::RemoveRows(int at, int count) {
  if (count <= 0 || at < 0) return 1;
  for (auto& col : cols) {
    const size_t size = col.values.size();
    if (static_cast<size_t>(at) >= size) continue;
    const size_t end = std::min(size, static_cast<size_t>(at) + static_cast<size_t>(count));
    col.values.erase(col.values.begin() + at, col.values.begin() + static_cast<std::ptrdiff_t>(end));
  }
  return 1;
}

int KrmDataGrid::SwapRowDown(int row) {
  if (row < 0) return 1;
  for (auto& col : cols) {
    if (static_cast<size_t>(row) + 1 < col.values.size()) std::swap(col.values[row], col.values[row + 1]);
  }
  return 1;
}

int KrmDataGrid::SwapRowUp(int row) {
  if (row < 1) return 1;
  return SwapRowDown(row - 1);
}

int KrmDataGrid::SetAutoNumCol(int col) {
  for (size_t i = 0; i < cols.size(); ++i) cols[i].isAutoNum = static_cast<int>(i) == col ? 1 : 0;
  if (col < 0 || static_cast<size_t>(col) >= cols.size()) return 1;
  auto& values = cols[static_cast<size_t>(col)].values;
  for (size_t r = 0; r < values.size(); ++r) values[r] = std::to_wstring(r + 1);
  return 1;
}

int KrmDataGrid::AutoNumCol() const {
  for (size_t i = 0; i < cols.size(); ++i) {
    if (cols[i].isAutoNum != 0) return static_cast<int>(i);
  }
  return -1;
}

bool KrmDataGrid::SameContent(const KrmDataGrid& other) const {
  if (blockName != other.blockName || rowsFirst != other.rowsFirst || rowsNext != other.rowsNext ||
      blockIds != other.blockIds || fillOrder != other.fillOrder || cols.size() != other.cols.size()) {
    return false;
  }
  for (size_t i = 0; i < cols.size(); ++i) {
    if (!cols[i].SameContent(other.cols[i])) return false;
  }
  return true;
}
