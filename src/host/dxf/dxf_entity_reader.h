// Turns the tags of one entity into a database entity that is not yet in a
// database. Kinds the database does not model become QaDbUnknownEntity with
// the common properties. Names of other records (text style, block,
// dimension style) are handed back for the loader to resolve later.
#pragma once

#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_entity.h"
#include "host/dxf/dxf_pending.h"
#include "host/dxf/dxf_read_context.h"

#include <memory>

namespace tabulon::dxf {

struct DxfEntityRead {
  std::unique_ptr<QaDbEntity> entity;
  bool paperSpace = false;
  DxfPendingRefs refs;
  bool hasRefs = false;  // handles in refs need resolving
  // Names of records to resolve once loaded, as bytes of the file: text style,
  // block or layer (`name`), dimension style or the style of an embedded text (`name2`).
  std::string_view name, name2;
  bool repaired = false;  // changed from what the file says: written from fields
};

// Reads any entity; POLYLINE gets its vertices through dxfReadVertex.
void dxfReadEntity(const DxfReadContext& ctx, std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                   DxfEntityRead& out);
// Appends the VERTEX given by `tags` to `polyline`.
void dxfReadVertex(const DxfReadContext& ctx, std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                   QaDb2dPolyline& polyline);

// The common properties (layer, colour, linetype, line weight, linetype scale,
// visibility, paper space). True when `tag` was one of them.
bool dxfReadCommonTag(const DxfReadContext& ctx, const DxfTag& tag, QaDbEntity& entity, bool& paperSpace);

// Readers of the families (one file each).
std::unique_ptr<QaDbEntity> dxfReadCurve(const DxfReadContext& ctx, std::string_view type,
                                         std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                         DxfEntityRead& out);
std::unique_ptr<QaDbEntity> dxfReadTextEntity(const DxfReadContext& ctx, std::string_view type,
                                              std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                              DxfEntityRead& out);
std::unique_ptr<QaDbEntity> dxfReadPolylineEntity(const DxfReadContext& ctx, std::string_view type,
                                                  std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                                  DxfEntityRead& out);
std::unique_ptr<QaDbEntity> dxfReadReferenceEntity(const DxfReadContext& ctx, std::string_view type,
                                                   std::span<const DxfTag> tags, const DxfObjectFrame& frame,
                                                   DxfEntityRead& out);
std::unique_ptr<QaDbEntity> dxfReadHatch(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                         const DxfObjectFrame& frame, DxfEntityRead& out);

}  // namespace tabulon::dxf
