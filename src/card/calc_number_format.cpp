#include "card/calc_number_format.h"

#include "card/att_set.h"

#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

}  // namespace

std::optional<double> KrmLeadingNumber(std::wstring_view text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == L' ' || text[at] == L'\t' || text[at] == L'\r' || text[at] == L'\n' ||
                              text[at] == 0x3000)) {
    ++at;
  }
  // Copy the longest run that can form a number to ASCII, then let from_chars decide
  // how much of it is one.
  std::string ascii;
  if (at < text.size() && (text[at] == L'+' || text[at] == L'-')) {
    if (text[at] == L'-') ascii += '-';
    ++at;
  }
  const std::size_t signLength = ascii.size();
  bool sawDigit = false;
  for (; at < text.size(); ++at) {
    const wchar_t c = text[at];
    if (isDigit(c)) {
      sawDigit = true;
    } else if (c != L'.' && c != L'e' && c != L'E' && c != L'+' && c != L'-') {
      break;
    }
    ascii += static_cast<char>(c);
  }
  if (!sawDigit || ascii.size() == signLength || !(isDigit(static_cast<wchar_t>(ascii[signLength])) ||
                                                   ascii[signLength] == '.')) {
    return std::nullopt;
  }
  double value = 0.0;
  const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
  if (error != std::errc() || end == ascii.data() || !std::isfinite(value)) return std::nullopt;
  return value;
}

double KrmTextToDouble(std::wstring_view text) { return KrmLeadingNumber(text).value_or(0.0); }

std::wstring KrmFormatFixed(double value, int decimals) {
  if (decimals < 0) decimals = 0;
  std::string buffer(32 + static_cast<std::size_t>(decimals), '\0');
  for (;;) {
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    if (error == std::errc()) {
      buffer.resize(static_cast<std::size_t>(end - buffer.data()));
      break;
    }
    buffer.resize(buffer.size() * 2);  // a very large value needs room for its digits
  }
  return std::wstring(buffer.begin(), buffer.end());
}

std::wstring FormatCellNumber(const std::wstring& text, const KrmAttSet& att) {
  const std::wstring& type = att.GetStringType();
  if (type == kKrmNumInt) return KrmFormatFixed(KrmTextToDouble(text), 0);
  if (type == kKrmNumDouble) return KrmFormatFixed(KrmTextToDouble(text), att.GetDecimalNum());
  return text;
}
