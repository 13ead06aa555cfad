#include "drawing/card_data_rows.h"

#include <vector>

#include "card/card_data.h"
#include "card/data_grid.h"
#include "card/paging.h"
#include "host/svc/utf8.h"

namespace {

std::wstring ValueForColumn(const std::map<std::wstring, std::wstring>& row, const KrmAttSet& att) {
  const auto byCode = row.find(att.GetInName());
  if (byCode != row.end() && !byCode->second.empty()) return byCode->second;
  const auto byShow = row.find(att.GetShowName());
  if (byShow != row.end()) return byShow->second;
  return byCode != row.end() ? byCode->second : std::wstring();
}

bool HasColumn(const KrmDataGrid& grid, const std::wstring& name) {
  for (const KrmDataTCol& col : grid.cols) {
    if (col.att.GetShowName() == name || col.att.GetInName() == name) return true;
  }
  return false;
}

std::string Joined(const std::vector<std::wstring>& names) {
  std::string out;
  for (const std::wstring& name : names) out += (out.empty() ? "" : ", ") + tabulon::svc::toUtf8(name);
  return out;
}

}  // namespace

tabulon::Status SetBlockRows(KrmCardData& data, const std::wstring& block, const KrmTableRows& rows) {
  const int index = data.FindGrid(block);
  if (index < 0) {
    std::vector<std::wstring> names;
    data.GetGridNames(names);
    return tabulon::MakeError("the card has no block \"" + tabulon::svc::toUtf8(block) + "\" (it has " +
                              Joined(names) + ")")
        .inField(tabulon::svc::toUtf8(block));
  }
  KrmDataGrid grid;
  data.GetGridAt(index, grid);
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (const auto& [name, text] : rows[r]) {
      if (HasColumn(grid, name)) continue;
      std::vector<std::wstring> columns;
      for (const KrmDataTCol& col : grid.cols) columns.push_back(col.att.GetShowName());
      return tabulon::MakeError("the block " + tabulon::svc::toUtf8(block) + " has no column \"" +
                                tabulon::svc::toUtf8(name) + "\" (it has " + Joined(columns) + ")")
          .atLine(r + 1)
          .inField(tabulon::svc::toUtf8(name));
    }
  }
  for (KrmDataTCol& col : grid.cols) col.values.clear();
  for (const auto& row : rows) {
    for (KrmDataTCol& col : grid.cols) col.values.push_back(ValueForColumn(row, col.att));
  }
  data.SetGridAt(index, grid);
  return tabulon::Status::Ok();
}

int PagesNeeded(const KrmCardData& data) {
  const int base = data.GetBaseGrid();
  return PageCount(data.GetRowsNeeded(base), data.GetRowsFirst(base), data.GetRowsNext(base));
}

void RenumberPages(KrmCardData& data) { data.FillPageNumbers(1, PagesNeeded(data)); }
