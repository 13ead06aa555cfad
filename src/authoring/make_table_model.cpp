#include "authoring/make_table_model.h"

#include "authoring/block_scanning.h"
#include "authoring/refusal.h"
#include "card/file_utils.h"
#include "drawing/extents_util.h"
#include "drawing/side_drawing.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_selection.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

#include <cmath>

namespace {

using tabulon::Error;
using tabulon::Status;

std::wstring BlockLabel() { return KrmLoadString(116, L"块名:"); }
std::wstring AttLabel() { return KrmLoadString(117, L"属性名:"); }

// Shows `text` in a box and gives it back as the error of `field`.
std::wstring Summary(const std::vector<KrmDataAttTR>& records) {
  if (records.empty()) return L"";
  std::wstring text = KrmLoadString(409, L"共有%d类,块名分别是:");
  const auto at = text.find(L"%d");
  if (at != std::wstring::npos) text.replace(at, 2, std::to_wstring(records.size()));
  for (std::size_t i = 0; i < records.size(); ++i) text += (i == 0 ? L"" : L",") + records[i].blockName;
  return text;
}

Error NothingSelected() {
  return tabulon::MakeError(tabulon::svc::toUtf8(KrmLoadString(410, L"没有选择任何实体"))).inField("selection");
}

KrmSelSglMode PageAttMode(int keyIndex) { return static_cast<KrmSelSglMode>(3 + keyIndex); }

}  // namespace

KrmMakeTblModel::KrmMakeTblModel(std::wstring root)
    : root_(std::move(root)), caption_(KrmLoadString(121, L"定制卡片模板")) {
  SetName(L"Drawing1");
  statusLine_ = KrmLoadString(400, L"需要布满！");
}

void KrmMakeTblModel::SetName(const std::wstring& name) {
  if (nameLocked_) return;
  name_ = name;
  showName_ = name;
  Changed();
}

void KrmMakeTblModel::SetShowName(const std::wstring& showName) {
  if (nameLocked_) return;
  showName_ = showName;
  Changed();
}

std::vector<std::wstring> KrmMakeTblModel::ClassList() const {
  std::vector<std::wstring> names;
  for (const auto& record : multiBlocks_) names.push_back(record.blockName);
  return names;
}

int KrmMakeTblModel::CurrentFillOrder() const {
  return currentClass_ < 0 ? -1 : multiBlocks_[static_cast<std::size_t>(currentClass_)].fillOrder;
}

std::vector<std::wstring> KrmMakeTblModel::FillOrderLabels() {
  return {KrmLoadString(101, L"从上到下(列优先)<从左往右>"), KrmLoadString(102, L"从上到下(行优先)<从左往右>"),
          KrmLoadString(103, L"从下到上(列优先)<从左往右>"), KrmLoadString(104, L"从下到上(行优先)<从左往右>"),
          KrmLoadString(183, L"从上到下(列优先)<从右往左>"), KrmLoadString(184, L"从上到下(行优先)<从右往左>"),
          KrmLoadString(185, L"从下到上(列优先)<从右往左>"), KrmLoadString(186, L"从下到上(行优先)<从右往左>")};
}

KrmMakeTblModel::Availability KrmMakeTblModel::Available() const {
  Availability a;
  a.chooseName = !nameLocked_;
  // The opening status line asks for a pick; the choices wait for one.
  const bool status = scanned_ && !statusLine_.empty();
  a.chooseSingle = a.chooseMulti = status;
  a.choosePageBase = status && !multiSummary_.empty();
  for (std::size_t k = 0; k < 4; ++k) a.choosePageAtt[k] = status && !singleSummary_.empty();
  a.choosePageAtt[4] = a.choosePageBase;
  a.ok = !multiSummary_.empty();
  return a;
}

tabulon::Status KrmMakeTblModel::PickBlocks() {
  qautPrint(KrmLoadString(105, L"\n请选择整个卡片实体/R移除实体:"));
  QaEdSelectionSet selection;
  if (selection.select() != RTNORM) return NothingSelected();
  return TakeSelection(selection.ids());
}

tabulon::Status KrmMakeTblModel::TakeSelection(const std::vector<QaDbObjectId>& ids) {
  if (ids.empty()) return NothingSelected();
  pickedIds_.clear();
  CollectBlockClasses(ids, allBlocks_);
  if (allBlocks_.empty()) {
    FullReset();
    Changed();
    return KrmRefuse(KrmLoadString(123, L"没有选择有效的属性块"), "selection");
  }
  pickedIds_ = ids;
  scanned_ = true;
  statusLine_ = KrmLoadString(401, L"选择集包含了%d类属性块");
  if (const auto at = statusLine_.find(L"%d"); at != std::wstring::npos)
    statusLine_.replace(at, 2, std::to_wstring(allBlocks_.size()));
  singleSummary_.clear();
  multiSummary_.clear();
  pageBaseLine_.clear();
  for (auto& line : pageAttLines_) line.clear();
  singleBlocks_.clear();
  multiBlocks_.clear();
  RefillClassList();
  Changed();
  return Status::Ok();
}

