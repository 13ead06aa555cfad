#include "host/dxf/dxf_text_codec.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <iconv.h>

namespace tabulon::dxf {

namespace {

struct CodePageName {
  const char* dxf;
  const char* iconv;
  bool singleByte;
};

constexpr std::array<CodePageName, 38> kCodePages{{
    {"ANSI_874", "CP874", true},     {"ANSI_932", "CP932", false},   {"ANSI_936", "CP936", false},
    {"ANSI_949", "CP949", false},    {"ANSI_950", "CP950", false},   {"ANSI_1250", "CP1250", true},
    {"ANSI_1251", "CP1251", true},   {"ANSI_1252", "CP1252", true},  {"ANSI_1253", "CP1253", true},
    {"ANSI_1254", "CP1254", true},   {"ANSI_1255", "CP1255", true},  {"ANSI_1256", "CP1256", true},
    {"ANSI_1257", "CP1257", true},   {"ANSI_1258", "CP1258", true},  {"ANSI_1361", "JOHAB", false},
    {"DOS437", "CP437", true},       {"DOS850", "CP850", true},      {"DOS852", "CP852", true},
    {"DOS855", "CP855", true},       {"DOS857", "CP857", true},      {"DOS860", "CP860", true},
    {"DOS861", "CP861", true},       {"DOS863", "CP863", true},      {"DOS864", "CP864", true},
    {"DOS865", "CP865", true},       {"DOS866", "CP866", true},      {"DOS869", "CP869", true},
    {"DOS932", "CP932", false},      {"DOS936", "CP936", false},     {"DOS949", "CP949", false},
    {"DOS950", "CP950", false},      {"GB2312", "CP936", false},     {"BIG5", "CP950", false},
    {"MACINTOSH", "MACINTOSH", true}, {"ISO8859-1", "ISO-8859-1", true}, {"UTF-8", "UTF-8", false},
    {"UTF8", "UTF-8", false},        {"ASCII", "CP1252", true},
}};

const CodePageName* findCodePage(std::string_view name) {
  std::string upper = dxfNormalizeCodePage(name);
  for (const auto& cp : kCodePages)
    if (upper == cp.dxf) return &cp;
  return nullptr;
}

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

// Value of the four hex digits at text[i..i+4), or -1.
int hex4(const std::wstring& text, std::size_t i) {
  if (i + 4 > text.size()) return -1;
  int v = 0;
  for (std::size_t k = 0; k < 4; ++k) {
    int d = hexDigit(text[i + k]);
    if (d < 0) return -1;
    v = v * 16 + d;
  }
  return v;
}

// Reads one UTF-8 character at bytes[i]; advances i. Invalid input gives U+FFFD
// and advances one byte.
char32_t nextUtf8(std::string_view bytes, std::size_t& i) {
  auto b0 = static_cast<unsigned char>(bytes[i]);
  if (b0 < 0x80) {
    ++i;
    return b0;
  }
  int len = 0;
  char32_t c = 0;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    len = 2;
    c = b0 & 0x1F;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    len = 3;
    c = b0 & 0x0F;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    len = 4;
    c = b0 & 0x07;
  } else {
    ++i;
    return 0xFFFD;
  }
  if (i + static_cast<std::size_t>(len) > bytes.size()) {
    ++i;
    return 0xFFFD;
  }
  for (int k = 1; k < len; ++k) {
    auto b = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
    if ((b & 0xC0) != 0x80) {
      ++i;
      return 0xFFFD;
    }
    c = (c << 6) | (b & 0x3F);
  }
  // Overlong forms, surrogates and values past U+10FFFF are invalid.
  if ((len == 3 && c < 0x800) || (len == 4 && (c < 0x10000 || c > 0x10FFFF)) ||
      (c >= 0xD800 && c <= 0xDFFF)) {
    ++i;
    return 0xFFFD;
  }
  i += static_cast<std::size_t>(len);
  return c;
}

}  // namespace

std::string dxfNormalizeCodePage(std::string_view codePage) {
  std::string out;
  for (char c : codePage)
    if (c != ' ' && c != '\t' && c != '\r') out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

std::optional<std::string> dxfIconvName(std::string_view codePage) {
  if (const auto* cp = findCodePage(codePage)) return std::string(cp->iconv);
  return std::nullopt;
}

bool dxfIsAscii(std::string_view bytes) {
  for (char c : bytes)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

bool dxfIsValidUtf8(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      ++i;
      continue;
    }
    std::size_t before = i;
    if (nextUtf8(bytes, i) == 0xFFFD) {
      // U+FFFD itself is valid; an invalid sequence advances exactly one byte.
      if (i - before != 3) return false;
    }
  }
  return true;
}

