// LINE, CIRCLE, ARC, ELLIPSE, POINT and SOLID.
#include "host/db/qadb_arc.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_ellipse.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_point.h"
#include "host/db/qadb_solid.h"
#include "host/dxf/dxf_entity_reader.h"

#include <cmath>

namespace tabulon::dxf {

namespace {

// The axis (0, 1, 2) of a point code group base, or -1: code 10 -> base 10 axis 0, 20 -> axis 1...
inline int axisOf(int code, int base) {
  if (code == base) return 0;
  if (code == base + 10) return 1;
  if (code == base + 20) return 2;
  return -1;
}

bool isCommonZone(const DxfReadContext& ctx, int subclass) { return ctx.flat() || subclass <= 1; }

}  // namespace

std::unique_ptr<QaDbEntity> dxfReadCurve(const DxfReadContext& ctx, std::string_view type,
                                         std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                         DxfEntityRead& out) {
  bool& paper = out.paperSpace;
  if (type == "LINE") {
    auto line = std::make_unique<QaDbLine>();
    QaGePoint3d a, b;
    QaGeVector3d n(0, 0, 1);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (isCommonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *line, paper)) return;
      if (sc < 0) return;
      int ax;
      if ((ax = axisOf(t.code, 10)) >= 0) dxfSetCoord(a, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 11)) >= 0) dxfSetCoord(b, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 210)) >= 0) dxfSetCoord(n, ax, ctx.real(t));
      else if (t.code == 39) line->setThickness(ctx.real(t));
    });
    line->setStartPoint(a);
    line->setEndPoint(b);
    line->setNormal(n);
    return line;
  }
  if (type == "CIRCLE" || type == "ARC") {
    QaGePoint3d c;
    QaGeVector3d n(0, 0, 1);
    double r = 0, thickness = 0, start = 0, end = 0;
    std::unique_ptr<QaDbEntity> holder;
    QaDbEntity* common;
    if (type == "CIRCLE") holder = std::make_unique<QaDbCircle>();
    else holder = std::make_unique<QaDbArc>();
    common = holder.get();
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (isCommonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *common, paper)) return;
      if (sc < 0) return;
      int ax;
      if ((ax = axisOf(t.code, 10)) >= 0) dxfSetCoord(c, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 210)) >= 0) dxfSetCoord(n, ax, ctx.real(t));
      else if (t.code == 40) r = ctx.real(t);
      else if (t.code == 39) thickness = ctx.real(t);
      else if (t.code == 50) start = ctx.real(t);
      else if (t.code == 51) end = ctx.real(t);
    });
    if (auto* circle = QaDbCircle::cast(common)) {
      circle->setCenter(c);
      if (circle->setRadius(r) != Qa::eOk) ctx.audit().add(tags[0].line, "CIRCLE with radius " + std::to_string(r) + " kept as read");
      circle->setNormal(n);
      circle->setThickness(thickness);
    } else if (auto* arc = QaDbArc::cast(common)) {
      arc->setCenter(c);
      if (arc->setRadius(r) != Qa::eOk) ctx.audit().add(tags[0].line, "ARC with radius " + std::to_string(r) + " kept as read");
      arc->setNormal(n);
      arc->setThickness(thickness);
      arc->setStartAngle(dxfDegToRad(start));
      arc->setEndAngle(dxfDegToRad(end));
    }
    return holder;
  }
  if (type == "ELLIPSE") {
    auto ellipse = std::make_unique<QaDbEllipse>();
    QaGePoint3d c;
    QaGeVector3d major(1, 0, 0), n(0, 0, 1);
    double ratio = 1, start = 0, end = 2 * kDxfPi;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (isCommonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *ellipse, paper)) return;
      if (sc < 0) return;
      int ax;
      if ((ax = axisOf(t.code, 10)) >= 0) dxfSetCoord(c, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 11)) >= 0) dxfSetCoord(major, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 210)) >= 0) dxfSetCoord(n, ax, ctx.real(t));
      else if (t.code == 40) ratio = ctx.real(t);
      else if (t.code == 41) start = ctx.real(t);
      else if (t.code == 42) end = ctx.real(t);
    });
    if (ratio > 1.0 && ratio < 1e6) {
      // The minor axis is longer: it becomes the major one, parameters turn a quarter.
      QaGeVector3d unit = n;
      double len = std::sqrt(unit.x * unit.x + unit.y * unit.y + unit.z * unit.z);
      if (len > 0) unit = unit * (1.0 / len);
      major = unit.crossProduct(major) * ratio;
      ratio = 1.0 / ratio;
      start -= kDxfPi / 2;
      end -= kDxfPi / 2;
      out.repaired = true;
      ctx.audit().add(tags[0].line, "ELLIPSE with its minor axis longer than the major one; axes swapped");
    }
    if (ellipse->set(c, n, major, ratio, start, end) != Qa::eOk)
      ctx.audit().add(tags[0].line, "ELLIPSE with invalid axes kept as read");
    return ellipse;
  }
  if (type == "POINT") {
    auto point = std::make_unique<QaDbPoint>();
    QaGePoint3d p;
    QaGeVector3d n(0, 0, 1);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (isCommonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *point, paper)) return;
      if (sc < 0) return;
      int ax;
      if ((ax = axisOf(t.code, 10)) >= 0) dxfSetCoord(p, ax, ctx.real(t));
      else if ((ax = axisOf(t.code, 210)) >= 0) dxfSetCoord(n, ax, ctx.real(t));
      else if (t.code == 39) point->setThickness(ctx.real(t));
      else if (t.code == 50) point->setEcsRotation(dxfDegToRad(ctx.real(t)));
    });
    point->setPosition(p);
    point->setNormal(n);
    return point;
  }
  if (type == "SOLID") {
    auto solid = std::make_unique<QaDbSolid>();
    QaGePoint3d pts[4];
    bool has4 = false;
    QaGeVector3d n(0, 0, 1);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (isCommonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *solid, paper)) return;
      if (sc < 0) return;
      int ax;
      for (int k = 0; k < 4; ++k) {
        if ((ax = axisOf(t.code, 10 + k)) >= 0) {
          dxfSetCoord(pts[k], ax, ctx.real(t));
          if (k == 3) has4 = true;
          return;
        }
      }
      if ((ax = axisOf(t.code, 210)) >= 0) dxfSetCoord(n, ax, ctx.real(t));
      else if (t.code == 39) solid->setThickness(ctx.real(t));
    });
    // A three-cornered solid repeats its third corner.
    if (!has4) pts[3] = pts[2];
    for (int k = 0; k < 4; ++k) solid->setPointAt(k, pts[k]);
    solid->setNormal(n);
    return solid;
  }
  return nullptr;
}

}  // namespace tabulon::dxf
