// The slot table: slots found by handle whether indexed densely or parked far out,
// addresses that never move while the index grows, creation order and the highest handle.
#include "host/db/qadb_database.h"
#include "host/db/qadb_slot_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <unordered_map>
#include <vector>

namespace {

constexpr std::uint64_t kHuge = 0xFFFFFFFFFFFFull;
using Handles = std::initializer_list<std::uint64_t>;

std::vector<std::uint64_t> handlesInOrder(const QaDbSlotTable& table) {
  std::vector<std::uint64_t> out;
  table.forEach([&out](const QaDbObjectSlot& slot) { out.push_back(slot.handle.value()); });
  return out;
}

TEST(QaDbSlotTable, EmptyTableFindsNothing) {
  QaDbSlotTable table;
  for (std::uint64_t h : Handles{0, 1, 65535, kHuge, ~0ull}) EXPECT_EQ(table.find(QaDbHandle(h)), nullptr) << h;
  EXPECT_TRUE(table.highest().isNull());
  EXPECT_EQ(table.size(), 0u);
  EXPECT_TRUE(handlesInOrder(table).empty());
}

// Handles far out are parked first; a run of ordinary handles then grows the array past
// some of them (which move into it) but not past others.
TEST(QaDbSlotTable, ParkedHandlesSurviveTheArrayGrowingPastThem) {
  QaDbDatabase db(false);
  QaDbSlotTable table;
  std::vector<std::uint64_t> order = {1, 2, kHuge, 66000, 100000, 200000};
  std::unordered_map<std::uint64_t, QaDbObjectSlot*> first;
  for (std::uint64_t h : order) first[h] = table.findOrAdd(QaDbHandle(h), &db);
  for (std::uint64_t h = 3; h <= 70000; ++h) {
    QaDbObjectSlot* slot = table.findOrAdd(QaDbHandle(h), &db);
    if (first.count(h) != 0) {
      ASSERT_EQ(slot, first[h]) << "an existing handle made a second slot: " << h;
      continue;
    }
    order.push_back(h);
    if (h % 997 == 0 || h == 3 || h == 70000) first[h] = slot;
  }
  EXPECT_EQ(table.size(), order.size());
  EXPECT_EQ(table.highest(), QaDbHandle(kHuge));
  for (const auto& [h, slot] : first) {
    EXPECT_EQ(table.find(QaDbHandle(h)), slot) << h;
    EXPECT_EQ(slot->handle, QaDbHandle(h));
    EXPECT_EQ(slot->database, &db);
  }
  for (std::uint64_t h : Handles{0, 70001, 99999, 150000, 199999, 200001, 300000, kHuge - 1,
                          kHuge + 1, ~0ull})
    EXPECT_EQ(table.find(QaDbHandle(h)), nullptr) << h;
  EXPECT_EQ(handlesInOrder(table), order);
}

// Random handles, small, near the edge of the array and anywhere in 64 bits, added in
// random order with repeats, checked against a plain map.
TEST(QaDbSlotTable, RandomHandlesMatchAPlainMap) {
  std::mt19937_64 rng(20261122);
  QaDbDatabase db(false);
  QaDbSlotTable table;
  std::unordered_map<std::uint64_t, QaDbObjectSlot*> expected;
  std::vector<std::uint64_t> order;
  std::uint64_t highest = 0;
  auto pick = [&rng]() -> std::uint64_t {
    switch (rng() % 4) {
      case 0: return 1 + rng() % 3000;
      case 1: return 60000 + rng() % 20000;
      case 2: return 1 + rng() % 400000;
      default: return rng() | 1;
    }
  };
  for (int i = 0; i < 6000; ++i) {
    const std::uint64_t h = pick();
    QaDbObjectSlot* slot = table.findOrAdd(QaDbHandle(h), &db);
    auto [it, added] = expected.emplace(h, slot);
    if (added) {
      order.push_back(h);
      highest = std::max(highest, h);
    } else {
      ASSERT_EQ(slot, it->second) << h;
    }
  }
  // A moved table (what swapping databases does) keeps every slot where it was.
  const QaDbSlotTable moved(std::move(table));
  EXPECT_EQ(moved.size(), expected.size());
  EXPECT_EQ(moved.highest(), QaDbHandle(highest));
  for (const auto& [h, slot] : expected) ASSERT_EQ(moved.find(QaDbHandle(h)), slot) << h;
  for (int i = 0; i < 2000; ++i) {
    const std::uint64_t h = pick();
    if (expected.count(h) == 0) {
      ASSERT_EQ(moved.find(QaDbHandle(h)), nullptr) << h;
    }
  }
  EXPECT_EQ(handlesInOrder(moved), order);
}

TEST(QaDbSlotTable, ReservedRoomChangesNothingVisible) {
  QaDbDatabase db(false);
  QaDbSlotTable table;
  table.reserve(5000);
  EXPECT_EQ(table.size(), 0u);
  EXPECT_EQ(table.find(QaDbHandle(10)), nullptr);
  std::vector<QaDbObjectSlot*> slots;
  for (std::uint64_t h = 4000; h >= 1; --h) slots.push_back(table.findOrAdd(QaDbHandle(h), &db));
  table.reserve(100);  // smaller than in use: no effect
  for (std::uint64_t h = 1; h <= 4000; ++h) EXPECT_EQ(table.find(QaDbHandle(h)), slots[4000 - h]) << h;
  EXPECT_EQ(table.size(), 4000u);
  EXPECT_EQ(table.highest(), QaDbHandle(4000));
}

// Room reserved past a parked handle takes that handle into the array: it is still
// found, and adding it again gives the same slot.
TEST(QaDbSlotTable, ReservingPastAParkedHandleKeepsIt) {
  QaDbDatabase db(false);
  QaDbSlotTable table;
  table.findOrAdd(QaDbHandle(1), &db);
  QaDbObjectSlot* far = table.findOrAdd(QaDbHandle(100000), &db);
  table.reserve(200000);
  EXPECT_EQ(table.find(QaDbHandle(100000)), far);
  EXPECT_EQ(table.findOrAdd(QaDbHandle(100000), &db), far);
  EXPECT_EQ(table.size(), 2u);
}

}  // namespace
