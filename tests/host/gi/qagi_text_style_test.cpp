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

const std::vector<std::wstring> kTexts = {L"Hello, World", L"零件名称", L"M12x1.5 螺栓 GB/T 5783",
                                          L"a\nb", L"Ø20 %%c20 %%d %%p0.1", L"𠀋 outside the basic plane"};

TEST(QaGiTextStyle, WidthScalesWithSizeAndXScale) {
  const QaGiTextStyle base = styleWith(kMicroHei, 2.5);
  for (const auto& [size, xScale] : std::vector<std::pair<double, double>>{{5.0, 1.0}, {2.5, 0.7}, {3.5, 1.3}}) {
    const QaGiTextStyle scaled = styleWith(kMicroHei, size, xScale);
    for (const std::wstring& text : kTexts) {
      const double expected = base.width(text) * (size / 2.5) * xScale;
      EXPECT_NEAR(scaled.width(text), expected, 1e-9 * expected) << size << " " << xScale;
    }
  }
  const QaGePoint2d box = styleWith(kDejaVuSans, 3.5, 0.8).extents(L"Bolt M8");
  EXPECT_DOUBLE_EQ(box.y, 3.5);
  EXPECT_DOUBLE_EQ(box.x, styleWith(kDejaVuSans, 3.5, 0.8).width(L"Bolt M8"));
  EXPECT_DOUBLE_EQ(styleWith(kDejaVuSans, 3.5).extents(L"").y, 0.0);
}

TEST(QaGiTextStyle, PrefixesMeasureNoWiderThanTheWholeAndMatchPrefixWidths) {
  for (const std::wstring& font : {kMicroHei, kDejaVuSans}) {
    const QaGiTextStyle style = styleWith(font, 2.5, 0.9);
    for (const std::wstring& text : kTexts) {
      const std::vector<double> widths = style.prefixWidths(text);
      ASSERT_EQ(widths.size(), text.size() + 1);
      const double whole = style.extents(text).x;
      for (std::size_t n = 0; n <= text.size(); ++n) {
        // Bit-identical, so callers may mix the two when they compare widths.
        EXPECT_EQ(style.extents(text, false, static_cast<int>(n)).x, widths[n]) << "prefix " << n;
        EXPECT_LE(widths[n], whole);
        EXPECT_GE(widths[n], n > 0 ? widths[n - 1] : 0.0);
      }
      EXPECT_EQ(widths.back(), whole);
      EXPECT_EQ(style.extents(text, false, 999).x, whole);
      EXPECT_EQ(style.extents(text, false, -7).x, whole);
    }
  }
}

TEST(QaGiTextStyle, BreaksAndControlCodesMeasureAsDrawn) {
  const QaGiTextStyle style = styleWith(kDejaVuSans, 2.5);
  const std::vector<std::pair<std::wstring, std::wstring>> cases = {
      {L"第一行\nsecond", L"第一行second"}, {L"第一行\r\nsecond", L"第一行second"},
      {L"第一行\\Psecond", L"第一行second"}, {L"\n", L""},
      {L"45%%d", L"45°"}, {L"%%p0.02", L"±0.02"}, {L"%%c20", L"Ø20"}, {L"100%%%", L"100%"},
      {L"%%065BC", L"ABC"}, {L"%%uText%%u", L"Text"}, {L"50%", L"50%"}, {L"%%x", L"%%x"}};
  for (const auto& [coded, drawn] : cases) {
    EXPECT_EQ(style.width(coded), style.width(drawn)) << testing::PrintToString(coded);
  }
  // Raw text is measured as stored.
  EXPECT_GT(style.width(L"45%%d", -1, true), style.width(L"45°"));
  EXPECT_GT(style.width(L"a\\Pb", -1, true), style.width(L"ab"));
  // A prefix that cuts a code measures none of it; a break adds nothing to a prefix.
  EXPECT_EQ(style.extents(L"%%d", false, 2).x, 0.0);
  EXPECT_EQ(style.extents(L"%%d", false, 3).x, style.width(L"°"));
  EXPECT_EQ(style.extents(L"ab\ncd", false, 2).x, style.extents(L"ab\ncd", false, 3).x);
}

