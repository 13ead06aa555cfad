#include "host/dxf/dxf_table_reader.h"

#include "host/db/qadb_block_table.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_generic_tables.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_linetype_table.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_text_style_table.h"

#include <array>

namespace tabulon::dxf {

namespace {

constexpr std::array<std::string_view, 9> kTables = {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW",
                                                     "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"};

}  // namespace

bool dxfIsKnownTable(std::string_view name) {
  for (auto t : kTables)
    if (t == name) return true;
  return false;
}

std::unique_ptr<QaDbSymbolTable> dxfMakeTable(std::string_view name) {
  if (name == "VPORT") return std::make_unique<QaDbViewportTable>();
  if (name == "LTYPE") return std::make_unique<QaDbLinetypeTable>();
  if (name == "LAYER") return std::make_unique<QaDbLayerTable>();
  if (name == "STYLE") return std::make_unique<QaDbTextStyleTable>();
  if (name == "VIEW") return std::make_unique<QaDbViewTable>();
  if (name == "UCS") return std::make_unique<QaDbUCSTable>();
  if (name == "APPID") return std::make_unique<QaDbRegAppTable>();
  if (name == "DIMSTYLE") return std::make_unique<QaDbDimStyleTable>();
  if (name == "BLOCK_RECORD") return std::make_unique<QaDbBlockTable>();
  return nullptr;
}

std::wstring dxfRecordName(const DxfReadContext& ctx, std::span<const DxfTag> tags, std::size_t from) {
  for (std::size_t i = from; i < tags.size(); ++i)
    if (tags[i].code == 2) return ctx.text(tags[i]);
  return {};
}

std::unique_ptr<QaDbSymbolTableRecord> dxfReadTableRecord(const DxfReadContext& ctx, std::string_view type,
                                                          std::span<const DxfTag> tags,
                                                          const DxfObjectFrame& frame, DxfPendingRefs& refs) {
  std::wstring name = dxfRecordName(ctx, tags, frame.bodyBegin);
  int flags = 0;
  std::unique_ptr<QaDbSymbolTableRecord> record;

  if (type == "LAYER") {
    auto layer = std::make_unique<QaDbLayerTableRecord>(name);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 70: flags = ctx.integer(t); break;
        case 62: {
          int color = ctx.integer(t);
          layer->setIsOff(color < 0);
          if (color != 0) layer->setColorIndex(color < 0 ? -color : color);
          break;
        }
        case 6: layer->setLinetype(ctx.text(t)); break;
        case 370: layer->setLineWeight(ctx.integer(t)); break;
        case 290: layer->setIsPlottable(ctx.integer(t) != 0); break;
        default: break;
      }
    });
    record = std::move(layer);
  } else if (type == "LTYPE") {
    auto lt = std::make_unique<QaDbLinetypeTableRecord>(name);
    std::vector<double> dashes;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 70: flags = ctx.integer(t); break;
        case 3: lt->setComments(ctx.text(t)); break;
        case 40: lt->setPatternLength(ctx.real(t)); break;
        case 49: dashes.push_back(ctx.real(t)); break;
        default: break;
      }
    });
    lt->setDashes(std::move(dashes));
    record = std::move(lt);
  } else if (type == "STYLE") {
    auto st = std::make_unique<QaDbTextStyleTableRecord>(name);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 70: flags = ctx.integer(t); break;
        case 40: st->setTextSize(ctx.real(t)); break;
        case 41: st->setXScale(ctx.real(t)); break;
        case 50: st->setObliquingAngle(dxfDegToRad(ctx.real(t))); break;
        case 71: st->setTextGenerationFlags(ctx.integer(t)); break;
        case 42: st->setPriorSize(ctx.real(t)); break;
        case 3: st->setFileName(ctx.text(t)); break;
        case 4: st->setBigFontFileName(ctx.text(t)); break;
        default: break;
      }
    });
    // A TrueType typeface is kept as extended data of the application ACAD.
    for (std::size_t i = frame.xdataBegin; i < tags.size(); ++i) {
      if (tags[i].code == 1001 && dxfTrim(tags[i].value) == "ACAD") {
        if (i + 1 < tags.size() && tags[i + 1].code == 1000) st->setTypeface(ctx.text(tags[i + 1]));
        break;
      }
    }
    record = std::move(st);
  } else if (type == "APPID") {
    record = std::make_unique<QaDbRegAppTableRecord>(name);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc >= 0 && t.code == 70) flags = ctx.integer(t);
    });
  } else if (type == "BLOCK_RECORD") {
    auto btr = std::make_unique<QaDbBlockTableRecord>(name);
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 70: btr->setInsertUnits(ctx.integer(t)); break;
        case 280: btr->setExplodable(ctx.integer(t) != 0); break;
        case 281: btr->setScaleUniformly(ctx.integer(t) != 0); break;
        case 340: refs.handle2 = ctx.handle(t); break;
        default: break;
      }
    });
    record = std::move(btr);
  } else {
    if (type == "VPORT") record = std::make_unique<QaDbViewportTableRecord>(name);
    else if (type == "VIEW") record = std::make_unique<QaDbViewTableRecord>(name);
    else if (type == "UCS") record = std::make_unique<QaDbUCSTableRecord>(name);
    else if (type == "DIMSTYLE") record = std::make_unique<QaDbDimStyleTableRecord>(name);
    else return nullptr;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc >= 0 && t.code == 70) flags = ctx.integer(t);
    });
  }
  if (type != "BLOCK_RECORD") record->setFlags(flags);
  return record;
}

}  // namespace tabulon::dxf
