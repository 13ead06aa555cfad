#include "card/file_utils.h"

#include <gtest/gtest.h>

#include <climits>

#include "card/number_text.h"
#include "card_fixture.h"

using cardtest::Wide;

TEST(IsValidFileName, RefusesEachOfTheNineCharacters) {
  for (wchar_t c : std::wstring(L"\\/:*?\"<>|")) EXPECT_FALSE(IsValidFileName(std::wstring(L"a") + c));
  EXPECT_TRUE(IsValidFileName(L""));
  EXPECT_TRUE(IsValidFileName(L"工艺卡 A-1_(2). "));
}

TEST(FileUtils, FoldersAreMadeOneLevelAndFoundWithATrailingSeparator) {
  tabulon::test::ScratchDir dir;
  tabulon::test::writeFile(dir / "f.txt", "x");
  const std::wstring root = Wide(dir.path());
  EXPECT_TRUE(EnsureFolder(root + L"/一/"));
  EXPECT_TRUE(DirectoryExists(root + L"/一/"));
  EXPECT_FALSE(EnsureFolder(root + L"/a/b"));
  EXPECT_FALSE(DirectoryExists(root + L"/a"));
  EXPECT_FALSE(DirectoryExists(root + L"/f.txt"));
  EXPECT_TRUE(FileExists(root + L"/f.txt"));
  EXPECT_TRUE(FileExists(root));
  EXPECT_FALSE(FileExists(root + L"/g.txt"));
  EXPECT_EQ(KrmWithExtension(L"a/b", L".tbl"), L"a/b.tbl");
  EXPECT_EQ(KrmWithExtension(L"a/b.tbl", L".tbl"), L"a/b.tbl");
}

TEST(Utf8Text, RoundTripsAllPlanesAndReplacesBadSequences) {
  const std::wstring text = L"a\u00e9\u4e2d\U0001F600z";
  EXPECT_EQ(KrmFromUtf8(KrmToUtf8(text)), text);
  const std::pair<std::string, std::wstring> bad[] = {
      {"\xff", L"\ufffd"},          {"\xe4\xb8", L"\ufffd"},      {"\xe4" "a", L"\ufffda"},
      {"\xc0\x80", L"\ufffd"},      {"\xed\xa0\x80", L"\ufffd"},  {"\xf4\x90\x80\x80", L"\ufffd"}};
  for (const auto& [bytes, decoded] : bad) EXPECT_EQ(KrmFromUtf8(bytes), decoded) << bytes.size();
  EXPECT_EQ(KrmToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xef\xbf\xbd");
}

TEST(KrmTextToInt, ReadsLeadingDecimalsLeniently) {
  const std::pair<const wchar_t*, int> cases[] = {{L"20", 20}, {L" -3", -3}, {L"+7x", 7}, {L"", 0}, {L"abc", 0},
                                                  {L"99999999999", INT_MAX}, {L"-99999999999", INT_MIN}};
  for (const auto& [text, value] : cases) EXPECT_EQ(KrmTextToInt(text), value) << KrmToUtf8(text);
}
