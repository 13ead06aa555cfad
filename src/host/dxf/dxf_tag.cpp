#include "host/dxf/dxf_tag.h"

#include <charconv>
#include <cmath>

namespace tabulon::dxf {

DxfValueType dxfValueType(int c) {
  if (c >= 0 && c <= 9) return DxfValueType::String;
  if (c >= 10 && c <= 59) return DxfValueType::Double;
  if (c >= 60 && c <= 79) return DxfValueType::Int16;
  if (c >= 90 && c <= 99) return DxfValueType::Int32;
  if (c == 100 || c == 101 || c == 102) return DxfValueType::String;
  if (c == 105) return DxfValueType::Handle;
  if (c >= 110 && c <= 149) return DxfValueType::Double;
  if (c >= 160 && c <= 169) return DxfValueType::Int64;
  if (c >= 170 && c <= 179) return DxfValueType::Int16;
  if (c >= 210 && c <= 239) return DxfValueType::Double;
  if (c >= 270 && c <= 289) return DxfValueType::Int16;
  if (c >= 290 && c <= 299) return DxfValueType::Bool;
  if (c >= 300 && c <= 309) return DxfValueType::String;
  if (c >= 310 && c <= 319) return DxfValueType::Binary;
  if (c >= 320 && c <= 369) return DxfValueType::Handle;
  if (c >= 370 && c <= 389) return DxfValueType::Int16;
  if (c >= 390 && c <= 399) return DxfValueType::Handle;
  if (c >= 400 && c <= 409) return DxfValueType::Int16;
  if (c >= 410 && c <= 419) return DxfValueType::String;
  if (c >= 420 && c <= 429) return DxfValueType::Int32;
  if (c >= 430 && c <= 439) return DxfValueType::String;
  if (c >= 440 && c <= 459) return DxfValueType::Int32;
  if (c >= 460 && c <= 469) return DxfValueType::Double;
  if (c >= 470 && c <= 479) return DxfValueType::String;
  if (c >= 480 && c <= 481) return DxfValueType::Handle;
  if (c == 999) return DxfValueType::Comment;
  if (c >= 1000 && c <= 1003) return DxfValueType::String;
  if (c == 1004) return DxfValueType::Binary;
  if (c == 1005) return DxfValueType::Handle;
  if (c >= 1006 && c <= 1009) return DxfValueType::String;
  if (c >= 1010 && c <= 1059) return DxfValueType::Double;
  if (c >= 1060 && c <= 1070) return DxfValueType::Int16;
  if (c == 1071) return DxfValueType::Int32;
  return DxfValueType::String;
}

bool dxfIsTextCode(int c) {
  DxfValueType t = dxfValueType(c);
  return t == DxfValueType::String || t == DxfValueType::Comment;
}

bool dxfIsPointCode(int c) {
  return (c >= 10 && c <= 18) || (c >= 110 && c <= 112) || (c >= 1010 && c <= 1013);
}

namespace {

// Plain decimals ("-12.75", "0.0", "6740") with at most 15 significant digits
// are exact as integer over power of ten, and one division of two exact
// doubles rounds correctly: the same value from_chars gives, without its
// general machinery. Anything else (exponents, long mantissas) returns false.
bool parsePlainDecimal(std::string_view text, double& out) {
  static constexpr double kPow10[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  const char* p = text.data();
  const char* const end = p + text.size();
  const bool negative = p < end && *p == '-';
  p += negative;
  const char* const first = p;
  while (p < end && *p == '0') ++p;  // leading zeros carry no digit
  const char* const intStart = p;
  std::uint64_t mantissa = 0;
  while (p < end && static_cast<unsigned char>(*p - '0') < 10) mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
  const long intDigits = p - intStart;
  long fraction = 0;
  bool point = false;
  if (p < end && *p == '.') {
    point = true;
    const char* const fracStart = ++p;
    while (p < end && static_cast<unsigned char>(*p - '0') < 10) mantissa = mantissa * 10 + static_cast<unsigned>(*p++ - '0');
    fraction = p - fracStart;
  }
  // Something else follows (an exponent, a stray character), nothing was given, or
  // the digits are too many to be exact: the general parser decides.
  if (p != end || p == first || (point && p == first + 1) || intDigits + fraction > 15) return false;
  double value = static_cast<double>(mantissa);
  if (fraction > 0) value /= kPow10[fraction];
  out = negative ? -value : value;
  return true;
}

}  // namespace

std::optional<double> dxfParseDouble(std::string_view text) {
  text = dxfTrim(text);
  if (text.empty()) return std::nullopt;
  if (double quick; parsePlainDecimal(text, quick)) return quick;
  if (text.front() == '+') text.remove_prefix(1);
  double value = 0;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || ptr != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

std::optional<std::int64_t> dxfParseInt(std::string_view text) {
  text = dxfTrim(text);
  if (text.empty()) return std::nullopt;
  if (text.size() <= 9) {
    // Short values ("0", "-1", "256") without the general machinery.
    std::size_t i = text[0] == '-' ? 1 : 0;
    std::int64_t value = 0;
    bool plain = i < text.size();
    for (; i < text.size() && plain; ++i) {
      plain = text[i] >= '0' && text[i] <= '9';
      value = value * 10 + (text[i] - '0');
    }
    if (plain) return text[0] == '-' ? -value : value;
  }
  if (text.front() == '+') text.remove_prefix(1);
  std::int64_t value = 0;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec == std::errc() && ptr == text.data() + text.size()) return value;
  // Some writers put a real where an integer belongs ("1.0"); accept whole numbers.
  if (auto real = dxfParseDouble(text); real && std::floor(*real) == *real &&
                                        std::fabs(*real) < 9.2e18)
    return static_cast<std::int64_t>(*real);
  return std::nullopt;
}

std::optional<std::uint64_t> dxfParseHandle(std::string_view text) {
  text = dxfTrim(text);
  if (text.empty() || text.size() > 16) return std::nullopt;
  {
    std::uint64_t value = 0;
    bool plain = true;
    for (char c : text) {
      unsigned digit;
      if (c >= '0' && c <= '9') digit = static_cast<unsigned>(c - '0');
      else if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A' + 10);
      else if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a' + 10);
      else {
        plain = false;
        break;
      }
      value = value << 4 | digit;
    }
    if (plain) return value;
  }
  std::uint64_t value = 0;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
  if (ec != std::errc() || ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace tabulon::dxf
