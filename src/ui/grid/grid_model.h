// The cells of the grid control as a Qt table model. The grid's numbering counts the
// fixed header row and label column (row 0, column 0); the model shows the other cells
// as its items and the fixed ones as its header data. Every change is signalled
// exactly (row and column inserts and removals, dataChanged, header changes).
#pragma once

#include <QAbstractTableModel>

#include <functional>
#include <vector>

#include "ui/grid/grid_cell.h"

namespace tabulon::ui {

class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit GridModel(QObject *parent = nullptr);

  // --- shape, in grid numbers (fixed row and column included)
  int gridRowCount() const { return rows_; }
  int gridColumnCount() const { return cols_; }
  int fixedRowCount() const { return fixedRows_; }
  int fixedColumnCount() const { return fixedCols_; }
  void setGridRowCount(int n);
  void setGridColumnCount(int n);
  // 0 or 1; the fixed row and column must exist in the shape.
  void setFixedRowCount(int n);
  void setFixedColumnCount(int n);
  void clear();

  bool isValid(int row, int col) const { return row >= 0 && col >= 0 && row < rows_ && col < cols_; }
  // Null when out of range.
  const GridCell *cell(int row, int col) const;
  // Replaces a cell (signals the change); false out of range.
  bool setCell(int row, int col, const GridCell &cell);
  QString text(int row, int col) const;
  // Sets a cell's text and marks it and the grid modified; false out of range.
  bool setText(int row, int col, const QString &text);

  // The grid-wide modified flag, set by any change of a cell's text.
  bool modified() const { return modified_; }
  void setModified(bool on) { modified_ = on; }

  // Reorders the rows below the fixed ones by the text of column `col`. `less` gets
  // two texts; the order of equal rows is kept.
  void sortRows(int col, bool ascending, const std::function<bool(const QString &, const QString &)> &less);

  // Model index <-> grid numbers.
  QModelIndex indexOf(int row, int col) const;
  int gridRow(const QModelIndex &index) const { return index.row() + fixedRows_; }
  int gridColumn(const QModelIndex &index) const { return index.column() + fixedCols_; }

  int rowCount(const QModelIndex &parent = QModelIndex()) const override;
  int columnCount(const QModelIndex &parent = QModelIndex()) const override;
  QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
  Qt::ItemFlags flags(const QModelIndex &index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  void changed(int row, int col);
  QVariant cellData(const GridCell &cell, int role) const;

  int rows_ = 0;
  int cols_ = 0;
  int fixedRows_ = 0;
  int fixedCols_ = 0;
  std::vector<std::vector<GridCell>> cells_;  // [row][col]
  bool modified_ = false;
};

}  // namespace tabulon::ui
