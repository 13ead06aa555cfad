#include "card/template_json.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "card_fixture.h"
#include "card/file_utils.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

namespace {

// A table whose every field differs from its reset value, with texts that
// need escaping and numbers that need all their digits.
KrmTableAttributes FullTable() {
  KrmTableAttributes table = cardtest::ProcessTable(L"首页", 17);
  KrmAttSet att = cardtest::Att(L"单价\"\\/\n\t", kKrmRowFit, 0.1 + 0.2, 1.0 / 3.0);
  att.SetInName(L"PRICE");
  att.SetStringType(kKrmNumDouble);
  att.SetDecimalNum(3);
  att.SetAlignType(L"RIGHT");
  att.SetAttDir(L"0");
  att.SetCanEdit(L"1");
  att.SetCtrType(L"KRM_XDATA_COMBOX");
  att.SetCtrContent(L"1;2;3");
  att.SetDefault(L"0.000");
  att.SetCalc(L"数量*单价");
  att.SetShowType(L"7");
  att.SetContent(L"in hand 😀");
  auto multi = table.MCells();
  std::vector<KrmAttSet> atts = multi[0].Atts();
  atts.push_back(att);
  multi[0] = KrmBlockSet(multi[0].GetBlockName(), atts);
  table.setMCell(multi);
  table.setID(L"0123456789abcdef0123456789abcdef");
  table.setWidth(-1e-300);
  table.setHeight(12345.678901234567);
  return table;
}

}  // namespace

TEST(TemplateJson, TableReadsBackFieldByField) {
  ScratchDir dir;
  const KrmTableAttributes written = FullTable();
  ASSERT_EQ(written.OutputTable(Wide(dir / "t.tbl")), 1);

  KrmTableAttributes read;
  std::wstring reason;
  ASSERT_EQ(read.InitTable(Wide(dir / "t.tbl"), reason), 1) << KrmToUtf8(reason);
  EXPECT_EQ(read.getID(), written.getID());
  EXPECT_EQ(read.getFileName(), L"首页");
  EXPECT_EQ(read.getHeight(), 12345.678901234567);
  EXPECT_EQ(read.getWidth(), -1e-300);
  const KrmAttSet& att = read.MCells()[0].Atts().back();
  EXPECT_EQ(att, written.MCells()[0].Atts().back());
  EXPECT_EQ(att.GetWidth(), 0.1 + 0.2);
  EXPECT_EQ(att.GetShowName(), L"单价\"\\/\n\t");
  EXPECT_EQ(read, written);
}

TEST(TemplateJson, CardReadsBackFieldByField) {
  ScratchDir dir;
  KrmCardAttributes written;
  written.setCardName(L"card", L"装配卡 A");
  written.addTblFile(L"first");
  written.addTblFile(L"first");
  written.addTblFile(L"third");
  KrmCardDir arrangement;
  arrangement.SetHor(2.5);
  arrangement.SetVer(0.0);
  arrangement.SetDir(7);
  arrangement.SetFstT(2);
  arrangement.SetFstN(3);
  written.setCardDir(arrangement);
  ASSERT_EQ(written.OutputCard(Wide(dir / "c.crd")), 1);

  KrmCardAttributes read;
  ASSERT_EQ(read.InitCard(Wide(dir / "c.crd")), 1);
  EXPECT_EQ(read, written);
  KrmCardDir back;
  read.getCardDir(back);
  EXPECT_EQ(back.GetDir(), 7);
  EXPECT_EQ(back.GetFstN(), 3);
  ASSERT_EQ(read.getTblCount(), 3);
  EXPECT_EQ(read.getTblFile(2), L"third");
  EXPECT_THROW(read.getTblFile(3), std::out_of_range);
}

