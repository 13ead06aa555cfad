#include "drawing/card_code.h"

#include <gtest/gtest.h>

#include <cwctype>

namespace {

std::tm Moment(int day, int hour, int minute, int second) {
  std::tm t{};
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return t;
}

TEST(CardCode, KeepsTheLastEightCharactersOfTimeAndRandomPart) {
  struct Case {
    std::tm time;
    unsigned random;
    const wchar_t* code;
  } cases[] = {
      {Moment(25, 14, 3, 9), 0, L"51403090"},       // "251403090": the day's first digit goes
      {Moment(5, 8, 0, 0), 998, L"80000998"},       // "05080000998"
      {Moment(31, 23, 59, 59), 999, L"12359590"},   // 999 % 999 == 0
      {Moment(1, 0, 0, 1), 999 + 42, L"00000142"},  // "0100000142"
  };
  for (const Case& c : cases) EXPECT_EQ(FormatCardCode(c.time, c.random), c.code) << c.code;
}

TEST(CardCode, NewCodeHasEightDigits) {
  const std::wstring code = MakeCardCode();
  ASSERT_EQ(code.size(), 8u);
  for (wchar_t c : code) EXPECT_TRUE(std::iswdigit(c)) << code;
}

}  // namespace
