// Text styles (STYLE table): font file, big font file, fixed text size (0 for none),
// width factor (xScale), oblique angle, generation flags.
#pragma once

#include "host/db/qadb_symbol_table.h"

class QaDbTextStyleTableRecord : public QaDbSymbolTableRecord {
  QADB_DECLARE_MEMBERS(QaDbTextStyleTableRecord)

 public:
  // Style flags (group 70) beyond the standard ones.
  enum StyleFlags { kShapeFile = 1, kVertical = 4 };

  QaDbTextStyleTableRecord() = default;
  explicit QaDbTextStyleTableRecord(const std::wstring& name) : QaDbSymbolTableRecord(name) {}

  const std::wstring& fileName() const { return fileName_; }
  Qa::ErrorStatus setFileName(const std::wstring& name);
  const std::wstring& bigFontFileName() const { return bigFontFileName_; }
  Qa::ErrorStatus setBigFontFileName(const std::wstring& name);
  double textSize() const { return textSize_; }
  Qa::ErrorStatus setTextSize(double size);  // eInvalidInput for size < 0
  double xScale() const { return xScale_; }
  Qa::ErrorStatus setXScale(double scale);  // eInvalidInput for scale <= 0
  double obliquingAngle() const { return oblique_; }
  Qa::ErrorStatus setObliquingAngle(double angle);
  double priorSize() const { return priorSize_; }
  Qa::ErrorStatus setPriorSize(double size);
  // Generation flags (group 71): 2 backwards, 4 upside down.
  int textGenerationFlags() const { return generationFlags_; }
  Qa::ErrorStatus setTextGenerationFlags(int flags);
  bool isShapeFile() const { return (flags() & kShapeFile) != 0; }
  bool isVertical() const { return (flags() & kVertical) != 0; }
  // TrueType typeface from the extended data the drawing keeps (may be empty).
  const std::wstring& typeface() const { return typeface_; }
  Qa::ErrorStatus setTypeface(const std::wstring& name);

 private:
  std::wstring fileName_ = L"txt";
  std::wstring bigFontFileName_;
  double textSize_ = 0.0;
  double xScale_ = 1.0;
  double oblique_ = 0.0;
  double priorSize_ = 2.5;
  int generationFlags_ = 0;
  std::wstring typeface_;
};

QADB_DECLARE_SYMBOL_TABLE(QaDbTextStyleTable, QaDbTextStyleTableRecord)
