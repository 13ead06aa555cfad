#include "host/db/qadb_slot_table.h"

#include <algorithm>

void QaDbSlotTable::reserve(std::size_t count) {
  chunks_.reserve((count + kChunkSize - 1) / kChunkSize);
  if (dense_.size() < count) growDense(count);
}

void QaDbSlotTable::growDense(std::size_t size) {
  dense_.resize(size, nullptr);
  // Handles parked in the hash map that now fit move over.
  for (auto it = sparse_.begin(); it != sparse_.end();) {
    if (it->first < dense_.size()) {
      dense_[it->first] = it->second;
      it = sparse_.erase(it);
    } else {
      ++it;
    }
  }
}

QaDbObjectSlot* QaDbSlotTable::findOrAdd(QaDbHandle handle, QaDbDatabase* db) {
  if (QaDbObjectSlot* s = find(handle)) return s;
  if (size_ % kChunkSize == 0) chunks_.push_back(std::make_unique<QaDbObjectSlot[]>(kChunkSize));
  QaDbObjectSlot* slot = &chunks_.back()[size_ % kChunkSize];
  ++size_;
  slot->database = db;
  slot->handle = handle;
  const std::uint64_t h = handle.value();
  if (h < dense_.size()) {
    dense_[h] = slot;
  } else if (fitsDense(h)) {
    growDense(std::max<std::size_t>(h + 1, dense_.size() * 2));
    dense_[h] = slot;
  } else {
    sparse_.emplace(h, slot);
  }
  if (highest_ < handle) highest_ = handle;
  return slot;
}
