// libFuzzer target of the .xlsx reader: any bytes either read as a sheet or give an
// error; nothing else may happen (no crash, no exception, no leak, no undefined
// behaviour, no hang on a damaged package).
#include <cstddef>
#include <cstdint>
#include <string>

#include "editor/xlsx_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  auto table = tabulon::editor::ReadXlsxBytes(bytes, "fuzz.xlsx");
  if (table.ok()) (void)tabulon::editor::SheetColumnCount(*table);
  return 0;
}
