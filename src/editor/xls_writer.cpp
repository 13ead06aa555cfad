// BIFF8 records and the compound file around them.
#include "editor/xls_writer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "editor/sheet_table.h"

namespace tabulon::editor {
namespace {

constexpr std::size_t kMaxRecordData = 8224;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kFreeSector = 0xFFFFFFFF;
constexpr std::uint32_t kFatSector = 0xFFFFFFFD;
constexpr std::uint32_t kNoStream = 0xFFFFFFFF;
constexpr std::size_t kSector = 512;
constexpr std::uint16_t kCellXf = 15;

void Put16(std::string& out, std::uint32_t v) {
  out.push_back(static_cast<char>(v & 0xFF));
  out.push_back(static_cast<char>((v >> 8) & 0xFF));
}
void Put32(std::string& out, std::uint32_t v) {
  Put16(out, v & 0xFFFF);
  Put16(out, v >> 16);
}
void PutDouble(std::string& out, double v) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &v, sizeof bits);
  Put32(out, static_cast<std::uint32_t>(bits));
  Put32(out, static_cast<std::uint32_t>(bits >> 32));
}
void Set32(std::string& out, std::size_t at, std::uint32_t v) {
  for (int i = 0; i < 4; ++i) out[at + i] = static_cast<char>((v >> (8 * i)) & 0xFF);
}

void Record(std::string& out, std::uint16_t type, const std::string& data) {
  Put16(out, type);
  Put16(out, static_cast<std::uint32_t>(data.size()));
  out += data;
}

std::u16string Utf16(const std::wstring& text) {
  std::u16string out;
  for (wchar_t wc : text) {
    auto c = static_cast<std::uint32_t>(wc);
    if (c >= 0x10000 && c <= 0x10FFFF) {
      c -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(c > 0x10FFFF ? 0xFFFD : c));
    }
  }
  if (out.size() > 32767) out.resize(32767);
  return out;
}

std::string Bof(std::uint16_t kind) {
  std::string d;
  Put16(d, 0x0600);
  Put16(d, kind);
  Put16(d, 0x0DBB);
  Put16(d, 0x07CC);
  Put32(d, 0);
  Put32(d, 0x00000006);
  return d;
}

std::string Font() {
  std::string d;
  Put16(d, 200);     // height in twentieths of a point
  Put16(d, 0);       // attributes
  Put16(d, 0x7FFF);  // colour: automatic
  Put16(d, 400);     // weight
  Put16(d, 0);       // escapement
  d.push_back(0);    // underline
  d.push_back(0);    // family
  d.push_back(0);    // character set
  d.push_back(0);
  const std::u16string name = u"Arial";
  d.push_back(static_cast<char>(name.size()));
  d.push_back(0);  // compressed characters
  for (char16_t c : name) d.push_back(static_cast<char>(c));
  return d;
}

std::string Xf(bool style) {
  std::string d;
  Put16(d, 0);                          // font
  Put16(d, 0);                          // number format: general
  Put16(d, style ? 0xFFF5 : 0x0001);    // style flag and parent, or a locked cell of style 0
  d.push_back(0x20);                    // bottom aligned
  d.push_back(0);
  d.push_back(0);
  d.push_back(style ? 0 : static_cast<char>(0xF8));  // attributes given by this record
  Put32(d, 0);
  Put32(d, 0);
  Put16(d, 0x20C0);
  return d;
}

// The shared string table, split into CONTINUE records where it grows past a record;
// a string's header never splits, its characters split with a fresh flags byte.
void SharedStrings(std::string& out, const std::vector<std::u16string>& strings, std::uint32_t total) {
  std::vector<std::string> records(1);
  Put32(records[0], total);
  Put32(records[0], static_cast<std::uint32_t>(strings.size()));
  for (const std::u16string& s : strings) {
    if (records.back().size() + 3 > kMaxRecordData) records.emplace_back();
    Put16(records.back(), static_cast<std::uint32_t>(s.size()));
    records.back().push_back(0x01);
    std::size_t i = 0;
    while (i < s.size()) {
      if (records.back().size() + 2 > kMaxRecordData) {
        records.emplace_back();
        records.back().push_back(0x01);
      }
      const std::size_t room = (kMaxRecordData - records.back().size()) / 2;
      const std::size_t n = std::min(room, s.size() - i);
      for (std::size_t k = 0; k < n; ++k) Put16(records.back(), s[i + k]);
      i += n;
    }
  }
  Record(out, 0x00FC, records[0]);
  for (std::size_t i = 1; i < records.size(); ++i) Record(out, 0x003C, records[i]);
}

