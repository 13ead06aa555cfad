// Objects in a database: opening and closing, write checks, erasing, extended data,
// reactors, class tests and copies.
#include <stdexcept>

#include "db_test_util.h"

namespace {

using namespace qadbtest;

TEST(QaDbObject, OpenModesGuardSetters) {
  QaDbDatabase db;
  QaDbObjectId id = append(db, std::make_unique<QaDbLine>(QaGePoint3d(), QaGePoint3d(1, 0, 0)));
  QaDbLine* line = nullptr;
  ASSERT_EQ(qadbOpenObject(line, id, QaDb::kForRead), Qa::eOk);
  EXPECT_TRUE(line->isReadEnabled());
  EXPECT_FALSE(line->isWriteEnabled());
  EXPECT_THROW(line->setEndPoint({2, 0, 0}), std::logic_error);
  EXPECT_EQ(line->upgradeOpen(), Qa::eOk);
  EXPECT_EQ(line->upgradeOpen(), Qa::eWasOpenForWrite);
  EXPECT_EQ(line->setEndPoint({2, 0, 0}), Qa::eOk);
  EXPECT_EQ(line->close(), Qa::eOk);
  EXPECT_FALSE(line->isOpen());
  EXPECT_EQ(line->close(), Qa::eNotOpenForRead);
  EXPECT_THROW(line->setStartPoint({1, 1, 0}), std::logic_error);
  // An entity in memory is always writable.
  QaDbLine loose;
  EXPECT_EQ(loose.setEndPoint({5, 5, 5}), Qa::eOk);
  EXPECT_TRUE(loose.isWriteEnabled());
}

TEST(QaDbObject, NestedOpensKeepWriteAccessUntilTheLastClose) {
  QaDbDatabase db;
  QaDbObjectId id = append(db, std::make_unique<QaDbLine>());
  QaDbObjectPointer<QaDbLine> outer(id, QaDb::kForWrite);
  {
    QaDbObjectPointer<QaDbEntity> inner(id, QaDb::kForRead);
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner.object(), outer.object());
  }
  EXPECT_TRUE(outer->isWriteEnabled());
  EXPECT_EQ(outer->setColorIndex(1), Qa::eOk);
  QaDbLine* raw = outer.object();
  outer.close();
  EXPECT_FALSE(raw->isOpen());
}

TEST(QaDbObject, PointerReportsWhyItDidNotOpen) {
  QaDbDatabase db;
  QaDbObjectId lineId = append(db, std::make_unique<QaDbLine>());
  {
    QaDbObjectPointer<QaDbCircle> wrong(lineId, QaDb::kForRead);
    EXPECT_FALSE(wrong);
    EXPECT_EQ(wrong.openStatus(), Qa::eWrongObjectType);
  }
  // The failed typed open left nothing open behind it.
  EXPECT_FALSE(lineId.rawObject()->isOpen());
  QaDbObjectPointer<QaDbLine> none(QaDbObjectId(), QaDb::kForRead);
  EXPECT_EQ(none.openStatus(), Qa::eNullObjectId);
  QaDbObjectPointer<QaDbLine> good(lineId, QaDb::kForRead);
  EXPECT_EQ(good.openStatus(), Qa::eOk);
  QaDbObjectPointer<QaDbLine> moved(std::move(good));
  EXPECT_FALSE(good);
  EXPECT_TRUE(moved);
}

TEST(QaDbObject, ErasedObjectsOpenOnlyOnRequestAndAreSkipped) {
  QaDbDatabase db;
  QaDbObjectId a = append(db, std::make_unique<QaDbLine>());
  QaDbObjectId b = append(db, std::make_unique<QaDbCircle>());
  {
    QaDbObjectPointer<QaDbEntity> e(a, QaDb::kForWrite);
    ASSERT_EQ(e->erase(), Qa::eOk);
    EXPECT_EQ(e->erase(), Qa::eWasErased);
  }
  EXPECT_TRUE(a.isErased());
  EXPECT_TRUE(a.isValid());
  QaDbObject* obj = nullptr;
  EXPECT_EQ(qadbOpenObject(obj, a, QaDb::kForRead), Qa::eWasErased);
  EXPECT_EQ(obj, nullptr);
  ASSERT_EQ(qadbOpenObject(obj, a, QaDb::kForWrite, true), Qa::eOk);
  obj->close();
  QaDbObjectPointer<QaDbBlockTableRecord> ms(db.modelSpaceId(), QaDb::kForRead);
  std::vector<QaDbObjectId> seen;
  for (auto it = ms->newIterator(); !it->done(); it->step()) seen.push_back(it->entityId());
  EXPECT_EQ(seen, std::vector<QaDbObjectId>{b});
  EXPECT_EQ(ms->entityIds().size(), 2u);
  // Unerasing brings it back.
  {
    QaDbObjectPointer<QaDbEntity> e(a, QaDb::kForWrite, true);
    ASSERT_EQ(e->erase(false), Qa::eOk);
  }
  EXPECT_EQ(ms->liveEntityIds().size(), 2u);
}

