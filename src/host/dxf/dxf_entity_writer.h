// Writes entities: unchanged ones from their original tags, changed or new
// ones from their fields (see DxfEmitter). A block reference is followed by
// its attributes and SEQEND, a POLYLINE by its VERTEX records and SEQEND.
#pragma once

#include "host/db/qadb_entity.h"
#include "host/dxf/dxf_emitter.h"
#include "host/dxf/dxf_write_context.h"

#include <vector>

namespace tabulon::dxf {

void dxfWriteEntity(DxfWriteContext& ctx, const QaDbEntity& entity);

// True when `object` may be written from its original tags byte for byte:
// loaded from a file of R13 or later, not modified, same handle, owner,
// reactors and extension dictionary as in the file, and the records it names
// (block, text style, dimension style) not modified either.
bool dxfCanWriteVerbatim(const DxfWriteContext& ctx, const QaDbObject& object);

// The common part of an entity: head and AcDbEntity.
void dxfWriteEntityHead(DxfEmitter& e, const QaDbEntity& entity, QaDbObjectId owner, bool useOwner = false);

// Family writers (one file each); false when the entity is not of the family.
bool dxfWriteCurve(DxfWriteContext& ctx, const QaDbEntity& entity);
bool dxfWriteTextEntity(DxfWriteContext& ctx, const QaDbEntity& entity);
bool dxfWritePolylineEntity(DxfWriteContext& ctx, const QaDbEntity& entity);
bool dxfWriteReferenceEntity(DxfWriteContext& ctx, const QaDbEntity& entity);
bool dxfWriteHatch(DxfWriteContext& ctx, const QaDbEntity& entity);

// The VERTEX and SEQEND records of an original POLYLINE run, in order.
struct DxfPolylineParts {
  std::vector<DxfSpan> vertices;
  DxfSpan seqend;
};
DxfPolylineParts dxfSplitPolylineRun(const DxfSource& source, DxfSpan run);

// MTEXT contents as 3 chunks and a final 1, cut at character boundaries.
void dxfWriteMTextContents(DxfEmitter& e, const std::wstring& contents);

}  // namespace tabulon::dxf
