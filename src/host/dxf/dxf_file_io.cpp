// The database's file functions, through the codec.
#include "host/db/qadb_database.h"
#include "host/db/qadb_file_io.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_writer.h"

#include <filesystem>

Qa::ErrorStatus qadbReadDxf(QaDbDatabase& db, const std::filesystem::path& path, std::string* error) {
  try {
    std::error_code ec;
    if (path != "-" && !std::filesystem::exists(path, ec)) {
      if (error) *error = path.string() + ": no such file";
      return Qa::eFileNotFound;
    }
    tabulon::dxf::dxfLoadFile(path, db);
    return Qa::eOk;
  } catch (const tabulon::dxf::DxfError& e) {
    if (error) *error = e.what();
    return e.line() == 0 ? Qa::eFileAccessErr : Qa::eBadDxfFile;
  }
}

Qa::ErrorStatus qadbWriteDxf(QaDbDatabase& db, const std::filesystem::path& path, std::string* error) {
  try {
    tabulon::dxf::dxfSaveFile(db, path);
    return Qa::eOk;
  } catch (const tabulon::dxf::DxfError& e) {
    if (error) *error = e.what();
    return Qa::eFileError;
  }
}