TEST(TemplateJson, ExtensionIsAddedWhenMissing) {
  ScratchDir dir;
  KrmTableAttributes table = FullTable();
  ASSERT_EQ(table.OutputTable(Wide(dir / "stem")), 1);
  EXPECT_TRUE(FileExists(Wide(dir / "stem.tbl")));
  KrmTableAttributes read;
  EXPECT_EQ(read.InitTable(Wide(dir / "stem")), 1);
  EXPECT_EQ(read.InitTable(Wide(dir / "stem.tbl")), 1);
  EXPECT_EQ(read, table);

  KrmCardAttributes card;
  ASSERT_EQ(card.OutputCard(Wide(dir / "stem.crd")), 1);
  EXPECT_FALSE(FileExists(Wide(dir / "stem.crd.crd")));
  KrmCardAttributes cardRead;
  EXPECT_EQ(cardRead.InitCard(Wide(dir / "stem")), 1);
  EXPECT_EQ(cardRead.getID(), card.getID());
}

TEST(TemplateJson, FreshRecordsHaveDistinctIdsThatResetKeeps) {
  KrmTableAttributes a, b;
  EXPECT_EQ(a.getID().size(), 32u);
  EXPECT_EQ(a.getID().find_first_not_of(L"0123456789abcdef"), std::wstring::npos);
  EXPECT_NE(a.getID(), b.getID());
  const std::wstring id = a.getID();
  a = cardtest::ProcessTable(L"x", 3);
  a.setID(id);
  a.Reset();
  EXPECT_EQ(a.getID(), id);
  EXPECT_TRUE(a.SCells().empty());
  EXPECT_TRUE(a.PageAtt().empty());
  EXPECT_EQ(a.getFileName(), L"");

  KrmCardAttributes card;
  const std::wstring cardId = card.getID();
  card.addTblFile(L"t");
  card.setCardName(L"n", L"s");
  card.Reset();
  EXPECT_EQ(card.getID(), cardId);
  EXPECT_EQ(card.getTblCount(), 0);
  EXPECT_EQ(card.getShowName(), L"");
}

struct BadFile {
  const char* name;
  std::string content;  // "<missing>" for no file at all
  std::string reasonPart;
};

class TemplateJsonBadTable : public ::testing::TestWithParam<BadFile> {};

TEST_P(TemplateJsonBadTable, InitTableFailsAndKeepsTheRecord) {
  ScratchDir dir;
  const BadFile& bad = GetParam();
  if (bad.content != "<missing>") writeFile(dir / "bad.tbl", bad.content);
  KrmTableAttributes table = cardtest::ProcessTable(L"keep", 5);
  const KrmTableAttributes before = table;
  std::wstring reason;
  EXPECT_EQ(table.InitTable(Wide(dir / "bad.tbl"), reason), 0);
  EXPECT_EQ(table, before);
  const std::string text = KrmToUtf8(reason);
  EXPECT_NE(text.find("bad.tbl"), std::string::npos) << text;
  EXPECT_NE(text.find(bad.reasonPart), std::string::npos) << text;
}

std::string ValidTableText() {
  std::string text;
  std::wstring reason;
  KrmTableToJson(cardtest::ProcessTable(L"t", 4), text, reason);
  return text;
}

INSTANTIATE_TEST_SUITE_P(
    Files, TemplateJsonBadTable,
    ::testing::Values(
        BadFile{"Missing", "<missing>", "cannot open"}, BadFile{"Empty", "", "not valid JSON"},
        BadFile{"Truncated", ValidTableText().substr(0, ValidTableText().size() / 2), "not valid JSON"},
        BadFile{"NotAnObject", "[1, 2]", "expected an object"},
        BadFile{"CardFile", R"({"format": "tabulon-card", "version": 1})", "expected \"tabulon-table\""},
        BadFile{"NoFormat", R"({"version": 1})", "format"},
        BadFile{"FutureVersion", R"({"format": "tabulon-table", "version": 2})", "unsupported version 2"},
        BadFile{"WidthAsText", R"({"format": "tabulon-table", "version": 1, "width": "297"})", "\"width\": expected a number"},
        BadFile{"AttributeWidthAsText",
                R"({"format": "tabulon-table", "version": 1, "multiBlocks": [{"name": "R", "attributes": [{}, {"width": "x"}]}]})",
                "multiBlocks[0].attributes[1].width"},
        BadFile{"DecimalsAsReal",
                R"({"format": "tabulon-table", "version": 1, "singleBlocks": [{"attributes": [{"decimals": 1.5}]}]})",
                "singleBlocks[0].attributes[0].decimals\": expected an integer"},
        BadFile{"BindingNotText", R"({"format": "tabulon-table", "version": 1, "pageAttributes": {"CLASSCUR": ["T", 3]}})",
                "pageAttributes.CLASSCUR[1]"},
        BadFile{"BlocksNotArray", R"({"format": "tabulon-table", "version": 1, "singleBlocks": {}})", "singleBlocks"},
        BadFile{"NotUtf8", "{\"format\": \"tabulon-table\", \"version\": 1, \"id\": \"\xff\"}", "not valid JSON"}),
    [](const ::testing::TestParamInfo<BadFile>& info) { return std::string(info.param.name); });

