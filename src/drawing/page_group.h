// The anonymous group that holds one page of a placed card, with the card's record on
// it, and the way back from an entity to the groups it belongs to. Groups live in the
// group dictionary of the database, which owns them.
#pragma once

#include <vector>

#include "drawing/card_tag.h"
#include "host/db/qadb_object_id.h"

class QaDbDatabase;

// Makes an anonymous group in the group dictionary of `database` (the working database
// when null) under a fresh "*A" key, appends `ids` in order and writes the group record
// of `tag` with `pageIndex`. Returns the group's id, or the null id when no group could
// be made. Ids of another database or erased ones are not appended.
QaDbObjectId MakePageGroup(std::vector<QaDbObjectId> ids, KrmCardTag tag, int pageIndex,
                           QaDbDatabase* database = nullptr);

// Appends to `out` the groups that hold the entity, found through its persistent
// reactors. Returns whether `out` has any entries.
bool GroupsOfEntity(QaDbObjectId id, std::vector<QaDbObjectId>& out);
