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


std::optional<double> dxfParseDouble(std::string_view text) {
  text = dxfTrim(text);
  if (text.empty()) return std::nullopt;
  if (double quick; dxfParsePlainDecimal(text, quick)) return quick;
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
  if (std::int64_t quick; dxfParsePlainInt(text, quick)) return quick;
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

std::optional<std::uint64_t> dxfParseHandleSlow(std::string_view text) {
  text = dxfTrim(text);
  if (std::uint64_t trimmed; dxfParsePlainHandle(text, trimmed)) return trimmed;
  return std::nullopt;
}

}  // namespace tabulon::dxf
