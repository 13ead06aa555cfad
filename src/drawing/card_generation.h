// Card generation: turns a filled KrmCardData into pages of the current drawing. The
// pages are copies of the two table drawings (first page, then continuation pages as the
// rows demand), the rows are written into the row blocks of all pages one after the
// other, every entity is tagged with the card's record, and each page becomes one
// anonymous group. Entities stay in a pool owned by the call until they are appended.
#pragma once

#include <string>
#include <vector>

#include "drawing/data_sort.h"
#include "drawing/entity_list.h"
#include "host/db/qadb_object_id.h"

class KrmCardTemplate;
class KrmCardData;
struct KrmCardTag;
struct KrmDataGrid;
class KrmAttSet;
class QaDbAttribute;
class QaDbBlockReference;

// Places the card of `t` (insertion point and arrangement options set by the caller)
// filled with `d` in model space of the working database and appends the ids of its
// entities to `out`. Returns 1 when the card stands in the drawing, 0 otherwise (a
// template without exactly two tables, a first-page drawing that cannot be copied, or a
// page point the user cancelled; in that last case the pages made so far are erased).
int CreateCardPages(KrmCardTemplate& t, KrmCardData& d, std::vector<QaDbObjectId>& out);

// Gives every grid of `d` a new block-id slot and files there the block definitions of
// the references of `list` whose names (without the table prefix) match the grid.
void NoteBlockIds(const KrmEntityList& list, KrmCardData& d);

// Sorts one page's entities: references of the page-base class move from `list` to
// `rows` (sorted by the fill order), single-record references are filled with row 0 of
// their grid and those carrying the class, batch or batch-total numbers move to
// sorts[0..2]; other multi-record classes are filled here and tagged by their index.
// `sorts` gets its three fixed entries when empty.
void DistributeEntities(KrmEntityList& list, KrmCardData& d, KrmEntityList& rows, std::vector<KrmDataSort>& sorts,
                        KrmCardTag& tag);

// Writes the rows of `grid` into `refs` in order; a cell that does not fit hands the
// rest on to the next reference, whose record is marked as no record head. Overflow
// left when the references end is dropped; references past the last row get "".
void FillRowBlocks(const KrmDataGrid& grid, const KrmEntityList& refs);

// Writes each attribute of the reference `b` from the cell of `cells` whose show name
// equals its tag, leaving what did not fit in that cell. Returns 1 when every cell was
// written completely, else 0.
int FillRecordBlock(std::vector<KrmAttSet>& cells, QaDbEntity* b);

// Writes row `row` of `grid` into the attributes of the single-record reference `b`;
// what does not fit is dropped.
void FillSingleBlock(const KrmDataGrid& grid, QaDbEntity* b, int row);

// For each entry, fills its references (sorted by the grid's fill order) with the rows
// of the grid named by the entry's block name.
void FillSubGrids(const KrmCardData& d, std::vector<KrmDataSort>& subs);

// Numbers the references of sorts[0] in attribute `classAtt` and of sorts[1] in
// `batchAtt`, from `start` by `step`, in order.
void WritePageNumbers(const std::vector<KrmDataSort>& sorts, const std::wstring& classAtt,
                      const std::wstring& batchAtt, int start, int step);

// Writes `text` into every attribute of the reference whose tag is `name` (restoring
// multi-line attributes first). The reference may be in memory or open for write.
// Returns the number of attributes written.
int WriteAttributeByTag(QaDbBlockReference& reference, const std::wstring& name, const std::wstring& text);
