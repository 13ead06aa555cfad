#include "png_painter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <numbers>

#include "host/svc/utf8.h"

namespace tabulon::cli {

namespace {

using namespace tabulon::render;

// Qt needs an application object for fonts. One is made on first use, on the offscreen
// platform unless the environment chose another, and lives until the program ends.
void ensureGuiApplication() {
  if (QCoreApplication::instance() != nullptr) return;
  if (std::getenv("QT_QPA_PLATFORM") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  // Qt's notes about its own start-up (a missing runtime folder and the like) are of no
  // use to a user who asked for a picture; real failures show as a failed save.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
  });
  static int argc = 1;
  static char name[] = "tabulon";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QGuiApplication> app = std::make_unique<QGuiApplication>(argc, argv);
}

QColor toQColor(const RenderColor& c) { return QColor(c.r, c.g, c.b); }

QString toQString(const std::wstring& text) { return QString::fromStdString(tabulon::svc::toUtf8(text)); }

// Glyphs are set at this pixel size and scaled to the text's size by the painter, so
// that sizes far from whole pixels keep their proportions.
constexpr double kGlyphPixels = 100.0;

// A font of the scene and what it lacks: some fonts map a character to a glyph without
// outline (WenQuanYi Micro Hei does so for "℃"); such characters are set in a fallback
// font instead of leaving a gap.
class TextFonts {
 public:
  explicit TextFonts(const QString& family) : primary_(family), fallback_(QStringLiteral("DejaVu Sans")) {
    primary_.setPixelSize(static_cast<int>(kGlyphPixels));
    fallback_.setPixelSize(static_cast<int>(kGlyphPixels));
    raw_ = QRawFont::fromFont(primary_);
  }
  const QFont& primary() const { return primary_; }
  const QFont& fallback() const { return fallback_; }

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

 private:
  QFont primary_;
  QFont fallback_;
  QRawFont raw_;
  std::map<char32_t, bool> blank_;
};

struct TextRun {
  QString text;
  bool fallback = false;
};

std::vector<TextRun> splitRuns(const std::wstring& text, TextFonts& fonts) {
  std::vector<TextRun> runs;
  for (wchar_t wc : text) {
    const char32_t c = static_cast<char32_t>(wc);
    const bool fallback = fonts.blank(c);
    if (runs.empty() || runs.back().fallback != fallback) runs.push_back({QString(), fallback});
    runs.back().text += QString::fromUcs4(&c, 1);
  }
  return runs;
}

void paintText(QPainter& painter, const RenderText& text, std::map<std::wstring, TextFonts>& fontCache) {
  auto it = fontCache.find(text.fontFamily);
  if (it == fontCache.end()) it = fontCache.emplace(text.fontFamily, TextFonts(toQString(text.fontFamily))).first;
  TextFonts& fonts = it->second;
  const auto runs = splitRuns(text.text, fonts);
  const QFontMetricsF primaryMetrics(fonts.primary());
  const QFontMetricsF fallbackMetrics(fonts.fallback());
  double advance = 0.0;
  for (const auto& run : runs)
    advance += (run.fallback ? fallbackMetrics : primaryMetrics).horizontalAdvance(run.text);
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
  painter.setPen(toQColor(text.color));
  for (const auto& run : runs) {
    painter.setFont(run.fallback ? fonts.fallback() : fonts.primary());
    painter.drawText(QPointF(x, 0.0), run.text);
    x += (run.fallback ? fallbackMetrics : primaryMetrics).horizontalAdvance(run.text);
  }
  painter.restore();
}

}  // namespace

bool PaintPng(const RenderScene& scene, const SvgOptions& options, const std::filesystem::path& path,
              std::string& error) {
  ensureGuiApplication();
  const SvgFrame frame = ComputeSvgFrame(scene, options);
  QImage image(static_cast<int>(frame.pixelWidth), static_cast<int>(frame.pixelHeight), QImage::Format_RGB32);
  if (image.isNull()) {
    error = "cannot make an image of " + std::to_string(static_cast<int>(frame.pixelWidth)) + " x " +
            std::to_string(static_cast<int>(frame.pixelHeight)) + " pixels";
    return false;
  }
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    // SVG coordinates (y down, in drawing units) onto pixels.
    painter.scale(frame.pixelWidth / frame.width, frame.pixelHeight / frame.height);
    painter.translate(-frame.minX, -frame.minY);
    std::map<std::wstring, TextFonts> fonts;
    for (const auto& item : scene.items) {
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
        if (p->filled) {
          painter.fillPath(qpath, toQColor(p->color));
        } else {
          QPen pen(toQColor(p->color), StrokeWidth(frame, p->lineWeight, p->width), Qt::SolidLine, Qt::RoundCap,
                   Qt::RoundJoin);
          painter.strokePath(qpath, pen);
        }
      } else if (const auto* c = std::get_if<RenderCircle>(&item)) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(toQColor(c->color), StrokeWidth(frame, c->lineWeight, 0.0)));
        painter.drawEllipse(QPointF(c->center.x, -c->center.y), c->radius, c->radius);
      } else if (const auto* t = std::get_if<RenderText>(&item)) {
        paintText(painter, *t, fonts);
      }
    }
  }
  if (!image.save(QString::fromStdString(path.string()), "PNG")) {
    error = "cannot write " + path.string();
    return false;
  }
  return true;
}

}  // namespace tabulon::cli
