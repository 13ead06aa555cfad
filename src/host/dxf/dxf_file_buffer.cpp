#include "host/dxf/dxf_file_buffer.h"

#include "host/db/qadb_page_cache.h"
#include "host/dxf/dxf_error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace tabulon::dxf {

namespace {

using Bytes = qadb_page_cache::Allocator<char>;

// Closes a file descriptor on every path out.
struct FileDescriptor {
  int fd = -1;
  ~FileDescriptor() {
    if (fd >= 0) ::close(fd);
  }
};

}  // namespace

DxfFileBuffer::~DxfFileBuffer() {
  if (data_) Bytes().deallocate(data_, capacity_);
}

DxfFileBuffer::DxfFileBuffer(DxfFileBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

void DxfFileBuffer::reserve(std::size_t capacity) {
  char* data = Bytes().allocate(capacity);
  if (size_ > 0) std::memcpy(data, data_, size_);
  if (data_) Bytes().deallocate(data_, capacity_);
  data_ = data;
  capacity_ = capacity;
}

DxfFileBuffer DxfFileBuffer::read(const std::filesystem::path& path) {
  const std::string name = path.string();
  FileDescriptor file{::open(name.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) throw DxfError(name, 0, DxfError::kNoGroupCode, "cannot open the file");
  struct stat info {};
  if (::fstat(file.fd, &info) == 0 && S_ISDIR(info.st_mode))
    throw DxfError(name, 0, DxfError::kNoGroupCode, "is a folder, not a drawing");
  const std::size_t expected = info.st_size > 0 ? static_cast<std::size_t>(info.st_size) : 0;
  DxfFileBuffer buffer;
  // One byte more than the size told, to see the end in the same call; a file that
  // grew meanwhile (or whose size could not be told) is read on into more room.
  buffer.reserve(expected + 1);
  while (true) {
    if (buffer.size_ == buffer.capacity_) buffer.reserve(2 * buffer.capacity_ + 65536);
    const ssize_t got = ::read(file.fd, buffer.data_ + buffer.size_, buffer.capacity_ - buffer.size_);
    if (got == 0) break;
    if (got < 0) {
      if (errno == EINTR) continue;
      throw DxfError(name, 0, DxfError::kNoGroupCode, "cannot read the file");
    }
    buffer.size_ += static_cast<std::size_t>(got);
  }
  return buffer;
}

}  // namespace tabulon::dxf
