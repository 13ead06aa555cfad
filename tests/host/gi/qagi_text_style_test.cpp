#include "host/gi/qagi_text_style.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/gi/qagi_font_face.h"
#include "host/gi/qagi_font_locator.h"

namespace {

// Pinned font files, so that widths do not depend on the machine's font configuration.
const std::wstring kMicroHei = L"/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";
const std::wstring kDejaVuSans = L"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

QaGiTextStyle styleWith(const std::wstring& fontFile, double size, double xScale = 1.0) {
  QaGiTextStyle style;
  style.setFileName(fontFile);
  style.setTextSize(size);
  style.setXScale(xScale);
  return style;
}

const std::vector<std::wstring>& sampleTexts() {
  static const std::vector<std::wstring> texts = {
      L"H", L"Hello, World", L"零件名称", L"M12x1.5 螺栓 GB/T 5783", L"热处理：HRC 28~32，表面发黑",
      L"a\nb", L"Ø20 %%c20 %%d %%p0.1", L"𠀋 outside the basic plane",
  };
  return texts;
}

TEST(QaGiTextStyle, WidthScalesWithSizeAndXScale) {
  const QaGiTextStyle base = styleWith(kMicroHei, 2.5);
  struct Case {
    double size;
    double xScale;
  };
  for (const Case c : {Case{5.0, 1.0}, Case{2.5, 0.7}, Case{3.5, 1.3}, Case{10.0, 0.5}}) {
    const QaGiTextStyle scaled = styleWith(kMicroHei, c.size, c.xScale);
    for (const std::wstring& text : sampleTexts()) {
      const double expected = base.width(text) * (c.size / 2.5) * c.xScale;
      EXPECT_NEAR(scaled.width(text), expected, 1e-9 * expected) << c.size << " " << c.xScale;
    }
  }
  // Larger and wider measure wider, never the same.
  EXPECT_GT(styleWith(kMicroHei, 3.0).width(L"ABC"), styleWith(kMicroHei, 2.5).width(L"ABC"));
  EXPECT_GT(styleWith(kMicroHei, 2.5, 1.2).width(L"ABC"), styleWith(kMicroHei, 2.5, 1.0).width(L"ABC"));
}

TEST(QaGiTextStyle, ExtentsGiveWidthAndTextHeight) {
  const QaGiTextStyle style = styleWith(kDejaVuSans, 3.5, 0.8);
  const QaGePoint2d whole = style.extents(L"Bolt M8");
  EXPECT_DOUBLE_EQ(whole.x, style.width(L"Bolt M8"));
  EXPECT_DOUBLE_EQ(whole.y, 3.5);
  EXPECT_DOUBLE_EQ(style.extents(L"").x, 0.0);
  EXPECT_DOUBLE_EQ(style.extents(L"").y, 0.0);
  EXPECT_DOUBLE_EQ(style.extents(L"Bolt", false, 0).y, 0.0);
  // A length past the end, or negative, measures the whole text.
  EXPECT_DOUBLE_EQ(style.extents(L"Bolt M8", false, 99).x, whole.x);
  EXPECT_DOUBLE_EQ(style.extents(L"Bolt M8", false, -5).x, whole.x);
  EXPECT_DOUBLE_EQ(style.extents(L"Bolt M8", false, 4).x, style.width(L"Bolt"));
}

TEST(QaGiTextStyle, PrefixesMeasureNoWiderThanTheWholeAndMatchPrefixWidths) {
  for (const std::wstring& font : {kMicroHei, kDejaVuSans}) {
    const QaGiTextStyle style = styleWith(font, 2.5, 0.9);
    for (const std::wstring& text : sampleTexts()) {
      const std::vector<double> widths = style.prefixWidths(text);
      ASSERT_EQ(widths.size(), text.size() + 1);
      EXPECT_EQ(widths.front(), 0.0);
      const double whole = style.extents(text).x;
      for (std::size_t n = 0; n <= text.size(); ++n) {
        const double prefix = style.extents(text, false, static_cast<int>(n)).x;
        // Bit-identical, so callers may mix the two when they compare widths.
        EXPECT_EQ(prefix, widths[n]) << "prefix " << n;
        EXPECT_LE(prefix, whole);
        if (n > 0) {
          EXPECT_GE(widths[n], widths[n - 1]);
        }
      }
      EXPECT_EQ(widths.back(), whole);
    }
  }
}

TEST(QaGiTextStyle, LineBreaksMeasureZeroWidth) {
  const QaGiTextStyle style = styleWith(kMicroHei, 2.5);
  const double plain = style.width(L"第一行second");
  for (const wchar_t* joined : {L"第一行\nsecond", L"第一行\r\nsecond", L"第一行\\Psecond", L"\n第一行second\n"}) {
    EXPECT_EQ(style.width(joined), plain);
  }
  EXPECT_EQ(style.width(L"\n"), 0.0);
  // Measured raw, "\P" is a backslash and a letter.
  EXPECT_GT(style.width(L"第一行\\Psecond", -1, true), plain);
  // The width of a prefix does not change over the break character.
  const std::wstring text = L"ab\ncd";
  EXPECT_EQ(style.extents(text, false, 2).x, style.extents(text, false, 3).x);
}

TEST(QaGiTextStyle, ControlCodesMeasureAsTheCharactersTheyDraw) {
  const QaGiTextStyle style = styleWith(kDejaVuSans, 2.5);
  struct Case {
    const wchar_t* coded;
    const wchar_t* drawn;
  };
  for (const Case c : {Case{L"45%%d", L"45°"}, Case{L"%%p0.02", L"±0.02"}, Case{L"%%c20", L"Ø20"},
                       Case{L"100%%%", L"100%"}, Case{L"%%065BC", L"ABC"}, Case{L"%%uText%%u", L"Text"},
                       Case{L"50%", L"50%"}, Case{L"%%", L"%%"}}) {
    EXPECT_EQ(style.width(c.coded), style.width(c.drawn)) << testing::PrintToString(std::wstring(c.coded));
  }
  // Raw text is measured as stored.
  EXPECT_GT(style.width(L"45%%d", -1, true), style.width(L"45°"));
  // A prefix that cuts a code measures none of it.
  EXPECT_EQ(style.extents(L"%%d", false, 2).x, 0.0);
  EXPECT_EQ(style.extents(L"%%d", false, 3).x, style.width(L"°"));
}

TEST(QaGiTextStyle, ChineseIsAboutOneEmAndLatinNarrower) {
  const QaGiTextStyle style = styleWith(kMicroHei, 2.5);
  const double em = style.emWidth();
  for (const wchar_t* han : {L"中", L"零", L"件", L"图"}) {
    EXPECT_NEAR(style.width(han), em, 0.05 * em);
  }
  for (const wchar_t* latin : {L"a", L"1", L"H", L"x"}) {
    EXPECT_LT(style.width(latin), 0.75 * em);
    EXPECT_GT(style.width(latin), 0.2 * em);
  }
  // The em is larger than the text size: text size is the height of a capital letter.
  EXPECT_GT(em, style.textSize());
}

TEST(QaGiTextStyle, PinnedFontsGiveStableNumbers) {
  // Advance of 'H' over the cap height of each font, at text size 10: a change here
  // means a change of how text is measured (hinting, scaling, kerning).
  struct Case {
    const std::wstring& font;
    const wchar_t* text;
    double width;
  };
  for (const Case& c : {Case{kMicroHei, L"H", 9.822161423}, Case{kDejaVuSans, L"H", 10.314802},
                        Case{kMicroHei, L"HHHH", 39.288645691}}) {
    EXPECT_NEAR(styleWith(c.font, 10.0).width(c.text), c.width, 1e-6);
  }
}

TEST(QaGiTextStyle, SameResultOnEveryRunAndFacesLoadOnce) {
  auto measureAll = [] {
    std::vector<double> widths;
    for (const std::wstring& font : {kMicroHei, kDejaVuSans, std::wstring(L"txt.shx")}) {
      const QaGiTextStyle style = styleWith(font, 3.5, 0.85);
      for (const std::wstring& text : sampleTexts()) widths.push_back(style.width(text));
    }
    return widths;
  };
  tabulon::gi::FontLibrary& library = tabulon::gi::FontLibrary::instance();
  const std::vector<double> first = measureAll();
  const std::uint64_t loadsAfterFirst = library.loadCount();
  EXPECT_EQ(measureAll(), first);
  EXPECT_EQ(library.loadCount(), loadsAfterFirst) << "a face was loaded twice";

  // Fresh faces, empty caches: the very same numbers.
  library.clear();
  EXPECT_EQ(measureAll(), first);
  EXPECT_EQ(library.loadCount(), loadsAfterFirst + 2);  // the two font files, once each
}

TEST(QaGiTextStyle, StylesHeldAcrossALibraryClearMeasureAgain) {
  const QaGiTextStyle style = styleWith(kDejaVuSans, 2.5);
  const double before = style.width(L"Ölwanne 油底壳");
  tabulon::gi::FontLibrary::instance().clear();
  EXPECT_EQ(style.width(L"Ölwanne 油底壳"), before);
}

TEST(QaGiTextStyle, ShapeAndMissingFontsFallBackToTheDefaultFont) {
  const QaGiTextStyle pinned = styleWith(kMicroHei, 2.5);
  for (const wchar_t* font : {L"txt.shx", L"GBCBIG.SHX", L"no-such-font.ttf", L"", L"C:\\Fonts\\missing.ttc"}) {
    QaGiTextStyle style = styleWith(font, 2.5);
    style.setBigFontFileName(L"gbcbig.shx");
    EXPECT_TRUE(style.usesDefaultFont());
    EXPECT_EQ(style.measuringFontFile(), tabulon::gi::defaultFontFile());
    EXPECT_EQ(style.width(L"技术要求 Rz3.2"), pinned.width(L"技术要求 Rz3.2"));
  }
}

TEST(QaGiTextStyle, FindsTrueTypeFontsByFileNameAndTypeface) {
  const std::filesystem::path dejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
  for (const wchar_t* name : {L"DejaVuSans.ttf", L"dejavusans.TTF", L"C:\\WINDOWS\\Fonts\\DejaVuSans.ttf",
                                   L"DejaVuSans"}) {
    const QaGiTextStyle style = styleWith(name, 2.5);
    EXPECT_FALSE(style.usesDefaultFont());
    EXPECT_EQ(style.measuringFontFile(), dejaVu);
  }
  QaGiTextStyle bold;
  bold.setFont(L"DejaVu Sans", true, false, 134, 0);
  EXPECT_EQ(bold.measuringFontFile().filename(), "DejaVuSans-Bold.ttf");
  std::wstring typeface;
  bool isBold = false, italic = true;
  int charset = 0, pitch = 1;
  bold.font(typeface, isBold, italic, charset, pitch);
  EXPECT_EQ(typeface, L"DejaVu Sans");
  EXPECT_TRUE(isBold);
  EXPECT_FALSE(italic);
  EXPECT_EQ(charset, 134);
  // A file name set afterwards replaces the typeface.
  bold.setFileName(kMicroHei);
  EXPECT_EQ(bold.measuringFontFile(), tabulon::gi::defaultFontFile());
  // A family this machine lacks is no reason to measure with an arbitrary substitute.
  QaGiTextStyle unknown;
  unknown.setFont(L"SimSun Imaginary", false, false, 0, 0);
  EXPECT_TRUE(unknown.usesDefaultFont());
}

TEST(QaGiTextStyle, CharactersMissingFromTheFontTakeTheDefaultFontsAdvance) {
  const QaGiTextStyle latin = styleWith(kDejaVuSans, 2.5);
  const QaGiTextStyle cjk = styleWith(kMicroHei, 2.5);
  EXPECT_EQ(latin.width(L"零件"), cjk.width(L"零件"));
  EXPECT_NE(latin.width(L"Part"), cjk.width(L"Part"));
}

TEST(QaGiTextStyle, CountsMeasureCalls) {
  const QaGiTextStyle style = styleWith(kMicroHei, 2.5);
  QaGiTextStyle::resetMeasureCount();
  style.extents(L"abc");
  style.extents(L"abc", false, 1);
  style.prefixWidths(L"abc");
  style.width(L"abc");
  EXPECT_EQ(QaGiTextStyle::measureCount(), 4u);
}

}  // namespace
