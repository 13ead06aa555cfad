#include "drawing/card_code.h"

#include <gtest/gtest.h>

#include <cwctype>

TEST(CardCode, KeepsTheLastEightCharactersOfTimeAndRandomPart) {
  std::tm t{};
  t.tm_mday = 25, t.tm_hour = 14, t.tm_min = 3, t.tm_sec = 9;
  EXPECT_EQ(FormatCardCode(t, 0), L"51403090");     // "25140309" "0"
  EXPECT_EQ(FormatCardCode(t, 998), L"40309998");   // "25140309" "998"
  EXPECT_EQ(FormatCardCode(t, 1041), L"14030942");  // 1041 % 999 = 42
  const std::wstring code = MakeCardCode();
  ASSERT_EQ(code.size(), 8u);
  for (wchar_t c : code) EXPECT_TRUE(std::iswdigit(c)) << code;
}
