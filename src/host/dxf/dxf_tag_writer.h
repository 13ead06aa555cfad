// Writes DXF tags as text to a sink. Group codes are right-aligned in three
// columns; values are written as given. The writer keeps a buffer and hands
// it to the sink in large pieces; the sink must outlive the writer.
#pragma once

#include "host/dxf/dxf_sink.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tabulon::dxf {

// Shortest text that reads back as the same double, always with a decimal
// point or an exponent ("1.0", "0.25", "1e+20").
std::string dxfFormatDouble(double value);
// Upper-case hexadecimal without leading zeros ("0" for the null handle).
std::string dxfFormatHandle(std::uint64_t handle);

class DxfTagWriter {
 public:
  explicit DxfTagWriter(DxfSink& sink, std::string lineEnd = "\n");
  DxfTagWriter(const DxfTagWriter&) = delete;
  DxfTagWriter& operator=(const DxfTagWriter&) = delete;

  // A value that is already text in the file's encoding. A line feed inside
  // it would corrupt the file: DxfError.
  void write(int code, std::string_view value);
  void writeDouble(int code, double value);
  void writeInt(int code, std::int64_t value);
  void writeHandle(int code, std::uint64_t handle);
  // Writes code, code+10 and code+20 (the last one only when `withZ`).
  void writePoint(int code, double x, double y, double z, bool withZ = true);
  // Bytes that are already complete tags with line ends.
  void writeVerbatim(std::string_view bytes);

  const std::string& lineEnd() const { return lineEnd_; }
  // Hands buffered text to the sink.
  void flush();
  // Flushes and lets the sink finish (close the file).
  void finish();

 private:
  void maybeFlush();

  DxfSink& sink_;
  std::string lineEnd_;
  std::string buffer_;
};

}  // namespace tabulon::dxf
