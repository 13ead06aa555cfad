// Writes the TABLES section (the nine tables in the order CAD programs use,
// then tables nobody models) and the BLOCK / ENDBLK records of blocks.
#pragma once

#include "host/db/qadb_block_table_record.h"
#include "host/dxf/dxf_records.h"
#include "host/dxf/dxf_write_context.h"

#include <set>
#include <string>

namespace tabulon::dxf {

// `unregisteredApps`: applications of extended data without an APPID record, which
// get one.
void dxfWriteTables(DxfWriteContext& ctx, const DxfDocumentRecord* doc,
                    const std::set<std::wstring>& unregisteredApps);
// BLOCK of a block record (`end` false) or its ENDBLK (`end` true).
void dxfWriteBlockBoundary(DxfWriteContext& ctx, const QaDbBlockTableRecord& btr, bool end);

}  // namespace tabulon::dxf
