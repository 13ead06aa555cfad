// A file read whole: small files into an ordinary allocation, large ones into page
// cache runs; the bytes exactly as on disk, whatever the size; clear errors for
// what cannot be read.
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_file_buffer.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

using tabulon::dxf::DxfError;
using tabulon::dxf::DxfFileBuffer;

std::string patterned(std::size_t size) {
  std::string s(size, '\0');
  for (std::size_t i = 0; i < size; ++i) s[i] = static_cast<char>('a' + (i * 7 + i / 4096) % 26);
  return s;
}

TEST(DxfFileBuffer, ReadsEveryByteOfFilesOfAnySize) {
  tabulon::test::ScratchDir dir;
  // Small, about a megabyte (a page cache run), and past a whole run.
  for (std::size_t size : {std::size_t(0), std::size_t(1), std::size_t(4095), std::size_t(1) << 20,
                           (std::size_t(1) << 20) + 1, (std::size_t(5) << 20) + 17}) {
    const std::string bytes = patterned(size);
    const auto path = dir / ("f" + std::to_string(size));
    std::ofstream(path, std::ios::binary) << bytes;
    DxfFileBuffer buffer = DxfFileBuffer::read(path);
    EXPECT_EQ(buffer.bytes().size(), size);
    EXPECT_TRUE(buffer.bytes() == bytes) << size;
    // Moving hands the bytes over; the moved-from buffer is empty.
    DxfFileBuffer moved = std::move(buffer);
    EXPECT_EQ(moved.bytes().size(), size);
    EXPECT_TRUE(buffer.bytes().empty());  // NOLINT(bugprone-use-after-move)
  }
}

TEST(DxfFileBuffer, MissingFileAndFolderAreClearErrors) {
  tabulon::test::ScratchDir dir;
  struct Case {
    std::filesystem::path path;
    const char* says;
  };
  for (const Case& c : {Case{dir / "missing.dxf", "cannot open the file"}, Case{dir.path(), "is a folder"}}) {
    try {
      DxfFileBuffer::read(c.path);
      ADD_FAILURE() << c.path << " was read";
    } catch (const DxfError& e) {
      EXPECT_NE(std::string(e.what()).find(c.says), std::string::npos) << e.what();
      EXPECT_EQ(e.line(), 0u);
    }
  }
}

}  // namespace
