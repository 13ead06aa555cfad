#include "host/dxf/dxf_writer.h"

#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_object_writer.h"
#include "host/dxf/dxf_records.h"
#include "host/dxf/dxf_table_writer.h"
#include "host/dxf/dxf_write_plan.h"

#include <cerrno>
#include <cstring>
#include <cwctype>
#include <random>
#include <unistd.h>

namespace tabulon::dxf {

namespace {

const DxfTextCodec& utf8Codec() {
  static const DxfTextCodec codec("UTF-8");
  return codec;
}

std::string formatPointValue(double v) { return dxfFormatDouble(v); }

void writeHeader(DxfWriteContext& ctx, const DxfDocumentRecord* doc, std::uint64_t handseed) {
  const QaDbDatabase& db = ctx.db();
  DxfHeader header;
  if (doc) header = doc->header;
  header.setVersion(ctx.version());
  std::string cp = db.codePage().empty() ? std::string("ANSI_1252") : db.codePage();
  if (!ctx.codec().isUtf8()) cp = ctx.codec().codePage();
  header.setCodePage(cp);
  if (!header.find("$INSBASE") || !doc) {
    const QaGePoint3d& b = db.insbase();
    header.set("$INSBASE", {{10, formatPointValue(b.x)}, {20, formatPointValue(b.y)}, {30, formatPointValue(b.z)}},
               "$DWGCODEPAGE");
  } else {
    // Keep the original text when the point did not change.
    const auto* v = header.find("$INSBASE");
    QaGePoint3d p;
    for (const auto& t : v->tags) {
      auto d = dxfParseDouble(t.value);
      if (t.code == 10 && d) p.x = *d;
      if (t.code == 20 && d) p.y = *d;
      if (t.code == 30 && d) p.z = *d;
    }
    const QaGePoint3d& b = db.insbase();
    if (p.x != b.x || p.y != b.y || p.z != b.z)
      header.set("$INSBASE", {{10, formatPointValue(b.x)}, {20, formatPointValue(b.y)}, {30, formatPointValue(b.z)}});
  }
  header.setHandSeed(handseed);
  if (!doc) {
    header.setValue("$INSUNITS", 70, "4");
    header.setValue("$MEASUREMENT", 70, "1");
  }
  // R12 files name $HANDLING; later versions always have handles.
  header.remove("$HANDLING");

  DxfTagWriter& w = ctx.w();
  ctx.beginSection("HEADER");
  for (const auto& var : header.variables()) {
    w.write(9, var.name);
    for (const auto& t : var.tags)
      w.write(t.code, dxfIsTextCode(t.code) ? ctx.codec().transcode(t.value, utf8Codec()) : t.value);
  }
  w.write(0, "ENDSEC");
}

void writeRawSection(DxfWriteContext& ctx, const DxfRawSection& s) {
  DxfTagWriter& w = ctx.w();
  ctx.beginSection(s.name);
  for (const auto& t : s.tags)
    w.write(t.code, dxfIsTextCode(t.code) ? ctx.codec().transcode(t.value, utf8Codec()) : t.value);
  w.write(0, "ENDSEC");
}

void writeRawSectionsAfter(DxfWriteContext& ctx, const DxfDocumentRecord* doc, std::string_view after) {
  if (!doc) return;
  for (const auto& s : doc->rawSections)
    if (s.after == after) writeRawSection(ctx, s);
}

void writeEntitiesOf(DxfWriteContext& ctx, const QaDbBlockTableRecord& btr) {
  // Writing many entities waits on memory: an entity, its codec record and its
  // original text each lie elsewhere. Fetching entities and records a few places
  // ahead lets those waits overlap.
  constexpr std::size_t kObjectAhead = 8, kRecordAhead = 4;
  const std::vector<QaDbObjectId>& ids = btr.entityIds();
  for (std::size_t i = 0; i < ids.size(); ++i) {
#if defined(__GNUC__)
    if (i + kObjectAhead < ids.size()) __builtin_prefetch(ids[i + kObjectAhead].rawObject());
    if (i + kRecordAhead < ids.size())
      if (const QaDbObject* ahead = ids[i + kRecordAhead].rawObject()) __builtin_prefetch(ahead->dxfRecord());
#endif
    const QaDbObjectId id = ids[i];
    if (id.isErased()) continue;
    if (auto* e = QaDbEntity::cast(id.rawObject())) dxfWriteEntity(ctx, *e);
  }
}

bool isLayout(const std::wstring& name, const wchar_t* which) {
  std::wstring a = name, b = which;
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::towupper(a[i]) != std::towupper(b[i])) return false;
  return true;
}

}  // namespace

DxfVersion dxfTargetVersion(const QaDbDatabase& db, const DxfWriteOptions& options) {
  DxfVersion v = options.version ? *options.version
                                 : dxfVersionFromCode(db.version()).value_or(DxfVersion::R2018);
  if (!dxfVersionAtLeast(v, DxfVersion::R2000)) v = DxfVersion::R2000;
  return v;
}

