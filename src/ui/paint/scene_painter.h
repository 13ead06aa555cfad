// Paints the items of a RenderScene with Qt's painter: outlines, fills, circles and
// texts in the scene's font, with a fallback font for characters the primary one shows
// as blank. Used by the studio's view and by the command-line program's PNG pictures.
// The painter passed in maps (x, -y) of the drawing onto the device: texts and paths
// are set in that flipped frame.
#pragma once

#include <QLineF>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "drawing/render/render_scene.h"

class QPainter;

namespace tabulon::ui {

class TextFonts;

class ScenePainter {
 public:
  // Stroke width in drawing units of a line of `lineWeight` millimetres and of a
  // polyline of its own `width` (drawing units).
  using StrokeWidthFn = std::function<double(double lineWeight, double width)>;

  // `pixelsPerUnit`: device pixels per drawing unit, for the level of detail. Texts
  // smaller than `greekPixels` on the device are drawn as a line along their baseline
  // (0 sets every text in glyphs).
  ScenePainter(StrokeWidthFn strokeWidth, double pixelsPerUnit, double greekPixels = 0.0);
  ~ScenePainter();
  ScenePainter(const ScenePainter&) = delete;
  ScenePainter& operator=(const ScenePainter&) = delete;

  void setPixelsPerUnit(double pixelsPerUnit) { pixelsPerUnit_ = pixelsPerUnit; }
  // Paints everything in `color` instead of the items' colours (hover, selection); an
  // invalid colour paints them as they are.
  void setOverrideColor(const render::RenderColor* color) { override_ = color; }

  void paint(QPainter& painter, const render::RenderItem& item);
  void paintText(QPainter& painter, const render::RenderText& text);

 private:
  TextFonts& fontsFor(const std::wstring& family);

  StrokeWidthFn strokeWidth_;
  double pixelsPerUnit_;
  double greekPixels_;
  const render::RenderColor* override_ = nullptr;
  std::map<std::wstring, std::unique_ptr<TextFonts>> fonts_;
};

// A generous estimate of the length of a laid-out text line in drawing units (wide
// characters one em, others 0.6 em), for indexes and level of detail.
double EstimatedTextLength(const render::RenderText& text);

// The stroke that stands for a text too small to read: along the middle of its line,
// in the painter's frame (x, -y).
QLineF GreekedTextLine(const render::RenderText& text);

}  // namespace tabulon::ui
