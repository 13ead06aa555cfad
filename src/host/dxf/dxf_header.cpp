#include "host/dxf/dxf_header.h"

#include "host/dxf/dxf_tag.h"
#include "host/dxf/dxf_tag_writer.h"

#include <algorithm>

namespace tabulon::dxf {

const DxfHeaderVariable* DxfHeader::find(std::string_view name) const {
  for (const auto& v : vars_)
    if (v.name == name) return &v;
  return nullptr;
}

std::optional<std::string_view> DxfHeader::value(std::string_view name) const {
  const DxfHeaderVariable* v = find(name);
  if (!v) return std::nullopt;
  for (const auto& t : v->tags)
    if (t.code != 999) return std::string_view(t.value);
  return std::nullopt;
}

void DxfHeader::set(std::string_view name, std::vector<DxfHeaderTag> tags, std::string_view after) {
  for (auto& v : vars_) {
    if (v.name == name) {
      v.tags = std::move(tags);
      return;
    }
  }
  auto pos = vars_.end();
  if (!after.empty()) {
    auto it = std::find_if(vars_.begin(), vars_.end(), [&](const auto& v) { return v.name == after; });
    if (it != vars_.end()) pos = it + 1;
  }
  vars_.insert(pos, DxfHeaderVariable{std::string(name), std::move(tags)});
}

void DxfHeader::setValue(std::string_view name, int code, std::string value, std::string_view after) {
  set(name, {DxfHeaderTag{code, std::move(value)}}, after);
}

void DxfHeader::remove(std::string_view name) {
  std::erase_if(vars_, [&](const auto& v) { return v.name == name; });
}

std::optional<DxfVersion> DxfHeader::version() const {
  auto v = value("$ACADVER");
  return v ? dxfVersionFromCode(*v) : std::nullopt;
}

void DxfHeader::setVersion(DxfVersion version) {
  if (find("$ACADVER")) {
    setValue("$ACADVER", 1, dxfVersionCode(version));
  } else {
    vars_.insert(vars_.begin(), DxfHeaderVariable{"$ACADVER", {DxfHeaderTag{1, dxfVersionCode(version)}}});
  }
}

std::optional<std::string> DxfHeader::codePage() const {
  auto v = value("$DWGCODEPAGE");
  if (!v) return std::nullopt;
  return std::string(dxfTrim(*v));
}

void DxfHeader::setCodePage(const std::string& codePage) {
  // AutoCAD writes it right after the version variables.
  setValue("$DWGCODEPAGE", 3, codePage, find("$ACADMAINTVER") ? "$ACADMAINTVER" : "$ACADVER");
}

std::optional<std::uint64_t> DxfHeader::handSeed() const {
  auto v = value("$HANDSEED");
  return v ? dxfParseHandle(*v) : std::nullopt;
}

void DxfHeader::setHandSeed(std::uint64_t seed) { setValue("$HANDSEED", 5, dxfFormatHandle(seed), "$DWGCODEPAGE"); }

}  // namespace tabulon::dxf