TEST(QaDbObject, ExtendedDataRoundTripsEveryItemType) {
  QaDbDatabase db;
  QaDbObjectId id = append(db, std::make_unique<QaDbLine>());
  const std::vector<QaDbXDataItem> items = {
      QaDbXDataItem::string(L"卡片"),
      QaDbXDataItem::control(true),
      QaDbXDataItem::int16(-7),
      QaDbXDataItem::control(false),
      QaDbXDataItem::layerName(L"0"),
      QaDbXDataItem::binary({0x00, 0xFF, 0x10}),
      QaDbXDataItem::handle(QaDbHandle(0x1F)),
      QaDbXDataItem::point({1, 2, 3}),
      QaDbXDataItem::point({4, 5, 6}, QaDbXDataItem::kWorldDirection),
      QaDbXDataItem::real(2.5),
      QaDbXDataItem::real(0.5, QaDbXDataItem::kScaleFactor),
      QaDbXDataItem::int32(123456789),
  };
  {
    QaDbObjectPointer<QaDbLine> line(id, QaDb::kForWrite);
    ASSERT_EQ(line->setXData(L"KRM_TABULONPARA", items), Qa::eOk);
    ASSERT_EQ(line->setXData(L"OTHER_APP", {QaDbXDataItem::int32(1)}), Qa::eOk);
    // Setting an application again replaces its items in place.
    ASSERT_EQ(line->setXData(L"KRM_TABULONPARA", items), Qa::eOk);
  }
  QaDbObjectPointer<QaDbLine> line(id, QaDb::kForRead);
  EXPECT_EQ(line->xData(L"KRM_TABULONPARA"), items);
  EXPECT_EQ(line->xDataApps(), (std::vector<std::wstring>{L"KRM_TABULONPARA", L"OTHER_APP"}));
  EXPECT_TRUE(line->xData(L"MISSING").empty());
  EXPECT_EQ(line->xData(L"KRM_TABULONPARA")[2].asInt(), -7);
  EXPECT_THROW((void)line->xData(L"KRM_TABULONPARA")[0].asReal(), std::bad_variant_access);
  // The applications were registered in the drawing.
  QaDbRegAppTable* apps = nullptr;
  ASSERT_EQ(db.getSymbolTable(apps, QaDb::kForRead), Qa::eOk);
  EXPECT_TRUE(apps->has(L"KRM_TABULONPARA"));
  EXPECT_TRUE(apps->has(L"OTHER_APP"));
  apps->close();
  line->upgradeOpen();
  EXPECT_EQ(line->removeXData(L"OTHER_APP"), Qa::eOk);
  EXPECT_EQ(line->removeXData(L"OTHER_APP"), Qa::eKeyNotFound);
  EXPECT_EQ(line->xDataApps().size(), 1u);
}

TEST(QaDbXDataItem, RejectsValuesThatDoNotFitTheCode) {
  EXPECT_THROW(QaDbXDataItem(QaDbXDataItem::kString, 1.0), std::invalid_argument);
  EXPECT_THROW(QaDbXDataItem(QaDbXDataItem::kInt16, std::int32_t(70000)), std::invalid_argument);
  EXPECT_THROW(QaDbXDataItem(QaDbXDataItem::kControl, std::wstring(L"(")), std::invalid_argument);
  EXPECT_THROW(QaDbXDataItem(999, std::wstring(L"x")), std::invalid_argument);
  EXPECT_NO_THROW(QaDbXDataItem(QaDbXDataItem::kDistance, 1.0));
}

TEST(QaDbObject, ModifiedFlagFollowsSetters) {
  QaDbDatabase db;
  QaDbObjectId id = append(db, std::make_unique<QaDbLine>());
  QaDbObjectPointer<QaDbLine> line(id, QaDb::kForWrite);
  EXPECT_TRUE(line->isModified());  // new objects count as modified
  line->clearModified();
  EXPECT_FALSE(line->isModified());
  (void)line->startPoint();
  EXPECT_FALSE(line->isModified());
  line->setThickness(1.0);
  EXPECT_TRUE(line->isModified());
  line->clearModified();
  line->addPersistentReactor(db.modelSpaceId());
  EXPECT_TRUE(line->isModified());
  line->clearModified();
  // Adding a reactor already present changes nothing.
  line->addPersistentReactor(db.modelSpaceId());
  EXPECT_FALSE(line->isModified());
  EXPECT_EQ(line->reactors().size(), 1u);
  line->removePersistentReactor(db.modelSpaceId());
  EXPECT_TRUE(line->reactors().empty());
}

