#include "host/gi/qagi_text_codes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The shown code points of `text`, one per stored character (0 for nothing shown).
std::u32string shown(const std::wstring& text, bool raw, std::size_t limit = std::wstring::npos) {
  std::u32string out;
  std::size_t expectedIndex = 0;
  tabulon::gi::visitShownCharacters(text, raw, limit, [&](std::size_t index, char32_t c) {
    EXPECT_EQ(index, expectedIndex++) << "characters visited out of order";
    out += c;
  });
  return out;
}

TEST(QaGiTextCodes, ReadsCadControlCodesOnTheirLastCharacter) {
  struct Case {
    std::wstring text;
    std::u32string expected;
  };
  const std::vector<Case> cases = {
      {L"ab", U"ab"},
      {L"%%d", std::u32string{0, 0, U'°'}},
      {L"%%D", std::u32string{0, 0, U'°'}},
      {L"%%p1", std::u32string{0, 0, U'±', U'1'}},
      {L"%%c", std::u32string{0, 0, U'Ø'}},
      {L"%%%", std::u32string{0, 0, U'%'}},
      {L"%%0659", std::u32string{0, 0, 0, 0, U'A', U'9'}},
      {L"%%007", std::u32string{0, 0, 0, 0, 0}},  // a control character shows nothing
      {L"%%u", std::u32string{0, 0, 0}},
      {L"x\\Py", std::u32string{U'x', 0, 0, U'y'}},
      {L"a\r\nb\t", std::u32string{U'a', 0, 0, U'b', 0}},
      {L"%%", U"%%"},          // too short to be a code
      {L"%%x", U"%%x"},        // not a code
      {L"%%12", U"%%12"},      // a number code needs three digits
      {L"\\p", U"\\p"},        // only the capital P breaks
      {L"零件%%c5", std::u32string{U'零', U'件', 0, 0, U'Ø', U'5'}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(shown(c.text, false), c.expected) << testing::PrintToString(c.text);
  }
}

TEST(QaGiTextCodes, RawTextShowsEveryCharacterButBreaks) {
  EXPECT_EQ(shown(L"%%d\\P", true), U"%%d\\P");
  EXPECT_EQ(shown(L"a\nb", true), (std::u32string{U'a', 0, U'b'}));
}

TEST(QaGiTextCodes, ALimitThatCutsACodeShowsNoneOfIt) {
  EXPECT_EQ(shown(L"1%%d", false, 3), (std::u32string{U'1', 0, 0}));
  EXPECT_EQ(shown(L"1%%d", false, 4), (std::u32string{U'1', 0, 0, U'°'}));
  EXPECT_EQ(shown(L"%%065", false, 4), (std::u32string{0, 0, 0, 0}));
  EXPECT_EQ(shown(L"ab", false, 0), U"");
  EXPECT_EQ(shown(L"ab", false, 10), U"ab");
}

}  // namespace
