#include "host/dxf/dxf_mtext_fields.h"

namespace tabulon::dxf {

bool DxfMTextFields::take(const DxfReadContext& ctx, const DxfTag& t) {
  switch (t.code) {
    case 10: location.x = ctx.real(t); return true;
    case 20: location.y = ctx.real(t); return true;
    case 30: location.z = ctx.real(t); return true;
    case 40: height = ctx.real(t); return true;
    case 41: width = ctx.real(t); return true;
    case 46: definedHeight = ctx.real(t); return true;
    case 71: attachment = ctx.integer(t); return true;
    case 72: flow = ctx.integer(t); return true;
    case 3:
    case 1:
      chunks.append(t.value);
      hasText = true;
      return true;
    case 7: style = t.value; return true;
    case 210: normal.x = ctx.real(t); return true;
    case 220: normal.y = ctx.real(t); return true;
    case 230: normal.z = ctx.real(t); return true;
    case 11: direction.x = ctx.real(t); hasDirection = true; return true;
    case 21: direction.y = ctx.real(t); hasDirection = true; return true;
    case 31: direction.z = ctx.real(t); hasDirection = true; return true;
    case 50: rotation = ctx.real(t); hasRotation = true; return true;
    case 73: lineSpacingStyle = ctx.integer(t); return true;
    case 44: lineSpacingFactor = ctx.real(t); return true;
    default: return false;
  }
}

void DxfMTextFields::apply(const DxfReadContext& ctx, QaDbMText& m) const {
  m.setContents(ctx.codec().decode(chunks));
  m.setLocation(location);
  if (height > 0) m.setTextHeight(height);
  if (width >= 0) m.setWidth(width);
  m.setDefinedHeight(definedHeight);
  m.setAttachment(attachment);
  if (flow != 0) m.setFlowDirection(flow);
  m.setNormal(normal);
  if (hasDirection && (direction.x != 0 || direction.y != 0 || direction.z != 0)) {
    m.setDirection(direction);
  } else if (hasRotation) {
    m.setRotation(rotation);
  }
  if (lineSpacingStyle != 0) m.setLineSpacingStyle(lineSpacingStyle);
  if (lineSpacingFactor > 0) m.setLineSpacingFactor(lineSpacingFactor);
}

}  // namespace tabulon::dxf
