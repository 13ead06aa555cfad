#include "drawing/block_names.h"

#include <gtest/gtest.h>

#include "cell_test_support.h"
#include "drawing/mtext_attribute.h"

namespace {

TEST(BlockNames, StripPrefixesAndResetPrefixedBlocks) {
  for (const auto& [name, one, all] : {std::tuple{L"T01_ROW", L"ROW", L"ROW"}, std::tuple{L"A_B_C", L"B_C", L"C"},
                                       std::tuple{L"ROW", L"ROW", L"ROW"}, std::tuple{L"X_", L"", L""}}) {
    EXPECT_EQ(StripBlockPrefix(name), one) << name;
    EXPECT_EQ(StripAllBlockPrefixes(name), all) << name;
  }
  QaDbDatabase db;
  const QaDbObjectId style = tabulon::test::addTextStyle(db, L"工艺");
  const QaDbObjectId prefixed = tabulon::test::addBlock(db, L"ID7_T01_行", {});
  const QaDbObjectId taken = tabulon::test::addBlock(db, L"X_头", {});
  tabulon::test::addBlock(db, L"头", {});
  EXPECT_EQ(GetTextStyleName(style), L"工艺");
  EXPECT_EQ(GetBlockName(style), L"");  // not a block
  EXPECT_EQ(GetTextStyleName(prefixed), L"");  // not a text style
  EXPECT_EQ(ResetBlockName(prefixed), 1);
  EXPECT_EQ(ResetBlockName(taken), 1);
  EXPECT_EQ(ResetBlockName(style), 0);
  EXPECT_EQ(GetBlockName(prefixed), L"行");
  EXPECT_EQ(GetBlockName(taken), L"X_头");  // the bare name is taken: kept
}

TEST(BlockNames, MultiLineAttributesAreRestoredWhereTheDefinitionIsOne) {
  QaDbDatabase db;
  const QaDbObjectId block = tabulon::test::addBlock(db, L"T01_NOTE", {{L"NOTE", {5, 2, 0}, true}, {L"PLAIN", {}}});
  auto ref = tabulon::test::makeReference(block, {100, 50, 0}, {{L"NOTE", L"a"}, {L"PLAIN", L"b"}, {L"note", L"c"}});
  ref->setRotation(1.0);  // neither rotation nor scale enters
  ref->setScaleFactors(QaGeScale3d(2, 2, 2));
  const auto& atts = ref->pendingAttributes();
  EXPECT_EQ(RestoreMTextAttribute(*ref, *atts[0]), 1);
  EXPECT_TRUE(atts[0]->isMTextAttribute());
  EXPECT_EQ(atts[0]->verticalMode(), QaDb::kTextVertMid);
  EXPECT_TRUE(atts[0]->position().isEqualTo({105, 52, 0}));
  EXPECT_TRUE(atts[0]->alignmentPoint().isEqualTo({105, 52, 0}));
  EXPECT_EQ(RestoreMTextAttribute(*ref, *atts[1]), 0);
  EXPECT_EQ(RestoreMTextAttribute(*ref, *atts[2]), 0);
  EXPECT_FALSE(atts[1]->isMTextAttribute());
  EXPECT_FALSE(atts[2]->isMTextAttribute());
  EXPECT_EQ(RestoreMTextAttribute(QaDbBlockReference{QaGePoint3d(), QaDbObjectId()}, *atts[1]), 0);
}

}  // namespace
