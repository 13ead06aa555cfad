// Registered application names (APPID table): every application that attaches
// extended data has a record here.
#pragma once

#include "host/db/qadb_symbol_table.h"

class QaDbRegAppTableRecord : public QaDbSymbolTableRecord {
  QADB_DECLARE_MEMBERS(QaDbRegAppTableRecord)

 public:
  QaDbRegAppTableRecord() = default;
  explicit QaDbRegAppTableRecord(const std::wstring& name) : QaDbSymbolTableRecord(name) {}
};

QADB_DECLARE_SYMBOL_TABLE(QaDbRegAppTable, QaDbRegAppTableRecord)
