// Loaded font faces and their horizontal metrics. The process-wide FontLibrary loads each
// face once and owns it until clear() or exit; callers hold plain observer pointers and
// check generation() to learn that those pointers were dropped.
#pragma once

#include "host/gi/qagi_font_locator.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tabulon::gi {

// One scalable face with an advance cache. Advances are kept unscaled, in units of the
// face's cap height, so a width is (sum of advances) * text size * x scale.
class FontFace {
 public:
  FontFace(const FontFace&) = delete;
  FontFace& operator=(const FontFace&) = delete;
  ~FontFace();

  // Advance of `c` in cap heights, as the font gives it. A character the face lacks
  // takes the fallback face's advance when that face has it, else the face's own
  // missing-glyph advance.
  double advance(char32_t c);

  bool hasGlyph(char32_t c) const;
  const FontLocation& location() const { return location_; }
  // Design units of the em square and of a capital letter's height.
  int unitsPerEm() const { return unitsPerEm_; }
  double capHeightUnits() const { return capHeight_; }
  // One em expressed in cap heights.
  double emInCapHeights() const { return unitsPerEm_ / capHeight_; }

 private:
  friend class FontLibrary;
  struct Impl;
  FontFace(std::unique_ptr<Impl> impl, FontLocation location, FontFace* fallback);
  double loadAdvance(char32_t c);

  std::unique_ptr<Impl> impl_;
  FontLocation location_;
  FontFace* fallback_;  // the default face, owned by the library; null for the default itself
  int unitsPerEm_ = 1000;
  double capHeight_ = 700.0;
  // Basic plane in lazily made pages of 256 code points; the rest in a map.
  static constexpr std::size_t kPageSize = 256;
  std::vector<std::unique_ptr<std::array<double, kPageSize>>> pages_;
  std::unordered_map<char32_t, double> others_;
};

// The FreeType library and every face loaded in this process, one per font location.
class FontLibrary {
 public:
  static FontLibrary& instance();

  FontLibrary(const FontLibrary&) = delete;
  FontLibrary& operator=(const FontLibrary&) = delete;
  ~FontLibrary();

  // The face at `location`, loaded on first use; null when the file is not a scalable
  // font FreeType can open.
  FontFace* face(const FontLocation& location);
  // The default CJK face; throws std::runtime_error naming the file when it is missing.
  FontFace& defaultFace();

  // Drops every face (tests use this to compare cached against fresh measurements).
  void clear();
  // Changes whenever clear() drops faces.
  std::uint64_t generation() const { return generation_; }
  // How many times a font file was opened since the process started.
  std::uint64_t loadCount() const { return loadCount_; }

 private:
  FontLibrary();
  FontFace* load(const FontLocation& location, FontFace* fallback);

  struct Impl;
  std::unique_ptr<Impl> impl_;
  std::map<FontLocation, std::unique_ptr<FontFace>> faces_;  // null entry: failed to load
  FontFace* default_ = nullptr;
  std::uint64_t generation_ = 0;
  std::uint64_t loadCount_ = 0;
};

}  // namespace tabulon::gi
