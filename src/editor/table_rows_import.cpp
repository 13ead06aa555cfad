// Data files by extension.
#include "editor/table_rows_import.h"

#include <algorithm>
#include <cctype>

#include "card/table_rows_file.h"
#include "editor/exchange_text.h"
#include "editor/sheet_exchange.h"

namespace tabulon::editor {

Result<KrmTableRows> ReadDataFileRows(const std::filesystem::path& path) {
  std::string ext = path.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  Result<ExchangeColumns> columns = MakeError("");
  if (ext == ".xlsx" || ext == ".xls") {
    columns = ReadSheetColumns(path, ext == ".xlsx", {});
  } else if (ext == ".txt") {
    columns = ReadExchangeFile(path);
  } else {
    return ReadTableRows(path);
  }
  if (!columns.ok()) return columns.error();
  return RowsOfColumns(*columns);
}

}  // namespace tabulon::editor
