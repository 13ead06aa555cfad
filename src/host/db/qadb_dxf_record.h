// A slot for what the drawing-file codec keeps of an object or of the database header
// beyond the modelled fields (raw tags). The codec subclasses it; the object owns what the
// codec puts there, and a clone of the object gets a clone of it.
#pragma once

#include <cstddef>
#include <memory>

#include "host/db/qadb_object_arena.h"

struct QaDbDxfRecord {
  // Made by the hundred thousand when a drawing is read: from the reader's arena.
  static void* operator new(std::size_t size) { return QaDbObjectArena::allocate(size); }
  static void operator delete(void* p, std::size_t size) noexcept { QaDbObjectArena::deallocate(p, size); }

  virtual ~QaDbDxfRecord();
  virtual std::unique_ptr<QaDbDxfRecord> clone() const = 0;
  // A number the codec gives each of its record classes, so that a writer that
  // asks for every object's record needs no dynamic cast. 0 when not told.
  virtual int codecKind() const { return 0; }
};
