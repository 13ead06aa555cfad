// Bounds of the compound file and of the BIFF records.
#include "editor/xls_check.h"

#include <cstdint>
#include <set>
#include <vector>

namespace tabulon::editor {
namespace {

constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::size_t kMaxRecordData = 8224;

struct Bad {
  std::string what;
};

std::uint32_t Get16(const std::string& b, std::size_t at) {
  if (at + 2 > b.size()) throw Bad{"the file ends inside a field"};
  return static_cast<std::uint8_t>(b[at]) | static_cast<std::uint32_t>(static_cast<std::uint8_t>(b[at + 1])) << 8;
}
std::uint32_t Get32(const std::string& b, std::size_t at) { return Get16(b, at) | Get16(b, at + 2) << 16; }

class CompoundFile {
 public:
  explicit CompoundFile(const std::string& bytes) : bytes_(bytes) {
    static const char signature[] = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    if (bytes_.size() < 512 || bytes_.compare(0, 8, signature, 8) != 0) throw Bad{"no compound file header"};
    const std::uint32_t shift = Get16(bytes_, 0x1E);
    if (shift != 9 && shift != 12) throw Bad{"bad sector size in the header"};
    sector_ = std::size_t{1} << shift;
    if (Get16(bytes_, 0x20) != 6) throw Bad{"bad mini sector size in the header"};
    // The FAT: its sectors from the header's list and the chain of list sectors.
    std::vector<std::uint32_t> fatSectors;
    const std::uint32_t fatCount = Get32(bytes_, 0x2C);
    for (std::uint32_t i = 0; i < 109 && fatSectors.size() < fatCount; ++i) fatSectors.push_back(Get32(bytes_, 0x4C + 4 * i));
    std::uint32_t difat = Get32(bytes_, 0x44);
    std::set<std::uint32_t> seen;
    while (fatSectors.size() < fatCount && difat < kEndOfChain) {
      if (!seen.insert(difat).second) throw Bad{"the sector list loops"};
      const std::size_t at = Offset(difat);
      for (std::size_t i = 0; i + 1 < sector_ / 4 && fatSectors.size() < fatCount; ++i) fatSectors.push_back(Get32(bytes_, at + 4 * i));
      difat = Get32(bytes_, at + sector_ - 4);
    }
    if (fatSectors.size() < fatCount) throw Bad{"the sector allocation table is incomplete"};
    for (std::uint32_t s : fatSectors) {
      const std::size_t at = Offset(s);
      for (std::size_t i = 0; i < sector_ / 4; ++i) fat_.push_back(Get32(bytes_, at + 4 * i));
    }
  }

  // The bytes of a chain of sectors from `start`, cut to `size`.
  std::string Chain(std::uint32_t start, std::size_t size, bool mini) const {
    std::string out;
    std::set<std::uint32_t> seen;
    const std::vector<std::uint32_t>& table = mini ? miniFat_ : fat_;
    const std::size_t unit = mini ? 64 : sector_;
    for (std::uint32_t s = start; s != kEndOfChain && out.size() < size;) {
      if (s >= table.size() || !seen.insert(s).second) throw Bad{"a stream's sector chain is broken"};
      if (mini) {
        if ((s + 1) * unit > miniStream_.size()) throw Bad{"a stream lies outside the mini stream"};
        out.append(miniStream_, s * unit, unit);
      } else {
        out.append(bytes_, Offset(s), unit);
      }
      s = table[s];
    }
    if (out.size() < size) throw Bad{"a stream is shorter than its directory entry says"};
    out.resize(size);
    return out;
  }

  // The workbook stream ("Workbook", or "Book" of older files).
  std::string Workbook() {
    const std::string directory = Chain(Get32(bytes_, 0x30), ChainLength(Get32(bytes_, 0x30)), false);
    std::string found;
    bool have = false;
    for (std::size_t at = 0; at + 128 <= directory.size(); at += 128) {
      const std::uint32_t nameBytes = Get16(directory, at + 0x40);
      const int type = static_cast<std::uint8_t>(directory[at + 0x42]);
      const std::uint32_t start = Get32(directory, at + 0x74);
      const std::uint32_t size = Get32(directory, at + 0x78);
      if (type == 5) {
        miniFat_.clear();
        const std::uint32_t miniFatStart = Get32(bytes_, 0x3C);
        if (miniFatStart < kEndOfChain) {
          const std::string table = Chain(miniFatStart, ChainLength(miniFatStart), false);
          for (std::size_t i = 0; i + 4 <= table.size(); i += 4) miniFat_.push_back(Get32(table, i));
        }
        miniStream_ = start < kEndOfChain ? Chain(start, size, false) : std::string();
        continue;
      }
      if (type != 2 || nameBytes > 64) continue;
      std::string name;
      for (std::size_t i = 0; i + 2 < nameBytes; i += 2) name.push_back(static_cast<char>(directory[at + i]));
      if ((name == "Workbook" || name == "Book") && !have) {
        found = directory.substr(at, 128);
        have = true;
      }
    }
    if (!have) throw Bad{"the file holds no workbook stream"};
    const std::uint32_t size = Get32(found, 0x78);
    return Chain(Get32(found, 0x74), size, size < 4096);
  }

