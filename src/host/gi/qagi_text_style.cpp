#include "host/gi/qagi_text_style.h"

#include "host/gi/qagi_font_face.h"
#include "host/gi/qagi_text_codes.h"

#include <algorithm>

namespace {

std::uint64_t g_measureCount = 0;

}  // namespace

using tabulon::gi::FontFace;
using tabulon::gi::FontLibrary;
using tabulon::gi::FontLocation;

void QaGiTextStyle::setFileName(const std::wstring& fileName) {
  fileName_ = fileName;
  typeface_.clear();
  forgetFace();
}

void QaGiTextStyle::setBigFontFileName(const std::wstring& fileName) {
  bigFontFileName_ = fileName;
  forgetFace();
}

void QaGiTextStyle::setFont(const std::wstring& typeface, bool bold, bool italic, int charset,
                            int pitchAndFamily) {
  typeface_ = typeface;
  bold_ = bold;
  italic_ = italic;
  charset_ = charset;
  pitchAndFamily_ = pitchAndFamily;
  forgetFace();
}

void QaGiTextStyle::font(std::wstring& typeface, bool& bold, bool& italic, int& charset,
                         int& pitchAndFamily) const {
  typeface = typeface_;
  bold = bold_;
  italic = italic_;
  charset = charset_;
  pitchAndFamily = pitchAndFamily_;
}

FontFace& QaGiTextStyle::face() const {
  FontLibrary& library = FontLibrary::instance();
  if (face_ != nullptr && faceGeneration_ == library.generation()) return *face_;

  // A typeface chosen by name wins over the file; a shape font or a font this machine
  // lacks leaves the default CJK font.
  std::optional<FontLocation> location;
  if (!typeface_.empty()) location = tabulon::gi::locateTypeface(typeface_, bold_, italic_);
  if (!location) location = tabulon::gi::locateFontFile(fileName_);
  FontFace* found = location ? library.face(*location) : nullptr;
  FontFace& fallback = library.defaultFace();
  defaultFont_ = found == nullptr || found == &fallback;
  face_ = found != nullptr ? found : &fallback;
  faceGeneration_ = library.generation();
  return *face_;
}

QaGePoint2d QaGiTextStyle::extents(const std::wstring& text, bool /*bigFont*/, int length, bool raw,
                                   void* /*reserved*/) const {
  const std::size_t measured = length < 0 ? text.size() : std::min(text.size(), static_cast<std::size_t>(length));
  return QaGePoint2d(width(text, length, raw), measured == 0 ? 0.0 : textSize_);
}

double QaGiTextStyle::width(const std::wstring& text, int length, bool raw) const {
  ++g_measureCount;
  FontFace& measuring = face();
  const std::size_t limit = length < 0 ? text.size() : static_cast<std::size_t>(length);
  double advances = 0.0;
  tabulon::gi::visitShownCharacters(text, raw, limit, [&](std::size_t, char32_t shown) {
    if (shown != tabulon::gi::kShowsNothing) advances += measuring.advance(shown);
  });
  // The same product as in prefixWidths, so both give bit-identical widths.
  return advances * (textSize_ * xScale_);
}

std::vector<double> QaGiTextStyle::prefixWidths(const std::wstring& text, bool raw) const {
  ++g_measureCount;
  FontFace& measuring = face();
  const double scale = textSize_ * xScale_;
  std::vector<double> widths(text.size() + 1, 0.0);
  double advances = 0.0;
  tabulon::gi::visitShownCharacters(text, raw, text.size(), [&](std::size_t index, char32_t shown) {
    if (shown != tabulon::gi::kShowsNothing) advances += measuring.advance(shown);
    widths[index + 1] = advances * scale;
  });
  return widths;
}

std::filesystem::path QaGiTextStyle::measuringFontFile() const { return face().location().file; }

int QaGiTextStyle::measuringFaceIndex() const { return face().location().faceIndex; }

bool QaGiTextStyle::usesDefaultFont() const {
  face();
  return defaultFont_;
}

double QaGiTextStyle::emWidth() const { return face().emInCapHeights() * textSize_ * xScale_; }

std::uint64_t QaGiTextStyle::measureCount() { return g_measureCount; }

void QaGiTextStyle::resetMeasureCount() { g_measureCount = 0; }
