#include "host/dxf/dxf_encoding_choice.h"

#include "host/dxf/dxf_text_codec.h"

namespace tabulon::dxf {

DxfEncodingChoice dxfChooseEncoding(DxfVersion version, std::optional<std::string_view> headerCodePage,
                                    std::string_view bytes) {
  if (dxfVersionIsUnicode(version)) return {"UTF-8", "R2007 and later files are UTF-8"};
  bool ascii = dxfIsAscii(bytes);
  std::string named = headerCodePage ? dxfNormalizeCodePage(*headerCodePage) : std::string();
  bool known = headerCodePage && dxfIconvName(named).has_value();
  if (known) {
    if (ascii) return {named, "$DWGCODEPAGE"};
    bool valid = named != "ANSI_936" && named != "DOS936" ? true : dxfIsValidGbk(bytes);
    // UTF-8 with multi-byte characters is almost never valid text of another
    // code page by accident; writers that ignore the code page produce it.
    if (dxfIsValidUtf8(bytes))
      return {"UTF-8", "bytes are UTF-8 although $DWGCODEPAGE is " + named};
    if (valid) return {named, "$DWGCODEPAGE"};
    return {named, "$DWGCODEPAGE (some bytes are not valid in it)"};
  }
  std::string why = headerCodePage ? "unknown code page \"" + std::string(*headerCodePage) + "\""
                                   : std::string("no $DWGCODEPAGE");
  if (ascii) return {"ANSI_1252", why + ", text is ASCII"};
  if (dxfIsValidUtf8(bytes)) return {"UTF-8", why + ", bytes are valid UTF-8"};
  if (dxfIsValidGbk(bytes)) return {"ANSI_936", why + ", bytes are valid GBK"};
  return {"ANSI_1252", why + ", default code page"};
}

}  // namespace tabulon::dxf
