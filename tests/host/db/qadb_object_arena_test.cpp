// Objects made while an arena is in use: carved from it, released with it, and the
// database that adopts it keeps them valid; elsewhere the heap serves as before.
#include "host/db/qadb.h"
#include "host/db/qadb_object_arena.h"
#include "host/db/qadb_page_cache.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

std::unique_ptr<QaDbLine> line(double x) {
  return std::make_unique<QaDbLine>(QaGePoint3d(x, 0, 0), QaGePoint3d(x + 1, 1, 0));
}

TEST(QaDbObjectArena, ObjectsMadeWhileInUseAreCarvedFromItAndOthersAreNot) {
  auto arena = std::make_unique<QaDbObjectArena>();
  std::unique_ptr<QaDbLine> outside = line(-1);
  std::vector<std::unique_ptr<QaDbLine>> inside;
  {
    QaDbObjectArena::Use use(*arena);
    for (int i = 0; i < 1000; ++i) inside.push_back(line(i));
  }
  const std::size_t used = arena->bytesUsed();
  EXPECT_GE(used, 1000 * sizeof(QaDbLine));
  std::unique_ptr<QaDbLine> after = line(-2);
  EXPECT_EQ(arena->bytesUsed(), used);  // made after the use ended
  // Deleting gives nothing back to the arena, and neither kind disturbs the other.
  inside.resize(500);
  outside.reset();
  EXPECT_EQ(arena->bytesUsed(), used);
  for (std::size_t i = 0; i < inside.size(); ++i) EXPECT_EQ(inside[i]->startPoint().x, double(i));
  EXPECT_EQ(after->startPoint().x, -2.0);
  inside.clear();
}

TEST(QaDbObjectArena, UsesNestAndEachThreadHasItsOwn) {
  QaDbObjectArena a, b;
  std::vector<std::unique_ptr<QaDbLine>> made;
  {
    QaDbObjectArena::Use useA(a);
    made.push_back(line(0));
    {
      QaDbObjectArena::Use useB(b);
      made.push_back(line(1));
    }
    made.push_back(line(2));  // back to a
    // Another thread has no arena in use: its object comes from the heap.
    std::thread([&] { made.push_back(line(3)); }).join();
  }
  EXPECT_EQ(a.bytesUsed(), 2 * b.bytesUsed());
  made.clear();
}

TEST(QaDbObjectArena, DatabaseThatAdoptsTheArenaKeepsItsObjects) {
  QaDbDatabase db;
  auto arena = std::make_unique<QaDbObjectArena>();
  QaDbObjectId id;
  {
    QaDbObjectArena::Use use(*arena);
    QaDbObjectPointer<QaDbBlockTableRecord> model(db.modelSpaceId(), QaDb::kForWrite);
    ASSERT_EQ(model->appendQaDbEntity(line(7), id), Qa::eOk);
    id.rawObject()->close();
  }
  db.adoptArena(std::move(arena));
  QaDbObjectPointer<QaDbLine> back(id, QaDb::kForRead);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->startPoint().x, 7.0);
  // A clone made later, with no arena in use, is an ordinary object of its own.
  std::unique_ptr<QaDbObject> copy = back->clone();
  EXPECT_EQ(QaDbLine::cast(copy.get())->startPoint().x, 7.0);
}

TEST(QaDbPageCache, RunGivenBackIsTakenAgainAndSmallListsUseTheHeap) {
  const std::size_t size = 3 * qadb_page_cache::kGranule + 5;
  auto* run = static_cast<char*>(qadb_page_cache::take(size));
  run[0] = 'a';
  run[size - 1] = 'z';
  qadb_page_cache::give(run, size);
  auto* again = static_cast<char*>(qadb_page_cache::take(size));
  EXPECT_EQ(again, run);
  EXPECT_EQ(again[size - 1], 'z');  // not cleared: the caller writes before it reads
  qadb_page_cache::give(again, size);

  std::vector<int, qadb_page_cache::Allocator<int>> small(10, 1), large(1 << 20, 2);
  small.push_back(3);
  large.push_back(4);
  EXPECT_EQ(small.back() + small.front(), 4);
  EXPECT_EQ(large.back() + large.front(), 6);
}

}  // namespace
