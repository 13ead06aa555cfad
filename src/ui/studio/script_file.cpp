#include "ui/studio/script_file.h"

#include <QFile>
#include <QStringDecoder>

namespace tabulon::ui {

QStringList ParseScript(const QByteArray &bytes) {
  QByteArray data = bytes;
  if (data.startsWith("\xEF\xBB\xBF")) data.remove(0, 3);
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString text = utf8.decode(data);
  if (utf8.hasError()) {
    QStringDecoder gb("GB18030");
    if (gb.isValid()) text = gb.decode(data);
  }
  QStringList lines;
  for (QString line : text.split(QLatin1Char('\n'))) {
    if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
    if (line.startsWith(QLatin1Char(';'))) continue;
    lines << line;
  }
  // The newline that ends the file is no empty input of its own.
  if (!lines.isEmpty() && lines.back().isEmpty() && text.endsWith(QLatin1Char('\n'))) lines.removeLast();
  return lines;
}

Result<QStringList> ReadScriptFile(const std::filesystem::path &path) {
  QFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::ReadOnly)) return MakeError("cannot read the script: " + file.errorString().toStdString()).inFile(path.string());
  return ParseScript(file.readAll());
}

}  // namespace tabulon::ui
