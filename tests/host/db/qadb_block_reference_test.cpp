// Block references: their transform, extents with scale and rotation, attributes in
// memory and in the database, explode.
#include <cmath>
#include <numbers>

#include "db_test_util.h"

namespace {

using namespace qadbtest;
constexpr double kPi = std::numbers::pi;

// Block "B": a line (0,0)-(10,0), a circle at (10,10) of radius 2, and an attribute
// definition "NAME" at (0,5) that references leave out of their extents.
struct BlockFixture : EstimatedTextWidth {
  QaDbDatabase db;
  QaDbObjectId block;

  void SetUp() override {
    EstimatedTextWidth::SetUp();
    block = addBlock(db, L"B");
    append(db, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)), block);
    append(db, std::make_unique<QaDbCircle>(QaGePoint3d(10, 10, 0), QaGeVector3d::kZAxis, 2.0), block);
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(0, 5, 0), L"默认", L"NAME", L"名称");
    def->setHeight(1.0);
    def->setXData(L"KRM_XDATA_CODE", {QaDbXDataItem::string(L"name")});
    append(db, std::move(def), block);
  }

  std::unique_ptr<QaDbBlockReference> reference(const QaGePoint3d& at, const QaGeScale3d& scale, double rotation) {
    auto ref = std::make_unique<QaDbBlockReference>(at, block);
    ref->setScaleFactors(scale);
    ref->setRotation(rotation);
    return ref;
  }
};

struct RefCase {
  const char* name;
  QaGePoint3d at;
  QaGeScale3d scale;
  double rotation;
  QaGePoint3d lo;
  QaGePoint3d hi;
};

TEST_F(BlockFixture, ExtentsFollowScaleAndRotation) {
  const RefCase cases[] = {
      {"plain", {0, 0, 0}, QaGeScale3d(1.0), 0.0, {0, 0, 0}, {12, 12, 0}},
      // The circle becomes an ellipse with radii 4 and 6 around (120,80).
      {"moved and stretched", {100, 50, 0}, QaGeScale3d(2, 3, 1), 0.0, {100, 50, 0}, {124, 86, 0}},
      // Line to (0,20); circle around (-20,20) with radius 4.
      {"turned a quarter and doubled", {0, 0, 0}, QaGeScale3d(2.0), kPi / 2, {-24, 0, 0}, {0, 24, 0}},
      {"mirrored by a negative factor", {0, 0, 0}, QaGeScale3d(-1, 1, 1), 0.0, {-12, 0, 0}, {0, 12, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    auto ref = reference(c.at, c.scale, c.rotation);
    QaDbExtents ext;
    ASSERT_EQ(ref->getGeomExtents(ext), Qa::eOk);
    expectBox(ext, c.lo, c.hi, 1e-9);
  }
}

TEST_F(BlockFixture, BasePointShiftsTheContents) {
  {
    QaDbObjectPointer<QaDbBlockTableRecord> rec(block, QaDb::kForWrite);
    rec->setOrigin({5, 0, 0});
  }
  auto ref = reference({0, 0, 0}, QaGeScale3d(1.0), 0.0);
  QaDbExtents ext;
  ASSERT_EQ(ref->getGeomExtents(ext), Qa::eOk);
  expectBox(ext, {-5, 0, 0}, {7, 12, 0});
  expectPoint(ref->blockTransform() * QaGePoint3d(5, 0, 0), 0, 0);
}

TEST_F(BlockFixture, AttributesCountInExtentsAndMoveWithTheReference) {
  QaDbObjectId refId = append(db, reference({0, 0, 0}, QaGeScale3d(1.0), 0.0));
  QaDbObjectId attId;
  {
    QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForWrite);
    auto att = std::make_unique<QaDbAttribute>(QaGePoint3d(0, 20, 0), L"ABCDEFGHIJ", L"NAME");
    att->setHeight(2.0);  // 10 characters: 12 wide, up to y = 22
    ASSERT_EQ(ref->appendAttribute(attId, std::move(att)), Qa::eOk);
    attId.rawObject()->close();
    EXPECT_EQ(attId.rawObject()->ownerId(), refId);
    EXPECT_EQ(QaDbEntity::cast(attId.rawObject())->blockId(), db.modelSpaceId());
    QaDbExtents ext;
    ASSERT_EQ(ref->getGeomExtents(ext), Qa::eOk);
    expectBox(ext, {0, 0, 0}, {12, 22, 0});
    ASSERT_EQ(ref->transformBy(QaGeMatrix3d::translation({100, 0, 0})), Qa::eOk);
    expectPoint(ref->position(), 100, 0);
  }
  QaDbObjectPointer<QaDbAttribute> att(attId, QaDb::kForRead);
  expectPoint(att->position(), 100, 20);
  // Invisible attributes are not drawn.
  att->upgradeOpen();
  att->setInvisible(true);
  att.close();
  QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForRead);
  QaDbExtents ext;
  ref->getGeomExtents(ext);
  expectBox(ext, {100, 0, 0}, {112, 12, 0});
}

