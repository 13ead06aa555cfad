// Rows of one block class as other programs and data files give them: one map per row,
// from a column's in-name or show name to the cell text.
#pragma once

#include <map>
#include <string>
#include <vector>

using KrmTableRows = std::vector<std::map<std::wstring, std::wstring>>;
