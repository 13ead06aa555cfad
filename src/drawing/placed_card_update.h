// Bringing a placed card in line with edited data: the page records get the new
// numbering, pages are added behind the last one or cut from the end, and only the rows
// that differ between the old and the new data are written again, so that what was
// edited by hand on unchanged rows stays. Blocks keep their place, tags and page; only
// texts change. The drawing owns every entity; the placed card is updated in step.
#pragma once

#include <string>
#include <vector>

#include "drawing/placed_card.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_vector3d.h"

class KrmCardTemplate;
class KrmCardData;
struct KrmCardTag;
struct KrmDataGrid;

// What one update wrote, for callers that want to know (tests, benchmarks).
struct KrmUpdateStats {
  int rowBlocksWritten = 0;   // row blocks of the page base whose texts were written or cleared
  int classRowsWritten = 0;   // references of other classes written or cleared
  int pagesAdded = 0;
  int pagesCut = 0;
};

// Brings the drawing from `oldData` to `newData`: writes the numbering of `newData` on
// every page group, adds or cuts pages for the rows `newData` needs, rewrites the rows
// that changed and the page numbers, then moves the pages when the template asks for a
// new arrangement. Returns 1, or 0 when a point was cancelled while pages were moved
// (texts and pages are updated then).
int UpdatePlacedCard(KrmCardTemplate& cardTemplate, KrmCardData& oldData, KrmCardData& newData,
                     KrmPlacedCard& card, KrmUpdateStats* stats = nullptr);

// Adds pages behind the last one until the base class has at least `needed` row blocks:
// a card of one page first gets a page copied from the continuation table's side
// drawing, every further page is a clone of the last page. Returns 1, or 0 when the last
// page has no row block to count by.
int AddPages(KrmPlacedCard& card, KrmCardTemplate& cardTemplate, int needed, KrmCardData& newData,
             KrmUpdateStats* stats = nullptr);

// Keeps the pages up to the one whose row blocks reach `needed` (the first page always)
// and erases the entities of all pages behind it; their groups stay empty. Returns the
// number of pages cut.
int CutPages(KrmPlacedCard& card, int needed);

// A copy of the page `source` moved by `vector`: every reference and other entity cloned
// into model space with its texts and tags; the page index and group record from `tag`
// (its entityIndex is the new page index).
KrmLoadGroup ClonePageRecord(const KrmLoadGroup& source, const QaGeVector3d& vector, const KrmCardTag& tag);

// Writes the rows that differ between `oldData` and `newData` grid by grid, and the page
// numbers after every grid that is not the page base. Returns 1.
int RewriteTexts(KrmCardData& oldData, KrmCardData& newData, KrmPlacedCard& card, KrmUpdateStats* stats = nullptr);

// The row blocks of the page base: an unchanged record is passed over while the overflow
// of the drawing still lines up with the new data; from the first place where it does
// not, every following row block is written. Blocks behind the last record are cleared.
// Returns the number of row blocks written.
int RewriteBaseRows(const KrmDataGrid& oldGrid, const KrmDataGrid& newGrid, KrmPlacedCard& card);

// The references of another class on every page: those whose row changed are written
// (aligned, no overflow), those whose row is gone are cleared. Returns the number written.
int RewriteClassRows(const KrmDataGrid& oldGrid, const KrmDataGrid& newGrid, KrmPlacedCard& card);

// Writes row `row` of `grid` into the attributes of the resident reference
// `referenceId` by column name, aligned in their cells; what does not fit stays as it
// is written. Returns 0 when the reference does not open, else 1.
int RewriteRowCells(const KrmDataGrid& grid, QaDbObjectId referenceId, int row);

// Writes step * page + startCur into the column `column` of the class of `grid` on every
// page. Returns 1.
int RewritePageNumber(const KrmDataGrid& grid, KrmPlacedCard& card, const KrmCardData& data, int column);

// Moves the pages when the template asks for it: nothing without rearrange; with
// automatic arrangement the pages are laid out again from one new point with the first
// page's size as module; otherwise each page is moved to a point of its own. Returns 0
// when the user cancels a point, else 1.
int MovePlacedCard(KrmCardTemplate& cardTemplate, KrmPlacedCard& card);
