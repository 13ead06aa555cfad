// INSERT (with its attributes and SEQEND) and DIMENSION from their fields.
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_dimension.h"
#include "host/db/qadb_generic_tables.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_read_context.h"

namespace tabulon::dxf {

namespace {

bool isZAxis(const QaGeVector3d& n) { return n.x == 0 && n.y == 0 && n.z == 1; }

std::wstring recordName(QaDbObjectId id) {
  if (auto* rec = QaDbSymbolTableRecord::cast(id.rawObject())) return rec->name();
  return {};
}

// A name from a record, else the original tag, else `fallback`.
void writeName(DxfEmitter& e, int code, QaDbObjectId id, const wchar_t* fallback) {
  std::wstring name = id.isErased() ? std::wstring() : recordName(id);
  if (!name.empty()) e.text(code, name);
  else if (const DxfTag* t = e.originalTag(code)) e.raw(code, e.ctx().transcode(t->value, *e.original().source));
  else e.text(code, fallback);
}

void writeInsert(DxfWriteContext& ctx, const QaDbBlockReference& ref) {
  std::vector<QaDbObjectId> attributes;
  for (QaDbObjectId id : ref.attributeIds())
    if (!id.isNull() && !id.isErased() && id.rawObject()) attributes.push_back(id);
  const auto* rec = dynamic_cast<const DxfInsertRecord*>(ref.dxfRecord());
  const bool verbatim = dxfCanWriteVerbatim(ctx, ref);
  if (verbatim) {
    ctx.copySpan(rec->source(), rec->span());
  } else {
    DxfEmitter e(ctx, ref, "INSERT");
    e.coverEverywhere(codes::kInsert);  // read from any part of the body
    dxfWriteEntityHead(e, ref, QaDbObjectId());
    e.subclass("AcDbBlockReference", codes::kInsert);
    if (!attributes.empty()) e.integer(66, 1);
    writeName(e, 2, ref.blockTableRecord(), L"*U");
    e.point(10, ref.position());
    const QaGeScale3d& s = ref.scaleFactors();
    if (s.sx != 1) e.real(41, s.sx);
    if (s.sy != 1) e.real(42, s.sy);
    if (s.sz != 1) e.real(43, s.sz);
    if (ref.rotation() != 0) e.angle(50, ref.rotation());
    if (!isZAxis(ref.normal())) e.point(210, QaGePoint3d(ref.normal().x, ref.normal().y, ref.normal().z));
    e.finish();
  }
  for (QaDbObjectId id : attributes) dxfWriteEntity(ctx, *QaDbEntity::cast(id.rawObject()));
  bool originalSeqend = rec && !rec->seqend.empty();
  if (attributes.empty() && !(verbatim && originalSeqend)) return;
  DxfOriginal seq;
  if (originalSeqend) seq = DxfWriteContext::original(rec->source(), rec->seqend);
  bool claimed = seq.valid() && ctx.claim(seq.frame.handle);
  if (verbatim && claimed && seq.frame.owner == ref.handle().value()) {
    ctx.copySpan(rec->source(), rec->seqend);
    return;
  }
  std::uint64_t handle = claimed ? seq.frame.handle : ctx.newHandle();
  DxfEmitter e(ctx, ref, "SEQEND", std::move(seq));
  e.asPart();
  e.head(5, handle, ref.objectId(), true);
  e.subclass("AcDbEntity", codes::kCommon);
  e.text(8, ref.layer());
  e.finish();
}

void writeDimension(DxfWriteContext& ctx, const QaDbDimension& dim) {
  DxfEmitter e(ctx, dim, "DIMENSION");
  // Read from any part of the body, whichever kind of dimension it names.
  e.coverEverywhere(codes::kDimension);
  e.coverEverywhere(codes::kDimensionKind);
  dxfWriteEntityHead(e, dim, QaDbObjectId());
  e.subclass("AcDbDimension", codes::kDimension);
  writeName(e, 2, dim.dimBlockId(), L"*D");
  e.point(10, dim.dimLinePoint());
  e.point(11, dim.textPosition());
  const QaGePoint3d& p12 = dim.blockInsertionPoint();
  if (p12.x != 0 || p12.y != 0 || p12.z != 0) e.point(12, p12);
  e.integer(70, dim.dimensionFlags());
  if (!dim.dimensionText().empty()) e.text(1, dim.dimensionText());
  if (dim.textRotation() != 0) e.angle(53, dim.textRotation());
  writeName(e, 3, dim.dimensionStyle(), L"Standard");
  if (!isZAxis(dim.normal())) e.point(210, QaGePoint3d(dim.normal().x, dim.normal().y, dim.normal().z));
  e.real(42, dim.measurement());
  switch (dim.kind()) {
    case QaDbDimension::kRotated:
    case QaDbDimension::kAligned:
      e.subclass("AcDbAlignedDimension", codes::kDimensionKind);
      e.point(13, dim.xLine1Point());
      e.point(14, dim.xLine2Point());
      if (dim.kind() == QaDbDimension::kRotated) {
        e.angle(50, dim.rotation());
        if (dim.obliqueAngle() != 0) e.angle(52, dim.obliqueAngle());
        e.subclass("AcDbRotatedDimension", codes::kDimensionKind);
      }
      break;
    case QaDbDimension::kAngular:
      e.subclass("AcDb2LineAngularDimension", codes::kDimensionKind);
      e.point(13, dim.xLine1Point());
      e.point(14, dim.xLine2Point());
      e.point(15, dim.defPoint2());
      e.point(16, dim.arcPoint());
      break;
    case QaDbDimension::kDiameter:
    case QaDbDimension::kRadius:
      e.subclass(dim.kind() == QaDbDimension::kDiameter ? "AcDbDiametricDimension" : "AcDbRadialDimension",
                 codes::kDimensionKind);
      e.point(15, dim.defPoint2());
      e.real(40, dim.leaderLength());
      break;
    case QaDbDimension::kAngular3Point:
      e.subclass("AcDb3PointAngularDimension", codes::kDimensionKind);
      e.point(13, dim.xLine1Point());
      e.point(14, dim.xLine2Point());
      e.point(15, dim.defPoint2());
      break;
    case QaDbDimension::kOrdinate:
      e.subclass("AcDbOrdinateDimension", codes::kDimensionKind);
      e.point(13, dim.xLine1Point());
      e.point(14, dim.xLine2Point());
      break;
  }
  e.finish();
}

}  // namespace

bool dxfWriteReferenceEntity(DxfWriteContext& ctx, const QaDbEntity& entity) {
  if (const auto* ref = QaDbBlockReference::cast(&entity)) {
    writeInsert(ctx, *ref);
    return true;
  }
  if (const auto* dim = QaDbDimension::cast(&entity)) {
    if (dxfCanWriteVerbatim(ctx, entity)) {
      const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
      ctx.copySpan(rec->source(), rec->span());
    } else {
      writeDimension(ctx, *dim);
    }
    return true;
  }
  return false;
}

}  // namespace tabulon::dxf
