#include "host/db/qadb_shared_name.h"

#include <functional>
#include <mutex>
#include <unordered_set>

namespace {

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::wstring_view s) const noexcept { return std::hash<std::wstring_view>()(s); }
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::wstring_view a, std::wstring_view b) const noexcept { return a == b; }
};

// Nodes of an unordered_set never move, so the addresses handed out stay valid.
const std::wstring* intern(std::wstring_view name) {
  static std::mutex mutex;
  static std::unordered_set<std::wstring, NameHash, NameEqual> pool;
  std::lock_guard lock(mutex);
  auto it = pool.find(name);
  if (it == pool.end()) it = pool.emplace(name).first;
  return &*it;
}

}  // namespace

QaDbSharedName::QaDbSharedName() {
  static const std::wstring* empty = intern(L"");
  name_ = empty;
}

QaDbSharedName::QaDbSharedName(std::wstring_view name) : name_(intern(name)) {}
