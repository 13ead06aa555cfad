#include "host/db/qadb_handle.h"

namespace {

template <class Char>
std::optional<QaDbHandle> parseHex(std::basic_string_view<Char> text) {
  std::size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t' || text[b] == '\r' || text[b] == '\n')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t' || text[e - 1] == '\r' || text[e - 1] == '\n')) --e;
  if (b == e) return std::nullopt;
  // Leading zeros do not count against the 16 digits.
  while (e - b > 1 && text[b] == '0') ++b;
  if (e - b > 16) return std::nullopt;
  std::uint64_t v = 0;
  for (std::size_t i = b; i < e; ++i) {
    Char c = text[i];
    int d;
    if (c >= '0' && c <= '9') d = c - '0';
    else if (c >= 'a' && c <= 'f') d = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F') d = c - 'A' + 10;
    else return std::nullopt;
    v = (v << 4) | static_cast<std::uint64_t>(d);
  }
  return QaDbHandle(v);
}

}  // namespace

std::optional<QaDbHandle> QaDbHandle::fromHex(std::string_view text) { return parseHex(text); }
std::optional<QaDbHandle> QaDbHandle::fromHex(std::wstring_view text) { return parseHex(text); }

std::string QaDbHandle::ascii() const {
  static const char digits[] = "0123456789ABCDEF";
  if (value_ == 0) return "0";
  std::string out;
  for (std::uint64_t v = value_; v != 0; v >>= 4) out.insert(out.begin(), digits[v & 15]);
  return out;
}

std::wstring QaDbHandle::text() const {
  std::string a = ascii();
  return std::wstring(a.begin(), a.end());
}
