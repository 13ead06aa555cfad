#include "host/dxf/dxf_object_writer.h"

#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_symbol_table.h"
#include "host/db/qadb_symbol_table_record.h"
#include "host/dxf/dxf_emitter.h"
#include "host/dxf/dxf_entity_writer.h"

namespace tabulon::dxf {

namespace {

constexpr int kDictionaryCodes[] = {280, 281, 3, 350, 360};
constexpr int kGroupCodes[] = {300, 70, 71, 340};

void writeObject(DxfWriteContext& ctx, const QaDbObject& object) {
  if (dxfCanWriteVerbatim(ctx, object)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(object.dxfRecord());
    ctx.copySpan(rec->source(), rec->span());
    return;
  }
  if (const auto* dict = QaDbDictionary::cast(&object)) {
    DxfEmitter e(ctx, object, "DICTIONARY");
    e.head();
    e.subclass("AcDbDictionary", kDictionaryCodes);
    if (dict->isHardOwner()) e.integer(280, 1);
    e.integer(281, dict->mergeStyle());
    for (const auto& entry : dict->entries()) {
      if (entry.id.isNull() || entry.id.isErased() || !entry.id.rawObject()) continue;
      e.text(3, entry.key);
      e.handle(dict->isHardOwner() ? 360 : 350, entry.id);
    }
    e.finish();
    return;
  }
  if (const auto* group = QaDbGroup::cast(&object)) {
    DxfEmitter e(ctx, object, "GROUP");
    e.head();
    e.subclass("AcDbGroup", kGroupCodes);
    e.text(300, group->description());
    e.integer(70, group->isAnonymous() ? 1 : 0);
    e.integer(71, group->isSelectable() ? 1 : 0);
    for (QaDbObjectId id : group->allEntityIds())
      if (id.rawObject()) e.handle(340, id);
    e.finish();
    return;
  }
  // A kind nobody models: its original tags with the current frame.
  std::string type = ctx.encode(object.dxfType());
  DxfEmitter e(ctx, object, type);
  e.head();
  e.finish();
}

}  // namespace

void dxfWriteObjects(DxfWriteContext& ctx, const std::vector<const QaDbObject*>& objects) {
  const QaDbDatabase& db = ctx.db();
  DxfTagWriter& w = ctx.w();
  ctx.beginSection("OBJECTS");
  QaDbObjectId root = db.namedObjectsDictionaryId();
  if (QaDbObject* r = root.rawObject(); r && !root.isErased()) writeObject(ctx, *r);
  for (const QaDbObject* o : objects) writeObject(ctx, *o);
  w.write(0, "ENDSEC");
}

}  // namespace tabulon::dxf
