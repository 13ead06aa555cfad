#include "host/db/qadb_symbol_table_record.h"

#include "host/db/qadb_symbol_table.h"

#include <string_view>

QARX_DEFINE_MEMBERS(QaDbSymbolTableRecord, QaDbObject, L"")

Qa::ErrorStatus QaDbSymbolTableRecord::getName(std::wstring& name) const {
  name = name_;
  return Qa::eOk;
}

bool QaDbSymbolTableRecord::isValidName(const std::wstring& name) {
  if (name.empty()) return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    wchar_t c = name[i];
    if (c < 32) return false;
    // A leading "*" marks anonymous blocks and layouts.
    if (c == L'*' && i == 0) continue;
    if (std::wstring_view(L"<>/\\\":;?*,=`").find(c) != std::wstring_view::npos) return false;
  }
  return true;
}

Qa::ErrorStatus QaDbSymbolTableRecord::setName(const std::wstring& name) {
  if (!isValidName(name)) return Qa::eBadSymbolTableName;
  if (const auto* table = QaDbSymbolTable::cast(ownerId().rawObject())) {
    QaDbObjectId other;
    if (table->getAt(name, other) == Qa::eOk && other != objectId()) return Qa::eDuplicateKey;
  }
  assertWriteEnabled();
  name_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbSymbolTableRecord::setFlags(int flags) {
  assertWriteEnabled();
  flags_ = flags;
  return Qa::eOk;
}
