#include "authoring/make_card_model.h"

#include <cstdio>

#include "authoring/refusal.h"
#include "card/file_utils.h"
#include "card/table_attributes.h"
#include "host/ed/qa_message_box.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

using tabulon::Error;
using tabulon::Status;

std::wstring Fixed2(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%0.2f", value);
  return tabulon::svc::fromUtf8(buffer);
}

std::wstring DirectionWord(int dir) {
  switch (dir) {
    case 1: return KrmLoadString(135, L"左上");
    case 2: return KrmLoadString(136, L"左下");
    case 3: return KrmLoadString(137, L"右下");
    default: return KrmLoadString(134, L"右上");
  }
}

std::wstring FolderOf(const std::wstring& display) {
  const auto slash = display.rfind(L'/');
  return slash == std::wstring::npos ? L"" : display.substr(0, slash);
}

std::wstring Mismatch(const std::wstring& label) {
  std::wstring text = KrmLoadString(163, L"首页模板与续页模板的%s不一致!");
  if (const auto at = text.find(L"%s"); at != std::wstring::npos) text.replace(at, 2, label);
  return text;
}

}  // namespace

KrmMakeCardModel::KrmMakeCardModel(std::wstring root)
    : root_(std::move(root)), caption_(KrmLoadString(125, L"定制卡片")) {
  arrangement_.Reset();
  card_.Reset();
  name_ = KrmLoadString(181, L"卡片名称");
  showName_ = KrmLoadString(182, L"显示名称");
  summary_ = SummaryOf(arrangement_);
}

void KrmMakeCardModel::SetName(const std::wstring& name) {
  if (nameLocked_) return;
  name_ = name;
  showName_ = name;
  Changed();
}

void KrmMakeCardModel::SetShowName(const std::wstring& showName) {
  if (nameLocked_) return;
  showName_ = showName;
  Changed();
}

void KrmMakeCardModel::SetFolder(const std::wstring& folder) {
  std::wstring text = folder;
  if (text.empty() || text.front() != L'/') text.insert(text.begin(), L'/');
  if (text.back() != L'/') text += L'/';
  folder_ = text;
  Changed();
}

void KrmMakeCardModel::SetFirst(const std::wstring& display, const std::wstring& fileName) {
  if (tablesLocked_) return;
  firstDisplay_ = display;
  firstTbl_ = fileName;
  if (nextDisplay_.empty()) {
    nextDisplay_ = display;
    nextTbl_ = fileName;
  }
  Changed();
}

void KrmMakeCardModel::SetNext(const std::wstring& display, const std::wstring& fileName) {
  if (tablesLocked_) return;
  nextDisplay_ = display;
  nextTbl_ = fileName;
  if (firstDisplay_.empty()) {
    firstDisplay_ = display;
    firstTbl_ = fileName;
  }
  Changed();
}

void KrmMakeCardModel::SetArrangement(const KrmCardDir& dir) {
  arrangement_ = dir;
  summary_ = SummaryOf(arrangement_);
  Changed();
}

std::wstring KrmMakeCardModel::SummaryOf(const KrmCardDir& dir) {
  const bool columnFirst = dir.GetFstT() == 2;
  std::wstring text;
  text += KrmLoadString(127, L"水平间隙") + L" = " + Fixed2(dir.GetHor()) + L"mm;";
  text += KrmLoadString(128, L"垂直间隙") + L" = " + Fixed2(dir.GetVer()) + L"mm;";
  text += KrmLoadString(133, L"排列方式") + L":" + DirectionWord(dir.GetDir()) + L";";
  text += (columnFirst ? KrmLoadString(131, L"列优先") : KrmLoadString(129, L"行优先")) + L" ";
  text += (columnFirst ? KrmLoadString(132, L"行数") : KrmLoadString(130, L"列数")) + L" = " +
          std::to_wstring(dir.GetFstN());
  return text;
}

bool KrmMakeCardModel::ChooseCardName(const KrmLoadCardsRunner& run) {
  if (nameLocked_) return false;
  KrmLoadCardsModel library(root_, L".crd");
  library.Open();
  if (!run(library)) return false;
  SetName(library.SelectedFileName());
  SetShowName(library.SelectedShowName());
  folder_ = library.selectedFolder();
  caption_ = folder_;
  Changed();
  return true;
}

std::wstring KrmMakeCardModel::ChooseTable(const KrmLoadCardsRunner& run, std::wstring& fileName) {
  KrmLoadCardsModel library(root_, L".tbl");
  library.Open();
  if (!run(library)) return L"";
  fileName = library.SelectedFileName();
  return root_ + library.selectedFolder() + library.SelectedShowName();
}

bool KrmMakeCardModel::ChooseFirst(const KrmLoadCardsRunner& run) {
  if (tablesLocked_) return false;
  std::wstring file;
  const std::wstring display = ChooseTable(run, file);
  if (display.empty()) return false;
  SetFirst(display, file);
  return true;
}

bool KrmMakeCardModel::ChooseNext(const KrmLoadCardsRunner& run) {
  if (tablesLocked_) return false;
  std::wstring file;
  const std::wstring display = ChooseTable(run, file);
  if (display.empty()) return false;
  SetNext(display, file);
  return true;
}

bool KrmMakeCardModel::EditArrangement(const std::function<bool(KrmCardDir&)>& run) {
  KrmCardDir copy = arrangement_;
  if (!run(copy)) return false;
  SetArrangement(copy);
  return true;
}

