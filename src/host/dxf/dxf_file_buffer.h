// The bytes of a file read into memory of their own. A large file goes into a run
// of the page cache (reused once given back), so that reading a drawing of tens of
// megabytes after another one costs no page faults; a small one into an ordinary
// allocation. Owns the memory; movable, not copyable.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string_view>

namespace tabulon::dxf {

class DxfFileBuffer {
 public:
  DxfFileBuffer() = default;
  ~DxfFileBuffer();
  DxfFileBuffer(DxfFileBuffer&& other) noexcept;
  DxfFileBuffer& operator=(DxfFileBuffer&& other) noexcept;
  DxfFileBuffer(const DxfFileBuffer&) = delete;
  DxfFileBuffer& operator=(const DxfFileBuffer&) = delete;

  // Reads the whole file, also when it grows while being read. Throws DxfError
  // (naming the file, no line) when it cannot be opened or read, or is a folder.
  static DxfFileBuffer read(const std::filesystem::path& path);

  std::string_view bytes() const { return {data_, size_}; }

 private:
  // Room for `capacity` bytes, of which the first `keep` of the current ones are kept.
  void reserve(std::size_t capacity, std::size_t keep);
  void release();

  char* data_ = nullptr;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
  bool mapped_ = false;  // data_ is a page cache run of capacity_ bytes, else new char[]
};

}  // namespace tabulon::dxf
