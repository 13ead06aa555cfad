// Decides how the strings of a file are encoded, from its version, the code
// page its header names and the bytes themselves.
#pragma once

#include "host/dxf/dxf_version.h"

#include <optional>
#include <string>
#include <string_view>

namespace tabulon::dxf {

struct DxfEncodingChoice {
  std::string codePage;  // "UTF-8" or a DXF code page name ("ANSI_936")
  std::string reason;    // why, in a few words, for reports
};

// R2007 and later: UTF-8. Older: the header's code page, unless the bytes are
// not valid in it but are valid UTF-8. Without a (known) code page: ASCII is
// ANSI_1252, valid UTF-8 is UTF-8, valid GBK is ANSI_936, else ANSI_1252.
DxfEncodingChoice dxfChooseEncoding(DxfVersion version, std::optional<std::string_view> headerCodePage,
                                    std::string_view bytes);

}  // namespace tabulon::dxf
