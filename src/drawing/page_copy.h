// Copying one page out of a table's side drawing: the drawing is read into a private
// database, its model-space entities are rebuilt one by one for the current drawing
// (entity_copy.h), scaled about the origin and moved to the page's point. The copies stay
// in memory, owned by the caller's pool, until they are appended to the drawing.
#pragma once

#include <filesystem>

#include "drawing/entity_list.h"
#include "host/ge/qage_point3d.h"

class QaDbDatabase;

// The page of the side drawing `path`, as new entities in `pool`, scaled by `scale`
// (0 counts as 1) about the origin and then moved from the origin to `point`. Kinds that
// are not copied are left out. Block and text style definitions that the page needs
// are copied into `current` (the working database when null). Empty when the drawing
// cannot be read, has no model space, or nothing on it can be copied.
KrmEntityList ReadSideDrawing(const std::filesystem::path& path, const QaGePoint3d& point, double scale,
                              KrmEntityPool& pool, QaDbDatabase* current = nullptr);
