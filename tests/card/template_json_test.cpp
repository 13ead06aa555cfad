#include "card/template_json.h"

#include <gtest/gtest.h>

#include <cmath>

#include "card/file_utils.h"
#include "card_fixture.h"

using cardtest::Wide;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

namespace {

// Every field differs from its reset value; texts need escaping and numbers
// all their digits.
KrmTableAttributes FullTable() {
  KrmTableAttributes table = cardtest::ProcessTable(L"首页", 17);
  KrmAttSet att = cardtest::Att(L"单价\"\\/\n\t", kKrmRowFit, 0.1 + 0.2);
  const std::vector<std::pair<void (KrmAttSet::*)(const std::wstring&), const wchar_t*>> texts = {
      {&KrmAttSet::SetStringType, kKrmNumDouble}, {&KrmAttSet::SetAlignType, L"RIGHT"}, {&KrmAttSet::SetAttDir, L"0"},
      {&KrmAttSet::SetCanEdit, L"1"},    {&KrmAttSet::SetCtrType, L"KRM_XDATA_COMBOX"}, {&KrmAttSet::SetCtrContent, L"1;2"},
      {&KrmAttSet::SetDefault, L"0.0"},  {&KrmAttSet::SetCalc, L"数量*单价"}, {&KrmAttSet::SetShowType, L"7"},
      {&KrmAttSet::SetContent, L"😀"}};
  for (const auto& [set, text] : texts) (att.*set)(text);
  att.SetDecimalNum(3);
  att.SetHeight(1.0 / 3.0);
  table.setSCell({KrmBlockSet(L"PRICE", {att, KrmAttSet()})});
  table.setWidth(-1e-300);
  table.setHeight(12345.678901234567);
  return table;
}

}  // namespace

TEST(TemplateJson, WrittenRecordsReadBackFieldByField) {
  ScratchDir dir;
  const KrmTableAttributes table = FullTable();
  ASSERT_EQ(table.OutputTable(Wide(dir / "t.tbl")), 1);
  KrmTableAttributes tableRead;
  const tabulon::Status read = tableRead.ReadTable(Wide(dir / "t.tbl"));
  ASSERT_TRUE(read.ok()) << read.describe();
  EXPECT_EQ(tableRead.SCells()[0].Atts()[0], table.SCells()[0].Atts()[0]);
  EXPECT_EQ(tableRead.getHeight(), 12345.678901234567);
  EXPECT_EQ(tableRead, table);

  KrmCardAttributes card;
  card.setCardName(L"card", L"装配卡 A");
  for (const wchar_t* name : {L"first", L"first", L"third"}) card.addTblFile(name);
  KrmCardDir arrangement;
  arrangement.SetHor(2.5);
  arrangement.SetVer(0.0);
  arrangement.SetDir(7);
  arrangement.SetFstT(2);
  arrangement.SetFstN(3);
  card.setCardDir(arrangement);
  ASSERT_EQ(card.OutputCard(Wide(dir / "c.crd")), 1);
  KrmCardAttributes cardRead;
  ASSERT_EQ(cardRead.InitCard(Wide(dir / "c.crd")), 1);
  EXPECT_EQ(cardRead, card);
  EXPECT_THROW(cardRead.getTblFile(3), std::out_of_range);
}

TEST(TemplateJson, ExtensionsAreAddedOnlyWhenMissing) {
  ScratchDir dir;
  const KrmTableAttributes table = FullTable();
  ASSERT_EQ(table.OutputTable(Wide(dir / "stem")), 1);
  KrmTableAttributes read;
  EXPECT_EQ(read.InitTable(Wide(dir / "stem.tbl")), 1);
  EXPECT_EQ(read, table);
  KrmCardAttributes card, cardRead;
  ASSERT_EQ(card.OutputCard(Wide(dir / "stem.crd")), 1);
  EXPECT_EQ(cardRead.InitCard(Wide(dir / "stem")), 1);
  EXPECT_EQ(cardRead.getID(), card.getID());
  // The two files and nothing else: no doubled extension, no temporary file.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), std::filesystem::directory_iterator()), 2);
}

TEST(TemplateJson, FreshRecordsHaveDistinctIdsThatResetKeeps) {
  KrmTableAttributes a = FullTable(), b;
  EXPECT_EQ(a.getID().size(), 32u);
  EXPECT_EQ(a.getID().find_first_not_of(L"0123456789abcdef"), std::wstring::npos);
  EXPECT_NE(a.getID(), b.getID());
  const std::wstring id = a.getID();
  a.Reset();
  b.setID(id);
  EXPECT_EQ(a, b);
  KrmCardAttributes card, fresh;
  card.addTblFile(L"t");
  fresh.setID(card.getID());
  card.Reset();
  EXPECT_EQ(card, fresh);
}

