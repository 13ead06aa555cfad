// Typed tag values as the entity readers take them: the quick paths for the
// usual numbers agree with the general parsers, and bad values fail naming
// their line and group code.
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_read_context.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <optional>
#include <string>

using namespace tabulon::dxf;

namespace {

DxfTag tagOf(int code, std::string_view value) {
  DxfTag tag;
  tag.code = code;
  tag.value = value;
  tag.line = 41;
  return tag;
}

struct Fixture {
  DxfSource source{"values.dxf", ""};
  DxfAuditReport audit;
  DxfReadContext ctx{source, audit};
};

}  // namespace

TEST(DxfReadContext, IntegersReadLikeTheGeneralParser) {
  Fixture f;
  for (const char* text : {"0", "-1", "256", "000012", "999999999", "-99999999", "1234567890", "-2147483648",
                           "2147483647", " 70", "70 ", "+5", "7.0", "-3.0", "\t1\r"}) {
    const std::optional<std::int64_t> want = dxfParseInt(text);
    ASSERT_TRUE(want) << text;
    EXPECT_EQ(f.ctx.integer(tagOf(70, text)), *want) << text;
  }
}

TEST(DxfReadContext, RealsReadBitForBitLikeTheGeneralParser) {
  Fixture f;
  for (const char* text : {"0.0", "-0.0", "20.0", "2.25", ".5", "5.", "-12.75", " 1.5 ", "1e3", "+2.5",
                           "9007199254740993", "0.1234567890123456789", "123456789012345678901.5"}) {
    const std::optional<double> want = dxfParseDouble(text);
    ASSERT_TRUE(want) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(f.ctx.real(tagOf(10, text))), std::bit_cast<std::uint64_t>(*want))
        << text;
  }
}

TEST(DxfReadContext, BadNumbersFailNamingLineAndGroupCode) {
  Fixture f;
  struct Case {
    bool integer;
    const char* value;
    const char* message;
  };
  for (const Case& c : {Case{true, "", "not an integer"}, Case{true, "-", "not an integer"},
                        Case{true, "12a", "not an integer: \"12a\""}, Case{true, "99999999999", "not an integer"},
                        Case{true, "1.5", "not an integer"}, Case{false, "", "not a number"},
                        Case{false, "-", "not a number"}, Case{false, "1.2.3", "not a number: \"1.2.3\""},
                        Case{false, "nan", "not a number"}, Case{false, "1e400", "not a number"}}) {
    const int code = c.integer ? 70 : 40;
    try {
      if (c.integer) f.ctx.integer(tagOf(code, c.value));
      else f.ctx.real(tagOf(code, c.value));
      ADD_FAILURE() << "accepted \"" << c.value << '"';
    } catch (const DxfError& e) {
      const std::string what = e.what();
      EXPECT_NE(what.find("values.dxf:41"), std::string::npos) << what;
      EXPECT_NE(what.find("group code " + std::to_string(code)), std::string::npos) << what;
      EXPECT_NE(what.find(c.message), std::string::npos) << what;
    }
  }
}

TEST(DxfReadContext, MalformedHandlesAreReportedAndReadAsNone) {
  Fixture f;
  EXPECT_EQ(f.ctx.handle(tagOf(5, "1A")), 0x1Au);
  EXPECT_EQ(f.ctx.handle(tagOf(330, " ffFF ")), 0xFFFFu);
  EXPECT_EQ(f.ctx.handle(tagOf(5, "FFFFFFFFFFFFFFFF")), UINT64_MAX);
  EXPECT_TRUE(f.audit.empty());
  for (const char* bad : {"", "G1", "1 2", "-1", "0x1A", "10000000000000000"}) EXPECT_EQ(f.ctx.handle(tagOf(5, bad)), 0u) << bad;
  EXPECT_EQ(f.audit.size(), 6u);
}
