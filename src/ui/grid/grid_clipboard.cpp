#include "ui/grid/grid_clipboard.h"

namespace tabulon::ui {

namespace {

QString quoted(const QString &cell) {
  if (!cell.contains(QLatin1Char('\t')) && !cell.contains(QLatin1Char('\n')) && !cell.contains(QLatin1Char('"')) &&
      !cell.contains(QLatin1Char('\r')))
    return cell;
  QString out = cell;
  out.replace(QLatin1String("\""), QLatin1String("\"\""));
  return QLatin1Char('"') + out + QLatin1Char('"');
}

}  // namespace

QString ToTabSeparated(const QVector<QStringList> &rows) {
  QString out;
  for (const auto &row : rows) {
    for (qsizetype c = 0; c < row.size(); ++c) {
      if (c > 0) out += QLatin1Char('\t');
      out += quoted(row[c]);
    }
    out += QLatin1String("\r\n");
  }
  return out;
}

QVector<QStringList> FromTabSeparated(const QString &text) {
  QVector<QStringList> rows;
  QStringList row;
  QString cell;
  bool inQuotes = false;
  bool cellStarted = false;
  const qsizetype n = text.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar ch = text[i];
    if (inQuotes) {
      if (ch == QLatin1Char('"')) {
        if (i + 1 < n && text[i + 1] == QLatin1Char('"')) {
          cell += ch;
          ++i;
        } else {
          inQuotes = false;
        }
      } else {
        cell += ch;
      }
      continue;
    }
    if (ch == QLatin1Char('"') && !cellStarted) {
      inQuotes = true;
      cellStarted = true;
    } else if (ch == QLatin1Char('\t')) {
      row << cell;
      cell.clear();
      cellStarted = false;
    } else if (ch == QLatin1Char('\n') || ch == QLatin1Char('\r')) {
      if (ch == QLatin1Char('\r') && i + 1 < n && text[i + 1] == QLatin1Char('\n')) ++i;
      row << cell;
      rows << row;
      row.clear();
      cell.clear();
      cellStarted = false;
    } else {
      cell += ch;
      cellStarted = true;
    }
  }
  if (cellStarted || !cell.isEmpty() || !row.isEmpty()) {
    row << cell;
    rows << row;
  }
  return rows;
}

}  // namespace tabulon::ui
