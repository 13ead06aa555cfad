// Sorting the entities of one copied table page into the classes of the card: row
// blocks of the page base, the references that carry page numbers, and the rest.
#include <cstddef>
#include <unordered_set>
#include <vector>

#include "card/card_data.h"
#include "card/data_grid.h"
#include "drawing/block_names.h"
#include "drawing/card_generation.h"
#include "drawing/card_tag.h"
#include "drawing/page_placer.h"
#include "host/db/qadb_block_reference.h"

void NoteBlockIds(const KrmEntityList& list, KrmCardData& d) {
  d.AddNullBlockIds();
  std::unordered_set<QaDbObjectId> seen;
  for (QaDbEntity* entity : list) {
    const auto* reference = QaDbBlockReference::cast(entity);
    if (reference == nullptr) continue;
    const QaDbObjectId block = reference->blockTableRecord();
    if (!seen.insert(block).second) continue;
    const int g = d.FindGridLike(StripBlockPrefix(GetBlockName(block)));
    if (g != -1) d.AddBlockId(g, block);
  }
}

void DistributeEntities(KrmEntityList& list, KrmCardData& d, KrmEntityList& rows, std::vector<KrmDataSort>& sorts,
                        KrmCardTag& tag) {
  int classGrid = -1, batchGrid = -1, sumGrid = -1, col = -1;
  d.GetClassCurCell(classGrid, col);
  d.GetBatchCurCell(batchGrid, col);
  d.GetBatchSumCell(sumGrid, col);
  if (sorts.empty()) {
    for (int grid : {classGrid, batchGrid, sumGrid}) sorts.push_back(KrmDataSort{{}, grid, L""});
  }
  const int base = d.GetBaseGrid();
  std::vector<KrmDataSort> subs;
  std::size_t i = 0;
  while (i < list.size()) {
    auto* reference = QaDbBlockReference::cast(list[i]);
    const int g = reference == nullptr ? -1 : d.FindGridOfBlock(reference->blockTableRecord());
    if (g == -1) {
      ++i;
      continue;
    }
    if (g == base) {
      rows.push_back(list[i]);
      list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
      continue;
    }
    if (d.GetRowsFirst(g) < 2) {
      KrmDataGrid grid;
      d.GetGridAt(g, grid);
      FillSingleBlock(grid, reference, 0);
      const int slot = g == classGrid ? 0 : g == batchGrid ? 1 : g == sumGrid ? 2 : -1;
      if (slot >= 0) {
        sorts[static_cast<std::size_t>(slot)].refs.push_back(list[i]);
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
        continue;
      }
      ++i;
      continue;
    }
    KrmDataSort* entry = nullptr;
    for (KrmDataSort& sub : subs) {
      if (QaDbBlockReference::cast(sub.refs.front())->blockTableRecord() == reference->blockTableRecord()) {
        entry = &sub;
        break;
      }
    }
    if (entry == nullptr) {
      KrmDataGrid grid;
      d.GetGridAt(g, grid);
      subs.push_back(KrmDataSort{{}, -1, grid.blockName});
      entry = &subs.back();
    }
    entry->refs.push_back(list[i]);
    ++i;
  }
  SortRefsByFillOrder(rows, d.GetFillOrder(base));
  FillSubGrids(d, subs);
  for (const KrmDataSort& sub : subs) {
    for (std::size_t k = 0; k < sub.refs.size(); ++k) {
      if (HasCardTag(sub.refs[k])) continue;
      tag.entityKind = 0;
      tag.entityIndex = static_cast<int>(k);
      WriteCardTagOfEntity(sub.refs[k], tag);
    }
  }
}