bool dxfIsValidGbk(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    auto b = static_cast<unsigned char>(bytes[i]);
    if (b < 0x80) {
      ++i;
      continue;
    }
    if (b == 0x80 || b == 0xFF || i + 1 >= bytes.size()) return false;
    auto t = static_cast<unsigned char>(bytes[i + 1]);
    if (t < 0x40 || t == 0x7F || t == 0xFF) return false;
    i += 2;
  }
  return true;
}

void dxfAppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

// The two conversion descriptors of a code page codec.
struct DxfTextCodec::Iconv {
  iconv_t toWide = reinterpret_cast<iconv_t>(-1);
  iconv_t fromWide = reinterpret_cast<iconv_t>(-1);
  ~Iconv() {
    if (toWide != reinterpret_cast<iconv_t>(-1)) iconv_close(toWide);
    if (fromWide != reinterpret_cast<iconv_t>(-1)) iconv_close(fromWide);
  }
};

DxfTextCodec::DxfTextCodec(std::string_view codePage) {
  const CodePageName* cp = findCodePage(codePage);
  if (!cp) {
    known_ = false;
    cp = findCodePage("ANSI_1252");
  }
  codePage_ = cp->dxf == std::string_view("UTF8") ? "UTF-8" : cp->dxf;
  utf8_ = std::string_view(cp->iconv) == "UTF-8";
  singleByte_ = cp->singleByte;
  if (!utf8_) {
    iconv_ = std::make_unique<Iconv>();
    iconv_->toWide = iconv_open("WCHAR_T", cp->iconv);
    iconv_->fromWide = iconv_open(cp->iconv, "WCHAR_T");
  }
}

DxfTextCodec::~DxfTextCodec() = default;
DxfTextCodec::DxfTextCodec(DxfTextCodec&&) noexcept = default;
DxfTextCodec& DxfTextCodec::operator=(DxfTextCodec&&) noexcept = default;

std::wstring DxfTextCodec::decode(std::string_view bytes) const {
  if (utf8_) {
    // One pass: widen into a buffer kept for the purpose, and note whether carets or
    // escapes need a second look. The text is then made at its length: a short one
    // needs no allocation, and none is cleared first.
    if (scratchSize_ < bytes.size()) {
      scratchSize_ = std::max(bytes.size(), 2 * scratchSize_);
      scratch_ = std::make_unique_for_overwrite<wchar_t[]>(scratchSize_);
    }
    wchar_t* const wide = scratch_.get();
    std::size_t n = 0;
    bool special = false;
    for (std::size_t i = 0; i < bytes.size();) {
      const auto b = static_cast<unsigned char>(bytes[i]);
      if (b < 0x80) {
        special |= (b == '^') | (b == '\\');
        wide[n++] = static_cast<wchar_t>(b);
        ++i;
      } else {
        wide[n++] = static_cast<wchar_t>(nextUtf8(bytes, i));
      }
    }
    std::wstring out(wide, n);
    if (!special) return out;
    if (out.find(L'^') != std::wstring::npos) out = dxfDecodeCarets(std::move(out));
    return out.find(L'\\') == std::wstring::npos ? out : dxfDecodeEscapes(std::move(out));
  }
  std::wstring out = decodeBytes(bytes);
  if (out.find(L'^') != std::wstring::npos) out = dxfDecodeCarets(std::move(out));
  return out.find(L'\\') == std::wstring::npos ? out : dxfDecodeEscapes(std::move(out));
}

// Line breaks and tabs inside a value are stored in caret form (^J, ^M, ^I), as the
// writer does; other carets (MText stacking, plain text) stay as they are.
std::wstring dxfDecodeCarets(std::wstring text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'^' && i + 1 < text.size() &&
        (text[i + 1] == L'J' || text[i + 1] == L'M' || text[i + 1] == L'I')) {
      out += static_cast<wchar_t>(text[i + 1] - 0x40);
      ++i;
      continue;
    }
    out += text[i];
  }
  return out;
}