tabulon::Status KrmMakeCardModel::LoadCard(const KrmLoadCardsRunner& run) {
  KrmLoadCardsModel library(root_, L".crd");
  library.Open();
  if (!run(library)) return Status::Ok();
  const std::wstring folder = library.selectedFolder();
  const std::wstring path = root_ + (folder.empty() ? L"/" : folder) + library.SelectedFileName();
  KrmCardAttributes loaded;
  if (Status read = loaded.ReadCard(path); !read.ok()) {
    Error error = KrmRefuse(KrmLoadString(124, L"读取文件失败."), "");
    return tabulon::MakeError(error.message + ": " + read.error().message)
        .inFile(read.error().file)
        .atLine(read.error().line)
        .inField(read.error().field);
  }
  folder_ = folder;
  card_ = loaded;
  arrangement_.Reset();
  firstTbl_.clear();
  nextTbl_.clear();
  name_ = card_.getFileName();
  showName_ = card_.getShowName();
  nameLocked_ = true;
  caption_ = folder_;
  auto showNameOf = [&](const std::wstring& file) {
    KrmTableAttributes table;
    table.InitTable(root_ + folder_ + file + L".tbl");
    return table.getShowName();
  };
  if (card_.getTblCount() > 0) firstTbl_ = card_.getTblFile(0);
  if (card_.getTblCount() > 1) nextTbl_ = card_.getTblFile(1);
  firstDisplay_ = root_ + folder_ + showNameOf(firstTbl_);
  nextDisplay_ = root_ + folder_ + showNameOf(nextTbl_);
  tablesLocked_ = true;
  card_.getCardDir(arrangement_);
  summary_ = SummaryOf(arrangement_);
  Changed();
  return Status::Ok();
}

tabulon::Status KrmMakeCardModel::CompareFirstNext() {
  if (firstTbl_ == nextTbl_) return Status::Ok();
  KrmTableAttributes first, next;
  first.InitTable(root_ + folder_ + firstTbl_ + L".tbl");
  next.InitTable(root_ + folder_ + nextTbl_ + L".tbl");
  if (first.getPageBase() != next.getPageBase())
    return KrmRefuse(Mismatch(KrmLoadString(164, L"分页基准块")), "page-base");
  struct Binding {
    const wchar_t* key;
    unsigned id;
    const wchar_t* label;
  };
  static constexpr Binding kBindings[] = {{kKrmClassCur, 165, L"类当前页属性"},
                                          {kKrmClassSum, 166, L"类总页数属性"},
                                          {kKrmBatchCur, 167, L"批当前页数属性"},
                                          {kKrmBatchSum, 168, L"批总页数属性"},
                                          {kKrmAutoNum, 169, L"自动编号字段"}};
  for (const Binding& binding : kBindings) {
    std::wstring firstBlock, firstAtt, nextBlock, nextAtt;
    first.PageBinding(binding.key, firstBlock, firstAtt);
    next.PageBinding(binding.key, nextBlock, nextAtt);
    if (firstBlock != nextBlock || firstAtt != nextAtt)
      return KrmRefuse(Mismatch(KrmLoadString(binding.id, binding.label)), tabulon::svc::toUtf8(binding.key));
  }
  return Status::Ok();
}

bool KrmMakeCardModel::CheckSameCard(const std::wstring& path) {
  if (!FileExists(path + L".crd")) return true;
  KrmCardAttributes old;
  old.InitCard(path + L".crd");
  const std::wstring oldId = old.getID();
  const int answer = QaMessageBox(KrmLoadString(138, L"相同名称的卡片已经存在....."), MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDYES) {
    if (!oldId.empty()) card_.setID(oldId);
    return true;
  }
  return answer == IDNO;
}

tabulon::Status KrmMakeCardModel::OnOK() {
  EnsureFolder(root_);
  if (!IsValidFileName(name_)) return KrmRefuse(KrmLoadString(178, L"卡片名称中不能包含'\\'字符"), "name");
  const std::wstring path = CardPath();
  if (name_.empty() || showName_.empty()) return KrmRefuse(KrmLoadString(141, L"请指定卡片名称"), "name");
  if (firstDisplay_.empty() || nextDisplay_.empty()) return KrmRefuse(KrmLoadString(142, L"请选择模板文件"), "table");
  if (FolderOf(firstDisplay_) != FolderOf(nextDisplay_))
    return KrmRefuse(KrmLoadString(163, L"首页模板与续页模板的%s不一致!"), "table");
  if (Status compared = CompareFirstNext(); !compared.ok()) {
    QaMessageBox(KrmLoadString(142, L"找不到模板文件!"), MB_OK | MB_ICONWARNING);
    return compared;
  }
  const KrmCardAttributes before = card_;
  if (!nameLocked_ && !CheckSameCard(path)) {
    card_ = before;
    return tabulon::MakeError(tabulon::svc::toUtf8(KrmLoadString(404, L"同名卡片已经存在,未写入")))
        .inFile(tabulon::svc::toUtf8(path + L".crd"));
  }
  card_.Reset();
  card_.setCardName(name_, showName_);
  card_.addTblFile(firstTbl_);
  card_.addTblFile(nextTbl_);
  card_.setCardDir(arrangement_);
  return card_.WriteCard(path + L".crd");
}
