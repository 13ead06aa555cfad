#include "card/calc_number_format.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "card/att_set.h"

namespace {

KrmAttSet column(const wchar_t* stringType, int decimals) {
  KrmAttSet att;
  att.SetStringType(stringType);
  att.SetDecimalNum(decimals);
  return att;
}

TEST(CalcNumberFormat, FormatsByStringTypeAndDecimals) {
  struct Case {
    const wchar_t* type;
    int decimals;
    std::wstring text;
    std::wstring expected;
  };
  const std::vector<Case> cases = {
      {kKrmNumInt, 0, L"2.7", L"3"},          // rounds, does not cut
      {kKrmNumInt, 3, L"2.7", L"3"},          // decimals do not count for integers
      {kKrmNumInt, 0, L"-2.7", L"-3"},
      {kKrmNumInt, 0, L"2.5", L"2"},          // exact ties go to even, as printf does
      {kKrmNumInt, 0, L"3.5", L"4"},
      {kKrmNumDouble, 2, L"3.14159", L"3.14"},
      {kKrmNumDouble, 2, L"2.675", L"2.67"},  // 2.675 is stored just below the tie
      {kKrmNumDouble, 3, L"12", L"12.000"},
      {kKrmNumDouble, 0, L"12.5", L"12"},
      {kKrmNumDouble, -2, L"7.25", L"7"},     // negative decimals count as none
      {kKrmNumDouble, 2, L"1e3", L"1000.00"},
      {kKrmNumDouble, 2, L"12.5元", L"12.50"},
      {kKrmNumDouble, 2, L"abc", L"0.00"},     // no number reads as 0
      {kKrmNumDouble, 2, L"", L"0.00"},
      {kKrmNumInt, 0, L"1e20", L"100000000000000000000"},
      {kKrmNumStr, 2, L"2.7", L"2.7"},        // other types keep the text
      {kKrmNumStr, 0, L"abc", L"abc"},
      {L"", 2, L"3.14159", L"3.14159"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(FormatCellNumber(c.text, column(c.type, c.decimals)), c.expected)
        << testing::PrintToString(c.text) << " as " << testing::PrintToString(std::wstring(c.type)) << "/"
        << c.decimals;
  }
}

TEST(CalcNumberFormat, ReadsTheLeadingNumberOfAText) {
  struct Case {
    std::wstring text;
    std::optional<double> expected;
  };
  const std::vector<Case> cases = {
      {L"42", 42.0},        {L"  12.5kg", 12.5}, {L"-.5", -0.5},        {L"+3", 3.0},
      {L"1.5e", 1.5},       {L"2e-3", 0.002},    {L"7-1", 7.0},         {L"\t8\n", 8.0},
      {L"abc", std::nullopt}, {L"", std::nullopt}, {L".", std::nullopt}, {L"-", std::nullopt},
      {L"--1", std::nullopt}, {L"+-1", std::nullopt}, {L"e5", std::nullopt}, {L"1e999", std::nullopt},
      {L"inf", std::nullopt}, {L"nan", std::nullopt}, {L"１２", std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(KrmLeadingNumber(c.text), c.expected) << testing::PrintToString(c.text);
  }
  EXPECT_EQ(KrmTextToDouble(L"kg"), 0.0);
}

}  // namespace
