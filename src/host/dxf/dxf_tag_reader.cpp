#include "host/dxf/dxf_tag_reader.h"

#include "host/dxf/dxf_error.h"

#include <cstdint>
#include <cstring>
#include <memory>

namespace tabulon::dxf {

namespace {

constexpr std::string_view kBinarySentinel = "AutoCAD Binary DXF";

// A short, printable excerpt of a bad line for an error message.
std::string excerpt(std::string_view line) {
  std::string out;
  for (char c : line.substr(0, 24)) {
    auto u = static_cast<unsigned char>(c);
    if (u >= 0x20 && u < 0x7f) {
      out += c;
    } else {
      static const char* hex = "0123456789ABCDEF";
      out += "\\x";
      out += hex[u >> 4];
      out += hex[u & 15];
    }
  }
  if (line.size() > 24) out += "...";
  return out;
}

}  // namespace

const std::int16_t* dxfCodePrefixTable() {
  static const auto table = [] {
    auto t = std::make_unique<std::int16_t[]>(1 << 16);
    for (int i = 0; i < (1 << 16); ++i) t[static_cast<std::size_t>(i)] = -1;
    auto at = [&](char a, char b) -> std::int16_t& {
      return t[static_cast<std::size_t>(static_cast<unsigned char>(a) << 8 | static_cast<unsigned char>(b))];
    };
    at(' ', ' ') = 0;
    for (int d = 0; d < 10; ++d) at(' ', static_cast<char>('0' + d)) = static_cast<std::int16_t>(d);
    for (int d = 0; d < 100; ++d) at(static_cast<char>('0' + d / 10), static_cast<char>('0' + d % 10)) = static_cast<std::int16_t>(d);
    return t;
  }();
  return table.get();
}

bool dxfIsBinary(std::string_view bytes) { return bytes.substr(0, kBinarySentinel.size()) == kBinarySentinel; }

DxfTagReader::DxfTagReader(std::string_view text, std::string_view fileName, std::size_t begin,
                           std::size_t end, std::size_t firstLine)
    : text_(text),
      fileName_(fileName),
      pos_(begin),
      end_(end == std::string_view::npos || end > text.size() ? text.size() : end),
      line_(firstLine),
      codePrefix_(dxfCodePrefixTable()) {
  if (begin == 0) {
    if (dxfIsBinary(text_))
      throw DxfError(std::string(fileName_), 1, DxfError::kNoGroupCode,
                     "binary DXF where DXF text was expected (binary files are read through DxfSource)");
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
  }
}

namespace {

#if defined(__SSE2__)
// Bit i is set when byte i of the 64 at p is a line feed.
inline std::uint64_t lineFeeds64(const char* p) {
  const __m128i feed = _mm_set1_epi8('\n');
  auto part = [&](int at) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + at));
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed))));
  };
  return part(0) | part(16) << 16 | part(32) << 32 | part(48) << 48;
}
#endif

}  // namespace

std::size_t DxfTagReader::readRun(DxfTag* out, std::size_t capacity, bool& endedAtZero) {
  endedAtZero = false;
  if (pos_ >= end_) return 0;
  const char* const base = text_.data();
  std::size_t pos = pos_;
  std::size_t line = line_;
  std::size_t n = 0;
  auto take = [&](int code, std::size_t codeEnd, std::size_t valueEnd) {
    const char* value = base + codeEnd + 1;
    std::size_t length = valueEnd - codeEnd - 1;
    if (length > 0 && value[length - 1] == '\r') --length;
    DxfTag& tag = out[n++];
    tag.code = code;
    tag.value = std::string_view(value, length);
    tag.line = line;
    tag.offset = pos;
    line += 2;
    pos = valueEnd + 1;
  };
#if defined(__SSE2__)
  // The line feeds of the 64 bytes from `block` not yet passed.
  std::size_t block = pos;
  std::uint64_t feeds = 0;
  bool bulk = end_ - block >= 64;
  if (bulk) feeds = lineFeeds64(base + block);
  auto nextFeed = [&](std::size_t& at) {
    while (feeds == 0) {
      block += 64;
      if (end_ - block < 64) return false;  // the rest, one tag at a time
      feeds = lineFeeds64(base + block);
    }
    at = block + static_cast<std::size_t>(std::countr_zero(feeds));
    feeds &= feeds - 1;
    return true;
  };
  while (bulk && n < capacity) {
    std::size_t codeEnd, valueEnd;
    if (!nextFeed(codeEnd)) break;
    const char* p = base + pos;
    std::size_t length = codeEnd - pos;
    if (length > 0 && p[length - 1] == '\r') --length;
    int code;
    if (length == 3) {
      const int prefix = codePrefix_[static_cast<unsigned char>(p[0]) << 8 | static_cast<unsigned char>(p[1])];
      const unsigned last = static_cast<unsigned char>(p[2]) - unsigned('0');
      if ((prefix < 0) | (last >= 10)) break;
      code = prefix * 10 + static_cast<int>(last);
    } else if (length == 2) {
      // "17" or " 7"; the table also takes "  ", which is no code.
      const int prefix = codePrefix_[static_cast<unsigned char>(p[0]) << 8 | static_cast<unsigned char>(p[1])];
      if ((prefix < 0) | (static_cast<unsigned char>(p[1]) - unsigned('0') >= 10)) break;
      code = prefix;
    } else if (length == 1) {
      const unsigned digit = static_cast<unsigned char>(p[0]) - unsigned('0');
      if (digit >= 10) break;
      code = static_cast<int>(digit);
    } else {
      break;
    }
    if (!nextFeed(valueEnd)) break;
    take(code, codeEnd, valueEnd);
    if (code == 0) {
      endedAtZero = true;
      break;
    }
  }
  // Near the end of the range: 32 bytes at a time.
  DxfPaddedTag t;
  while (!endedAtZero && n < capacity && end_ - pos >= 32 && dxfDecodePadded(base + pos, codePrefix_, t)) {
    take(static_cast<int>(t.code), pos + static_cast<std::size_t>(t.valueStart) - 1,
         pos + static_cast<std::size_t>(t.next) - 1);
    endedAtZero = t.code == 0;
  }
#endif
  if (n > 0) {
    lastPos_ = out[n - 1].offset;
    lastLine_ = out[n - 1].line;
    canPushBack_ = true;
    pos_ = pos;
    line_ = line;
  }
  return n;
}

