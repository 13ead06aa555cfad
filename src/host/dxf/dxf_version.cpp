#include "host/dxf/dxf_version.h"

#include "host/dxf/dxf_tag.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tabulon::dxf {

namespace {

struct VersionName {
  DxfVersion version;
  const char* name;
};

constexpr std::array<VersionName, 9> kVersions{{
    {DxfVersion::R12, "R12"},
    {DxfVersion::R13, "R13"},
    {DxfVersion::R14, "R14"},
    {DxfVersion::R2000, "R2000"},
    {DxfVersion::R2004, "R2004"},
    {DxfVersion::R2007, "R2007"},
    {DxfVersion::R2010, "R2010"},
    {DxfVersion::R2013, "R2013"},
    {DxfVersion::R2018, "R2018"},
}};

}  // namespace

std::string dxfVersionCode(DxfVersion version) {
  return "AC" + std::to_string(static_cast<int>(version));
}

std::string dxfVersionName(DxfVersion version) {
  for (const auto& v : kVersions)
    if (v.version == version) return v.name;
  return dxfVersionCode(version);
}

std::optional<DxfVersion> dxfVersionFromCode(std::string_view acadver) {
  acadver = dxfTrim(acadver);
  if (acadver.size() != 6 || (acadver.substr(0, 2) != "AC" && acadver.substr(0, 2) != "ac"))
    return std::nullopt;
  auto number = dxfParseInt(acadver.substr(2));
  if (!number || *number < 1000) return std::nullopt;
  std::optional<DxfVersion> best;
  for (const auto& v : kVersions)
    if (static_cast<int>(v.version) <= *number) best = v.version;
  // Anything older than R12 reads like R12.
  return best ? best : std::optional<DxfVersion>(DxfVersion::R12);
}

std::optional<DxfVersion> dxfWritableVersionFromName(std::string_view name) {
  std::string upper(dxfTrim(name));
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  for (const auto& v : kVersions) {
    if (!dxfVersionAtLeast(v.version, DxfVersion::R2000)) continue;
    std::string n = v.name;
    if (upper == n || upper == n.substr(1) || upper == dxfVersionCode(v.version)) return v.version;
  }
  return std::nullopt;
}

}  // namespace tabulon::dxf
