// Tables to data files by extension.
#include "editor/data_file_export.h"

#include <algorithm>
#include <cctype>

#include "editor/exchange_text.h"
#include "editor/sheet_exchange.h"

namespace tabulon::editor {

Status WriteDataFileGrid(const KrmDataGrid& grid, const std::filesystem::path& path) {
  std::string ext = path.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (ext == ".xlsx" || ext == ".xls") return WriteSheetFile(grid, path, ext == ".xlsx");
  if (ext == ".txt") return WriteExchangeFile(grid, path);
  return MakeError("unknown data format \"" + ext + "\" (use .xlsx, .xls or .txt)").inFile(path.string());
}

}  // namespace tabulon::editor
