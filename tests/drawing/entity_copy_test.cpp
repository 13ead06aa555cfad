#include "drawing/entity_copy.h"

#include <gtest/gtest.h>

#include "drawing/block_names.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_polyline.h"
#include "records_test_support.h"

namespace {

using recordstest::addBlock;
using recordstest::addTextStyle;
using recordstest::addToModelSpace;
using recordstest::makeRef;

template <class T>
T* Opened(QaDbObjectId id) {
  return T::cast(id.rawObject());
}

class EntityCopy : public ::testing::Test {
 protected:
  // Appends to the source drawing's model space and gives the resident entity.
  template <class T>
  const T* InSource(std::unique_ptr<T> entity) {
    entity->setLayer(L"PAGE");
    entity->setColorIndex(3);
    entity->setLinetype(L"Continuous");
    return Opened<T>(addToModelSpace(source, std::move(entity)));
  }
  std::unique_ptr<QaDbEntity> Copy(const QaDbEntity* entity) { return CopyEntityAcross(&source, entity, &current); }

  static void ExpectCommonProperties(const QaDbEntity& copy) {
    EXPECT_EQ(copy.layer(), L"PAGE");
    EXPECT_EQ(copy.colorIndex(), 3);
    EXPECT_EQ(copy.linetype(), L"Continuous");
  }

  QaDbDatabase source;
  QaDbDatabase current;
};

TEST_F(EntityCopy, LinePolylineAndTextsKeepTheirValues) {
  const QaDbObjectId style = addTextStyle(source, L"CARD");

  auto line = Copy(InSource(std::make_unique<QaDbLine>(QaGePoint3d(1, 2, 0), QaGePoint3d(3, 4, 0))));
  ASSERT_EQ(line->isA(), QaDbLine::desc());
  EXPECT_EQ(static_cast<QaDbLine&>(*line).endPoint(), QaGePoint3d(3, 4, 0));
  ExpectCommonProperties(*line);

  auto poly = std::make_unique<QaDbPolyline>();
  poly->addVertexAt(0, {0, 0}, 0.5);
  poly->addVertexAt(1, {10, 0});
  poly->addVertexAt(2, {10, 5});
  auto polyCopy = Copy(InSource(std::move(poly)));
  auto& polyline = static_cast<QaDbPolyline&>(*polyCopy);
  ASSERT_EQ(polyline.numVerts(), 3u);
  QaGePoint2d p;
  polyline.getPointAt(2, p);
  EXPECT_EQ(p, QaGePoint2d(10, 5));
  double bulge = 1;
  polyline.getBulgeAt(0, bulge);
  EXPECT_EQ(bulge, 0.0);  // bulges stay behind

  auto text = std::make_unique<QaDbText>(QaGePoint3d(5, 6, 0), L"工序", style, 3.5, 0.25);
  text->setHorizontalMode(QaDb::kTextCenter);
  text->setAlignmentPoint({7, 6, 0});
  text->setWidthFactor(0.8);
  auto textCopy = Copy(InSource(std::move(text)));
  const auto& t = static_cast<QaDbText&>(*textCopy);
  EXPECT_EQ(t.textString(), L"工序");
  EXPECT_EQ(t.height(), 3.5);
  EXPECT_EQ(t.rotation(), 0.25);
  EXPECT_EQ(t.horizontalMode(), QaDb::kTextCenter);
  EXPECT_EQ(t.alignmentPoint(), QaGePoint3d(7, 6, 0));
  EXPECT_EQ(t.widthFactor(), 0.8);
  ExpectCommonProperties(t);
  // The style came over and the copy uses the current drawing's record.
  EXPECT_EQ(t.textStyle().database(), &current);
  EXPECT_EQ(GetTextStyleName(t.textStyle()), L"CARD");

  auto mtext = std::make_unique<QaDbMText>();
  mtext->setContents(L"a\\Pb");
  mtext->setLocation({1, 1, 0});
  mtext->setTextHeight(2.5);
  mtext->setAttachment(5);
  mtext->setTextStyle(style);
  auto mtextCopy = Copy(InSource(std::move(mtext)));
  const auto& m = static_cast<QaDbMText&>(*mtextCopy);
  EXPECT_EQ(m.contents(), L"a\\Pb");
  EXPECT_EQ(m.textHeight(), 2.5);
  EXPECT_EQ(m.attachment(), 5);
  EXPECT_EQ(m.textStyle(), t.textStyle());
}

TEST_F(EntityCopy, OtherKindsAndDerivedClassesAreDropped) {
  EXPECT_EQ(Copy(InSource(std::make_unique<QaDbCircle>(QaGePoint3d(0, 0, 0), QaGeVector3d::kZAxis, 5))), nullptr);
  auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(0, 0, 0), L"x", L"TAG", L"TAG");
  EXPECT_EQ(Copy(InSource(std::move(def))), nullptr);  // derived from the text class
}

