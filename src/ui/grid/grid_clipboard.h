// Cells as tab-separated text, the form in which spreadsheet programs exchange cells
// through the clipboard: rows end with a line break, cells are separated by tabs, and
// a cell holding a tab, a line break or a quote is quoted with inner quotes doubled.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace tabulon::ui {

QString ToTabSeparated(const QVector<QStringList> &rows);
// Reads what ToTabSeparated writes (and what spreadsheet programs put on the
// clipboard): "\r\n" or "\n" line ends, one trailing line end ignored.
QVector<QStringList> FromTabSeparated(const QString &text);

}  // namespace tabulon::ui
