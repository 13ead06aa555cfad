#include "authoring/block_scanning.h"

#include <gtest/gtest.h>

#include "authoring_test_support.h"
#include "host/rx/qa_lang_resource.h"

namespace {

using authtest::AddBlock;
using authtest::AddReference;

std::vector<std::wstring> Tags(const KrmDataAttTR& record) {
  std::vector<std::wstring> tags;
  for (const auto& att : record.atts) tags.push_back(att.GetShowName());
  return tags;
}

TEST(CollectBlockClasses, CountsReferencesPerClassInOrderOfFirstSight) {
  authtest::Form form(5);
  std::vector<KrmDataAttTR> classes;
  ASSERT_TRUE(CollectBlockClasses(form.ids, classes));
  ASSERT_EQ(classes.size(), 3u);
  EXPECT_EQ(classes[0].blockName, L"TITLE");
  EXPECT_EQ(classes[0].refCount, 1);
  EXPECT_EQ(classes[2].blockName, L"ROW");
  EXPECT_EQ(classes[2].refCount, 5);
  EXPECT_EQ(classes[2].fillOrder, 0);
  EXPECT_EQ(classes[2].pageAttIndex, -1);
}

TEST(CollectBlockClasses, SkipsErasedIdsPlainBlocksAndOtherEntities) {
  QaDbDatabase db;
  const auto plain = AddBlock(db, L"LOGO", {});
  const auto row = AddBlock(db, L"ROW", {{L"工序", L""}});
  std::vector<QaDbObjectId> ids = {authtest::AddLine(db, 0, 0, 1, 1), AddReference(db, plain, 0, 0),
                                   AddReference(db, plain, 5, 0), AddReference(db, row, 0, 10)};
  const QaDbObjectId gone = AddReference(db, row, 0, 20);
  ids.push_back(gone);
  {
    QaDbObjectPointer<QaDbEntity> erase(gone, QaDb::kForWrite);
    ASSERT_EQ(erase->erase(), Qa::eOk);
  }
  std::vector<KrmDataAttTR> classes;
  ASSERT_TRUE(CollectBlockClasses(ids, classes));
  ASSERT_EQ(classes.size(), 1u);
  EXPECT_EQ(classes[0].blockName, L"ROW");
  EXPECT_EQ(classes[0].refCount, 1);
}

TEST(CollectBlockClasses, EmptySelectionLeavesTheArrayAlone) {
  std::vector<KrmDataAttTR> classes(2);
  EXPECT_FALSE(CollectBlockClasses({}, classes));
  EXPECT_EQ(classes.size(), 2u);
}

TEST(CollectBlockClasses, PrefixedTemplateBlockJoinsItsClassUnderTheShorterName) {
  QaDbDatabase db;
  const auto prefixed = AddBlock(db, L"abc123_ROW", {{L"工序", L""}});
  const auto plain = AddBlock(db, L"ROW", {{L"工序", L""}});
  const auto other = AddBlock(db, L"C_ROW", {{L"工序", L""}});
  std::vector<KrmDataAttTR> classes;
  ASSERT_TRUE(CollectBlockClasses({AddReference(db, prefixed, 0, 0), AddReference(db, plain, 0, 8)}, classes));
  ASSERT_EQ(classes.size(), 1u);
  EXPECT_EQ(classes[0].blockName, L"ROW");
  EXPECT_EQ(classes[0].refCount, 2);
  // Two prefixed names with the same tail are different classes.
  ASSERT_TRUE(CollectBlockClasses({AddReference(db, prefixed, 0, 0), AddReference(db, other, 0, 8)}, classes));
  EXPECT_EQ(classes.size(), 2u);
}

TEST(ReadCellsOfBlock, FirstDefinitionOfATagWinsAndCellsFollowTheirOrder) {
  QaDbDatabase db;
  const auto block = AddBlock(db, L"ROW", {{L"甲", L"10", 12}, {L"乙", L"2", 30}, {L"甲", L"0", 5}, {L"丙", L""}});
  std::vector<KrmDataAttTR> classes;
  ASSERT_TRUE(CollectBlockClasses({AddReference(db, block, 50, 50)}, classes));
  ASSERT_EQ(classes.size(), 1u);
  EXPECT_EQ(Tags(classes[0]), (std::vector<std::wstring>{L"丙", L"乙", L"甲"}));
  EXPECT_DOUBLE_EQ(classes[0].atts[2].GetWidth(), 12.0);  // the first 甲, fitted between points 12 apart
  EXPECT_DOUBLE_EQ(classes[0].atts[2].GetHeight(), 2.5);
  EXPECT_EQ(classes[0].atts[0].GetInName(), L"丙");
}

TEST(SortCellsByOrder, IsStableAndTakesWordsAsZero) {
  std::vector<KrmAttSet> atts(5);
  const wchar_t* orders[] = {L"3", L"x", L"1", L"", L"-2"};
  const wchar_t* names[] = {L"a", L"b", L"c", L"d", L"e"};
  for (int i = 0; i < 5; ++i) {
    atts[static_cast<std::size_t>(i)].SetShowType(orders[i]);
    atts[static_cast<std::size_t>(i)].SetShowName(names[i]);
  }
  SortCellsByOrder(atts);
  std::wstring order;
  for (const auto& att : atts) order += att.GetShowName();
  EXPECT_EQ(order, L"ebdca");
}

TEST(FillMap, CarriesFillOrderAndCountAndSkipsMalformedEntries) {
  std::vector<KrmDataAttTR> records(3);
  records[0].blockName = L"ROW";
  records[0].fillOrder = 5;
  records[0].refCount = 12;
  records[1].blockName = L"SIGN";
  records[2].blockName = L"NOTE";
  const KrmTextListMap map = BuildFillMap({records[0]});
  EXPECT_EQ(map.at(L"ROW"), (std::vector<std::wstring>{L"5", L"12"}));

  std::vector<KrmDataAttTR> loaded = FromBlockSets(ToBlockSets(records));
  KrmTextListMap withBad = map;
  withBad[L"SIGN"] = {L"3"};
  ApplyFillMap(loaded, withBad);
  EXPECT_EQ(loaded[0].fillOrder, 5);
  EXPECT_EQ(loaded[0].refCount, 12);
  EXPECT_EQ(loaded[1].refCount, 0);
  EXPECT_EQ(loaded[2].refCount, 0);
  EXPECT_TRUE(loaded[0].blockId.isNull());
}

TEST(BuildPageAttMap, BindsLinesOfTwoPartsAndLeavesOthersUnbound) {
  const std::wstring block = L"块名:", att = L"属性名:";
  const KrmTextListMap map =
      BuildPageAttMap({L"块名:TITLE,属性名:页码", L"", L"块名:A,B,属性名:C", L"TITLE,总页", L"块名:ROW"}, block, att);
  EXPECT_EQ(map.at(kKrmClassCur), (std::vector<std::wstring>{L"TITLE", L"页码"}));
  EXPECT_EQ(map.at(kKrmBatchSum), (std::vector<std::wstring>{L"TITLE", L"总页"}));
  EXPECT_EQ(map.count(kKrmClassSum), 0u);
  EXPECT_EQ(map.count(kKrmBatchCur), 0u);
  EXPECT_EQ(map.count(kKrmAutoNum), 0u);
  EXPECT_TRUE(map.at(L"").empty());
}

}  // namespace
