// Writes one sheet of text and number cells as an .xlsx workbook with libxlsxwriter.
// Texts that read back exactly as numbers are stored as numbers; empty texts leave
// the cell empty.
#pragma once

#include <filesystem>

#include "editor/xls_writer.h"
#include "host/svc/result.h"

namespace tabulon::editor {

// Writes through a temporary file beside `path`, so a failure keeps an old file.
Status WriteXlsxFile(const std::filesystem::path& path, const TextRows& rows);

}  // namespace tabulon::editor
