// The .xlsx reader: the package is opened with libzip, its parts parsed with pugixml.
#include "editor/xlsx_reader.h"

#include <zip.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "host/svc/utf8.h"

namespace tabulon::editor {
namespace {

// Limits that keep a damaged or hostile file from taking the machine.
constexpr zip_uint64_t kMaxPartBytes = 256u << 20;
constexpr long kMaxRows = 1048576;
constexpr long kMaxColumns = 16384;

struct Failure {
  Error error;
};

[[noreturn]] void Fail(std::string message, const std::string& source, std::string field = {}) {
  throw Failure{MakeError(std::move(message)).inFile(source).inField(std::move(field))};
}

struct ZipCloser {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ZipHandle = std::unique_ptr<zip_t, ZipCloser>;

ZipHandle OpenArchive(const std::string& bytes, const std::string& source) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* src = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
  if (src == nullptr) {
    zip_error_fini(&error);
    Fail("not a spreadsheet: cannot read the file as a zip package", source);
  }
  zip_t* archive = zip_open_from_source(src, ZIP_RDONLY | ZIP_CHECKCONS, &error);
  zip_error_fini(&error);
  if (archive == nullptr) {
    zip_source_free(src);
    Fail("not a spreadsheet: the file is no zip package or the package is damaged", source);
  }
  return ZipHandle(archive);
}

// The part's bytes, or nothing when the package has no such part.
std::optional<std::string> ReadPart(zip_t* archive, const std::string& name, const std::string& source) {
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_stat(archive, name.c_str(), 0, &stat) != 0) return std::nullopt;
  if ((stat.valid & ZIP_STAT_SIZE) == 0 || stat.size > kMaxPartBytes) Fail("the part is too large or damaged", source, name);
  std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen(archive, name.c_str(), 0), &zip_fclose);
  if (!file) Fail("cannot open the part", source, name);
  std::string bytes(static_cast<std::size_t>(stat.size), '\0');
  zip_int64_t done = 0;
  while (done < static_cast<zip_int64_t>(bytes.size())) {
    const zip_int64_t got = zip_fread(file.get(), bytes.data() + done, bytes.size() - static_cast<std::size_t>(done));
    if (got <= 0) Fail("the part is damaged (cannot be decompressed)", source, name);
    done += got;
  }
  return bytes;
}

pugi::xml_document ParseXml(const std::string& bytes, const std::string& source, const std::string& part) {
  pugi::xml_document doc;
  const pugi::xml_parse_result parsed = doc.load_buffer(bytes.data(), bytes.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!parsed) Fail(std::string("the part is not well-formed XML: ") + parsed.description(), source, part);
  return doc;
}

// A name without its namespace prefix.
std::string_view LocalName(const pugi::xml_node& node) {
  std::string_view name = node.name();
  const auto colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node Child(const pugi::xml_node& node, std::string_view local) {
  for (pugi::xml_node child : node.children()) {
    if (LocalName(child) == local) return child;
  }
  return {};
}

// The text of a string item: its <t>, or the <t> of each run in order.
std::wstring StringItemText(const pugi::xml_node& item) {
  std::string text;
  for (pugi::xml_node child : item.children()) {
    const std::string_view name = LocalName(child);
    if (name == "t") {
      text += child.text().get();
    } else if (name == "r") {
      if (pugi::xml_node t = Child(child, "t")) text += t.text().get();
    }
  }
  return svc::fromUtf8(text);
}

std::string Resolve(const std::string& base, std::string target) {
  if (target.starts_with('/')) return target.substr(1);
  std::string folder = base;
  while (target.starts_with("../")) {
    target.erase(0, 3);
    const auto slash = folder.find_last_of('/', folder.empty() ? 0 : folder.size() - 2);
    folder = slash == std::string::npos ? std::string() : folder.substr(0, slash + 1);
  }
  return folder + target;
}

// The part name of the first sheet in the workbook's order.
std::string FirstSheetPart(zip_t* archive, const std::string& source) {
  const std::string fallback = "xl/worksheets/sheet1.xml";
  const auto workbook = ReadPart(archive, "xl/workbook.xml", source);
  if (!workbook) return fallback;
  const pugi::xml_document wb = ParseXml(*workbook, source, "xl/workbook.xml");
  const pugi::xml_node sheet = Child(Child(Child(wb, "workbook"), "sheets"), "sheet");
  if (!sheet) Fail("the workbook has no sheet", source, "xl/workbook.xml");
  std::string id;
  for (pugi::xml_attribute a : sheet.attributes()) {
    const std::string_view name = a.name();
    if (name == "r:id" || (name.size() > 3 && name.ends_with(":id"))) id = a.value();
  }
  const auto rels = ReadPart(archive, "xl/_rels/workbook.xml.rels", source);
  if (id.empty() || !rels) return fallback;
  const pugi::xml_document doc = ParseXml(*rels, source, "xl/_rels/workbook.xml.rels");
  for (pugi::xml_node rel : Child(doc, "Relationships").children()) {
    if (LocalName(rel) == "Relationship" && id == rel.attribute("Id").value()) return Resolve("xl/", rel.attribute("Target").value());
  }
  return fallback;
}

std::vector<std::wstring> SharedStrings(zip_t* archive, const std::string& source) {
  std::vector<std::wstring> strings;
  const auto part = ReadPart(archive, "xl/sharedStrings.xml", source);
  if (!part) return strings;
  const pugi::xml_document doc = ParseXml(*part, source, "xl/sharedStrings.xml");
  for (pugi::xml_node item : Child(doc, "sst").children()) {
    if (LocalName(item) == "si") strings.push_back(StringItemText(item));
  }
  return strings;
}

// Zero-based row and column of a reference such as "B3"; false when it is none.
bool ParseReference(std::string_view ref, long& row, long& col) {
  std::size_t i = 0;
  long c = 0, r = 0;
  while (i < ref.size() && ref[i] >= 'A' && ref[i] <= 'Z') {
    c = c * 26 + (ref[i] - 'A' + 1);
    if (c > kMaxColumns) return false;
    ++i;
  }
  if (i == 0 || i == ref.size()) return false;
  for (; i < ref.size(); ++i) {
    if (ref[i] < '0' || ref[i] > '9') return false;
    r = r * 10 + (ref[i] - '0');
    if (r > kMaxRows) return false;
  }
  if (r < 1) return false;
  row = r - 1;
  col = c - 1;
  return true;
}

SheetCell ReadCell(const pugi::xml_node& c, const std::vector<std::wstring>& shared, const std::string& source,
                   const std::string& where) {
  SheetCell cell;
  const std::string_view type = c.attribute("t").value();
  const pugi::xml_node v = Child(c, "v");
  if (type == "inlineStr") {
    cell.kind = SheetCell::Kind::kText;
    cell.text = StringItemText(Child(c, "is"));
  } else if (!v) {
    return cell;
  } else if (type == "s") {
    const long index = v.text().as_llong(-1);
    if (index < 0 || index >= static_cast<long>(shared.size())) Fail("the shared string index is out of range", source, where);
    cell.kind = SheetCell::Kind::kText;
    cell.text = shared[static_cast<std::size_t>(index)];
  } else if (type == "str" || type == "e") {
    cell.kind = SheetCell::Kind::kText;
    cell.text = svc::fromUtf8(v.text().get());
  } else if (type == "b") {
    cell.kind = SheetCell::Kind::kBool;
    cell.number = std::string_view(v.text().get()) == "1" ? 1.0 : 0.0;
  } else {
    const std::string text = v.text().get();
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || end != text.c_str() + text.size()) Fail("the number \"" + text + "\" cannot be read", source, where);
    cell.kind = SheetCell::Kind::kNumber;
    cell.number = value;
  }
  return cell;
}

