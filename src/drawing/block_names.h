// Names of block and text style definitions, and the "<table id>_" prefix that the
// block definitions of a table's side drawing carry in front of the template's name.
#pragma once

#include <string>

#include "host/db/qadb_object_id.h"

// The name of the block table record `block`; "" when the id does not open as one.
std::wstring GetBlockName(QaDbObjectId block);
// The name of the text style record `style`; "" when the id does not open as one.
std::wstring GetTextStyleName(QaDbObjectId style);
// What stands behind the first "_" of `name`, or `name` when it has none.
std::wstring StripBlockPrefix(const std::wstring& name);
// The name with every "<anything>_" prefix cut, up to the last "_".
std::wstring StripAllBlockPrefixes(const std::wstring& name);
// Renames the block `block` to StripAllBlockPrefixes of its name. Returns 0 when the id
// is no block table record, else 1; a rename the table refuses (the stripped name is
// taken, or empty) leaves the name as it was.
int ResetBlockName(QaDbObjectId block);
