#include "host/dxf/dxf_error.h"

namespace tabulon::dxf {

namespace {

std::string composeWhat(const std::string& file, std::size_t line, int groupCode,
                        const std::string& message) {
  std::string what = file.empty() ? std::string("<dxf>") : file;
  if (line > 0) what += ":" + std::to_string(line);
  what += ": ";
  if (groupCode != DxfError::kNoGroupCode) what += "group code " + std::to_string(groupCode) + ": ";
  what += message;
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
