// From something picked in the drawing back to its card: the template file by the id
// that the card's record names, and the card's code and block class.
#pragma once

#include <string>

#include "host/db/qadb_object_id.h"

// The full path of the card template (".crd") whose id is `cardId`, found by scanning
// the card library below the card root; "" when the library has none, or for an empty
// id.
std::wstring FindCardPathById(const std::wstring& cardId);

// Reads the card record of the entity `id`. Returns 1 when it names a template that the
// library has and a card code: then `path` is the template, `code` the card's code and
// `blockName` the block class of a block reference (its name without the side drawing's
// prefix; "" for other entities). Returns 0 otherwise, also when the entity does not
// open.
int IdentifyPickedEntity(QaDbObjectId id, std::wstring& path, std::wstring& code, std::wstring& blockName);
