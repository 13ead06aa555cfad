#include "host/db/qadb_object_arena.h"

#include "host/db/qadb_page_cache.h"

#include <cstdint>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define TABULON_POISON(p, n) ASAN_POISON_MEMORY_REGION((p), (n))
#define TABULON_UNPOISON(p, n) ASAN_UNPOISON_MEMORY_REGION((p), (n))
#else
#define TABULON_POISON(p, n) ((void)(p), (void)(n))
#define TABULON_UNPOISON(p, n) ((void)(p), (void)(n))
#endif

namespace {

// Every allocation starts with a header telling where it came from, so that
// deallocate() needs nothing but the pointer; 16 bytes keep the object aligned.
constexpr std::size_t kHeader = 16;
constexpr std::uint64_t kFromHeap = 0x48454150;   // "HEAP"
constexpr std::uint64_t kFromArena = 0x4152454e;  // "AREN"

constexpr std::size_t kBlockSize = std::size_t(4) << 20;

thread_local QaDbObjectArena* tCurrent = nullptr;

void* newBlock() {
  void* p = qadb_page_cache::take(kBlockSize);
  TABULON_POISON(p, kBlockSize);
  return p;
}

void giveBack(void* block) {
  TABULON_UNPOISON(block, kBlockSize);
  qadb_page_cache::give(block, kBlockSize);
}

}  // namespace

QaDbObjectArena::~QaDbObjectArena() {
  for (void* b : blocks_) giveBack(b);
}

QaDbObjectArena::Use::Use(QaDbObjectArena& arena) : previous_(tCurrent) { tCurrent = &arena; }
QaDbObjectArena::Use::~Use() { tCurrent = previous_; }

void* QaDbObjectArena::carve(std::size_t size) {
  const std::size_t need = (kHeader + size + 15) & ~std::size_t(15);
  if (need > kBlockSize / 8) return nullptr;  // a rare large object: the heap
  if (static_cast<std::size_t>(end_ - next_) < need) {
    void* block = newBlock();
    blocks_.push_back(block);
    next_ = static_cast<char*>(block);
    end_ = next_ + kBlockSize;
  }
  char* p = next_;
  next_ += need;
  used_ += need;
  TABULON_UNPOISON(p, need);
  *reinterpret_cast<std::uint64_t*>(p) = kFromArena;
  return p + kHeader;
}

void* QaDbObjectArena::allocate(std::size_t size) {
  if (tCurrent)
    if (void* p = tCurrent->carve(size)) return p;
  char* p = static_cast<char*>(::operator new(kHeader + size));
  *reinterpret_cast<std::uint64_t*>(p) = kFromHeap;
  return p + kHeader;
}

void QaDbObjectArena::deallocate(void* p, std::size_t size) noexcept {
  if (!p) return;
  char* start = static_cast<char*>(p) - kHeader;
  if (*reinterpret_cast<const std::uint64_t*>(start) == kFromHeap) {
    ::operator delete(start);
    return;
  }
  // From an arena: the memory goes with the arena. Marked unusable until then, so
  // a use after delete is still caught under the address sanitizer.
  TABULON_POISON(start, kHeader + size);
}