TEST(QaGiTextStyle, ChineseIsAboutOneEmAndLatinNarrower) {
  const QaGiTextStyle style = styleWith(kMicroHei, 2.5);
  const double em = style.emWidth();
  EXPECT_GT(em, style.textSize());  // text size is the height of a capital, not the em
  for (const wchar_t* han : {L"中", L"零", L"件"}) EXPECT_NEAR(style.width(han), em, 0.05 * em);
  for (const wchar_t* latin : {L"a", L"1", L"H", L"x"}) {
    EXPECT_LT(style.width(latin), 0.75 * em);
    EXPECT_GT(style.width(latin), 0.2 * em);
  }
  // Characters a Latin font lacks take the default CJK font's advance.
  EXPECT_EQ(styleWith(kDejaVuSans, 2.5).width(L"零件"), style.width(L"零件"));
}

TEST(QaGiTextStyle, PinnedFontsGiveStableNumbers) {
  // Advance of 'H' over each font's cap height at size 10: a change here means a change
  // in how text is measured (hinting, scaling, kerning).
  EXPECT_NEAR(styleWith(kMicroHei, 10.0).width(L"H"), 9.822161423, 1e-6);
  EXPECT_NEAR(styleWith(kDejaVuSans, 10.0).width(L"H"), 10.314802, 1e-6);
}

TEST(QaGiTextStyle, SameResultOnEveryRunAndFacesLoadOnce) {
  const QaGiTextStyle held = styleWith(kDejaVuSans, 2.5);
  auto measureAll = [&held] {
    std::vector<double> widths = {held.width(L"Ölwanne 油底壳")};
    for (const std::wstring& font : {kMicroHei, kDejaVuSans, std::wstring(L"txt.shx")}) {
      const QaGiTextStyle style = styleWith(font, 3.5, 0.85);
      for (const std::wstring& text : kTexts) widths.push_back(style.width(text));
    }
    return widths;
  };
  tabulon::gi::FontLibrary& library = tabulon::gi::FontLibrary::instance();
  const std::vector<double> first = measureAll();
  const std::uint64_t loads = library.loadCount();
  EXPECT_EQ(measureAll(), first);
  EXPECT_EQ(library.loadCount(), loads) << "a face was loaded twice";
  // Fresh faces and empty caches, also under a style that measured before: same numbers.
  library.clear();
  EXPECT_EQ(measureAll(), first);
  EXPECT_EQ(library.loadCount(), loads + 2);  // the two font files, once each
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
  // A family this machine lacks is no reason to measure with an arbitrary substitute.
  QaGiTextStyle unknown;
  unknown.setFont(L"SimSun Imaginary", false, false, 0, 0);
  EXPECT_TRUE(unknown.usesDefaultFont());
}

TEST(QaGiTextStyle, FindsTrueTypeFontsByFileNameAndTypeface) {
  for (const wchar_t* name : {L"DejaVuSans.ttf", L"dejavusans.TTF", L"C:\\WINDOWS\\Fonts\\DejaVuSans.ttf", L"DejaVuSans"}) {
    const QaGiTextStyle style = styleWith(name, 2.5);
    EXPECT_FALSE(style.usesDefaultFont());
    EXPECT_EQ(style.measuringFontFile(), std::filesystem::path(kDejaVuSans));
  }
  QaGiTextStyle bold;
  bold.setFont(L"DejaVu Sans", true, false, 134, 0);
  EXPECT_EQ(bold.measuringFontFile().filename(), "DejaVuSans-Bold.ttf");
  bold.setFileName(kMicroHei);  // a file set afterwards replaces the typeface
  EXPECT_EQ(bold.measuringFontFile(), tabulon::gi::defaultFontFile());
}

}  // namespace
