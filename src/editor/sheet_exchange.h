// The spreadsheet exchange of one table through CMyExcelOperate: row 0 holds the show
// names, each later row one record, columns in the table's order.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "card/data_grid.h"
#include "editor/exchange_columns.h"
#include "host/svc/result.h"

namespace tabulon::editor {

// The columns of a spreadsheet's first sheet; `digits` gives the decimal places of the
// sheet's columns in order (numeric cells rounded to them), as far as it reaches. An
// error when the file is no spreadsheet of the kind or its header row can't be read.
Result<ExchangeColumns> ReadSheetColumns(const std::filesystem::path& path, bool xlsx, const std::vector<int>& digits);
Status WriteSheetFile(const KrmDataGrid& grid, const std::filesystem::path& path, bool xlsx);

// Whether a path names an .xls file (by extension, any case); all else counts as .xlsx.
bool IsXlsPath(const std::filesystem::path& path);

}  // namespace tabulon::editor

// true on success; on failure the grid is as it was.
bool ImportSheet(KrmDataGrid& grid, const std::wstring& path, bool xlsx, const std::vector<int>& digits);
bool ExportSheet(const KrmDataGrid& grid, const std::wstring& path, bool xlsx);
