// Tables the database keeps by name only (VPORT, VIEW, UCS, DIMSTYLE): their records
// carry name and flags; the file codec keeps the rest of each record.
#pragma once

#include "host/db/qadb_symbol_table.h"

#define QADB_DECLARE_GENERIC_RECORD(RECORD)                                             \
  class RECORD : public QaDbSymbolTableRecord {                                         \
    QADB_DECLARE_MEMBERS(RECORD)                                                        \
   public:                                                                              \
    RECORD() = default;                                                                 \
    explicit RECORD(const std::wstring& name) : QaDbSymbolTableRecord(name) {}          \
  };

QADB_DECLARE_GENERIC_RECORD(QaDbViewportTableRecord)
QADB_DECLARE_GENERIC_RECORD(QaDbViewTableRecord)
QADB_DECLARE_GENERIC_RECORD(QaDbUCSTableRecord)
QADB_DECLARE_GENERIC_RECORD(QaDbDimStyleTableRecord)

QADB_DECLARE_SYMBOL_TABLE(QaDbViewportTable, QaDbViewportTableRecord)
QADB_DECLARE_SYMBOL_TABLE(QaDbViewTable, QaDbViewTableRecord)
QADB_DECLARE_SYMBOL_TABLE(QaDbUCSTable, QaDbUCSTableRecord)
QADB_DECLARE_SYMBOL_TABLE(QaDbDimStyleTable, QaDbDimStyleTableRecord)
