// Splits ASCII DXF text into tags. The reader views text owned by the caller,
// which must outlive the reader and every tag it hands out. LF and CR LF line
// ends are both accepted, blanks around group codes are ignored, and values
// are handed out verbatim (only the line end is removed).
#pragma once

#include "host/dxf/dxf_tag.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tabulon::dxf {

class DxfTagReader {
 public:
  // Reads text[begin, end). `firstLine` is the line number at `begin`.
  // At begin 0 a UTF-8 byte order mark is skipped and binary DXF is refused.
  DxfTagReader(std::string_view text, std::string fileName, std::size_t begin = 0,
               std::size_t end = std::string_view::npos, std::size_t firstLine = 1);

  // The next tag, or false at the end of the range. Throws DxfError for a
  // malformed group code or a group code without a value.
  bool next(DxfTag& tag);
  // Returns the tag read last to the stream: the next call to next() gives it again.
  void pushBack();

  // Byte offset of the next unread tag.
  std::size_t position() const { return pos_; }
  std::size_t line() const { return line_; }
  const std::string& fileName() const { return fileName_; }
  std::string_view text() const { return text_; }

  // Throws a DxfError located at the given tag.
  [[noreturn]] void fail(const DxfTag& tag, const std::string& message) const;

 private:
  std::string_view readLine(std::size_t& lineStart);

  std::string_view text_;
  std::string fileName_;
  std::size_t pos_;
  std::size_t end_;
  std::size_t line_;
  std::size_t lastPos_ = 0;
  std::size_t lastLine_ = 0;
  bool canPushBack_ = false;
};

// True when the bytes start like a binary DXF file.
bool dxfIsBinary(std::string_view bytes);

}  // namespace tabulon::dxf