SheetTable ReadSheet(zip_t* archive, const std::string& part, const std::vector<std::wstring>& shared,
                     const std::string& source) {
  const auto bytes = ReadPart(archive, part, source);
  if (!bytes) Fail("the workbook names a sheet that the package does not hold", source, part);
  const pugi::xml_document doc = ParseXml(*bytes, source, part);
  const pugi::xml_node data = Child(Child(doc, "worksheet"), "sheetData");
  if (!Child(doc, "worksheet")) Fail("the part is no worksheet", source, part);
  SheetTable table;
  long nextRow = 0;
  for (pugi::xml_node row : data.children()) {
    if (LocalName(row) != "row") continue;
    long r = row.attribute("r").as_llong(nextRow + 1) - 1;
    if (r < 0 || r >= kMaxRows) Fail("a row number is out of range", source, part);
    long nextCol = 0;
    for (pugi::xml_node c : row.children()) {
      if (LocalName(c) != "c") continue;
      long cellRow = r, col = nextCol;
      if (pugi::xml_attribute ref = c.attribute("r")) {
        if (!ParseReference(ref.value(), cellRow, col)) Fail(std::string("bad cell reference \"") + ref.value() + "\"", source, part);
      }
      const std::string where = part + " " + c.attribute("r").value();
      SheetCell cell = ReadCell(c, shared, source, where);
      nextCol = col + 1;
      if (cell.kind == SheetCell::Kind::kEmpty) continue;
      if (static_cast<long>(table.size()) <= cellRow) table.resize(static_cast<std::size_t>(cellRow) + 1);
      auto& cells = table[static_cast<std::size_t>(cellRow)];
      if (static_cast<long>(cells.size()) <= col) cells.resize(static_cast<std::size_t>(col) + 1);
      cells[static_cast<std::size_t>(col)] = std::move(cell);
    }
    nextRow = r + 1;
  }
  return table;
}

}  // namespace

Result<SheetTable> ReadXlsxBytes(const std::string& bytes, const std::string& source) {
  try {
    ZipHandle archive = OpenArchive(bytes, source);
    const std::vector<std::wstring> shared = SharedStrings(archive.get(), source);
    return ReadSheet(archive.get(), FirstSheetPart(archive.get(), source), shared, source);
  } catch (const Failure& f) {
    return f.error;
  } catch (const std::bad_alloc&) {
    return MakeError("the sheet is too large to read").inFile(source);
  }
}

Result<SheetTable> ReadXlsxFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return MakeError("cannot open the spreadsheet").inFile(path.string());
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (bytes.empty()) return MakeError("the spreadsheet file is empty").inFile(path.string());
  return ReadXlsxBytes(bytes, path.string());
}

}  // namespace tabulon::editor
