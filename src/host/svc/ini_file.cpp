#include "host/svc/ini_file.h"

#include "host/svc/utf8.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tabulon::svc {

namespace {

std::string_view trim(std::string_view s) {
  const auto first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  const auto last = s.find_last_not_of(" \t");
  return s.substr(first, last - first + 1);
}

bool equalsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; };
           return lower(x) == lower(y);
         });
}

std::string checkedName(std::wstring_view name, const char* what) {
  if (name.find_first_of(L"\r\n") != std::wstring_view::npos)
    throw std::invalid_argument(std::string("INI ") + what + " holds a line break");
  return std::string(trim(toUtf8(name)));
}

}  // namespace

IniFile IniFile::parse(std::string_view text, const std::string& sourceName) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  if (!isValidUtf8(text)) throw IniError(sourceName + ": not UTF-8 text");
  IniFile ini;
  std::size_t lineNo = 0;
  std::size_t pos = 0;
  while (pos < text.size()) {
    auto end = text.find('\n', pos);
    if (end == std::string_view::npos) end = text.size();
    std::string_view raw = text.substr(pos, end - pos);
    pos = end + 1;
    ++lineNo;
    if (raw.ends_with('\r')) raw.remove_suffix(1);
    const auto body = trim(raw);
    Section& current = ini.sections_.back();
    if (body.empty() || body.front() == ';' || body.front() == '#') {
      current.lines.push_back(Line{false, std::string(raw), {}});
    } else if (body.front() == '[') {
      if (body.back() != ']')
        throw IniError(sourceName + ":" + std::to_string(lineNo) + ": section header without ']'");
      Section section;
      section.name = std::string(trim(body.substr(1, body.size() - 2)));
      section.header = std::string(raw);
      ini.sections_.push_back(std::move(section));
    } else {
      const auto eq = body.find('=');
      if (eq == std::string_view::npos || trim(body.substr(0, eq)).empty())
        throw IniError(sourceName + ":" + std::to_string(lineNo) + ": expected key=value, [section] or a comment, found \"" +
                       std::string(body) + "\"");
      current.lines.push_back(Line{true, std::string(trim(body.substr(0, eq))), std::string(trim(body.substr(eq + 1)))});
    }
  }
  return ini;
}

IniFile IniFile::load(const std::filesystem::path& path) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) return IniFile{};
  std::ifstream in(path, std::ios::binary);
  if (!in) throw IniError(path.string() + ": cannot be opened for reading");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) throw IniError(path.string() + ": read error");
  return parse(bytes.str(), path.string());
}

std::string IniFile::toString() const {
  std::string out;
  for (const auto& section : sections_) {
    if (!section.header.empty()) out += section.header + "\n";
    for (const auto& line : section.lines) {
      out += line.isEntry ? line.text + "=" + line.value : line.text;
      out += "\n";
    }
  }
  return out;
}

void IniFile::save(const std::filesystem::path& path) const {
  std::error_code ec;
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path(), ec);
  std::string tmpl = path.string() + ".XXXXXX";
  std::vector<char> name(tmpl.begin(), tmpl.end());
  name.push_back('\0');
  const int fd = mkstemp(name.data());
  if (fd < 0) throw IniError(path.string() + ": cannot create a temporary file: " + std::strerror(errno));
  const std::string text = toString();
  std::size_t written = 0;
  bool ok = true;
  while (written < text.size()) {
    const auto n = ::write(fd, text.data() + written, text.size() - written);
    if (n < 0) {
      if (errno == EINTR) continue;
      ok = false;
      break;
    }
    written += static_cast<std::size_t>(n);
  }
  const int savedErrno = errno;
  if (ok) ok = ::fsync(fd) == 0;
  ::fchmod(fd, 0644);
  ::close(fd);
  if (!ok || std::rename(name.data(), path.c_str()) != 0) {
    const int err = ok ? errno : savedErrno;
    ::unlink(name.data());
    throw IniError(path.string() + ": cannot be written: " + std::strerror(err));
  }
}

