// Writing the rows of a placed card that changed: the row blocks of the page base with
// their overflow, the references of the other classes, and the page numbers. The
// read-back records of the card are kept in step with what is written, so that one
// placed card can be updated again and again (the editor's automatic update does).
#include <cstddef>
#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "drawing/block_texts.h"
#include "drawing/card_generation.h"
#include "drawing/card_tag.h"
#include "drawing/cell_descriptor.h"
#include "drawing/mtext_attribute.h"
#include "drawing/placed_card_update.h"
#include "drawing/text_fitting.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"

namespace {

// The texts of record `row` of `grid`, one per column; none past the last row.
std::vector<std::wstring> RecordTexts(const KrmDataGrid& grid, int row) {
  std::vector<std::wstring> texts;
  if (row < 0 || row >= grid.RowCount()) return texts;
  texts.reserve(grid.cols.size());
  for (const KrmDataTCol& col : grid.cols) {
    texts.push_back(static_cast<std::size_t>(row) < col.values.size() ? col.values[static_cast<std::size_t>(row)]
                                                                       : std::wstring());
  }
  return texts;
}

bool AllEmpty(const std::vector<std::wstring>& texts) {
  for (const std::wstring& text : texts) {
    if (!text.empty()) return false;
  }
  return true;
}

// Index of the first column whose in-name or show name is `name`, or -1.
int ColumnNamed(const KrmDataGrid& grid, const std::wstring& name) {
  for (std::size_t c = 0; c < grid.cols.size(); ++c) {
    const KrmAttSet& att = grid.cols[c].att;
    if (att.GetInName() == name || att.GetShowName() == name) return static_cast<int>(c);
  }
  return -1;
}

// Sets the record-head flag of the reference's card record; nothing when it has it.
void SetRecordHead(QaDbBlockReference& reference, KrmLoadAtt& att, int head) {
  KrmCardTag tag;
  ReadCardTagOfEntity(&reference, tag);
  if (tag.recordHead != head) {
    tag.recordHead = head;
    WriteCardTagOfEntity(&reference, tag);
  }
  att.recordHead = head;
}

// Empties the reference's texts and makes it a record head again, when it is not so yet.
// Returns whether anything was written.
bool BlankBlock(KrmLoadAtt& att) {
  if (AllEmpty(att.texts) && att.recordHead != 0) return false;
  if (ClearAttributes(att.refId) == 0) return false;
  QaDbObjectPointer<QaDbBlockReference> reference(att.refId, QaDb::kForWrite);
  if (reference) SetRecordHead(*reference, att, 1);
  for (std::wstring& text : att.texts) text.clear();
  return true;
}

// The class of `page` that the grid `name` fills: none, the base class, or another one.
KrmLoadTAtt* ClassOfGrid(KrmLoadGroup& page, const std::wstring& name) {
  if (BlockNamesMatch(page.blockName, name)) return &page;
  for (KrmLoadTAtt& cls : page.otherClasses) {
    if (BlockNamesMatch(cls.blockName, name)) return &cls;
  }
  return nullptr;
}

}  // namespace

int RewriteRowCells(const KrmDataGrid& grid, QaDbObjectId referenceId, int row) {
  std::vector<QaDbObjectId> ids;
  {
    QaDbObjectPointer<QaDbBlockReference> reference(referenceId, QaDb::kForRead);
    if (!reference) return 0;
    ids = reference->attributeIds();
  }
  QaDbObjectPointer<QaDbBlockReference> reference(referenceId, QaDb::kForRead);
  for (const QaDbObjectId& id : ids) {
    QaDbObjectPointer<QaDbAttribute> att(id, QaDb::kForWrite);
    if (!att) continue;
    int col = ColumnNamed(grid, att->tag());
    if (col < 0) {
      KrmAttSet definition;
      ReadCellDefinition(*att, definition);
      col = ColumnNamed(grid, definition.GetInName());
    }
    KrmAttSet cell = col < 0 ? KrmAttSet() : grid.cols[static_cast<std::size_t>(col)].att;
    RestoreMTextAttribute(*reference, *att);
    att->setTextString(col < 0 ? std::wstring() : grid.GetCell(row, col));
    AlignCellText(*att, cell);
  }
  return 1;
}

