#include "card/file_utils.h"

#include <gtest/gtest.h>

#include <climits>

#include "card/number_text.h"
#include "card/utf8_text.h"
#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;

TEST(IsValidFileName, RefusesEachOfTheNineCharacters) {
  for (wchar_t c : std::wstring(L"\\/:*?\"<>|")) {
    EXPECT_FALSE(IsValidFileName(std::wstring(L"a") + c + L"b")) << static_cast<char>(c);
  }
  EXPECT_TRUE(IsValidFileName(L""));
  EXPECT_TRUE(IsValidFileName(L"工艺卡 A-1_(2). "));
}

TEST(EnsureFolder, CreatesOneLevelOnly) {
  ScratchDir dir;
  const std::wstring one = Wide(dir / "一");
  EXPECT_TRUE(EnsureFolder(one + L"/"));
  EXPECT_TRUE(DirectoryExists(one));
  EXPECT_TRUE(EnsureFolder(one));
  EXPECT_FALSE(EnsureFolder(Wide(dir / "a" / "b")));
  EXPECT_FALSE(DirectoryExists(Wide(dir / "a")));
}

TEST(DirectoryExists, TakesOneTrailingSeparatorAndRefusesFiles) {
  ScratchDir dir;
  tabulon::test::writeFile(dir / "f.txt", "x");
  const std::wstring root = Wide(dir.path());
  EXPECT_TRUE(DirectoryExists(root));
  EXPECT_TRUE(DirectoryExists(root + L"/"));
  EXPECT_FALSE(DirectoryExists(root + L"/f.txt"));
  EXPECT_FALSE(DirectoryExists(L""));
  EXPECT_TRUE(FileExists(root + L"/f.txt"));
  EXPECT_TRUE(FileExists(root));
  EXPECT_FALSE(FileExists(root + L"/g.txt"));
  EXPECT_FALSE(FileExists(L""));
}

TEST(KrmWriteWholeFile, FailsWithAReasonInAMissingFolder) {
  ScratchDir dir;
  std::wstring reason;
  EXPECT_FALSE(KrmWriteWholeFile(Wide(dir / "no" / "x.tbl"), "{}", reason));
  EXPECT_NE(KrmToUtf8(reason).find("x.tbl"), std::string::npos);
  std::string bytes;
  EXPECT_FALSE(KrmReadWholeFile(Wide(dir.path()), bytes, reason));
  EXPECT_NE(KrmToUtf8(reason).find("folder"), std::string::npos);
}

TEST(Utf8Text, RoundTripsAllPlanesAndReplacesBadSequences) {
  const std::wstring text = L"a\u00e9\u4e2d\U0001F600\u0000z";
  EXPECT_EQ(KrmFromUtf8(KrmToUtf8(text)), text);
  EXPECT_EQ(KrmToUtf8(L"中"), "\xe4\xb8\xad");
  struct Case {
    std::string bytes;
    std::wstring text;
  };
  const Case cases[] = {
      {"\xff", L"\ufffd"},                 // not a lead byte
      {"\xe4\xb8", L"\ufffd"},             // truncated at the end
      {"\xe4" "a", L"\ufffda"},            // truncated before an ASCII byte
      {"\xc0\x80", L"\ufffd"},             // overlong
      {"\xed\xa0\x80", L"\ufffd"},         // a surrogate
      {"\xf4\x90\x80\x80", L"\ufffd"},     // past U+10FFFF
  };
  for (const auto& c : cases) EXPECT_EQ(KrmFromUtf8(c.bytes), c.text) << c.bytes.size();
  EXPECT_EQ(KrmToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xef\xbf\xbd");
}

TEST(KrmTextToInt, ReadsLeadingDecimalsLeniently) {
  struct Case {
    const wchar_t* text;
    int value;
  };
  const Case cases[] = {{L"20", 20},  {L" -3", -3},         {L"+7x", 7},          {L"", 0},
                        {L"abc", 0}, {L"99999999999", INT_MAX}, {L"-99999999999", INT_MIN}, {L"1.9", 1}};
  for (const auto& c : cases) EXPECT_EQ(KrmTextToInt(c.text), c.value) << KrmToUtf8(c.text);
}

TEST(KrmWithExtension, AddsOnlyWhenMissing) {
  EXPECT_EQ(KrmWithExtension(L"a/b", L".tbl"), L"a/b.tbl");
  EXPECT_EQ(KrmWithExtension(L"a/b.tbl", L".tbl"), L"a/b.tbl");
  EXPECT_EQ(KrmWithExtension(L"a/b.TBL", L".tbl"), L"a/b.TBL.tbl");
  EXPECT_EQ(KrmWithExtension(L"", L".crd"), L".crd");
}
