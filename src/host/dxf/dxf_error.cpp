#include "host/dxf/dxf_error.h"

#include <string_view>

namespace tabulon::dxf {

namespace {

std::string composeWhat(const std::string& file, std::size_t line, int groupCode,
                        const std::string& message) {
  std::string what;
  what.reserve(file.size() + message.size() + 32);
  what.append(file.empty() ? std::string_view("<dxf>") : std::string_view(file));
  if (line > 0) what.append(":").append(std::to_string(line));
  what.append(": ");
  if (groupCode != DxfError::kNoGroupCode) what.append("group code ").append(std::to_string(groupCode)).append(": ");
  what.append(message);
  return what;
}

}  // namespace

DxfError::DxfError(std::string file, std::size_t line, int groupCode, std::string message)
    : std::runtime_error(composeWhat(file, line, groupCode, message)),
      file_(std::move(file)),
      line_(line),
      groupCode_(groupCode),
      message_(std::move(message)) {}

}  // namespace tabulon::dxf