int RewriteBaseRows(const KrmDataGrid& oldGrid, const KrmDataGrid& newGrid, KrmPlacedCard& card) {
  std::vector<KrmAttSet> cells;
  cells.reserve(newGrid.cols.size());
  for (const KrmDataTCol& col : newGrid.cols) cells.push_back(col.att);
  const int records = newGrid.RowCount();

  int written = 0;
  int base = 0;
  bool head = true;     // the block in hand starts a record in the new layout
  bool forced = false;  // the drawing's record boundaries no longer line up with the new data
  bool wrote = false;   // the block before this one was written in this pass
  for (KrmLoadGroup& page : card.pages) {
    const int count = static_cast<int>(page.refs.size());
    for (int j = 0; j < count; ++j) {
      KrmLoadAtt& att = page.refs[static_cast<std::size_t>(j)];
      const int rec = base + j;
      const bool drawnHead = att.recordHead != 0;
      if (head && wrote && !drawnHead) {
        // A new record lands where the drawing continues an old one.
        forced = true;
      } else if (!head && drawnHead) {
        // The new overflow runs into a block where the drawing starts a record.
        forced = true;
      } else if (!forced && !wrote && !drawnHead) {
        // The overflow of an unchanged record: it uses up no record.
        --base;
        continue;
      }

      const std::vector<std::wstring> next = RecordTexts(newGrid, rec);
      if (!forced && head) {
        const std::vector<std::wstring> before = RecordTexts(oldGrid, rec);
        // Unchanged; an empty slot behind the last record counts as unchanged when the
        // block shows nothing.
        if ((!before.empty() && before == next) || (before.empty() && next.empty() && AllEmpty(att.texts))) {
          wrote = false;
          continue;
        }
      }

      if (next.empty() && head) {
        if (BlankBlock(att)) ++written;
        wrote = false;
        continue;
      }

      QaDbObjectPointer<QaDbBlockReference> reference(att.refId, QaDb::kForWrite);
      if (!reference) continue;  // its row keeps its old text
      if (head) {
        for (std::size_t c = 0; c < cells.size(); ++c) cells[c].SetContent(next[c]);
      }
      SetRecordHead(*reference, att, head ? 1 : 0);
      if (FillRecordBlock(cells, reference.object()) == 1) {
        head = true;
      } else {
        head = false;
        --base;
      }
      att.texts = ReadBlockTexts(*reference, page.colNames);
      ++written;
      if (rec >= records) break;
      wrote = true;
    }
    base += count;
  }
  return written;
}

int RewriteClassRows(const KrmDataGrid& oldGrid, const KrmDataGrid& newGrid, KrmPlacedCard& card) {
  int written = 0;
  for (KrmLoadGroup& page : card.pages) {
    KrmLoadTAtt* cls = nullptr;
    for (KrmLoadTAtt& other : page.otherClasses) {
      if (BlockNamesMatch(other.blockName, newGrid.blockName)) {
        cls = &other;
        break;
      }
    }
    if (cls == nullptr) continue;
    for (std::size_t j = 0; j < cls->refs.size(); ++j) {
      KrmLoadAtt& att = cls->refs[j];
      const std::vector<std::wstring> next = RecordTexts(newGrid, static_cast<int>(j));
      const std::vector<std::wstring> before = RecordTexts(oldGrid, static_cast<int>(j));
      if (!before.empty() && before == next) continue;
      if (next.empty()) {
        if (BlankBlock(att)) ++written;
        continue;
      }
      if (RewriteRowCells(newGrid, att.refId, static_cast<int>(j)) == 0) continue;
      QaDbObjectPointer<QaDbBlockReference> reference(att.refId, QaDb::kForRead);
      if (reference) att.texts = ReadBlockTexts(*reference, cls->colNames);
      ++written;
    }
  }
  return written;
}

int RewritePageNumber(const KrmDataGrid& grid, KrmPlacedCard& card, const KrmCardData& data, int column) {
  if (column < 0 || static_cast<std::size_t>(column) >= grid.cols.size()) return 1;
  const std::wstring& name = grid.cols[static_cast<std::size_t>(column)].att.GetShowName();
  for (std::size_t p = 0; p < card.pages.size(); ++p) {
    KrmLoadTAtt* cls = ClassOfGrid(card.pages[p], grid.blockName);
    if (cls == nullptr) continue;
    const std::wstring text = std::to_wstring(data.PageStep() * static_cast<int>(p) + data.PageStartCur());
    for (KrmLoadAtt& att : cls->refs) {
      const std::size_t c = static_cast<std::size_t>(column);
      if (c < att.texts.size() && att.texts[c] == text) continue;  // stands there already
      QaDbObjectPointer<QaDbBlockReference> reference(att.refId, QaDb::kForWrite);
      if (!reference) continue;
      WriteAttributeByTag(*reference, name, text);
      if (c < att.texts.size()) att.texts[c] = text;
    }
  }
  return 1;
}

int RewriteTexts(KrmCardData& oldData, KrmCardData& newData, KrmPlacedCard& card, KrmUpdateStats* stats) {
  std::vector<std::wstring> names;
  newData.GetGridNames(names);
  for (std::size_t i = 0; i < names.size(); ++i) {
    KrmDataGrid n;
    newData.GetGridAt(static_cast<int>(i), n);
    KrmDataGrid o;
    oldData.GetGridByName(names[i], o);
    if (static_cast<int>(i) == newData.GetBaseGrid()) {
      const int written = RewriteBaseRows(o, n, card);
      if (stats != nullptr) stats->rowBlocksWritten += written;
      continue;
    }
    const int written = RewriteClassRows(o, n, card);
    if (stats != nullptr) stats->classRowsWritten += written;
    int classGrid = -1, classCol = -1, batchGrid = -1, batchCol = -1;
    newData.GetClassCurCell(classGrid, classCol);
    newData.GetBatchCurCell(batchGrid, batchCol);
    KrmDataGrid numbered;
    if (newData.GetGridAt(classGrid, numbered) == 1) RewritePageNumber(numbered, card, newData, classCol);
    if ((batchGrid != classGrid || batchCol != classCol) && newData.GetGridAt(batchGrid, numbered) == 1) {
      RewritePageNumber(numbered, card, newData, batchCol);
    }
  }
  return 1;
}
