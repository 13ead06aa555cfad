// Class information of the symbol tables and the simple records.
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_generic_tables.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_linetype_table.h"
#include "host/db/qadb_regapp_table.h"
#include "host/db/qadb_text_style_table.h"

#define QADB_DEFINE_SYMBOL_TABLE(TABLE, RECORD, DXF)                         \
  QARX_DEFINE_MEMBERS(TABLE, QaDbSymbolTable, L"TABLE")                      \
  const QaRxClass* TABLE::recordClass() const { return RECORD::desc(); }

QADB_DEFINE_SYMBOL_TABLE(QaDbBlockTable, QaDbBlockTableRecord, L"BLOCK_RECORD")
QADB_DEFINE_SYMBOL_TABLE(QaDbLayerTable, QaDbLayerTableRecord, L"LAYER")
QADB_DEFINE_SYMBOL_TABLE(QaDbLinetypeTable, QaDbLinetypeTableRecord, L"LTYPE")
QADB_DEFINE_SYMBOL_TABLE(QaDbTextStyleTable, QaDbTextStyleTableRecord, L"STYLE")
QADB_DEFINE_SYMBOL_TABLE(QaDbRegAppTable, QaDbRegAppTableRecord, L"APPID")
QADB_DEFINE_SYMBOL_TABLE(QaDbViewportTable, QaDbViewportTableRecord, L"VPORT")
QADB_DEFINE_SYMBOL_TABLE(QaDbViewTable, QaDbViewTableRecord, L"VIEW")
QADB_DEFINE_SYMBOL_TABLE(QaDbUCSTable, QaDbUCSTableRecord, L"UCS")
QADB_DEFINE_SYMBOL_TABLE(QaDbDimStyleTable, QaDbDimStyleTableRecord, L"DIMSTYLE")

QARX_DEFINE_MEMBERS(QaDbRegAppTableRecord, QaDbSymbolTableRecord, L"APPID")
QARX_DEFINE_MEMBERS(QaDbViewportTableRecord, QaDbSymbolTableRecord, L"VPORT")
QARX_DEFINE_MEMBERS(QaDbViewTableRecord, QaDbSymbolTableRecord, L"VIEW")
QARX_DEFINE_MEMBERS(QaDbUCSTableRecord, QaDbSymbolTableRecord, L"UCS")
QARX_DEFINE_MEMBERS(QaDbDimStyleTableRecord, QaDbSymbolTableRecord, L"DIMSTYLE")
