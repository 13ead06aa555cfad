// The card editor's commands that bring text in from outside the cells: the word
// library, texts picked from the drawing and the drawing's own data.
#include <stdexcept>

#include "editor/krm_dlg_create_crd.h"
#include "editor/table_pickup.h"
#include "host/ed/qa_message_box.h"

void KrmDlgCreateCrd::InsertWord(const std::wstring& word) {
  const KrmCellRange selected = m_grid.GetSelectedCellRange();
  if (!selected.IsValid()) return;
  m_grid.SetSelectedText(word);
  m_grid.AutoSizeColumn(selected.left);
  OnGridEndEdit(selected.top, selected.left);
}

void KrmDlgCreateCrd::FillRowsFromMaps(const std::map<std::wstring, std::wstring>& single,
                                       const std::vector<std::map<std::wstring, std::wstring>>& maps) {
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  const int start = m_grid.GetFocusCell().first - 1;
  auto fill = [&grid](int row, const std::map<std::wstring, std::wstring>& map) {
    if (row < 0 || row >= grid.RowCount()) return;
    for (KrmDataTCol& col : grid.cols) {
      const auto found = map.find(col.att.GetShowName());
      if (found != map.end() && row < static_cast<int>(col.values.size())) col.values[static_cast<std::size_t>(row)] = found->second;
    }
  };
  if (!single.empty()) {
    fill(start, single);
  } else {
    for (std::size_t i = 0; i < maps.size(); ++i) fill(start + static_cast<int>(i), maps[i]);
  }
  m_cardData.SetCurGridData(grid);
  ReloadGrid();
}

void KrmDlgCreateCrd::PickTableData() {
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  std::vector<std::wstring> names;
  for (const KrmDataTCol& col : grid.cols) names.push_back(col.att.GetShowName());
  std::map<std::wstring, std::wstring> single;
  std::vector<std::map<std::wstring, std::wstring>> maps;
  try {
    const int picked = OnMainTable() ? MakeMapDataFromTabPickup(names, maps) : MakeMapDataFromTabPickup(names, single);
    if (!picked) return;
  } catch (const std::exception&) {
    return;  // a failed pick leaves the data as it was
  }
  FillRowsFromMaps(single, maps);
}

void KrmDlgCreateCrd::TakeDrawingData(QaDbDatabase* db) {
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  std::vector<std::wstring> names;
  for (const KrmDataTCol& col : grid.cols) names.push_back(col.att.GetShowName());
  std::map<std::wstring, std::wstring> map;
  if (!KrmGetDwgDataFromFile(map, names, 2, db)) return;
  FillRowsFromMaps(map, {});
}

bool KrmDlgCreateCrd::PickTextForEditor(std::wstring& text) {
  try {
    return MakeSingleDataFromPickText(text);
  } catch (const std::exception&) {
    SdShowMsg(L"提取图面文字失败！");
    return false;
  }
}
