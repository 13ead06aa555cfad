#include "host/svc/utf8.h"

#include <cstdint>

namespace tabulon::svc {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t cp) {
  if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) cp = kReplacement;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// Decodes one sequence at `pos`; returns the code point and advances `pos`, or returns
// nothing (and advances past the bad lead byte or the valid prefix) on malformed input.
bool decodeOne(std::string_view text, std::size_t& pos, char32_t& cp) {
  const auto lead = static_cast<std::uint8_t>(text[pos]);
  int extra = 0;
  char32_t min = 0;
  if (lead < 0x80) {
    cp = lead;
    ++pos;
    return true;
  } else if ((lead & 0xE0) == 0xC0) {
    extra = 1;
    cp = lead & 0x1F;
    min = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    extra = 2;
    cp = lead & 0x0F;
    min = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    extra = 3;
    cp = lead & 0x07;
    min = 0x10000;
  } else {
    ++pos;
    return false;
  }
  ++pos;
  for (int i = 0; i < extra; ++i) {
    if (pos >= text.size()) return false;
    const auto cont = static_cast<std::uint8_t>(text[pos]);
    if ((cont & 0xC0) != 0x80) return false;
    cp = (cp << 6) | (cont & 0x3F);
    ++pos;
  }
  return cp >= min && cp <= 0x10FFFF && !(cp >= 0xD800 && cp <= 0xDFFF);
}

}  // namespace

std::string toUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (wchar_t c : text) appendUtf8(out, static_cast<char32_t>(c));
  return out;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  out.reserve(text.size());
  std::size_t pos = 0;
  while (pos < text.size()) {
    char32_t cp = 0;
    out += decodeOne(text, pos, cp) ? static_cast<wchar_t>(cp) : static_cast<wchar_t>(kReplacement);
  }
  return out;
}

bool isValidUtf8(std::string_view text) {
  std::size_t pos = 0;
  while (pos < text.size()) {
    char32_t cp = 0;
    if (!decodeOne(text, pos, cp)) return false;
  }
  return true;
}

std::filesystem::path toPath(std::wstring_view text) { return std::filesystem::path(toUtf8(text)); }

std::wstring fromPath(const std::filesystem::path& path) { return fromUtf8(path.string()); }

}  // namespace tabulon::svc
