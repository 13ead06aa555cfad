#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_tag_reader.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
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
      {"AutoCAD Binary DXF\r\n\x1a", "t.dxf:1: binary DXF where DXF text was expected"},
  };
  for (const auto& c : cases) {
    std::string what = errorOf(std::string_view(c.text.data(), c.text.size()));
    EXPECT_NE(what.find(c.expected), std::string::npos) << "got: " << what;
  }
}

namespace {

// The tags of a text read the plain way: split at LF, drop one CR before it, pair the
// lines up. The group code is the number on the first line of each pair.
std::vector<DxfTag> referenceTags(std::string_view text) {
  struct Line {
    std::size_t offset;
    std::string_view text;
  };
  std::vector<Line> lines;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t nl = text.find('\n', start);
    std::size_t stop = nl == std::string_view::npos ? text.size() : nl;
    std::string_view line = text.substr(start, stop - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back({start, line});
    start = nl == std::string_view::npos ? text.size() : nl + 1;
  }
  std::vector<DxfTag> tags;
  for (std::size_t i = 0; i + 1 < lines.size(); i += 2) {
    DxfTag tag;
    tag.code = std::stoi(std::string(lines[i].text));
    tag.value = lines[i + 1].text;
    tag.line = i + 1;
    tag.offset = lines[i].offset;
    tags.push_back(tag);
  }
  return tags;
}

void expectSameTag(const DxfTag& got, const DxfTag& want, const std::string& where) {
  EXPECT_EQ(got.code, want.code) << where;
  EXPECT_EQ(got.value, want.value) << where;
  EXPECT_EQ(got.line, want.line) << where;
  EXPECT_EQ(got.offset, want.offset) << where;
}

// A small random DXF-like text: group codes padded or not, LF, CR LF or both, values
// from empty to 60 bytes (blanks, tabs, a stray CR, bytes above 0x7F), the last line
// with or without its line end.
std::string randomDxfText(std::mt19937& rng) {
  static const char* const kCodes[] = {"0",   "  0", "   0", "1001", " -1", " 10", "10",  "330", "  8",
                                       "-5",  "010", "00",   "1071", " 999", "100", "10 ", "62",  "  1"};
  static const std::string kValueBytes = "ABCxyz0129 .-_\t^\\\r\xC3\xA9\xE4";
  auto below = [&rng](std::size_t n) { return static_cast<std::size_t>(rng() % n); };
  const int endings = static_cast<int>(below(3));  // LF, CR LF, mixed
  auto lineEnd = [&] { return endings == 0 || (endings == 2 && below(2) == 0) ? "\n" : "\r\n"; };
  std::string text;
  const std::size_t tags = 1 + below(10);
  std::string value;
  for (std::size_t t = 0; t < tags; ++t) {
    text += kCodes[below(std::size(kCodes))];
    text += lineEnd();
    const std::size_t length = below(5) < 3 ? below(7) : below(61);
    value.clear();
    for (std::size_t k = 0; k < length; ++k) value += kValueBytes[below(kValueBytes.size())];
    text += value;
    if (t + 1 < tags || value.empty() || below(2) == 0) text += lineEnd();
  }
  return text;
}

}  // namespace

TEST(DxfTagReader, RandomTextsReadLikeAPlainLineSplit) {
  std::mt19937 rng(4711);
  int shortTexts = 0, longTexts = 0;
  for (int round = 0; round < 3000; ++round) {
    const std::string text = randomDxfText(rng);
    (text.size() < 32 ? shortTexts : longTexts)++;
    const std::vector<DxfTag> want = referenceTags(text);
    const std::string where = "round " + std::to_string(round);

    // Straight through, with a look back now and then.
    DxfTagReader reader(text, "t.dxf");
    DxfTag tag;
    for (std::size_t i = 0; i < want.size(); ++i) {
      ASSERT_TRUE(reader.next(tag)) << where << " tag " << i;
      expectSameTag(tag, want[i], where + " tag " + std::to_string(i));
      if (rng() % 3 == 0) {
        reader.pushBack();
        if (rng() % 2 == 0) reader.pushBack();  // only one step back
        EXPECT_EQ(reader.position(), want[i].offset) << where;
        ASSERT_TRUE(reader.next(tag)) << where;
        expectSameTag(tag, want[i], where + " again " + std::to_string(i));
      }
    }
    EXPECT_FALSE(reader.next(tag)) << where;
    EXPECT_FALSE(reader.next(tag)) << where;
    EXPECT_EQ(reader.position(), text.size()) << where;

    // A reader over part of the text sees exactly the tags of that part.
    const std::size_t first = rng() % want.size();
    const std::size_t last = first + 1 + rng() % (want.size() - first);
    const std::size_t end = last < want.size() ? want[last].offset : std::string::npos;
    DxfTagReader part(text, "t.dxf", want[first].offset, end, want[first].line);
    for (std::size_t i = first; i < last; ++i) {
      ASSERT_TRUE(part.next(tag)) << where << " part tag " << i;
      expectSameTag(tag, want[i], where + " part tag " + std::to_string(i));
    }
    EXPECT_FALSE(part.next(tag)) << where;

    // Runs of tags into buffers of any size, mixed with single tags, read the same.
    DxfTagReader runs(text, "t.dxf");
    std::vector<DxfTag> got;
    while (got.size() < want.size() + 1) {
      DxfTag buffer[4];
      bool atZero = false;
      const std::size_t n = runs.readRun(buffer, 1 + rng() % 4, atZero);
      got.insert(got.end(), buffer, buffer + n);
      if (n > 0) {
        EXPECT_EQ(atZero, buffer[n - 1].code == 0) << where;
      }
      if (n == 0 || rng() % 2 == 0) {
        if (!runs.next(tag)) break;
        got.push_back(tag);
      }
    }
    ASSERT_EQ(got.size(), want.size()) << where;
    for (std::size_t i = 0; i < want.size(); ++i) expectSameTag(got[i], want[i], where + " run tag " + std::to_string(i));
  }
  // Both kinds of text occurred: those too short for a 32-byte look ahead and longer ones.
  EXPECT_GT(shortTexts, 100);
  EXPECT_GT(longTexts, 1000);
}

