// The models of the card editor's small dialogs: row count to insert (KrmDlgAddRow),
// rows to delete (KrmDlgDelRow), page numbering (KrmDlgPageSet), page arrangement
// (KrmDlgArrang) and row height or column width (KrmDlgRowHeight). Each holds the texts
// of its boxes as the user types them; Accept() checks them as OK does and answers
// whether the dialog may close, with the message to show when it may not.
#pragma once

#include <string>

#include "card/card_dir.h"

// Spin range of the number boxes.
inline constexpr int kKrmSpinMin = 1;
inline constexpr int kKrmSpinMax = 10000;

// Integer value of a box's text: leading blanks and a sign allowed, digits up to the
// first other character; 0 when there are none.
int BoxInteger(const std::wstring& text);
// Floating-point value of a box's text; 0 when it is no number.
double BoxNumber(const std::wstring& text);

class KrmDlgAddRow {
 public:
  explicit KrmDlgAddRow(int count = 1, int position = 0) : countText(std::to_wstring(count)), position(position) {}
  std::wstring countText;
  // The grid row before which the rows go (the row count: at the end); not shown.
  int position;
  // True when the count is at least 1; else `message` is message 145.
  bool Accept(std::wstring& message) const;
  int Count() const { return BoxInteger(countText); }
};

class KrmDlgDelRow {
 public:
  KrmDlgDelRow(int from = 1, int to = 1) : fromText(std::to_wstring(from)), toText(std::to_wstring(to)) {}
  std::wstring fromText;
  std::wstring toText;
  // True when both are at least 1; else `message` is message 145.
  bool Accept(std::wstring& message) const;
  // The range, from not greater than to.
  int From() const;
  int To() const;
};

class KrmDlgPageSet {
 public:
  KrmDlgPageSet(int step, int startSum, int startCur)
      : stepText(std::to_wstring(step)), startSumText(std::to_wstring(startSum)), startCurText(std::to_wstring(startCur)) {}
  std::wstring stepText;
  std::wstring startSumText;
  std::wstring startCurText;
  // True when all three are at least 1; no message otherwise.
  bool Accept() const;
  int Step() const { return BoxInteger(stepText); }
  int StartSum() const { return BoxInteger(startSumText); }
  int StartCur() const { return BoxInteger(startCurText); }
};

class KrmDlgArrang {
 public:
  // The gaps shown as "%.2f", the direction (an unknown one checks the fourth choice),
  // the priority, and both count boxes showing GetFstN.
  void SetData(const KrmCardDir& dir);
  // The record as OK makes it: nothing is checked; text that is no number counts 0.
  void GetData(KrmCardDir& out) const;
  // Choosing a priority locks the other count box.
  void ChoosePriority(bool rowFirst) { rowFirst_ = rowFirst; }
  bool RowFirst() const { return rowFirst_; }
  bool ColumnBoxLocked() const { return rowFirst_; }
  bool RowBoxLocked() const { return !rowFirst_; }

  std::wstring horText;
  std::wstring verText;
  int direction = 0;  // 0..3
  std::wstring columnsText;  // pages per row, used with the row priority
  std::wstring rowsText;     // pages per column, used with the column priority

 private:
  bool rowFirst_ = true;
};

class KrmDlgRowHeight {
 public:
  // `rows`: a row height is asked, else a column width; `proposed` in the grid's unit.
  KrmDlgRowHeight(bool rows, int proposed);
  // The title and the label above the box.
  std::wstring Title() const;
  std::wstring Label() const;
  // Units: 0 the grid's unit ("毫米"), 1 a tenth of it ("像素"); changing the unit
  // rewrites the box with the proposal in that unit.
  std::wstring UnitName(int unit) const;
  void ChooseUnit(int unit);
  int Unit() const { return unit_; }
  std::wstring valueText;
  // The size to apply: the box's integer, divided by 10 for the second unit.
  int Value() const;

 private:
  bool rows_;
  int proposed_;
  int unit_ = 0;
};
