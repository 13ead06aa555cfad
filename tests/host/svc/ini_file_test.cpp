#include "host/svc/ini_file.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

using tabulon::svc::IniError;
using tabulon::svc::IniFile;

TEST(IniFile, ReadsSectionsKeysAndValuesIgnoringCaseOfNames) {
  const auto ini = IniFile::parse(
      "\xEF\xBB\xBF; leading comment\r\n"
      "top = level\r\n"
      "[Paths]\n"
      "  Library =  /srv/cards  \n"
      "# another comment\n"
      "[KrmFrame]\n"
      "FrameBlocks=A3;A4 frame;TK\n"
      "Empty=\n");
  EXPECT_EQ(ini.get(L"", L"top"), L"level");
  EXPECT_EQ(ini.get(L"paths", L"LIBRARY"), L"/srv/cards");
  EXPECT_EQ(ini.get(L"KrmFrame", L"FrameBlocks"), L"A3;A4 frame;TK");  // ';' inside a value is text
  EXPECT_EQ(ini.get(L"KrmFrame", L"Empty"), L"");
  EXPECT_FALSE(ini.get(L"KrmFrame", L"Missing").has_value());
  EXPECT_FALSE(ini.get(L"Nowhere", L"top").has_value());
  EXPECT_EQ(ini.sections(), (std::vector<std::wstring>{L"", L"Paths", L"KrmFrame"}));
  EXPECT_EQ(ini.keys(L"KrmFrame"), (std::vector<std::wstring>{L"FrameBlocks", L"Empty"}));
}

TEST(IniFile, KeepsCommentsAndOrderWhenAValueChanges) {
  const std::string text =
      "; settings\n"
      "[A]\n"
      "x=1\n"
      "; about y\n"
      "y=2\n"
      "\n"
      "; trailing note of A\n"
      "[B]\n"
      "z=3\n";
  auto ini = IniFile::parse(text);
  EXPECT_EQ(ini.toString(), text);
  ini.set(L"A", L"Y", L"20");
  ini.set(L"A", L"w", L"new");
  EXPECT_EQ(ini.toString(),
            "; settings\n[A]\nx=1\n; about y\ny=20\nw=new\n\n; trailing note of A\n[B]\nz=3\n");
}

TEST(IniFile, AddsMissingSectionsAtTheEndSeparatedByABlankLine) {
  IniFile ini;
  ini.set(L"First", L"a", L"1");
  ini.set(L"二", L"键", L"值");
  ini.addSection(L"Empty");
  ini.set(L"Empty", L"k", L"v");
  EXPECT_EQ(ini.toString(), "[First]\na=1\n\n[二]\n键=值\n\n[Empty]\nk=v\n");
  auto again = IniFile::parse(ini.toString());
  EXPECT_EQ(again.get(L"二", L"键"), L"值");
}

TEST(IniFile, RemovesKeys) {
  auto ini = IniFile::parse("[S]\na=1\nb=2\n");
  EXPECT_TRUE(ini.remove(L"s", L"A"));
  EXPECT_FALSE(ini.remove(L"S", L"a"));
  EXPECT_FALSE(ini.remove(L"T", L"b"));
  EXPECT_EQ(ini.toString(), "[S]\nb=2\n");
}

TEST(IniFile, FirstOfTwoEqualKeysWins) {
  auto ini = IniFile::parse("[S]\nk=first\nK=second\n");
  EXPECT_EQ(ini.get(L"S", L"k"), L"first");
  ini.set(L"S", L"k", L"changed");
  EXPECT_EQ(ini.toString(), "[S]\nk=changed\nK=second\n");
}

TEST(IniFile, RejectsBadLinesNamingFileAndLine) {
  struct Case {
    const char* text;
    const char* expected;
  };
  const Case cases[] = {
      {"[A]\nno equals sign\n", "options.ini:2: expected key=value"},
      {"[A\n", "options.ini:1: section header without ']'"},
      {"[A]\n=value\n", "options.ini:2: expected key=value"},
      {"[A]\nk=\xFF\xFE\n", "options.ini: not UTF-8"},
  };
  for (const auto& c : cases) {
    try {
      IniFile::parse(c.text, "options.ini");
      ADD_FAILURE() << "accepted: " << c.text;
    } catch (const IniError& e) {
      EXPECT_NE(std::string(e.what()).find(c.expected), std::string::npos) << e.what();
    }
  }
}

TEST(IniFile, RefusesValuesThatWouldBreakTheFile) {
  IniFile ini;
  EXPECT_THROW(ini.set(L"S", L"k", L"two\nlines"), std::invalid_argument);
  EXPECT_THROW(ini.set(L"S", L"a=b", L"v"), std::invalid_argument);
  EXPECT_THROW(ini.set(L"S", L"", L"v"), std::invalid_argument);
  EXPECT_THROW(ini.set(L"S]", L"k", L"v"), std::invalid_argument);
  EXPECT_THROW(ini.set(L"S", L"[k", L"v"), std::invalid_argument);
  EXPECT_EQ(ini.toString(), "");
}

TEST(IniFile, SavesAtomicallyAndLoadsBack) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / "sub" / "settings.ini";
  EXPECT_TRUE(IniFile::load(path).sections().empty());  // a missing file is an empty document
  IniFile ini;
  ini.set(L"KrmDlgCreateCrd", L"CreateCard_CutPage", L"1");
  ini.save(path);
  EXPECT_EQ(IniFile::load(path).get(L"KrmDlgCreateCrd", L"CreateCard_CutPage"), L"1");
  // No temporary file stays behind.
  int files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path.parent_path())) ++files;
  EXPECT_EQ(files, 1);
}

TEST(IniFile, FailedSaveLeavesWhatWasThereAndNoTemporaryFile) {
  tabulon::test::ScratchDir dir;
  // A folder where the file should go: the final rename cannot replace it.
  const auto path = dir / "settings.ini";
  std::filesystem::create_directory(path);
  tabulon::test::writeFile(path / "keep.txt", "kept");
  IniFile ini;
  ini.set(L"New", L"k", L"v");
  EXPECT_THROW(ini.save(path), IniError);
  EXPECT_EQ(tabulon::test::readFile(path / "keep.txt"), "kept");
  int entries = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(dir.path())) ++entries;
  EXPECT_EQ(entries, 1);
}
