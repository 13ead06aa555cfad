// libFuzzer target of the exchange text: any bytes decode (UTF-8 or GB18030) and cut into
// columns or fail; the columns put into a table, written out and read again give the
// same table whenever no text holds a line break or a quote-tab, which the format can't
// carry.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

#include "card/table_rows_file.h"
#include "editor/exchange_text.h"

namespace {

bool Carried(const std::wstring& text) { return text.find(L'\n') == std::wstring::npos && text.find(L"\"\t") == std::wstring::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto text = tabulon::DecodeText(std::string(reinterpret_cast<const char*>(data), size), "fuzz.txt");
  if (!text.ok()) return 0;
  auto columns = tabulon::editor::ParseExchangeText(*text, "fuzz.txt");
  if (!columns.ok() || columns->names.empty()) return 0;

  KrmDataGrid grid;
  std::set<std::wstring> seen;
  for (std::size_t i = 0; i < columns->names.size(); ++i) {
    if (!Carried(columns->names[i]) || !seen.insert(columns->names[i]).second) continue;
    KrmDataTCol col;
    col.att.SetShowName(columns->names[i]);
    for (const std::wstring& value : columns->values[i]) col.values.push_back(Carried(value) ? value : std::wstring());
    grid.cols.push_back(std::move(col));
  }
  if (grid.cols.empty()) return 0;
  const std::size_t rows = grid.cols.front().values.size();
  for (KrmDataTCol& col : grid.cols) col.values.resize(rows);

  auto again = tabulon::editor::ParseExchangeText(tabulon::editor::FormatExchangeText(grid), "again.txt");
  if (!again.ok()) std::abort();
  KrmDataGrid back = grid;
  for (KrmDataTCol& col : back.cols) col.values.clear();
  tabulon::editor::ApplyExchangeColumns(back, *again);
  if (!back.SameContent(grid)) std::abort();
  return 0;
}