std::wstring DxfTextCodec::decodeBytes(std::string_view bytes) const {
  std::wstring out;
  bool ascii = dxfIsAscii(bytes);
  if (ascii) {
    out.resize(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) out[i] = static_cast<wchar_t>(bytes[i]);
    return out;
  }
  out.reserve(bytes.size());
  if (utf8_) {
    std::size_t i = 0;
    while (i < bytes.size()) out += static_cast<wchar_t>(nextUtf8(bytes, i));
  } else {
    iconv_t cd = iconv_->toWide;
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    std::size_t i = 0;
    while (i < bytes.size()) {
      if (static_cast<unsigned char>(bytes[i]) < 0x80) {
        out += static_cast<wchar_t>(bytes[i]);
        ++i;
        continue;
      }
      // Convert one character: one byte, or two for a lead byte of a DBCS page.
      wchar_t wide[4];
      bool done = false;
      for (std::size_t len = 1; len <= 2 && i + len <= bytes.size() && !done; ++len) {
        char* in = const_cast<char*>(bytes.data() + i);
        std::size_t inLeft = len;
        char* outp = reinterpret_cast<char*>(wide);
        std::size_t outLeft = sizeof wide;
        iconv(cd, nullptr, nullptr, nullptr, nullptr);
        if (iconv(cd, &in, &inLeft, &outp, &outLeft) != static_cast<std::size_t>(-1) && inLeft == 0) {
          std::size_t produced = (sizeof wide - outLeft) / sizeof(wchar_t);
          if (produced > 0) {
            out.append(wide, produced);
            i += len;
            done = true;
          }
        }
      }
      if (!done) {
        auto b = static_cast<unsigned char>(bytes[i]);
        out += singleByte_ ? static_cast<wchar_t>(b) : L'\xFFFD';
        ++i;
      }
    }
  }
  return out;
}

std::string DxfTextCodec::encode(std::wstring_view text) const {
  std::string out;
  out.reserve(text.size());
  auto escapeUnit = [&out](unsigned unit) {
    static const char* hex = "0123456789ABCDEF";
    out += "\\U+";
    for (int shift = 12; shift >= 0; shift -= 4) out += hex[(unit >> shift) & 15];
  };
  iconv_t cd = utf8_ ? reinterpret_cast<iconv_t>(-1) : iconv_->fromWide;
  for (wchar_t wc : text) {
    auto c = static_cast<char32_t>(wc);
    if (c < 0x20 && c != '\t') {
      // A line break would end the value: use the caret form CAD programs read.
      out += '^';
      out += static_cast<char>(c + 0x40);
      continue;
    }
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    if (utf8_) {
      dxfAppendUtf8(out, c > 0x10FFFF ? 0xFFFD : c);
      continue;
    }
    char buf[8];
    char* in = reinterpret_cast<char*>(&wc);
    std::size_t inLeft = sizeof wc;
    char* outp = buf;
    std::size_t outLeft = sizeof buf;
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    if (iconv(cd, &in, &inLeft, &outp, &outLeft) != static_cast<std::size_t>(-1)) {
      out.append(buf, static_cast<std::size_t>(outp - buf));
    } else if (c >= 0x10000 && c <= 0x10FFFF) {
      char32_t v = c - 0x10000;
      escapeUnit(static_cast<unsigned>(0xD800 + (v >> 10)));
      escapeUnit(static_cast<unsigned>(0xDC00 + (v & 0x3FF)));
    } else {
      escapeUnit(static_cast<unsigned>(c));
    }
  }
  return out;
}

std::string DxfTextCodec::transcode(std::string_view bytes, const DxfTextCodec& source) const {
  if (dxfIsAscii(bytes) || source.codePage_ == codePage_) return std::string(bytes);
  // Escapes are ASCII and pass through unchanged.
  return encode(source.decodeBytes(bytes));
}

std::wstring dxfDecodeEscapes(std::wstring text) {
  std::wstring out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    wchar_t c = text[i];
    if (c == L'\\' && i + 3 < text.size() && text[i + 2] == L'+') {
      if (text[i + 1] == L'U') {
        int unit = hex4(text, i + 3);
        if (unit >= 0) {
          char32_t value = static_cast<char32_t>(unit);
          std::size_t used = 7;
          if (unit >= 0xD800 && unit <= 0xDBFF && i + 7 + 7 <= text.size() && text[i + 7] == L'\\' &&
              text[i + 8] == L'U' && text[i + 9] == L'+') {
            int low = hex4(text, i + 10);
            if (low >= 0xDC00 && low <= 0xDFFF) {
              value = 0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) +
                      (static_cast<char32_t>(low) - 0xDC00);
              used = 14;
            }
          }
          out += static_cast<wchar_t>(value);
          i += used;
          continue;
        }
      } else if (text[i + 1] == L'M' && i + 8 <= text.size() && text[i + 3] >= L'1' &&
                 text[i + 3] <= L'5') {
        int dbcs = hex4(text, i + 4);
        if (dbcs >= 0) {
          static const char* pages[] = {"ANSI_932", "ANSI_950", "ANSI_949", "ANSI_1361", "ANSI_936"};
          DxfTextCodec codec(pages[text[i + 3] - L'1']);
          char bytes[2] = {static_cast<char>(dbcs >> 8), static_cast<char>(dbcs & 0xFF)};
          std::wstring decoded = codec.decode(std::string_view(bytes, 2));
          if (decoded.size() == 1 && decoded[0] != L'\xFFFD') {
            out += decoded;
            i += 8;
            continue;
          }
        }
      }
    }
    out += c;
    ++i;
  }
  return out;
}

}  // namespace tabulon::dxf
