#include "drawing/text_fitting.h"

#include <string>

#include "card/fitting_prefix.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_text_style_table.h"
#include "host/gi/qagi_text_style.h"

double cellScale = 1.0;

namespace {

// A measurer in the attribute's font and height, at x scale `xScale`. A style that does
// not open measures with the default font.
QaGiTextStyle measurerFor(const QaDbAttribute& att, double xScale) {
  QaGiTextStyle style;
  fromQaDbTextStyle(att.textStyle(), style);
  style.setTextSize(att.height());
  style.setXScale(xScale);
  return style;
}

double cellWidth(const KrmAttSet& cell) { return cell.GetWidth() * cellScale; }

}  // namespace

double GetStyleXScale(QaDbObjectId style) {
  QaDbObjectPointer<QaDbTextStyleTableRecord> record(style, QaDb::kForRead);
  return record ? record->xScale() : 1.0;
}

int AlignCellText(QaDbAttribute& att, KrmAttSet& cell) {
  const QaDb::TextHorzMode mode = att.horizontalMode();
  const QaGePoint3d pos = att.position();
  const double w = cellWidth(cell);
  const double sx = GetStyleXScale(att.textStyle());
  const double tw = measurerFor(att, sx).width(att.textString());
  const bool multiLine = att.isMTextAttribute();

  if (multiLine) {
    QaDbExtents ext;
    if (att.getGeomExtents(ext) == Qa::eOk && !ext.isEmpty()) {
      const double half = (ext.maxPoint().x - ext.minPoint().x) * 0.5;
      att.setAlignmentPoint(QaGePoint3d(pos.x - half, pos.y, pos.z));
    }
  }

  if (tw > w && cell.GetRowType() == kKrmRowFit && !multiLine) {
    if (mode == QaDb::kTextCenter) {
      // The centre stays; the two fit points lie half a width to either side of it.
      att.setHorizontalMode(QaDb::kTextFit);
      QaGePoint3d a = att.alignmentPoint();
      a.x += w * 0.5;
      att.setAlignmentPoint(a);
      a.x -= w;
      att.setPosition(a);
    } else if (mode != QaDb::kTextFit) {
      att.setHorizontalMode(QaDb::kTextFit);
      QaGePoint3d p = att.position();
      p.x += w;
      att.setAlignmentPoint(p);
    }
    return 1;
  }

  att.setWidthFactor(sx);
  const std::wstring& align = cell.GetAlignType();
  if (align == L"CENTER") {
    att.setHorizontalMode(QaDb::kTextCenter);
    if (mode != QaDb::kTextCenter) att.setAlignmentPoint(QaGePoint3d(pos.x + w * 0.5, pos.y, pos.z));
  } else if (align == L"RIGHT") {
    att.setHorizontalMode(QaDb::kTextRight);
  } else {
    att.setHorizontalMode(QaDb::kTextLeft);
  }
  return 1;
}

int FitCellText(QaDbAttribute& att, KrmAttSet& cell) {
  std::wstring s = att.textString();
  const double w = cellWidth(cell);
  const bool newline = cell.GetRowType() == kKrmRowNewline;

  // A forced line break: the first line stays in this block, the rest goes on.
  std::size_t i = s.find(L"\r\n");
  if (i == std::wstring::npos) {
    i = s.find(L'\n');
    if (i != std::wstring::npos) s.insert(i, 1, L'\r');
  }
  if (i != std::wstring::npos) {
    const std::wstring first = s.substr(0, i) + L"\n";
    const double measure = measurerFor(att, GetStyleXScale(att.textStyle())).width(first);
    if (!(measure > w && newline)) {
      att.setTextString(first);
      cell.SetContent(first);
      AlignCellText(att, cell);
      cell.SetContent(s.substr(i + 2));
      return 0;
    }
    // The first line alone is too wide for a wrapping cell: the whole text is broken
    // below, the line break counting as a character of no width.
  }

  AlignCellText(att, cell);
  if (s.empty() || !newline) {
    cell.SetContent(L"");
    return 1;
  }

  // Measured with the attribute's own width factor, as it now stands; cut where paging
  // cuts when it counts the lines.
  const std::size_t n = FittingPrefixLength(s, w, measurerFor(att, att.widthFactor()));
  if (n == s.size()) {
    cell.SetContent(L"");
    return 1;
  }
  if (n == KrmFittingPrefix::kNothingFits) return 1;  // a negative width: leave it too wide

  // Cut from the attribute's own text, which the caller set from the cell's content.
  const std::wstring left = s.substr(0, n);
  const std::wstring rest = s.substr(n);
  att.setTextString(left);
  cell.SetContent(rest);
  return 0;
}
