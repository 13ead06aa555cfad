#include "drawing/cell_descriptor.h"

#include <gtest/gtest.h>

#include "host/db/qadb_attribute_definition.h"

namespace {

QaDbAttributeDefinition definition(const std::wstring& app = L"", const std::vector<std::wstring>& values = {}) {
  QaDbAttributeDefinition def(QaGePoint3d(), L"", L"零件名称", L"");
  std::vector<QaDbXDataItem> items;
  for (const auto& v : values) items.push_back(QaDbXDataItem::string(v));
  if (!app.empty()) def.setXData(app, items);
  return def;
}

TEST(CellDescriptor, DefinitionWithoutExtendedDataIsAPlainTextCell) {
  KrmAttSet cell;
  cell.SetWidth(42.0);
  cell.SetAlignType(L"stale");
  EXPECT_EQ(ReadCellDefinition(definition(L"KRM_XDATA_ORIENTATION", {L"V"}), cell), 1);  // not the key read
  EXPECT_EQ(cell.GetInName(), L"零件名称");
  EXPECT_EQ(cell.GetStringType(), L"KRM_XDATA_NUMSTR");
  EXPECT_EQ(cell.GetDecimalNum(), 0);
  EXPECT_EQ(cell.GetAlignType(), L"");
  EXPECT_EQ(cell.GetAttDir(), L"");
  EXPECT_EQ(cell.GetWidth(), 42.0);  // what the extended data does not carry stays
  ReadCellDefinition(definition(kKrmXdataCode, {L""}), cell);
  EXPECT_EQ(cell.GetInName(), L"零件名称");
}

TEST(CellDescriptor, TranslatesValueAndControlWords) {
  for (const auto& [record, type, decimals] : std::vector<std::tuple<std::vector<std::wstring>, std::wstring, int>>{
           {{L"NumberInt", L"5"}, kKrmNumInt, 0}, {{L"Number", L"2"}, kKrmNumDouble, 2},
           {{L"Number"}, kKrmNumDouble, 0}, {{L"NumberDouble", L"4"}, kKrmNumDouble, 4},
           {{L"number", L"4"}, kKrmNumStr, 0}, {{L"String", L"4"}, kKrmNumStr, 0}}) {
    std::wstring t;
    int d = 99;
    ReadValueType(definition(kKrmXdataVType, record), t, d);
    EXPECT_EQ(t, type) << record[0];
    EXPECT_EQ(d, decimals) << record[0];
  }
  const std::pair<const wchar_t*, const wchar_t*> kinds[] = {
      {L"CMB_DOWN", L"LG_CBS_DROPDOWN"}, {L"CMB_LIST_YESNO", L"LG_CBS_DROPDOWNLIST"},
      {L"CMB_LIST", L"LG_CBS_DROPDOWNLIST"}, {L"NOCTRL", L"LG_NONE"}, {L"EDT_SPIN", L"LG_EDIT"},
      {L"EDT_NUM", L"LG_EDITNUMERIC"}, {L"EDT_REAL", L"LG_EDITNUMERIC"}, {L"PTI_DATE", L"LG_DATETIME"},
      {L"CHK_CELLCHECK", L"LG_CELLCHECK"}, {L"", L"LG_EDIT"}, {L"cmb_down", L"LG_EDIT"}};
  for (const auto& [word, kind] : kinds) EXPECT_EQ(ControlKindOfWord(word), kind) << word;
}

TEST(CellDescriptor, BuildsListsPerColumn) {
  std::vector<KrmAttSet> atts(8);
  const wchar_t* columns[][2] = {{L"CMB_LIST_YESNO", L"x"}, {L"CMB_DOWN", L"钢;铜"}, {L"CMB_DOWN", L""},
                                 {L"CMB_LIST", L""},       {L"CHK_CELLCHECK", L"Y;N"}, {L"EDT_NUM", L""},
                                 {L"", L"x;;y;"},          {L"CHK_CELLCHECK", L""}};
  for (int i = 0; i < 8; ++i) atts[i].SetCtrType(columns[i][0]), atts[i].SetCtrContent(columns[i][1]);
  KrmControlLists lists{{L"3", {L"old"}}, {L"99", {L"other"}}};
  EXPECT_EQ(BuildControlLists(atts, lists), 1);
  using V = std::vector<std::wstring>;
  EXPECT_EQ(lists, (KrmControlLists{{L"1", V{L"", L"是", L"否"}}, {L"2", V{L"钢", L"铜"}}, {L"3", V{L"old"}},
                                    {L"4", V{L""}}, {L"5", V{L"Y", L"N"}}, {L"6", V{L""}},
                                    {L"7", V{L"", L"x", L"y"}}, {L"99", V{L"other"}}}));
}

}  // namespace
