#include "ui/grid/grid_model.h"

#include <algorithm>

namespace tabulon::ui {

GridCell WithCellClass(const GridCell &cell, GridCellClass cellClass) {
  GridCell out = cell;
  out.cellClass = cellClass;
  if (cellClass == GridCellClass::Check)
    out.text = (cell.text.isEmpty() || cell.text == QLatin1String("0")) ? QStringLiteral("0") : QStringLiteral("1");
  if (cellClass == GridCellClass::DateTime && !out.time.isValid()) out.time = QDateTime::currentDateTime();
  return out;
}

GridModel::GridModel(QObject *parent) : QAbstractTableModel(parent) {}

int GridModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : rows_ - fixedRows_; }

int GridModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : cols_ - fixedCols_; }

QModelIndex GridModel::indexOf(int row, int col) const {
  if (row < fixedRows_ || col < fixedCols_ || !isValid(row, col)) return {};
  return index(row - fixedRows_, col - fixedCols_);
}

void GridModel::setGridRowCount(int n) {
  n = std::max(n, 0);
  if (n == rows_) return;
  const int dataNow = rows_ - fixedRows_;
  const int fixed = std::min(fixedRows_, n);
  const int dataNew = n - fixed;
  if (fixed != fixedRows_) {
    beginResetModel();
    rows_ = n;
    fixedRows_ = fixed;
    cells_.resize(static_cast<std::size_t>(n), std::vector<GridCell>(static_cast<std::size_t>(cols_)));
    endResetModel();
    return;
  }
  if (dataNew > dataNow) {
    beginInsertRows({}, dataNow, dataNew - 1);
    rows_ = n;
    cells_.resize(static_cast<std::size_t>(n), std::vector<GridCell>(static_cast<std::size_t>(cols_)));
    endInsertRows();
  } else {
    beginRemoveRows({}, dataNew, dataNow - 1);
    rows_ = n;
    cells_.resize(static_cast<std::size_t>(n));
    endRemoveRows();
  }
}

void GridModel::setGridColumnCount(int n) {
  n = std::max(n, 0);
  if (n == cols_) return;
  const int dataNow = cols_ - fixedCols_;
  const int fixed = std::min(fixedCols_, n);
  const int dataNew = n - fixed;
  auto resizeAll = [&] {
    for (auto &row : cells_) row.resize(static_cast<std::size_t>(n));
  };
  if (fixed != fixedCols_) {
    beginResetModel();
    cols_ = n;
    fixedCols_ = fixed;
    resizeAll();
    endResetModel();
    return;
  }
  if (dataNew > dataNow) {
    beginInsertColumns({}, dataNow, dataNew - 1);
    cols_ = n;
    resizeAll();
    endInsertColumns();
  } else {
    beginRemoveColumns({}, dataNew, dataNow - 1);
    cols_ = n;
    resizeAll();
    endRemoveColumns();
  }
}

void GridModel::setFixedRowCount(int n) {
  n = std::clamp(n, 0, std::min(1, rows_));
  if (n == fixedRows_) return;
  beginResetModel();
  fixedRows_ = n;
  endResetModel();
}

void GridModel::setFixedColumnCount(int n) {
  n = std::clamp(n, 0, std::min(1, cols_));
  if (n == fixedCols_) return;
  beginResetModel();
  fixedCols_ = n;
  endResetModel();
}

void GridModel::clear() {
  beginResetModel();
  rows_ = cols_ = fixedRows_ = fixedCols_ = 0;
  cells_.clear();
  modified_ = false;
  endResetModel();
}

const GridCell *GridModel::cell(int row, int col) const {
  return isValid(row, col) ? &cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] : nullptr;
}

void GridModel::changed(int row, int col) {
  if (row < fixedRows_ && col >= fixedCols_) {
    emit headerDataChanged(Qt::Horizontal, col - fixedCols_, col - fixedCols_);
  } else if (col < fixedCols_ && row >= fixedRows_) {
    emit headerDataChanged(Qt::Vertical, row - fixedRows_, row - fixedRows_);
  } else if (row >= fixedRows_ && col >= fixedCols_) {
    const QModelIndex i = indexOf(row, col);
    emit dataChanged(i, i);
  }
}

bool GridModel::setCell(int row, int col, const GridCell &cell) {
  if (!isValid(row, col)) return false;
  cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = cell;
  changed(row, col);
  return true;
}

QString GridModel::text(int row, int col) const {
  const GridCell *c = cell(row, col);
  return c ? c->text : QString();
}

