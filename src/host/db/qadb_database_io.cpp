// The file members of the database, kept apart: they pull in the drawing-file codec.
#include "host/db/qadb_database.h"
#include "host/db/qadb_file_io.h"

Qa::ErrorStatus QaDbDatabase::readDwgFile(const std::filesystem::path& path, int /*shareMode*/, std::string* error) {
  Qa::ErrorStatus es = qadbReadDxf(*this, path, error);
  if (es == Qa::eOk) filename_ = path;
  return es;
}

Qa::ErrorStatus QaDbDatabase::saveAs(const std::filesystem::path& path, QaDb::DwgVersion version, std::string* error) {
  if (version != QaDb::kDwgCurrent) {
    std::string name = versionName(version);
    if (name.empty()) return Qa::eInvalidInput;
    version_ = name;
  }
  Qa::ErrorStatus es = qadbWriteDxf(*this, path, error);
  if (es == Qa::eOk) filename_ = path;
  return es;
}
