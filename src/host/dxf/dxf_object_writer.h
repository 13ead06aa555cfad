// Writes the OBJECTS section: the named objects dictionary first, then every
// other non-graphical object in the order the database holds them.
#pragma once

#include "host/dxf/dxf_write_context.h"

namespace tabulon::dxf {

void dxfWriteObjects(DxfWriteContext& ctx);

}  // namespace tabulon::dxf
