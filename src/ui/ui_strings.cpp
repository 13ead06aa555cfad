#include "ui/ui_strings.h"

#include "host/rx/qa_lang_resource.h"

namespace tabulon::ui {

namespace {
constexpr char kModule[] = "tabulon-studio";
}

UiStrings::UiStrings() : resource_(loadLangResourceDLL(kModule, 1)) {}

UiStrings::UiStrings(const std::string& locale) : resource_(loadLangResourceDLL(kModule, locale, 1)) {}

UiStrings::~UiStrings() = default;

std::wstring UiStrings::wtext(unsigned id, const wchar_t* literal) const {
  if (resource_)
    if (auto found = resource_->strings().find(id)) return *found;
  return literal;
}

QString UiStrings::text(unsigned id, const wchar_t* literal) const { return toQString(wtext(id, literal)); }

std::string UiStrings::locale() const { return resource_ ? resource_->locale() : std::string("zh_CN"); }

QString toQString(std::wstring_view text) {
  return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

std::wstring toWString(const QString& text) { return text.toStdWString(); }

}  // namespace tabulon::ui
