// OstrelmTabulon lets another program list the cards of the current drawing, read their
// shape (tables, blocks, attribute names), and read or change a cell of a placed card,
// without dialogs. The object keeps a directory of the cards found by Init and owns it;
// every read or write of a cell rebuilds the card's data from the drawing, so no cell
// value is kept here. The drawing owns the entities.
//
// Names with a trailing underscore serve the continuation table, the others the first
// page's. An invalid card index throws std::out_of_range, as the containers do.
#pragma once

#include <map>
#include <string>
#include <vector>

class OstrelmTabulon {
 public:
  OstrelmTabulon() = default;
  ~OstrelmTabulon() { ClearData(); }
  OstrelmTabulon(const OstrelmTabulon&) = default;
  OstrelmTabulon& operator=(const OstrelmTabulon&) = default;

  // Empties the directory.
  void ClearData();
  // Adds every card of the current drawing not found yet (a second Init adds to what is
  // there). A card is found through any entity that carries its record and whose template
  // is in the library.
  void Init();

  int GetCardCount() const { return cardCount_; }
  // Pages of card `n` as Init found them.
  int GetPageCount(int n) const;
  std::wstring GetShowName(int n) const;
  // The ".crd" file of card `n`.
  std::wstring GetFilePath(int n) const;
  // The card's code in the drawing (its identity).
  std::wstring GetFlagId(int n) const;
  // Table files of the first page and of the continuation.
  std::wstring GetTblName(int n) const;
  std::wstring GetTblName_(int n) const;
  // `out` = the block names of card `n`'s table; 1 when there are any, else 0.
  int GetCell(std::vector<std::wstring>& out, int n) const;
  int GetCell_(std::vector<std::wstring>& out, int n) const;
  // `out` = the attribute show names of a block that GetCell (GetCell_) named; 1 when
  // there are any. The maps are keyed by block name alone: the last card wins.
  int GetCellAtt(const std::wstring& blockName, std::vector<std::wstring>& out) const;
  int GetCellAtt_(const std::wstring& blockName, std::vector<std::wstring>& out) const;

  // The cell of block `grid` (an index into GetCell's list) at `row` (counted over all
  // pages from 0) and column `col`: "" when out of range or when the card has no pages.
  std::wstring GetItemText(int n, int grid, int row, int col) const;
  // Writes `text` into that cell and brings the drawing in line. A row past the end of
  // the page-base grid adds rows (and pages); past the end of another grid it fails.
  // Returns 1 when the drawing was updated, else 0.
  int SetItemText(int n, int grid, const std::wstring& text, int row, int col);
  // Physical text lines of grid `grid`; 0 when the card has no pages.
  int GetMaxRowNum(int n, int grid) const;
  // Inserts an empty row at `row` when it is past the end of the page-base grid, then
  // brings the drawing in line (which rewrites the card also when no row was added).
  // Returns 1 when the drawing was updated, else 0.
  int InsertRow(int n, int grid, int row);
  // 1 when `grid` is the page-base grid of card `n`; 0 when it is not or the card has no
  // pages.
  int IsBaseBlock(int n, int grid) const;

 private:
  void SetFilePath(const std::wstring& path) { filePaths_.push_back(path); }
  void SetFlagId(const std::wstring& id) { flagIds_.push_back(id); }
  void SetShowName(const std::wstring& name) { showNames_.push_back(name); }
  // which: 0 first page, 1 continuation.
  void SetTblName(int which, const std::wstring& name);
  void SetPageCount(int n) { pageCounts_.push_back(n); }
  void SetArrBlockName(const std::vector<std::wstring>& names, int which);
  // The write shared by SetItemText and InsertRow; `text` null inserts only.
  int WriteRow(int n, int grid, int row, int col, const std::wstring* text);

  int cardCount_ = 0;
  std::vector<int> pageCounts_;
  std::vector<std::wstring> filePaths_;
  std::vector<std::wstring> showNames_;
  std::vector<std::wstring> flagIds_;
  std::vector<std::wstring> tblNames_;
  std::vector<std::vector<std::wstring>> blockNames_;
  std::map<std::wstring, std::vector<std::wstring>> attNames_;
  std::vector<std::wstring> tblNames2_;
  std::vector<std::vector<std::wstring>> blockNames2_;
  std::map<std::wstring, std::vector<std::wstring>> attNames2_;
};
