// DXF file versions, as $ACADVER names them (AC1009 ... AC1032) and as users
// name them (R12 ... R2018).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tabulon::dxf {

enum class DxfVersion {
  R12 = 1009,
  R13 = 1012,
  R14 = 1014,
  R2000 = 1015,
  R2004 = 1018,
  R2007 = 1021,
  R2010 = 1024,
  R2013 = 1027,
  R2018 = 1032,
};

// "AC1015" for R2000.
std::string dxfVersionCode(DxfVersion version);
// "R2000" for R2000.
std::string dxfVersionName(DxfVersion version);
// From "AC1015" (also older AC1006.. read as R12, unknown newer ones as R2018).
std::optional<DxfVersion> dxfVersionFromCode(std::string_view acadver);
// From a user's "R2000", "2000" or "AC1015"; only versions that can be written.
std::optional<DxfVersion> dxfWritableVersionFromName(std::string_view name);

// Text is UTF-8 from R2007 on, whatever the header's code page says.
inline bool dxfVersionIsUnicode(DxfVersion v) { return static_cast<int>(v) >= 1021; }
// Handles, subclass markers, owners and the OBJECTS section exist from R13 on.
inline bool dxfVersionHasSubclasses(DxfVersion v) { return static_cast<int>(v) >= 1012; }
inline bool dxfVersionAtLeast(DxfVersion v, DxfVersion min) {
  return static_cast<int>(v) >= static_cast<int>(min);
}

}  // namespace tabulon::dxf
