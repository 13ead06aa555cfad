// Finds the font file that measures a text style: a TrueType file named by the style,
// a typeface by family name through fontconfig, or the default CJK font when the style
// names an SHX font or a font this machine does not have. Stateless apart from a
// process-wide list of installed fonts read once from fontconfig.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tabulon::gi {

// One face inside a font file (a .ttc collection holds several).
struct FontLocation {
  std::filesystem::path file;
  int faceIndex = 0;

  bool operator==(const FontLocation&) const = default;
  auto operator<=>(const FontLocation&) const = default;
};

// The file of the default CJK TrueType font (WenQuanYi Micro Hei, face 0).
const std::filesystem::path& defaultFontFile();

// The default font's location, or nothing when it is not installed.
std::optional<FontLocation> defaultFontLocation();

// True for a name that designates a CAD shape font (".shx", any case).
bool isShapeFontName(const std::wstring& name);

// The TrueType or OpenType face a style's font file name stands for: an existing path
// as given; otherwise an installed font whose file name equals `name` (case-insensitive,
// with ".ttf", ".ttc" or ".otf" tried when `name` has no extension); otherwise an
// installed family of that name. Empty, shape-font and unknown names give nothing.
std::optional<FontLocation> locateFontFile(const std::wstring& name);

// The installed face of a typeface (family name), closest to the asked weight and
// slant; nothing when no installed family bears that name.
std::optional<FontLocation> locateTypeface(const std::wstring& typeface, bool bold, bool italic);

}  // namespace tabulon::gi
