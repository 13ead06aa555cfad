// The studio's user-interface texts: the string table of the configured language for
// the studio (Chinese by default, English with Locale=en), looked up by numeric id
// with the literal the code carries as fallback. Owns the loaded table.
#pragma once

#include <QString>

#include <memory>
#include <string>

class QaLangResource;

namespace tabulon::ui {

class UiStrings {
 public:
  // Loads the table of the configured locale (falling back on Chinese).
  UiStrings();
  // Loads the table of `locale` ("zh_CN", "en").
  explicit UiStrings(const std::string& locale);
  ~UiStrings();
  UiStrings(const UiStrings&) = delete;
  UiStrings& operator=(const UiStrings&) = delete;

  QString text(unsigned id, const wchar_t* literal) const;
  std::wstring wtext(unsigned id, const wchar_t* literal) const;
  // The locale of the table in use ("zh_CN" when none was found).
  std::string locale() const;

 private:
  std::unique_ptr<QaLangResource> resource_;
};

QString toQString(std::wstring_view text);
std::wstring toWString(const QString& text);

}  // namespace tabulon::ui
