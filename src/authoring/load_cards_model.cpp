#include "authoring/load_cards_model.h"

#include <filesystem>
#include <system_error>

#include "card/card_attributes.h"
#include "card/card_reader.h"
#include "drawing/side_drawing.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

std::wstring WithoutTrailingSeparators(std::wstring path) {
  while (path.size() > 1 && (path.back() == L'/' || path.back() == L'\\')) path.pop_back();
  return path;
}

std::wstring LastComponentReplaced(const std::wstring& path, const std::wstring& name) {
  const auto slash = path.rfind(L'/');
  return slash == std::wstring::npos ? name : path.substr(0, slash + 1) + name;
}

}  // namespace

KrmLoadCardsModel::KrmLoadCardsModel(std::wstring root, std::wstring wantedType)
    : root_path_(WithoutTrailingSeparators(std::move(root))),
      wantedType_(std::move(wantedType)),
      root_(std::make_unique<Item>()) {}

std::wstring KrmLoadCardsModel::Caption() const {
  return ListsCards() ? KrmLoadString(143, L"选择卡片") : KrmLoadString(144, L"选择卡片模板");
}

void KrmLoadCardsModel::Open() {
  KrmCardReader reader;
  reader.Load(root_path_);
  std::vector<KrmCardFile> tree;
  if (ListsCards()) reader.GetCardTree(tree);
  else reader.GetTblTree(tree);

  root_ = std::make_unique<Item>();
  root_->text = KrmLoadString(118, L"卡片模板");
  Fill(*root_, root_path_, tree);

  selected_ = nullptr;
  showingNext_ = false;
  const Item* item = root_.get();
  while (!item->children.empty()) {
    const Item* child = item->children.front().get();
    if (child->kind != Item::Kind::kFolder) {
      selected_ = child;
      break;
    }
    item = child;
  }
}

bool KrmLoadCardsModel::Fill(Item& item, const std::wstring& path, const std::vector<KrmCardFile>& tree) {
  const std::wstring folder = WithoutTrailingSeparators(path);
  bool filled = false;
  for (const KrmCardFile& entry : tree) {
    if (entry.GetPath() != folder) continue;
    auto child = std::make_unique<Item>();
    child->text = entry.GetShowName();
    child->entry = entry;
    child->parent = &item;
    if (!entry.IsFolder()) {
      child->kind = Item::Kind::kTemplate;
      item.children.push_back(std::move(child));
      filled = true;
      continue;
    }
    child->kind = Item::Kind::kFolder;
    if (Fill(*child, folder + L"/" + entry.GetShowName(), tree)) {
      item.children.push_back(std::move(child));
      filled = true;
    }
  }
  return filled;
}

std::wstring KrmLoadCardsModel::RelativeFolderOf(const Item& item) {
  std::wstring folder = item.kind == Item::Kind::kFolder ? item.text + L"/" : L"";
  for (const Item* up = item.parent; up != nullptr && up->kind == Item::Kind::kFolder; up = up->parent)
    folder = up->text + L"/" + folder;
  return L"/" + folder;
}

const KrmLoadCardsModel::Item* KrmLoadCardsModel::Find(const std::wstring& folder,
                                                       const std::wstring& fileName) const {
  const Item* found = nullptr;
  std::function<void(const Item&)> walk = [&](const Item& item) {
    for (const auto& child : item.children) {
      if (found != nullptr) return;
      const bool isFolder = child->kind == Item::Kind::kFolder;
      if (fileName.empty() && isFolder && RelativeFolderOf(*child) == folder) found = child.get();
      if (!fileName.empty() && !isFolder && child->entry.GetFileName() == fileName &&
          RelativeFolderOf(*child) == folder)
        found = child.get();
      if (isFolder) walk(*child);
    }
  };
  if (fileName.empty() && folder == L"/") return root_.get();
  walk(*root_);
  return found;
}

bool KrmLoadCardsModel::SelectPath(const std::wstring& folder, const std::wstring& fileName) {
  const Item* item = Find(folder, fileName);
  if (item == nullptr) return false;
  Select(item);
  return true;
}

std::wstring KrmLoadCardsModel::PreviewPath() const {
  if (selected_ == nullptr || selected_->kind != Item::Kind::kTemplate) return L"";
  std::wstring path = selected_->entry.GetPath() + L"/" + selected_->entry.GetFileName();
  if (!ListsCards()) return path;
  KrmCardAttributes card;
  if (card.InitCard(path) != 1) return path;  // no such side drawing: an empty preview
  const int index = showingNext_ ? 1 : 0;
  if (index >= card.getTblCount()) return path;
  return LastComponentReplaced(path, card.getTblFile(index));
}

std::wstring KrmLoadCardsModel::FlipCaption() const {
  return showingNext_ ? KrmLoadString(139, L"看首页") : KrmLoadString(140, L"看续页");
}

void KrmLoadCardsModel::Flip() {
  if (ListsCards()) showingNext_ = !showingNext_;
}

std::wstring KrmLoadCardsModel::DeleteQuestion() const {
  if (selected_ == nullptr || selected_->kind != Item::Kind::kTemplate || selected_->text.empty()) return L"";
  return KrmLoadString(119, L"删除后无法恢复,且和它相关的已建立的卡片将不可再编辑,你真的要删除么?");
}

bool KrmLoadCardsModel::DeleteSelected(bool confirmed) {
  if (DeleteQuestion().empty() || !confirmed) return false;
  const std::wstring path = selected_->entry.GetPath() + L"/" + selected_->entry.GetFileName();
  Item* parent = selected_->parent;
  auto removeChild = [](Item& from, const Item* child) {
    for (auto it = from.children.begin(); it != from.children.end(); ++it) {
      if (it->get() == child) {
        from.children.erase(it);
        return;
      }
    }
  };
  removeChild(*parent, selected_);
  while (parent->kind == Item::Kind::kFolder && parent->children.empty()) {
    Item* up = parent->parent;
    removeChild(*up, parent);
    parent = up;
  }
  selected_ = parent;
  showingNext_ = false;
  DeleteTemplateFiles(path, wantedType_);
  return true;
}

void KrmLoadCardsModel::Confirm() {
  if (selected_ == nullptr || selected_->text.empty()) return;
  switch (selected_->kind) {
    case Item::Kind::kRoot:
      selectedNames_.clear();
      selectedFolder_ = L"/";
      break;
    case Item::Kind::kFolder:
      selectedNames_.clear();
      selectedFolder_ = RelativeFolderOf(*selected_);
      break;
    case Item::Kind::kTemplate:
      selectedNames_ = {selected_->entry.GetFileName(), selected_->text};
      selectedFolder_ = RelativeFolderOf(*selected_);
      break;
  }
}

std::wstring KrmLoadCardsModel::TransferPath() const {
  if (selected_ == nullptr || selected_->text.empty()) return root_path_;
  return root_path_ + RelativeFolderOf(*selected_);
}

std::wstring KrmLoadCardsModel::SelectedFileName() const {
  return selectedNames_.size() == 2 ? selectedNames_[0] : L"";
}

std::wstring KrmLoadCardsModel::SelectedShowName() const {
  return selectedNames_.size() == 2 ? selectedNames_[1] : L"";
}

void DeleteTemplateFiles(const std::wstring& path, const std::wstring& type) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  if (type == L".tbl") {
    fs::remove(tabulon::svc::toPath(path + L".tbl"), ignored);
    fs::remove(SideDrawingPath(tabulon::svc::toPath(path + L".dwg")), ignored);
  } else {
    fs::remove(tabulon::svc::toPath(path + L".crd"), ignored);
  }
}