void KrmMakeTblModel::SetFolder(const std::wstring& folder) {
  std::wstring text = folder;
  if (text.empty() || text.front() != L'/') text.insert(text.begin(), L'/');
  if (text.back() != L'/') text += L'/';
  folder_ = text;
  Changed();
}

bool KrmMakeTblModel::ChooseSingleBlocks(const KrmSelSglRunner& run) {
  if (!Available().chooseSingle) return false;
  KrmSelSglModel chooser(KrmSelSglMode::kSingleBlocks, allBlocks_);
  if (run(chooser) == KrmDialogEnd::kCancel) return false;
  singleBlocks_ = chooser.Result();
  singleSummary_ = Summary(singleBlocks_);
  // Each choice clears the lines drawn from the other array.
  pageBaseLine_.clear();
  pageAttLines_[4].clear();
  Changed();
  return true;
}

bool KrmMakeTblModel::ChooseMultiBlocks(const KrmSelSglRunner& run) {
  if (!Available().chooseMulti) return false;
  KrmSelSglModel chooser(KrmSelSglMode::kMultiBlocks, allBlocks_);
  if (run(chooser) == KrmDialogEnd::kCancel) return false;
  multiBlocks_ = chooser.Result();
  multiSummary_ = Summary(multiBlocks_);
  for (std::size_t k = 0; k < 4; ++k) pageAttLines_[k].clear();
  RefillClassList();
  Changed();
  return true;
}

std::wstring KrmMakeTblModel::LineOf(const std::vector<KrmDataAttTR>& chosen) const {
  if (chosen.empty()) return L"";
  const KrmDataAttTR& record = chosen.front();
  std::wstring line = BlockLabel() + record.blockName;
  if (record.pageAttIndex != -1 && record.pageAttIndex < static_cast<int>(record.atts.size()))
    line += L"," + AttLabel() + record.atts[static_cast<std::size_t>(record.pageAttIndex)].GetShowName();
  return line;
}

bool KrmMakeTblModel::ChoosePageBase(const KrmSelSglRunner& run) {
  if (!Available().choosePageBase) return false;
  KrmSelSglModel chooser(KrmSelSglMode::kPageBase, multiBlocks_);
  const KrmDialogEnd end = run(chooser);
  if (end == KrmDialogEnd::kCancel) return false;
  pageBaseLine_ = end == KrmDialogEnd::kClear ? L"" : LineOf(chooser.Result());
  Changed();
  return true;
}

bool KrmMakeTblModel::ChoosePageAtt(int keyIndex, const KrmSelSglRunner& run) {
  if (keyIndex < 0 || keyIndex > 4 || !Available().choosePageAtt[static_cast<std::size_t>(keyIndex)]) return false;
  KrmSelSglModel chooser(PageAttMode(keyIndex), keyIndex == 4 ? multiBlocks_ : singleBlocks_);
  const KrmDialogEnd end = run(chooser);
  if (end == KrmDialogEnd::kCancel) return false;
  pageAttLines_[static_cast<std::size_t>(keyIndex)] = end == KrmDialogEnd::kClear ? L"" : LineOf(chooser.Result());
  Changed();
  return true;
}

void KrmMakeTblModel::RefillClassList() {
  currentClass_ = multiBlocks_.empty() ? -1 : 0;
}

void KrmMakeTblModel::SelectClass(int index) {
  if (index < 0 || index >= static_cast<int>(multiBlocks_.size())) return;
  currentClass_ = index;
  Changed();
}

void KrmMakeTblModel::SelectFillOrder(int fillOrder) {
  if (currentClass_ < 0 || currentClass_ >= static_cast<int>(multiBlocks_.size())) return;
  if (fillOrder < 0 || fillOrder > 7) return;
  multiBlocks_[static_cast<std::size_t>(currentClass_)].fillOrder = fillOrder;
  Changed();
}

bool KrmMakeTblModel::ChooseName(const KrmLoadCardsRunner& run) {
  if (nameLocked_) return false;
  KrmLoadCardsModel library(root_, L".tbl");
  library.Open();
  if (!run(library)) return false;
  SetName(library.SelectedFileName());
  SetShowName(library.SelectedShowName());
  folder_ = library.selectedFolder();
  Changed();
  return true;
}

void KrmMakeTblModel::FullReset() {
  statusLine_.clear();
  singleSummary_.clear();
  multiSummary_.clear();
  pageBaseLine_.clear();
  for (auto& line : pageAttLines_) line.clear();
  singleBlocks_.clear();
  multiBlocks_.clear();
  allBlocks_.clear();
  pickedIds_.clear();
  currentClass_ = -1;
  scanned_ = false;
}

void KrmMakeTblModel::RebuildSummaries() {
  statusLine_ = KrmLoadString(401, L"选择集包含了%d类属性块");
  if (const auto at = statusLine_.find(L"%d"); at != std::wstring::npos)
    statusLine_.replace(at, 2, std::to_wstring(allBlocks_.size()));
  singleSummary_ = Summary(singleBlocks_);
  multiSummary_ = Summary(multiBlocks_);
  RefillClassList();
}

