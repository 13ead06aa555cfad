// Writes a database as an ASCII DXF file of R2000 to R2018. What was loaded
// and not modified is written from its original tags; the rest from fields.
#pragma once

#include "host/dxf/dxf_sink.h"
#include "host/dxf/dxf_version.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

class QaDbDatabase;

namespace tabulon::dxf {

struct DxfWriteOptions {
  // Default: the database's version; R12 to R14 become R2000.
  std::optional<DxfVersion> version;
};

// The version a save will use.
DxfVersion dxfTargetVersion(const QaDbDatabase& db, const DxfWriteOptions& options = {});

// Writes the whole drawing to `sink`. Throws DxfError (also for sink failures).
void dxfWrite(const QaDbDatabase& db, DxfSink& sink, const DxfWriteOptions& options = {});

// Writes to `path` through a temporary file beside it that replaces the file
// only when complete: a failed save leaves an existing file as it was. "-"
// writes to standard output.
void dxfSaveFile(const QaDbDatabase& db, const std::filesystem::path& path, const DxfWriteOptions& options = {});

// As above, with the sink of the temporary file made by `makeSink` (so that
// tests can make the writing fail half-way).
using DxfSinkFactory = std::function<std::unique_ptr<DxfSink>(const std::filesystem::path& temp)>;
void dxfSaveFile(const QaDbDatabase& db, const std::filesystem::path& path, const DxfWriteOptions& options,
                 const DxfSinkFactory& makeSink);

}  // namespace tabulon::dxf
