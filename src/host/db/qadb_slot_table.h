// The slots of one database and their index by handle. The table owns the slots;
// they sit in fixed-size chunks, so a slot never moves and an id pointing at it stays
// valid for the life of the table. Handles of a drawing are nearly consecutive, so
// the index is a plain array by handle value; handles far beyond the others go to a
// hash map. A load of hundreds of thousands of objects costs no allocation per object
// and reads the index in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/db/qadb_object_id.h"

class QaDbSlotTable {
 public:
  QaDbSlotTable() = default;
  QaDbSlotTable(const QaDbSlotTable&) = delete;
  QaDbSlotTable& operator=(const QaDbSlotTable&) = delete;
  QaDbSlotTable(QaDbSlotTable&&) noexcept = default;
  QaDbSlotTable& operator=(QaDbSlotTable&&) noexcept = default;

  // The slot of `handle`, nullptr when there is none.
  QaDbObjectSlot* find(QaDbHandle handle) const {
    const std::uint64_t h = handle.value();
    if (h < dense_.size()) return dense_[h];
    if (sparse_.empty()) return nullptr;
    auto it = sparse_.find(h);
    return it == sparse_.end() ? nullptr : it->second;
  }
  // The slot of `handle`, made (empty, belonging to `db`) when there is none.
  QaDbObjectSlot* findOrAdd(QaDbHandle handle, QaDbDatabase* db);
  // Makes room for `count` slots in all.
  void reserve(std::size_t count);
  std::size_t size() const { return size_; }
  // The highest handle of any slot; null when there is none.
  QaDbHandle highest() const { return highest_; }

  // Every slot, in the order they were made.
  template <class Visit>
  void forEach(Visit&& visit) const {
    std::size_t left = size_;
    for (const auto& chunk : chunks_)
      for (std::size_t i = 0; i < kChunkSize && left > 0; ++i, --left) visit(chunk[i]);
  }

 private:
  static constexpr std::size_t kChunkSize = 1024;
  // A handle is indexed densely while it stays below this many times the slots in use
  // (plus a margin), so a stray huge handle cannot blow the array up.
  bool fitsDense(std::uint64_t h) const { return h < 4 * (size_ + 1) + 65536; }
  // Enlarges the array to `size` and moves the parked handles that now fit into it.
  void growDense(std::size_t size);

  std::vector<std::unique_ptr<QaDbObjectSlot[]>> chunks_;
  std::vector<QaDbObjectSlot*> dense_;  // by handle value, nullptr = none
  std::unordered_map<std::uint64_t, QaDbObjectSlot*> sparse_;
  std::size_t size_ = 0;
  QaDbHandle highest_;
};
