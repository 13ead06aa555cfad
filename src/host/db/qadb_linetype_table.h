// Linetypes (LTYPE table): description, total pattern length and dash lengths
// (negative for gaps, 0 for dots). Complex elements stay with the file codec.
#pragma once

#include <vector>

#include "host/db/qadb_symbol_table.h"

class QaDbLinetypeTableRecord : public QaDbSymbolTableRecord {
  QADB_DECLARE_MEMBERS(QaDbLinetypeTableRecord)

 public:
  QaDbLinetypeTableRecord() = default;
  explicit QaDbLinetypeTableRecord(const std::wstring& name) : QaDbSymbolTableRecord(name) {}

  const std::wstring& comments() const { return comments_; }
  Qa::ErrorStatus setComments(const std::wstring& text);
  double patternLength() const { return patternLength_; }
  Qa::ErrorStatus setPatternLength(double length);
  const std::vector<double>& dashes() const { return dashes_; }
  Qa::ErrorStatus setDashes(std::vector<double> dashes);
  int numDashes() const { return static_cast<int>(dashes_.size()); }

 private:
  std::wstring comments_;
  double patternLength_ = 0.0;
  std::vector<double> dashes_;
};

QADB_DECLARE_SYMBOL_TABLE(QaDbLinetypeTable, QaDbLinetypeTableRecord)
