#include "host/db/qadb_page_cache.h"

#include <sys/mman.h>

#include <mutex>
#include <utility>
#include <vector>

namespace qadb_page_cache {

namespace {

// Bytes kept at most: the runs of a drawing of some hundreds of thousands of objects.
constexpr std::size_t kKeptBytes = std::size_t(512) << 20;

struct Cache {
  std::mutex mutex;
  std::vector<std::pair<void*, std::size_t>> runs;  // kept runs and their sizes
  std::size_t kept = 0;
};

Cache& cache() {
  static Cache* c = new Cache;  // never destroyed: runs may come back during static destruction
  return *c;
}

}  // namespace

void* take(std::size_t size) {
  size = roundUp(size == 0 ? 1 : size);
  {
    Cache& c = cache();
    std::lock_guard lock(c.mutex);
    for (std::size_t i = c.runs.size(); i-- > 0;)
      if (c.runs[i].second == size) {
        void* run = c.runs[i].first;
        c.runs.erase(c.runs.begin() + static_cast<std::ptrdiff_t>(i));
        c.kept -= size;
        return run;
      }
  }
  void* run = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (run == MAP_FAILED) throw std::bad_alloc();
  return run;
}

void give(void* run, std::size_t size) noexcept {
  if (!run) return;
  size = roundUp(size == 0 ? 1 : size);
  {
    Cache& c = cache();
    std::lock_guard lock(c.mutex);
    if (c.kept + size <= kKeptBytes) {
      try {
        c.runs.emplace_back(run, size);
        c.kept += size;
        return;
      } catch (const std::bad_alloc&) {
        // Not kept: unmapped below.
      }
    }
  }
  ::munmap(run, size);
}

}  // namespace qadb_page_cache
