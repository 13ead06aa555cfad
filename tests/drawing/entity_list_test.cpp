#include "drawing/entity_list.h"

#include <gtest/gtest.h>

#include "drawing/card_tag.h"
#include "host/db/qadb_line.h"
#include "records_test_support.h"

namespace {

using recordstest::addBlock;
using recordstest::makeRef;

QaDbLine* AddLine(KrmEntityPool& pool, double y) {
  return static_cast<QaDbLine*>(pool.adopt(std::make_unique<QaDbLine>(QaGePoint3d(0, y, 0), QaGePoint3d(10, y, 0))));
}

TEST(EntityList, PoolOwnsUntilReleasedOrDestroyed) {
  KrmEntityPool pool;
  QaDbLine* a = AddLine(pool, 0);
  QaDbLine* b = AddLine(pool, 1);
  EXPECT_EQ(pool.size(), 2u);
  EXPECT_EQ(pool.adopt(nullptr), nullptr);

  std::unique_ptr<QaDbEntity> taken = pool.release(a);
  EXPECT_EQ(taken.get(), a);
  EXPECT_FALSE(pool.owns(a));
  EXPECT_EQ(pool.release(a), nullptr);
  EXPECT_TRUE(pool.destroy(b));
  EXPECT_FALSE(pool.destroy(b));
  EXPECT_EQ(pool.size(), 0u);
}

TEST(EntityList, ClonesMoveAndKeepTagsAndAttributes) {
  QaDbDatabase db;
  const QaDbObjectId block = addBlock(db, L"ROW", {{L"A", {1, 1, 0}}});
  KrmEntityPool pool;
  auto ref = makeRef(block, {0, 0, 0});
  ref->appendAttribute(std::make_unique<QaDbAttribute>(QaGePoint3d(1, 1, 0), L"text", L"A"));
  KrmCardTag tag;
  tag.cardCode = L"CODE0001";
  WriteCardTagOfEntity(ref.get(), tag);
  QaDbEntity* source = pool.adopt(std::move(ref));
  QaDbLine* line = AddLine(pool, 0);

  KrmEntityList out = {line};
  CloneListTranslated({source, nullptr, line}, {100, 50, 0}, out, pool);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_EQ(out[0], line);
  EXPECT_EQ(line->startPoint(), QaGePoint3d(0, 0, 0));  // the source is not moved
  EXPECT_EQ(static_cast<QaDbLine*>(out[2])->startPoint(), QaGePoint3d(100, 50, 0));

  auto* copy = QaDbBlockReference::cast(out[1]);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->position(), QaGePoint3d(100, 50, 0));
  ASSERT_EQ(copy->pendingAttributes().size(), 1u);
  EXPECT_EQ(copy->pendingAttributes()[0]->position(), QaGePoint3d(101, 51, 0));
  KrmCardTag read;
  ReadCardTagOfEntity(copy, read);
  EXPECT_EQ(read.cardCode, L"CODE0001");
  EXPECT_EQ(pool.size(), 4u);
}

TEST(EntityList, LastOfEachFollowsTheClonesOfEachClass) {
  KrmEntityPool pool;
  std::vector<KrmDataSort> sorts(3);
  sorts[0].refs = {AddLine(pool, 0), AddLine(pool, 1)};
  sorts[2].refs = {AddLine(pool, 5)};

  EXPECT_EQ(LastOfEach(sorts), (KrmEntityList{sorts[0].refs[1], sorts[2].refs[0]}));
  CloneLastOfEach(sorts, {0, 100, 0}, pool);
  EXPECT_EQ(sorts[0].refs.size(), 3u);
  EXPECT_TRUE(sorts[1].refs.empty());
  ASSERT_EQ(sorts[2].refs.size(), 2u);
  EXPECT_EQ(static_cast<QaDbLine*>(sorts[2].refs[1])->startPoint().y, 105);
  EXPECT_EQ(static_cast<QaDbLine*>(sorts[0].refs[2])->startPoint().y, 101);
  EXPECT_EQ(LastOfEach(sorts), (KrmEntityList{sorts[0].refs[2], sorts[2].refs[1]}));
}

TEST(EntityList, PageListsJoinTwoLists) {
  KrmEntityPool pool;
  QaDbLine *a = AddLine(pool, 0), *b = AddLine(pool, 1), *c = AddLine(pool, 2);
  std::vector<KrmEntityList> pages(1);
  AppendPageList(pages, {a, b}, {c});
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[1], (KrmEntityList{a, b, c}));
}

TEST(EntityList, AppendingHandsEntitiesToTheDrawingAndStopsAtAStranger) {
  QaDbDatabase db;
  KrmEntityPool pool;
  QaDbLine *a = AddLine(pool, 0), *b = AddLine(pool, 1), *c = AddLine(pool, 2);
  QaDbLine stranger;  // not held by the pool

  const std::vector<QaDbObjectId> ids = AppendToModelSpace({a, nullptr, b, &stranger, c}, pool, &db);
  ASSERT_EQ(ids.size(), 2u);
  EXPECT_EQ(ids[0].rawObject(), a);
  EXPECT_EQ(ids[1].rawObject(), b);
  EXPECT_FALSE(a->isOpen());
  EXPECT_TRUE(pool.owns(c));
  EXPECT_EQ(pool.size(), 1u);
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForRead);
  EXPECT_EQ(space->liveEntityIds(), ids);
}

TEST(EntityList, TranslatesErasesAndDeletes) {
  QaDbDatabase db;
  KrmEntityPool pool;
  QaDbLine* inMemory = AddLine(pool, 0);
  TranslateList({inMemory, nullptr}, {1, 1, 0}, {4, 5, 0});
  EXPECT_EQ(inMemory->startPoint(), QaGePoint3d(3, 4, 0));

  const std::vector<QaDbObjectId> ids = AppendToModelSpace({inMemory, AddLine(pool, 9)}, pool, &db);
  TranslateIds(ids, {0, 0, 0}, {0, 10, 0});
  EXPECT_EQ(static_cast<QaDbLine*>(ids[0].rawObject())->startPoint(), QaGePoint3d(3, 14, 0));
  EXPECT_EQ(static_cast<QaDbLine*>(ids[1].rawObject())->startPoint(), QaGePoint3d(0, 19, 0));
  EraseIds(ids);
  EXPECT_TRUE(ids[0].isErased());
  EXPECT_TRUE(ids[1].isErased());

  KrmEntityList list = {AddLine(pool, 0), AddLine(pool, 1)};
  DeleteList(list, pool);
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(pool.size(), 0u);
}

}  // namespace
