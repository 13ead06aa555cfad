// LWPOLYLINE, POLYLINE (with VERTEX and SEQEND) and SPLINE from their fields.
#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_spline.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_read_context.h"

namespace tabulon::dxf {

namespace {

bool isZAxis(const QaGeVector3d& n) { return n.x == 0 && n.y == 0 && n.z == 1; }

void writeLwPolyline(DxfWriteContext& ctx, const QaDbPolyline& p) {
  DxfEmitter e(ctx, p, "LWPOLYLINE");
  e.coverEverywhere(codes::kLwPolyline);  // read from any part of the body
  dxfWriteEntityHead(e, p, QaDbObjectId());
  e.subclass("AcDbPolyline", codes::kLwPolyline);
  e.integer(90, p.numVerts());
  e.integer(70, (p.isClosed() ? 1 : 0) | (p.hasPlinegen() ? 128 : 0));
  e.real(43, p.constantWidth() < 0 ? 0.0 : p.constantWidth());
  if (p.elevation() != 0) e.real(38, p.elevation());
  if (p.thickness() != 0) e.real(39, p.thickness());
  for (const auto& v : p.vertices()) {
    e.point2(10, v.point.x, v.point.y);
    if (v.startWidth != 0 || v.endWidth != 0) {
      e.real(40, v.startWidth);
      e.real(41, v.endWidth);
    }
    if (v.bulge != 0) e.real(42, v.bulge);
  }
  if (!isZAxis(p.normal())) e.point(210, QaGePoint3d(p.normal().x, p.normal().y, p.normal().z));
  e.finish();
}

}  // namespace

DxfPolylineParts dxfSplitPolylineRun(const DxfSource& source, DxfSpan run) {
  DxfPolylineParts parts;
  DxfTagReader reader = source.tags(run);
  DxfTag tag;
  bool first = true;
  std::string_view type;
  std::size_t begin = 0;
  auto close = [&](std::size_t end) {
    if (type == "VERTEX") parts.vertices.push_back({begin, end});
    else if (type == "SEQEND") parts.seqend = {begin, end};
  };
  while (reader.next(tag)) {
    if (tag.code != 0) continue;
    if (!first) close(tag.offset);
    first = false;
    type = dxfTrim(tag.value);
    begin = tag.offset;
  }
  if (!first) close(run.end);
  return parts;
}

namespace {

void writePolyline(DxfWriteContext& ctx, const QaDb2dPolyline& p) {
  const auto* rec = dxfObjectRecordOf(p.dxfRecord());
  DxfPolylineParts parts;
  if (rec) parts = dxfSplitPolylineRun(rec->source(), rec->span());
  const int flags = p.polylineFlags();
  const char* sub = "AcDb2dPolyline";
  const char* vsub = "AcDb2dVertex";
  if (flags & QaDb2dPolyline::kPolyfaceMesh) {
    sub = "AcDbPolyFaceMesh";
    vsub = "AcDbPolyFaceMeshVertex";
  } else if (flags & QaDb2dPolyline::k3dMesh) {
    sub = "AcDbPolygonMesh";
    vsub = "AcDbPolygonMeshVertex";
  } else if (flags & QaDb2dPolyline::k3dPolyline) {
    sub = "AcDb3dPolyline";
    vsub = "AcDb3dPolylineVertex";
  }
  {
    DxfEmitter e(ctx, p, "POLYLINE");
    e.coverEverywhere(codes::kPolyline);  // read from any part of the body
    dxfWriteEntityHead(e, p, QaDbObjectId());
    e.subclass(sub, codes::kPolyline);
    e.integer(66, 1);
    e.point(10, QaGePoint3d(0, 0, p.elevation()));
    if (p.thickness() != 0) e.real(39, p.thickness());
    e.integer(70, flags);
    if (p.defaultStartWidth() != 0) e.real(40, p.defaultStartWidth());
    if (p.defaultEndWidth() != 0) e.real(41, p.defaultEndWidth());
    if (p.meshM() != 0) e.integer(71, p.meshM());
    if (p.meshN() != 0) e.integer(72, p.meshN());
    if (p.smoothType() != 0) e.integer(75, p.smoothType());
    if (!isZAxis(p.normal())) e.point(210, QaGePoint3d(p.normal().x, p.normal().y, p.normal().z));
    e.finish();
  }
  const bool sameCount = parts.vertices.size() == p.numVerts();
  for (unsigned int i = 0; i < p.numVerts(); ++i) {
    const auto& v = p.vertexAt(i);
    DxfOriginal original;
    std::uint64_t handle = 0;
    if (rec && sameCount) {
      original = DxfWriteContext::original(rec->source(), parts.vertices[i]);
      handle = original.frame.handle;
    }
    handle = ctx.partHandle(handle);
    DxfEmitter e(ctx, p, "VERTEX", std::move(original));
    e.asPart();
    e.coverEverywhere(codes::kVertex);  // read from any part of the body
    e.head(5, handle, p.objectId(), true);
    e.subclass("AcDbEntity", codes::kCommon);
    e.text(8, p.layer());
    e.subclass("AcDbVertex", {});
    bool face = (flags & QaDb2dPolyline::kPolyfaceMesh) && (v.flags & 128) && !(v.flags & 64);
    e.subclass(face ? "AcDbFaceRecord" : vsub, codes::kVertex);
    e.point(10, v.position);
    if (v.startWidth != 0) e.real(40, v.startWidth);
    if (v.endWidth != 0) e.real(41, v.endWidth);
    if (v.bulge != 0) e.real(42, v.bulge);
    e.integer(70, v.flags);
    if (v.tangent != 0) e.angle(50, v.tangent);
    e.finish();
  }
  DxfOriginal seq;
  if (rec && !parts.seqend.empty()) seq = DxfWriteContext::original(rec->source(), parts.seqend);
  std::uint64_t handle = ctx.partHandle(seq.valid() ? seq.frame.handle : 0);
  DxfEmitter e(ctx, p, "SEQEND", std::move(seq));
  e.asPart();
  e.head(5, handle, p.objectId(), true);
  e.subclass("AcDbEntity", codes::kCommon);
  e.text(8, p.layer());
  e.finish();
}

void writeSpline(DxfWriteContext& ctx, const QaDbSpline& s) {
  DxfEmitter e(ctx, s, "SPLINE");
  e.coverEverywhere(codes::kSpline);  // read from any part of the body
  dxfWriteEntityHead(e, s, QaDbObjectId());
  e.subclass("AcDbSpline", codes::kSpline);
  e.point(210, QaGePoint3d(s.normal().x, s.normal().y, s.normal().z));
  e.integer(70, s.flags());
  e.integer(71, s.degree());
  e.integer(72, static_cast<std::int64_t>(s.knots().size()));
  e.integer(73, static_cast<std::int64_t>(s.controlPoints().size()));
  e.integer(74, static_cast<std::int64_t>(s.fitPoints().size()));
  e.real(42, s.knotTolerance());
  e.real(43, s.controlPointTolerance());
  e.real(44, s.fitTolerance());
  if (!s.fitPoints().empty()) {
    const auto& a = s.startTangent();
    const auto& b = s.endTangent();
    if (a.x != 0 || a.y != 0 || a.z != 0) e.point(12, QaGePoint3d(a.x, a.y, a.z));
    if (b.x != 0 || b.y != 0 || b.z != 0) e.point(13, QaGePoint3d(b.x, b.y, b.z));
  }
  for (double k : s.knots()) e.real(40, k);
  for (double w : s.weights()) e.real(41, w);
  for (const auto& p : s.controlPoints()) e.point(10, p);
  for (const auto& p : s.fitPoints()) e.point(11, p);
  e.finish();
}

}  // namespace

bool dxfWritePolylineEntity(DxfWriteContext& ctx, const QaDbEntity& entity) {
  const auto* lw = QaDbPolyline::cast(&entity);
  const auto* pl = QaDb2dPolyline::cast(&entity);
  const auto* sp = QaDbSpline::cast(&entity);
  if (!lw && !pl && !sp) return false;
  if (dxfCanWriteVerbatim(ctx, entity)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
    bool whole = true;
    if (pl) {
      // The run carries the handles of its VERTEX and SEQEND records: all must be free.
      DxfPolylineParts parts = dxfSplitPolylineRun(rec->source(), rec->span());
      for (DxfSpan v : parts.vertices) whole = ctx.claim(DxfWriteContext::original(rec->source(), v).frame.handle) && whole;
      if (!parts.seqend.empty())
        whole = ctx.claim(DxfWriteContext::original(rec->source(), parts.seqend).frame.handle) && whole;
      whole = whole && parts.vertices.size() == pl->numVerts() && !parts.seqend.empty();
    }
    if (whole) {
      ctx.copySpan(rec->source(), rec->span());
      return true;
    }
  }
  if (lw) writeLwPolyline(ctx, *lw);
  else if (pl) writePolyline(ctx, *pl);
  else writeSpline(ctx, *sp);
  return true;
}

}  // namespace tabulon::dxf
