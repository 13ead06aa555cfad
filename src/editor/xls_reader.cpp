// The .xls reader over FreeXL.
#include "editor/xls_reader.h"

#include <freexl.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "editor/xls_check.h"
#include "host/svc/utf8.h"

namespace tabulon::editor {
namespace {

constexpr unsigned kMaxRows = 65536;

struct XlsCloser {
  void operator()(const void* handle) const { freexl_close(handle); }
};

}  // namespace

Result<SheetTable> ReadXlsFile(const std::filesystem::path& path) {
  const std::string source = path.string();
  if (std::error_code ec; std::filesystem::file_size(path, ec) == 0 || ec)
    return MakeError(ec ? "cannot open the spreadsheet" : "the spreadsheet file is empty").inFile(source);
  {
    // The reader library trusts the lengths in the file: they are checked first.
    std::ifstream in(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (Status checked = CheckXlsStructure(bytes, source); !checked.ok()) return checked.error();
  }
  const void* raw = nullptr;
  if (freexl_open(source.c_str(), &raw) != FREEXL_OK) {
    if (raw != nullptr) freexl_close(raw);
    return MakeError("not an Excel 97-2003 workbook, or its header is damaged").inFile(source);
  }
  std::unique_ptr<const void, XlsCloser> handle(raw);
  unsigned sheets = 0;
  if (freexl_get_info(raw, FREEXL_BIFF_SHEET_COUNT, &sheets) != FREEXL_OK || sheets == 0)
    return MakeError("the workbook has no sheet").inFile(source);
  unsigned rows = 0;
  unsigned short columns = 0;
  if (freexl_select_active_worksheet(raw, 0) != FREEXL_OK || freexl_worksheet_dimensions(raw, &rows, &columns) != FREEXL_OK)
    return MakeError("the first sheet cannot be read").inFile(source);
  if (rows > kMaxRows) return MakeError("the sheet has more rows than the format allows").inFile(source);
  SheetTable table(rows);
  for (unsigned r = 0; r < rows; ++r) {
    auto& cells = table[r];
    for (unsigned short c = 0; c < columns; ++c) {
      FreeXL_CellValue value;
      if (freexl_get_cell_value(raw, r, c, &value) != FREEXL_OK)
        return MakeError("a cell cannot be read").inFile(source).atLine(r + 1);
      SheetCell cell;
      switch (value.type) {
        case FREEXL_CELL_INT:
          cell.kind = SheetCell::Kind::kNumber;
          cell.number = value.value.int_value;
          break;
        case FREEXL_CELL_DOUBLE:
          cell.kind = SheetCell::Kind::kNumber;
          cell.number = value.value.double_value;
          break;
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
        case FREEXL_CELL_TIME:
          cell.kind = SheetCell::Kind::kText;
          cell.text = svc::fromUtf8(value.value.text_value != nullptr ? value.value.text_value : "");
          break;
        default:
          break;
      }
      if (cell.kind == SheetCell::Kind::kEmpty) continue;
      if (cells.size() <= c) cells.resize(c + 1u);
      cells[c] = std::move(cell);
    }
  }
  while (!table.empty() && table.back().empty()) table.pop_back();
  return table;
}

}  // namespace tabulon::editor
