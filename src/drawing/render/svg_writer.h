// Writes a RenderScene as an SVG picture: a white sheet with the view box on the
// scene's extents (plus a small margin), y pointing up as in the drawing, outlines as
// paths, circles as circles, texts as SVG text in their font, size and alignment.
#pragma once

#include <iosfwd>
#include <string>

#include "drawing/render/render_scene.h"

namespace tabulon::render {

struct SvgOptions {
  // Size of the longer side of the picture, in pixels.
  double pixelSize = 1600.0;
  // Space around the drawing, as a fraction of its longer side.
  double margin = 0.02;
};

// The picture's frame: the view box in SVG coordinates (y down) and the pixel size.
struct SvgFrame {
  double minX = 0, minY = 0, width = 100, height = 100;
  double pixelWidth = 100, pixelHeight = 100;
  // Stroke width of the thinnest line, in drawing units.
  double hairline = 0.1;
};

SvgFrame ComputeSvgFrame(const RenderScene& scene, const SvgOptions& options = {});

// Stroke width in drawing units for a line of `lineWeight` millimetres (0 for the
// thinnest) and a polyline `width` in drawing units: never thinner than the hairline;
// heavier weights are drawn heavier in proportion to 0.25 mm.
double StrokeWidth(const SvgFrame& frame, double lineWeight, double width);

void WriteSvg(const RenderScene& scene, std::ostream& out, const SvgOptions& options = {});
std::string SceneToSvg(const RenderScene& scene, const SvgOptions& options = {});

}  // namespace tabulon::render
