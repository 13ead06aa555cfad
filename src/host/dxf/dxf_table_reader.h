// Symbol tables and their records from tags: the nine tables the database
// keeps, with the fields it models (layers, linetypes, text styles,
// applications, blocks); the rest of each record stays with its original tags.
#pragma once

#include "host/db/qadb_symbol_table.h"
#include "host/db/qadb_symbol_table_record.h"
#include "host/dxf/dxf_pending.h"
#include "host/dxf/dxf_read_context.h"

#include <memory>
#include <string_view>

namespace tabulon::dxf {

// True for VPORT, LTYPE, LAYER, STYLE, VIEW, UCS, APPID, DIMSTYLE, BLOCK_RECORD.
bool dxfIsKnownTable(std::string_view name);
// An empty table of that name; nullptr for an unknown name.
std::unique_ptr<QaDbSymbolTable> dxfMakeTable(std::string_view name);

// A record of a known table. `refs` receives the layout handle of a block record.
std::unique_ptr<QaDbSymbolTableRecord> dxfReadTableRecord(const DxfReadContext& ctx, std::string_view type,
                                                          std::span<const DxfTag> tags,
                                                          const DxfObjectFrame& frame, DxfPendingRefs& refs);

// The name given by the first group code 2 of a record or table head; empty when none.
std::wstring dxfRecordName(const DxfReadContext& ctx, std::span<const DxfTag> tags, std::size_t from);

}  // namespace tabulon::dxf
