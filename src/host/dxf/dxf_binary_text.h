// Binary DXF read as the ASCII DXF it stands for. Every tag of the binary file
// becomes the two lines its ASCII form has (group code right-aligned, numbers
// in decimal, doubles in their shortest exact form, binary chunks in hex), so
// the rest of the reader, and the writer that copies original tags, work on
// text alone; the fast path for ASCII files is not touched. Which tag began
// where in the binary file is kept, so that messages can name byte offsets
// rather than lines of text nobody has seen.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tabulon::dxf {

struct DxfBinaryText {
  std::string text;                     // the ASCII form, LF line ends
  std::vector<std::size_t> tagOffsets;  // byte offset in the binary file of tag i (lines 2i+1, 2i+2)

  // The byte offset of the tag that stands at a line of `text`; npos when
  // the line is not within it.
  std::size_t offsetOfLine(std::size_t line) const;
};

// Reads a binary DXF file (starting with the sentinel, see dxfIsBinary()):
// group codes of two bytes, or of one byte with 255 escaping a two-byte code in
// files of R12 and older; values typed by group code. Stops after "0 EOF".
// Throws DxfError naming `fileName`, the group code and the byte offset for a
// group code no DXF file has, or a value that runs past the end of the file.
DxfBinaryText dxfBinaryToText(std::string_view bytes, const std::string& fileName);

}  // namespace tabulon::dxf
