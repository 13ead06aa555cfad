// Rebuilding an entity of one drawing as a new entity in memory for another, kind by
// kind: block references (with their block definition brought over when the target
// lacks it, and fresh attributes from the definition), lines, multi-line and single-line
// texts (with their text style brought over), and lightweight polylines. Every other
// kind is not copied. Layers and linetypes are not brought over: the copy names them,
// and the target's own records apply.
#pragma once

#include <memory>
#include <string>

#include "host/db/qadb_object_id.h"

class QaDbBlockReference;
class QaDbDatabase;
class QaDbEntity;

// A new entity in memory, owned by the caller, that rebuilds `entity` of `source` for
// `current` (the working database when null); nothing for a kind that is not copied,
// and for a block reference whose block neither drawing has. The test is on the exact
// class: a derived class is not copied.
std::unique_ptr<QaDbEntity> CopyEntityAcross(QaDbDatabase* source, const QaDbEntity* entity,
                                             QaDbDatabase* current = nullptr);

// The id in `current` of the block named `blockName` of `source`, copied over with its
// entities under the document lock of `current`; a block of that name that `current`
// has already is kept as it is. The null id when `source` has no such block.
QaDbObjectId CopyBlockAcross(QaDbDatabase* source, const std::wstring& blockName, QaDbDatabase* current = nullptr);

// The same for the text style `name` of `source` (`styleId` is its id there, used when
// the name does not find it).
QaDbObjectId CopyTextStyleAcross(QaDbDatabase* source, QaDbObjectId styleId, const std::wstring& name,
                                 QaDbDatabase* current = nullptr);

// Gives `reference` (in memory) one plain attribute for each attribute definition of the
// block `blockId` that is not constant, placed by the reference's block transform and
// holding the definition's default text.
void AddBlockAttributes(QaDbObjectId blockId, QaDbBlockReference& reference);
