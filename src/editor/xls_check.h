// A check of an .xls file's structure before the reader library parses it: the
// compound file's sectors, the workbook stream and every record in it must lie within
// their bounds, and the strings of the records that carry names must fit their records.
// A damaged or hostile file is refused here with a message, instead of being read past
// its ends.
#pragma once

#include <string>

#include "host/svc/result.h"

namespace tabulon::editor {

Status CheckXlsStructure(const std::string& bytes, const std::string& source);

}  // namespace tabulon::editor