tabulon::Status KrmMakeTblModel::LoadTable(const KrmLoadCardsRunner& run) {
  KrmLoadCardsModel library(root_, L".tbl");
  library.Open();
  if (!run(library) || library.SelectedFileName().empty()) return Status::Ok();
  folder_ = library.selectedFolder();
  FullReset();
  const std::wstring path = root_ + (folder_.empty() ? L"/" : folder_) + library.SelectedFileName();
  KrmTableAttributes loaded;
  if (Status read = loaded.ReadTable(path); !read.ok()) {
    Changed();
    Error error = KrmRefuse(KrmLoadString(124, L"读取文件失败."), "");
    return tabulon::MakeError(error.message + ": " + read.error().message)
        .inFile(read.error().file)
        .atLine(read.error().line)
        .inField(read.error().field);
  }
  table_ = loaded;
  singleBlocks_ = FromBlockSets(table_.SCells());
  multiBlocks_ = FromBlockSets(table_.MCells());
  ApplyFillMap(multiBlocks_, table_.MDirType());
  allBlocks_ = singleBlocks_;
  allBlocks_.insert(allBlocks_.end(), multiBlocks_.begin(), multiBlocks_.end());
  name_ = table_.getFileName();
  showName_ = table_.getShowName();
  nameLocked_ = true;
  scanned_ = true;
  if (!folder_.empty()) caption_ = folder_;
  RebuildSummaries();
  pageBaseLine_ = table_.getPageBase().empty() ? L"" : BlockLabel() + table_.getPageBase();
  for (std::size_t k = 0; k < kKrmPageAttKeys.size(); ++k) {
    std::wstring block, att;
    if (table_.PageBinding(kKrmPageAttKeys[k], block, att))
      pageAttLines_[k] = BlockLabel() + block + L"," + AttLabel() + att;
  }
  Changed();
  return Status::Ok();
}

void KrmMakeTblModel::BuildTable() {
  const double width = table_.getWidth();
  const double height = table_.getHeight();
  table_.Reset();
  table_.setTblName(name_, showName_);
  std::wstring base = pageBaseLine_;
  if (base.compare(0, BlockLabel().size(), BlockLabel()) == 0) base = base.substr(BlockLabel().size());
  table_.setPageBase(base);
  table_.setSCell(ToBlockSets(singleBlocks_));
  table_.setMCell(ToBlockSets(multiBlocks_));
  table_.setMDirType(BuildFillMap(multiBlocks_));
  table_.setPageAtt(BuildPageAttMap(pageAttLines_, BlockLabel(), AttLabel()));
  QaGePoint3d lower, upper;
  if (!pickedIds_.empty() && BoxOf(pickedIds_, lower, upper)) {
    table_.setWidth(std::fabs(upper.x - lower.x));
    table_.setHeight(std::fabs(upper.y - lower.y));
  } else {
    table_.setWidth(width);
    table_.setHeight(height);
  }
}

bool KrmMakeTblModel::CheckSameTable(const std::wstring& path) {
  if (!FileExists(path + L".tbl")) return true;
  KrmTableAttributes old;
  old.InitTable(path + L".tbl");
  const std::wstring oldId = old.getID();
  const int answer = QaMessageBox(KrmLoadString(122, L"相同名称的模板已经存在....."), MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDYES) {
    if (!oldId.empty()) table_.setID(oldId);
    return true;
  }
  return answer == IDNO;
}

tabulon::Status KrmMakeTblModel::OnOK() {
  if (!Available().ok)
    return KrmRefuse(KrmLoadString(402, L"表格模板至少要有一类多记录属性块"), "multi");
  EnsureFolder(root_);
  if (!IsValidFileName(name_))
    return KrmRefuse(KrmLoadString(178, L"卡片名称中不能包含'\\ / : * ? \" < > | '中的字符之一"), "name");
  const std::wstring path = TemplatePath();
  if (name_.empty() || showName_.empty()) return KrmRefuse(KrmLoadString(120, L"请指定模板名称"), "name");
  if (pageBaseLine_.empty()) return KrmRefuse(KrmLoadString(126, L"请指定分页基准块"), "page-base");
  const KrmTableAttributes before = table_;
  BuildTable();
  if (!nameLocked_) {
    if (!CheckSameTable(path)) {
      table_ = before;
      return tabulon::MakeError(tabulon::svc::toUtf8(KrmLoadString(403, L"同名模板已经存在,未写入"))).inFile(tabulon::svc::toUtf8(path + L".tbl"));
    }
    std::string error;
    if (WriteSideDrawing(path, table_.getID(), pickedIds_, &error) != 1)
      return tabulon::MakeError("the side drawing could not be written: " + error)
          .inFile(tabulon::svc::toUtf8(path + L".dwg"));
  }
  return table_.WriteTable(path + L".tbl");
}
