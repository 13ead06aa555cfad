#include "card/number_text.h"

#include <climits>
#include <cwctype>

int KrmTextToInt(std::wstring_view text) {
  size_t i = 0;
  while (i < text.size() && std::iswspace(static_cast<wint_t>(text[i]))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) {
    negative = text[i] == L'-';
    ++i;
  }
  long long value = 0;
  for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
    value = value * 10 + (text[i] - L'0');
    if (value > static_cast<long long>(INT_MAX) + 1) value = static_cast<long long>(INT_MAX) + 1;
  }
  if (negative) value = -value;
  if (value > INT_MAX) value = INT_MAX;
  if (value < INT_MIN) value = INT_MIN;
  return static_cast<int>(value);
}
