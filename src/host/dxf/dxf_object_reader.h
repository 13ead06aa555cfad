// Non-graphical objects from tags: dictionaries and groups are modelled (their
// entries and members go to the references, resolved once everything is
// loaded); every other kind becomes a QaDbUnknownObject.
#pragma once

#include "host/db/qadb_object.h"
#include "host/dxf/dxf_pending.h"
#include "host/dxf/dxf_read_context.h"

#include <memory>

namespace tabulon::dxf {

std::unique_ptr<QaDbObject> dxfReadObject(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                          const DxfObjectFrame& frame, DxfPendingRefs& refs);

}  // namespace tabulon::dxf
