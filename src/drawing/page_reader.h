// Reading a placed card back from the drawing: its page groups, and on each page the
// block references filed by class, in row order, with their cell texts. Objects that do
// not open, or are of another class, are skipped silently.
#pragma once

#include <string>

#include "drawing/placed_card.h"

class QaDbBlockReference;
class QaDbDatabase;

// A page record with no entities: the base class and one class per entry of otherGrids,
// as `card` describes them.
KrmLoadGroup BlankPageOf(const KrmPlacedCard& card);

// Appends one page per group of `database` whose card record carries `cardCode`
// (groups without a card record never match), with the classes of `card` (base fields
// and otherGrids), sorts the pages by pageIndex (stable), then reads each page's
// contents and drops pages that have none left. Returns the number of pages kept.
int ReadPageGroups(QaDbDatabase& database, const std::wstring& cardCode, KrmPlacedCard& card);
// The same on the working database; 0 when there is none.
int ReadPageGroups(const std::wstring& cardCode, KrmPlacedCard& card);

// Files every live entity of the page's group: block references through ReadCellBlock,
// everything else into otherIds; then puts each class's refs in ascending rowIndex
// (stable). Returns 0 when the group does not open or has no live entities, else 1.
int ReadGroupContents(KrmLoadGroup& page);

// Files one reference: under the page-base class when its name without prefix matches
// the page's blockName, else under the first other class whose name matches, else into
// otherIds. rowIndex and recordHead come from the reference's card record; position
// stays at the origin. Returns 1 when filed under a class, 0 otherwise.
int ReadCellBlock(const QaDbBlockReference& reference, KrmLoadGroup& page);

// Sorts the refs of a class by fill-order `code` 0..3 on their positions; any other code
// keeps the order. Returns 0 for a class without refs, else 1.
int SortLoadAttsByOrder(KrmLoadTAtt& cls, int code);
