#include "authoring/cell_descriptor_editor.h"

#include <gtest/gtest.h>

#include "authoring_test_support.h"
#include "drawing/cell_descriptor.h"
#include "support/test_support.h"

namespace {

class CellDescription : public ::testing::Test {
 protected:
  void SetUp() override {
    authtest::AddBlock(db, L"ROW", {{L"数量", L"3"}, {L"名称", L""}});
    auto found = FindAttributeDefinition(db, L"ROW", L"数量");
    ASSERT_TRUE(found.ok()) << found.describe();
    definition = found.value();
  }
  KrmAttSet Read() {
    QaDbObjectPointer<QaDbAttributeDefinition> def(definition, QaDb::kForRead);
    KrmAttSet att;
    ReadCellDefinition(*def, att);
    return att;
  }
  QaDbDatabase db;
  QaDbObjectId definition;
};

TEST_F(CellDescription, WrittenPropertiesReadBackAsTheCell) {
  KrmCellDescriptorEditor editor(definition);
  EXPECT_EQ(editor.Value(L"order"), L"3");
  for (const auto& [key, value] : std::vector<std::pair<std::wstring, std::wstring>>{
           {L"type", L"NumberDouble"}, {L"decimals", L"3"}, {L"align", L"RIGHT"}, {L"length", L"kFit"},
           {L"control", L"CMB_LIST"}, {L"values", L"件;套"}, {L"expression", L"单价*2"}, {L"order", L"7"},
           {L"editable", L"0"}, {L"code", L"QTY"}, {L"default", L"1"}})
    ASSERT_TRUE(editor.Set(key, value).ok()) << tabulon::svc::toUtf8(key);
  ASSERT_TRUE(editor.Apply().ok());
  const KrmAttSet att = Read();
  EXPECT_EQ(att.GetStringType(), kKrmNumDouble);
  EXPECT_EQ(att.GetDecimalNum(), 3);
  EXPECT_EQ(att.GetAlignType(), L"RIGHT");
  EXPECT_EQ(att.GetRowType(), L"kFit");
  EXPECT_EQ(att.GetCtrType(), L"CMB_LIST");
  EXPECT_EQ(att.GetCtrContent(), L"件;套");
  EXPECT_EQ(att.GetCalc(), L"单价*2");
  EXPECT_EQ(att.GetShowType(), L"7");
  EXPECT_EQ(att.GetCanEdit(), L"0");
  EXPECT_EQ(att.GetInName(), L"QTY");
  EXPECT_EQ(att.GetDefault(), L"1");
}

TEST_F(CellDescription, ClearingRemovesThePropertyAndTheDecimalsWithTheType) {
  KrmCellDescriptorEditor editor(definition);
  ASSERT_TRUE(editor.Set(L"type", L"Number").ok());
  ASSERT_TRUE(editor.Set(L"decimals", L"2").ok());
  ASSERT_TRUE(editor.Set(L"code", L"QTY").ok());
  ASSERT_TRUE(editor.Apply().ok());
  ASSERT_TRUE(editor.Clear(L"decimals").ok());
  ASSERT_TRUE(editor.Clear(L"order").ok());
  ASSERT_TRUE(editor.Apply().ok());
  KrmAttSet att = Read();
  EXPECT_EQ(att.GetStringType(), kKrmNumDouble);
  EXPECT_EQ(att.GetDecimalNum(), 0);
  EXPECT_EQ(att.GetShowType(), L"");
  ASSERT_TRUE(editor.Clear(L"type").ok());
  ASSERT_TRUE(editor.Clear(L"code").ok());
  ASSERT_TRUE(editor.Apply().ok());
  att = Read();
  EXPECT_EQ(att.GetStringType(), kKrmNumStr);
  EXPECT_EQ(att.GetInName(), L"数量");
  QaDbObjectPointer<QaDbObject> def(definition, QaDb::kForRead);
  EXPECT_FALSE(def->hasXData(L"KRM_XDATA_VTYPE"));
}

struct BadValue {
  const wchar_t* key;
  const wchar_t* value;
};

class CellDescriptionRefusals : public CellDescription, public ::testing::WithParamInterface<BadValue> {};

TEST_P(CellDescriptionRefusals, NameTheKeyAndChangeNothing) {
  KrmCellDescriptorEditor editor(definition);
  const tabulon::Status set = editor.Set(GetParam().key, GetParam().value);
  ASSERT_FALSE(set.ok());
  EXPECT_EQ(set.error().field, tabulon::svc::toUtf8(GetParam().key));
  EXPECT_FALSE(editor.HasChanges());
}

INSTANTIATE_TEST_SUITE_P(Values, CellDescriptionRefusals,
                         ::testing::Values(BadValue{L"type", L"Integer"}, BadValue{L"decimals", L"two"},
                                           BadValue{L"decimals", L"99"}, BadValue{L"align", L"center"},
                                           BadValue{L"length", L"wrap"}, BadValue{L"control", L"EDIT"},
                                           BadValue{L"order", L"1.5"}, BadValue{L"colour", L"red"}));

TEST_F(CellDescription, MissingBlockOrTagIsNamed) {
  const auto noBlock = FindAttributeDefinition(db, L"NOPE", L"数量");
  ASSERT_FALSE(noBlock.ok());
  EXPECT_EQ(noBlock.error().field, "NOPE");
  const auto noTag = FindAttributeDefinition(db, L"ROW", L"单价");
  ASSERT_FALSE(noTag.ok());
  EXPECT_EQ(noTag.error().field, "ROW.单价");
}

}  // namespace
