// libFuzzer target of the DXF reader: any bytes either load (and then save and
// load again) or fail with DxfError; nothing else may happen (no crash, no
// other exception, no leak, no undefined behaviour).
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/db/qadb_database.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_sink.h"
#include "host/dxf/dxf_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  QaDbDatabase db(false);
  try {
    tabulon::dxf::dxfLoad(bytes, "fuzz.dxf", db);
  } catch (const tabulon::dxf::DxfError&) {
    return 0;
  }
  // What loaded must save, and what we saved must load again.
  std::string saved;
  tabulon::dxf::DxfStringSink sink(saved);
  tabulon::dxf::dxfWrite(db, sink);
  QaDbDatabase again(false);
  tabulon::dxf::dxfLoad(saved, "saved.dxf", again);
  return 0;
}
