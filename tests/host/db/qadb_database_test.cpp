// A new drawing's standard content, an empty database for readers, adopting objects
// with given handles, symbol tables and dictionaries.
#include "db_test_util.h"

#include <cstdint>
#include <utility>

namespace {

using namespace qadbtest;

TEST(QaDbDatabase, NewDrawingHasTheStandardContent) {
  QaDbDatabase db;
  auto has = [](QaDbObjectId tableId, const std::wstring& name) {
    auto* table = QaDbSymbolTable::cast(tableId.rawObject());
    return table != nullptr && table->has(name);
  };
  EXPECT_TRUE(has(db.layerTableId(), L"0"));
  for (const wchar_t* lt : {L"ByBlock", L"ByLayer", L"Continuous"}) EXPECT_TRUE(has(db.linetypeTableId(), lt)) << lt;
  EXPECT_TRUE(has(db.textStyleTableId(), L"Standard"));
  EXPECT_TRUE(has(db.regAppTableId(), L"ACAD"));
  EXPECT_TRUE(has(db.dimStyleTableId(), L"Standard"));
  EXPECT_TRUE(has(db.blockTableId(), L"*Model_Space"));
  EXPECT_TRUE(has(db.blockTableId(), L"*Paper_Space"));
  for (QaDbObjectId t : {db.viewportTableId(), db.viewTableId(), db.UCSTableId()}) EXPECT_FALSE(t.isNull());
  EXPECT_FALSE(db.modelSpaceId().isNull());
  {
    QaDbObjectPointer<QaDbBlockTableRecord> ms(db.modelSpaceId(), QaDb::kForRead);
    EXPECT_TRUE(ms->isLayout());
    EXPECT_FALSE(ms->isAnonymous());
  }
  QaDbDictionary* groups = nullptr;
  ASSERT_EQ(db.getGroupDictionary(groups, QaDb::kForRead), Qa::eOk);
  EXPECT_EQ(groups->numEntries(), 0);
  EXPECT_EQ(groups->ownerId(), db.namedObjectsDictionaryId());
  groups->close();
  EXPECT_EQ(db.version(), "AC1032");
  // Nothing is left open.
  for (QaDbObjectId id : db.objectIds()) EXPECT_FALSE(id.rawObject()->isOpen()) << id.handle().ascii();
}

TEST(QaDbDatabase, EmptyDatabaseIsFilledByAdoption) {
  QaDbDatabase db(false);
  EXPECT_EQ(db.numObjects(), 0u);
  EXPECT_TRUE(db.blockTableId().isNull());
  QaDbObjectId table, record, line, dict;
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbBlockTable>(), QaDbHandle(0x1), QaDbObjectId(), table), Qa::eOk);
  EXPECT_EQ(db.blockTableId(), table);
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbBlockTableRecord>(L"*Model_Space"), QaDbHandle(0x1F), table, record),
            Qa::eOk);
  EXPECT_EQ(db.modelSpaceId(), record);
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(0x200), record, line), Qa::eOk);
  QaDbObjectPointer<QaDbBlockTableRecord> ms(record, QaDb::kForRead);
  EXPECT_EQ(ms->entityIds(), std::vector<QaDbObjectId>{line});
  EXPECT_EQ(line.rawObject()->ownerId(), record);
  EXPECT_FALSE(line.rawObject()->isOpen());
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbDictionary>(), QaDbHandle(0xC), QaDbObjectId(), dict), Qa::eOk);
  EXPECT_EQ(db.namedObjectsDictionaryId(), dict);
  // Handles are unique; the seed stays above all of them.
  QaDbObjectId dup;
  EXPECT_EQ(db.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(0x200), record, dup), Qa::eHandleInUse);
  EXPECT_EQ(db.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(), record, dup), Qa::eInvalidInput);
  EXPECT_GT(db.handseed(), QaDbHandle(0x200));
  db.setHandseed(QaDbHandle(0x10));
  EXPECT_EQ(db.handseed(), QaDbHandle(0x201));
  // A new object gets the next free handle.
  QaDbObjectId fresh;
  ASSERT_EQ(db.addObject(std::make_unique<QaDbLine>(), record, fresh), Qa::eOk);
  EXPECT_EQ(fresh.handle(), QaDbHandle(0x201));
  EXPECT_TRUE(fresh.rawObject()->isWriteEnabled());  // added objects are left open for write
  fresh.rawObject()->close();
}

