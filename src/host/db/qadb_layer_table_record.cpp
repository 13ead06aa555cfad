#include "host/db/qadb_layer_table.h"

QARX_DEFINE_MEMBERS(QaDbLayerTableRecord, QaDbSymbolTableRecord, L"LAYER")

Qa::ErrorStatus QaDbLayerTableRecord::setColorIndex(int index) {
  if (index < 1 || index > 255) return Qa::eInvalidInput;
  assertWriteEnabled();
  colorIndex_ = index;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLayerTableRecord::setIsOff(bool off) {
  assertWriteEnabled();
  off_ = off;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLayerTableRecord::setIsFrozen(bool on) {
  return setFlags(on ? (flags() | kFrozen) : (flags() & ~kFrozen));
}

Qa::ErrorStatus QaDbLayerTableRecord::setIsLocked(bool on) {
  return setFlags(on ? (flags() | kLocked) : (flags() & ~kLocked));
}

Qa::ErrorStatus QaDbLayerTableRecord::setLinetype(const std::wstring& name) {
  if (name.empty()) return Qa::eInvalidInput;
  assertWriteEnabled();
  linetype_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLayerTableRecord::setLineWeight(int weight) {
  assertWriteEnabled();
  lineWeight_ = weight;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbLayerTableRecord::setIsPlottable(bool on) {
  assertWriteEnabled();
  plottable_ = on;
  return Qa::eOk;
}
