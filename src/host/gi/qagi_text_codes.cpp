#include "host/gi/qagi_text_codes.h"

#include <cwctype>

namespace tabulon::gi {

ControlCode controlCodeAt(const std::wstring& text, std::size_t at) {
  if (at >= text.size() || text.size() - at < 2) return {};
  const std::size_t rest = text.size() - at;
  if (text[at] == L'\\' && text[at + 1] == L'P') return {2, kShowsNothing};
  if (text[at] != L'%' || text[at + 1] != L'%' || rest < 3) return {};

  const wchar_t key = text[at + 2];
  switch (std::towlower(static_cast<wint_t>(key))) {
    case L'd': return {3, U'\u00B0'};
    case L'p': return {3, U'\u00B1'};
    case L'c': return {3, U'\u00D8'};
    case L'%': return {3, U'%'};
    case L'u':
    case L'o':
    case L'k': return {3, kShowsNothing};
    default: break;
  }
  const auto digit = [&](std::size_t k) { return text[at + k] >= L'0' && text[at + k] <= L'9'; };
  if (rest >= 5 && digit(2) && digit(3) && digit(4)) {
    const auto code = static_cast<char32_t>((text[at + 2] - L'0') * 100 + (text[at + 3] - L'0') * 10 +
                                            (text[at + 4] - L'0'));
    return {5, code < 0x20 ? kShowsNothing : code};
  }
  return {};
}

}  // namespace tabulon::gi
