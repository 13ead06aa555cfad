// LWPOLYLINE, POLYLINE with its VERTEX records, and SPLINE.
#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_spline.h"
#include "host/dxf/dxf_entity_reader.h"

#include <vector>

namespace tabulon::dxf {

namespace {

bool commonZone(const DxfReadContext& ctx, int sc) { return ctx.flat() || (sc >= 0 && sc <= 1); }

std::unique_ptr<QaDbEntity> readLwPolyline(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                           const DxfObjectFrame& frame, DxfEntityRead& out) {
  auto pline = std::make_unique<QaDbPolyline>();
  struct V {
    double x = 0, y = 0, bulge = 0, start = 0, end = 0;
  };
  std::vector<V> verts;
  int flags = 0;
  double constantWidth = 0, elevation = 0, thickness = 0;
  QaGeVector3d n(0, 0, 1);
  dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
    if (commonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *pline, out.paperSpace)) return;
    if (sc < 0) return;
    switch (t.code) {
      case 10: verts.emplace_back(); verts.back().x = ctx.real(t); break;
      case 20: if (!verts.empty()) verts.back().y = ctx.real(t); break;
      case 40: if (!verts.empty()) verts.back().start = ctx.real(t); break;
      case 41: if (!verts.empty()) verts.back().end = ctx.real(t); break;
      case 42: if (!verts.empty()) verts.back().bulge = ctx.real(t); break;
      case 70: flags = ctx.integer(t); break;
      case 43: constantWidth = ctx.real(t); break;
      case 38: elevation = ctx.real(t); break;
      case 39: thickness = ctx.real(t); break;
      case 210: n.x = ctx.real(t); break;
      case 220: n.y = ctx.real(t); break;
      case 230: n.z = ctx.real(t); break;
      default: break;
    }
  });
  // The constant width first: setting it gives every vertex that width, and
  // widths of single vertices in the file come after it.
  pline->setConstantWidth(constantWidth);
  for (const V& v : verts) pline->addVertexAt(pline->numVerts(), QaGePoint2d(v.x, v.y), v.bulge, v.start, v.end);
  pline->setClosed((flags & 1) != 0);
  pline->setPlinegen((flags & 128) != 0);
  pline->setElevation(elevation);
  pline->setThickness(thickness);
  pline->setNormal(n);
  return pline;
}

std::unique_ptr<QaDbEntity> readPolylineHead(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                             const DxfObjectFrame& frame, DxfEntityRead& out) {
  auto pline = std::make_unique<QaDb2dPolyline>();
  double elevation = 0, w0 = 0, w1 = 0, thickness = 0;
  int flags = 0, m = 0, nn = 0, smooth = 0;
  QaGeVector3d n(0, 0, 1);
  dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
    if (commonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *pline, out.paperSpace)) return;
    if (sc < 0) return;
    switch (t.code) {
      case 30: elevation = ctx.real(t); break;
      case 39: thickness = ctx.real(t); break;
      case 70: flags = ctx.integer(t); break;
      case 40: w0 = ctx.real(t); break;
      case 41: w1 = ctx.real(t); break;
      case 71: m = ctx.integer(t); break;
      case 72: nn = ctx.integer(t); break;
      case 75: smooth = ctx.integer(t); break;
      case 210: n.x = ctx.real(t); break;
      case 220: n.y = ctx.real(t); break;
      case 230: n.z = ctx.real(t); break;
      default: break;
    }
  });
  pline->setPolylineFlags(flags);
  pline->setElevation(elevation);
  pline->setDefaultWidths(w0, w1);
  pline->setThickness(thickness);
  pline->setNormal(n);
  pline->setMeshSize(m, nn);
  pline->setSmoothType(smooth);
  return pline;
}

std::unique_ptr<QaDbEntity> readSpline(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                       const DxfObjectFrame& frame, DxfEntityRead& out) {
  auto spline = std::make_unique<QaDbSpline>();
  int flags = 0, degree = 3;
  double knotTol = 1e-10, cpTol = 1e-10, fitTol = 1e-10;
  QaGeVector3d n(0, 0, 1), t0, t1;
  std::vector<double> knots, weights;
  std::vector<QaGePoint3d> cps, fits;
  dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
    if (commonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *spline, out.paperSpace)) return;
    if (sc < 0) return;
    switch (t.code) {
      case 210: n.x = ctx.real(t); break;
      case 220: n.y = ctx.real(t); break;
      case 230: n.z = ctx.real(t); break;
      case 70: flags = ctx.integer(t); break;
      case 71: degree = ctx.integer(t); break;
      case 42: knotTol = ctx.real(t); break;
      case 43: cpTol = ctx.real(t); break;
      case 44: fitTol = ctx.real(t); break;
      case 12: t0.x = ctx.real(t); break;
      case 22: t0.y = ctx.real(t); break;
      case 32: t0.z = ctx.real(t); break;
      case 13: t1.x = ctx.real(t); break;
      case 23: t1.y = ctx.real(t); break;
      case 33: t1.z = ctx.real(t); break;
      case 40: knots.push_back(ctx.real(t)); break;
      case 41: weights.push_back(ctx.real(t)); break;
      case 10: cps.emplace_back(); cps.back().x = ctx.real(t); break;
      case 20: if (!cps.empty()) cps.back().y = ctx.real(t); break;
      case 30: if (!cps.empty()) cps.back().z = ctx.real(t); break;
      case 11: fits.emplace_back(); fits.back().x = ctx.real(t); break;
      case 21: if (!fits.empty()) fits.back().y = ctx.real(t); break;
      case 31: if (!fits.empty()) fits.back().z = ctx.real(t); break;
      default: break;  // 72, 73, 74 are counts of what follows
    }
  });
  spline->setNormal(n);
  spline->setFlags(flags);
  spline->setTolerances(knotTol, cpTol, fitTol);
  if (!cps.empty() &&
      spline->setNurbsData(degree, std::move(cps), std::move(knots), std::move(weights)) != Qa::eOk)
    ctx.audit().add(tags[0].line, "SPLINE control data do not fit together; kept as read");
  if (degree >= 1 && degree <= 25) spline->setDegree(degree);
  if (!fits.empty()) spline->setFitPoints(std::move(fits));
  spline->setFitTangents(t0, t1);
  return spline;
}

}  // namespace

std::unique_ptr<QaDbEntity> dxfReadPolylineEntity(const DxfReadContext& ctx, std::string_view type,
                                                  std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                                  DxfEntityRead& out) {
  if (type == "LWPOLYLINE") return readLwPolyline(ctx, tags, frame, out);
  if (type == "POLYLINE") return readPolylineHead(ctx, tags, frame, out);
  if (type == "SPLINE") return readSpline(ctx, tags, frame, out);
  return nullptr;
}

void dxfReadVertex(const DxfReadContext& ctx, std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                   QaDb2dPolyline& polyline) {
  QaDb2dPolyline::Vertex v;
  dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
    if (sc < 0) return;
    switch (t.code) {
      case 10: v.position.x = ctx.real(t); break;
      case 20: v.position.y = ctx.real(t); break;
      case 30: v.position.z = ctx.real(t); break;
      case 40: v.startWidth = ctx.real(t); break;
      case 41: v.endWidth = ctx.real(t); break;
      case 42: v.bulge = ctx.real(t); break;
      case 70: v.flags = ctx.integer(t); break;
      case 50: v.tangent = dxfDegToRad(ctx.real(t)); break;
      default: break;
    }
  });
  polyline.appendVertex(v);
}

}  // namespace tabulon::dxf
