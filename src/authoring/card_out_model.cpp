#include "authoring/card_out_model.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "authoring/refusal.h"
#include "card/card_attributes.h"
#include "card/card_reader.h"
#include "card/table_attributes.h"
#include "card/file_utils.h"
#include "drawing/side_drawing.h"
#include "host/ed/qa_message_box.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

namespace fs = std::filesystem;
using tabulon::Status;
using tabulon::svc::toPath;
using tabulon::svc::toUtf8;

std::wstring WithSeparator(std::wstring path) {
  if (path.empty() || (path.back() != L'/' && path.back() != L'\\')) path += L'/';
  return path;
}

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The name under which an entry of `type` lies on disk: side drawings carry their own
// extension on this platform.
std::wstring DiskName(const KrmCardFile& entry) {
  if (entry.GetType() == L".dwg") return tabulon::svc::fromPath(SideDrawingPath(toPath(entry.GetFileName() + L".dwg")));
  return entry.GetFileName() + entry.GetType();
}

}  // namespace

KrmCardOutModel::KrmCardOutModel(std::wstring root, const std::wstring& path) : root_(std::move(root)) {
  sourcePath_ = targetPath_ = path.empty() ? root_ + L"/" : path;
}

void KrmCardOutModel::SetSourcePath(const std::wstring& path) {
  sourcePath_ = WithSeparator(path);
  RefreshList();
}

void KrmCardOutModel::RefreshList() {
  cardList_.clear();
  selection_.clear();
  KrmCardReader reader;
  reader.Load(sourcePath_);
  std::vector<KrmCardFile> tree;
  reader.GetCardTree(tree);
  for (const KrmCardFile& entry : tree)
    if (entry.GetType() == kKrmCardExtension && entry.GetPath() + L"/" == sourcePath_) cardList_.push_back(entry);
  for (int i = 0; i < static_cast<int>(cardList_.size()); ++i) selection_.push_back(i);
}

std::vector<std::wstring> KrmCardOutModel::ListNames() const {
  std::vector<std::wstring> names;
  for (const auto& card : cardList_) names.push_back(card.GetShowName());
  return names;
}

bool KrmCardOutModel::SelectByFileNames(const std::vector<std::wstring>& fileNames) {
  std::vector<int> chosen;
  for (const auto& name : fileNames) {
    const auto at = std::find_if(cardList_.begin(), cardList_.end(),
                                 [&](const KrmCardFile& card) { return card.GetFileName() == name; });
    if (at == cardList_.end()) return false;
    chosen.push_back(static_cast<int>(at - cardList_.begin()));
  }
  selection_ = std::move(chosen);
  return true;
}

Status KrmCardOutModel::OnOK() {
  copied_.clear();
  sourcePath_ = WithSeparator(sourcePath_);
  targetPath_ = WithSeparator(targetPath_);
  if (sourcePath_ == targetPath_) return KrmRefuse(KrmLoadString(158, L"卡片源路径和目标路径不能相同"), "target");
  if (!DirectoryExists(sourcePath_)) return KrmRefuse(KrmLoadString(159, L"卡片源路径不存在"), "source");
  if (!DirectoryExists(targetPath_)) {
    const int answer = QaMessageBox(KrmLoadString(160, L"目标路径不存在,要建立它么?"), MB_YESNO | MB_ICONQUESTION);
    if (answer != IDYES)
      return tabulon::MakeError(toUtf8(KrmLoadString(405, L"目标路径不存在"))).inFile(toUtf8(targetPath_));
    if (!EnsureFolder(targetPath_))
      return tabulon::MakeError(toUtf8(KrmLoadString(406, L"无法建立目标路径"))).inFile(toUtf8(targetPath_));
  }
  std::vector<int> selected = selection_;
  std::sort(selected.begin(), selected.end());
  std::vector<KrmCardFile> work;
  for (int index : selected) {
    if (index < 0 || index >= static_cast<int>(cardList_.size())) continue;
    work.push_back(cardList_[static_cast<std::size_t>(index)]);
    CollectFiles(cardList_[static_cast<std::size_t>(index)], work);
  }
  if (!CopyFiles(work))
    return tabulon::MakeError(toUtf8(KrmLoadString(407, L"复制已取消"))).inFile(toUtf8(targetPath_));
  return Status::Ok();
}

void KrmCardOutModel::CollectFiles(const KrmCardFile& card, std::vector<KrmCardFile>& list) {
  KrmCardAttributes loaded;
  if (loaded.InitCard(card.GetPath() + L"/" + card.GetFileName()) != 1) return;
  for (int i = 0; i < 2 && i < loaded.getTblCount(); ++i) {
    list.emplace_back(card.GetPath(), loaded.getTblFile(i), L"", kKrmTableExtension, L"");
    list.emplace_back(card.GetPath(), loaded.getTblFile(i), L"", L".dwg", L"");
  }
}

bool KrmCardOutModel::CopyFiles(const std::vector<KrmCardFile>& list) {
  int lastAnswer = 0;
  for (const KrmCardFile& entry : list) {
    const std::wstring name = DiskName(entry);
    // A name that would lead out of either folder is never followed.
    if (!StaysInFolder(sourcePath_, name) || !StaysInFolder(targetPath_, name)) continue;
    const std::wstring source = sourcePath_ + name;
    const std::wstring target = targetPath_ + name;
    // A table shared by two pages or two cards is copied once; the copy made earlier in
    // this run is the same file, so it raises no question.
    if (std::find(copied_.begin(), copied_.end(), target) != copied_.end()) continue;
    if (FileExists(target)) {
      if (entry.GetType() == kKrmCardExtension) {
        std::wstring question =
            KrmLoadString(161, L"卡片模板%s已存在,你要覆盖它么?如果选择是,\n那么由该原有卡片模板建立的所有卡片将不再能编辑.");
        if (const auto at = question.find(L"%s"); at != std::wstring::npos) question.replace(at, 2, name);
        lastAnswer = QaMessageBox(question, MB_YESNOCANCEL | MB_ICONQUESTION);
      }
      if (lastAnswer == IDNO) continue;
      if (lastAnswer != IDYES) return false;
    }
    if (CopyWholeFile(source, target)) copied_.push_back(target);
  }
  return true;
}

bool CopyWholeFile(const std::wstring& source, const std::wstring& target) {
  FilePtr in(std::fopen(toPath(source).c_str(), "rb"));
  if (!in) return false;
  FilePtr out(std::fopen(toPath(target).c_str(), "wb"));
  if (!out) return false;
  char block[4096];
  for (;;) {
    const std::size_t got = std::fread(block, 1, sizeof block, in.get());
    if (got == 0) break;
    if (std::fwrite(block, 1, got, out.get()) != got) return false;
  }
  return true;
}

bool StaysInFolder(const std::wstring& folder, const std::wstring& name) {
  if (name.empty() || name == L"." || name == L"..") return false;
  if (name.find(L'/') != std::wstring::npos || name.find(L'\\') != std::wstring::npos) return false;
  std::error_code error;
  const fs::path base = toPath(folder);
  const fs::path full = base / toPath(name);
  if (!fs::is_symlink(fs::symlink_status(full, error))) return true;
  // A link is followed only when it resolves to a place inside the folder.
  const fs::path resolved = fs::weakly_canonical(full, error);
  const fs::path canonicalBase = fs::weakly_canonical(base, error);
  if (error) return false;
  const auto mismatch = std::mismatch(canonicalBase.begin(), canonicalBase.end(), resolved.begin(), resolved.end());
  return mismatch.first == canonicalBase.end();
}
