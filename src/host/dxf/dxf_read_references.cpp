// INSERT and DIMENSION: entities that show a block.
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_dimension.h"
#include "host/dxf/dxf_entity_reader.h"

namespace tabulon::dxf {

namespace {

bool commonZone(const DxfReadContext& ctx, int sc) { return ctx.flat() || (sc >= 0 && sc <= 1); }

}  // namespace

std::unique_ptr<QaDbEntity> dxfReadReferenceEntity(const DxfReadContext& ctx, std::string_view type,
                                                   std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                                   DxfEntityRead& out) {
  if (type == "INSERT") {
    auto ref = std::make_unique<QaDbBlockReference>();
    QaGePoint3d p;
    QaGeScale3d s(1, 1, 1);
    QaGeVector3d n(0, 0, 1);
    double rotation = 0;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (commonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *ref, out.paperSpace)) return;
      if (sc < 0) return;
      switch (t.code) {
        case 2: out.name = t.value; break;
        case 10: p.x = ctx.real(t); break;
        case 20: p.y = ctx.real(t); break;
        case 30: p.z = ctx.real(t); break;
        case 41: s.sx = ctx.real(t); break;
        case 42: s.sy = ctx.real(t); break;
        case 43: s.sz = ctx.real(t); break;
        case 50: rotation = ctx.real(t); break;
        case 210: n.x = ctx.real(t); break;
        case 220: n.y = ctx.real(t); break;
        case 230: n.z = ctx.real(t); break;
        default: break;
      }
    });
    ref->setPosition(p);
    if (ref->setScaleFactors(s) != Qa::eOk)
      ctx.audit().add(tags[0].line, "INSERT with a zero scale factor; kept as read");
    ref->setRotation(dxfDegToRad(rotation));
    ref->setNormal(n);
    return ref;
  }
  if (type == "DIMENSION") {
    auto dim = std::make_unique<QaDbDimension>();
    QaGePoint3d pts[7];
    QaGeVector3d n(0, 0, 1);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (commonZone(ctx, sc) && dxfReadCommonTag(ctx, t, *dim, out.paperSpace)) return;
      if (sc < 0) return;
      int c = t.code;
      if (c >= 10 && c <= 36 && c % 10 <= 6) {
        int idx = c % 10;
        int axis = c / 10 - 1;
        dxfSetCoord(pts[idx], axis, ctx.real(t));
        return;
      }
      switch (c) {
        case 2: out.name = t.value; break;
        case 3: out.name2 = t.value; break;
        case 70: dim->setDimensionFlags(ctx.integer(t)); break;
        case 1: dim->setDimensionText(ctx.text(t)); break;
        case 42: dim->setMeasurement(ctx.real(t)); break;
        case 50: dim->setRotation(dxfDegToRad(ctx.real(t))); break;
        case 52: dim->setObliqueAngle(dxfDegToRad(ctx.real(t))); break;
        case 53: dim->setTextRotation(dxfDegToRad(ctx.real(t))); break;
        case 40: dim->setLeaderLength(ctx.real(t)); break;
        case 210: n.x = ctx.real(t); break;
        case 220: n.y = ctx.real(t); break;
        case 230: n.z = ctx.real(t); break;
        default: break;
      }
    });
    for (int k = 0; k < 7; ++k) dim->setDefinitionPoint(10 + k, pts[k]);
    dim->setNormal(n);
    return dim;
  }
  return nullptr;
}

}  // namespace tabulon::dxf
