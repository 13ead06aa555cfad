// libFuzzer target of the .xls side. An even first byte: the rest is a file for the
// reader, which must read it or fail. An odd first byte: the rest is cut into a table of
// texts (lines and tabs), written by our BIFF8 writer, and read back; the texts must come
// back as they went in.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "editor/sheet_table.h"
#include "editor/xls_reader.h"
#include "editor/xls_writer.h"
#include "host/svc/utf8.h"

namespace {

std::filesystem::path ScratchFile() {
  static const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("tabulon-xls-fuzz-" + std::to_string(getpid()) + ".xls");
  return path;
}

void WriteBytes(const std::string& bytes) {
  std::ofstream out(ScratchFile(), std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

tabulon::editor::TextRows TableOf(const std::string& utf8) {
  tabulon::editor::TextRows rows(1);
  std::string cell;
  auto endCell = [&] {
    rows.back().push_back(tabulon::svc::fromUtf8(cell));
    cell.clear();
  };
  for (char c : utf8) {
    if (c == '\t') {
      endCell();
    } else if (c == '\n') {
      endCell();
      rows.emplace_back();
    } else {
      cell.push_back(c);
    }
  }
  endCell();
  return rows;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  if ((data[0] & 1) == 0) {
    WriteBytes(rest);
    (void)tabulon::editor::ReadXlsFile(ScratchFile());
    return 0;
  }
  if (!tabulon::svc::isValidUtf8(rest)) return 0;
  const tabulon::editor::TextRows rows = TableOf(rest);
  auto bytes = tabulon::editor::BuildXlsWorkbook(rows);
  if (!bytes.ok()) return 0;
  WriteBytes(*bytes);
  auto table = tabulon::editor::ReadXlsFile(ScratchFile());
  if (!table.ok()) std::abort();
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      std::wstring back;
      if (r < table->size() && c < (*table)[r].size()) back = tabulon::editor::CellText((*table)[r][c], 0);
      // Texts that FreeXL cannot carry (a NUL) and very long texts are cut by the format.
      const std::wstring& sent = rows[r][c];
      if (sent.find(L'\0') != std::wstring::npos || sent.size() > 32767) continue;
      if (back != sent) std::abort();
    }
  }
  return 0;
}