void dxfWrite(const QaDbDatabase& db, DxfSink& sink, const DxfWriteOptions& options) {
  const DxfVersion version = dxfTargetVersion(db, options);
  const auto* doc = dynamic_cast<const DxfDocumentRecord*>(db.dxfHeader());
  // The line end of the file the drawing came from (so that its unchanged parts are
  // copied as they are and the file keeps one style); LF for a new drawing.
  const std::string lineEnd = doc && doc->lineEnd == "\r\n" ? "\r\n" : "\n";
  DxfTagWriter w(sink, lineEnd);
  const std::uint64_t firstPart = db.handseed().value();
  const DxfWritePlan plan = dxfPlanWrite(db);
  const std::uint64_t handseed = firstPart + plan.freshPartHandles;
  DxfWriteContext ctx(db, w, version, firstPart);
  if (doc) ctx.setSectionComments(&doc->sectionComments);

  if (doc)
    for (const auto& c : doc->leadingComments) w.write(999, ctx.codec().transcode(c, utf8Codec()));
  writeHeader(ctx, doc, handseed);
  writeRawSectionsAfter(ctx, doc, "HEADER");

  ctx.beginSection("CLASSES");
  if (doc && dxfVersionHasSubclasses(doc->readVersion))
    for (const auto& t : doc->classes)
      w.write(t.code, dxfIsTextCode(t.code) ? ctx.codec().transcode(t.value, utf8Codec()) : t.value);
  w.write(0, "ENDSEC");
  writeRawSectionsAfter(ctx, doc, "CLASSES");

  dxfWriteTables(ctx, doc, plan.unregisteredApps);
  writeRawSectionsAfter(ctx, doc, "TABLES");

  // BLOCKS: every block; the two active layouts stay empty here, their
  // entities go to ENTITIES.
  const QaDbBlockTableRecord* model = nullptr;
  const QaDbBlockTableRecord* paper = nullptr;
  std::vector<const QaDbBlockTableRecord*> blocks;
  if (auto* table = QaDbBlockTable::cast(db.blockTableId().rawObject())) {
    for (QaDbObjectId id : table->recordIds()) {
      if (id.isErased()) continue;
      auto* btr = QaDbBlockTableRecord::cast(id.rawObject());
      if (!btr) continue;
      blocks.push_back(btr);
      if (!model && isLayout(btr->name(), L"*Model_Space")) model = btr;
      else if (!paper && isLayout(btr->name(), L"*Paper_Space")) paper = btr;
    }
  }
  ctx.beginSection("BLOCKS");
  for (const auto* btr : blocks) {
    dxfWriteBlockBoundary(ctx, *btr, false);
    if (btr != model && btr != paper) writeEntitiesOf(ctx, *btr);
    dxfWriteBlockBoundary(ctx, *btr, true);
  }
  w.write(0, "ENDSEC");
  writeRawSectionsAfter(ctx, doc, "BLOCKS");

  ctx.beginSection("ENTITIES");
  if (model) writeEntitiesOf(ctx, *model);
  if (paper) writeEntitiesOf(ctx, *paper);
  w.write(0, "ENDSEC");
  writeRawSectionsAfter(ctx, doc, "ENTITIES");

  dxfWriteObjects(ctx, plan.sectionObjects);
  writeRawSectionsAfter(ctx, doc, "OBJECTS");
  if (doc) {
    // Sections that stood after one we do not write (or first of all) go last.
    for (const auto& s : doc->rawSections) {
      static const char* known[] = {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};
      bool placed = false;
      for (const char* k : known) placed = placed || s.after == k;
      if (!placed) writeRawSection(ctx, s);
    }
  }
  w.write(0, "EOF");
  if (ctx.nextHandle() > handseed)
    throw DxfError("", 0, DxfError::kNoGroupCode, "internal: more record handles given than reserved");
  w.finish();
}

void dxfSaveFile(const QaDbDatabase& db, const std::filesystem::path& path, const DxfWriteOptions& options) {
  dxfSaveFile(db, path, options, [](const std::filesystem::path& temp) { return std::make_unique<DxfFileSink>(temp); });
}

void dxfSaveFile(const QaDbDatabase& db, const std::filesystem::path& path, const DxfWriteOptions& options,
                 const DxfSinkFactory& makeSink) {
  if (path == "-") {
    DxfFileSink sink(stdout, "<stdout>");
    dxfWrite(db, sink, options);
    return;
  }
  std::filesystem::path target = path;
  std::filesystem::path dir = target.parent_path().empty() ? std::filesystem::path(".") : target.parent_path();
  std::random_device rd;
  std::string tempName = ".";
  tempName.append(target.filename().string()).append(".tmp").append(std::to_string(rd() % 1000000));
  std::filesystem::path temp = dir / tempName;
  try {
    {
      std::unique_ptr<DxfSink> sink = makeSink(temp);
      dxfWrite(db, *sink, options);
    }
    if (std::rename(temp.c_str(), target.c_str()) != 0)
      throw DxfError(target.string(), 0, DxfError::kNoGroupCode,
                     std::string("cannot replace the file: ") + std::strerror(errno));
  } catch (const DxfError& e) {
    std::error_code ec;
    std::filesystem::remove(temp, ec);
    if (e.file().empty() || e.file() == temp.string())
      throw DxfError(target.string(), e.line(), e.groupCode(), e.message());
    throw;
  } catch (...) {
    std::error_code ec;
    std::filesystem::remove(temp, ec);
    throw;
  }
}

}  // namespace tabulon::dxf
