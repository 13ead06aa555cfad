// Converts DXF string values between the bytes of one file's encoding and
// wide text: UTF-8 (R2007 on) or the Windows/DOS code page that $DWGCODEPAGE
// names (ANSI_936 is GBK). Reading decodes the \U+XXXX and \M+nXXXX escapes;
// writing to a code page escapes as \U+XXXX what the code page cannot hold.
// A codec keeps iconv descriptors: it is movable, not copyable, and not for
// use from two threads at once.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tabulon::dxf {

// The iconv name of a DXF code page name ("ANSI_936" -> "CP936", "dos850" ->
// "CP850", "UTF-8" -> "UTF-8"); nullopt for a name we do not know.
std::optional<std::string> dxfIconvName(std::string_view codePage);
// Canonical spelling of a code page name: upper case ("ansi_1252" -> "ANSI_1252").
std::string dxfNormalizeCodePage(std::string_view codePage);

bool dxfIsAscii(std::string_view bytes);
bool dxfIsValidUtf8(std::string_view bytes);
// True when every byte sequence is a valid GBK (CP936) character.
bool dxfIsValidGbk(std::string_view bytes);

// Appends the UTF-8 form of one character.
void dxfAppendUtf8(std::string& out, char32_t c);

class DxfTextCodec {
 public:
  // `codePage` as in $DWGCODEPAGE, or "UTF-8". An unknown name falls back to
  // ANSI_1252 (see knownCodePage()).
  explicit DxfTextCodec(std::string_view codePage);
  ~DxfTextCodec();
  DxfTextCodec(DxfTextCodec&&) noexcept;
  DxfTextCodec& operator=(DxfTextCodec&&) noexcept;
  DxfTextCodec(const DxfTextCodec&) = delete;
  DxfTextCodec& operator=(const DxfTextCodec&) = delete;

  // "UTF-8" or the canonical code page name this codec uses.
  const std::string& codePage() const { return codePage_; }
  bool isUtf8() const { return utf8_; }
  // False when the name given was not known and ANSI_1252 is used instead.
  bool knownCodePage() const { return known_; }

  // Bytes of the file to text; escapes decoded; undecodable bytes become U+FFFD
  // (single-byte code pages map them to U+0080..U+00FF instead).
  std::wstring decode(std::string_view bytes) const;
  // Text to bytes of the file; control characters are written in caret form
  // (^J; a tab stays), characters outside the code page as \U+XXXX.
  std::string encode(std::wstring_view text) const;
  // Bytes of `source` re-encoded into this codec's encoding; ASCII passes through.
  std::string transcode(std::string_view bytes, const DxfTextCodec& source) const;

 private:
  // decode() without resolving escapes.
  std::wstring decodeBytes(std::string_view bytes) const;

  struct Iconv;
  std::string codePage_;
  bool utf8_ = false;
  bool known_ = true;
  bool singleByte_ = true;
  std::unique_ptr<Iconv> iconv_;
  // Where decode() widens UTF-8 before the text is made.
  mutable std::unique_ptr<wchar_t[]> scratch_;
  mutable std::size_t scratchSize_ = 0;
};

// Decodes \U+XXXX (UTF-16 units, surrogate pairs joined) and \M+nXXXX
// escapes in text already decoded from the file's bytes.
std::wstring dxfDecodeEscapes(std::wstring text);
// Turns the caret forms of line breaks and tabs (^J, ^M, ^I) back into the characters.
std::wstring dxfDecodeCarets(std::wstring text);

}  // namespace tabulon::dxf
