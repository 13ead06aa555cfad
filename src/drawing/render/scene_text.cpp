#include "drawing/render/scene_text.h"

#include <cmath>

#include "host/db/qadb_mtext.h"
#include "host/db/qadb_text.h"
#include "host/db/qadb_text_measure.h"
#include "host/gi/qagi_text_codes.h"
#include "host/gi/qagi_text_style.h"

namespace tabulon::render {

namespace {

// Below the baseline, descenders reach about a third of the capital height; CAD's
// "bottom" justification sets the text on that line.
constexpr double kDescent = 0.3;
// Line pitch of multi-line text, in capital heights, at line spacing 1.
constexpr double kLinePitch = 5.0 / 3.0;

// Places one line given in the entity's own frame: `base` on the baseline at the
// anchor, `xdir` and `ydir` unit vectors along and across the text, then maps it
// through `xform`.
RenderText placeLine(std::wstring shown, const QaGePoint3d& base, const QaGeVector3d& xdir,
                     const QaGeVector3d& ydir, double height, double widthFactor, double fitLength,
                     RenderText::Anchor anchor, double oblique, const QaGeMatrix3d& xform, double emPerHeight) {
  const QaGePoint3d p = xform * base;
  const QaGeVector3d x = xform * xdir;
  const QaGeVector3d y = xform * ydir;
  const double sx = x.length() > 0 ? x.length() : 1.0;
  const double sy = y.length() > 0 ? y.length() : 1.0;
  RenderText t;
  t.text = std::move(shown);
  t.position = QaGePoint2d(p.x, p.y);
  t.anchor = anchor;
  t.rotation = std::atan2(x.y, x.x);
  t.height = height * sy;
  t.fontSize = t.height * emPerHeight;
  t.widthFactor = widthFactor * sx / sy;
  t.oblique = oblique;
  t.fitLength = fitLength * sx;
  return t;
}

bool showsAnything(const std::wstring& text) { return text.find_first_not_of(L" \t") != std::wstring::npos; }

}  // namespace

std::wstring ShownText(const std::wstring& text) {
  // Drawing files write control characters in caret form ("^J" for a line feed); they
  // show nothing, and "^ " is a caret itself.
  std::wstring plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'^' && i + 1 < text.size()) {
      const wchar_t next = text[i + 1];
      if (next == L' ') {
        plain += L'^';
        ++i;
        continue;
      }
      if (next >= L'@' && next <= L'_') {
        ++i;
        continue;
      }
    }
    plain += text[i];
  }
  std::wstring out;
  out.reserve(plain.size());
  tabulon::gi::visitShownCharacters(plain, false, plain.size(), [&](std::size_t, char32_t shown) {
    if (shown != tabulon::gi::kShowsNothing) out += static_cast<wchar_t>(shown);
  });
  return out;
}

double EmPerHeight(QaDbObjectId style) {
  QaGiTextStyle measurer;
  fromQaDbTextStyle(style, measurer);  // a style that does not open measures with the default font
  measurer.setTextSize(1.0);
  measurer.setXScale(1.0);
  const double em = measurer.emWidth();
  return em > 0.0 ? em : 1.0 / 0.7;
}

