// One DXF tag: a group code and its value text, as it stands in the file.
// A DxfTag views the text of the file it was read from; whoever holds the tag
// keeps that text alive. Values are kept as text so that an unchanged number
// is written back exactly as it was read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tabulon::dxf {

// What a group code's value holds.
enum class DxfValueType { String, Double, Int16, Int32, Int64, Bool, Handle, Binary, Comment };

DxfValueType dxfValueType(int groupCode);
// True for group codes whose value is text subject to the file's code page.
bool dxfIsTextCode(int groupCode);
// True for the X coordinate codes of a point (10..18, 110..112, 1010..1013):
// they are followed by Y (+10) and, optionally, Z (+20).
bool dxfIsPointCode(int groupCode);

struct DxfTag {
  int code = 0;
  std::string_view value;  // without the line ending, otherwise verbatim
  std::size_t line = 0;    // 1-based line of the group code
  std::size_t offset = 0;  // byte offset of the group code line in the file
};

// Numbers and handles as written in DXF. Surrounding blanks are ignored; an
// empty or malformed value gives nullopt.
std::optional<double> dxfParseDouble(std::string_view text);
std::optional<std::int64_t> dxfParseInt(std::string_view text);
inline std::optional<std::uint64_t> dxfParseHandle(std::string_view text);
// dxfParseHandle() for values of another shape than plain hex digits.
std::optional<std::uint64_t> dxfParseHandleSlow(std::string_view text);

// A plain decimal ("-12.75", "0.0", "6740", ".5") without blanks: its value
// as from_chars gives it. A mantissa below 2^53 over a power of ten up to 1e22
// is two exact doubles, and one division of those rounds correctly, so no
// general machinery is needed. False for anything else (exponents, long
// mantissas, blanks), which the general parser then decides.
inline bool dxfParsePlainDecimal(std::string_view text, double& out) {
  static constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  const char* p = text.data();
  // The z of every point of a flat drawing.
  if (text.size() == 3 && p[0] == '0' && p[1] == '.' && p[2] == '0') {
    out = 0.0;
    return true;
  }
  const char* const end = p + text.size();
  const bool negative = p < end && *p == '-';
  p += negative;
  const char* const first = p;
  std::uint64_t mantissa = 0;
  unsigned digit;
  while (p < end && (digit = static_cast<unsigned char>(*p) - unsigned('0')) < 10) {
    mantissa = mantissa * 10 + digit;
    ++p;
  }
  long digits = p - first;
  long fraction = 0;
  if (p < end && *p == '.') {
    const char* const fractionStart = ++p;
    while (p < end && (digit = static_cast<unsigned char>(*p) - unsigned('0')) < 10) {
      mantissa = mantissa * 10 + digit;
      ++p;
    }
    fraction = p - fractionStart;
    digits += fraction;
  }
  // 19 digits cannot overflow the mantissa; beyond 2^53 it may not be exact.
  if (p != end || digits == 0 || digits > 19 || fraction > 22 || mantissa > (std::uint64_t{1} << 53))
    return false;
  double value = static_cast<double>(mantissa);
  if (fraction > 0) value /= kPow10[fraction];
  out = negative ? -value : value;
  return true;
}

// A short integer without blanks ("0", "-1", "256"): at most nine characters,
// so it cannot overflow. False for anything else.
inline bool dxfParsePlainInt(std::string_view text, std::int64_t& out) {
  if (text.empty() || text.size() > 9) return false;
  std::size_t i = text[0] == '-';
  std::int64_t value = 0;
  bool plain = i < text.size();
  for (; i < text.size(); ++i) {
    const unsigned digit = static_cast<unsigned char>(text[i]) - unsigned('0');
    plain &= digit < 10;
    value = value * 10 + static_cast<std::int64_t>(digit);
  }
  if (!plain) return false;
  out = text[0] == '-' ? -value : value;
  return true;
}

// A handle of 1 to 16 hex digits without blanks; false for anything else.
inline bool dxfParsePlainHandle(std::string_view text, std::uint64_t& out) {
  struct Table {
    std::uint8_t value[256];
    constexpr Table() : value{} {
      for (int i = 0; i < 256; ++i) value[i] = 0xFF;
      for (int d = 0; d < 10; ++d) value['0' + d] = static_cast<std::uint8_t>(d);
      for (int d = 0; d < 6; ++d) {
        value['A' + d] = static_cast<std::uint8_t>(10 + d);
        value['a' + d] = static_cast<std::uint8_t>(10 + d);
      }
    }
  };
  static constexpr Table kHex;
  if (text.empty() || text.size() > 16) return false;
  std::uint64_t value = 0;
  unsigned bad = 0;
  for (char c : text) {
    const unsigned digit = kHex.value[static_cast<unsigned char>(c)];
    bad |= digit;
    value = value << 4 | (digit & 15);
  }
  if (bad & 0x80) return false;
  out = value;
  return true;
}

// Nearly every handle is plain hex digits: parsed here, the rest out of line.
inline std::optional<std::uint64_t> dxfParseHandle(std::string_view text) {
  if (std::uint64_t value; dxfParsePlainHandle(text, value)) return value;
  return dxfParseHandleSlow(text);
}

// Blanks (space, tab, CR) removed from both ends.
inline std::string_view dxfTrim(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t' || text[b] == '\r')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t' || text[e - 1] == '\r')) --e;
  return text.substr(b, e - b);
}

}  // namespace tabulon::dxf
