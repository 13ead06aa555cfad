#include "drawing/cell_descriptor.h"

#include <gtest/gtest.h>

#include <vector>

#include "drawing/cell_xdata.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"

namespace {

QaDbAttributeDefinition definitionWithTag(const std::wstring& tag) {
  return QaDbAttributeDefinition(QaGePoint3d(), L"", tag, L"prompt");
}

void setNumbered(QaDbObject& object, const std::wstring& app, const std::vector<std::wstring>& values) {
  KR_QRXAppXdata xd(app);
  for (std::size_t i = 0; i < values.size(); ++i) xd.setString(static_cast<int>(i) + 1, values[i]);
  ASSERT_EQ(xd.setXdata(&object), Qa::eOk);
}

void setPlain(QaDbObject& object, const std::wstring& app, const std::vector<std::wstring>& values) {
  std::vector<QaDbXDataItem> items;
  for (const auto& v : values) items.push_back(QaDbXDataItem::string(v));
  ASSERT_EQ(object.setXData(app, items), Qa::eOk);
}

TEST(CellDescriptor, DefinitionWithoutExtendedDataIsAPlainTextCell) {
  QaDbAttributeDefinition def = definitionWithTag(L"零件名称");
  KrmAttSet cell;
  cell.SetWidth(42.0);
  cell.SetContent(L"kept");
  cell.SetAlignType(L"stale");
  cell.SetDecimalNum(7);
  EXPECT_EQ(ReadCellDefinition(def, cell), 1);
  EXPECT_EQ(cell.GetShowName(), L"零件名称");
  EXPECT_EQ(cell.GetInName(), L"零件名称");
  EXPECT_EQ(cell.GetStringType(), L"KRM_XDATA_NUMSTR");
  EXPECT_EQ(cell.GetDecimalNum(), 0);
  // Every property is written, also when empty.
  EXPECT_EQ(cell.GetAlignType(), L"");
  EXPECT_EQ(cell.GetRowType(), L"");
  EXPECT_EQ(cell.GetCtrType(), L"");
  EXPECT_EQ(cell.GetShowType(), L"");
  // What the extended data does not carry is left alone.
  EXPECT_EQ(cell.GetWidth(), 42.0);
  EXPECT_EQ(cell.GetContent(), L"kept");
}

// Every property, once written numbered (this system's writer) and once as plain strings
// (an outside authoring tool): both read the same.
TEST(CellDescriptor, ReadsEveryPropertyNumberedOrPlain) {
  for (bool plain : {false, true}) {
    QaDbAttributeDefinition def = definitionWithTag(L"QTY");
    auto put = [&](const std::wstring& app, const std::vector<std::wstring>& values) {
      if (plain) setPlain(def, app, values);
      else setNumbered(def, app, values);
    };
    put(kKrmXdataCode, {L"BOM_QTY"});
    put(kKrmXdataVType, {L"NumberDouble", L"3"});
    put(kKrmXdataAlign, {L"CENTER"});
    put(kKrmXdataTextLengthMode, {L"kNewline"});
    put(kKrmXdataOrientation, {L"H"});
    put(kKrmXdataEditable, {L"1"});
    put(kKrmXdataControlType, {L"CMB_LIST"});
    put(kKrmXdataControlValue, {L"a;b"});
    put(kKrmXdataDefaultValue, {L"0"});
    put(kKrmXdataExpression, {L"数量*单价"});
    put(kKrmXdataOrder, {L"4"});
    KrmAttSet cell;
    ReadCellDefinition(def, cell);
    SCOPED_TRACE(plain ? "plain" : "numbered");
    EXPECT_EQ(cell.GetShowName(), L"QTY");
    EXPECT_EQ(cell.GetInName(), L"BOM_QTY");
    EXPECT_EQ(cell.GetStringType(), L"KRM_XDATA_NUMDOUBLE");
    EXPECT_EQ(cell.GetDecimalNum(), 3);
    EXPECT_EQ(cell.GetAlignType(), L"CENTER");
    EXPECT_EQ(cell.GetRowType(), L"kNewline");
    EXPECT_EQ(cell.GetAttDir(), L"H");
    EXPECT_EQ(cell.GetCanEdit(), L"1");
    EXPECT_EQ(cell.GetCtrType(), L"CMB_LIST");
    EXPECT_EQ(cell.GetCtrContent(), L"a;b");
    EXPECT_EQ(cell.GetDefault(), L"0");
    EXPECT_EQ(cell.GetCalc(), L"数量*单价");
    EXPECT_EQ(cell.GetShowType(), L"4");
  }
}

TEST(CellDescriptor, TranslatesValueWords) {
  struct Case {
    std::vector<std::wstring> record;  // empty: no record at all
    std::wstring type;
    int decimals;
  };
  const Case cases[] = {
      {{}, L"KRM_XDATA_NUMSTR", 0},
      {{L"NumberInt", L"5"}, L"KRM_XDATA_NUMINT", 0},
      {{L"Number", L"2"}, L"KRM_XDATA_NUMDOUBLE", 2},
      {{L"Number"}, L"KRM_XDATA_NUMDOUBLE", 0},
      {{L"Number", L""}, L"KRM_XDATA_NUMDOUBLE", 0},
      {{L"NumberDouble", L"4"}, L"KRM_XDATA_NUMDOUBLE", 4},
      {{L"String", L"4"}, L"KRM_XDATA_NUMSTR", 0},
      {{L"number", L"4"}, L"KRM_XDATA_NUMSTR", 0},  // words compare case-sensitively
  };
  for (const Case& c : cases) {
    QaDbAttributeDefinition def = definitionWithTag(L"T");
    if (!c.record.empty()) setPlain(def, kKrmXdataVType, c.record);
    std::wstring type = L"x";
    int decimals = 99;
    EXPECT_EQ(ReadValueType(def, type, decimals), 1);
    EXPECT_EQ(type, c.type) << (c.record.empty() ? L"none" : c.record[0]);
    EXPECT_EQ(decimals, c.decimals) << (c.record.empty() ? L"none" : c.record[0]);
  }
  // Decimals written as an integer item by this system's writer are read too.
  QaDbAttributeDefinition def = definitionWithTag(L"T");
  KR_QRXAppXdata xd(kKrmXdataVType);
  xd.setString(1, L"Number");
  xd.setInteger(2, 6);
  ASSERT_EQ(xd.setXdata(&def), Qa::eOk);
  std::wstring type;
  int decimals = 0;
  ReadValueType(def, type, decimals);
  EXPECT_EQ(decimals, 6);
}

TEST(CellDescriptor, OnlyTheExactKeyIsFound) {
  QaDbAttributeDefinition def = definitionWithTag(L"T");
  setPlain(def, L"KRM_XDATA_ORIENTATION", {L"V"});
  setPlain(def, L"KRM_XDATA_CODE2", {L"WRONG"});
  KrmAttSet cell;
  ReadCellDefinition(def, cell);
  EXPECT_EQ(cell.GetAttDir(), L"");
  EXPECT_EQ(cell.GetInName(), L"T");
  EXPECT_EQ(ReadXdataString(def, L"KRM_XDATA_ORIENTATION"), L"V");
}

TEST(CellDescriptor, AttributeReadsLikeItsDefinition) {
  QaDbAttribute att(QaGePoint3d(), L"M8", L"SPEC");
  setPlain(att, kKrmXdataCode, {L"GG"});
  KrmAttSet cell;
  ReadCellDefinition(att, cell);
  EXPECT_EQ(cell.GetShowName(), L"SPEC");
  EXPECT_EQ(cell.GetInName(), L"GG");
  // An empty code falls back on the tag.
  setPlain(att, kKrmXdataCode, {L""});
  ReadCellDefinition(att, cell);
  EXPECT_EQ(cell.GetInName(), L"SPEC");
}

TEST(CellDescriptor, MapsControlWordsToGridKinds) {
  const std::pair<std::wstring, std::wstring> table[] = {
      {L"CMB_DOWN", L"LG_CBS_DROPDOWN"},     {L"CMB_LIST_YESNO", L"LG_CBS_DROPDOWNLIST"},
      {L"CMB_LIST", L"LG_CBS_DROPDOWNLIST"}, {L"NOCTRL", L"LG_NONE"},
      {L"EDT_SPIN", L"LG_EDIT"},             {L"EDT_NUM", L"LG_EDITNUMERIC"},
      {L"EDT_REAL", L"LG_EDITNUMERIC"},      {L"PTI_DATE", L"LG_DATETIME"},
      {L"CHK_CELLCHECK", L"LG_CELLCHECK"},   {L"", L"LG_EDIT"},
      {L"cmb_down", L"LG_EDIT"},             {L"SOMETHING", L"LG_EDIT"},
  };
  for (const auto& [word, kind] : table) EXPECT_EQ(ControlKindOfWord(word), kind) << word;
}

TEST(CellDescriptor, BuildsListsPerColumn) {
  auto cellOf = [](const std::wstring& word, const std::wstring& content) {
    KrmAttSet a;
    a.SetCtrType(word);
    a.SetCtrContent(content);
    return a;
  };
  const std::vector<KrmAttSet> atts = {
      cellOf(L"CMB_LIST_YESNO", L"ignored"),  // 1
      cellOf(L"CMB_DOWN", L"钢;铜;铝"),        // 2
      cellOf(L"CMB_DOWN", L""),               // 3: no entry
      cellOf(L"CMB_LIST", L""),               // 4: blank item only
      cellOf(L"CHK_CELLCHECK", L"Y;N"),       // 5
      cellOf(L"EDT_NUM", L""),                // 6: blank item only
      cellOf(L"", L"x;;y;"),                  // 7
      cellOf(L"CHK_CELLCHECK", L""),          // 8: no entry
  };
  KrmControlLists lists;
  lists[L"99"] = {L"other"};
  lists[L"3"] = {L"old"};
  EXPECT_EQ(BuildControlLists(atts, lists), 1);
  using V = std::vector<std::wstring>;
  EXPECT_EQ(lists.at(L"1"), (V{L"", L"是", L"否"}));
  EXPECT_EQ(lists.at(L"2"), (V{L"钢", L"铜", L"铝"}));
  EXPECT_EQ(lists.at(L"3"), (V{L"old"}));  // untouched: the column made no list
  EXPECT_EQ(lists.at(L"4"), (V{L""}));
  EXPECT_EQ(lists.at(L"5"), (V{L"Y", L"N"}));
  EXPECT_EQ(lists.at(L"6"), (V{L""}));
  EXPECT_EQ(lists.at(L"7"), (V{L"", L"x", L"y"}));
  EXPECT_EQ(lists.count(L"8"), 0u);
  EXPECT_EQ(lists.at(L"99"), (V{L"other"}));
}

}  // namespace
