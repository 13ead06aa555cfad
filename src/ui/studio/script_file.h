// Script files of the studio (.scr): one command-line input a line, as CAD programs
// take them. UTF-8 (a byte-order mark is skipped), else GB18030; line ends of either
// kind; a line that starts with ";" is a comment.
#pragma once

#include <QStringList>

#include <filesystem>

#include "host/svc/result.h"

namespace tabulon::ui {

Result<QStringList> ReadScriptFile(const std::filesystem::path &path);
QStringList ParseScript(const QByteArray &bytes);

}  // namespace tabulon::ui
