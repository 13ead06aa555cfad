#include "drawing/ostrelm_tabulon.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/paging.h"
#include "drawing/card_lookup.h"
#include "drawing/page_reader.h"
#include "drawing/placed_card_read.h"
#include "drawing/placed_card_update.h"
#include "host/ed/qaed_selection.h"

namespace {

std::size_t Index(int n) {
  if (n < 0) throw std::out_of_range("card index " + std::to_string(n));
  return static_cast<std::size_t>(n);
}

}  // namespace

void OstrelmTabulon::ClearData() {
  cardCount_ = 0;
  pageCounts_.clear();
  filePaths_.clear();
  showNames_.clear();
  flagIds_.clear();
  tblNames_.clear();
  blockNames_.clear();
  attNames_.clear();
  tblNames2_.clear();
  blockNames2_.clear();
  attNames2_.clear();
}

void OstrelmTabulon::SetTblName(int which, const std::wstring& name) {
  (which == 0 ? tblNames_ : tblNames2_).push_back(name);
}

void OstrelmTabulon::SetArrBlockName(const std::vector<std::wstring>& names, int which) {
  (which == 0 ? blockNames_ : blockNames2_).push_back(names);
}

void OstrelmTabulon::Init() {
  QaEdSelectionSet selection;
  selection.select(L"X");
  for (const QaDbObjectId& id : selection.ids()) {
    std::wstring path, code, blockName;
    if (IdentifyPickedEntity(id, path, code, blockName) != 1) continue;
    if (std::find(flagIds_.begin(), flagIds_.end(), code) != flagIds_.end()) continue;

    ++cardCount_;
    KrmCardTemplate cardTemplate;
    cardTemplate.LoadTemplate(path);
    SetFilePath(path);
    SetFlagId(code);
    SetShowName(cardTemplate.GetCardShowName());
    SetTblName(0, cardTemplate.GetTableFileName(0));
    SetTblName(1, cardTemplate.GetTableFileName(1));

    std::vector<std::wstring> names;
    cardTemplate.GetBlockNames(names, 0);
    SetArrBlockName(names, 0);
    for (const std::wstring& name : names) {
      std::vector<std::wstring> atts;
      cardTemplate.GetAttNames(name, atts, 0);
      attNames_[name] = atts;
    }
    names.clear();
    cardTemplate.GetBlockNames(names, 1);
    SetArrBlockName(names, 1);
    for (const std::wstring& name : names) {
      // Only the first page's attribute lists are authoritative.
      std::vector<std::wstring> atts;
      cardTemplate.GetAttNames(name, atts, 0);
      attNames2_[name] = atts;
    }

    KrmCardData data;
    data.InitFromTemplate(cardTemplate);
    KrmPlacedCard card;
    card.cardCode = code;
    LoadPlacedCard(data, card);
    SetPageCount(ReadPageGroups(code, card));
  }
}

int OstrelmTabulon::GetPageCount(int n) const { return pageCounts_.at(Index(n)); }
std::wstring OstrelmTabulon::GetShowName(int n) const { return showNames_.at(Index(n)); }
std::wstring OstrelmTabulon::GetFilePath(int n) const { return filePaths_.at(Index(n)); }
std::wstring OstrelmTabulon::GetFlagId(int n) const { return flagIds_.at(Index(n)); }
std::wstring OstrelmTabulon::GetTblName(int n) const { return tblNames_.at(Index(n)); }
std::wstring OstrelmTabulon::GetTblName_(int n) const { return tblNames2_.at(Index(n)); }

int OstrelmTabulon::GetCell(std::vector<std::wstring>& out, int n) const {
  out = blockNames_.at(Index(n));
  return out.empty() ? 0 : 1;
}

int OstrelmTabulon::GetCell_(std::vector<std::wstring>& out, int n) const {
  out = blockNames2_.at(Index(n));
  return out.empty() ? 0 : 1;
}

int OstrelmTabulon::GetCellAtt(const std::wstring& blockName, std::vector<std::wstring>& out) const {
  const auto found = attNames_.find(blockName);
  out = found == attNames_.end() ? std::vector<std::wstring>() : found->second;
  return out.empty() ? 0 : 1;
}

int OstrelmTabulon::GetCellAtt_(const std::wstring& blockName, std::vector<std::wstring>& out) const {
  const auto found = attNames2_.find(blockName);
  out = found == attNames2_.end() ? std::vector<std::wstring>() : found->second;
  return out.empty() ? 0 : 1;
}

std::wstring OstrelmTabulon::GetItemText(int n, int grid, int row, int col) const {
  auto opened = OpenPlacedCard(filePaths_.at(Index(n)), flagIds_.at(Index(n)));
  if (!opened.ok()) return {};
  opened->data.SetCurGrid(grid);
  return opened->data.GetCell(row, col);
}

int OstrelmTabulon::GetMaxRowNum(int n, int grid) const {
  auto opened = OpenPlacedCard(filePaths_.at(Index(n)), flagIds_.at(Index(n)));
  if (!opened.ok()) return 0;
  return opened->data.GetRowsNeeded(grid);
}

int OstrelmTabulon::IsBaseBlock(int n, int grid) const {
  auto opened = OpenPlacedCard(filePaths_.at(Index(n)), flagIds_.at(Index(n)));
  if (!opened.ok()) return 0;
  return grid == opened->data.GetBaseGrid() ? 1 : 0;
}

int OstrelmTabulon::InsertRow(int n, int grid, int row) { return WriteRow(n, grid, row, 0, nullptr); }

int OstrelmTabulon::SetItemText(int n, int grid, const std::wstring& text, int row, int col) {
  return WriteRow(n, grid, row, col, &text);
}

int OstrelmTabulon::WriteRow(int n, int grid, int row, int col, const std::wstring* text) {
  auto opened = OpenPlacedCard(filePaths_.at(Index(n)), flagIds_.at(Index(n)));
  if (!opened.ok()) return 0;
  KrmCardData& before = opened->data;
  KrmCardData after = before;

  KrmDataGrid working;
  if (before.GetGridAt(grid, working) != 1) return 0;
  const int records = working.RowCount();
  if (row >= records) {
    // Only the page base grows; rows are counted over all pages.
    if (grid != before.GetBaseGrid()) return 0;
    working.InsertRows(records, row - records + 1);
    int autoNum = -1;
    for (std::size_t c = 0; c < working.cols.size(); ++c) {
      if (working.cols[c].isAutoNum != 0) {
        autoNum = static_cast<int>(c);
        break;
      }
    }
    working.SetAutoNumCol(autoNum);
    after.SetGridAt(grid, working);
    after.FillPageNumbers(1, PageCount(working.RowCount(), working.rowsFirst, working.rowsNext));
    after.KeepBlankRows();
  }
  after.SetCurGrid(grid);
  if (text != nullptr) after.SetCell(*text, row, col);
  return UpdatePlacedCard(*opened->cardTemplate, before, after, opened->card);
}
