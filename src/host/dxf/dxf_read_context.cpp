#include "host/dxf/dxf_read_context.h"

#include "host/dxf/dxf_error.h"

namespace tabulon::dxf {

double DxfReadContext::realSlow(const DxfTag& tag) const {
  auto v = dxfParseDouble(tag.value);
  if (!v) fail(tag, "not a number: \"" + std::string(dxfTrim(tag.value).substr(0, 40)) + "\"");
  return *v;
}

int DxfReadContext::integerSlow(const DxfTag& tag) const {
  auto v = dxfParseInt(tag.value);
  if (!v || *v < INT32_MIN || *v > INT32_MAX)
    fail(tag, "not an integer: \"" + std::string(dxfTrim(tag.value).substr(0, 40)) + "\"");
  return static_cast<int>(*v);
}

std::uint64_t DxfReadContext::handle(const DxfTag& tag) const {
  auto v = dxfParseHandle(tag.value);
  if (!v) {
    audit_.add(tag.line, "group code " + std::to_string(tag.code) + ": malformed handle \"" +
                             std::string(dxfTrim(tag.value).substr(0, 20)) + "\" ignored");
    return 0;
  }
  return *v;
}

void DxfReadContext::fail(const DxfTag& tag, const std::string& message) const {
  throw DxfError(source_.fileName(), tag.line, tag.code, message);
}

}  // namespace tabulon::dxf