struct BadFile {
  const char* name;
  std::string content;  // "<missing>": no file at all
  std::string reasonPart;
};

class TemplateJsonBadTable : public ::testing::TestWithParam<BadFile> {};

TEST_P(TemplateJsonBadTable, ReadingFailsWithAnErrorNamingTheFileAndKeepsTheRecord) {
  ScratchDir dir;
  if (GetParam().content != "<missing>") writeFile(dir / "bad.tbl", GetParam().content);
  KrmTableAttributes table = cardtest::ProcessTable(L"keep", 5);
  const KrmTableAttributes before = table;
  const tabulon::Status read = table.ReadTable(Wide(dir / "bad.tbl"));
  ASSERT_FALSE(read.ok());
  EXPECT_EQ(table, before);
  EXPECT_TRUE(read.error().file.ends_with("bad.tbl")) << read.describe();
  EXPECT_NE(read.describe().find(GetParam().reasonPart), std::string::npos) << read.describe();
  EXPECT_EQ(table.InitTable(Wide(dir / "bad.tbl")), 0);
}

std::string ValidTableHalf() {
  const auto text = KrmTableToJson(cardtest::ProcessTable(L"t", 4));
  return text->substr(0, text->size() / 2);
}

const char* const kHead = R"({"format": "tabulon-table", "version": 1, )";

INSTANTIATE_TEST_SUITE_P(
    Files, TemplateJsonBadTable,
    ::testing::Values(
        BadFile{"Missing", "<missing>", "cannot open"}, BadFile{"Empty", "", "not valid JSON"},
        BadFile{"Truncated", ValidTableHalf(), "not valid JSON"}, BadFile{"Array", "[1]", "expected an object"},
        BadFile{"CardFile", R"({"format": "tabulon-card", "version": 1})", "expected \"tabulon-table\""},
        BadFile{"FutureVersion", R"({"format": "tabulon-table", "version": 2})", "unsupported version 2"},
        BadFile{"WidthAsText", std::string(kHead) + R"("width": "297"})", "width: expected a number"},
        BadFile{"AttributeWidth", std::string(kHead) + R"("multiBlocks": [{"attributes": [{}, {"width": "x"}]}]})",
                "multiBlocks[0].attributes[1].width"},
        BadFile{"DecimalsAsReal", std::string(kHead) + R"("singleBlocks": [{"attributes": [{"decimals": 1.5}]}]})",
                "decimals: expected an integer"},
        BadFile{"BindingNotText", std::string(kHead) + R"("pageAttributes": {"CLASSCUR": ["T", 3]}})",
                "pageAttributes.CLASSCUR[1]"},
        BadFile{"NotUtf8", std::string(kHead) + "\"id\": \"\xff\"}", "not valid JSON"},
        BadFile{"NumberTooLarge", std::string(kHead) + R"("width": 3035905294E848303})", "number overflow"}),
    [](const ::testing::TestParamInfo<BadFile>& info) { return std::string(info.param.name); });

TEST(TemplateJson, InitCardFailsOnBadFiles) {
  ScratchDir dir;
  writeFile(dir / "empty.crd", "");
  writeFile(dir / "half.crd", R"({"format": "tabulon-card", "ver)");
  writeFile(dir / "arrangement.crd", R"({"format": "tabulon-card", "version": 1, "arrangement": {"dir": "0"}})");
  writeFile(dir / "tables.crd", R"({"format": "tabulon-card", "version": 1, "tables": "first"})");
  for (const char* name : {"missing.crd", "empty.crd", "half.crd", "arrangement.crd", "tables.crd"}) {
    KrmCardAttributes card;
    card.setCardName(L"before", L"");
    const tabulon::Status read = card.ReadCard(Wide(dir / name));
    ASSERT_FALSE(read.ok()) << name;
    EXPECT_EQ(card.getFileName(), L"before") << name;
    EXPECT_TRUE(read.error().file.ends_with(name)) << read.describe();
  }
}

TEST(TemplateJson, NonFiniteNumbersAreRefusedWhenWriting) {
  ScratchDir dir;
  KrmTableAttributes table = FullTable();
  table.setWidth(NAN);
  const tabulon::Status written = table.WriteTable(Wide(dir / "nan.tbl"));
  ASSERT_FALSE(written.ok());
  EXPECT_EQ(written.error().field, "width");
  EXPECT_FALSE(FileExists(Wide(dir / "nan.tbl")));
}

TEST(TemplateJson, BadSyntaxNamesItsLine) {
  KrmTableAttributes table;
  const tabulon::Status read = KrmTableFromJson("{\n  \"format\": \"tabulon-table\",\n  \"version\": 1,,\n}\n", table);
  ASSERT_FALSE(read.ok());
  EXPECT_EQ(read.error().line, 3u) << read.describe();
}
