#include "host/dxf/dxf_tag_writer.h"

#include "host/dxf/dxf_error.h"

#include <charconv>
#include <cmath>

namespace tabulon::dxf {

namespace {
constexpr std::size_t kFlushSize = 1 << 16;
}

std::string dxfFormatDouble(double value) {
  if (!std::isfinite(value)) value = 0.0;
  if (value == 0.0) value = 0.0;  // no "-0.0"
  char buf[64];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, value);
  std::string text(buf, ptr);
  if (text.find_first_of(".eE") == std::string::npos) text += ".0";
  return text;
}

std::string dxfFormatHandle(std::uint64_t handle) {
  char buf[24];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, handle, 16);
  for (char* p = buf; p != ptr; ++p)
    if (*p >= 'a' && *p <= 'f') *p = static_cast<char>(*p - 'a' + 'A');
  return std::string(buf, ptr);
}

DxfTagWriter::DxfTagWriter(DxfSink& sink, std::string lineEnd)
    : sink_(sink), lineEnd_(std::move(lineEnd)) {
  buffer_.reserve(kFlushSize + 4096);
}

void DxfTagWriter::write(int code, std::string_view value) {
  // A line feed would end the value early. (A carriage return inside a value,
  // as some files have, reads back; one at its end is taken as part of the line end.)
  if (value.find('\n') != std::string_view::npos)
    throw DxfError("", 0, code, "value contains a line break: \"" + std::string(value.substr(0, 40)) + "\"");
  char buf[16];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, code);
  std::size_t width = static_cast<std::size_t>(ptr - buf);
  if (width < 3) buffer_.append(3 - width, ' ');
  buffer_.append(buf, ptr);
  buffer_ += lineEnd_;
  buffer_ += value;
  buffer_ += lineEnd_;
  maybeFlush();
}

void DxfTagWriter::writeDouble(int code, double value) { write(code, dxfFormatDouble(value)); }

void DxfTagWriter::writeInt(int code, std::int64_t value) {
  char buf[24];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, value);
  write(code, std::string_view(buf, static_cast<std::size_t>(ptr - buf)));
}

void DxfTagWriter::writeHandle(int code, std::uint64_t handle) { write(code, dxfFormatHandle(handle)); }

void DxfTagWriter::writePoint(int code, double x, double y, double z, bool withZ) {
  writeDouble(code, x);
  writeDouble(code + 10, y);
  if (withZ) writeDouble(code + 20, z);
}

void DxfTagWriter::writeVerbatim(std::string_view bytes) {
  if (bytes.size() > kFlushSize) {
    flush();
    sink_.write(bytes);
    return;
  }
  buffer_ += bytes;
  maybeFlush();
}

void DxfTagWriter::maybeFlush() {
  if (buffer_.size() >= kFlushSize) flush();
}

void DxfTagWriter::flush() {
  if (buffer_.empty()) return;
  sink_.write(buffer_);
  buffer_.clear();
}

void DxfTagWriter::finish() {
  flush();
  sink_.finish();
}

}  // namespace tabulon::dxf
