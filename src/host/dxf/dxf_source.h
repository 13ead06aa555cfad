// The text of one DXF file as it was read, shared by everything loaded from
// it: objects keep the byte ranges of their original tags and write them back
// unchanged while they are not modified. Immutable once loaded. A binary DXF
// file is held as the ASCII text it stands for (see DxfBinaryText); its byte
// ranges are ranges of that text.
#pragma once

#include "host/dxf/dxf_binary_text.h"
#include "host/dxf/dxf_file_buffer.h"
#include "host/dxf/dxf_tag_reader.h"
#include "host/dxf/dxf_text_codec.h"
#include "host/dxf/dxf_version.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tabulon::dxf {

// A byte range [begin, end) of a source.
struct DxfSpan {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool empty() const { return end <= begin; }
};

class DxfSource {
 public:
  // Both throw DxfError for a damaged binary file.
  DxfSource(std::string fileName, std::string bytes);
  // Takes the bytes of a file read into memory.
  DxfSource(std::string fileName, DxfFileBuffer file);
  DxfSource(const DxfSource&) = delete;
  DxfSource& operator=(const DxfSource&) = delete;

  const std::string& fileName() const { return fileName_; }
  std::string_view bytes() const { return bytes_; }
  std::string_view text(DxfSpan span) const { return bytes_.substr(span.begin, span.end - span.begin); }
  // "\r\n" when the file's first line ends so, else "\n".
  const std::string& lineEnd() const { return lineEnd_; }
  // 1-based line number of a byte offset.
  std::size_t lineOf(std::size_t offset) const;
  // The file was binary DXF: its lines are those of the text made of it.
  bool isBinary() const { return binary_; }
  // For a binary file, the byte offset in it of the tag at a line of the text
  // made of it (npos when none); for a text file, npos.
  std::size_t binaryOffsetOfLine(std::size_t line) const {
    return binary_ ? binaryOffsets_.offsetOfLine(line) : std::string_view::npos;
  }
  // A reader of the tags in `span`; `firstLine` is the line at span.begin when
  // known (lines count on from it), 0 when not needed.
  DxfTagReader tags(DxfSpan span, std::size_t firstLine = 0) const;

  // Set by the loader once the header is read.
  DxfVersion version() const { return version_; }
  const DxfTextCodec& codec() const { return *codec_; }
  void setVersion(DxfVersion v) { version_ = v; }
  void setCodec(std::unique_ptr<DxfTextCodec> codec) { codec_ = std::move(codec); }

 private:
  void noteLineEnd();
  // Replaces binary bytes by their text.
  void takeBinary(std::string_view bytes);

  std::string fileName_;
  std::string text_;                // the bytes, when given as a string
  DxfFileBuffer file_;              // the bytes, when read from a file
  std::string_view bytes_;          // whichever holds them
  std::string lineEnd_;
  bool binary_ = false;
  DxfBinaryText binaryOffsets_;  // tag offsets only: the text moved to text_
  DxfVersion version_ = DxfVersion::R12;
  std::unique_ptr<DxfTextCodec> codec_;
};

}  // namespace tabulon::dxf
