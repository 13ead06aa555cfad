// The phrase library.
#include "editor/word_lib.h"

#include "card/table_rows_file.h"
#include "host/svc/utf8.h"

std::vector<KrmWordCategory> CKrmWordLib::Parse(const std::wstring& text) {
  std::vector<KrmWordCategory> categories;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(L'\n', start);
    if (end == std::wstring::npos) end = text.size();
    std::wstring line = text.substr(start, end - start);
    start = end + 1;
    while (!line.empty() && (line.back() == L'\r' || line.back() == L' ' || line.back() == L'\t')) line.pop_back();
    const auto first = line.find_first_not_of(L" \t");
    if (first == std::wstring::npos) continue;
    line.erase(0, first);
    if (line.size() >= 2 && line.front() == L'[' && line.back() == L']') {
      categories.push_back({line.substr(1, line.size() - 2), {}});
      continue;
    }
    if (categories.empty()) categories.push_back({L"", {}});
    categories.back().phrases.push_back(line);
  }
  return categories;
}

tabulon::Status CKrmWordLib::Load() {
  auto text = tabulon::ReadTextFile(tabulon::svc::toPath(path_));
  if (!text.ok()) return text.error();
  categories_ = Parse(*text);
  return tabulon::Status::Ok();
}

bool CKrmWordLib::GetWord(std::wstring& out, const Chooser& chooser) {
  if (!Load().ok() || !chooser) return false;
  return chooser(categories_, out);
}
