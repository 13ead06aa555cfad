// The language resource module of a plug-in: the string table of the user's language,
// found in the string folders of the installation or of the build tree. Texts are
// loaded by numeric id from the module that is current, and fall back on the literal
// that the calling code carries when there is no module or no such id.
#pragma once

#include "host/rx/qa_string_table.h"

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QaLangResource {
 public:
  QaLangResource(std::string moduleName, std::string locale, std::filesystem::path file, QaStringTable table);
  QaLangResource(const QaLangResource&) = delete;
  QaLangResource& operator=(const QaLangResource&) = delete;

  const std::string& moduleName() const { return moduleName_; }
  const std::string& locale() const { return locale_; }
  const std::filesystem::path& file() const { return file_; }
  const QaStringTable& strings() const { return strings_; }

 private:
  std::string moduleName_;
  std::string locale_;
  std::filesystem::path file_;
  QaStringTable strings_;
};

// Folders searched for `<locale>.ini`, in this order: <prefix>/share/tabulon/strings
// beside the running program's bin folder, <program folder>/resources/strings, and
// the source tree's resources/strings of the build.
std::vector<std::filesystem::path> qaStringTableFolders();

// The string table file for a locale: `<locale>.ini`, else `<language>.ini` ("en" for
// "en_US"); nothing when neither exists in any folder.
std::optional<std::filesystem::path> qaFindStringTable(const std::string& locale);

// Loads the language module of a plug-in for the configured locale, falling back on
// "zh_CN" when the locale has no table. `flag` 1 asks for the fallback, 0 for the exact
// locale only. Nothing when no table is found; throws tabulon::svc::IniError when a
// table exists but cannot be read.
std::unique_ptr<QaLangResource> loadLangResourceDLL(const std::string& moduleName, int flag);
std::unique_ptr<QaLangResource> loadLangResourceDLL(const std::string& moduleName, const std::string& locale, int flag);
void freeLangResourceDLL(std::unique_ptr<QaLangResource>& handle);

// The module texts are loaded from at present, or null. The pointer does not own.
const QaLangResource* qaResourceHandle();
void qaSetResourceHandle(const QaLangResource* handle);

// Makes a module current for a scope and restores the previous one when the scope
// ends, on every way out. The module must outlive the scope.
class QaResourceScope {
 public:
  explicit QaResourceScope(const QaLangResource* handle);
  ~QaResourceScope();
  QaResourceScope(const QaResourceScope&) = delete;
  QaResourceScope& operator=(const QaResourceScope&) = delete;

 private:
  const QaLangResource* previous_;
};

// Text `id` of the current module, or `literal` when there is none or it lacks the id.
std::wstring KrmLoadString(unsigned id, std::wstring_view literal);
// The same text with %1, %2, ... replaced by `args` in turn (a translation may put
// them in another order).
std::wstring KrmLoadString(unsigned id, std::wstring_view literal, std::initializer_list<std::wstring_view> args);
