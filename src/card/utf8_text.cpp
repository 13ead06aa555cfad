#include "card/utf8_text.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsScalarValue(char32_t c) { return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF); }

void AppendUtf8(std::string& out, char32_t c) {
  if (!IsScalarValue(c)) c = kReplacement;
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

}  // namespace

std::string KrmToUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (wchar_t w : text) AppendUtf8(out, static_cast<char32_t>(w));
  return out;
}

std::wstring KrmFromUtf8(std::string_view text) {
  std::wstring out;
  out.reserve(text.size());
  size_t i = 0;
  const size_t n = text.size();
  while (i < n) {
    const auto b0 = static_cast<unsigned char>(text[i]);
    if (b0 < 0x80) {
      out.push_back(static_cast<wchar_t>(b0));
      ++i;
      continue;
    }
    int extra = 0;
    char32_t c = 0;
    char32_t min = 0;
    if ((b0 & 0xE0) == 0xC0) {
      extra = 1, c = b0 & 0x1F, min = 0x80;
    } else if ((b0 & 0xF0) == 0xE0) {
      extra = 2, c = b0 & 0x0F, min = 0x800;
    } else if ((b0 & 0xF8) == 0xF0) {
      extra = 3, c = b0 & 0x07, min = 0x10000;
    } else {
      out.push_back(static_cast<wchar_t>(kReplacement));
      ++i;
      continue;
    }
    size_t j = i + 1;
    int got = 0;
    while (got < extra && j < n && (static_cast<unsigned char>(text[j]) & 0xC0) == 0x80) {
      c = (c << 6) | (static_cast<unsigned char>(text[j]) & 0x3F);
      ++j;
      ++got;
    }
    if (got < extra || c < min || !IsScalarValue(c)) c = kReplacement;
    out.push_back(static_cast<wchar_t>(c));
    i = j;
  }
  return out;
}

std::filesystem::path KrmToFsPath(std::wstring_view path) { return std::filesystem::path(KrmToUtf8(path)); }

std::wstring KrmFromFsPath(const std::filesystem::path& path) { return KrmFromUtf8(path.native()); }
