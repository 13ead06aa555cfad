// Reading a placed card's data back out of the drawing: the descriptors of its classes
// taken from the card data, and the rows of every grid rebuilt from the texts of the row
// blocks, rows that overflowed onto following blocks joined again. The inverse of what
// generation wrote; only the group records, the entity tags and the attribute texts are
// used. Works on plain values; the drawing is read through the ids of the pages.
#pragma once

#include <memory>
#include <string>

#include "card/card_data.h"
#include "card/card_template.h"
#include "drawing/placed_card.h"
#include "host/svc/result.h"

struct KrmDataGrid;
class QaDbDatabase;

// Fills the descriptors of `card` from the grids of `data`: the base grid's name, column
// show names and fill order, and one KrmLoadGrid per other grid, in grid order. The
// pages and the card code are left alone. Returns 1.
int LoadPlacedCard(KrmCardData& data, KrmPlacedCard& card);

// Fills the grids of `data` from the pages of `card`: the base grid over all pages, every
// other grid from the first page alone. Returns 0 when the card has no pages, else 1.
int ReadPlacedCardData(KrmPlacedCard& card, KrmCardData& data);

// Replaces the values of `grid` with the records of the base class over all pages: a row
// block that heads a record starts a row, one that does not is appended to the row before
// it without a separator. A trailing "\n" that overflow left is restored to "\r\n".
// Returns 1.
int ReadBaseGridRows(const KrmPlacedCard& card, KrmDataGrid& grid);

// Replaces the values of `grid` with the texts of the references of its class on `page`
// (the class whose block name equals the grid's exactly), at most rowsFirst of them,
// without regard to record heads. Returns 1.
int ReadOtherGridRows(const KrmLoadGroup& page, KrmDataGrid& grid);

// One placed card opened for editing: its template, its data as the drawing holds it
// (numbering options from the first page's record, trailing empty rows trimmed), and its
// read-back pages. Owns the template.
struct KrmOpenedCard {
  std::unique_ptr<KrmCardTemplate> cardTemplate;
  KrmCardData data;
  KrmPlacedCard card;
};

// Opens the card `cardCode` of `database` (the working database when null) whose
// template is the card file `path`: loads the template, builds the data from it, reads
// the pages and their rows. An error names the template file when it cannot be loaded,
// and the card code when no page of it is left in the drawing.
tabulon::Result<KrmOpenedCard> OpenPlacedCard(const std::wstring& path, const std::wstring& cardCode,
                                              QaDbDatabase* database = nullptr);
