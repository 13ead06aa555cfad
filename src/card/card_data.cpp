#include "card/card_data.h"

#include <algorithm>
#include <stdexcept>

#include "card/card_template.h"
#include "card/table_attributes.h"

namespace {

bool InRange(int index, size_t size) { return index >= 0 && static_cast<size_t>(index) < size; }

}  // namespace

KrmCardData::KrmCardData(const KrmCardData& other)
    : curGrid_(other.curGrid_),
      baseGrid_(other.baseGrid_),
      grids_(other.grids_),
      pageBindings_(other.pageBindings_),
      curRow_(other.curRow_),
      pageStep_(other.pageStep_),
      pageStartSum_(other.pageStartSum_),
      pageStartCur_(other.pageStartCur_) {}

KrmCardData& KrmCardData::operator=(const KrmCardData& other) {
  if (this == &other) throw std::out_of_range("KrmCardData assigned to itself");
  curGrid_ = other.curGrid_;
  baseGrid_ = other.baseGrid_;
  grids_ = other.grids_;
  pageBindings_ = other.pageBindings_;
  curRow_ = other.curRow_;
  pageStep_ = other.pageStep_;
  pageStartSum_ = other.pageStartSum_;
  pageStartCur_ = other.pageStartCur_;
  return *this;
}

void KrmCardData::ClearData() {
  curGrid_ = 0;
  baseGrid_ = 0;
  grids_.clear();
  pageBindings_.clear();
  curRow_ = 0;
  pageStep_ = 1;
  pageStartSum_ = 1;
  pageStartCur_ = 1;
  batchCurIds_.clear();
  batchSumIds_.clear();
}

int KrmCardData::InitFromTemplate(const KrmCardTemplate& cardTemplate) {
  ClearData();
  std::wstring base;
  cardTemplate.GetPageBase(0, base);
  std::vector<std::wstring> names;
  cardTemplate.GetBlockNames(names, 0);

  const KrmTableAttributes* first = cardTemplate.GetTable(0);
  std::wstring autoBlock, autoAtt;
  const bool hasAutoNum = first && first->PageBinding(kKrmAutoNum, autoBlock, autoAtt);

  for (const auto& name : names) {
    std::vector<KrmAttSet> atts;
    cardTemplate.GetAtts(name, atts);
    int rowsFirst = 1, rowsNext = 1, order = 0;
    cardTemplate.GetBlkNum(name, rowsFirst, order, 0);
    int ignoredOrder = 0;
    cardTemplate.GetBlkNum(name, rowsNext, ignoredOrder, 1);

    KrmDataGrid grid;
    grid.blockName = name;
    grid.rowsFirst = rowsFirst;
    grid.rowsNext = rowsNext;
    grid.fillOrder = order;
    const bool isBase = name == base;
    const size_t rows = isBase ? 1 : static_cast<size_t>(std::max(rowsFirst, 0));
    for (const auto& att : atts) {
      KrmDataTCol col;
      col.att = att;
      col.values.assign(rows, std::wstring());
      grid.cols.push_back(std::move(col));
    }
    if (hasAutoNum && autoBlock == name) {
      const int col = grid.FindCol(autoAtt);
      if (col >= 0) grid.SetAutoNumCol(col);
    }
    grids_.push_back(std::move(grid));
  }

  auto basePos = std::find(names.begin(), names.end(), base);
  curGrid_ = baseGrid_ = basePos == names.end() ? 0 : static_cast<int>(basePos - names.begin());

  for (const wchar_t* key : {kKrmClassCur, kKrmClassSum, kKrmBatchCur, kKrmBatchSum}) {
    KrmDataPages binding;
    if (first) first->PageBinding(key, binding.blockName, binding.attName);
    pageBindings_.push_back(binding);
  }
  return 1;
}

int KrmCardData::IsDifferent(const KrmCardData& other) const {
  if (baseGrid_ != other.baseGrid_ || curRow_ != other.curRow_ || pageStep_ != other.pageStep_ ||
      pageStartSum_ != other.pageStartSum_ || pageStartCur_ != other.pageStartCur_) {
    return 1;
  }
  if (grids_.size() != other.grids_.size() || pageBindings_ != other.pageBindings_) return 1;
  for (size_t i = 0; i < grids_.size(); ++i) {
    if (!grids_[i].SameContent(other.grids_[i])) return 1;
  }
  return 0;
}

int KrmCardData::SelectGrid(const std::wstring& name) {
  const int index = FindGrid(name);
  if (index >= 0) curGrid_ = index;
  return 1;
}

int KrmCardData::GetGridAt(int index, KrmDataGrid& out) const {
  if (!InRange(index, grids_.size())) return 0;
  out = grids_[static_cast<size_t>(index)];
  return 1;
}

int KrmCardData::SetGridAt(int index, const KrmDataGrid& grid) {
  if (InRange(index, grids_.size())) grids_[static_cast<size_t>(index)] = grid;
  return 1;
}

const KrmDataGrid* KrmCardData::CurrentGrid() const {
  if (curGrid_ < 0) throw std::out_of_range("KrmCardData: negative current grid " + std::to_string(curGrid_));
  return static_cast<size_t>(curGrid_) < grids_.size() ? &grids_[static_cast<size_t>(curGrid_)] : nullptr;
}

KrmDataGrid* KrmCardData::CurrentGrid() {
  return const_cast<KrmDataGrid*>(static_cast<const KrmCardData*>(this)->CurrentGrid());
}