std::vector<RenderText> LayoutText(const QaDbText& text, const QaGeMatrix3d& xform, double emPerHeight) {
  std::vector<RenderText> out;
  std::wstring shown = ShownText(text.textString());
  if (!showsAnything(shown)) return out;
  const double h = text.height() > 0.0 ? text.height() : 2.5;
  const QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(text.normal());
  QaGeVector3d xdir = ocs * QaGeVector3d(std::cos(text.rotation()), std::sin(text.rotation()), 0.0);
  const QaDb::TextHorzMode hm = text.horizontalMode();
  const QaDb::TextVertMode vm = text.verticalMode();

  QaGePoint3d anchorPoint = text.position();
  double fitLength = 0.0;
  RenderText::Anchor anchor = RenderText::Anchor::Start;
  if (hm == QaDb::kTextAlign || hm == QaDb::kTextFit) {
    // Spread between the two points, whatever the rotation says.
    const QaGeVector3d span = text.alignmentPoint() - text.position();
    if (span.length() > 1e-9) {
      xdir = span.normal();
      fitLength = span.length();
    }
  } else if (!(hm == QaDb::kTextLeft && vm == QaDb::kTextBase)) {
    anchorPoint = text.alignmentPoint();
    if (hm == QaDb::kTextCenter || hm == QaDb::kTextMid) anchor = RenderText::Anchor::Middle;
    if (hm == QaDb::kTextRight) anchor = RenderText::Anchor::End;
  }
  const QaGeVector3d ydir = text.normal().normal().crossProduct(xdir).normal();

  double lift = 0.0;  // from the anchor point to the baseline, across the text
  if (hm == QaDb::kTextMid && vm == QaDb::kTextBase) lift = -h / 2.0;
  else if (vm == QaDb::kTextBottom) lift = kDescent * h;
  else if (vm == QaDb::kTextVertMid) lift = -h / 2.0;
  else if (vm == QaDb::kTextTop) lift = -h;
  if (hm == QaDb::kTextAlign || hm == QaDb::kTextFit) lift = 0.0;

  out.push_back(placeLine(std::move(shown), anchorPoint + ydir * lift, xdir, ydir, h, text.widthFactor(), fitLength,
                          anchor, text.oblique(), xform, emPerHeight));
  return out;
}

std::vector<RenderText> LayoutMText(const QaDbMText& mtext, const QaGeMatrix3d& xform, double emPerHeight) {
  std::vector<RenderText> out;
  const double h = mtext.textHeight();
  const auto measure = [&](const std::wstring& line) { return qadbTextWidth(line, mtext.textStyle(), h, 1.0); };
  std::vector<std::wstring> lines;
  std::wstring paragraph;
  const std::wstring plain = mtext.text() + L"\n";
  for (wchar_t c : plain) {
    if (c != L'\n') {
      paragraph += c;
      continue;
    }
    for (auto& line : WrapParagraph(paragraph, mtext.width(), measure)) lines.push_back(std::move(line));
    paragraph.clear();
  }
  const double pitch = h * kLinePitch * mtext.lineSpacingFactor();
  const double blockHeight = h + (static_cast<double>(lines.size()) - 1.0) * pitch;
  const int row = (mtext.attachment() - 1) / 3;
  const int col = (mtext.attachment() - 1) % 3;
  const double top = row == 0 ? 0.0 : (row == 1 ? blockHeight / 2.0 : blockHeight);
  const RenderText::Anchor anchor =
      col == 0 ? RenderText::Anchor::Start : (col == 1 ? RenderText::Anchor::Middle : RenderText::Anchor::End);
  const QaGeVector3d xdir = mtext.direction().normal();
  const QaGeVector3d ydir = mtext.normal().normal().crossProduct(xdir).normal();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::wstring shown = ShownText(lines[i]);
    if (!showsAnything(shown)) continue;
    const QaGePoint3d base = mtext.location() + ydir * (top - h - static_cast<double>(i) * pitch);
    out.push_back(placeLine(std::move(shown), base, xdir, ydir, h, 1.0, 0.0, anchor, 0.0, xform, emPerHeight));
  }
  return out;
}

void TextCorners(const RenderText& text, double length, QaGePoint2d corners[4]) {
  double x0 = 0.0;
  if (text.anchor == RenderText::Anchor::Middle) x0 = -length / 2.0;
  if (text.anchor == RenderText::Anchor::End) x0 = -length;
  const double c = std::cos(text.rotation);
  const double s = std::sin(text.rotation);
  auto at = [&](double x, double y) {
    return QaGePoint2d(text.position.x + x * c - y * s, text.position.y + x * s + y * c);
  };
  const double below = -kDescent * text.height;
  corners[0] = at(x0, below);
  corners[1] = at(x0 + length, below);
  corners[2] = at(x0 + length, text.height);
  corners[3] = at(x0, text.height);
}

}  // namespace tabulon::render
