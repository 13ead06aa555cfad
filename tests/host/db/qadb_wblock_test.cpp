// Copying between drawings: a selection into a new drawing, a block into another
// drawing, and copies within one drawing.
#include "db_test_util.h"

namespace {

using namespace qadbtest;

// A source drawing with block "TITLE" (a frame line and an attribute definition with a
// cell descriptor in extended data, in text style "HZ"), a reference to it with one
// attribute, a dashed line on layer "FRAME", a text and a circle.
struct CopyFixture : ::testing::Test {
  QaDbDatabase src;
  QaDbObjectId style, title, frameLine, def, ref, att, line, text, circle;

  void SetUp() override {
    style = addTextStyle(src, L"HZ", 0.7);
    {
      QaDbObjectPointer<QaDbLinetypeTable> lt(src.linetypeTableId(), QaDb::kForWrite);
      auto dashed = std::make_unique<QaDbLinetypeTableRecord>(L"DASHED");
      dashed->setDashes({0.5, -0.25});
      dashed->setPatternLength(0.75);
      ASSERT_EQ(lt->add(std::move(dashed)), Qa::eOk);
    }
    title = addBlock(src, L"TITLE");
    frameLine = append(src, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(50, 0, 0)), title);
    auto d = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(1, 1, 0), L"", L"PART", L"零件名称", style);
    d->setHeight(3.5);
    d->setXData(L"KRM_XDATA_CODE", {QaDbXDataItem::string(L"partName"), QaDbXDataItem::handle(frameLine.handle())});
    def = append(src, std::move(d), title);

    auto r = std::make_unique<QaDbBlockReference>(QaGePoint3d(100, 0, 0), title);
    r->setLayer(L"0");
    ref = append(src, std::move(r));
    {
      QaDbObjectPointer<QaDbBlockReference> rp(ref, QaDb::kForWrite);
      auto a = std::make_unique<QaDbAttribute>(QaGePoint3d(101, 1, 0), L"轴承座", L"PART", style);
      QaDbObjectId layer;
      src.ensureLayer(L"CARD", layer);
      a->setLayer(L"CARD");
      ASSERT_EQ(rp->appendAttribute(att, std::move(a)), Qa::eOk);
      att.rawObject()->close();
    }
    QaDbObjectId frameLayer;
    src.ensureLayer(L"FRAME", frameLayer);
    auto l = std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(0, 100, 0));
    l->setLayer(L"FRAME");
    l->setLinetype(L"DASHED");
    line = append(src, std::move(l));
    text = append(src, std::make_unique<QaDbText>(QaGePoint3d(5, 5, 0), L"注", style, 2.5));
    circle = append(src, std::make_unique<QaDbCircle>(QaGePoint3d(), QaGeVector3d::kZAxis, 1.0));
  }

  static bool hasRecord(QaDbObjectId tableId, const std::wstring& name) {
    auto* table = QaDbSymbolTable::cast(tableId.rawObject());
    return table && table->has(name);
  }
};

TEST_F(CopyFixture, WblockKeepsBlocksDefinitionsAndTheirExtendedData) {
  std::unique_ptr<QaDbDatabase> out;
  ASSERT_EQ(src.wblock(out, {ref, line, text}, QaGePoint3d(3, 4, 0)), Qa::eOk);
  ASSERT_TRUE(out);
  expectPoint(out->insbase(), 3, 4);
  QaDbObjectPointer<QaDbBlockTableRecord> ms(out->modelSpaceId(), QaDb::kForRead);
  std::vector<std::wstring> types;
  for (QaDbObjectId id : ms->liveEntityIds()) types.push_back(id.rawObject()->dxfType());
  EXPECT_EQ(types, (std::vector<std::wstring>{L"INSERT", L"LINE", L"TEXT"}));

  EXPECT_TRUE(hasRecord(out->layerTableId(), L"FRAME"));
  EXPECT_TRUE(hasRecord(out->layerTableId(), L"CARD"));
  EXPECT_TRUE(hasRecord(out->linetypeTableId(), L"DASHED"));
  EXPECT_TRUE(hasRecord(out->textStyleTableId(), L"HZ"));
  EXPECT_TRUE(hasRecord(out->regAppTableId(), L"KRM_XDATA_CODE"));
  auto* dashed = QaDbLinetypeTableRecord::cast(
      QaDbSymbolTable::cast(out->linetypeTableId().rawObject())->getAt(L"DASHED").rawObject());
  ASSERT_NE(dashed, nullptr);
  EXPECT_EQ(dashed->dashes(), (std::vector<double>{0.5, -0.25}));

  auto* newRef = QaDbBlockReference::cast(ms->liveEntityIds()[0].rawObject());
  ASSERT_NE(newRef, nullptr);
  QaDbObjectId newBlock = newRef->blockTableRecord();
  EXPECT_EQ(newBlock.database(), out.get());
  auto* btr = QaDbBlockTableRecord::cast(newBlock.rawObject());
  EXPECT_EQ(btr->getName(), L"TITLE");
  EXPECT_TRUE(btr->hasAttributeDefinitions());
  ASSERT_EQ(btr->liveEntityIds().size(), 2u);
  auto* newDef = QaDbAttributeDefinition::cast(btr->liveEntityIds()[1].rawObject());
  ASSERT_NE(newDef, nullptr);
  EXPECT_EQ(newDef->tag(), L"PART");
  EXPECT_EQ(newDef->prompt(), L"零件名称");
  auto items = newDef->xData(L"KRM_XDATA_CODE");
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0].asString(), L"partName");
  // The handle in the extended data names the copy of the frame line.
  EXPECT_EQ(items[1].asHandle(), btr->liveEntityIds()[0].handle());
  EXPECT_EQ(newDef->textStyle().database(), out.get());
  EXPECT_EQ(QaDbTextStyleTableRecord::cast(newDef->textStyle().rawObject())->xScale(), 0.7);

  ASSERT_EQ(newRef->attributeIds().size(), 1u);
  auto* newAtt = QaDbAttribute::cast(newRef->attributeIds()[0].rawObject());
  EXPECT_EQ(newAtt->textString(), L"轴承座");
  EXPECT_EQ(newAtt->layer(), L"CARD");
  EXPECT_EQ(newAtt->ownerId(), newRef->objectId());
  ms.close();
  for (QaDbObjectId id : out->objectIds()) EXPECT_FALSE(id.rawObject()->isOpen()) << id.handle().ascii();
  // The source is untouched.
  QaDbObjectPointer<QaDbBlockTableRecord> srcMs(src.modelSpaceId(), QaDb::kForRead);
  EXPECT_EQ(srcMs->liveEntityIds().size(), 4u);
}

