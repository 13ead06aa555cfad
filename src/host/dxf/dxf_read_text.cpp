// TEXT, ATTRIB, ATTDEF and MTEXT.
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_text.h"
#include "host/dxf/dxf_entity_reader.h"
#include "host/dxf/dxf_mtext_fields.h"

namespace tabulon::dxf {

namespace {

struct TextFields {
  QaGePoint3d position, alignment;
  bool hasAlignment = false;
  double height = 0, rotation = 0, width = 1, oblique = 0, thickness = 0;
  std::string_view text;  // bytes of the file
  std::string_view style;  // bytes of the file
  int generation = 0, horz = 0, vert = 0;
  QaGeVector3d normal{0, 0, 1};
  // attributes
  std::string_view tag, prompt;  // bytes of the file
  int flags = 0, fieldLength = 0;
  bool lock = false;
  bool tagSeen = false;
  int attributeType = 0;  // 71 of the attribute part: 2/4 multi-line
  bool embedded = false;
  DxfMTextFields mtext;
};

bool takeText(const DxfReadContext& ctx, const DxfTag& t, TextFields& f, bool isText) {
  switch (t.code) {
    case 10: f.position.x = ctx.real(t); return true;
    case 20: f.position.y = ctx.real(t); return true;
    case 30: f.position.z = ctx.real(t); return true;
    case 11: f.alignment.x = ctx.real(t); f.hasAlignment = true; return true;
    case 21: f.alignment.y = ctx.real(t); f.hasAlignment = true; return true;
    case 31: f.alignment.z = ctx.real(t); f.hasAlignment = true; return true;
    case 40: f.height = ctx.real(t); return true;
    case 1: f.text = t.value; return true;
    case 50: f.rotation = ctx.real(t); return true;
    case 41: f.width = ctx.real(t); return true;
    case 51: f.oblique = ctx.real(t); return true;
    case 7: f.style = t.value; return true;
    case 71: f.generation = ctx.integer(t); return true;
    case 72: f.horz = ctx.integer(t); return true;
    case 39: f.thickness = ctx.real(t); return true;
    case 210: f.normal.x = ctx.real(t); return true;
    case 220: f.normal.y = ctx.real(t); return true;
    case 230: f.normal.z = ctx.real(t); return true;
    case 73:
      if (isText) f.vert = ctx.integer(t);
      else f.fieldLength = ctx.integer(t);
      return true;
    default: return false;
  }
}

bool takeAttribute(const DxfReadContext& ctx, const DxfTag& t, TextFields& f) {
  switch (t.code) {
    case 2: f.tag = t.value; f.tagSeen = true; return true;
    case 3: f.prompt = t.value; return true;
    case 70: f.flags = ctx.integer(t); return true;
    case 73: f.fieldLength = ctx.integer(t); return true;
    case 74: f.vert = ctx.integer(t); return true;
    case 280:
      // The first 280 (before the tag) is a version number; after it, the lock.
      if (f.tagSeen) f.lock = ctx.integer(t) != 0;
      return true;
    default: return false;
  }
}

void applyText(const DxfReadContext& ctx, const TextFields& f, QaDbText& text) {
  text.setTextString(ctx.codec().decode(f.text));
  text.setPosition(f.position);
  text.setAlignmentPoint(f.hasAlignment ? f.alignment : f.position);
  if (f.height >= 0) text.setHeight(f.height);
  text.setRotation(dxfDegToRad(f.rotation));
  if (f.width > 0) text.setWidthFactor(f.width);
  text.setOblique(dxfDegToRad(f.oblique));
  text.setThickness(f.thickness);
  text.setNormal(f.normal);
  text.mirrorInX((f.generation & 2) != 0);
  text.mirrorInY((f.generation & 4) != 0);
  text.setHorizontalMode(f.horz);
  text.setVerticalMode(f.vert);
}

}  // namespace

std::unique_ptr<QaDbEntity> dxfReadTextEntity(const DxfReadContext& ctx, std::string_view type,
                                              std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                              DxfEntityRead& out) {
  bool& paper = out.paperSpace;
  if (type == "MTEXT") {
    auto mtext = std::make_unique<QaDbMText>();
    DxfMTextFields f;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if ((ctx.flat() || sc <= 1) && sc >= 0 && dxfReadCommonTag(ctx, t, *mtext, paper)) return;
      if (sc >= 0) f.take(ctx, t);
    });
    f.apply(ctx, *mtext);
    out.name = f.style;
    return mtext;
  }

  const bool isText = type == "TEXT";
  TextFields f;
  std::unique_ptr<QaDbText> text;
  if (isText) text = std::make_unique<QaDbText>();
  else if (type == "ATTRIB") text = std::make_unique<QaDbAttribute>();
  else text = std::make_unique<QaDbAttributeDefinition>();

  // Which subclass a tag belongs to, worked out once per marker. The attribute part is
  // the one named for the kind (an ATTDEF's "AcDbAttribute" is no part of it) and is
  // read once: a repeated or foreign part is kept as it came, not read.
  enum class Part { Other, Text, Attribute };
  const std::string_view attributePart = type == "ATTRIB" ? "AcDbAttribute" : "AcDbAttributeDefinition";
  Part part = Part::Other;
  bool attributeRead = false;
  const char* partName = nullptr;
  dxfForEachBodyTagNamed(tags, frame, [&](const DxfTag& t, int sc, std::string_view name) {
    if (name.data() != partName) {
      partName = name.data();
      part = Part::Other;
      if (name == "AcDbText") {
        part = Part::Text;
      } else if (!isText && name == attributePart && !attributeRead) {
        part = Part::Attribute;
        attributeRead = true;
      }
    }
    if (sc < 0) {
      f.embedded = true;
      f.mtext.take(ctx, t);
      return;
    }
    if ((ctx.flat() || sc <= 1) && dxfReadCommonTag(ctx, t, *text, paper)) return;
    if (ctx.flat()) {
      if (takeText(ctx, t, f, isText)) return;
      if (!isText) takeAttribute(ctx, t, f);
      return;
    }
    if (part == Part::Text) {
      takeText(ctx, t, f, true);
    } else if (part == Part::Attribute) {
      if (takeAttribute(ctx, t, f)) return;
      // The multi-line part: 71 attribute type, 72, 11/21/31 (a copy of the alignment point).
      if (t.code == 71) f.attributeType = ctx.integer(t);
    }
  });

  applyText(ctx, f, *text);
  out.name = f.style;
  if (auto* att = QaDbAttribute::cast(text.get())) {
    if (!f.tag.empty()) att->setTag(ctx.codec().decode(f.tag));
    att->setAttributeFlags(f.flags);
    att->setFieldLength(f.fieldLength);
    att->setLockPositionInBlock(f.lock);
    if (f.embedded) {
      QaDbMText m;
      f.mtext.apply(ctx, m);
      att->setMTextAttribute(m);
      // The text of a multi-line attribute is its embedded text (the single-line
      // value in the file is at most its first line; it stays in the original tags).
      att->setTextString(m.contents());
    }
  } else if (auto* def = QaDbAttributeDefinition::cast(text.get())) {
    if (!f.tag.empty()) def->setTag(ctx.codec().decode(f.tag));
    def->setPrompt(ctx.codec().decode(f.prompt));
    def->setAttributeFlags(f.flags);
    def->setFieldLength(f.fieldLength);
    def->setLockPositionInBlock(f.lock);
    if (f.embedded) {
      QaDbMText m;
      f.mtext.apply(ctx, m);
      def->setMTextAttributeDefinition(m);
      def->setTextString(m.contents());
    }
  }
  if (f.embedded) out.name2 = f.mtext.style;
  return text;
}

}  // namespace tabulon::dxf
