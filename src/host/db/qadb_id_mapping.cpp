#include "host/db/qadb_id_mapping.h"

bool QaDbIdMapping::compute(QaDbIdPair& pair) const {
  auto it = pairs_.find(pair.key);
  if (it == pairs_.end()) return false;
  pair = it->second;
  return true;
}

std::optional<QaDbObjectId> QaDbIdMapping::lookup(QaDbObjectId key) const {
  auto it = pairs_.find(key);
  if (it == pairs_.end()) return std::nullopt;
  return it->second.value;
}

QaDbObjectId QaDbIdMapping::destinationOf(QaDbObjectId key) const {
  auto it = pairs_.find(key);
  return it == pairs_.end() ? QaDbObjectId() : it->second.value;
}