TEST(QaDbDatabase, ForwardReferencesAreFilledLater) {
  QaDbDatabase db(false);
  QaDbObjectId forward = db.idForHandle(QaDbHandle(0x50));
  EXPECT_FALSE(forward.isNull());
  EXPECT_FALSE(forward.isValid());
  EXPECT_TRUE(db.objectIdFromHandle(QaDbHandle(0x50)).isNull());
  QaDbObject* obj = nullptr;
  EXPECT_EQ(qadbOpenObject(obj, forward, QaDb::kForRead), Qa::eUnknownHandle);
  QaDbObjectId adopted;
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbGroup>(), QaDbHandle(0x50), QaDbObjectId(), adopted), Qa::eOk);
  EXPECT_EQ(adopted, forward);
  EXPECT_TRUE(forward.isValid());
  EXPECT_EQ(db.objectIds().size(), 1u);
}

TEST(QaDbDatabase, SwapMovesObjectsAndIds) {
  QaDbDatabase a;
  QaDbDatabase b(false);
  QaDbObjectId line = append(a, std::make_unique<QaDbLine>());
  a.setCodePage("ANSI_936");
  a.swap(b);
  EXPECT_EQ(line.database(), &b);
  EXPECT_EQ(b.codePage(), "ANSI_936");
  EXPECT_EQ(a.numObjects(), 0u);
  EXPECT_FALSE(b.modelSpaceId().isNull());
  EXPECT_EQ(b.objectIdFromHandle(line.handle()), line);
}

// Handles far beyond the others (some writers number from the top) are found like any
// other, also after thousands of ordinary handles came in behind them.
TEST(QaDbDatabase, HugeHandlesAreAdoptedAndTheSeedStaysAboveThem) {
  QaDbDatabase db(false);
  QaDbObjectId table, record;
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbBlockTable>(), QaDbHandle(1), QaDbObjectId(), table), Qa::eOk);
  ASSERT_EQ(db.adoptObject(std::make_unique<QaDbBlockTableRecord>(L"*Model_Space"), QaDbHandle(2), table, record),
            Qa::eOk);
  std::vector<std::pair<std::uint64_t, QaDbObjectId>> adopted;
  auto adopt = [&](std::uint64_t h) {
    QaDbObjectId id;
    ASSERT_EQ(db.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(h), record, id), Qa::eOk) << h;
    adopted.emplace_back(h, id);
  };
  for (std::uint64_t h : {0xFFFFFFFFFFFFull, 0x10000000ull, 0x11002ull}) adopt(h);
  for (std::uint64_t h = 3; h < 0x11800; h += 7) adopt(h);
  QaDbObjectId dup;
  EXPECT_EQ(db.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(0x10000000), record, dup), Qa::eHandleInUse);
  for (const auto& [h, id] : adopted) {
    QaDbObjectId found = db.objectIdFromHandle(QaDbHandle(h));
    ASSERT_EQ(found, id) << std::hex << h;
    EXPECT_EQ(found.slot(), id.slot());
    EXPECT_EQ(id.handle(), QaDbHandle(h));
    EXPECT_EQ(id.database(), &db);
  }
  for (std::uint64_t h : {0x4ull, 0x11003ull, 0x0FFFFFFFull, 0xFFFFFFFFFFFEull, 0x1000000000000ull})
    EXPECT_TRUE(db.objectIdFromHandle(QaDbHandle(h)).isNull()) << std::hex << h;
  EXPECT_EQ(db.numObjects(), adopted.size() + 2);
  EXPECT_EQ(db.handseed(), QaDbHandle(0x1000000000000));
  db.setHandseed(QaDbHandle(0x20));
  EXPECT_EQ(db.handseed(), QaDbHandle(0x1000000000000));
  db.setHandseed(QaDbHandle(0x2000000000000));
  EXPECT_EQ(db.handseed(), QaDbHandle(0x2000000000000));
  QaDbObjectId fresh;
  ASSERT_EQ(db.addObject(std::make_unique<QaDbLine>(), record, fresh), Qa::eOk);
  fresh.rawObject()->close();
  EXPECT_EQ(fresh.handle(), QaDbHandle(0x2000000000000));
  EXPECT_EQ(db.objectIdFromHandle(fresh.handle()), fresh);
}

