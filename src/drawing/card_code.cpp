#include "drawing/card_code.h"

#include <chrono>
#include <cstdio>
#include <random>

std::wstring FormatCardCode(const std::tm& localTime, unsigned random) {
  wchar_t text[32];
  std::swprintf(text, sizeof text / sizeof text[0], L"%02d%02d%02d%02d%u", localTime.tm_mday, localTime.tm_hour,
                localTime.tm_min, localTime.tm_sec, random % 999u);
  std::wstring code(text);
  if (code.size() < 8) return std::wstring(8 - code.size(), L'0') + code;
  return code.substr(code.size() - 8);
}

std::wstring MakeCardCode() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  // Seeded from the clock at its finest resolution, so that two codes made within the
  // same second still differ in the random part almost always.
  std::mt19937 generator(static_cast<std::mt19937::result_type>(now.time_since_epoch().count()));
  return FormatCardCode(local, static_cast<unsigned>(generator()));
}
