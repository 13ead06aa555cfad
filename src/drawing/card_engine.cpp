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
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

constexpr unsigned kLoadCardErrorId = 901;
constexpr unsigned kBatchPagesMissingId = 902;
constexpr unsigned kNoContentId = 904;
constexpr unsigned kNothingDrawnId = 906;

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

KrmCardEngine::~KrmCardEngine() { (void)Finish(); }

tabulon::Status KrmCardEngine::Finish() {
  const std::size_t pages = batchCurIds_.size();
  const int missed = WriteBatchNumbers();
  Reset();
  if (missed == 0) return tabulon::Status::Ok();
  const std::wstring format = KrmLoadString(kBatchPagesMissingId, L"批页码未写入 %d 页（共 %d 页）：页面已不在图纸中");
  return tabulon::MakeError(tabulon::svc::toUtf8(qaFormat(format.c_str(), missed, static_cast<int>(pages))))
      .inField("batch page number");
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

int KrmCardEngine::PlayCreate() { return Play(nullptr); }

tabulon::Status KrmCardEngine::Create() {
  tabulon::Status why;
  Play(&why);
  return why;
}

int KrmCardEngine::Play(tabulon::Status* why) {
  if (tableContents_.empty()) {
    if (why) {
      *why = tabulon::MakeError(tabulon::svc::toUtf8(KrmLoadString(kNoContentId, L"没有表格内容")))
                 .inField("table content");
    }
    return 0;
  }
  std::wstring path = cardPath_;
  if (path.empty() || (path.back() != L'/' && path.back() != L'\\')) path += L'/';
  std::wstring name = cardName_;
  if (name.size() < 4 || name.compare(name.size() - 4, 4, L".crd") != 0) name += L".crd";

  KrmCardTemplate cardTemplate;
  if (const tabulon::Status loaded = cardTemplate.Load(path + name); !loaded.ok()) {
    const std::wstring format = KrmLoadString(kLoadCardErrorId, L"\nLoad card error ! please check card Ppath=%s,card name=%s");
    qautPrintf(format.c_str(), path.c_str(), name.c_str());
    if (why) *why = loaded;
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
  const std::size_t before = lastCardEntities_.size();
  if (CreateCardPages(cardTemplate, data, lastCardEntities_) != 1 || lastCardEntities_.size() == before) {
    if (why) {
      const std::wstring message =
          KrmLoadString(kNothingDrawnId, L"卡片未生成：模板不是两个表格、首页表格的图纸缺失或为空，或页面插入点被取消");
      *why = tabulon::MakeError(tabulon::svc::toUtf8(message)).inFile(tabulon::svc::toUtf8(path + name));
    }
  }
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

int KrmCardEngine::WriteBatchNumbers() {
  int n = pageStartB_;
  int missed = 0;
  bool moved = false;
  for (std::size_t k = 0; k < batchCurIds_.size() && k < batchCurNames_.size(); ++k) {
    if (!WriteNumber(batchCurIds_[k], batchCurNames_[k], std::to_wstring(n))) {
      ++missed;
      continue;
    }
    n += pageStep_;
    moved = true;
  }
  const int last = moved ? n - pageStep_ : pageStartB_;
  for (std::size_t k = 0; k < batchSumIds_.size() && k < batchSumNames_.size(); ++k) {
    WriteNumber(batchSumIds_[k], batchSumNames_[k], std::to_wstring(last));
  }
  return missed;
}
