#include "editor/cell_landing.h"

#include "drawing/text_fitting.h"
#include "host/db/qadb_attribute.h"
#include "host/rx/qa_lang_resource.h"

namespace {

// A text of many lines stops being counted here: the answer is only a warning.
constexpr int kMaxCountedBlocks = 999;

}  // namespace

KrmCellLanding MeasureCellLanding(const KrmAttSet& cell, const std::wstring& text, QaDbObjectId style) {
  KrmCellLanding landing;
  if (text.empty()) return landing;
  QaDbAttribute att(QaGePoint3d(0, 0, 0), text, cell.GetInName(), style);
  att.setHeight(cell.GetHeight() > 0 ? cell.GetHeight() : 2.5);
  KrmAttSet working = cell;
  working.SetContent(text);
  // Every row block takes what fits (or the first of several lines) and hands the rest
  // on, as generation does.
  int blocks = 1;
  while (FitCellText(att, working) == 0 && blocks < kMaxCountedBlocks) {
    ++blocks;
    att.setTextString(working.GetContent());
  }
  if (blocks > 1) {
    landing.kind = KrmCellLanding::Kind::kRowBlocks;
    landing.rowBlocks = blocks;
  } else if (cell.GetRowType() == kKrmRowFit && att.horizontalMode() == QaDb::kTextFit) {
    landing.kind = KrmCellLanding::Kind::kSqueezed;
  }
  return landing;
}

std::wstring DescribeCellLanding(const KrmCellLanding& landing) {
  switch (landing.kind) {
    case KrmCellLanding::Kind::kSqueezed:
      return KrmLoadString(431, L"文字将被压缩到单元格宽度");
    case KrmCellLanding::Kind::kRowBlocks: {
      std::wstring line = KrmLoadString(432, L"文字将占 %d 行");
      const auto at = line.find(L"%d");
      if (at != std::wstring::npos) line.replace(at, 2, std::to_wstring(landing.rowBlocks));
      return line;
    }
    case KrmCellLanding::Kind::kAsIs:
      break;
  }
  return L"";
}