TEST_F(EntityCopy, ReferenceBringsItsBlockAndGetsAttributesFromTheDefinition) {
  const QaDbObjectId block = addBlock(source, L"T1_ROW", {{L"A", {1, 2, 0}}, {L"K", {0, 0, 0}, true}, {L"B", {5, 2, 0}}});
  auto ref = makeRef(block, {100, 50, 0});
  ref->setScaleFactors(QaGeScale3d(2, 2, 2));
  auto copy = Copy(InSource(std::move(ref)));
  ASSERT_NE(copy, nullptr);
  const auto& r = static_cast<QaDbBlockReference&>(*copy);
  EXPECT_EQ(r.blockTableRecord().database(), &current);
  EXPECT_EQ(GetBlockName(r.blockTableRecord()), L"T1_ROW");
  EXPECT_EQ(r.position(), QaGePoint3d(100, 50, 0));
  EXPECT_EQ(r.layer(), L"PAGE");

  // The constant definition gives no attribute.
  ASSERT_EQ(r.pendingAttributes().size(), 2u);
  const QaDbAttribute& a = *r.pendingAttributes()[0];
  EXPECT_EQ(a.tag(), L"A");
  EXPECT_EQ(a.textString(), L"default A");
  EXPECT_EQ(a.position(), QaGePoint3d(102, 54, 0));
  EXPECT_DOUBLE_EQ(a.height(), 5.0);
  EXPECT_DOUBLE_EQ(a.widthFactor(), 0.7);
  EXPECT_EQ(r.pendingAttributes()[1]->tag(), L"B");

  // The definitions in the current drawing keep their cell descriptors.
  QaDbObjectPointer<QaDbBlockTableRecord> copied(r.blockTableRecord(), QaDb::kForRead);
  int described = 0;
  for (QaDbObjectId id : copied->liveEntityIds())
    if (Opened<QaDbObject>(id)->hasXData(L"KRM_XDATA_CODE")) ++described;
  EXPECT_EQ(described, 3);
}

TEST_F(EntityCopy, BlockOfTheCurrentDrawingWinsAndMissingBlocksDropTheReference) {
  const QaDbObjectId inSource = addBlock(source, L"T1_ROW", {{L"A", {1, 2, 0}}});
  const QaDbObjectId inCurrent = addBlock(current, L"T1_ROW", {});
  auto copy = Copy(InSource(makeRef(inSource, {0, 0, 0})));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(static_cast<QaDbBlockReference&>(*copy).blockTableRecord(), inCurrent);
  EXPECT_TRUE(static_cast<QaDbBlockReference&>(*copy).pendingAttributes().empty());

  auto orphan = makeRef(QaDbObjectId(), {0, 0, 0});
  EXPECT_EQ(Copy(orphan.get()), nullptr);
  EXPECT_TRUE(CopyBlockAcross(&source, L"NO_SUCH_BLOCK", &current).isNull());
  EXPECT_TRUE(CopyTextStyleAcross(&source, QaDbObjectId(), L"NO_SUCH_STYLE", &current).isNull());
}

}  // namespace
