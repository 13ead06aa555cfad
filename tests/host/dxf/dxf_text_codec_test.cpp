#include "host/dxf/dxf_encoding_choice.h"
#include "host/dxf/dxf_text_codec.h"

#include <gtest/gtest.h>

using namespace tabulon::dxf;

TEST(DxfTextCodec, DecodesCodePagesAndUtf8) {
  struct Case {
    const char* codePage;
    std::string bytes;
    std::wstring text;
  };
  const std::vector<Case> cases = {
      {"ANSI_936", "\xD6\xD0\xCE\xC4 A", L"中文 A"},
      {"ansi_936", "\xB9\xA4\xD0\xF2\xBF\xA8", L"工序卡"},
      {"UTF-8", "\xE4\xB8\xAD\xE6\x96\x87", L"中文"},
      {"ANSI_1251", "\xCF\xF0\xE8\xE2\xE5\xF2", L"Привет"},
      {"ANSI_1252", "caf\xE9 \x80", L"café €"},
      {"dos850", "\x82", L"é"},
      {"ANSI_950", "\xA4\xA4", L"中"},
      {"ANSI_932", "\x93\xFA", L"日"},
  };
  for (const auto& c : cases) {
    DxfTextCodec codec(c.codePage);
    EXPECT_TRUE(codec.knownCodePage()) << c.codePage;
    EXPECT_EQ(codec.decode(c.bytes), c.text) << c.codePage;
    EXPECT_EQ(codec.encode(c.text), c.bytes) << c.codePage;
  }
}

TEST(DxfTextCodec, DecodesUnicodeAndMifEscapes) {
  DxfTextCodec codec("ANSI_1251");
  EXPECT_EQ(codec.decode("\\U+7BA1\\U+4E95 x"), L"管井 x");
  EXPECT_EQ(codec.decode("\\U+d83d\\U+DE00"), L"\U0001F600");
  EXPECT_EQ(codec.decode("\\M+5D6D0"), L"中");  // GBK bytes D6 D0
  // Malformed escapes stay as they are (one writer emitted runs like this).
  EXPECT_EQ(codec.decode("041a\\U+043e\\U+043"), L"041aо\\U+043");
  EXPECT_EQ(codec.decode("\\U+ZZZZ"), L"\\U+ZZZZ");
}