TEST_F(CopyFixture, WblockRefusesObjectsOfOtherDrawings) {
  QaDbDatabase other;
  QaDbObjectId foreign = append(other, std::make_unique<QaDbLine>());
  std::unique_ptr<QaDbDatabase> out;
  EXPECT_EQ(src.wblock(out, {foreign}, QaGePoint3d()), Qa::eWrongDatabase);
  EXPECT_FALSE(out);
  EXPECT_EQ(src.wblock(out, {src.namedObjectsDictionaryId()}, QaGePoint3d()), Qa::eWrongObjectType);
}

TEST_F(CopyFixture, BlockCopiedIntoAnotherDrawingIsMappedAndKeptOnce) {
  QaDbDatabase dst;
  QaDbIdMapping mapping;
  ASSERT_EQ(src.wblockCloneObjects({title}, dst.blockTableId(), mapping, QaDb::kDrcIgnore), Qa::eOk);
  EXPECT_EQ(mapping.origDb(), &src);
  EXPECT_EQ(mapping.destDb(), &dst);
  QaDbObjectId copied = mapping.destinationOf(title);
  ASSERT_FALSE(copied.isNull());
  EXPECT_EQ(copied.database(), &dst);
  QaDbObjectPointer<QaDbBlockTable> table(dst.blockTableId(), QaDb::kForRead);
  EXPECT_EQ(table->getAt(L"TITLE"), copied);
  QaDbObjectId copiedDef = mapping.destinationOf(def);
  auto* d = QaDbAttributeDefinition::cast(copiedDef.rawObject());
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(d->ownerId(), copied);
  EXPECT_EQ(d->xData(L"KRM_XDATA_CODE")[0].asString(), L"partName");
  EXPECT_EQ(d->xData(L"KRM_XDATA_CODE")[1].asHandle(), mapping.destinationOf(frameLine).handle());
  EXPECT_EQ(d->textStyle(), mapping.destinationOf(style));
  QaDbIdPair pair;
  pair.key = title;
  ASSERT_TRUE(mapping.compute(pair));
  EXPECT_TRUE(pair.isCloned);

  // A second copy with "ignore" maps onto the block that is there now.
  QaDbIdMapping again;
  ASSERT_EQ(src.wblockCloneObjects({title}, dst.blockTableId(), again, QaDb::kDrcIgnore), Qa::eOk);
  pair.key = title;
  ASSERT_TRUE(again.compute(pair));
  EXPECT_EQ(pair.value, copied);
  EXPECT_FALSE(pair.isCloned);
  EXPECT_EQ(table->numRecords(), 3);

  // Mangling makes a second block under a new name.
  QaDbIdMapping mangled;
  ASSERT_EQ(src.wblockCloneObjects({title}, dst.blockTableId(), mangled, QaDb::kDrcMangleName), Qa::eOk);
  auto* second = QaDbBlockTableRecord::cast(mangled.destinationOf(title).rawObject());
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->getName(), L"$0$TITLE");
  EXPECT_EQ(second->liveEntityIds().size(), 2u);
}