// After a swap every id answers for the database now holding its object, on both sides,
// and objects still open through their ids.
TEST(QaDbDatabase, SwapKeepsIdsWorkingOnBothSides) {
  QaDbDatabase a;
  QaDbDatabase b;
  std::vector<QaDbObjectId> inA, inB;
  for (int i = 0; i < 1500; ++i) inA.push_back(append(a, std::make_unique<QaDbLine>()));
  for (int i = 0; i < 3; ++i) inB.push_back(append(b, std::make_unique<QaDbCircle>()));
  QaDbObjectId farA;
  ASSERT_EQ(a.adoptObject(std::make_unique<QaDbLine>(), QaDbHandle(0xABCDEF0123ull), a.modelSpaceId(), farA), Qa::eOk);
  inA.push_back(farA);
  const QaDbHandle seedA = a.handseed(), seedB = b.handseed();
  const QaDbObjectId msA = a.modelSpaceId(), msB = b.modelSpaceId();
  a.swap(b);
  EXPECT_EQ(b.handseed(), seedA);
  EXPECT_EQ(a.handseed(), seedB);
  EXPECT_EQ(b.modelSpaceId(), msA);
  EXPECT_EQ(a.modelSpaceId(), msB);
  auto check = [](QaDbDatabase& db, const std::vector<QaDbObjectId>& ids) {
    for (QaDbObjectId id : ids) {
      ASSERT_EQ(id.database(), &db) << id.handle().ascii();
      ASSERT_EQ(db.objectIdFromHandle(id.handle()), id) << id.handle().ascii();
    }
    for (QaDbObjectId id : db.objectIds()) ASSERT_EQ(id.database(), &db) << id.handle().ascii();
    QaDbObjectPointer<QaDbEntity> last(ids.back(), QaDb::kForWrite);
    ASSERT_TRUE(last);
    EXPECT_EQ(last->blockId(), db.modelSpaceId());
  };
  check(b, inA);
  check(a, inB);
  // New objects on each side take that side's seed and stay findable.
  QaDbObjectId newA = append(a, std::make_unique<QaDbLine>());
  QaDbObjectId newB = append(b, std::make_unique<QaDbLine>());
  EXPECT_EQ(newA.handle(), seedB);
  EXPECT_EQ(newB.handle(), seedA);
  EXPECT_EQ(a.objectIdFromHandle(seedB), newA);
  EXPECT_EQ(b.objectIdFromHandle(seedA), newB);
}

TEST(QaDbSymbolTable, NamesAreUniqueValidAndCaseInsensitive) {
  QaDbDatabase db;
  QaDbLayerTable* layers = nullptr;
  ASSERT_EQ(db.getSymbolTable(layers, QaDb::kForWrite), Qa::eOk);
  QaDbObjectId id;
  EXPECT_EQ(layers->add(std::make_unique<QaDbLayerTableRecord>(L"标注"), id), Qa::eOk);
  id.rawObject()->close();
  EXPECT_EQ(layers->add(std::make_unique<QaDbLayerTableRecord>(L"0")), Qa::eDuplicateKey);
  EXPECT_EQ(layers->add(std::make_unique<QaDbLayerTableRecord>(L"a/b")), Qa::eBadSymbolTableName);
  EXPECT_EQ(layers->add(std::make_unique<QaDbLayerTableRecord>(L"")), Qa::eBadSymbolTableName);
  EXPECT_EQ(layers->add(std::make_unique<QaDbTextStyleTableRecord>(L"X")), Qa::eWrongObjectType);
  QaDbObjectId found;
  EXPECT_EQ(layers->getAt(L"标注", found), Qa::eOk);
  EXPECT_EQ(found, id);
  layers->close();
  QaDbObjectId styles = db.textStyleTableId();
  QaDbObjectPointer<QaDbTextStyleTable> st(styles, QaDb::kForRead);
  EXPECT_TRUE(st->has(L"STANDARD"));
  EXPECT_EQ(st->getAt(L"standard"), st->getAt(L"Standard"));
  // Renaming checks the other records of the table.
  QaDbObjectPointer<QaDbLayerTableRecord> rec(found, QaDb::kForWrite);
  EXPECT_EQ(rec->setName(L"0"), Qa::eDuplicateKey);
  EXPECT_EQ(rec->setName(L"DIM"), Qa::eOk);
  EXPECT_EQ(rec->getName(), L"DIM");
}

TEST(QaDbSymbolTable, IteratorWalksLiveRecordsInOrder) {
  QaDbDatabase db;
  addBlock(db, L"A");
  QaDbObjectId b = addBlock(db, L"B");
  addBlock(db, L"C");
  {
    QaDbObjectPointer<QaDbBlockTableRecord> rec(b, QaDb::kForWrite);
    rec->erase();
  }
  QaDbBlockTable* table = nullptr;
  ASSERT_EQ(db.getSymbolTable(table, QaDb::kForRead), Qa::eOk);
  std::vector<std::wstring> names;
  auto it = table->newIterator();
  for (it->start(); !it->done(); it->step()) {
    QaDbBlockTableRecord* rec = nullptr;
    ASSERT_EQ(it->getRecord(rec, QaDb::kForRead), Qa::eOk);
    names.push_back(rec->getName());
    rec->close();
  }
  table->close();
  EXPECT_EQ(names, (std::vector<std::wstring>{L"*Model_Space", L"*Paper_Space", L"A", L"C"}));
  // An erased record's name is free again.
  QaDbObjectId id;
  EXPECT_EQ(table->getAt(L"B", id), Qa::eKeyNotFound);
  EXPECT_EQ(table->getAt(L"B", id, true), Qa::eOk);
  EXPECT_EQ(id, b);
}