TEST(QaRxClass, ClassTestsAndCasts) {
  QaDbAttribute att;
  const QaRxClass* cls = att.isA();
  EXPECT_EQ(cls, QaDbAttribute::desc());
  EXPECT_EQ(cls->name(), L"QaDbAttribute");
  EXPECT_TRUE(cls->isDerivedFrom(QaDbText::desc()));
  EXPECT_TRUE(cls->isDerivedFrom(QaDbEntity::desc()));
  EXPECT_TRUE(cls->isDerivedFrom(QaDbObject::desc()));
  EXPECT_FALSE(cls->isDerivedFrom(QaDbAttributeDefinition::desc()));
  EXPECT_FALSE(QaDbText::desc()->isDerivedFrom(QaDbAttribute::desc()));
  QaDbObject* obj = &att;
  EXPECT_EQ(QaDbText::cast(obj), &att);
  EXPECT_EQ(QaDbBlockReference::cast(obj), nullptr);
  EXPECT_EQ(qaCast<QaDbEntity>(obj), &att);
  EXPECT_EQ(QaDbText::cast(static_cast<QaDbObject*>(nullptr)), nullptr);
  EXPECT_EQ(att.dxfType(), L"ATTRIB");
  EXPECT_EQ(QaDbPolyline().dxfType(), L"LWPOLYLINE");
  EXPECT_EQ(QaDb2dPolyline().dxfType(), L"POLYLINE");
  EXPECT_EQ(QaDbBlockReference().dxfType(), L"INSERT");
  EXPECT_EQ(QaDbUnknownObject(L"XRECORD").dxfType(), L"XRECORD");
}

struct TestRecord : QaDbDxfRecord {
  explicit TestRecord(int v) : value(v) {}
  std::unique_ptr<QaDbDxfRecord> clone() const override { return std::make_unique<TestRecord>(value); }
  int value;
};

TEST(QaDbObject, CloneCopiesFieldsButNotIdentity) {
  QaDbDatabase db;
  auto text = std::make_unique<QaDbText>(QaGePoint3d(1, 2, 0), L"零件", QaDbObjectId(), 3.5);
  text->setXData(L"APP", {QaDbXDataItem::int32(4)});
  text->setDxfRecord(std::make_unique<TestRecord>(42));
  text->setColorIndex(3);
  QaDbObjectId id = append(db, std::move(text));
  QaDbObjectPointer<QaDbText> original(id, QaDb::kForWrite);
  original->addPersistentReactor(db.modelSpaceId());
  original->clearModified();
  std::unique_ptr<QaDbObject> copy = original->clone();
  auto* t = QaDbText::cast(copy.get());
  ASSERT_NE(t, nullptr);
  EXPECT_FALSE(t->isDatabaseResident());
  EXPECT_TRUE(t->ownerId().isNull());
  EXPECT_TRUE(t->reactors().empty());
  EXPECT_TRUE(t->isModified());
  EXPECT_EQ(t->textString(), L"零件");
  EXPECT_EQ(t->colorIndex(), 3);
  EXPECT_EQ(t->xData(L"APP"), original->xData(L"APP"));
  auto* rec = dynamic_cast<TestRecord*>(t->dxfRecord());
  ASSERT_NE(rec, nullptr);
  EXPECT_EQ(rec->value, 42);
  EXPECT_NE(t->dxfRecord(), original->dxfRecord());
}

TEST(QaDbObjectId, ValueSemanticsAndHandles) {
  QaDbDatabase db;
  QaDbObjectId a = append(db, std::make_unique<QaDbLine>());
  QaDbObjectId b = append(db, std::make_unique<QaDbLine>());
  EXPECT_TRUE(QaDbObjectId().isNull());
  EXPECT_EQ(a.database(), &db);
  EXPECT_LT(a.handle(), b.handle());
  EXPECT_LT(a, b);
  std::unordered_map<QaDbObjectId, int> byId{{a, 1}, {b, 2}};
  EXPECT_EQ(byId[b], 2);
  EXPECT_EQ(db.objectIdFromHandle(a.handle()), a);
  EXPECT_TRUE(db.objectIdFromHandle(QaDbHandle(0xFFFFFF)).isNull());
  EXPECT_GT(db.handseed(), b.handle());
}

TEST(QaDbHandle, HexText) {
  EXPECT_EQ(QaDbHandle(0x2A5).ascii(), "2A5");
  EXPECT_EQ(QaDbHandle().ascii(), "0");
  EXPECT_EQ(QaDbHandle::fromHex(" 2a5 ")->value(), 0x2A5u);
  EXPECT_EQ(QaDbHandle::fromHex(L"00000000000000000001")->value(), 1u);
  EXPECT_FALSE(QaDbHandle::fromHex("").has_value());
  EXPECT_FALSE(QaDbHandle::fromHex("12G").has_value());
  EXPECT_FALSE(QaDbHandle::fromHex("11112222333344445").has_value());
}

}  // namespace
