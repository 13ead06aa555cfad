// The .xlsx writer over libxlsxwriter, rows written in order in its constant-memory mode.
#include "editor/xlsx_writer.h"

#include <xlsxwriter.h>

#include "editor/sheet_table.h"
#include "host/svc/utf8.h"

namespace tabulon::editor {

Status WriteXlsxFile(const std::filesystem::path& path, const TextRows& rows) {
  const std::string target = path.string();
  if (rows.size() > 1048576) return MakeError("an .xlsx sheet holds at most 1,048,576 rows").inFile(target);
  std::filesystem::path temp = path;
  temp += ".tmp.xlsx";
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  lxw_workbook* workbook = workbook_new_opt(temp.string().c_str(), &options);
  if (workbook == nullptr) return MakeError("cannot start the spreadsheet").inFile(target);
  lxw_worksheet* sheet = workbook_add_worksheet(workbook, nullptr);
  std::string failure;
  for (std::size_t r = 0; r < rows.size() && sheet != nullptr && failure.empty(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      const std::wstring& text = rows[r][c];
      if (text.empty()) continue;
      if (c >= 16384) {
        failure = "an .xlsx sheet holds at most 16,384 columns";
        break;
      }
      double number = 0.0;
      const auto row = static_cast<lxw_row_t>(r);
      const auto col = static_cast<lxw_col_t>(c);
      const lxw_error error = ExactNumber(text, number) ? worksheet_write_number(sheet, row, col, number, nullptr)
                                                        : worksheet_write_string(sheet, row, col, svc::toUtf8(text).c_str(), nullptr);
      if (error != LXW_NO_ERROR) {
        failure = std::string("cannot write the cell: ") + lxw_strerror(error);
        break;
      }
    }
  }
  if (sheet == nullptr) failure = "cannot add the sheet";
  const lxw_error closed = workbook_close(workbook);
  std::error_code ec;
  if (failure.empty() && closed != LXW_NO_ERROR) failure = std::string("cannot write the spreadsheet: ") + lxw_strerror(closed);
  if (failure.empty()) {
    std::filesystem::rename(temp, path, ec);
    if (!ec) return Status::Ok();
    failure = "cannot replace the spreadsheet";
  }
  std::filesystem::remove(temp, ec);
  return MakeError(failure).inFile(target);
}

}  // namespace tabulon::editor