 private:
  std::size_t Offset(std::uint32_t s) const {
    const std::size_t at = (static_cast<std::size_t>(s) + 1) * sector_;
    if (s >= kEndOfChain - 3 || at + sector_ > bytes_.size()) throw Bad{"a sector lies outside the file"};
    return at;
  }
  std::size_t ChainLength(std::uint32_t start) const {
    std::size_t count = 0;
    std::set<std::uint32_t> seen;
    for (std::uint32_t s = start; s != kEndOfChain; s = fat_[s], ++count) {
      if (s >= fat_.size() || !seen.insert(s).second) throw Bad{"a sector chain is broken"};
    }
    return count * sector_;
  }

  const std::string& bytes_;
  std::size_t sector_ = 512;
  std::vector<std::uint32_t> fat_;
  std::vector<std::uint32_t> miniFat_;
  std::string miniStream_;
};

// The string of `length` characters with a flags byte at `at` fits within `end`.
void CheckString(const std::string& s, std::size_t at, std::size_t length, std::size_t end, const char* record) {
  if (at >= end) throw Bad{std::string("a string of a ") + record + " record is cut off"};
  const bool wide = (static_cast<std::uint8_t>(s[at]) & 1) != 0;
  if (at + 1 + length * (wide ? 2 : 1) > end) throw Bad{std::string("a string runs past its ") + record + " record"};
}

void CheckRecords(const std::string& stream) {
  std::size_t at = 0;
  while (at + 4 <= stream.size()) {
    const std::uint32_t type = Get16(stream, at);
    const std::size_t length = Get16(stream, at + 2);
    const std::size_t data = at + 4, end = data + length;
    if (length > kMaxRecordData || end > stream.size()) throw Bad{"a record runs past the workbook stream"};
    switch (type) {
      case 0x0085:  // sheet: offset, state, kind, name (1-byte count)
        if (length < 8) throw Bad{"a sheet record is too short"};
        CheckString(stream, data + 7, static_cast<std::uint8_t>(stream[data + 6]), end, "sheet");
        break;
      case 0x0031:  // font: name with a 1-byte count at 14
        if (length < 16) throw Bad{"a font record is too short"};
        CheckString(stream, data + 15, static_cast<std::uint8_t>(stream[data + 14]), end, "font");
        break;
      case 0x041E:  // number format: index, name with a 2-byte count
        if (length < 5) throw Bad{"a number format record is too short"};
        CheckString(stream, data + 4, Get16(stream, data + 2), end, "number format");
        break;
      case 0x0204:  // text cell: row, column, format, text with a 2-byte count
        if (length < 9) throw Bad{"a text cell record is too short"};
        CheckString(stream, data + 8, Get16(stream, data + 6), end, "text cell");
        break;
      case 0x00FD:  // shared-string cell: row, column, format, index
      case 0x0203:  // number cell
      case 0x027E:  // packed number cell
        if (length < (type == 0x00FD ? 10u : type == 0x0203 ? 14u : 10u)) throw Bad{"a cell record is too short"};
        break;
      default:
        break;
    }
    at = end;
  }
}

}  // namespace

Status CheckXlsStructure(const std::string& bytes, const std::string& source) {
  try {
    CompoundFile file(bytes);
    CheckRecords(file.Workbook());
    return Status::Ok();
  } catch (const Bad& bad) {
    return MakeError("not an Excel 97-2003 workbook, or it is damaged: " + bad.what).inFile(source);
  } catch (const std::bad_alloc&) {
    return MakeError("not an Excel 97-2003 workbook, or it is damaged: sizes out of bounds").inFile(source);
  }
}

}  // namespace tabulon::editor
