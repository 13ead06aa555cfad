// The measurer read from a drawing's text style record, and the hook through which the
// drawing database measures the texts of its entities.
#include "host/db/qadb_open.h"
#include "host/db/qadb_text_measure.h"
#include "host/db/qadb_text_style_table.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "host/gi/qagi_text_style.h"

Qa::ErrorStatus fromQaDbTextStyle(QaDbObjectId style, QaGiTextStyle& out) {
  QaDbObjectPointer<QaDbTextStyleTableRecord> record(style, QaDb::kForRead);
  if (record.openStatus() != Qa::eOk) return record.openStatus();

  QaGiTextStyle result = out;
  result.setStyleName(record->getName());
  result.setFileName(record->fileName());
  // A TrueType typeface kept with the style names the font better than the file does.
  if (!record->typeface().empty()) result.setFont(record->typeface(), false, false, 0, 0);
  result.setBigFontFileName(record->bigFontFileName());
  result.setXScale(record->xScale());
  result.setObliquingAngle(record->obliquingAngle());
  if (record->textSize() > 0.0) result.setTextSize(record->textSize());
  out = result;
  return Qa::eOk;
}

double qagiTextWidth(const std::wstring& text, QaDbObjectId style, double height, double widthFactor) {
  QaGiTextStyle measurer;
  // A style that does not open measures with the default font.
  fromQaDbTextStyle(style, measurer);
  measurer.setTextSize(height);
  measurer.setXScale(widthFactor);
  return measurer.width(text);
}