bool GridModel::setText(int row, int col, const QString &text) {
  if (!isValid(row, col)) return false;
  GridCell &c = cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
  c.text = text;
  if (c.cellClass == GridCellClass::Check)
    c.text = (text.isEmpty() || text == QLatin1String("0")) ? QStringLiteral("0") : QStringLiteral("1");
  if (c.cellClass == GridCellClass::DateTime) {
    const QDateTime t = QDateTime::fromString(text, Qt::ISODate);
    if (t.isValid()) c.time = t;
  }
  c.state |= GVIS_MODIFIED;
  modified_ = true;
  changed(row, col);
  return true;
}

void GridModel::sortRows(int col, bool ascending,
                         const std::function<bool(const QString &, const QString &)> &less) {
  if (col < 0 || col >= cols_ || rows_ - fixedRows_ < 2) return;
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  std::vector<int> order(static_cast<std::size_t>(rows_ - fixedRows_));
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i) + fixedRows_;
  auto key = [&](int r) { return cells_[static_cast<std::size_t>(r)][static_cast<std::size_t>(col)].text; };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    return ascending ? less(key(a), key(b)) : less(key(b), key(a));
  });
  std::vector<std::vector<GridCell>> sorted(cells_.begin(), cells_.begin() + fixedRows_);
  std::vector<int> newRowOf(static_cast<std::size_t>(rows_), 0);
  for (std::size_t i = 0; i < order.size(); ++i) {
    sorted.push_back(std::move(cells_[static_cast<std::size_t>(order[i])]));
    newRowOf[static_cast<std::size_t>(order[i])] = static_cast<int>(i) + fixedRows_;
  }
  cells_ = std::move(sorted);
  QModelIndexList after;
  for (const QModelIndex &i : before)
    after << index(newRowOf[static_cast<std::size_t>(gridRow(i))] - fixedRows_, i.column());
  changePersistentIndexList(before, after);
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

QVariant GridModel::cellData(const GridCell &c, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      if (c.cellClass == GridCellClass::Check) return {};
      if (c.cellClass == GridCellClass::DateTime && c.text.isEmpty()) return c.time.toString(Qt::ISODate);
      return c.text;
    case Qt::EditRole:
      return c.text;
    case Qt::CheckStateRole:
      if (c.cellClass != GridCellClass::Check) return {};
      return c.text == QLatin1String("1") ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole: {
      Qt::Alignment a = Qt::AlignVCenter;
      a |= c.format == kGridFormatCenter ? Qt::AlignHCenter : c.format == kGridFormatRight ? Qt::AlignRight : Qt::AlignLeft;
      return QVariant::fromValue(a);
    }
    case Qt::ForegroundRole:
      return c.textColor.isValid() ? QVariant(c.textColor) : QVariant();
    case Qt::BackgroundRole:
      return c.backColor.isValid() ? QVariant(c.backColor) : QVariant();
    default:
      return {};
  }
}

QVariant GridModel::data(const QModelIndex &index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
  const GridCell *c = cell(gridRow(index), gridColumn(index));
  return c ? cellData(*c, role) : QVariant();
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role) {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return false;
  const int row = gridRow(index), col = gridColumn(index);
  const GridCell *c = cell(row, col);
  if (!c || (c->state & GVIS_READONLY)) return false;
  if (role == Qt::CheckStateRole && c->cellClass == GridCellClass::Check) {
    const bool on = value.toInt() == Qt::Checked;
    return setText(row, col, on ? QStringLiteral("1") : QStringLiteral("0"));
  }
  if (role != Qt::EditRole) return false;
  return setText(row, col, value.toString());
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const GridCell *c = cell(gridRow(index), gridColumn(index));
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!c) return f;
  const bool readOnly = c->state & GVIS_READONLY;
  if (c->cellClass == GridCellClass::Check) {
    if (!readOnly) f |= Qt::ItemIsUserCheckable;
  } else if (!readOnly) {
    f |= Qt::ItemIsEditable;
  }
  return f;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (section < 0) return {};
  if (orientation == Qt::Horizontal) {
    if (fixedRows_ == 0) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const GridCell *c = cell(0, section + fixedCols_);
    return c ? cellData(*c, role == Qt::EditRole ? Qt::DisplayRole : role) : QVariant();
  }
  if (fixedCols_ == 0) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  const GridCell *c = cell(section + fixedRows_, 0);
  return c ? cellData(*c, role == Qt::EditRole ? Qt::DisplayRole : role) : QVariant();
}

}  // namespace tabulon::ui