std::string WorkbookStream(const TextRows& rows, const std::wstring& sheetName) {
  // Cells first, so the string table is known.
  std::vector<std::u16string> strings;
  std::uint32_t stringUses = 0;
  std::string cells;
  std::size_t columns = 0;
  for (std::size_t r = 0; r < rows.size(); ++r) {
    columns = std::max(columns, rows[r].size());
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      const std::wstring& text = rows[r][c];
      if (text.empty()) continue;
      std::string d;
      Put16(d, static_cast<std::uint32_t>(r));
      Put16(d, static_cast<std::uint32_t>(c));
      Put16(d, kCellXf);
      double number = 0.0;
      if (ExactNumber(text, number)) {
        PutDouble(d, number);
        Record(cells, 0x0203, d);
      } else {
        Put32(d, static_cast<std::uint32_t>(strings.size()));
        strings.push_back(Utf16(text));
        ++stringUses;
        Record(cells, 0x00FD, d);
      }
    }
  }

  std::string out;
  Record(out, 0x0809, Bof(0x0005));
  std::string codepage;
  Put16(codepage, 1200);
  Record(out, 0x0042, codepage);
  std::string window;
  for (std::uint32_t v : {0u, 0u, 0x4000u, 0x2000u, 0x38u, 0u, 0u, 1u, 600u}) Put16(window, v);
  Record(out, 0x003D, window);
  for (int i = 0; i < 5; ++i) Record(out, 0x0031, Font());
  for (int i = 0; i < 15; ++i) Record(out, 0x00E0, Xf(true));
  Record(out, 0x00E0, Xf(false));
  std::string style;
  Put16(style, 0x8000);
  style.push_back(0);
  style.push_back(static_cast<char>(0xFF));
  Record(out, 0x0293, style);
  const std::size_t boundSheetAt = out.size() + 4;
  std::string bound;
  Put32(bound, 0);  // the sheet's offset, set below
  bound.push_back(0);
  bound.push_back(0);
  const std::u16string name = Utf16(sheetName.substr(0, 31));
  bound.push_back(static_cast<char>(name.size()));
  bound.push_back(0x01);
  for (char16_t c : name) Put16(bound, c);
  Record(out, 0x0085, bound);
  SharedStrings(out, strings, stringUses);
  Record(out, 0x000A, {});

  Set32(out, boundSheetAt, static_cast<std::uint32_t>(out.size()));
  Record(out, 0x0809, Bof(0x0010));
  std::string dimension;
  Put32(dimension, 0);
  Put32(dimension, static_cast<std::uint32_t>(rows.size()));
  Put16(dimension, 0);
  Put16(dimension, static_cast<std::uint32_t>(columns));
  Put16(dimension, 0);
  Record(out, 0x0200, dimension);
  out += cells;
  std::string window2;
  for (std::uint32_t v : {0x06B6u, 0u, 0u, 0x40u, 0u, 0u, 0u, 0u, 0u}) Put16(window2, v);
  Record(out, 0x023E, window2);
  Record(out, 0x000A, {});
  return out;
}

