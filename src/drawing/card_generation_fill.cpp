// Writing cell texts into the block references of a card being generated: row blocks
// with overflow, single-record blocks, other multi-record classes and page numbers.
#include <cstddef>
#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/data_grid.h"
#include "drawing/card_generation.h"
#include "drawing/card_tag.h"
#include "drawing/cell_descriptor.h"
#include "drawing/mtext_attribute.h"
#include "drawing/page_placer.h"
#include "drawing/text_fitting.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"

namespace {

// Calls `fn` with each attribute of the reference, writable: in memory as they are,
// resident ones opened for write for the call. Attributes that do not open are skipped.
template <class Fn>
void ForEachWritableAttribute(const QaDbBlockReference& reference, Fn fn) {
  for (auto it = reference.attributeIterator(); !it->done(); it->step()) {
    if (it->objectId().isNull()) {
      if (auto* att = QaDbAttribute::cast(it->entity())) fn(*att);
      continue;
    }
    QaDbObjectPointer<QaDbAttribute> att(it->objectId(), QaDb::kForWrite);
    if (att) fn(*att);
  }
}

// Index of the first column whose in-name or show name is `name`, or -1.
int ColumnNamed(const KrmDataGrid& grid, const std::wstring& name) {
  for (std::size_t c = 0; c < grid.cols.size(); ++c) {
    const KrmAttSet& att = grid.cols[c].att;
    if (att.GetInName() == name || att.GetShowName() == name) return static_cast<int>(c);
  }
  return -1;
}

}  // namespace

int WriteAttributeByTag(QaDbBlockReference& reference, const std::wstring& name, const std::wstring& text) {
  int written = 0;
  ForEachWritableAttribute(reference, [&](QaDbAttribute& att) {
    if (att.tag() != name) return;
    RestoreMTextAttribute(reference, att);
    att.setTextString(text);
    ++written;
  });
  return written;
}

int FillRecordBlock(std::vector<KrmAttSet>& cells, QaDbEntity* b) {
  auto* reference = QaDbBlockReference::cast(b);
  if (reference == nullptr) return 1;
  int all = 1;
  ForEachWritableAttribute(*reference, [&](QaDbAttribute& att) {
    const std::wstring tag = att.tag();
    for (KrmAttSet& cell : cells) {
      if (cell.GetShowName() != tag) continue;
      KrmAttSet copy = cell;
      RestoreMTextAttribute(*reference, att);
      att.setTextString(copy.GetContent());
      if (FitCellText(att, copy) != 1) all = 0;
      cell = copy;
      break;
    }
  });
  return all;
}

void FillRowBlocks(const KrmDataGrid& grid, const KrmEntityList& refs) {
  std::vector<KrmAttSet> cells;
  cells.reserve(grid.cols.size());
  for (const KrmDataTCol& col : grid.cols) cells.push_back(col.att);
  int row = 0;
  bool head = true;
  for (QaDbEntity* b : refs) {
    if (head) {
      if (cells.size() == grid.cols.size()) {
        for (std::size_t c = 0; c < cells.size(); ++c) cells[c].SetContent(grid.GetCell(row, static_cast<int>(c)));
      }
      ++row;
    } else if (b != nullptr) {
      KrmCardTag tag;
      ReadCardTagOfEntity(b, tag);
      tag.recordHead = 0;
      WriteCardTagOfEntity(b, tag);
    }
    head = FillRecordBlock(cells, b) == 1;
  }
}

void FillSingleBlock(const KrmDataGrid& grid, QaDbEntity* b, int row) {
  auto* reference = QaDbBlockReference::cast(b);
  if (reference == nullptr) return;
  ForEachWritableAttribute(*reference, [&](QaDbAttribute& att) {
    int col = ColumnNamed(grid, att.tag());
    if (col < 0) {
      KrmAttSet definition;
      ReadCellDefinition(att, definition);
      col = ColumnNamed(grid, definition.GetInName());
    }
    KrmAttSet cell = col < 0 ? KrmAttSet() : grid.cols[static_cast<std::size_t>(col)].att;
    RestoreMTextAttribute(*reference, att);
    att.setTextString(col < 0 ? std::wstring() : grid.GetCell(row, col));
    FitCellText(att, cell);
  });
}

void FillSubGrids(const KrmCardData& d, std::vector<KrmDataSort>& subs) {
  for (KrmDataSort& entry : subs) {
    KrmDataGrid grid;
    if (d.GetGridByName(entry.blockName, grid) != 1) continue;
    SortRefsByFillOrder(entry.refs, grid.fillOrder);
    FillRowBlocks(grid, entry.refs);
  }
}

void WritePageNumbers(const std::vector<KrmDataSort>& sorts, const std::wstring& classAtt,
                      const std::wstring& batchAtt, int start, int step) {
  for (std::size_t k = 0; k < sorts.size() && k < 2; ++k) {
    const std::wstring& name = k == 0 ? classAtt : batchAtt;
    int n = start;
    for (QaDbEntity* entity : sorts[k].refs) {
      if (auto* reference = QaDbBlockReference::cast(entity)) {
        WriteAttributeByTag(*reference, name, std::to_wstring(n));
      }
      n += step;
    }
  }
}