IniFile::Section* IniFile::findSection(std::string_view name) {
  for (auto& s : sections_)
    if (equalsNoCase(s.name, name) && (!s.header.empty() || name.empty())) return &s;
  return nullptr;
}

const IniFile::Section* IniFile::findSection(std::string_view name) const {
  return const_cast<IniFile*>(this)->findSection(name);
}

IniFile::Section& IniFile::ensureSection(std::string_view name) {
  if (auto* s = findSection(name)) return *s;
  if (name.find(']') != std::string_view::npos) throw std::invalid_argument("INI section name holds ']'");
  // Keep one blank line between the previous content and the new header.
  const auto& last = sections_.back();
  const bool endsBlank = !last.lines.empty() && !last.lines.back().isEntry && trim(last.lines.back().text).empty();
  const bool empty = last.lines.empty() && last.header.empty();
  if (!endsBlank && !empty) sections_.back().lines.push_back(Line{false, "", {}});
  Section section;
  section.name = std::string(name);
  section.header = "[" + section.name + "]";
  sections_.push_back(std::move(section));
  return sections_.back();
}

std::optional<std::wstring> IniFile::get(std::wstring_view section, std::wstring_view key) const {
  const auto* s = findSection(toUtf8(section));
  if (!s) return std::nullopt;
  const auto k = toUtf8(key);
  for (const auto& line : s->lines)
    if (line.isEntry && equalsNoCase(line.text, k)) return fromUtf8(line.value);
  return std::nullopt;
}

void IniFile::set(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
  const auto sectionName = checkedName(section, "section name");
  const auto keyName = checkedName(key, "key");
  if (keyName.empty()) throw std::invalid_argument("INI key is empty");
  if (keyName.find('=') != std::string::npos) throw std::invalid_argument("INI key holds '='");
  if (keyName.front() == '[' || keyName.front() == ';' || keyName.front() == '#')
    throw std::invalid_argument("INI key starts with a reserved character");
  if (value.find_first_of(L"\r\n") != std::wstring_view::npos)
    throw std::invalid_argument("INI value holds a line break");
  const auto text = std::string(trim(toUtf8(value)));
  auto& s = ensureSection(sectionName);
  for (auto& line : s.lines) {
    if (line.isEntry && equalsNoCase(line.text, keyName)) {
      line.value = text;
      return;
    }
  }
  // After the last entry, so that trailing comments and blank lines stay where they
  // were; in a section without entries right below the header.
  auto lastEntry = std::find_if(s.lines.rbegin(), s.lines.rend(), [](const Line& l) { return l.isEntry; });
  auto insertAt = lastEntry != s.lines.rend() ? lastEntry.base()
                  : s.header.empty()         ? s.lines.end()
                                             : s.lines.begin();
  s.lines.insert(insertAt, Line{true, keyName, text});
}

bool IniFile::remove(std::wstring_view section, std::wstring_view key) {
  auto* s = findSection(toUtf8(section));
  if (!s) return false;
  const auto k = toUtf8(key);
  auto it = std::find_if(s->lines.begin(), s->lines.end(),
                         [&](const Line& l) { return l.isEntry && equalsNoCase(l.text, k); });
  if (it == s->lines.end()) return false;
  s->lines.erase(it);
  return true;
}

bool IniFile::hasSection(std::wstring_view section) const { return findSection(toUtf8(section)) != nullptr; }

void IniFile::addSection(std::wstring_view section) { ensureSection(checkedName(section, "section name")); }

std::vector<std::wstring> IniFile::sections() const {
  std::vector<std::wstring> out;
  for (const auto& s : sections_) {
    if (s.header.empty() && std::none_of(s.lines.begin(), s.lines.end(), [](const Line& l) { return l.isEntry; })) continue;
    out.push_back(fromUtf8(s.name));
  }
  return out;
}

std::vector<std::wstring> IniFile::keys(std::wstring_view section) const {
  std::vector<std::wstring> out;
  if (const auto* s = findSection(toUtf8(section)))
    for (const auto& line : s->lines)
      if (line.isEntry) out.push_back(fromUtf8(line.text));
  return out;
}

}  // namespace tabulon::svc
