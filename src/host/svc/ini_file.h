// An INI document (UTF-8, `[section]` headers, `key=value` lines, `;` or `#` comment
// lines) kept line by line, so that comments, blank lines and the order of sections
// and keys survive a load, a change and a save. Section and key names compare
// without regard to ASCII case, as the settings they replace did; their spelling is
// kept as written. A value runs to the end of its line: ';' inside it is text.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tabulon::svc {

// A configuration file that cannot be read, parsed or written; the message names the
// file and, for a parse error, the line.
class IniError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class IniFile {
 public:
  IniFile() = default;

  // Parses text; `sourceName` names the file in error messages. A UTF-8 byte order
  // mark is skipped, CR LF line ends are accepted. Throws IniError on a line that is
  // neither blank, comment, section header nor `key=value`, and on bytes that are not UTF-8.
  static IniFile parse(std::string_view text, const std::string& sourceName = "<text>");

  // Reads a file; a file that does not exist gives an empty document.
  static IniFile load(const std::filesystem::path& path);

  // The document as text, "\n" line ends.
  std::string toString() const;

  // Writes the document to a temporary file beside `path` and renames it over `path`,
  // creating missing parent folders; a failed save leaves the old file as it was.
  void save(const std::filesystem::path& path) const;

  // The value of `key` in `section` ("" is the part before the first header); the first
  // occurrence wins when a key is written twice.
  std::optional<std::wstring> get(std::wstring_view section, std::wstring_view key) const;

  // Sets a value, adding the section at the end and the key after the last key of its
  // section when missing. Throws std::invalid_argument on a line break in section, key
  // or value, on '=' in a key, on ']' in a section name, or on an empty key.
  void set(std::wstring_view section, std::wstring_view key, std::wstring_view value);

  // Removes a key; answers whether it was there.
  bool remove(std::wstring_view section, std::wstring_view key);

  bool hasSection(std::wstring_view section) const;
  // Adds an empty section if it is missing (same rules as set for the name).
  void addSection(std::wstring_view section);
  // Section names in file order, the unnamed leading part only when it holds keys.
  std::vector<std::wstring> sections() const;
  // Key names of one section in file order.
  std::vector<std::wstring> keys(std::wstring_view section) const;

 private:
  struct Line {
    bool isEntry = false;  // false: blank line or comment, kept verbatim
    std::string text;      // the verbatim line for comments, else the key
    std::string value;
  };
  struct Section {
    std::string name;
    std::string header;  // verbatim header line; empty for the unnamed leading part
    std::vector<Line> lines;
  };

  Section* findSection(std::string_view name);
  const Section* findSection(std::string_view name) const;
  Section& ensureSection(std::string_view name);

  std::vector<Section> sections_{Section{}};
};

}  // namespace tabulon::svc
