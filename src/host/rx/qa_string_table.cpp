#include "host/rx/qa_string_table.h"

#include "host/svc/ini_file.h"

#include <charconv>
#include <fstream>
#include <sstream>

#include "host/svc/utf8.h"

QaStringTable QaStringTable::parse(std::string_view text, const std::string& sourceName) {
  using tabulon::svc::IniFile;
  const auto ini = IniFile::parse(text, sourceName);
  QaStringTable table;
  std::vector<std::wstring> sections = ini.sections();
  for (const auto& section : sections) {
    for (const auto& key : ini.keys(section)) {
      const auto narrow = tabulon::svc::toUtf8(key);
      unsigned id = 0;
      const auto [end, ec] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), id);
      if (ec != std::errc() || end != narrow.data() + narrow.size())
        throw tabulon::svc::IniError(sourceName + ": key \"" + narrow + "\" is not a string id (a decimal number)");
      // The first text of an id wins, as it does for any INI key.
      table.texts_.emplace(id, unescape(ini.get(section, key).value_or(L"")));
    }
  }
  return table;
}

QaStringTable QaStringTable::load(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw tabulon::svc::IniError(path.string() + ": cannot be opened for reading");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return parse(bytes.str(), path.string());
}

std::optional<std::wstring> QaStringTable::find(unsigned id) const {
  auto it = texts_.find(id);
  if (it == texts_.end()) return std::nullopt;
  return it->second;
}

std::vector<unsigned> QaStringTable::ids() const {
  std::vector<unsigned> out;
  out.reserve(texts_.size());
  for (const auto& [id, text] : texts_) out.push_back(id);
  return out;
}

std::wstring QaStringTable::unescape(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'\\' && i + 1 < text.size()) {
      const wchar_t next = text[i + 1];
      if (next == L'n' || next == L't' || next == L'\\') {
        out += next == L'n' ? L'\n' : next == L't' ? L'\t' : L'\\';
        ++i;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}
