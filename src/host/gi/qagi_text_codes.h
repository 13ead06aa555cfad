// What each character of a CAD text string shows when it is drawn: control codes such
// as "%%d" (degree sign) or the paragraph break "\P" take the place of several stored
// characters. Pure functions over text; nothing is kept.
#pragma once

#include <cstddef>
#include <string>

namespace tabulon::gi {

// Code point a character shows, or kShowsNothing for a character that is part of a
// control code, a line break or another character of no width.
inline constexpr char32_t kShowsNothing = 0;

// Calls `visit(index, shown)` for each character index below `limit` (and below the
// text's length), in order. With `raw` every character shows itself, except that line
// breaks and other control characters show nothing. Without `raw` these codes are
// read, each showing its result on its last character and nothing on the others:
//   %%d degree sign, %%p plus-minus, %%c diameter, %%% percent sign, %%nnn the
//   character with decimal code nnn; %%u, %%o, %%k (under/overline, strike) and "\P"
//   (paragraph break) show nothing.
// A code cut by `limit` shows nothing, so a prefix never shows half a code.
template <class Visit>
void visitShownCharacters(const std::wstring& text, bool raw, std::size_t limit, Visit&& visit);

// The character shown by the control code that begins at `text[at]`, and the code's
// length in stored characters; length 0 when no code begins there.
struct ControlCode {
  std::size_t length = 0;
  char32_t shown = kShowsNothing;
};
ControlCode controlCodeAt(const std::wstring& text, std::size_t at);

template <class Visit>
void visitShownCharacters(const std::wstring& text, bool raw, std::size_t limit, Visit&& visit) {
  const std::size_t end = limit < text.size() ? limit : text.size();
  std::size_t i = 0;
  while (i < end) {
    if (!raw) {
      const ControlCode code = controlCodeAt(text, i);
      if (code.length > 0) {
        const std::size_t last = i + code.length - 1;
        for (; i < last && i < end; ++i) visit(i, kShowsNothing);
        if (i < end) visit(i++, code.shown);  // reached only when the whole code lies below end
        continue;
      }
    }
    const auto c = static_cast<char32_t>(text[i]);
    visit(i++, c < 0x20 || c == 0x7F ? kShowsNothing : c);
  }
}

}  // namespace tabulon::gi
