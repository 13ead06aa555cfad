// Writing a table in the exchange formats by a file's extension: .xlsx, .xls, or the
// exchange .txt; the programs' commands that hand a card's data out use it.
#pragma once

#include <filesystem>

#include "card/data_grid.h"
#include "host/svc/result.h"

namespace tabulon::editor {

// An error names the file when the extension is none of the three or writing fails.
Status WriteDataFileGrid(const KrmDataGrid& grid, const std::filesystem::path& path);

}  // namespace tabulon::editor
