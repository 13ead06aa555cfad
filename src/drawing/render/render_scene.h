// A drawing flattened for painting: every visible entity of model space, block
// references expanded, as outlines, filled areas, circles and texts in world
// coordinates with resolved colours. Curves are already broken into short segments
// where a painter could not draw them exactly. A plain value, independent of the
// database it was built from; the SVG writer and the raster painter both draw it.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "drawing/render/render_color.h"
#include "host/db/qadb_extents.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point2d.h"

namespace tabulon::render {

// Lines, polylines, arcs, ellipses, spline and hatch outlines, solids. A filled path
// is painted with the even-odd rule over all its rings.
struct RenderPath {
  std::vector<std::vector<QaGePoint2d>> rings;
  bool closed = false;
  bool filled = false;
  RenderColor color;
  double lineWeight = 0.0;  // millimetres; 0 for the thinnest line
  double width = 0.0;       // > 0: a polyline's own width, in drawing units
};

// A full circle that stays a circle in world coordinates.
struct RenderCircle {
  QaGePoint2d center;
  double radius = 0.0;
  RenderColor color;
  double lineWeight = 0.0;
};

// One line of text, set on its baseline.
struct RenderText {
  enum class Anchor { Start, Middle, End };
  std::wstring text;          // what is shown, control codes already read
  QaGePoint2d position;       // on the baseline, at the anchor
  Anchor anchor = Anchor::Start;
  double rotation = 0.0;      // radians, counter-clockwise
  double height = 0.0;        // height of a capital letter
  double fontSize = 0.0;      // the em of the font at that height
  double widthFactor = 1.0;   // horizontal stretch of the glyphs
  double oblique = 0.0;       // radians, slant to the right
  double fitLength = 0.0;     // > 0: the glyphs are spread to exactly this length
  std::wstring fontFamily;
  RenderColor color;
};

using RenderItem = std::variant<RenderPath, RenderCircle, RenderText>;

struct RenderScene {
  std::vector<RenderItem> items;  // in drawing order
  // owners[i]: the model-space entity that item i was drawn for (a block reference for
  // everything inside it), so that a view can pick what it shows.
  std::vector<QaDbObjectId> owners;
  QaDbExtents extents;            // box of everything drawn (empty for an empty scene)

  // Counts by kind, for summaries and tests.
  int pathCount() const;
  int circleCount() const;
  int textCount() const;
};

}  // namespace tabulon::render
