#include "host/dxf/dxf_entity_writer.h"

#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_unknown_entity.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_r12_subclasses.h"

namespace tabulon::dxf {

namespace {

// The frame of the object a span starts with, reading only its first tags;
// `marked` tells whether a subclass marker follows it.
DxfObjectFrame headFrame(const DxfSource& source, DxfSpan span, bool& marked) {
  thread_local std::vector<DxfTag> tags;
  tags.clear();
  marked = false;
  DxfTagReader reader = source.tags(span);
  DxfTag tag;
  while (reader.next(tag)) {
    if (tags.size() > 0 && (tag.code == 100 || tag.code == 0)) {
      marked = tag.code == 100;
      break;
    }
    tags.push_back(tag);
    if (tags.size() > 64 && tag.code != 330 && tag.code != 102 && tag.code != 360) break;
  }
  return dxfReadFrame(tags);
}

bool isPaperLayout(QaDbObjectId btrId) {
  auto* btr = QaDbBlockTableRecord::cast(btrId.rawObject());
  if (!btr) return false;
  const std::wstring& n = btr->name();
  return n.size() >= 12 && (n.compare(0, 12, L"*Paper_Space") == 0 || n.compare(0, 12, L"*PAPER_SPACE") == 0);
}

}  // namespace

bool dxfCanWriteVerbatim(const DxfWriteContext& ctx, const QaDbObject& object) {
  if (object.isModified()) return false;
  const auto* rec = dxfObjectRecordOf(object.dxfRecord());
  if (!rec || rec->span().empty()) return false;
  if (!dxfVersionHasSubclasses(rec->source().version())) return false;
  bool marked = false;
  DxfObjectFrame f = headFrame(rec->source(), rec->span(), marked);
  // Tags without subclass markers are rewritten with them.
  if (!marked || f.handle != object.handle().value()) return false;
  QaDbObjectId owner = object.ownerId();
  if (f.owner != (owner.isNull() ? 0 : owner.handle().value())) return false;
  QaDbObjectId xdict = object.extensionDictionary();
  if (f.xdictionary != (xdict.isNull() || xdict.isErased() ? 0 : xdict.handle().value())) return false;
  std::size_t k = 0;
  for (QaDbObjectId r : object.reactors()) {
    if (r.isNull() || r.isErased()) continue;
    if (k >= f.reactors.size() || f.reactors[k] != r.handle().value()) return false;
    ++k;
  }
  if (k != f.reactors.size() || ctx.db().objectIdFromHandle(object.handle()) != object.objectId()) return false;
  // The original tags name the records the object uses (block, text style, dimension
  // style); one changed since loading (renamed, for one) may no longer answer to it.
  thread_local std::vector<QaDbObjectId> used;
  used.clear();
  object.hardReferences(used);
  for (QaDbObjectId id : used)
    if (const QaDbObject* record = id.rawObject(); record && record->isModified()) return false;
  return true;
}

void dxfWriteEntityHead(DxfEmitter& e, const QaDbEntity& entity, QaDbObjectId owner, bool useOwner) {
  e.head(5, 0, owner, useOwner);
  // A colour index that changed takes the place of any true colour.
  bool colorChanged = false;
  e.subclass("AcDbEntity", codes::kCommon);
  if (e.flatOriginal()) e.addModelled({5});  // an R12 handle may stand anywhere in the body
  if (const DxfTag* c = e.originalTag(62)) colorChanged = dxfParseInt(c->value).value_or(256) != entity.colorIndex();
  else colorChanged = entity.colorIndex() != 256 && e.original().valid();
  if (colorChanged) e.addModelled({420, 430});
  QaDbObjectId o = useOwner ? owner : entity.ownerId();
  if (isPaperLayout(o)) e.integer(67, 1);
  e.text(8, entity.layer());
  if (!entity.linetype().empty() && entity.linetype() != L"ByLayer" && entity.linetype() != L"BYLAYER")
    e.text(6, entity.linetype());
  if (entity.colorIndex() != 256) e.integer(62, entity.colorIndex());
  if (entity.lineWeight() != -1) e.integer(370, entity.lineWeight());
  if (entity.linetypeScale() != 1.0) e.real(48, entity.linetypeScale());
  if (!entity.visible()) e.integer(60, 1);
}

void dxfWriteEntity(DxfWriteContext& ctx, const QaDbEntity& entity) {
  if (dxfWriteCurve(ctx, entity)) return;
  if (dxfWriteTextEntity(ctx, entity)) return;
  if (dxfWritePolylineEntity(ctx, entity)) return;
  if (dxfWriteReferenceEntity(ctx, entity)) return;
  if (dxfWriteHatch(ctx, entity)) return;
  // A kind nobody models: its original tags with the current frame.
  if (dxfCanWriteVerbatim(ctx, entity)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
    ctx.copySpan(rec->source(), rec->span());
    return;
  }
  std::string type = ctx.encode(entity.dxfType());
  DxfEmitter e(ctx, entity, type);
  dxfWriteEntityHead(e, entity, QaDbObjectId());
  if (e.flatOriginal()) {
    for (const auto& sub : dxfR12Subclasses(type)) {
      e.subclass(sub.marker, {});
      e.copyFlat(sub.codes);
    }
  }
  e.finish();
}

}  // namespace tabulon::dxf
