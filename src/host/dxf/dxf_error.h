// The one error type of the DXF codec: a file that cannot be read or written.
// It names the file, the line and the group code where the problem was found.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace tabulon::dxf {

class DxfError : public std::runtime_error {
 public:
  static constexpr int kNoGroupCode = -10000;  // the problem is not tied to one tag

  // `line` is 1-based; 0 when the problem is not tied to a line (an I/O failure).
  DxfError(std::string file, std::size_t line, int groupCode, std::string message);

  const std::string& file() const { return file_; }
  std::size_t line() const { return line_; }
  int groupCode() const { return groupCode_; }
  // The bare description, without file and line.
  const std::string& message() const { return message_; }

 private:
  std::string file_;
  std::size_t line_;
  int groupCode_;
  std::string message_;
};

}  // namespace tabulon::dxf
