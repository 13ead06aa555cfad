// Splits ASCII DXF text into tags. The reader views text (and the file name for
// its errors) owned by the caller, which must outlive the reader and every tag it
// hands out. LF and CR LF line
// ends are both accepted, blanks around group codes are ignored, and values
// are handed out verbatim (only the line end is removed).
#pragma once

#include "host/dxf/dxf_tag.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tabulon::dxf {

// For the first two places of a group code padded to three: their value ("  " 0,
// " 7" 7, "33" 33), or -1 when they cannot begin one ("7 ", "x1").
const std::int16_t* dxfCodePrefixTable();

class DxfTagReader {
 public:
  // Reads text[begin, end). `firstLine` is the line number at `begin`.
  // At begin 0 a UTF-8 byte order mark is skipped and binary DXF is refused.
  DxfTagReader(std::string_view text, std::string_view fileName, std::size_t begin = 0,
               std::size_t end = std::string_view::npos, std::size_t firstLine = 1);

  // The next tag, or false at the end of the range. Throws DxfError for a
  // malformed group code or a group code without a value.
  bool next(DxfTag& tag) { return nextPadded(tag) || nextGeneral(tag); }
  // Reads tags of the usual shape (a group code of one to three places, padded
  // or not, of at most 99 when shorter than three) into out[0, capacity) and
  // returns how many. Stops after a "0" tag (`endedAtZero` then true), when out
  // is full, or before a tag of another shape or the end of the range, which
  // next() then reads. Finds the line ends of 64 bytes at a time and keeps its
  // position in locals, so a long run costs little more than the scanning itself.
  std::size_t readRun(DxfTag* out, std::size_t capacity, bool& endedAtZero);
  // Returns the tag read last to the stream: the next call to next() gives it again.
  void pushBack();

  // Byte offset of the next unread tag.
  std::size_t position() const { return pos_; }
  std::size_t line() const { return line_; }
  std::string_view fileName() const { return fileName_; }
  std::string_view text() const { return text_; }

  // Throws a DxfError located at the given tag.
  [[noreturn]] void fail(const DxfTag& tag, const std::string& message) const;

 private:
  std::string_view readLine(std::size_t& lineStart);
  bool nextGeneral(DxfTag& tag);
  bool nextPlain(DxfTag& tag);
  bool nextPadded(DxfTag& tag);
  // Hands out the tag whose code line starts at the current position and whose value
  // (`length` bytes, a CR of a CR LF end included) ends the line before `next`.
  void emit(DxfTag& tag, int code, const char* value, std::size_t length, std::size_t next) {
    if (length > 0 && value[length - 1] == '\r') --length;
    tag.code = code;
    tag.value = std::string_view(value, length);
    tag.line = line_;
    tag.offset = pos_;
    line_ += 2;
    pos_ = next;
  }

  std::string_view text_;
  std::string_view fileName_;
  std::size_t pos_;
  std::size_t end_;
  std::size_t line_;
  std::size_t lastPos_ = 0;
  std::size_t lastLine_ = 0;
  bool canPushBack_ = false;
  const std::int16_t* codePrefix_;
};

// The tag as nearly every writer puts it: a group code padded to three places
// ("  0", " 10", "330"), both lines within the 32 bytes at `p`. Both line ends
// are found at once and the code decoded without a branch per character. Gives
// the code, where the value starts and ends and where the next tag
// begins, relative to `p`; false for anything else, which the general path takes.
// The caller makes sure 32 bytes can be read at `p`.
struct DxfPaddedTag {
  unsigned code;
  int valueStart;
  int valueLength;
  int next;
};
inline bool dxfDecodePadded(const char* p, const std::int16_t* codePrefix, DxfPaddedTag& out) {
#if defined(__SSE2__)
  const __m128i newline = _mm_set1_epi8('\n');
  const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16));
  std::uint32_t mask = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(lo, newline))) |
                       static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(hi, newline))) << 16;
  if ((mask & (mask - 1)) == 0) return false;  // fewer than two line ends
  const int codeEnd = std::countr_zero(mask);
  mask &= mask - 1;
  const int valueEnd = std::countr_zero(mask);
  const bool crlf = codeEnd == 4 && p[3] == '\r';
  if (codeEnd != 3 && !crlf) return false;
  // The first two places through a table (blank-blank, blank-digit or digit-digit),
  // the last must be a digit.
  const int prefix = codePrefix[static_cast<unsigned char>(p[0]) << 8 | static_cast<unsigned char>(p[1])];
  const unsigned d2 = static_cast<unsigned char>(p[2]) - '0';
  if ((prefix < 0) | (d2 >= 10)) return false;
  out.code = static_cast<unsigned>(prefix) * 10 + d2;
  out.valueStart = codeEnd + 1;
  out.valueLength = valueEnd - codeEnd - 1;  // a CR of a CR LF end included
  out.next = valueEnd + 1;
  return true;
#else
  (void)p;
  (void)codePrefix;
  (void)out;
  return false;
#endif
}

inline bool DxfTagReader::nextPadded(DxfTag& tag) {
  if (pos_ >= end_ || end_ - pos_ < 32) return false;
  const char* p = text_.data() + pos_;
  DxfPaddedTag t;
  if (!dxfDecodePadded(p, codePrefix_, t)) return false;
  lastPos_ = pos_;
  lastLine_ = line_;
  canPushBack_ = true;
  emit(tag, static_cast<int>(t.code), p + t.valueStart, static_cast<std::size_t>(t.valueLength),
       pos_ + static_cast<std::size_t>(t.next));
  return true;
}

// True when the bytes start like a binary DXF file.
bool dxfIsBinary(std::string_view bytes);

}  // namespace tabulon::dxf
