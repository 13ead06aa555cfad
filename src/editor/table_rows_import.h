// Rows of a card's block class from any data file that the programs accept: the
// editor's exchange formats (.xlsx, .xls and the exchange .txt, read through the same
// import as the editor's commands) and the card library's (.csv, .tsv, .json).
#pragma once

#include <filesystem>

#include "card/table_rows.h"
#include "host/svc/result.h"

namespace tabulon::editor {

Result<KrmTableRows> ReadDataFileRows(const std::filesystem::path& path);

}  // namespace tabulon::editor
