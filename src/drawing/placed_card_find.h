// Finding a placed card in the drawing: by the user's pick, by a point, or by its code,
// and from there its template in the card library.
#pragma once

#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/result.h"

class QaDbDatabase;

// Asks the user to pick the entity to edit. Returns its id when a block reference was
// picked, else the null id (also on cancel).
QaDbObjectId PickCardEntity(QaDbObjectId& out);

// Prints `prompt`, then runs the host's selection without a filter. The selected ids, or
// none when the selection did not end normally.
std::vector<QaDbObjectId> PickEntities(const std::wstring& prompt);

// The block reference of model space of `database` (the working database when null)
// that carries a card record and whose extents hold `point`; among several, the one with
// the smallest extents. The null id when there is none.
QaDbObjectId FindCardReferenceAt(const QaGePoint3d& point, QaDbDatabase* database = nullptr);

// A placed card as found: its code and template, and the block class of the reference
// it was found by ("" when found by code).
struct KrmFoundCard {
  std::wstring code;
  std::wstring path;
  std::wstring blockName;
};

// The card whose page groups carry `code`. Errors: no page group has that code; the
// template its record names is not in the library.
tabulon::Result<KrmFoundCard> FindPlacedCardByCode(const std::wstring& code, QaDbDatabase* database = nullptr);
// The card of the entity `id`. Errors: the entity carries no card record; its template
// is not in the library.
tabulon::Result<KrmFoundCard> FindPlacedCardOfEntity(QaDbObjectId id);
