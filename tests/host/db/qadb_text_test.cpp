// Texts, multi-line texts, attribute definitions and attributes, including the
// multi-line attributes that carry an embedded text.
#include <cmath>
#include <numbers>

#include "db_test_util.h"

namespace {

using namespace qadbtest;
constexpr double kPi = std::numbers::pi;

class TextTest : public EstimatedTextWidth {};

TEST_F(TextTest, AnchorDependsOnJustification) {
  QaDbText t(QaGePoint3d(1, 1, 0), L"AB", QaDbObjectId(), 1.0);
  t.setAlignmentPoint({9, 9, 0});
  EXPECT_TRUE(t.isDefaultAlignment());
  expectPoint(t.anchorPoint(), 1, 1);
  t.setVerticalMode(QaDb::kTextTop);
  expectPoint(t.anchorPoint(), 9, 9);
  t.setVerticalMode(QaDb::kTextBase);
  t.setHorizontalMode(QaDb::kTextAlign);
  expectPoint(t.anchorPoint(), 1, 1);
  EXPECT_EQ(t.setHorizontalMode(6), Qa::eInvalidInput);
  EXPECT_EQ(t.setVerticalMode(-1), Qa::eInvalidInput);
  EXPECT_EQ(t.setWidthFactor(0.0), Qa::eInvalidInput);
  EXPECT_EQ(t.setHeight(-1.0), Qa::eInvalidInput);
}

TEST_F(TextTest, BackwardsAndUpsideDownTextExtendTheOtherWay) {
  QaDbText t(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 10.0);
  t.mirrorInX(true);
  QaDbExtents ext;
  t.getGeomExtents(ext);
  expectBox(ext, {-12, 0, 0}, {0, 10, 0});
  EXPECT_EQ(t.generationFlags(), 2);
  t.mirrorInX(false);
  t.mirrorInY(true);
  t.getGeomExtents(ext);
  expectBox(ext, {0, -10, 0}, {12, 0, 0});
  EXPECT_EQ(t.generationFlags(), 4);
}

TEST_F(TextTest, ObliqueTextLeansItsTopEdge) {
  QaDbText t(QaGePoint3d(0, 0, 0), L"AB", QaDbObjectId(), 10.0);
  t.setOblique(kPi / 4);  // the top edge moves 10 to the right
  QaDbExtents ext;
  t.getGeomExtents(ext);
  expectBox(ext, {0, 0, 0}, {22, 10, 0});
}

TEST_F(TextTest, MultiLineTextStripsFormattingAndWraps) {
  QaDbMText m;
  m.setContents(L"{\\H2.5x;\\C1;A}\\PB\\~C\\\\D\\S1^2;");
  EXPECT_EQ(m.text(), L"A\nB C\\D1/2");
  m.setContents(L"ABCDEFGHIJ");  // 10 characters, 6 wide at height 1
  m.setTextHeight(1.0);
  m.setWidth(2.5);
  // Wrapped into three lines at the reference width.
  EXPECT_DOUBLE_EQ(m.actualWidth(), 2.5);
  EXPECT_NEAR(m.actualHeight(), 1.0 + 2 * 5.0 / 3.0, 1e-12);
  m.setAttachment(QaDbMText::kBottomRight);
  QaDbExtents ext;
  m.getGeomExtents(ext);
  expectBox(ext, {-2.5, 0, 0}, {0, m.actualHeight(), 0});
  EXPECT_EQ(m.setAttachment(10), Qa::eInvalidInput);
  EXPECT_EQ(m.setLineSpacingFactor(5.0), Qa::eInvalidInput);
  m.setRotation(kPi / 2);
  EXPECT_TRUE(m.direction().isEqualTo(QaGeVector3d::kYAxis));
  EXPECT_EQ(m.setDirection(QaGeVector3d::kZAxis), Qa::eInvalidInput);
}

TEST_F(TextTest, AttributeTurnsMultiLineFromItsOwnValues) {
  QaDbDatabase db;
  QaDbObjectId hz = addTextStyle(db, L"HZ");
  QaDbAttribute att(QaGePoint3d(0, 0, 0), L"第一行", L"NOTE", hz);
  att.setHeight(3.0);
  att.setRotation(kPi / 2);
  EXPECT_FALSE(att.isMTextAttribute());
  // The steps that put a cell back to multi-line: middle-left at p.
  att.setVerticalMode(QaDb::kTextVertMid);
  att.setPosition({10, 20, 0});
  att.setAlignmentPoint({10, 20, 0});
  EXPECT_EQ(att.updateMTextAttribute(), Qa::eOk);  // nothing to update yet
  EXPECT_FALSE(att.isMTextAttribute());
  ASSERT_EQ(att.convertIntoMTextAttribute(true), Qa::eOk);
  ASSERT_TRUE(att.isMTextAttribute());
  const QaDbMText* m = att.getMTextAttribute();
  EXPECT_EQ(m->contents(), L"第一行");
  expectPoint(m->location(), 10, 20);
  EXPECT_EQ(m->attachment(), QaDbMText::kMiddleLeft);
  EXPECT_DOUBLE_EQ(m->textHeight(), 3.0);
  EXPECT_NEAR(m->rotation(), kPi / 2, 1e-12);
  EXPECT_EQ(m->textStyle(), hz);
  // Text goes into both; moves go to both.
  att.setTextString(L"A\\PB");
  EXPECT_EQ(att.getMTextAttribute()->contents(), L"A\\PB");
  ASSERT_EQ(att.transformBy(QaGeMatrix3d::translation({1, 1, 0})), Qa::eOk);
  expectPoint(att.getMTextAttribute()->location(), 11, 21);
  // Extents come from the embedded text: two lines turned a quarter.
  QaDbExtents ext;
  att.getGeomExtents(ext);
  double blockHeight = 3.0 + 5.0;
  expectBox(ext, {11 - blockHeight / 2, 21, 0}, {11 + blockHeight / 2, 22.8, 0});
  // Back to a single line: the text stays.
  ASSERT_EQ(att.convertIntoMTextAttribute(false), Qa::eOk);
  EXPECT_FALSE(att.isMTextAttribute());
  EXPECT_EQ(att.textString(), L"A\\PB");
}

TEST_F(TextTest, AttributeCopiesKeepTheirEmbeddedText) {
  QaDbAttribute att(QaGePoint3d(), L"x", L"T");
  att.convertIntoMTextAttribute();
  std::unique_ptr<QaDbObject> copy = att.clone();
  auto* c = QaDbAttribute::cast(copy.get());
  ASSERT_TRUE(c->isMTextAttribute());
  EXPECT_NE(c->getMTextAttribute(), att.getMTextAttribute());
  c->setTextString(L"y");
  EXPECT_EQ(att.getMTextAttribute()->contents(), L"x");
}

TEST_F(TextTest, AttributeFlagsAndTags) {
  QaDbAttributeDefinition def(QaGePoint3d(), L"", L"SIZE", L"规格");
  EXPECT_EQ(def.setTag(L"HAS SPACE"), Qa::eInvalidInput);
  EXPECT_EQ(def.setTag(L""), Qa::eInvalidInput);
  EXPECT_STREQ(def.tagConst(), L"SIZE");
  def.setInvisible(true);
  def.setPreset(true);
  EXPECT_EQ(def.attributeFlags(), 9);
  def.setInvisible(false);
  EXPECT_FALSE(def.isInvisible());
  EXPECT_TRUE(def.isPreset());
  EXPECT_EQ(def.setFieldLength(-1), Qa::eInvalidInput);
  def.setFieldLength(12);
  def.setConstant(true);
  QaDbAttribute att;
  ASSERT_EQ(att.setAttributeFromBlock(&def, QaGeMatrix3d::kIdentity), Qa::eOk);
  EXPECT_EQ(att.tag(), L"SIZE");
  EXPECT_EQ(att.fieldLength(), 12);
  EXPECT_TRUE(att.isConstant());
  EXPECT_TRUE(att.isPreset());
  def.convertIntoMTextAttributeDefinition();
  EXPECT_TRUE(def.isMTextAttributeDefinition());
  ASSERT_EQ(att.setAttributeFromBlock(&def, QaGeMatrix3d::kIdentity), Qa::eOk);
  EXPECT_TRUE(att.isMTextAttribute());
}

}  // namespace
