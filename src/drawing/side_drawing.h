// The side drawing of a table template: a drawing file beside the ".tbl" that holds one
// page at the origin (its lower-left corner at (0,0,0)), with every block definition
// named "<table id>_<block name>" and every model-space entity marked with the card
// application (no items). Pages of cards are copied out of it (page_copy.h).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/db/qadb_object_id.h"

// Extension of side drawings on this platform.
inline constexpr wchar_t kSideDrawingExtension[] = L".dxf";

// `path` with the side drawing's extension: a ".dwg" extension is replaced, any other
// name gets ".dxf" appended unless it ends in it already.
std::filesystem::path SideDrawingPath(const std::filesystem::path& path);

// Writes the entities `ids` (of one database; the working database's when `ids` is
// empty) as the side drawing of table `tableId` to SideDrawingPath(`path`): copied into
// a new drawing, moved so that the lower-left of their extents lies at the origin,
// block definitions prefixed, each model-space entity marked. Returns 1, or 0 when the
// copy or the file cannot be made (`error` then says why, when given).
int WriteSideDrawing(const std::wstring& path, const std::wstring& tableId, const std::vector<QaDbObjectId>& ids,
                     std::string* error = nullptr);