TEST_F(CopyFixture, ReplaceSwapsTheDestinationBlocksContents) {
  QaDbDatabase dst;
  QaDbObjectId old = addBlock(dst, L"TITLE");
  QaDbObjectId oldCircle = append(dst, std::make_unique<QaDbCircle>(), old);
  QaDbIdMapping mapping;
  ASSERT_EQ(src.wblockCloneObjects({title}, dst.blockTableId(), mapping, QaDb::kDrcReplace), Qa::eOk);
  EXPECT_EQ(mapping.destinationOf(title), old);
  EXPECT_TRUE(oldCircle.isErased());
  auto* btr = QaDbBlockTableRecord::cast(old.rawObject());
  ASSERT_EQ(btr->liveEntityIds().size(), 2u);
  EXPECT_TRUE(btr->hasAttributeDefinitions());
}

TEST_F(CopyFixture, EntitiesAndTheirGroupCopyTogether) {
  QaDbObjectId group;
  {
    QaDbDictionary* dict = nullptr;
    ASSERT_EQ(src.getGroupDictionary(dict, QaDb::kForWrite), Qa::eOk);
    auto g = std::make_unique<QaDbGroup>();
    g->setAnonymous();
    QaDbGroup* raw = g.get();
    dict->setAt(L"*A", std::move(g), group);
    raw->append({line, text});
    raw->close();
    dict->close();
  }
  QaDbDatabase dst;
  QaDbIdMapping mapping;
  ASSERT_EQ(src.wblockCloneObjects({group, line, text}, dst.modelSpaceId(), mapping, QaDb::kDrcIgnore), Qa::eOk);
  auto* g = QaDbGroup::cast(mapping.destinationOf(group).rawObject());
  ASSERT_NE(g, nullptr);
  EXPECT_TRUE(g->isAnonymous());
  EXPECT_EQ(g->allEntityIds(), (std::vector<QaDbObjectId>{mapping.destinationOf(line), mapping.destinationOf(text)}));
  EXPECT_EQ(g->ownerId(), dst.groupDictionaryId());
  EXPECT_EQ(g->name(), L"*A1");
  EXPECT_TRUE(mapping.destinationOf(line).rawObject()->hasPersistentReactor(g->objectId()));
  EXPECT_TRUE(g->hasPersistentReactor(dst.groupDictionaryId()));
}

TEST_F(CopyFixture, DeepCloneWithinADrawingSharesRecords) {
  QaDbIdMapping mapping;
  ASSERT_EQ(src.deepCloneObjects({ref, text}, src.modelSpaceId(), mapping), Qa::eOk);
  auto* copy = QaDbBlockReference::cast(mapping.destinationOf(ref).rawObject());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->blockTableRecord(), title);
  ASSERT_EQ(copy->attributeIds().size(), 1u);
  EXPECT_EQ(mapping.destinationOf(att), copy->attributeIds()[0]);
  EXPECT_NE(copy->attributeIds()[0], att);
  EXPECT_EQ(QaDbText::cast(mapping.destinationOf(text).rawObject())->textStyle(), style);
  QaDbObjectPointer<QaDbBlockTableRecord> ms(src.modelSpaceId(), QaDb::kForRead);
  EXPECT_EQ(ms->liveEntityIds().size(), 6u);
  QaDbObjectPointer<QaDbBlockTable> table(src.blockTableId(), QaDb::kForRead);
  EXPECT_EQ(table->numRecords(), 3);
}

TEST(QaDbCopy, HatchBoundaryIdsFollowTheirCopies) {
  QaDbDatabase src;
  QaDbObjectId border = append(src, std::make_unique<QaDbCircle>(QaGePoint3d(), QaGeVector3d::kZAxis, 1.0));
  QaDbObjectId outside = append(src, std::make_unique<QaDbLine>());
  auto hatch = std::make_unique<QaDbHatch>();
  QaDbHatchLoop loop;
  loop.flags = QaDbHatchLoop::kPolyline;
  loop.vertices = {{0, 0}, {1, 0}, {1, 1}};
  loop.sourceIds = {border, outside};
  hatch->appendLoop(loop);
  QaDbObjectId hatchId = append(src, std::move(hatch));
  QaDbDatabase dst;
  QaDbIdMapping mapping;
  ASSERT_EQ(src.wblockCloneObjects({border, hatchId}, dst.modelSpaceId(), mapping, QaDb::kDrcIgnore), Qa::eOk);
  auto* copy = QaDbHatch::cast(mapping.destinationOf(hatchId).rawObject());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->loopAt(0).sourceIds, std::vector<QaDbObjectId>{mapping.destinationOf(border)});
}

TEST(QaDbCopy, AnonymousBlocksGetAFreeName) {
  QaDbDatabase src;
  QaDbDatabase dst;
  QaDbObjectId srcBlock = addBlock(src, L"*U1");
  append(src, std::make_unique<QaDbLine>(), srcBlock);
  QaDbObjectId taken = addBlock(dst, L"*U1");
  QaDbIdMapping mapping;
  ASSERT_EQ(src.wblockCloneObjects({srcBlock}, dst.blockTableId(), mapping, QaDb::kDrcIgnore), Qa::eOk);
  QaDbObjectId copy = mapping.destinationOf(srcBlock);
  EXPECT_NE(copy, taken);
  EXPECT_EQ(QaDbBlockTableRecord::cast(copy.rawObject())->getName(), L"*U2");
}

}  // namespace
