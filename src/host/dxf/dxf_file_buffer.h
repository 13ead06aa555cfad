// The bytes of a file read into memory of their own, taken through the page cache's
// allocator: a large file goes into a run (reused once given back), so that reading
// a drawing of tens of megabytes after another one costs no page faults; a small one
// into an ordinary allocation. Owns the memory; movable, not copyable.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>

namespace tabulon::dxf {

class DxfFileBuffer {
 public:
  DxfFileBuffer() = default;
  ~DxfFileBuffer();
  DxfFileBuffer(DxfFileBuffer&& other) noexcept;
  DxfFileBuffer& operator=(DxfFileBuffer&&) = delete;
  DxfFileBuffer(const DxfFileBuffer&) = delete;
  DxfFileBuffer& operator=(const DxfFileBuffer&) = delete;

  // Reads the whole file, also when it grows while being read. Throws DxfError
  // (naming the file, no line) when it cannot be opened or read, or is a folder.
  static DxfFileBuffer read(const std::filesystem::path& path);

  std::string_view bytes() const { return {data_, size_}; }

 private:
  // Room for `capacity` bytes; the bytes read so far are kept.
  void reserve(std::size_t capacity);

  char* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace tabulon::dxf
