// The host's text measurer: a font, a text size and an x scale, and the extents of a
// string set in them. A plain value; the font faces behind it belong to the process-wide
// font library, so copies are cheap and measure alike.
//
// Text size is the height of a capital letter, as in CAD programs. A width is the sum of
// the characters' advances times the size scale times the x scale; line breaks ("\n",
// "\r", and "\P" unless measured raw) have no width. Shape (.shx) fonts and fonts this
// machine lacks are measured with the default CJK TrueType font.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/db/qa_error_status.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point2d.h"

namespace tabulon::gi {
class FontFace;
}

class QaGiTextStyle {
 public:
  QaGiTextStyle() = default;

  void setTextSize(double size) { textSize_ = size; }
  double textSize() const { return textSize_; }
  void setXScale(double scale) { xScale_ = scale; }
  double xScale() const { return xScale_; }
  void setObliquingAngle(double radians) { obliquingAngle_ = radians; }  // does not change widths
  double obliquingAngle() const { return obliquingAngle_; }
  void setStyleName(const std::wstring& name) { styleName_ = name; }
  const std::wstring& styleName() const { return styleName_; }

  // The style's font file: a TrueType/OpenType path or file name, or an .shx name.
  // Setting it clears a typeface set by setFont.
  void setFileName(const std::wstring& fileName);
  const std::wstring& fileName() const { return fileName_; }
  // The big font file (shape font of Asian characters); those characters are measured
  // with the main font when it has them, else with the default CJK font.
  void setBigFontFileName(const std::wstring& fileName);
  const std::wstring& bigFontFileName() const { return bigFontFileName_; }
  // Chooses a TrueType typeface by family name instead of a file; charset and pitch are
  // kept for the caller and do not steer the choice.
  void setFont(const std::wstring& typeface, bool bold, bool italic, int charset, int pitchAndFamily);
  void font(std::wstring& typeface, bool& bold, bool& italic, int& charset, int& pitchAndFamily) const;

  // x: width of the first `length` characters of `text`, or of the whole text when
  // `length` is negative or beyond its end; y: the text size, or 0 when nothing is
  // measured. `raw` false reads control codes (%%d, %%p, %%c, %%%, %%nnn, \P) as CAD
  // draws them. `bigFont` is accepted for the host's signature; wide text needs no hint.
  QaGePoint2d extents(const std::wstring& text, bool bigFont = false, int length = -1, bool raw = false,
                      void* reserved = nullptr) const;
  // The x of extents alone.
  double width(const std::wstring& text, int length = -1, bool raw = false) const;
  // Widths of every prefix: element i is the width of the first i characters, so the
  // result has text.size() + 1 elements and equals extents(text, false, i, raw).x.
  std::vector<double> prefixWidths(const std::wstring& text, bool raw = false) const;

  // The font file and face that measure this style, after fallback.
  std::filesystem::path measuringFontFile() const;
  int measuringFaceIndex() const;
  // True when the style's own font could not be used and the default font measures.
  bool usesDefaultFont() const;

  // One em of the measuring font at the current size and x scale.
  double emWidth() const;

  // Number of extents and prefixWidths calls in this process (for benchmarks).
  static std::uint64_t measureCount();
  static void resetMeasureCount();

 private:
  tabulon::gi::FontFace& face() const;
  void forgetFace() { face_ = nullptr; }

  double textSize_ = 1.0;
  double xScale_ = 1.0;
  double obliquingAngle_ = 0.0;
  std::wstring styleName_;
  std::wstring fileName_;
  std::wstring bigFontFileName_;
  std::wstring typeface_;
  bool bold_ = false;
  bool italic_ = false;
  int charset_ = 0;
  int pitchAndFamily_ = 0;

  // Resolved on first measurement; owned by the font library, valid while its
  // generation is unchanged.
  mutable tabulon::gi::FontFace* face_ = nullptr;
  mutable std::uint64_t faceGeneration_ = 0;
  mutable bool defaultFont_ = false;
};

// Fills `out` from a text style table record: font file, big font file, x scale,
// obliquing angle, name, and the record's fixed text size when it has one (else `out`
// keeps its size). Fails with the host's status when the id does not open as a text
// style record; `out` is then unchanged.
Qa::ErrorStatus fromQaDbTextStyle(QaDbObjectId style, QaGiTextStyle& out);
