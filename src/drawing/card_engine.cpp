// The headless card engine: loads a card template, fills the card data from rows given
// per block class, generates the card beside the earlier ones of the batch, and numbers
// the batch when it ends.
#include "drawing/card_engine.h"

#include <cstddef>
#include <utility>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/paging.h"
#include "drawing/card_generation.h"
#include "drawing/extents_util.h"
#include "drawing/insert_point.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaut_printf.h"

namespace {

// The text of a column for one row: the in-name entry when it is not empty, else the
// show-name entry, else "".
std::wstring ValueForColumn(const std::map<std::wstring, std::wstring>& row, const KrmAttSet& att) {
  const auto byCode = row.find(att.GetInName());
  if (byCode != row.end() && !byCode->second.empty()) return byCode->second;
  const auto byShow = row.find(att.GetShowName());
  if (byShow != row.end()) return byShow->second;
  return byCode != row.end() ? byCode->second : std::wstring();
}

void FillFromContents(KrmCardData& data, const std::map<std::wstring, KrmTableRows>& contents) {
  std::vector<std::wstring> names;
  data.GetGridNames(names);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto found = contents.find(names[i]);
    if (found == contents.end()) continue;
    KrmDataGrid grid;
    data.GetGridAt(static_cast<int>(i), grid);
    for (KrmDataTCol& col : grid.cols) col.values.clear();
    for (const auto& row : found->second) {
      for (KrmDataTCol& col : grid.cols) col.values.push_back(ValueForColumn(row, col.att));
    }
    data.SetGridAt(static_cast<int>(i), grid);
  }
}

// Writes `text` into attribute `name` of the reference `id`; false when the id does
// not open as a block reference.
bool WriteNumber(const QaDbObjectId& id, const std::wstring& name, const std::wstring& text) {
  QaDbObjectPointer<QaDbBlockReference> reference(id, QaDb::kForWrite);
  if (!reference) return false;
  WriteAttributeByTag(*reference, name, text);
  return true;
}

void AppendNamesUpTo(std::vector<std::wstring>& names, std::size_t count, const std::wstring& name) {
  while (names.size() < count) names.push_back(name);
}

}  // namespace

KrmCardEngine::~KrmCardEngine() {
  WriteBatchNumbers();
  Reset();
}

int KrmCardEngine::Reset() {
  cardPath_.clear();
  cardName_.clear();
  pageStep_ = 1;
  pageStartC_ = 1;
  pageStartB_ = 1;
  batchCurNames_.clear();
  batchCurIds_.clear();
  batchSumNames_.clear();
  batchSumIds_.clear();
  tableContents_.clear();
  lastCardEntities_.clear();
  allEntities_.clear();
  insertPoint_ = QaGePoint3d();
  return 1;
}

int KrmCardEngine::ResetContent() {
  cardPath_.clear();
  cardName_.clear();
  tableContents_.clear();
  return 1;
}

int KrmCardEngine::InitCardPath(const std::wstring& path) {
  cardName_.clear();
  tableContents_.clear();
  cardPath_ = path;
  return 1;
}

int KrmCardEngine::SetCardName(const std::wstring& name) {
  tableContents_.clear();
  cardName_ = name;
  return 1;
}

int KrmCardEngine::SetPageStep(int step) {
  pageStep_ = step;
  return 1;
}

int KrmCardEngine::SetPageStart_B(int start) {
  pageStartB_ = start;
  return 1;
}

int KrmCardEngine::SetPageStart_C(int start) {
  pageStartC_ = start;
  return 1;
}

int KrmCardEngine::SetInsert(const QaGePoint3d& point) {
  insertPoint_ = point;
  return 1;
}

int KrmCardEngine::SetTableContent(const std::wstring& blockName, KrmTableRows rows) {
  tableContents_[blockName] = std::move(rows);
  return 1;
}

int KrmCardEngine::GetAllEnt(std::vector<QaDbObjectId>& out) const {
  out = allEntities_;
  return 1;
}

int KrmCardEngine::PlayCreate() {
  if (tableContents_.empty()) return 0;
  std::wstring path = cardPath_;
  if (path.empty() || (path.back() != L'/' && path.back() != L'\\')) path += L'/';
  std::wstring name = cardName_;
  if (name.size() < 4 || name.compare(name.size() - 4, 4, L".crd") != 0) name += L".crd";

  KrmCardTemplate cardTemplate;
  if (cardTemplate.LoadTemplate(path + name) != 1) {
    qautPrintf(L"\nLoad card error ! please check card Ppath=%s,card name=%s", path.c_str(), name.c_str());
    return 0;
  }

  QaGePoint3d first = insertPoint_;
  if (!lastCardEntities_.empty()) {
    QaGePoint3d lower, upper;
    BoxOf(lastCardEntities_, lower, upper);
    KrmCardDir dir;
    cardTemplate.GetCardDir(dir);
    first = SuggestInsertPoint(dir, lower, upper, cardTemplate.GetFirstTableHeight());
  }

  KrmCardData data;
  data.InitFromTemplate(cardTemplate);
  FillFromContents(data, tableContents_);
  data.PageStep() = pageStep_;
  data.PageStartCur() = pageStartC_;
  data.PageStartSum() = 1;
  KrmDataGrid base;
  data.GetGridAt(data.GetBaseGrid(), base);
  const int pages = base.cols.empty() ? 0 : PageCount(base.RowCount(), base.rowsFirst, base.rowsNext);
  data.FillPageNumbers(1, pages);

  cardTemplate.SetInsertPoint(first);
  CreateCardPages(cardTemplate, data, lastCardEntities_);
  allEntities_.insert(allEntities_.end(), lastCardEntities_.begin(), lastCardEntities_.end());

  data.GetBatchCurIds(batchCurIds_);
  data.GetBatchSumIds(batchSumIds_);
  std::wstring curName, sumName;
  data.GetBatchCurAtt(curName);
  data.GetBatchSumAtt(sumName);
  AppendNamesUpTo(batchCurNames_, batchCurIds_.size(), curName);
  AppendNamesUpTo(batchSumNames_, batchSumIds_.size(), sumName);
  return 1;
}

void KrmCardEngine::WriteBatchNumbers() {
  int n = pageStartB_;
  bool moved = false;
  for (std::size_t k = 0; k < batchCurIds_.size() && k < batchCurNames_.size(); ++k) {
    if (!WriteNumber(batchCurIds_[k], batchCurNames_[k], std::to_wstring(n))) continue;
    n += pageStep_;
    moved = true;
  }
  const int last = moved ? n - pageStep_ : pageStartB_;
  for (std::size_t k = 0; k < batchSumIds_.size() && k < batchSumNames_.size(); ++k) {
    WriteNumber(batchSumIds_[k], batchSumNames_[k], std::to_wstring(last));
  }
}
