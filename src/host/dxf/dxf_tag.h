// One DXF tag: a group code and its value text, as it stands in the file.
// A DxfTag views the text of the file it was read from; whoever holds the tag
// keeps that text alive. Values are kept as text so that an unchanged number
// is written back exactly as it was read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tabulon::dxf {

// What a group code's value holds.
enum class DxfValueType { String, Double, Int16, Int32, Int64, Bool, Handle, Binary, Comment };

DxfValueType dxfValueType(int groupCode);
// True for group codes whose value is text subject to the file's code page.
bool dxfIsTextCode(int groupCode);
// True for the X coordinate codes of a point (10..18, 110..112, 1010..1013):
// they are followed by Y (+10) and, optionally, Z (+20).
bool dxfIsPointCode(int groupCode);

struct DxfTag {
  int code = 0;
  std::string_view value;  // without the line ending, otherwise verbatim
  std::size_t line = 0;    // 1-based line of the group code
  std::size_t offset = 0;  // byte offset of the group code line in the file
};

// Numbers and handles as written in DXF. Surrounding blanks are ignored; an
// empty or malformed value gives nullopt.
std::optional<double> dxfParseDouble(std::string_view text);
std::optional<std::int64_t> dxfParseInt(std::string_view text);
std::optional<std::uint64_t> dxfParseHandle(std::string_view text);

// Blanks (space, tab, CR) removed from both ends.
inline std::string_view dxfTrim(std::string_view text) {
  std::size_t b = 0, e = text.size();
  while (b < e && (text[b] == ' ' || text[b] == '\t' || text[b] == '\r')) ++b;
  while (e > b && (text[e - 1] == ' ' || text[e - 1] == '\t' || text[e - 1] == '\r')) --e;
  return text.substr(b, e - b);
}

}  // namespace tabulon::dxf
