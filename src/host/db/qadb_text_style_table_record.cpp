#include "host/db/qadb_text_style_table.h"

QARX_DEFINE_MEMBERS(QaDbTextStyleTableRecord, QaDbSymbolTableRecord, L"STYLE")

Qa::ErrorStatus QaDbTextStyleTableRecord::setFileName(const std::wstring& name) {
  assertWriteEnabled();
  fileName_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setBigFontFileName(const std::wstring& name) {
  assertWriteEnabled();
  bigFontFileName_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setTextSize(double size) {
  if (size < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  textSize_ = size;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setXScale(double scale) {
  if (scale <= 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  xScale_ = scale;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setObliquingAngle(double angle) {
  assertWriteEnabled();
  oblique_ = angle;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setPriorSize(double size) {
  assertWriteEnabled();
  priorSize_ = size;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setTextGenerationFlags(int flags) {
  assertWriteEnabled();
  generationFlags_ = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbTextStyleTableRecord::setTypeface(const std::wstring& name) {
  assertWriteEnabled();
  typeface_ = name;
  return Qa::eOk;
}