TEST(DxfTagReader, ErrorsAfterManyTagsNameTheirOwnLine) {
  // Enough well-formed tags before the fault that they are read ahead 32 bytes at a time.
  const std::string lead = "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\nA somewhat longer layer name\n";
  struct Case {
    std::string tail;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {"abc\n1\n  0\nEOF\n", "t.dxf:9: expected a group code, found \"abc\""},
      {"1 0\nvalue\n  0\nEOF\n", "t.dxf:9: expected a group code, found \"1 0\""},
      {"+10\nvalue\n  0\nEOF\n", "t.dxf:9: expected a group code"},
      {"5000\nx\n  0\nENDSEC\n  0\nEOF\n", "t.dxf:9: group code 5000: group code out of range"},
      {" -6\nx\n  0\nENDSEC\n  0\nEOF\n", "t.dxf:9: group code -6: group code out of range"},
      {"\n  8\nLAYER\n  0\nEOF\n", "t.dxf:9: expected a group code, found \"\""},
      {" 10\n", "t.dxf:9: group code 10: file ends after the group code, its value is missing"},
      {" 10\r\n", "t.dxf:9: group code 10: file ends after the group code"},
  };
  for (const auto& c : cases) {
    std::string what = errorOf(lead + c.tail);
    EXPECT_NE(what.find(c.expected), std::string::npos) << "tail: " << c.tail << " got: " << what;
  }
}

TEST(DxfTagReader, RealFilesReadLikeAPlainLineSplit) {
  // Unpadded codes with LF, padded codes with CR LF, GBK text, long values.
  for (const char* name : {"librecad_sheet_A4_1_draw_dxflib.dxf", "hanochhu_Drawing3.dxf",
                           "sdcad_Project3_R2000_gbk.dxf", "zcad_text_error_example.dxf"}) {
    std::ifstream in(tabulon::test::fixturesDir() / name, std::ios::binary);
    ASSERT_TRUE(in) << name;
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::vector<DxfTag> want = referenceTags(text);
    const std::vector<DxfTag> got = readAll(text);
    ASSERT_EQ(got.size(), want.size()) << name;
    ASSERT_GT(got.size(), 1000u) << name;
    for (std::size_t i = 0; i < got.size(); ++i) {
      ASSERT_EQ(got[i].code, want[i].code) << name << " tag " << i;
      ASSERT_EQ(got[i].value, want[i].value) << name << " tag " << i;
      ASSERT_EQ(got[i].line, want[i].line) << name << " tag " << i;
      ASSERT_EQ(got[i].offset, want[i].offset) << name << " tag " << i;
    }
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

// A range that ends before the position the reader starts at (a byte order mark
// skipped past a short range, or begin after end) holds no tags.
TEST(DxfTagReader, RangeEndingBeforeItsStartHoldsNoTags) {
  const std::string text = "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\n0\n  0\nENDSEC\n";
  struct Case {
    std::string text;
    std::size_t begin, end;
  };
  for (const Case& c : {Case{"\xEF\xBB\xBF" + text, 0, 2}, Case{text, 12, 4}, Case{text + text, 40, 10}}) {
    DxfTagReader reader(c.text, "t.dxf", c.begin, c.end);
    DxfTag tag;
    EXPECT_FALSE(reader.next(tag)) << c.begin << ".." << c.end;
  }
}

// Group codes of many digits (longer than any valid one) are refused, wherever the
// reader meets them, without overflowing.
TEST(DxfTagReader, OverlongGroupCodesAreRefused) {
  for (const std::string code : {"1234567", "99999999999999999999", "  0000001071", "-12345678901"}) {
    const std::string text = "  0\nSECTION\n" + code + "\nvalue\n  0\nENDSEC\n  0\nEOF\n";
    EXPECT_THROW(readAll(text), DxfError) << code;
  }
}
