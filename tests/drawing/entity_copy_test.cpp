#include "drawing/entity_copy.h"

#include <gtest/gtest.h>

#include "drawing/block_names.h"
#include "records_test_support.h"

namespace {

using recordstest::addBlock;
using recordstest::addToModelSpace;

class EntityCopy : public ::testing::Test {
 protected:
  std::unique_ptr<QaDbEntity> Copy(std::unique_ptr<QaDbEntity> entity) {
    entity->setLayer(L"PAGE");
    entity->setColorIndex(3);
    return CopyEntityAcross(&source, QaDbEntity::cast(addToModelSpace(source, std::move(entity)).rawObject()),
                            &current);
  }
  QaDbDatabase source, current;
};

TEST_F(EntityCopy, TextBringsItsStyleAndKeepsItsValues) {
  QaDbObjectId style;
  QaDbObjectPointer<QaDbTextStyleTable>(source.textStyleTableId(), QaDb::kForWrite)
      ->add(std::make_unique<QaDbTextStyleTableRecord>(L"CARD"), style);
  style.rawObject()->close();
  auto text = std::make_unique<QaDbText>(QaGePoint3d(5, 6, 0), L"工序", style, 3.5, 0.25);
  text->setHorizontalMode(QaDb::kTextCenter);
  text->setAlignmentPoint({7, 6, 0});
  text->setWidthFactor(0.8);
  auto copy = Copy(std::move(text));
  ASSERT_EQ(copy->isA(), QaDbText::desc());
  const auto& t = static_cast<QaDbText&>(*copy);
  EXPECT_EQ(t.textString(), L"工序");
  EXPECT_EQ(t.alignmentPoint(), QaGePoint3d(7, 6, 0));
  EXPECT_EQ(t.horizontalMode(), QaDb::kTextCenter);
  EXPECT_EQ(t.widthFactor(), 0.8);
  EXPECT_EQ(t.layer(), L"PAGE");
  EXPECT_EQ(t.textStyle().database(), &current);
  EXPECT_EQ(GetTextStyleName(t.textStyle()), L"CARD");
}

TEST_F(EntityCopy, OtherKindsAndDerivedClassesAreDropped) {
  EXPECT_EQ(Copy(std::make_unique<QaDbCircle>(QaGePoint3d(0, 0, 0), QaGeVector3d::kZAxis, 5)), nullptr);
  EXPECT_EQ(Copy(std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(), L"x", L"T", L"T")), nullptr);
  EXPECT_EQ(Copy(std::make_unique<QaDbBlockReference>(QaGePoint3d(), QaDbObjectId())), nullptr);
}

TEST_F(EntityCopy, ReferenceGetsAttributesFromTheDefinitionAndKeepsAnExistingBlock) {
  const QaDbObjectId block = addBlock(source, L"T1_ROW", {L"A", L"!K", L"B"});
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(100, 50, 0), block);
  ref->setScaleFactors(QaGeScale3d(2, 2, 2));
  auto copy = Copy(std::move(ref));
  const auto& r = static_cast<QaDbBlockReference&>(*copy);
  EXPECT_EQ(GetBlockName(r.blockTableRecord()), L"T1_ROW");
  ASSERT_EQ(r.pendingAttributes().size(), 2u);  // the constant one gives none
  const QaDbAttribute& a = *r.pendingAttributes()[0];
  EXPECT_EQ(a.tag(), L"A");
  EXPECT_EQ(a.textString(), L"default A");
  EXPECT_EQ(a.position(), QaGePoint3d(102, 54, 0));
  EXPECT_DOUBLE_EQ(a.height(), 5.0);
  EXPECT_DOUBLE_EQ(a.widthFactor(), 0.7);  // set after the transform
  EXPECT_EQ(r.pendingAttributes()[1]->position(), QaGePoint3d(114, 54, 0));

  // A block the current drawing has is used as it stands there.
  QaDbDatabase other;
  const QaDbObjectId own = addBlock(other, L"T1_ROW", {});
  auto again = CopyEntityAcross(&source, &r, &other);
  EXPECT_EQ(static_cast<QaDbBlockReference&>(*again).blockTableRecord(), own);
  EXPECT_TRUE(static_cast<QaDbBlockReference&>(*again).pendingAttributes().empty());
}

}  // namespace