void DirectoryEntry(std::string& out, const std::u16string& name, char type, std::uint32_t child, std::uint32_t start,
                    std::uint32_t size) {
  std::string e(128, '\0');
  for (std::size_t i = 0; i < name.size(); ++i) {
    e[2 * i] = static_cast<char>(name[i] & 0xFF);
    e[2 * i + 1] = static_cast<char>(name[i] >> 8);
  }
  const auto nameBytes = static_cast<std::uint32_t>(name.empty() ? 0 : (name.size() + 1) * 2);
  e[0x40] = static_cast<char>(nameBytes);
  e[0x42] = type;
  e[0x43] = 1;  // black
  Set32(e, 0x44, kNoStream);
  Set32(e, 0x48, kNoStream);
  Set32(e, 0x4C, child);
  Set32(e, 0x74, start);
  Set32(e, 0x78, size);
  out += e;
}

// The compound file: the stream from sector 0, one directory sector, then the FAT.
Result<std::string> CompoundFile(std::string stream) {
  if (stream.size() < 4096) stream.resize(4096, '\0');
  const auto size = static_cast<std::uint32_t>(stream.size());
  stream.resize((stream.size() + kSector - 1) / kSector * kSector, '\0');
  const std::size_t streamSectors = stream.size() / kSector;
  std::size_t fatSectors = 1;
  while ((streamSectors + 1 + fatSectors + 127) / 128 > fatSectors) ++fatSectors;
  if (fatSectors > 109) return MakeError("the sheet is too large for an .xls file");
  const auto directorySector = static_cast<std::uint32_t>(streamSectors);

  std::string header(kSector, '\0');
  const unsigned char signature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
  std::memcpy(header.data(), signature, sizeof signature);
  std::string fields;
  Put16(fields, 0x003E);
  Put16(fields, 0x0003);
  Put16(fields, 0xFFFE);
  Put16(fields, 9);
  Put16(fields, 6);
  header.replace(0x18, fields.size(), fields);
  Set32(header, 0x2C, static_cast<std::uint32_t>(fatSectors));
  Set32(header, 0x30, directorySector);
  Set32(header, 0x38, 4096);
  Set32(header, 0x3C, kEndOfChain);
  Set32(header, 0x44, kEndOfChain);
  for (std::size_t i = 0; i < 109; ++i)
    Set32(header, 0x4C + 4 * i, i < fatSectors ? directorySector + 1 + static_cast<std::uint32_t>(i) : kFreeSector);

  std::string directory;
  DirectoryEntry(directory, u"Root Entry", 5, 1, kEndOfChain, 0);
  DirectoryEntry(directory, u"Workbook", 2, kNoStream, 0, size);
  DirectoryEntry(directory, u"", 0, kNoStream, 0, 0);
  DirectoryEntry(directory, u"", 0, kNoStream, 0, 0);

  std::string fat;
  for (std::size_t i = 0; i < streamSectors; ++i) Put32(fat, i + 1 == streamSectors ? kEndOfChain : static_cast<std::uint32_t>(i + 1));
  Put32(fat, kEndOfChain);
  for (std::size_t i = 0; i < fatSectors; ++i) Put32(fat, kFatSector);
  fat.resize(fatSectors * kSector, '\xFF');
  return header + stream + directory + fat;
}

}  // namespace

Result<std::string> BuildXlsWorkbook(const TextRows& rows, const std::wstring& sheetName) {
  if (rows.size() > 65536) return MakeError("an .xls sheet holds at most 65,536 rows");
  for (const auto& row : rows) {
    if (row.size() > 256) return MakeError("an .xls sheet holds at most 256 columns");
  }
  return CompoundFile(WorkbookStream(rows, sheetName));
}

Status WriteXlsFile(const std::filesystem::path& path, const TextRows& rows) {
  auto bytes = BuildXlsWorkbook(rows);
  if (!bytes.ok()) return Error(bytes.error()).inFile(path.string());
  std::filesystem::path temp = path;
  temp += ".tmp";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    out.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
    if (!out) {
      std::error_code ec;
      std::filesystem::remove(temp, ec);
      return MakeError("cannot write the spreadsheet").inFile(path.string());
    }
  }
  std::error_code ec;
  std::filesystem::rename(temp, path, ec);
  if (ec) {
    std::filesystem::remove(temp, ec);
    return MakeError("cannot replace the spreadsheet").inFile(path.string());
  }
  return Status::Ok();
}

}  // namespace tabulon::editor
