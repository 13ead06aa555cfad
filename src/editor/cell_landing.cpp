#include "editor/cell_landing.h"

#include <memory>
#include <optional>

#include "card/card_template.h"
#include "drawing/block_names.h"
#include "drawing/text_fitting.h"
#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "host/rx/qa_lang_resource.h"

namespace {

// A text of many lines stops being counted here: the answer is only a warning.
constexpr int kMaxCountedBlocks = 999;

// The look of the definition tagged `tag` in `block`; nothing when it has none.
std::optional<KrmCellLook> LookInBlock(QaDbObjectId block, const std::wstring& tag) {
  QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForRead);
  if (!record) return std::nullopt;
  std::unique_ptr<QaDbBlockTableRecordIterator> it = record->newIterator();
  for (it->start(); !it->done(); it->step()) {
    QaDbObjectPointer<QaDbAttributeDefinition> def(it->entityId(), QaDb::kForRead);
    if (!def || def->tag() != tag) continue;
    return KrmCellLook{def->textStyle(), def->widthFactor(), def->oblique(), def->height()};
  }
  return std::nullopt;
}

}  // namespace

KrmCellLook FindCellLook(const KrmDataGrid& grid, const KrmAttSet& cell, QaDbDatabase* db) {
  KrmCellLook look;
  if (db == nullptr) return look;
  for (QaDbObjectId block : grid.blockIds) {
    if (block.isNull()) continue;
    if (auto found = LookInBlock(block, cell.GetInName())) return *found;
  }
  QaDbObjectPointer<QaDbBlockTable> blocks(db->blockTableId(), QaDb::kForRead);
  if (blocks) {
    std::unique_ptr<QaDbSymbolTableIterator> it = blocks->newIterator();
    for (it->start(); !it->done(); it->step()) {
      const QaDbObjectId block = it->getRecordId();
      if (!BlockNamesMatch(StripBlockPrefix(GetBlockName(block)), grid.blockName)) continue;
      if (auto found = LookInBlock(block, cell.GetInName())) return *found;
    }
  }
  QaDbObjectPointer<QaDbTextStyleTable> styles(db->textStyleTableId(), QaDb::kForRead);
  if (styles) look.style = styles->getAt(L"Standard");
  return look;
}

KrmCellLanding MeasureCellLanding(const KrmAttSet& cell, const std::wstring& text, const KrmCellLook& look) {
  KrmCellLanding landing;
  if (text.empty()) return landing;
  QaDbAttribute att(QaGePoint3d(0, 0, 0), text, cell.GetInName(), look.style);
  att.setHeight(look.height > 0 ? look.height : cell.GetHeight() > 0 ? cell.GetHeight() : 2.5);
  if (look.widthFactor > 0) att.setWidthFactor(look.widthFactor);
  att.setOblique(look.oblique);
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
