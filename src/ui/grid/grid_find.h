// Find and replace over the cells of a grid: the search (from a cell, down or up,
// with or without regard to case) and the replacing, as plain functions on the model,
// and the modeless window that drives them for the grid control.
#pragma once

#include <QDialog>

#include <optional>

#include "ui/grid/grid_ctrl.h"

class QLineEdit;
class QCheckBox;
class QRadioButton;
class QPushButton;

namespace tabulon::ui {

class GridModel;
class UiStrings;

struct GridFindOptions {
  bool down = true;
  bool matchCase = false;
};

// The next cell after `from` (row by row, not wrapping) whose text holds `what`; the
// fixed row and column are not searched. From an invalid cell the search starts at
// the first (down) or last (up) cell.
std::optional<CCellID> FindInGrid(const GridModel &model, CCellID from, const QString &what,
                                  const GridFindOptions &options);
// Rewrites every match in one cell; how many there were. Read-only cells are left.
int ReplaceInCell(GridModel &model, CCellID cell, const QString &what, const QString &with,
                  const GridFindOptions &options);
// Replaces in every cell from the top; how many matches.
int ReplaceAllInGrid(GridModel &model, const QString &what, const QString &with, const GridFindOptions &options);

class GridFindDialog : public QDialog {
  Q_OBJECT

 public:
  // `grid` owns the window; `strings` may be null (the built-in texts are used).
  GridFindDialog(CGridCtrl &grid, bool findOnly, const UiStrings *strings);

  bool findOnly() const { return findOnly_; }
  void setSearchText(const QString &text);
  QString searchText() const;
  void setReplaceText(const QString &text);
  GridFindOptions options() const;

  // The buttons' work.
  bool findNext();
  void replace();
  int replaceAll();

 private:
  CGridCtrl &grid_;
  bool findOnly_;
  QLineEdit *what_;
  QLineEdit *with_ = nullptr;
  QCheckBox *matchCase_;
  QRadioButton *up_;
};

}  // namespace tabulon::ui
