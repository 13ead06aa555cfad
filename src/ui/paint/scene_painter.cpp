#include "ui/paint/scene_painter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>

#include <cmath>
#include <numbers>

#include "host/svc/utf8.h"

namespace tabulon::ui {

using namespace tabulon::render;

namespace {

QColor toQColor(const RenderColor& c) { return QColor(c.r, c.g, c.b); }

QString toQString(const std::wstring& text) { return QString::fromStdString(tabulon::svc::toUtf8(text)); }

// Glyphs are set at this pixel size and scaled to the text's size by the painter, so
// that sizes far from whole pixels keep their proportions.
constexpr double kGlyphPixels = 100.0;

struct TextRun {
  QString text;
  bool fallback = false;
};

}  // namespace

// A font of the scene and what it lacks: some fonts map a character to a glyph without
// outline (WenQuanYi Micro Hei does so for "℃"); such characters are set in a fallback
// font instead of leaving a gap.
class TextFonts {
 public:
  explicit TextFonts(const QString& family)
      : primary_(family), fallback_(QStringLiteral("DejaVu Sans")), primaryMetrics_(primary_), fallbackMetrics_(fallback_) {
    primary_.setPixelSize(static_cast<int>(kGlyphPixels));
    fallback_.setPixelSize(static_cast<int>(kGlyphPixels));
    primaryMetrics_ = QFontMetricsF(primary_);
    fallbackMetrics_ = QFontMetricsF(fallback_);
    raw_ = QRawFont::fromFont(primary_);
  }
  const QFont& font(bool fallback) const { return fallback ? fallback_ : primary_; }
  const QFontMetricsF& metrics(bool fallback) const { return fallback ? fallbackMetrics_ : primaryMetrics_; }

  bool blank(char32_t c) {
    auto it = blank_.find(c);
    if (it != blank_.end()) return it->second;
    bool empty = false;
    if (raw_.isValid() && !QChar::isSpace(c)) {
      const QString one = QString::fromUcs4(&c, 1);
      const auto glyphs = raw_.glyphIndexesForString(one);
      empty = !glyphs.isEmpty() && glyphs.front() != 0 && raw_.pathForGlyph(glyphs.front()).isEmpty();
    }
    return blank_[c] = empty;
  }

  std::vector<TextRun> runs(const std::wstring& text) {
    std::vector<TextRun> out;
    for (wchar_t wc : text) {
      const char32_t c = static_cast<char32_t>(wc);
      const bool fallback = blank(c);
      if (out.empty() || out.back().fallback != fallback) out.push_back({QString(), fallback});
      out.back().text += QString::fromUcs4(&c, 1);
    }
    return out;
  }

 private:
  QFont primary_;
  QFont fallback_;
  QFontMetricsF primaryMetrics_;
  QFontMetricsF fallbackMetrics_;
  QRawFont raw_;
  std::map<char32_t, bool> blank_;
};

ScenePainter::ScenePainter(StrokeWidthFn strokeWidth, double pixelsPerUnit, double greekPixels)
    : strokeWidth_(std::move(strokeWidth)), pixelsPerUnit_(pixelsPerUnit), greekPixels_(greekPixels) {}

ScenePainter::~ScenePainter() = default;

TextFonts& ScenePainter::fontsFor(const std::wstring& family) {
  auto& slot = fonts_[family];
  if (!slot) slot = std::make_unique<TextFonts>(toQString(family));
  return *slot;
}

double EstimatedTextLength(const RenderText& text) {
  if (text.fitLength > 0.0) return text.fitLength;
  double ems = 0.0;
  for (wchar_t c : text.text) ems += (c >= 0x2E80) ? 1.0 : 0.6;
  return ems * text.fontSize * text.widthFactor;
}

QLineF GreekedTextLine(const RenderText& text) {
  const double length = EstimatedTextLength(text);
  double start = 0.0;
  if (text.anchor == RenderText::Anchor::Middle) start = -length / 2.0;
  if (text.anchor == RenderText::Anchor::End) start = -length;
  const double c = std::cos(text.rotation), s = std::sin(text.rotation);
  const double mid = text.height / 2.0;
  const QPointF a(text.position.x + start * c - mid * s, -(text.position.y + start * s + mid * c));
  return QLineF(a, QPointF(a.x() + length * c, a.y() - length * s));
}

void ScenePainter::paint(QPainter& painter, const RenderItem& item) {
  if (const auto* p = std::get_if<RenderPath>(&item)) {
    QPainterPath qpath;
    qpath.setFillRule(Qt::OddEvenFill);
    for (const auto& ring : p->rings) {
      for (std::size_t i = 0; i < ring.size(); ++i) {
        const QPointF q(ring[i].x, -ring[i].y);
        if (i == 0) qpath.moveTo(q);
        else qpath.lineTo(q);
      }
      if (p->closed) qpath.closeSubpath();
    }
    const QColor color = toQColor(override_ ? *override_ : p->color);
    if (p->filled) {
      painter.fillPath(qpath, color);
    } else {
      QPen pen(color, strokeWidth_(p->lineWeight, p->width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
      painter.strokePath(qpath, pen);
    }
  } else if (const auto* c = std::get_if<RenderCircle>(&item)) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(toQColor(override_ ? *override_ : c->color), strokeWidth_(c->lineWeight, 0.0)));
    painter.drawEllipse(QPointF(c->center.x, -c->center.y), c->radius, c->radius);
  } else if (const auto* t = std::get_if<RenderText>(&item)) {
    paintText(painter, *t);
  }
}

void ScenePainter::paintText(QPainter& painter, const RenderText& text) {
  const QColor color = toQColor(override_ ? *override_ : text.color);
  if (greekPixels_ > 0.0 && text.height * pixelsPerUnit_ < greekPixels_) {
    // Too small to read: a stroke where the line of text stands.
    const QLineF line = GreekedTextLine(text);
    painter.setPen(QPen(color, std::max(text.height * 0.6, 0.0), Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(line);
    return;
  }
  TextFonts& fonts = fontsFor(text.fontFamily);
  const auto runs = fonts.runs(text.text);
  double advance = 0.0;
  for (const auto& run : runs) advance += fonts.metrics(run.fallback).horizontalAdvance(run.text);
  const double unit = text.fontSize / kGlyphPixels;  // drawing units per glyph pixel
  double stretch = text.widthFactor;
  if (text.fitLength > 0.0 && advance > 0.0) stretch = text.fitLength / (advance * unit);
  double x = 0.0;
  if (text.fitLength <= 0.0) {
    if (text.anchor == RenderText::Anchor::Middle) x = -advance / 2.0;
    if (text.anchor == RenderText::Anchor::End) x = -advance;
  }
  painter.save();
  painter.translate(text.position.x, -text.position.y);
  painter.rotate(-text.rotation * 180.0 / std::numbers::pi);
  if (std::abs(text.oblique) > 1e-9) painter.shear(-std::tan(text.oblique), 0.0);
  painter.scale(unit * stretch, unit);
  painter.setPen(color);
  for (const auto& run : runs) {
    painter.setFont(fonts.font(run.fallback));
    painter.drawText(QPointF(x, 0.0), run.text);
    x += fonts.metrics(run.fallback).horizontalAdvance(run.text);
  }
  painter.restore();
}

}  // namespace tabulon::ui
