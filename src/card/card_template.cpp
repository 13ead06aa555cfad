#include "card/card_template.h"

#include "card/file_utils.h"
#include "card/utf8_text.h"

bool BlockNamesMatch(const std::wstring& a, const std::wstring& b) {
  if (a.size() == b.size()) return a == b;
  const std::wstring& s = a.size() < b.size() ? a : b;
  const std::wstring& l = a.size() < b.size() ? b : a;
  const size_t n = s.size();
  if (l.compare(0, n, s) == 0 && l[n] == L'_') return true;
  return l.compare(l.size() - n, n, s) == 0 && l[l.size() - n - 1] == L'_';
}

void KrmCardTemplate::Clear() {
  path_.clear();
  card_.Reset();
  tables_.clear();
  dir_.Reset();
  rearrange_ = 0;
  autoArrange_ = 1;
  loadProblems_.clear();
}

int KrmCardTemplate::LoadTemplate(const std::wstring& path) { return Load(path).ok() ? 1 : 0; }

tabulon::Status KrmCardTemplate::Load(const std::wstring& path) {
  Clear();
  path_ = path;
  if (tabulon::Status read = card_.ReadCard(path_); !read.ok()) {
    loadProblems_ = KrmFromUtf8(read.describe());
    return read;
  }
  const std::wstring folder = GetFolder();
  for (int i = 0; i < card_.getTblCount(); ++i) {
    const std::wstring& name = card_.getTblFile(i);
    auto table = std::make_unique<KrmTableAttributes>();
    if (tabulon::Status read = table->ReadTable(folder + name); !read.ok()) {
      if (!loadProblems_.empty()) loadProblems_ += L"\n";
      loadProblems_ += KrmFromUtf8(read.describe());
    }
    tables_[name] = std::move(table);
  }
  card_.getCardDir(dir_);
  return tabulon::Status::Ok();
}

std::wstring KrmCardTemplate::GetFolder() const {
  const size_t slash = path_.rfind(L'/');
  if (slash == std::wstring::npos) return path_;
  return path_.substr(0, slash + 1);
}

const KrmTableAttributes* KrmCardTemplate::GetTable(int index) const {
  if (index < 0 || index >= card_.getTblCount()) return nullptr;
  auto it = tables_.find(card_.getTblFile(index));
  return it == tables_.end() ? nullptr : it->second.get();
}

int KrmCardTemplate::GetBlockNames(std::vector<std::wstring>& out, int index) const {
  const KrmTableAttributes* table = GetTable(index);
  if (!table) return 0;
  out.clear();
  for (const auto* list : {&table->SCells(), &table->MCells()}) {
    for (const auto& block : *list) out.push_back(block.GetBlockName());
  }
  return 1;
}

int KrmCardTemplate::GetAttNames(const std::wstring& blockName, std::vector<std::wstring>& out, int index) const {
  const KrmTableAttributes* table = GetTable(index);
  if (!table) return 0;
  std::vector<KrmAttSet> atts;
  table->getAtt(blockName, atts);
  out.clear();
  for (const auto& att : atts) out.push_back(att.GetShowName());
  return 1;
}

int KrmCardTemplate::GetPageBase(int index, std::wstring& out) const {
  const KrmTableAttributes* table = GetTable(index);
  if (!table) return 0;
  out = table->getPageBase();
  return 1;
}

int KrmCardTemplate::GetBlkNum(const std::wstring& blockName, int& count, int& order, int index) const {
  const KrmTableAttributes* table = GetTable(index);
  if (!table) return 0;
  table->getBlkNum(blockName, order, count);
  return 1;
}

int KrmCardTemplate::GetTableSize(int index, double& width, double& height) const {
  const KrmTableAttributes* table = GetTable(index);
  if (!table) return 0;
  width = table->getWidth();
  height = table->getHeight();
  return 1;
}

std::wstring KrmCardTemplate::GetTableFileName(int index) const {
  return GetTable(index) ? card_.getTblFile(index) : std::wstring();
}

int KrmCardTemplate::GetAtts(const std::wstring& blockName, std::vector<KrmAttSet>& out) const {
  out.clear();
  const KrmTableAttributes* table = GetTable(0);
  return table ? table->getAtt(blockName, out) : 0;
}

std::wstring KrmCardTemplate::GetTableShowName() const {
  const KrmTableAttributes* table = GetTable(0);
  return table ? table->getShowName() : std::wstring();
}

int KrmCardTemplate::GetFirstTableWidth() const {
  const KrmTableAttributes* table = GetTable(0);
  return table ? static_cast<int>(table->getWidth()) : 0;
}

int KrmCardTemplate::GetFirstTableHeight() const {
  const KrmTableAttributes* table = GetTable(0);
  return table ? static_cast<int>(table->getHeight()) : 0;
}

int KrmCardTemplate::GetAutoNumColumn(const std::wstring& blockName) const {
  const KrmTableAttributes* table = GetTable(0);
  if (!table) return -1;
  std::wstring block, att;
  if (!table->PageBinding(kKrmAutoNum, block, att) || block != blockName) return -1;
  std::vector<std::wstring> names;
  GetAttNames(blockName, names, 0);
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] == att) return static_cast<int>(i);
  }
  return -1;
}

int KrmCardTemplate::GetPageNumberBindings(std::vector<std::wstring>& out) const {
  out.clear();
  const KrmTableAttributes* table = GetTable(0);
  if (!table) return 0;
  for (const wchar_t* key : {kKrmClassCur, kKrmClassSum, kKrmBatchCur, kKrmBatchSum}) {
    std::wstring block, att;
    table->PageBinding(key, block, att);
    out.push_back(block);
    out.push_back(att);
  }
  return 1;
}
