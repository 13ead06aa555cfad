// Reading and writing a drawing file into and out of a database. Implemented by the
// drawing-file codec (src/host/dxf).
#pragma once

#include <filesystem>
#include <string>

#include "host/db/qa_error_status.h"

class QaDbDatabase;

// Loads the drawing at `path` into `db`, which should be an empty database
// (QaDbDatabase(false)). On failure `db` is left as it was and `error`, when given,
// receives a message naming file, line and group code.
Qa::ErrorStatus qadbReadDxf(QaDbDatabase& db, const std::filesystem::path& path, std::string* error);
// Writes `db` to `path` in the database's version (a temporary file renamed on success,
// so a failed save leaves an old file whole).
Qa::ErrorStatus qadbWriteDxf(QaDbDatabase& db, const std::filesystem::path& path, std::string* error);
