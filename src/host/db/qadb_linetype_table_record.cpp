#include "host/db/qadb_linetype_table.h"

QARX_DEFINE_MEMBERS(QaDbLinetypeTableRecord, QaDbSymbolTableRecord, L"LTYPE")

Qa::ErrorStatus QaDbLinetypeTableRecord::setComments(const std::wstring& text) {
  assertWriteEnabled();
  comments_ = text;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLinetypeTableRecord::setPatternLength(double length) {
  if (length < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  patternLength_ = length;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLinetypeTableRecord::setDashes(std::vector<double> dashes) {
  assertWriteEnabled();
  dashes_ = std::move(dashes);
  return Qa::eOk;
}
