// Layers (LAYER table) and their records: colour (negative when off), linetype, line
// weight, frozen/locked flags, plotting.
#pragma once

#include "host/db/qadb_symbol_table.h"

class QaDbLayerTableRecord : public QaDbSymbolTableRecord {
  QADB_DECLARE_MEMBERS(QaDbLayerTableRecord)

 public:
  enum LayerFlags { kFrozen = 1, kFrozenInNewViewports = 2, kLocked = 4 };

  QaDbLayerTableRecord() = default;
  explicit QaDbLayerTableRecord(const std::wstring& name) : QaDbSymbolTableRecord(name) {}

  // 1..255, always positive; the off state is separate.
  int colorIndex() const { return colorIndex_; }
  Qa::ErrorStatus setColorIndex(int index);
  bool isOff() const { return off_; }
  Qa::ErrorStatus setIsOff(bool off);
  bool isFrozen() const { return (flags() & kFrozen) != 0; }
  Qa::ErrorStatus setIsFrozen(bool on);
  bool isLocked() const { return (flags() & kLocked) != 0; }
  Qa::ErrorStatus setIsLocked(bool on);
  const std::wstring& linetype() const { return linetype_; }
  Qa::ErrorStatus setLinetype(const std::wstring& name);
  int lineWeight() const { return lineWeight_; }
  Qa::ErrorStatus setLineWeight(int weight);
  bool isPlottable() const { return plottable_; }
  Qa::ErrorStatus setIsPlottable(bool on);

 private:
  int colorIndex_ = 7;
  bool off_ = false;
  std::wstring linetype_ = L"Continuous";
  int lineWeight_ = QaDb::kLnWtByLwDefault;
  bool plottable_ = true;
};

QADB_DECLARE_SYMBOL_TABLE(QaDbLayerTable, QaDbLayerTableRecord)
