// The block table (BLOCK_RECORD table): one record per block definition and layout.
#pragma once

#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_symbol_table.h"

QADB_DECLARE_SYMBOL_TABLE(QaDbBlockTable, QaDbBlockTableRecord)
