// Large runs of memory mapped for the bulk of a drawing being read (the file's
// bytes, the blocks objects are carved from, the reader's lists), kept for reuse
// when given back. A drawing read after another one then lands in memory that is
// mapped and paged in already instead of in fresh pages the system must clear one
// fault at a time. Process-wide and thread-safe; what it keeps is bounded.
#pragma once

#include <cstddef>
#include <new>

namespace qadb_page_cache {

// Memory runs are whole multiples of this.
constexpr std::size_t kGranule = std::size_t(2) << 20;

// `size` rounded up to whole granules.
constexpr std::size_t roundUp(std::size_t size) { return (size + kGranule - 1) / kGranule * kGranule; }

// A run of roundUp(size) bytes, not cleared (a fresh one reads as zero). Throws
// std::bad_alloc when none can be had.
void* take(std::size_t size);
// Gives back a run from take() with the same `size`.
void give(void* run, std::size_t size) noexcept;

// Below this a run is not worth it: the heap serves.
constexpr std::size_t kSmall = std::size_t(256) << 10;

// A std allocator for the large lists of a reader: runs from the cache, small
// amounts from the heap.
template <class T>
struct Allocator {
  using value_type = T;
  Allocator() = default;
  template <class U>
  Allocator(const Allocator<U>&) noexcept {}
  T* allocate(std::size_t n) {
    const std::size_t bytes = n * sizeof(T);
    return static_cast<T*>(bytes < kSmall ? ::operator new(bytes) : take(bytes));
  }
  void deallocate(T* p, std::size_t n) noexcept {
    const std::size_t bytes = n * sizeof(T);
    if (bytes < kSmall) ::operator delete(p);
    else give(p, bytes);
  }
  template <class U>
  bool operator==(const Allocator<U>&) const noexcept {
    return true;
  }
};

}  // namespace qadb_page_cache
