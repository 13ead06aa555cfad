#include "host/dxf/dxf_entity_reader.h"

#include "host/db/qadb_unknown_entity.h"

namespace tabulon::dxf {

bool dxfReadCommonTag(const DxfReadContext& ctx, const DxfTag& tag, QaDbEntity& entity, bool& paperSpace) {
  switch (tag.code) {
    case 8: {
      QaDbSharedName layer = ctx.layerName(tag);
      if (!layer.str().empty()) entity.setLayer(layer);
      return true;
    }
    case 6: {
      std::wstring linetype = ctx.text(tag);
      if (!linetype.empty()) entity.setLinetype(linetype);
      return true;
    }
    case 62:
      entity.setColorIndex(ctx.integer(tag));
      return true;
    case 370:
      entity.setLineWeight(ctx.integer(tag));
      return true;
    case 48:
      entity.setLinetypeScale(ctx.real(tag));
      return true;
    case 60:
      entity.setVisibility(ctx.integer(tag) == 0);
      return true;
    case 67:
      paperSpace = ctx.integer(tag) != 0;
      return true;
    default:
      return false;
  }
}

void dxfReadEntity(const DxfReadContext& ctx, std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                   DxfEntityRead& out) {
  std::string_view type = frame.type;
  std::unique_ptr<QaDbEntity> entity;
  if (type == "LINE" || type == "CIRCLE" || type == "ARC" || type == "ELLIPSE" || type == "POINT" ||
      type == "SOLID") {
    entity = dxfReadCurve(ctx, type, tags, frame, out);
  } else if (type == "TEXT" || type == "ATTRIB" || type == "ATTDEF" || type == "MTEXT") {
    entity = dxfReadTextEntity(ctx, type, tags, frame, out);
  } else if (type == "LWPOLYLINE" || type == "POLYLINE" || type == "SPLINE") {
    entity = dxfReadPolylineEntity(ctx, type, tags, frame, out);
  } else if (type == "INSERT" || type == "DIMENSION") {
    entity = dxfReadReferenceEntity(ctx, type, tags, frame, out);
  } else if (type == "HATCH") {
    entity = dxfReadHatch(ctx, tags, frame, out);
  }
  if (!entity) {
    // Kept as it came; only the common properties are known.
    entity = std::make_unique<QaDbUnknownEntity>(std::wstring(type.begin(), type.end()));
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int subclass) {
      if (subclass <= 1 || ctx.flat()) dxfReadCommonTag(ctx, t, *entity, out.paperSpace);
    });
  }
  out.entity = std::move(entity);
}

}  // namespace tabulon::dxf
