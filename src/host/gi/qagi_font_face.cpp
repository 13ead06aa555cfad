#include "host/gi/qagi_font_face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H

#include <cmath>
#include <limits>
#include <stdexcept>

namespace tabulon::gi {

struct FontFace::Impl {
  FT_Face face = nullptr;
  ~Impl() {
    if (face != nullptr) FT_Done_Face(face);
  }
};

struct FontLibrary::Impl {
  FT_Library library = nullptr;
  Impl() {
    if (FT_Init_FreeType(&library) != 0) {
      library = nullptr;
      throw std::runtime_error("text metrics: FreeType could not be initialised");
    }
  }
  ~Impl() {
    if (library != nullptr) FT_Done_FreeType(library);
  }
};

namespace {

// Height of a capital letter in design units: the OS/2 table's value when the font
// declares one, else the top of 'H', else the usual 70% of the em.
double capHeightOf(FT_Face face) {
  const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
  if (os2 != nullptr && os2->version != 0xFFFF && os2->version >= 2 && os2->sCapHeight > 0) {
    return os2->sCapHeight;
  }
  const FT_UInt h = FT_Get_Char_Index(face, 'H');
  if (h != 0 && FT_Load_Glyph(face, h, FT_LOAD_NO_SCALE) == 0 && face->glyph->metrics.horiBearingY > 0) {
    return static_cast<double>(face->glyph->metrics.horiBearingY);
  }
  return 0.7 * face->units_per_EM;
}

constexpr double kNotCached = std::numeric_limits<double>::quiet_NaN();

}  // namespace

FontFace::FontFace(std::unique_ptr<Impl> impl, FontLocation location, FontFace* fallback)
    : impl_(std::move(impl)), location_(std::move(location)), fallback_(fallback) {
  unitsPerEm_ = impl_->face->units_per_EM;
  capHeight_ = capHeightOf(impl_->face);
  pages_.resize(0x10000 / kPageSize);
}

FontFace::~FontFace() = default;

bool FontFace::hasGlyph(char32_t c) const { return FT_Get_Char_Index(impl_->face, c) != 0; }

double FontFace::advance(char32_t c) {
  if (c < 0x10000) {
    auto& page = pages_[c / kPageSize];
    if (!page) {
      page = std::make_unique<std::array<double, kPageSize>>();
      page->fill(kNotCached);
    }
    double& slot = (*page)[c % kPageSize];
    if (std::isnan(slot)) slot = loadAdvance(c);
    return slot;
  }
  auto it = others_.find(c);
  if (it != others_.end()) return it->second;
  const double value = loadAdvance(c);
  others_.emplace(c, value);
  return value;
}

double FontFace::loadAdvance(char32_t c) {
  FT_UInt glyph = FT_Get_Char_Index(impl_->face, c);
  if (glyph == 0 && fallback_ != nullptr && fallback_->hasGlyph(c)) return fallback_->advance(c);
  FT_Fixed units = 0;
  if (FT_Get_Advance(impl_->face, glyph, FT_LOAD_NO_SCALE, &units) != 0) return 0.0;
  return static_cast<double>(units) / capHeight_;
}

FontLibrary& FontLibrary::instance() {
  static FontLibrary library;
  return library;
}

FontLibrary::FontLibrary() : impl_(std::make_unique<Impl>()) {}

FontLibrary::~FontLibrary() { faces_.clear(); }

FontFace* FontLibrary::load(const FontLocation& location, FontFace* fallback) {
  ++loadCount_;
  FT_Face face = nullptr;
  if (FT_New_Face(impl_->library, location.file.c_str(), location.faceIndex, &face) != 0) return nullptr;
  auto impl = std::make_unique<FontFace::Impl>();
  impl->face = face;
  if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) return nullptr;  // impl closes the face
  std::unique_ptr<FontFace> loaded(new FontFace(std::move(impl), location, fallback));
  FontFace* result = loaded.get();
  faces_[location] = std::move(loaded);
  return result;
}

FontFace& FontLibrary::defaultFace() {
  if (default_ != nullptr) return *default_;
  const std::optional<FontLocation> location = defaultFontLocation();
  if (location) {
    auto it = faces_.find(*location);
    default_ = it != faces_.end() ? it->second.get() : load(*location, nullptr);
  }
  if (default_ == nullptr) {
    throw std::runtime_error("text metrics: the default font " + defaultFontFile().string() +
                             " is missing or unreadable (Debian package fonts-wqy-microhei)");
  }
  return *default_;
}

FontFace* FontLibrary::face(const FontLocation& location) {
  auto it = faces_.find(location);
  if (it != faces_.end()) return it->second.get();
  FontFace& fallback = defaultFace();
  if (fallback.location() == location) return &fallback;
  FontFace* loaded = load(location, &fallback);
  if (loaded == nullptr) faces_[location] = nullptr;  // remember the failure, do not retry
  return loaded;
}

void FontLibrary::clear() {
  default_ = nullptr;
  faces_.clear();
  ++generation_;
}

}  // namespace tabulon::gi