std::string_view DxfTagReader::readLine(std::size_t& lineStart) {
  lineStart = pos_;
  const char* base = text_.data();
  const void* nl = std::memchr(base + pos_, '\n', end_ - pos_);
  std::size_t stop = nl ? static_cast<std::size_t>(static_cast<const char*>(nl) - base) : end_;
  std::string_view line(base + pos_, stop - pos_);
  pos_ = nl ? stop + 1 : end_;
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  ++line_;
  return line;
}

namespace {

// The group code of a line: optional blanks, an optional minus, up to six
// digits, optional blanks. False for anything else.
bool parseGroupCode(std::string_view line, int& code) {
  std::size_t i = 0, n = line.size();
  while (i < n && (line[i] == ' ' || line[i] == '\t')) ++i;
  bool negative = i < n && line[i] == '-';
  if (negative) ++i;
  std::size_t digits = 0;
  int value = 0;
  while (i < n && line[i] >= '0' && line[i] <= '9' && digits < 6) {
    value = value * 10 + (line[i] - '0');
    ++i;
    ++digits;
  }
  while (i < n && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
  if (digits == 0 || i != n) return false;
  code = negative ? -value : value;
  return true;
}

}  // namespace

bool DxfTagReader::nextGeneral(DxfTag& tag) {
  if (pos_ >= end_) return false;
  lastPos_ = pos_;
  lastLine_ = line_;
  canPushBack_ = true;
  if (nextPlain(tag)) return true;
  std::size_t codeStart = 0;
  std::size_t codeLine = line_;
  std::string_view codeText = readLine(codeStart);
  int code = 0;
  if (!parseGroupCode(codeText, code)) {
    // Blank lines where a group code belongs are skipped only at the very end
    // of the text (a trailing newline or two after EOF).
    if (dxfTrim(codeText).empty()) {
      std::size_t probe = pos_;
      while (probe < end_ && (text_[probe] == '\n' || text_[probe] == '\r' || text_[probe] == ' ' ||
                              text_[probe] == '\t' || text_[probe] == '\0' || text_[probe] == 0x1a))
        ++probe;
      if (probe >= end_) {
        pos_ = end_;
        return false;
      }
    }
    bool binary = codeText.find('\0') != std::string_view::npos;
    throw DxfError(std::string(fileName_), codeLine, DxfError::kNoGroupCode,
                   binary ? "binary data where a group code was expected"
                          : "expected a group code, found \"" + excerpt(codeText) + "\"");
  }
  if (code < -5 || code > 1071)
    throw DxfError(std::string(fileName_), codeLine, code, "group code out of range");
  if (pos_ >= end_)
    throw DxfError(std::string(fileName_), codeLine, code, "file ends after the group code, its value is missing");
  std::size_t valueStart = 0;
  tag.value = readLine(valueStart);
  tag.code = code;
  tag.line = codeLine;
  tag.offset = codeStart;
  return true;
}

// The common shape of a tag, read in one pass without building line views:
// a group code of digits (right-aligned by blanks), its line end, then the value
// line. Anything else (negative codes, trailing blanks, a missing value line, the
// end of the range) is left to the general path, which also reports errors.
bool DxfTagReader::nextPlain(DxfTag& tag) {
  const char* base = text_.data();
  const char* p = base + pos_;
  const char* const end = base + end_;
  while (p < end && *p == ' ') ++p;
  int code = 0;
  const char* digits = p;
  while (p < end && static_cast<unsigned char>(*p - '0') < 10 && p - digits < 6) code = code * 10 + (*p++ - '0');
  if (p == digits || code > 1071 || p >= end) return false;
  if (*p == '\r') ++p;
  if (p >= end || *p != '\n') return false;
  const char* value = ++p;
  if (value >= end) return false;
  // Values are short as a rule: look at a few bytes before asking memchr.
  const char* stop = value;
  const char* probeEnd = end - value > 16 ? value + 16 : end;
  while (stop < probeEnd && *stop != '\n') ++stop;
  if (stop == probeEnd && stop < end && *stop != '\n') {
    const void* nl = std::memchr(stop, '\n', static_cast<std::size_t>(end - stop));
    stop = nl ? static_cast<const char*>(nl) : end;
  }
  emit(tag, code, value, static_cast<std::size_t>(stop - value),
       stop < end ? static_cast<std::size_t>(stop - base) + 1 : end_);
  return true;
}

void DxfTagReader::pushBack() {
  if (!canPushBack_) return;
  pos_ = lastPos_;
  line_ = lastLine_;
  canPushBack_ = false;
}

void DxfTagReader::fail(const DxfTag& tag, const std::string& message) const {
  throw DxfError(std::string(fileName_), tag.line, tag.code, message);
}

}  // namespace tabulon::dxf