TEST_F(BlockFixture, ScalingAReferenceScalesItsAttributes) {
  auto ref = reference({0, 0, 0}, QaGeScale3d(1.0), 0.0);
  auto att = std::make_unique<QaDbAttribute>(QaGePoint3d(1, 1, 0), L"x", L"NAME");
  att->setHeight(2.0);
  QaDbAttribute* raw = att.get();
  QaDbObjectId id;
  ASSERT_EQ(ref->appendAttribute(id, std::move(att)), Qa::eOk);
  EXPECT_TRUE(id.isNull());  // the reference is in memory
  ASSERT_EQ(ref->transformBy(QaGeMatrix3d::translation({100, 100, 0}) * QaGeMatrix3d::scaling(2.0)), Qa::eOk);
  EXPECT_TRUE(ref->scaleFactors().isEqualTo(QaGeScale3d(2.0)));
  expectPoint(raw->position(), 102, 102);
  EXPECT_DOUBLE_EQ(raw->height(), 4.0);
}

TEST_F(BlockFixture, MirrorKeepsTheNormalAndNegatesTheXFactor) {
  auto ref = reference({10, 0, 0}, QaGeScale3d(1.0), 0.0);
  ASSERT_EQ(ref->transformBy(QaGeMatrix3d::mirroring(QaGePoint3d::kOrigin, QaGeVector3d::kXAxis)), Qa::eOk);
  EXPECT_TRUE(ref->normal().isEqualTo(QaGeVector3d::kZAxis));
  EXPECT_DOUBLE_EQ(ref->scaleFactors().sx, -1.0);
  expectPoint(ref->position(), -10, 0);
  QaDbExtents ext;
  ref->getGeomExtents(ext);
  expectBox(ext, {-22, 0, 0}, {-10, 12, 0});
}

TEST_F(BlockFixture, CloneCarriesAttributesWhichEnterTheDatabaseWithIt) {
  QaDbObjectId refId = append(db, reference({0, 0, 0}, QaGeScale3d(1.0), 0.0));
  {
    QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForWrite);
    QaDbObjectId a;
    ref->appendAttribute(a, std::make_unique<QaDbAttribute>(QaGePoint3d(), L"v1", L"NAME"));
    a.rawObject()->close();
    ref->setXData(L"KRM_TABULONPARA", {QaDbXDataItem::string(L"card")});
  }
  std::unique_ptr<QaDbEntity> copy;
  {
    QaDbObjectPointer<QaDbBlockReference> ref(refId, QaDb::kForRead);
    copy = ref->cloneEntity();
  }
  ASSERT_EQ(copy->transformBy(QaGeMatrix3d::translation({0, 50, 0})), Qa::eOk);
  auto* copyRef = QaDbBlockReference::cast(copy.get());
  ASSERT_EQ(copyRef->attributeCount(), 1);
  auto it = copyRef->attributeIterator();
  auto* att = QaDbAttribute::cast(it->entity());
  ASSERT_NE(att, nullptr);
  EXPECT_TRUE(it->objectId().isNull());
  EXPECT_EQ(att->textString(), L"v1");
  expectPoint(att->position(), 0, 50);
  EXPECT_EQ(copyRef->xData(L"KRM_TABULONPARA").size(), 1u);
  QaDbObjectId copyId = append(db, std::move(copy));
  QaDbObjectPointer<QaDbBlockReference> placed(copyId, QaDb::kForRead);
  ASSERT_EQ(placed->attributeIds().size(), 1u);
  QaDbObjectId attId = placed->attributeIds()[0];
  EXPECT_EQ(attId.rawObject()->ownerId(), copyId);
  EXPECT_FALSE(attId.rawObject()->isOpen());
  // Erasing the reference erases its attributes.
  placed->upgradeOpen();
  placed->erase();
  EXPECT_TRUE(attId.isErased());
}

