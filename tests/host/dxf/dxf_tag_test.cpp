// Numbers and handles as DXF writes them: reals bit for bit as the standard library
// reads them, integers and hexadecimal handles with their edge cases.
#include "host/dxf/dxf_tag.h"

#include <gtest/gtest.h>

#include <bit>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace tabulon::dxf;

namespace {

// What std::from_chars makes of a value, blanks around it and a leading '+' allowed;
// nullopt when it fails, stops early or gives no finite number.
std::optional<double> fromCharsReading(std::string_view text) {
  text = dxfTrim(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double value = 0;
  auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || ec != std::errc() || ptr != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

void expectSameReal(const std::string& text) {
  const std::optional<double> got = dxfParseDouble(text);
  const std::optional<double> want = fromCharsReading(text);
  ASSERT_EQ(got.has_value(), want.has_value()) << '"' << text << '"';
  if (got) {
    ASSERT_EQ(std::bit_cast<std::uint64_t>(*got), std::bit_cast<std::uint64_t>(*want))
        << '"' << text << "\" gave " << *got << " instead of " << *want;
  }
}

std::string digits(std::mt19937_64& rng, int count) {
  std::string out;
  for (int i = 0; i < count; ++i) out += static_cast<char>('0' + rng() % 10);
  return out;
}

}  // namespace

TEST(DxfTag, RealsAreReadBitForBitAsTheStandardLibraryReadsThem) {
  const std::vector<std::string> fixed = {
      "0", "-0", "0.0", "-0.0", "-0.", ".5", "-.5", "5.", "-5.", "+.5", "+7", "00012.5000", "-0000.25",
      "0.1", "0.2", "0.3", "2.675", "1.005", "4.35", "0.07", "-12.75", "6740",
      "999999999999999", "999999999999999.9", "99999999999999.99", "0.999999999999999", "123456789012345",
      "1234567890123456", "12345678.90123456", "123456789012345.6", "1.23456789012345", "1.234567890123456",
      "9007199254740993", "0.000000000000001", "0.0000000000000001", "3.141592653589793238462643",
      "0.30000000000000004", "1.7976931348623157", "000000000000000000000000000001.5",
      "9007199254740992", "9007199254740993", "-9007199254740992.5", "900719925474099.3", "9999999999999999999",
      "99999999999999999999", "18446744073709551617", "1.0000000000000000000001", "0.0000000000000000000001",
      "0.00000000000000000000001",
      "1e5", "1E-5", "-2.5e+3", "1.5e308", "2.2250738585072014e-308", "5e-324", "1e400", "-1e400", "1e-400",
      "", " ", "\t", "+", "-", ".", "-.", "+.", "+-5", "-+5", "--1", "1.2.3", "1,5", "12a", "0x1A", "1e",
      "e5", ".e5", "1 2", "inf", "-inf", "nan", "1.#QNAN", "1.#INF", " 7.25 ", "\t-3.5\r", "  -0.0  ",
  };
  for (const std::string& text : fixed) expectSameReal(text);

  // Generated decimals around the limits of the quick path (mantissas near 2^53,
  // 19 digits, fractions of 22 places), with and without exponents.
  std::mt19937_64 rng(1234);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    if (rng() % 3 == 0) text += '-';
    const int whole = static_cast<int>(rng() % (rng() % 4 == 0 ? 21 : 12));
    const int zeros = rng() % 4 == 0 ? static_cast<int>(rng() % 4) : 0;
    text += std::string(static_cast<std::size_t>(zeros), '0') + digits(rng, whole);
    const int fraction = static_cast<int>(rng() % 25);
    if (fraction > 0 || rng() % 4 == 0) text += '.' + digits(rng, fraction);
    if (rng() % 10 == 0) text += (rng() % 2 ? "e" : "E-") + std::to_string(rng() % 40);
    expectSameReal(text);
  }
}

TEST(DxfTag, IntegersOfAnyLengthAndWholeReals) {
  struct Case {
    std::string text;
    std::optional<std::int64_t> value;
  };
  const std::vector<Case> cases = {
      {"0", 0},
      {"  42  ", 42},
      {"\t-7\r", -7},
      {"+5", 5},
      {"-0", 0},
      {"000000012", 12},
      {"0000000012", 12},
      {"999999999", 999999999},
      {"1234567890", 1234567890},
      {"-12345678", -12345678},
      {"-123456789", -123456789},
      {"-1234567890", -1234567890},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
      {"1.0", 1},
      {" -3.000 ", -3},
      {"1e3", 1000},
      {"2.5", std::nullopt},
      {"9223372036854775808", std::nullopt},
      {"", std::nullopt},
      {"   ", std::nullopt},
      {"-", std::nullopt},
      {"+", std::nullopt},
      {"--1", std::nullopt},
      {"12a", std::nullopt},
      {"1 2", std::nullopt},
      {"0x10", std::nullopt},
      {"-1-", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(dxfParseInt(c.text), c.value) << '"' << c.text << '"';

  // Any 64-bit value as text, with blanks around it now and then, reads back.
  std::mt19937_64 rng(99);
  for (int i = 0; i < 5000; ++i) {
    const auto value = static_cast<std::int64_t>(rng() >> (1 + rng() % 63));
    const std::int64_t signedValue = rng() % 2 ? value : -value;
    std::string text = std::to_string(signedValue);
    if (rng() % 4 == 0) text = " " + text + "\t";
    ASSERT_EQ(dxfParseInt(text), signedValue) << '"' << text << '"';
  }
}

TEST(DxfTag, HandlesAreUpToSixteenHexDigitsInEitherCase) {
  struct Case {
    std::string text;
    std::optional<std::uint64_t> value;
  };
  const std::vector<Case> cases = {
      {"0", 0},
      {"1f", 0x1F},
      {"1F", 0x1F},
      {"aBcDeF", 0xABCDEF},
      {" 2A\t", 0x2A},
      {"\r330\r", 0x330},
      {"FFFFFFFFFFFFFFFF", 0xFFFFFFFFFFFFFFFFull},
      {"ffffffffffffffff", 0xFFFFFFFFFFFFFFFFull},
      {"0000000000000001", 1},
      {"  0000000000000001  ", 1},
      {"00000000000000001", std::nullopt},
      {"12345678901234567", std::nullopt},
      {"G1", std::nullopt},
      {"1G", std::nullopt},
      {"g", std::nullopt},
      {"@", std::nullopt},
      {"`", std::nullopt},
      {"/", std::nullopt},
      {":", std::nullopt},
      {"", std::nullopt},
      {"  ", std::nullopt},
      {"-1", std::nullopt},
      {"+1", std::nullopt},
      {"0x1F", std::nullopt},
      {"1 F", std::nullopt},
      {"1.0", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(dxfParseHandle(c.text), c.value) << '"' << c.text << '"';

  // Any 64-bit value in hexadecimal, mixed case, padded with zeros to at most 16 digits.
  std::mt19937_64 rng(7);
  for (int i = 0; i < 5000; ++i) {
    const std::uint64_t value = rng() >> (rng() % 64);
    char buffer[17];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value, 16);
    ASSERT_EQ(ec, std::errc());
    std::string text(buffer, end);
    for (char& ch : text)
      if (rng() % 2) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    text = std::string(rng() % (17 - text.size()), '0') + text;
    ASSERT_EQ(dxfParseHandle(text), value) << text;
  }
}
