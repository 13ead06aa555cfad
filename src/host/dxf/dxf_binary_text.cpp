#include "host/dxf/dxf_binary_text.h"

#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_tag.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace tabulon::dxf {

namespace {

constexpr std::size_t kSentinelSize = 22;  // "AutoCAD Binary DXF\r\n\x1a\0"

// Codes that no DXF file uses: a file holding one is damaged.
bool isKnownCode(unsigned code) {
  return code <= 79 || (code >= 90 && code <= 149) || (code >= 160 && code <= 179) ||
         (code >= 210 && code <= 239) || (code >= 270 && code <= 481) || code == 999 ||
         (code >= 1000 && code <= 1071);
}

class BinaryReader {
 public:
  BinaryReader(std::string_view bytes, const std::string& fileName) : bytes_(bytes), fileName_(fileName) {}

  DxfBinaryText read() {
    // The first tag is "0 SECTION": a zero byte after the first code byte means
    // codes of two bytes, a letter one byte (R12 and older).
    pos_ = kSentinelSize;
    if (bytes_.size() < kSentinelSize + 2) fail(-1, "the file ends right after the binary DXF sentinel");
    wide_ = bytes_[kSentinelSize + 1] == '\0';
    out_.text.reserve(bytes_.size() * 2);
    while (pos_ < bytes_.size()) {
      tagStart_ = pos_;
      out_.tagOffsets.push_back(tagStart_);
      const unsigned code = readCode();
      if (!isKnownCode(code))
        fail(static_cast<int>(code), "group code " + std::to_string(code) + " is no DXF group code");
      writeCode(code);
      const bool eof = readValue(code);
      out_.text += '\n';
      if (eof) break;
    }
    return std::move(out_);
  }

 private:
  [[noreturn]] void fail(int code, const std::string& what) const {
    const std::size_t tag = std::max<std::size_t>(out_.tagOffsets.size(), 1);  // 1-based
    throw DxfError(fileName_, 0, code < 0 ? DxfError::kNoGroupCode : code,
                   "binary DXF: " + what + " (tag " + std::to_string(tag) + " at byte offset " +
                       std::to_string(tagStart_) + ")");
  }

  const unsigned char* take(std::size_t n, int code) {
    if (bytes_.size() - pos_ < n)
      fail(code, code < 0 ? std::string("the file ends inside a group code")
                          : "the file ends inside the value of group code " + std::to_string(code));
    const auto* p = reinterpret_cast<const unsigned char*>(bytes_.data() + pos_);
    pos_ += n;
    return p;
  }

  unsigned readCode() {
    if (wide_) {
      const unsigned char* p = take(2, -1);
      return p[0] | unsigned(p[1]) << 8;
    }
    const unsigned first = *take(1, -1);
    if (first != 255) return first;
    const unsigned char* p = take(2, -1);  // an extended code
    return p[0] | unsigned(p[1]) << 8;
  }

  void writeCode(unsigned code) {
    char digits[8];
    auto r = std::to_chars(digits, digits + sizeof digits, code);
    for (std::ptrdiff_t pad = 3 - (r.ptr - digits); pad > 0; --pad) out_.text += ' ';
    out_.text.append(digits, r.ptr);
    out_.text += '\n';
  }

  template <class T>
  T little(int code) {
    const unsigned char* p = take(sizeof(T), code);
    std::uint64_t v = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) v |= std::uint64_t(p[i]) << (8 * i);
    if constexpr (std::is_same_v<T, double>) {
      double d;
      std::memcpy(&d, &v, sizeof d);
      return d;
    } else {
      return static_cast<T>(v);
    }
  }

  void writeInteger(std::int64_t v) {
    char digits[24];
    auto r = std::to_chars(digits, digits + sizeof digits, v);
    out_.text.append(digits, r.ptr);
  }

  void writeDouble(double v) {
    char digits[40];
    auto r = std::to_chars(digits, digits + sizeof digits, v);
    std::string_view s(digits, static_cast<std::size_t>(r.ptr - digits));
    out_.text += s;
    // "2.0" rather than "2", as DXF writers put whole numbers.
    if (s.find_first_of(".eEna") == std::string_view::npos) out_.text += ".0";
  }

  // Returns true after "0 EOF".
  bool readValue(unsigned code) {
    const int c = static_cast<int>(code);
    switch (dxfValueType(c)) {
      case DxfValueType::Double: writeDouble(little<double>(c)); return false;
      case DxfValueType::Int16: writeInteger(little<std::int16_t>(c)); return false;
      case DxfValueType::Int32: writeInteger(little<std::int32_t>(c)); return false;
      case DxfValueType::Int64: writeInteger(little<std::int64_t>(c)); return false;
      case DxfValueType::Bool: writeInteger(*take(1, c)); return false;
      case DxfValueType::Binary: {
        const std::size_t n = *take(1, c);
        const unsigned char* p = take(n, c);
        static const char* hex = "0123456789ABCDEF";
        for (std::size_t i = 0; i < n; ++i) {
          out_.text += hex[p[i] >> 4];
          out_.text += hex[p[i] & 15];
        }
        return false;
      }
      default: break;
    }
    // Text (and handles): up to a zero byte, in the file's code page.
    const std::size_t end = bytes_.find('\0', pos_);
    if (end == std::string_view::npos)
      fail(c, "the text of group code " + std::to_string(code) + " has no terminating zero byte");
    const std::string_view value = bytes_.substr(pos_, end - pos_);
    pos_ = end + 1;
    // A line break cannot stand in a value of ASCII DXF: caret notation, as
    // DXF writes control characters.
    for (char ch : value) {
      if (ch == '\n') out_.text += "^J";
      else if (ch == '\r') out_.text += "^M";
      else out_.text += ch;
    }
    return code == 0 && value == "EOF";
  }

  std::string_view bytes_;
  const std::string& fileName_;
  std::size_t pos_ = 0;
  std::size_t tagStart_ = 0;
  bool wide_ = true;
  DxfBinaryText out_;
};

}  // namespace

std::size_t DxfBinaryText::offsetOfLine(std::size_t line) const {
  if (line == 0 || (line - 1) / 2 >= tagOffsets.size()) return std::string::npos;
  return tagOffsets[(line - 1) / 2];
}

DxfBinaryText dxfBinaryToText(std::string_view bytes, const std::string& fileName) {
  return BinaryReader(bytes, fileName).read();
}

}  // namespace tabulon::dxf
