// Memory for the objects a reader makes by the hundred thousand. While an arena is
// in use on a thread (QaDbObjectArena::Use), every database object and codec record
// made on that thread is carved from the arena's large blocks in turn instead of
// being allocated on its own; deleting one runs its destructor and gives nothing
// back. The blocks go back all at once with the arena, which the database the
// objects went into owns, so it outlives them.
//
// Blocks given back are kept (up to a bound) for the next arena: a drawing loaded
// after another one is built in memory that is already mapped, whichever thread
// reads it.
#pragma once

#include <cstddef>
#include <vector>

class QaDbObjectArena {
 public:
  QaDbObjectArena() = default;
  ~QaDbObjectArena();
  QaDbObjectArena(const QaDbObjectArena&) = delete;
  QaDbObjectArena& operator=(const QaDbObjectArena&) = delete;

  // Makes `arena` the one objects made on this thread come from, until it goes.
  class Use {
   public:
    explicit Use(QaDbObjectArena& arena);
    ~Use();
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    QaDbObjectArena* previous_;
  };

  // Bytes taken from the blocks so far.
  std::size_t bytesUsed() const { return used_; }

  // The allocation functions of database objects and codec records: from the arena
  // in use on this thread, or the heap when there is none.
  static void* allocate(std::size_t size);
  // `size` is the object's, as the delete expression gives it.
  static void deallocate(void* p, std::size_t size) noexcept;

 private:
  void* carve(std::size_t size);

  std::vector<void*> blocks_;
  char* next_ = nullptr;
  char* end_ = nullptr;
  std::size_t used_ = 0;
};