KrmDataGrid* KrmCardData::BaseGrid() {
  return InRange(baseGrid_, grids_.size()) ? &grids_[static_cast<size_t>(baseGrid_)] : nullptr;
}

int KrmCardData::GetCurGridData(KrmDataGrid& out) const {
  if (const KrmDataGrid* grid = CurrentGrid()) out = *grid;
  return 1;
}

int KrmCardData::SetCurGridData(const KrmDataGrid& grid) {
  if (KrmDataGrid* target = CurrentGrid()) *target = grid;
  return 1;
}

int KrmCardData::GetGridByName(const std::wstring& name, KrmDataGrid& out) const {
  const int index = FindGrid(name);
  if (index < 0) return 0;
  out = grids_[static_cast<size_t>(index)];
  return 1;
}

int KrmCardData::FindGrid(const std::wstring& name) const {
  for (size_t i = 0; i < grids_.size(); ++i) {
    if (grids_[i].blockName == name) return static_cast<int>(i);
  }
  return -1;
}

int KrmCardData::FindGridLike(const std::wstring& name) const {
  for (size_t i = 0; i < grids_.size(); ++i) {
    if (BlockNamesMatch(name, grids_[i].blockName)) return static_cast<int>(i);
  }
  return -1;
}

int KrmCardData::FindGridOfBlock(const QaDbObjectId& id) const {
  for (size_t i = 0; i < grids_.size(); ++i) {
    const auto& ids = grids_[i].blockIds;
    if (std::find(ids.begin(), ids.end(), id) != ids.end()) return static_cast<int>(i);
  }
  return -1;
}

void KrmCardData::GetGridNames(std::vector<std::wstring>& out) const {
  out.clear();
  for (const auto& grid : grids_) out.push_back(grid.blockName);
}

int KrmCardData::GetRowsFirst(int index) const {
  return InRange(index, grids_.size()) ? grids_[static_cast<size_t>(index)].rowsFirst : 1;
}

int KrmCardData::GetRowsNext(int index) const {
  return InRange(index, grids_.size()) ? grids_[static_cast<size_t>(index)].rowsNext : 1;
}

int KrmCardData::GetFillOrder(int index) const {
  return InRange(index, grids_.size()) ? grids_[static_cast<size_t>(index)].fillOrder : 0;
}

int KrmCardData::AddBlockId(int index, const QaDbObjectId& id) {
  if (InRange(index, grids_.size())) grids_[static_cast<size_t>(index)].blockIds.push_back(id);
  return 1;
}

int KrmCardData::AddNullBlockIds() {
  for (auto& grid : grids_) grid.blockIds.push_back(QaDbObjectId());
  return 1;
}

std::wstring KrmCardData::GetCell(int row, int col) const {
  const KrmDataGrid* grid = CurrentGrid();
  return grid ? grid->GetCell(row, col) : std::wstring();
}

int KrmCardData::SetCell(const std::wstring& text, int row, int col) {
  if (KrmDataGrid* grid = CurrentGrid()) grid->SetCell(text, row, col);
  return 1;
}

int KrmCardData::TrimTrailingRows() {
  KrmDataGrid* grid = BaseGrid();
  if (!grid || grid->cols.empty()) return 1;
  for (int rows = grid->RowCount(); rows > 1; --rows) {
    const int last = rows - 1;
    for (int c = 0; c < static_cast<int>(grid->cols.size()); ++c) {
      if (!grid->GetCell(last, c).empty()) return 1;
    }
    grid->RemoveRows(last, 1);
  }
  return 1;
}

int KrmCardData::KeepBlankRows() {
  KrmDataGrid* grid = BaseGrid();
  if (!grid || grid->cols.empty()) return 1;
  const int rows = grid->RowCount();
  for (int r = 0; r < rows; ++r) {
    bool blank = true;
    for (int c = 0; blank && c < static_cast<int>(grid->cols.size()); ++c) blank = grid->GetCell(r, c).empty();
    if (blank) grid->SetCell(L" ", r, 0);
  }
  return 1;
}

int KrmCardData::BindingCell(int binding, int& grid, int& col) const {
  grid = -1;
  col = -1;
  if (!InRange(binding, pageBindings_.size())) return 1;
  const KrmDataPages& page = pageBindings_[static_cast<size_t>(binding)];
  grid = FindGrid(page.blockName);
  if (grid >= 0) col = grids_[static_cast<size_t>(grid)].FindCol(page.attName);
  return 1;
}

int KrmCardData::BindingAtt(int binding, std::wstring& out) const {
  if (InRange(binding, pageBindings_.size())) out = pageBindings_[static_cast<size_t>(binding)].attName;
  return 1;
}

int KrmCardData::SetBatchCurIds(const std::vector<QaDbObjectId>& ids) {
  batchCurIds_ = ids;
  return 1;
}

int KrmCardData::SetBatchSumIds(const std::vector<QaDbObjectId>& ids) {
  batchSumIds_ = ids;
  return 1;
}

int KrmCardData::GetBatchCurIds(std::vector<QaDbObjectId>& out) const {
  out.insert(out.end(), batchCurIds_.begin(), batchCurIds_.end());
  return 1;
}

int KrmCardData::GetBatchSumIds(std::vector<QaDbObjectId>& out) const {
  out.insert(out.end(), batchSumIds_.begin(), batchSumIds_.end());
  return 1;
}
