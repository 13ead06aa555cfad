// TEXT, ATTRIB, ATTDEF and MTEXT from their fields.
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_text.h"
#include "host/db/qadb_text_style_table.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_read_context.h"

namespace tabulon::dxf {

namespace {

bool isZAxis(const QaGeVector3d& n) { return n.x == 0 && n.y == 0 && n.z == 1; }

std::wstring styleName(QaDbObjectId id) {
  if (auto* st = QaDbTextStyleTableRecord::cast(id.rawObject())) return st->name();
  return {};
}

// The style name to write: the record's, else the original tag's, else Standard.
void writeStyle(DxfEmitter& e, QaDbObjectId id, bool always) {
  std::wstring name = styleName(id);
  if (!name.empty()) {
    if (always || name != L"Standard") e.text(7, name);
  } else if (const DxfTag* t = e.originalTag(7)) {
    e.raw(7, e.ctx().transcode(t->value, *e.original().source));
  } else if (always) {
    e.text(7, L"Standard");
  }
}

// Cuts encoded text into pieces of at most 250 bytes at character boundaries.
std::vector<std::string> chunks(const std::string& bytes, bool utf8) {
  std::vector<std::string> out;
  std::size_t pos = 0;
  while (bytes.size() - pos > 250) {
    std::size_t cut = pos + 250;
    if (utf8) {
      while (cut > pos && (static_cast<unsigned char>(bytes[cut]) & 0xC0) == 0x80) --cut;
    } else {
      // Double-byte pages: walk characters so that a lead byte is never cut off.
      std::size_t i = pos;
      while (i < pos + 250) {
        std::size_t len = static_cast<unsigned char>(bytes[i]) >= 0x81 ? 2 : 1;
        if (i + len > pos + 250) break;
        i += len;
      }
      cut = i;
    }
    // Keep an escape (\U+XXXX) whole.
    std::size_t bs = bytes.rfind('\\', cut - 1);
    if (bs != std::string::npos && bs >= pos && cut - bs < 7 && bs > pos) cut = bs;
    out.push_back(bytes.substr(pos, cut - pos));
    pos = cut;
  }
  out.push_back(bytes.substr(pos));
  return out;
}

void writeMTextFields(DxfEmitter& e, const QaDbMText& m, bool embedded) {
  e.point(10, m.location());
  e.real(40, m.textHeight());
  e.real(41, m.width());
  if (embedded || m.definedHeight() != 0) e.real(46, m.definedHeight());
  e.integer(71, m.attachment());
  e.integer(72, m.flowDirection());
  dxfWriteMTextContents(e, m.contents());
  if (!embedded) writeStyle(e, m.textStyle(), false);
  if (!isZAxis(m.normal())) e.point(210, QaGePoint3d(m.normal().x, m.normal().y, m.normal().z));
  const QaGeVector3d& d = m.direction();
  if (!(d.x == 1 && d.y == 0 && d.z == 0)) e.point(11, QaGePoint3d(d.x, d.y, d.z));
  e.integer(73, m.lineSpacingStyle());
  e.real(44, m.lineSpacingFactor());
}

void writeTextPart(DxfEmitter& e, const QaDbText& t, bool isText) {
  e.subclass("AcDbText", codes::kText);
  if (t.thickness() != 0) e.real(39, t.thickness());
  e.point(10, t.position());
  e.real(40, t.height());
  e.text(1, t.textString());
  if (t.rotation() != 0) e.angle(50, t.rotation());
  if (t.widthFactor() != 1) e.real(41, t.widthFactor());
  if (t.oblique() != 0) e.angle(51, t.oblique());
  writeStyle(e, t.textStyle(), false);
  if (t.generationFlags() != 0) e.integer(71, t.generationFlags());
  if (t.horizontalMode() != QaDb::kTextLeft) e.integer(72, t.horizontalMode());
  if (!t.isDefaultAlignment()) e.point(11, t.alignmentPoint());
  if (!isZAxis(t.normal())) e.point(210, QaGePoint3d(t.normal().x, t.normal().y, t.normal().z));
  if (isText) {
    e.subclass("AcDbText", codes::kText2);
    if (t.verticalMode() != QaDb::kTextBase) e.integer(73, t.verticalMode());
  }
}

void writeAttributePart(DxfEmitter& e, const QaDbText& t, const QaDbAttributeData& data, const std::wstring* prompt,
                        const QaDbMText* mtext) {
  DxfWriteContext& ctx = e.ctx();
  e.subclass(prompt ? "AcDbAttributeDefinition" : "AcDbAttribute", codes::kAttribute);
  e.addModelled({71, 72, 11, 21, 31});
  // The reader takes every embedded part as the multi-line text, written here from fields.
  e.dropEmbedded();
  if (ctx.atLeast(DxfVersion::R2010)) e.integer(280, 0);
  if (prompt) e.text(3, *prompt);
  e.text(2, data.tag);
  e.integer(70, data.flags);
  if (data.fieldLength != 0) e.integer(73, data.fieldLength);
  if (t.verticalMode() != QaDb::kTextBase) e.integer(74, t.verticalMode());
  if (ctx.atLeast(DxfVersion::R2007)) e.integer(280, data.lockPosition ? 1 : 0);
  if (mtext && ctx.atLeast(DxfVersion::R2018)) {
    e.integer(71, prompt ? 4 : 2);
    e.integer(72, 0);
    e.point(11, t.alignmentPoint());
    e.embedded("Embedded Object");
    writeMTextFields(e, *mtext, true);
  }
}

}  // namespace

void dxfWriteMTextContents(DxfEmitter& e, const std::wstring& contents) {
  std::string bytes = e.ctx().encode(contents);
  auto parts = chunks(bytes, e.ctx().codec().isUtf8());
  for (std::size_t i = 0; i + 1 < parts.size(); ++i) e.raw(3, parts[i]);
  e.raw(1, parts.back());
}

bool dxfWriteTextEntity(DxfWriteContext& ctx, const QaDbEntity& entity) {
  const auto* mtext = QaDbMText::cast(&entity);
  const auto* text = QaDbText::cast(&entity);
  if (!mtext && !text) return false;
  if (dxfCanWriteVerbatim(ctx, entity)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
    ctx.copySpan(rec->source(), rec->span());
    return true;
  }
  if (mtext) {
    DxfEmitter e(ctx, entity, "MTEXT");
    e.coverEverywhere(codes::kMText);  // read from any part of the body but the embedded ones
    dxfWriteEntityHead(e, entity, QaDbObjectId());
    e.subclass("AcDbMText", codes::kMText);
    writeMTextFields(e, *mtext, false);
    e.keepSegment(101, "Embedded Object");
    e.finish();
    return true;
  }
  if (const auto* att = QaDbAttribute::cast(&entity)) {
    DxfEmitter e(ctx, entity, "ATTRIB");
    dxfWriteEntityHead(e, entity, QaDbObjectId());
    writeTextPart(e, *att, false);
    writeAttributePart(e, *att, att->attributeData(), nullptr, att->getMTextAttribute());
    e.finish();
  } else if (const auto* def = QaDbAttributeDefinition::cast(&entity)) {
    DxfEmitter e(ctx, entity, "ATTDEF");
    dxfWriteEntityHead(e, entity, QaDbObjectId());
    writeTextPart(e, *def, false);
    std::wstring prompt = def->prompt();
    writeAttributePart(e, *def, def->attributeData(), &prompt, def->getMTextAttributeDefinition());
    e.finish();
  } else {
    DxfEmitter e(ctx, entity, "TEXT");
    dxfWriteEntityHead(e, entity, QaDbObjectId());
    writeTextPart(e, *text, true);
    e.finish();
  }
  return true;
}

}  // namespace tabulon::dxf
