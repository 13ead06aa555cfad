#include "card/calc_number_format.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "card/att_set.h"

namespace {

TEST(CalcNumberFormat, FormatsByStringTypeAndDecimals) {
  struct Case {
    const wchar_t* type;
    int decimals;
    const wchar_t* text;
    const wchar_t* expected;
  };
  const std::vector<Case> cases = {
      {kKrmNumInt, 0, L"2.7", L"3"},          {kKrmNumInt, 3, L"2.7", L"3"},  // integers ignore decimals
      {kKrmNumInt, 0, L"-2.7", L"-3"},        {kKrmNumInt, 0, L"2.5", L"2"},  // ties to even, as printf
      {kKrmNumInt, 0, L"3.5", L"4"},          {kKrmNumInt, 0, L"1e20", L"100000000000000000000"},
      {kKrmNumDouble, 2, L"3.14159", L"3.14"}, {kKrmNumDouble, 2, L"2.675", L"2.67"},  // stored below the tie
      {kKrmNumDouble, 3, L"12", L"12.000"},    {kKrmNumDouble, -2, L"7.25", L"7"},
      {kKrmNumDouble, 2, L"12.5元", L"12.50"}, {kKrmNumDouble, 2, L"abc", L"0.00"},    // no number reads 0
      {kKrmNumDouble, 2, L"", L"0.00"},        {kKrmNumStr, 2, L"2.7", L"2.7"},        // other types keep
      {kKrmNumStr, 0, L"abc", L"abc"},         {L"", 2, L"3.14159", L"3.14159"},
  };
  for (const Case& c : cases) {
    KrmAttSet att;
    att.SetStringType(c.type);
    att.SetDecimalNum(c.decimals);
    EXPECT_EQ(FormatCellNumber(c.text, att), c.expected)
        << testing::PrintToString(std::wstring(c.text)) << " " << testing::PrintToString(std::wstring(c.type));
  }
}

TEST(CalcNumberFormat, ReadsTheLeadingNumberOfAText) {
  const std::vector<std::pair<std::wstring, std::optional<double>>> cases = {
      {L"42", 42.0},  {L"  12.5kg", 12.5}, {L"-.5", -0.5}, {L"+3", 3.0},   {L"1.5e", 1.5},
      {L"2e-3", 0.002}, {L"7-1", 7.0},     {L"\t8\n", 8.0}, {L"abc", std::nullopt}, {L"", std::nullopt},
      {L".", std::nullopt}, {L"--1", std::nullopt}, {L"e5", std::nullopt}, {L"1e999", std::nullopt},
      {L"inf", std::nullopt}, {L"nan", std::nullopt}, {L"１２", std::nullopt}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(KrmLeadingNumber(text), expected) << testing::PrintToString(text);
  }
  EXPECT_EQ(KrmTextToDouble(L"kg"), 0.0);
}

}  // namespace
