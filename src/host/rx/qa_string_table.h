// The user-interface texts of one language by numeric id, as read from a string table
// file: INI syntax, one `id=text` line per text, in any section. Inside a text "\n",
// "\t" and "\\" stand for a line break, a tab and a backslash; any other backslash is
// kept as it is.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QaStringTable {
 public:
  QaStringTable() = default;

  // Throws tabulon::svc::IniError naming the source on bad syntax or a key that is not
  // a decimal id.
  static QaStringTable parse(std::string_view text, const std::string& sourceName = "<text>");
  static QaStringTable load(const std::filesystem::path& path);

  std::optional<std::wstring> find(unsigned id) const;
  std::vector<unsigned> ids() const;
  std::size_t size() const { return texts_.size(); }

  // "\\n" -> line break and so on, as described above.
  static std::wstring unescape(std::wstring_view text);

 private:
  std::map<unsigned, std::wstring> texts_;
};
