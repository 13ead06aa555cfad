#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_tag_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace tabulon::dxf;
using namespace std::string_literals;

namespace {

std::vector<DxfTag> readAll(std::string_view text) {
  DxfTagReader reader(text, "t.dxf");
  std::vector<DxfTag> tags;
  DxfTag tag;
  while (reader.next(tag)) tags.push_back(tag);
  return tags;
}

std::string errorOf(std::string_view text) {
  try {
    readAll(text);
  } catch (const DxfError& e) {
    return e.what();
  }
  return "no error";
}

}  // namespace

TEST(DxfTagReader, AcceptsLfCrlfAndBlanksAroundGroupCodes) {
  for (std::string text : {std::string("  0\nLINE\n 10\n1.50\n"), std::string("0\r\nLINE\r\n10 \r\n1.50\r\n"),
                           std::string("\t0\t\nLINE\n   10\n1.50")}) {
    auto tags = readAll(text);
    ASSERT_EQ(tags.size(), 2u) << text;
    EXPECT_EQ(tags[0].code, 0);
    EXPECT_EQ(tags[0].value, "LINE");
    EXPECT_EQ(tags[1].code, 10);
    EXPECT_EQ(tags[1].value, "1.50");  // the original text, not a reformatted number
    EXPECT_EQ(tags[1].line, 3u);
  }
}

TEST(DxfTagReader, KeepsStringValuesVerbatim) {
  auto tags = readAll("  1\n  leading and trailing  \n  1\n\n");
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(tags[0].value, "  leading and trailing  ");
  EXPECT_EQ(tags[1].value, "");
}

TEST(DxfTagReader, RecordsOffsetsAndSkipsByteOrderMark) {
  std::string text = "\xEF\xBB\xBF  0\nSECTION\n  2\nHEADER\n";
  DxfTagReader reader(text, "t.dxf");
  DxfTag tag;
  ASSERT_TRUE(reader.next(tag));
  EXPECT_EQ(tag.offset, 3u);
  ASSERT_TRUE(reader.next(tag));
  EXPECT_EQ(text.substr(tag.offset, 3), "  2");
  EXPECT_FALSE(reader.next(tag));
}

TEST(DxfTagReader, PushBackRereadsTheLastTag) {
  DxfTagReader reader("0\nA\n0\nB\n", "t.dxf");
  DxfTag tag;
  ASSERT_TRUE(reader.next(tag));
  ASSERT_TRUE(reader.next(tag));
  reader.pushBack();
  ASSERT_TRUE(reader.next(tag));
  EXPECT_EQ(tag.value, "B");
  EXPECT_EQ(tag.line, 3u);
}

TEST(DxfTagReader, TrailingBlankLinesEndTheFile) {
  EXPECT_EQ(readAll("0\nEOF\n\n\n").size(), 1u);
}

TEST(DxfTagReader, BadInputNamesFileLineAndGroupCode) {
  struct Case {
    std::string text;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {"  0\nLINE\nabc\n1\n", "t.dxf:3: expected a group code, found \"abc\""},
      {"  0\nLINE\n 10\n", "t.dxf:3: group code 10: file ends after the group code, its value is missing"},
      {"  0\nLINE\n 10", "t.dxf:3: group code 10: file ends after the group code"},
      {"  0\nLINE\n5000\nx\n", "t.dxf:3: group code 5000: group code out of range"},
      {"  0\nLINE\n\x01\x02\x00\x03\n1\n"s, "t.dxf:3: binary data where a group code was expected"},
      {"  0\nLINE\n\n  8\n", "t.dxf:3: expected a group code, found \"\""},
      {"AutoCAD Binary DXF\r\n\x1a", "t.dxf:1: binary DXF is not supported"},
  };
  for (const auto& c : cases) {
    std::string what = errorOf(std::string_view(c.text.data(), c.text.size()));
    EXPECT_NE(what.find(c.expected), std::string::npos) << "got: " << what;
  }
}

TEST(DxfTag, ParsesNumbersAndHandlesLeniently) {
  EXPECT_EQ(dxfParseDouble(" 1.5 "), 1.5);
  EXPECT_EQ(dxfParseDouble("+2e3"), 2000.0);
  EXPECT_EQ(dxfParseDouble("1.#QNAN"), std::nullopt);
  EXPECT_EQ(dxfParseDouble(""), std::nullopt);
  EXPECT_EQ(dxfParseInt("     0"), 0);
  EXPECT_EQ(dxfParseInt("-3"), -3);
  EXPECT_EQ(dxfParseInt("7.0"), 7);
  EXPECT_EQ(dxfParseInt("7.5"), std::nullopt);
  EXPECT_EQ(dxfParseHandle("1f"), 0x1Fu);
  EXPECT_EQ(dxfParseHandle("FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFull);
  EXPECT_EQ(dxfParseHandle("12345678901234567"), std::nullopt);
  EXPECT_EQ(dxfParseHandle("G1"), std::nullopt);
}

TEST(DxfTag, ValueTypesFollowGroupCodeRanges) {
  struct Case {
    int code;
    DxfValueType type;
  };
  for (auto c : {Case{0, DxfValueType::String}, Case{10, DxfValueType::Double}, Case{62, DxfValueType::Int16},
                 Case{90, DxfValueType::Int32}, Case{105, DxfValueType::Handle}, Case{160, DxfValueType::Int64},
                 Case{290, DxfValueType::Bool}, Case{310, DxfValueType::Binary}, Case{330, DxfValueType::Handle},
                 Case{370, DxfValueType::Int16}, Case{420, DxfValueType::Int32}, Case{999, DxfValueType::Comment},
                 Case{1004, DxfValueType::Binary}, Case{1005, DxfValueType::Handle},
                 Case{1010, DxfValueType::Double}, Case{1071, DxfValueType::Int32}})
    EXPECT_EQ(dxfValueType(c.code), c.type) << c.code;
  EXPECT_TRUE(dxfIsPointCode(10));
  EXPECT_TRUE(dxfIsPointCode(1011));
  EXPECT_FALSE(dxfIsPointCode(20));
  EXPECT_FALSE(dxfIsPointCode(40));
}
