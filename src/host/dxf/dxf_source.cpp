#include "host/dxf/dxf_source.h"

#include <algorithm>

namespace tabulon::dxf {

DxfSource::DxfSource(std::string fileName, std::string bytes)
    : fileName_(std::move(fileName)), text_(std::move(bytes)), bytes_(text_),
      codec_(std::make_unique<DxfTextCodec>("ANSI_1252")) {
  if (dxfIsBinary(bytes_)) takeBinary(bytes_);
  noteLineEnd();
}

DxfSource::DxfSource(std::string fileName, DxfFileBuffer file)
    : fileName_(std::move(fileName)), file_(std::move(file)), bytes_(file_.bytes()),
      codec_(std::make_unique<DxfTextCodec>("ANSI_1252")) {
  // The binary bytes stay with file_ until the source goes (dxfLoadFile does
  // not keep them).
  if (dxfIsBinary(bytes_)) takeBinary(bytes_);
  noteLineEnd();
}

void DxfSource::takeBinary(std::string_view bytes) {
  // `bytes` may view text_: it is replaced only when the conversion is done.
  DxfBinaryText converted = dxfBinaryToText(bytes, fileName_);
  text_ = std::move(converted.text);
  converted.text = std::string();
  binaryOffsets_ = std::move(converted);
  bytes_ = text_;
  binary_ = true;
}

void DxfSource::noteLineEnd() {
  std::size_t nl = bytes_.find('\n');
  lineEnd_ = (nl != std::string::npos && nl > 0 && bytes_[nl - 1] == '\r') ? "\r\n" : "\n";
}

std::size_t DxfSource::lineOf(std::size_t offset) const {
  offset = std::min(offset, bytes_.size());
  return 1 + static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

DxfTagReader DxfSource::tags(DxfSpan span, std::size_t firstLine) const {
  return DxfTagReader(bytes_, fileName_, span.begin, span.end, firstLine);
}

}  // namespace tabulon::dxf
