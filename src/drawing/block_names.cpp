#include "drawing/block_names.h"

#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_text_style_table.h"

std::wstring GetBlockName(QaDbObjectId block) {
  QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForRead);
  return record ? record->getName() : std::wstring();
}

std::wstring GetTextStyleName(QaDbObjectId style) {
  QaDbObjectPointer<QaDbTextStyleTableRecord> record(style, QaDb::kForRead);
  return record ? record->getName() : std::wstring();
}

std::wstring StripBlockPrefix(const std::wstring& name) {
  const std::size_t at = name.find(L'_');
  return at == std::wstring::npos ? name : name.substr(at + 1);
}

std::wstring StripAllBlockPrefixes(const std::wstring& name) {
  std::wstring out = name;
  for (std::size_t at = out.find(L'_'); at != std::wstring::npos; at = out.find(L'_')) out = out.substr(at + 1);
  return out;
}

int ResetBlockName(QaDbObjectId block) {
  QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForWrite);
  if (!record) return 0;
  const std::wstring stripped = StripAllBlockPrefixes(record->getName());
  if (stripped != record->getName()) record->setName(stripped);
  return 1;
}
