#include "host/dxf/dxf_table_writer.h"

#include "host/db/qadb_block_table.h"
#include "host/db/qadb_generic_tables.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_linetype_table.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_text_style_table.h"
#include "host/dxf/dxf_emitter.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_r12_subclasses.h"
#include "host/dxf/dxf_read_context.h"

#include <set>

namespace tabulon::dxf {

namespace {

constexpr int kRecordCodes[] = {2, 70};
constexpr int kLayerCodes[] = {2, 70, 62, 6, 290, 370};
constexpr int kLinetypeCodes[] = {2, 70, 3, 72, 73, 40, 49, 74, 75, 340, 46, 50, 44, 45, 9};
constexpr int kStyleCodes[] = {2, 70, 40, 41, 50, 71, 42, 3, 4};
constexpr int kBlockRecordCodes[] = {2, 340, 70, 280, 281};
constexpr int kTableCodes[] = {2, 70};

std::string_view recordType(const QaDbSymbolTableRecord& rec) {
  if (QaDbLayerTableRecord::cast(&rec)) return "LAYER";
  if (QaDbLinetypeTableRecord::cast(&rec)) return "LTYPE";
  if (QaDbTextStyleTableRecord::cast(&rec)) return "STYLE";
  if (QaDbRegAppTableRecord::cast(&rec)) return "APPID";
  if (QaDbBlockTableRecord::cast(&rec)) return "BLOCK_RECORD";
  if (QaDbViewportTableRecord::cast(&rec)) return "VPORT";
  if (QaDbViewTableRecord::cast(&rec)) return "VIEW";
  if (QaDbUCSTableRecord::cast(&rec)) return "UCS";
  return "DIMSTYLE";
}

void writeLinetypeBody(DxfEmitter& e, const QaDbLinetypeTableRecord& lt) {
  e.text(3, lt.comments());
  e.integer(72, 65);
  e.integer(73, lt.numDashes());
  e.real(40, lt.patternLength());
  // The original dash elements (with shapes and texts) when the dashes are unchanged.
  std::vector<double> original;
  const DxfOriginal& o = e.original();
  std::size_t first = 0, last = 0;
  if (o.valid()) {
    for (std::size_t i = o.frame.bodyBegin; i < o.frame.xdataBegin; ++i) {
      int c = o.tags[i].code;
      if (c == 49) {
        if (original.empty()) first = i;
        original.push_back(dxfParseDouble(o.tags[i].value).value_or(0));
      }
      if (!original.empty() && (c == 49 || c == 74 || c == 75 || c == 340 || c == 46 || c == 50 || c == 44 ||
                                c == 45 || c == 9))
        last = i + 1;
    }
  }
  if (!original.empty() && original == lt.dashes()) {
    for (std::size_t i = first; i < last; ++i) e.ctx().copyTag(*o.source, o.tags[i]);
    return;
  }
  for (double d : lt.dashes()) {
    e.real(49, d);
    e.integer(74, 0);
  }
}

void writeRecord(DxfWriteContext& ctx, const QaDbSymbolTableRecord& rec) {
  if (dxfCanWriteVerbatim(ctx, rec)) {
    const auto* r = static_cast<const DxfObjectRecord*>(rec.dxfRecord());
    ctx.copySpan(r->source(), r->span());
    return;
  }
  std::string_view type = recordType(rec);
  DxfEmitter e(ctx, rec, type);
  // The reader takes the name (the first 2 of the body) and these codes from any part.
  if (QaDbLayerTableRecord::cast(&rec)) e.coverEverywhere(kLayerCodes);
  else if (QaDbLinetypeTableRecord::cast(&rec)) e.coverEverywhere(kLinetypeCodes);
  else if (QaDbTextStyleTableRecord::cast(&rec)) e.coverEverywhere(kStyleCodes);
  else if (QaDbBlockTableRecord::cast(&rec)) e.coverEverywhere(kBlockRecordCodes);
  else e.coverEverywhere(kRecordCodes);
  e.head(type == "DIMSTYLE" ? 105 : 5);
  e.subclass("AcDbSymbolTableRecord", {});
  if (const auto* layer = QaDbLayerTableRecord::cast(&rec)) {
    e.subclass("AcDbLayerTableRecord", kLayerCodes);
    e.text(2, layer->name());
    e.integer(70, layer->flags());
    e.integer(62, layer->isOff() ? -layer->colorIndex() : layer->colorIndex());
    e.text(6, layer->linetype().empty() ? L"Continuous" : layer->linetype());
    if (!layer->isPlottable()) e.integer(290, 0);
    e.integer(370, layer->lineWeight());
  } else if (const auto* lt = QaDbLinetypeTableRecord::cast(&rec)) {
    e.subclass("AcDbLinetypeTableRecord", kLinetypeCodes);
    e.text(2, lt->name());
    e.integer(70, lt->flags());
    writeLinetypeBody(e, *lt);
  } else if (const auto* st = QaDbTextStyleTableRecord::cast(&rec)) {
    e.subclass("AcDbTextStyleTableRecord", kStyleCodes);
    e.text(2, st->name());
    e.integer(70, st->flags());
    e.real(40, st->textSize());
    e.real(41, st->xScale());
    e.angle(50, st->obliquingAngle());
    e.integer(71, st->textGenerationFlags());
    e.real(42, st->priorSize());
    e.text(3, st->fileName());
    e.text(4, st->bigFontFileName());
  } else if (const auto* btr = QaDbBlockTableRecord::cast(&rec)) {
    e.subclass("AcDbBlockTableRecord", kBlockRecordCodes);
    e.text(2, btr->name());
    e.handle(340, btr->layoutId());
    if (ctx.atLeast(DxfVersion::R2007) || btr->insertUnits() != 0) e.integer(70, btr->insertUnits());
    e.integer(280, btr->explodable() ? 1 : 0);
    e.integer(281, btr->scaleUniformly() ? 1 : 0);
  } else {
    e.subclass(dxfRecordSubclass(type), kRecordCodes);
    e.text(2, rec.name());
    e.integer(70, rec.flags());
  }
  e.finish();
}

void writeTable(DxfWriteContext& ctx, std::string_view name, QaDbObjectId tableId,
                const std::set<std::wstring>& unregisteredApps = {}) {
  auto* table = QaDbSymbolTable::cast(tableId.rawObject());
  if (!table) return;
  std::vector<const QaDbSymbolTableRecord*> records;
  for (QaDbObjectId id : table->recordIds())
    if (!id.isErased())
      if (auto* rec = QaDbSymbolTableRecord::cast(id.rawObject())) records.push_back(rec);
  DxfOriginal original;
  if (const auto* rec = dynamic_cast<const DxfObjectRecord*>(table->dxfRecord())) {
    original = DxfWriteContext::original(rec->source(), rec->span());
    original.frame = dxfReadFrame(original.tags, 2);
  }
  DxfEmitter e(ctx, *table, "TABLE", std::move(original));
  DxfTagWriter& w = ctx.w();
  w.write(0, "TABLE");
  w.write(2, name);
  // The head: handle, groups, owner 0, then the table subclass.
  {
    const DxfOriginal& o = e.original();
    w.writeHandle(5, table->handle().value());
    if (o.valid()) {
      const DxfObjectFrame& f = o.frame;
      for (const auto& g : f.appGroups) {
        if (g.name == "ACAD_REACTORS" || g.name == "ACAD_XDICTIONARY") continue;
        for (std::size_t i = g.begin; i < g.end; ++i) ctx.copyTag(*o.source, o.tags[i]);
      }
    }
    QaDbObjectId xdict = table->extensionDictionary();
    if (!xdict.isNull() && !xdict.isErased()) {
      w.write(102, "{ACAD_XDICTIONARY");
      w.writeHandle(360, xdict.handle().value());
      w.write(102, "}");
    }
    w.writeHandle(330, 0);
  }
  e.subclass("AcDbSymbolTable", kTableCodes);
  e.integer(70, static_cast<std::int64_t>(records.size()));
  if (name == "DIMSTYLE") {
    e.keepSegment(100, "AcDbDimStyleTable");
    if (!e.original().valid()) {
      w.write(100, "AcDbDimStyleTable");
      w.writeInt(71, 0);
    }
  }
  e.finish();
  for (const auto* rec : records) writeRecord(ctx, *rec);
  if (name == "APPID") {
    // Every application of extended data has its record, also one that came
    // with an object copied in from another drawing.
    for (const auto& app : unregisteredApps) {
      w.write(0, "APPID");
      w.writeHandle(5, ctx.newHandle());
      w.writeHandle(330, table->handle().value());
      w.write(100, "AcDbSymbolTableRecord");
      w.write(100, "AcDbRegAppTableRecord");
      w.write(2, ctx.encode(app));
      w.writeInt(70, 0);
    }
  }
  w.write(0, "ENDTAB");
}

}  // namespace

void dxfWriteTables(DxfWriteContext& ctx, const DxfDocumentRecord* doc,
                    const std::set<std::wstring>& unregisteredApps) {
  const QaDbDatabase& db = ctx.db();
  DxfTagWriter& w = ctx.w();
  ctx.beginSection("TABLES");
  writeTable(ctx, "VPORT", db.viewportTableId());
  writeTable(ctx, "LTYPE", db.linetypeTableId());
  writeTable(ctx, "LAYER", db.layerTableId());
  writeTable(ctx, "STYLE", db.textStyleTableId());
  writeTable(ctx, "VIEW", db.viewTableId());
  writeTable(ctx, "UCS", db.UCSTableId());
  writeTable(ctx, "APPID", db.regAppTableId(), unregisteredApps);
  writeTable(ctx, "DIMSTYLE", db.dimStyleTableId());
  writeTable(ctx, "BLOCK_RECORD", db.blockTableId());
  if (doc) {
    static const DxfTextCodec utf8("UTF-8");
    for (const auto& raw : doc->rawTables) {
      for (const auto& t : raw.tags)
        w.write(t.code, dxfIsTextCode(t.code) ? ctx.codec().transcode(t.value, utf8) : t.value);
      w.write(0, "ENDTAB");
    }
  }
  w.write(0, "ENDSEC");
}

void dxfWriteBlockBoundary(DxfWriteContext& ctx, const QaDbBlockTableRecord& btr, bool end) {
  const auto* rec = dynamic_cast<const DxfBlockRecord*>(btr.dxfRecord());
  DxfOriginal o;
  if (rec) o = DxfWriteContext::original(rec->source(), end ? rec->blockEnd : rec->blockBegin);
  bool modern = o.valid() && dxfVersionHasSubclasses(o.source->version());
  bool claimed = o.valid() && ctx.claim(o.frame.handle);
  if (modern && claimed && !btr.isModified() && o.frame.owner == btr.handle().value()) {
    ctx.copySpan(rec->source(), end ? rec->blockEnd : rec->blockBegin);
    return;
  }
  std::uint64_t handle = claimed ? o.frame.handle : ctx.newHandle();
  static constexpr int kBeginCodes[] = {2, 70, 10, 20, 30, 3, 1, 4};
  static constexpr int kEntityCodes[] = {8, 67};
  DxfEmitter e(ctx, btr, end ? "ENDBLK" : "BLOCK", std::move(o));
  e.asPart();
  e.head(5, handle, btr.objectId(), true);
  e.subclass("AcDbEntity", kEntityCodes);
  const std::wstring& name = btr.name();
  if (name.size() >= 12 && name.compare(0, 12, L"*Paper_Space") == 0) e.integer(67, 1);
  if (const DxfTag* layer = e.originalTag(8)) e.raw(8, ctx.transcode(layer->value, *e.original().source));
  else e.raw(8, "0");
  if (end) {
    e.subclass("AcDbBlockEnd", {});
  } else {
    e.subclass("AcDbBlockBegin", kBeginCodes);
    e.text(2, name);
    e.integer(70, btr.blockFlags());
    e.point(10, btr.origin());
    e.text(3, name);
    e.text(1, btr.pathName());
    if (!btr.comments().empty()) e.text(4, btr.comments());
  }
  e.finish();
}

}  // namespace tabulon::dxf
