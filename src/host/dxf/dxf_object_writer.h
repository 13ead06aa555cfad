// Writes the OBJECTS section: the named objects dictionary first, then every
// other non-graphical object in the order the database holds them.
#pragma once

#include "host/dxf/dxf_write_context.h"

#include <vector>

namespace tabulon::dxf {

// `objects`: the non-graphical objects other than the named objects dictionary.
void dxfWriteObjects(DxfWriteContext& ctx, const std::vector<const QaDbObject*>& objects);

}  // namespace tabulon::dxf
