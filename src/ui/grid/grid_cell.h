// One cell of the grid control as plain data: its class (text, check box, combo,
// date-time, number), text, state and format bits, colours and class-specific values.
// The state and format numbers are those the card editor sets.
#pragma once

#include <QColor>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace tabulon::ui {

// Cell classes: CGridCell, CGridCellCheck, CGridCellCombo, CGridCellDateTime, CGridCellNumeric.
enum class GridCellClass { Text, Check, Combo, DateTime, Numeric };

constexpr unsigned GVIS_READONLY = 8;
constexpr unsigned GVIS_MODIFIED = 128;
// Left, centred and right text, all vertically centred.
constexpr unsigned kGridFormatLeft = 4;
constexpr unsigned kGridFormatCenter = 5;
constexpr unsigned kGridFormatRight = 6;
// Combo styles.
constexpr int CBS_SIMPLE = 1;
constexpr int CBS_DROPDOWN = 2;
constexpr int CBS_DROPDOWNLIST = 3;

struct GridCell {
  GridCellClass cellClass = GridCellClass::Text;
  QString text;  // a check box keeps "1" or "0"
  unsigned state = 0;
  unsigned format = kGridFormatLeft;
  QColor textColor;  // invalid: the grid's default
  QColor backColor;
  QStringList options;  // combo
  int comboStyle = CBS_DROPDOWN;
  QDateTime time;  // date-time, made with the present time
  unsigned numericFlags = 0;
};

// The cell with another class, its text kept (a check box reads "1" for any text
// other than "", "0").
GridCell WithCellClass(const GridCell &cell, GridCellClass cellClass);

}  // namespace tabulon::ui
