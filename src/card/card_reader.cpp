#include "card/card_reader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "card/utf8_text.h"

namespace fs = std::filesystem;

namespace {

// Folders nested deeper than this are not scanned: a guard against links
// that loop back into the tree.
constexpr int kMaxDepth = 64;

}  // namespace

int KrmCardReader::Load(const std::wstring& folder) {
  cards_.clear();
  tables_.clear();
  std::wstring root = folder;
  while (root.size() > 1 && root.back() == L'/') root.pop_back();
  std::error_code ec;
  if (root.empty() || !fs::is_directory(KrmToFsPath(root), ec)) return 0;
  ScanFolder(root, 0);
  return 1;
}

void KrmCardReader::ScanFolder(const std::wstring& path, int depth) {
  std::vector<std::wstring> folders;
  std::vector<std::wstring> cardStems;
  std::vector<std::wstring> tableStems;
  std::error_code ec;
  for (fs::directory_iterator it(KrmToFsPath(path), ec), end; !ec && it != end; it.increment(ec)) {
    const std::wstring name = KrmFromFsPath(it->path().filename());
    if (name.empty() || name.front() == L'.') continue;
    std::error_code kindError;
    if (it->is_directory(kindError)) {
      folders.push_back(name);
      continue;
    }
    if (!it->is_regular_file(kindError)) continue;
    const std::wstring extension = KrmFromFsPath(it->path().extension());
    const std::wstring stem = KrmFromFsPath(it->path().stem());
    if (stem.empty()) continue;
    if (extension == L".crd") cardStems.push_back(stem);
    if (extension == L".tbl") tableStems.push_back(stem);
  }
  for (auto* list : {&folders, &cardStems, &tableStems}) std::sort(list->begin(), list->end());

  for (const auto& name : folders) {
    cards_.emplace_back(path, name, name, L"", L"");
    tables_.emplace_back(path, name, name, L"", L"");
  }
  for (const auto& stem : cardStems) {
    KrmCardAttributes card;
    if (card.InitCard(path + L"/" + stem + L".crd")) {
      cards_.emplace_back(path, stem, card.getShowName().empty() ? stem : card.getShowName(), L".crd", card.getID());
    } else {
      cards_.emplace_back(path, stem, stem, L".crd", L"");
    }
  }
  for (const auto& stem : tableStems) {
    KrmTableAttributes table;
    if (table.InitTable(path + L"/" + stem + L".tbl")) {
      tables_.emplace_back(path, stem, table.getShowName().empty() ? stem : table.getShowName(), L".tbl",
                           table.getID());
    } else {
      tables_.emplace_back(path, stem, stem, L".tbl", L"");
    }
  }
  if (depth >= kMaxDepth) return;
  for (const auto& name : folders) ScanFolder(path + L"/" + name, depth + 1);
}