TEST_F(BlockFixture, ExplodeGivesTransformedCopiesWithDefinitions) {
  auto ref = reference({100, 0, 0}, QaGeScale3d(2, 1, 1), 0.0);
  std::vector<std::unique_ptr<QaDbEntity>> parts;
  ASSERT_EQ(ref->explode(parts), Qa::eOk);
  ASSERT_EQ(parts.size(), 3u);
  auto* line = QaDbLine::cast(parts[0].get());
  ASSERT_NE(line, nullptr);
  expectPoint(line->endPoint(), 120, 0);
  // A circle under a non-uniform scale comes out as an ellipse.
  auto* ellipse = QaDbEllipse::cast(parts[1].get());
  ASSERT_NE(ellipse, nullptr);
  expectPoint(ellipse->center(), 120, 10);
  EXPECT_NEAR(ellipse->majorAxis().length(), 4.0, 1e-12);
  EXPECT_NEAR(ellipse->radiusRatio(), 0.5, 1e-12);
  auto* def = QaDbAttributeDefinition::cast(parts[2].get());
  ASSERT_NE(def, nullptr);
  EXPECT_EQ(def->tag(), L"NAME");
  expectPoint(def->position(), 100, 5);
  EXPECT_EQ(def->xData(L"KRM_XDATA_CODE")[0].asString(), L"name");
  EXPECT_FALSE(def->isDatabaseResident());
}

TEST_F(BlockFixture, NestedReferencesAddUp) {
  QaDbObjectId outer = addBlock(db, L"OUTER");
  append(db, reference({100, 0, 0}, QaGeScale3d(1.0), 0.0), outer);
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), outer);
  ref->setScaleFactors(QaGeScale3d(0.5));
  QaDbExtents ext;
  ASSERT_EQ(ref->getGeomExtents(ext), Qa::eOk);
  expectBox(ext, {50, 0, 0}, {56, 6, 0});
  {
    QaDbObjectPointer<QaDbBlockTableRecord> rec(block, QaDb::kForRead);
    EXPECT_TRUE(rec->hasAttributeDefinitions());
    EXPECT_EQ(rec->blockFlags() & QaDbBlockTableRecord::kHasAttributes, QaDbBlockTableRecord::kHasAttributes);
  }
  QaDbObjectPointer<QaDbBlockTableRecord> rec(outer, QaDb::kForRead);
  EXPECT_FALSE(rec->hasAttributeDefinitions());
}

TEST_F(BlockFixture, AttributeFromDefinitionFollowsTheBlockTransform) {
  QaDbObjectPointer<QaDbBlockTableRecord> rec(block, QaDb::kForRead);
  auto it = rec->newIterator();
  it->step();
  it->step();
  QaDbAttributeDefinition* def = nullptr;
  QaDbEntity* ent = nullptr;
  ASSERT_EQ(it->getEntity(ent, QaDb::kForRead), Qa::eOk);
  def = QaDbAttributeDefinition::cast(ent);
  ASSERT_NE(def, nullptr);
  auto ref = reference({10, 10, 0}, QaGeScale3d(2.0), 0.0);
  QaDbAttribute att;
  ASSERT_EQ(att.setAttributeFromBlock(def, ref->blockTransform()), Qa::eOk);
  def->close();
  EXPECT_EQ(att.tag(), L"NAME");
  EXPECT_EQ(att.textString(), L"默认");
  expectPoint(att.position(), 10, 20);
  EXPECT_DOUBLE_EQ(att.height(), 2.0);
}

}  // namespace