TEST(QaDbBlockTableRecord, AppendedEntitiesGetLayersAndStyles) {
  QaDbDatabase db;
  QaDbDatabase other;
  QaDbObjectId foreignStyle = addTextStyle(other, L"HZ");
  addTextStyle(db, L"HZ");
  auto text = std::make_unique<QaDbText>(QaGePoint3d(), L"x", foreignStyle, 2.0);
  text->setLayer(L"NEW_LAYER");
  text->setLinetype(L"DASHED");
  QaDbObjectId id = append(db, std::move(text));
  QaDbObjectPointer<QaDbText> t(id, QaDb::kForRead);
  // The style of another drawing is replaced by the one of the same name here.
  EXPECT_EQ(t->textStyle().database(), &db);
  EXPECT_EQ(static_cast<QaDbSymbolTableRecord*>(t->textStyle().rawObject())->name(), L"HZ");
  EXPECT_EQ(t->layer(), L"NEW_LAYER");
  EXPECT_TRUE(QaDbLayerTable::cast(db.layerTableId().rawObject())->has(L"NEW_LAYER"));
  EXPECT_EQ(t->linetype(), L"ByLayer");
  EXPECT_EQ(t->blockId(), db.modelSpaceId());
  // Once resident, only existing names are taken.
  t->upgradeOpen();
  EXPECT_EQ(t->setLayer(L"NOWHERE"), Qa::eKeyNotFound);
  EXPECT_EQ(t->layer(), L"NEW_LAYER");
  EXPECT_EQ(t->setLinetype(L"Continuous"), Qa::eOk);
  EXPECT_EQ(t->setColorIndex(257), Qa::eInvalidInput);
}

TEST(QaDbDictionary, EntriesInInsertionOrderWithAnonymousKeys) {
  QaDbDatabase db;
  QaDbDictionary* nod = nullptr;
  ASSERT_EQ(db.getNamedObjectsDictionary(nod, QaDb::kForWrite), Qa::eOk);
  QaDbObjectId d1, d2, d3;
  ASSERT_EQ(nod->setAt(L"*A", std::make_unique<QaDbDictionary>(), d1), Qa::eOk);
  ASSERT_EQ(nod->setAt(L"*A", std::make_unique<QaDbDictionary>(), d2), Qa::eOk);
  ASSERT_EQ(nod->setAt(L"MY_DATA", std::make_unique<QaDbUnknownObject>(L"XRECORD"), d3), Qa::eOk);
  for (QaDbObjectId id : {d1, d2, d3}) id.rawObject()->close();
  std::wstring key;
  nod->nameAt(d2, key);
  EXPECT_EQ(key, L"*A2");
  EXPECT_TRUE(d1.rawObject()->hasPersistentReactor(nod->objectId()));
  EXPECT_TRUE(nod->has(L"my_data"));
  std::vector<std::wstring> keys;
  for (auto it = nod->newIterator(); !it->done(); it->next()) keys.push_back(it->name());
  EXPECT_EQ(keys, (std::vector<std::wstring>{L"ACAD_GROUP", L"*A1", L"*A2", L"MY_DATA"}));
  // Replacing a key erases the old object.
  QaDbObjectId d4;
  ASSERT_EQ(nod->setAt(L"MY_DATA", std::make_unique<QaDbDictionary>(), d4), Qa::eOk);
  d4.rawObject()->close();
  EXPECT_TRUE(d3.isErased());
  EXPECT_EQ(nod->numEntries(), 4);
  // Removing takes the entry out, the object stays.
  ASSERT_EQ(nod->remove(L"*A1"), Qa::eOk);
  EXPECT_FALSE(d1.isErased());
  EXPECT_TRUE(d1.rawObject()->ownerId().isNull());
  EXPECT_EQ(nod->remove(L"*A1"), Qa::eKeyNotFound);
  EXPECT_EQ(nod->setName(L"*A2", L"ACAD_GROUP"), Qa::eDuplicateKey);
  EXPECT_EQ(nod->setName(L"*A2", L"RENAMED"), Qa::eOk);
  QaDbObjectId got;
  EXPECT_EQ(nod->getAt(L"RENAMED", got), Qa::eOk);
  EXPECT_EQ(got, d2);
  nod->close();
}

}  // namespace
