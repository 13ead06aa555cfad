// Loads a DXF drawing into a database. Reading is two passes: every object of
// the file is read first (all errors of the file surface here), then the
// objects enter a scratch database and their references are resolved; the
// scratch database replaces the target's contents only when all went well.
#pragma once

#include "host/dxf/dxf_audit.h"
#include "host/dxf/dxf_version.h"

#include <filesystem>
#include <string>

class QaDbDatabase;

namespace tabulon::dxf {

struct DxfLoadInfo {
  DxfVersion version = DxfVersion::R2018;  // as read
  std::string encoding;                    // "UTF-8" or a code page name
  std::string encodingReason;
  DxfAuditReport audit;  // repairs made while loading
};

// Reads DXF text into `db`, replacing whatever it held. Throws DxfError for a
// file that cannot be read; `db` is then unchanged.
void dxfLoad(std::string bytes, const std::string& fileName, QaDbDatabase& db, DxfLoadInfo* info = nullptr);
// Reads a file ("-" is standard input).
void dxfLoadFile(const std::filesystem::path& path, QaDbDatabase& db, DxfLoadInfo* info = nullptr);

}  // namespace tabulon::dxf
