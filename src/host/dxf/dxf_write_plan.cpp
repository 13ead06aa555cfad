#include "host/dxf/dxf_write_plan.h"

#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_symbol_table.h"
#include "host/db/qadb_symbol_table_record.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_records.h"

#include <array>
#include <unordered_set>

namespace tabulon::dxf {

namespace {

// The handle the original tags of a part give it, as the writer's reading of
// them finds it (0 when none): the frame of its first tags.
std::uint64_t partHandle(const DxfSource& source, DxfSpan span) {
  if (span.empty()) return 0;
  std::array<DxfTag, 32> tags;
  std::size_t n = 0;
  DxfTagReader reader = source.tags(span);
  while (n < tags.size() && reader.next(tags[n])) {
    if (n > 0 && tags[n].code == 0) break;
    ++n;
  }
  return dxfReadFrame(std::span<const DxfTag>(tags.data(), n)).handle;
}

// Counts the parts that will need a fresh handle. A part keeps its original
// handle when that is usable and no earlier part took it; the writer decides
// the same, in another order, which changes which part of two with one handle
// keeps it but not how many do.
class PartHandles {
 public:
  explicit PartHandles(const QaDbDatabase& db) : db_(db), seed_(db.handseed().value()) {}

  // True when the part keeps `handle`; else it is counted as needing one.
  bool take(std::uint64_t handle) {
    if (dxfPartHandleUsable(db_, seed_, handle) && taken_.insert(handle).second) return true;
    ++fresh_;
    return false;
  }
  void addFresh(std::uint64_t n) { fresh_ += n; }
  std::uint64_t fresh() const { return fresh_; }

 private:
  const QaDbDatabase& db_;
  std::uint64_t seed_;
  std::unordered_set<std::uint64_t> taken_;
  std::uint64_t fresh_ = 0;
};

void planBlock(PartHandles& parts, const QaDbBlockTableRecord& btr) {
  const auto* rec = dynamic_cast<const DxfBlockRecord*>(btr.dxfRecord());
  parts.take(rec ? partHandle(rec->source(), rec->blockBegin) : 0);
  parts.take(rec ? partHandle(rec->source(), rec->blockEnd) : 0);
}

void planInsert(PartHandles& parts, const QaDbBlockReference& ref) {
  const auto* rec = dynamic_cast<const DxfInsertRecord*>(ref.dxfRecord());
  const bool originalSeqend = rec && !rec->seqend.empty();
  bool attributes = false;
  for (QaDbObjectId id : ref.attributeIds()) attributes = attributes || (!id.isNull() && !id.isErased() && id.rawObject());
  // A SEQEND is written after attributes, and kept where the file had one.
  if (attributes || originalSeqend) parts.take(originalSeqend ? partHandle(rec->source(), rec->seqend) : 0);
}

void planPolyline(PartHandles& parts, const QaDb2dPolyline& p) {
  const auto* rec = dxfObjectRecordOf(p.dxfRecord());
  if (!rec || rec->span().empty()) {
    parts.addFresh(p.numVerts() + 1);
    return;
  }
  const DxfPolylineParts run = dxfSplitPolylineRun(rec->source(), rec->span());
  bool whole = run.vertices.size() == p.numVerts() && !run.seqend.empty();
  for (DxfSpan v : run.vertices) whole = parts.take(partHandle(rec->source(), v)) && whole;
  whole = parts.take(partHandle(rec->source(), run.seqend)) && whole;
  // A run that cannot be copied whole is written part by part: every part may
  // then take a fresh handle.
  if (!whole) parts.addFresh(p.numVerts() + 1);
}

}  // namespace

DxfWritePlan dxfPlanWrite(const QaDbDatabase& db) {
  DxfWritePlan plan;
  PartHandles parts(db);
  const auto* apps = QaDbRegAppTable::cast(db.regAppTableId().rawObject());
  const QaDbObjectId root = db.namedObjectsDictionaryId();
  const std::vector<QaDbObjectId> ids = db.objectIds();
  for (std::size_t i = 0; i < ids.size(); ++i) {
#if defined(__GNUC__)
    // Every object is looked at once: fetch a few ahead so that the misses overlap.
    if (i + 32 < ids.size()) __builtin_prefetch(ids[i + 32].rawObject());
#endif
    const QaDbObjectId id = ids[i];
    const QaDbObject* o = id.rawObject();
    if (!o) continue;
    for (const auto& app : o->allXData())
      if (apps && !apps->has(app.appName)) plan.unregisteredApps.insert(app.appName);
    if (QaDbEntity::cast(o)) {
      if (id.isErased()) continue;
      if (auto* p = QaDb2dPolyline::cast(o)) planPolyline(parts, *p);
      else if (auto* ref = QaDbBlockReference::cast(o)) planInsert(parts, *ref);
    } else if (auto* btr = QaDbBlockTableRecord::cast(o)) {
      if (!id.isErased()) planBlock(parts, *btr);
    } else if (!QaDbSymbolTable::cast(o) && !QaDbSymbolTableRecord::cast(o) && id != root) {
      plan.sectionObjects.push_back(o);
    }
  }
  plan.freshPartHandles = parts.fresh() + plan.unregisteredApps.size();
  return plan;
}

}  // namespace tabulon::dxf