TEST(TemplateJson, InitCardFailsOnBadFiles) {
  ScratchDir dir;
  writeFile(dir / "empty.crd", "");
  writeFile(dir / "table.crd", ValidTableText());
  writeFile(dir / "arrangement.crd", R"({"format": "tabulon-card", "version": 1, "arrangement": {"dir": "0"}})");
  writeFile(dir / "tables.crd", R"({"format": "tabulon-card", "version": 1, "tables": "first"})");
  for (const char* name : {"missing.crd", "empty.crd", "table.crd", "arrangement.crd", "tables.crd"}) {
    KrmCardAttributes card;
    card.setCardName(L"before", L"before");
    std::wstring reason;
    EXPECT_EQ(card.InitCard(Wide(dir / name), reason), 0) << name;
    EXPECT_EQ(card.getFileName(), L"before") << name;
    EXPECT_NE(KrmToUtf8(reason).find(name), std::string::npos) << KrmToUtf8(reason);
  }
  std::wstring reason;
  KrmCardAttributes card;
  card.InitCard(Wide(dir / "arrangement.crd"), reason);
  EXPECT_NE(KrmToUtf8(reason).find("arrangement.dir"), std::string::npos) << KrmToUtf8(reason);
}

TEST(TemplateJson, AbsentFieldsTakeResetValues) {
  KrmCardAttributes card;
  std::wstring reason;
  ASSERT_TRUE(KrmCardFromJson(R"({"format": "tabulon-card", "version": 1, "id": "abc"})", card, reason));
  EXPECT_EQ(card.getID(), L"abc");
  EXPECT_EQ(card.getTblCount(), 0);
  KrmCardDir dir;
  card.getCardDir(dir);
  EXPECT_EQ(dir, KrmCardDir());
}

TEST(TemplateJson, NonFiniteNumbersAreNotWritten) {
  ScratchDir dir;
  KrmTableAttributes table = FullTable();
  table.setWidth(std::numeric_limits<double>::quiet_NaN());
  std::wstring reason;
  EXPECT_EQ(table.OutputTable(Wide(dir / "nan.tbl"), reason), 0);
  EXPECT_NE(KrmToUtf8(reason).find("\"width\""), std::string::npos);
  EXPECT_FALSE(FileExists(Wide(dir / "nan.tbl")));

  KrmCardAttributes card;
  KrmCardDir arrangement;
  arrangement.SetVer(INFINITY);
  card.setCardDir(arrangement);
  EXPECT_EQ(card.OutputCard(Wide(dir / "inf.crd"), reason), 0);
  EXPECT_NE(KrmToUtf8(reason).find("arrangement.ver"), std::string::npos);
}

TEST(TemplateJson, WritingOverAnExistingFileReplacesIt) {
  ScratchDir dir;
  KrmTableAttributes table = cardtest::ProcessTable(L"a", 3);
  ASSERT_EQ(table.OutputTable(Wide(dir / "a.tbl")), 1);
  table.setPageBase(L"SIGN");
  ASSERT_EQ(table.OutputTable(Wide(dir / "a.tbl")), 1);
  KrmTableAttributes read;
  ASSERT_EQ(read.InitTable(Wide(dir / "a.tbl")), 1);
  EXPECT_EQ(read.getPageBase(), L"SIGN");
  // No temporary file is left behind.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()), 1);
}
