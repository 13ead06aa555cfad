// Rows that other programs and data files give for a block class, put into the card
// data of a placed card: the checks that name what does not fit the card, and the page
// numbers that follow from the new row count.
#pragma once

#include <string>

#include "card/table_rows.h"
#include "host/svc/result.h"

class KrmCardData;

// Replaces the rows of the grid named `block` with `rows`: each column takes the row's
// entry under its in-name when that is not empty, else under its show name, else "".
// Errors (the data left as it was): the card has no grid of that name; a row names a
// column the grid does not have (the field names it, the line is the row's, from 1).
tabulon::Status SetBlockRows(KrmCardData& data, const std::wstring& block, const KrmTableRows& rows);

// The pages that the page-base rows of `data` need.
int PagesNeeded(const KrmCardData& data);

// Writes the class and batch numbers of the first page, and the totals, for the pages
// the page-base rows now need.
void RenumberPages(KrmCardData& data);