// UTF-8 text in one pass: characters of one to four bytes, each byte of a bad sequence
// as U+FFFD, then the caret forms of line breaks, then \U+ and \M+ escapes.
TEST(DxfTextCodec, Utf8DecodesCharactersCaretsAndEscapesTogether) {
  struct Case {
    std::string bytes;
    std::wstring text;
  };
  using namespace std::string_literals;
  const std::vector<Case> cases = {
      {"", L""},
      {"Plain ASCII 0-9 ~", L"Plain ASCII 0-9 ~"},
      {"a\0b"s, L"a\0b"s},
      {"\xC3\xA9t\xC3\xA9", L"été"},
      {"\xE4\xB8\xAD\xE6\x96\x87", L"中文"},
      {"\xF0\x9F\x98\x80!", L"\U0001F600!"},
      {"\xEF\xBF\xBD", L"\uFFFD"},
      // Bad bytes: stray continuation, bad lead, overlong, surrogate, past U+10FFFF, cut short.
      {"a\xFF" "b", L"a\uFFFDb"},
      {"\x80\xBF", L"\uFFFD\uFFFD"},
      {"\xC0\xAF", L"\uFFFD\uFFFD"},
      {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},
      {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF5\x80", L"\uFFFD\uFFFD"},
      {"\xE4\xB8", L"\uFFFD\uFFFD"},
      {"x\xC2", L"x\uFFFD"},
      {"\xE4\xB8" "a", L"\uFFFD\uFFFDa"},
      {"\xE4^J", L"\uFFFD\n"},
      // Carets.
      {"a^Jb^Mc^Id", L"a\nb\rc\td"},
      {"^j^m^i", L"^j^m^i"},
      {"^^J", L"^\n"},
      {"x^", L"x^"},
      {"^ A", L"^ A"},
      {"\\S1^2;", L"\\S1^2;"},
      {"\xE4\xB8\xAD^J\xE6\x96\x87", L"中\n文"},
      // Escapes.
      {"\\U+4E2D\\U+6587", L"中文"},
      {"\\u+4e2d", L"\\u+4e2d"},
      {"\\U+d83d\\U+DE00", L"\U0001F600"},
      {"\\U+00B0C", L"°C"},
      {"\\M+5D6D0", L"中"},
      {"\\M+193FA", L"日"},
      {"\\U+12", L"\\U+12"},
      {"\\U+ZZZZ", L"\\U+ZZZZ"},
      {"\\", L"\\"},
      {"C:\\path\\file", L"C:\\path\\file"},
      // Together; an escaped caret is text, not a line break.
      {"\\U+005EJ", L"^J"},
      {"^J\\U+000A", L"\n\n"},
      {"\xE6\xB8\xA9\xE5\xBA\xA6^J\\U+00B0C", L"温度\n°C"},
      {"\xFF\\U+0041^I", L"\uFFFDA\t"},
  };
  DxfTextCodec codec("UTF-8");
  for (const Case& c : cases) {
    std::string hex;
    for (unsigned char b : c.bytes) hex += " " + std::to_string(b);
    EXPECT_EQ(codec.decode(c.bytes), c.text) << "bytes:" << hex;
  }
  // A long value, so that nothing depends on short-string storage.
  std::string bytes;
  std::wstring text;
  for (int i = 0; i < 500; ++i) {
    bytes += "\xE4\xB8\xAD^J\xFF";
    text += L"中\n\uFFFD";
  }
  EXPECT_EQ(codec.decode(bytes), text);
}

TEST(DxfTextCodec, GbkDecodesChineseWithCaretsAndEscapes) {
  DxfTextCodec gbk("ANSI_936");
  EXPECT_EQ(gbk.decode("\xB9\xA4\xD0\xF2\xBF\xA8^J\\U+0041"), L"工序卡\nA");
  // A trail byte 0x5C is part of its character, not the start of an escape.
  EXPECT_EQ(gbk.decode("\x95\x5CU+0041"), L"\u661EU+0041");
}

TEST(DxfTextCodec, EscapesWhatTheCodePageCannotHold) {
  EXPECT_EQ(DxfTextCodec("ANSI_1252").encode(L"a中b"), "a\\U+4E2Db");
  EXPECT_EQ(DxfTextCodec("ANSI_936").encode(L"中\u20AC"), "\xD6\xD0\x80");
  EXPECT_EQ(DxfTextCodec("ANSI_1251").encode(L"\U0001F600"), "\\U+D83D\\U+DE00");
  EXPECT_EQ(DxfTextCodec("UTF-8").encode(L"中\U0001F600"), "\xE4\xB8\xAD\xF0\x9F\x98\x80");
  // Escaped text decodes back to what was encoded.
  DxfTextCodec latin("ANSI_1252");
  std::wstring text = L"温度 \U0001F600 ok";
  EXPECT_EQ(latin.decode(latin.encode(text)), text);
}

TEST(DxfTextCodec, LineBreaksTravelInCaretFormBothWays) {
  DxfTextCodec codec("UTF-8");
  EXPECT_EQ(codec.encode(L"a\nb\r\tc"), "a^Jb^M\tc");
  EXPECT_EQ(codec.decode("a^Jb^M^Ic"), L"a\nb\r\tc");
  // Carets that are not line breaks, such as MText stacking, stay as written.
  EXPECT_EQ(codec.decode("\\S1^2;x^"), L"\\S1^2;x^");
}

TEST(DxfTextCodec, UnknownCodePageFallsBackToAnsi1252) {
  DxfTextCodec codec("KLINGON_1");
  EXPECT_FALSE(codec.knownCodePage());
  EXPECT_EQ(codec.codePage(), "ANSI_1252");
  EXPECT_EQ(codec.decode("\xE9"), L"é");
}

TEST(DxfTextCodec, InvalidBytesDecodeWithoutLosingTheRest) {
  EXPECT_EQ(DxfTextCodec("UTF-8").decode("a\xFF" "b"), L"a\uFFFDb");
  EXPECT_EQ(DxfTextCodec("ANSI_936").decode("a\xFF" "b"), L"a\uFFFDb");
}

TEST(DxfTextCodec, TranscodesBetweenEncodingsKeepingEscapes) {
  DxfTextCodec gbk("ANSI_936");
  DxfTextCodec utf8("UTF-8");
  // GBK trail bytes may be a backslash (0x5C): the escape scan must not split them.
  std::string gbkBytes = "\xD6\xD0\\U+4E2D\x95\x5C";
  std::string converted = utf8.transcode(gbkBytes, gbk);
  EXPECT_EQ(converted, "\xE4\xB8\xAD\\U+4E2D\xE6\x98\x9E");
  EXPECT_EQ(gbk.transcode(converted, utf8), gbkBytes);
}

TEST(DxfTextCodec, ValidatesUtf8AndGbk) {
  EXPECT_TRUE(dxfIsValidUtf8("plain \xE4\xB8\xAD \xEF\xBF\xBD"));
  EXPECT_FALSE(dxfIsValidUtf8("\xC0\x80"));
  EXPECT_FALSE(dxfIsValidUtf8("\xED\xA0\x80"));  // a surrogate
  EXPECT_FALSE(dxfIsValidUtf8("\xE4\xB8"));
  EXPECT_TRUE(dxfIsValidGbk("\xD6\xD0\xCE\xC4"));
  EXPECT_FALSE(dxfIsValidGbk("\xD6"));
  EXPECT_FALSE(dxfIsValidGbk("\xD6\x20"));
}

TEST(DxfEncodingChoice, FollowsVersionHeaderAndBytes) {
  struct Case {
    DxfVersion version;
    std::optional<std::string_view> header;
    std::string bytes;
    std::string expected;
  };
  const std::string gbk = "\xD6\xD0\xCE\xC4";
  const std::string utf8 = "\xE4\xB8\xAD";
  const std::vector<Case> cases = {
      {DxfVersion::R2018, "ANSI_936", gbk, "UTF-8"},
      {DxfVersion::R2000, "ANSI_936", gbk, "ANSI_936"},
      {DxfVersion::R2000, "ansi_1251", "\xCF\xF0", "ANSI_1251"},
      {DxfVersion::R2000, "ANSI_936", utf8, "UTF-8"},
      {DxfVersion::R2000, std::nullopt, gbk, "ANSI_936"},
      {DxfVersion::R2000, std::nullopt, utf8, "UTF-8"},
      {DxfVersion::R2000, std::nullopt, "abc", "ANSI_1252"},
      {DxfVersion::R2000, std::nullopt, "\x80\x20", "ANSI_1252"},
      {DxfVersion::R12, "NOPE", gbk, "ANSI_936"},
  };
  for (const auto& c : cases) {
    auto choice = dxfChooseEncoding(c.version, c.header, c.bytes);
    EXPECT_EQ(choice.codePage, c.expected) << (c.header ? *c.header : "none") << " " << c.bytes;
    EXPECT_FALSE(choice.reason.empty());
  }
}
