#include "editor/sheet_exchange.h"

#include <gtest/gtest.h>

#include "editor/data_file_export.h"
#include "editor/excel_operate.h"
#include "editor/table_rows_import.h"
#include "editor/sheet_table.h"
#include "editor_test_support.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

using tabulon::svc::fromPath;
using tabulon::svc::fromUtf8;

namespace {

const std::vector<std::wstring> kNames = {L"序号", L"工序名称", L"工时", L"备注"};
const std::vector<std::vector<std::wstring>> kRows = {
    {L"1", L"车外圆", L"12.5", L""}, {L"2", L"", L"0.25", L"注意: 去毛刺"}, {L"3", L"钻孔 Φ6", L"7", L"12.50"}};

// Every cell of the first sheet as the independent reader sees it: one line per row,
// cells separated by "|", numbers printed with repr, empty cells as "".
const char* kOpenpyxlDump = R"(
import sys, openpyxl
ws = openpyxl.load_workbook(sys.argv[1]).worksheets[0]
for row in ws.iter_rows(min_row=1, max_row=ws.max_row, max_col=4, values_only=True):
    print("|".join("" if v is None else (repr(float(v)) if not isinstance(v, str) else v) for v in row))
)";
const char* kXlrdDump = R"(
import sys, xlrd
ws = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)
for r in range(ws.nrows):
    cells = [ws.cell(r, c) for c in range(4)] if ws.ncols >= 4 else [ws.cell(r, c) for c in range(ws.ncols)]
    print("|".join(c.value if c.ctype == xlrd.XL_CELL_TEXT else ("" if c.ctype == xlrd.XL_CELL_EMPTY else repr(c.value)) for c in cells))
)";

struct IndependentReader {
  const char* name;
  const char* file;
  bool xlsx;
  const char* script;
};

class ExportedSheet : public ::testing::TestWithParam<IndependentReader> {};

// Texts stay texts (Chinese included, "12.50" too), exact numbers become numbers, and
// empty cells stay empty.
TEST_P(ExportedSheet, IsReadByAnIndependentReaderWithTheSameCells) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / GetParam().file;
  ASSERT_TRUE(ExportSheet(edtest::MakeGrid(kNames, kRows), fromPath(path), GetParam().xlsx));
  const auto result = tabulon::test::runPython(GetParam().script, {path.string()});
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.output,
            "序号|工序名称|工时|备注\n"
            "1.0|车外圆|12.5|\n"
            "2.0||0.25|注意: 去毛刺\n"
            "3.0|钻孔 Φ6|7.0|12.50\n");
}

INSTANTIATE_TEST_SUITE_P(Readers, ExportedSheet,
                         ::testing::Values(IndependentReader{"openpyxl", "t.xlsx", true, kOpenpyxlDump},
                                           IndependentReader{"xlrd", "t.xls", false, kXlrdDump}),
                         [](const auto& info) { return std::string(info.param.name); });

class SheetRoundTrip : public ::testing::TestWithParam<bool> {};

TEST_P(SheetRoundTrip, ExportThenImportGivesTheSameTable) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / (GetParam() ? "t.xlsx" : "t.xls");
  const KrmDataGrid grid = edtest::MakeGrid(kNames, kRows);
  ASSERT_TRUE(ExportSheet(grid, fromPath(path), GetParam()));
  KrmDataGrid back = edtest::MakeGrid(kNames, {});
  ASSERT_TRUE(ImportSheet(back, fromPath(path), GetParam(), {0, 0, 0, 0}));
  for (int c = 0; c < 4; ++c) EXPECT_EQ(edtest::Column(back, c), edtest::Column(grid, c)) << c;
}

// Past one BIFF record of shared strings, so the table continues in further records.
TEST_P(SheetRoundTrip, KeepsManyLongTexts) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / (GetParam() ? "big.xlsx" : "big.xls");
  std::vector<std::vector<std::wstring>> rows;
  for (int r = 0; r < 600; ++r) rows.push_back({std::to_wstring(r), std::wstring(37 + r % 13, L'工') + std::to_wstring(r)});
  const KrmDataGrid grid = edtest::MakeGrid({L"n", L"text"}, rows);
  ASSERT_TRUE(ExportSheet(grid, fromPath(path), GetParam()));
  KrmDataGrid back = edtest::MakeGrid({L"n", L"text"}, {});
  ASSERT_TRUE(ImportSheet(back, fromPath(path), GetParam(), {}));
  EXPECT_EQ(edtest::Column(back, 1), edtest::Column(grid, 1));
}

INSTANTIATE_TEST_SUITE_P(Formats, SheetRoundTrip, ::testing::Values(true, false),
                         [](const auto& info) { return std::string(info.param ? "xlsx" : "xls"); });

// A workbook written by openpyxl: shared strings, a boolean, a formula with no cached
// value, columns in another order than the table's, a second sheet that is not read.
TEST(SheetImport, MatchesColumnsByShowNameAndRoundsPerColumn) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / "hand.xlsx";
  const auto made = tabulon::test::runPython(R"(
import sys, openpyxl
wb = openpyxl.Workbook()
ws = wb.active
ws.append(["工时", "不存在", "序号", "合格"])
ws.append([3.14159, "x", 1, True])
ws.append([2, None, 2, False])
ws.append([None, "y", "三", None])
wb.create_sheet("second").append(["序号"])
wb.save(sys.argv[1])
)",
                                             {path.string()});
  ASSERT_EQ(made.exitCode, 0) << made.output;
  KrmDataGrid grid = edtest::MakeGrid({L"序号", L"工时", L"合格", L"备注"}, {{L"a", L"b", L"c", L"keep"}});
  // Decimals by sheet column: 工时 two places, the others none.
  ASSERT_TRUE(ImportSheet(grid, fromPath(path), true, {2, 0, 0, 0}));
  EXPECT_EQ(edtest::Column(grid, 0), (std::vector<std::wstring>{L"1", L"2", L"三"}));
  EXPECT_EQ(edtest::Column(grid, 1), (std::vector<std::wstring>{L"3.14", L"2.00", L""}));
  EXPECT_EQ(edtest::Column(grid, 2), (std::vector<std::wstring>{L"TRUE", L"FALSE", L""}));
  EXPECT_EQ(edtest::Column(grid, 3), std::vector<std::wstring>{L"keep"});
}

TEST(SheetImport, ReadsAWorkbookOfInlineStrings) {
  // Our own writer uses inline strings; openpyxl writes shared ones (above).
  tabulon::test::ScratchDir dir;
  const auto path = dir / "inline.xlsx";
  ASSERT_TRUE(ExportSheet(edtest::MakeGrid({L"名"}, {{L"甲"}, {L"乙"}}), fromPath(path), true));
  const std::string xml = tabulon::test::runPython(R"(
import sys, zipfile
print(zipfile.ZipFile(sys.argv[1]).read("xl/worksheets/sheet1.xml").decode())
)",
                                                   {path.string()})
                              .output;
  EXPECT_NE(xml.find("inlineStr"), std::string::npos);
}

struct BadSheetCase {
  std::string name;
  std::string file;
  std::string bytes;
};

class BadSheet : public ::testing::TestWithParam<BadSheetCase> {};

TEST_P(BadSheet, FailsWithTheFileNamedAndLeavesTheTable) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / GetParam().file;
  std::string bytes = GetParam().bytes;
  if (bytes == "<truncated xlsx>" || bytes == "<broken xls>") {
    const bool xlsx = bytes == "<truncated xlsx>";
    ASSERT_TRUE(ExportSheet(edtest::MakeGrid(kNames, kRows), fromPath(path), xlsx));
    bytes = tabulon::test::readFile(path);
    if (xlsx) bytes.resize(bytes.size() / 2);
    else bytes.replace(0, 8, "BROKEN!!");
  }
  tabulon::test::writeFile(path, bytes);
  KrmDataGrid grid = edtest::MakeGrid(kNames, kRows);
  const bool xlsx = !tabulon::editor::IsXlsPath(path);
  EXPECT_FALSE(ImportSheet(grid, fromPath(path), xlsx, {}));
  EXPECT_TRUE(grid.SameContent(edtest::MakeGrid(kNames, kRows)));
  auto columns = tabulon::editor::ReadSheetColumns(path, xlsx, {});
  ASSERT_FALSE(columns.ok());
  EXPECT_EQ(columns.error().file, path.string());
}

INSTANTIATE_TEST_SUITE_P(Files, BadSheet,
                         ::testing::Values(BadSheetCase{"TextRenamedXlsx", "a.xlsx", "\"序号\"\t\n\"1\"\t\n"},
                                           BadSheetCase{"TextRenamedXls", "a.XLS", "\"序号\"\t\n\"1\"\t\n"},
                                           BadSheetCase{"TruncatedZip", "t.xlsx", "<truncated xlsx>"},
                                           BadSheetCase{"BrokenXlsHeader", "b.xls", "<broken xls>"},
                                           BadSheetCase{"EmptyXlsx", "e.xlsx", ""}, BadSheetCase{"EmptyXls", "e.xls", ""}),
                         [](const auto& info) { return info.param.name; });

// Found by fuzzing: a damaged file that the reader library read past a buffer's end.
TEST(SheetImport, DamagedXlsIsRefusedBeforeTheReaderLibrarySeesIt) {
  const auto path = tabulon::test::sourceDir() / "tests/editor/data/record_past_stream.xls";
  auto columns = tabulon::editor::ReadSheetColumns(path, false, {});
  ASSERT_FALSE(columns.ok());
  EXPECT_NE(columns.error().message.find("damaged"), std::string::npos) << columns.error().message;
}

TEST(SheetImport, SheetWithOneFarOffCellIsRefusedAsTooLarge) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / "far.xlsx";
  const auto made = tabulon::test::runPython(R"(
import sys, openpyxl
wb = openpyxl.Workbook()
wb.active["A1"] = "序号"
wb.active["XFD1048576"] = "far"
wb.save(sys.argv[1])
)",
                                             {path.string()});
  ASSERT_EQ(made.exitCode, 0) << made.output;
  auto columns = tabulon::editor::ReadSheetColumns(path, true, {});
  ASSERT_FALSE(columns.ok());
  EXPECT_NE(columns.error().message.find("too large"), std::string::npos) << columns.error().message;
}

TEST(SheetImport, SheetWithoutCellsHasNoHeader) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / "blank.xlsx";
  ASSERT_EQ(tabulon::test::runPython("import sys, openpyxl\nopenpyxl.Workbook().save(sys.argv[1])\n", {path.string()}).exitCode, 0);
  KrmDataGrid grid = edtest::MakeGrid({L"A"}, {{L"keep"}});
  EXPECT_FALSE(ImportSheet(grid, fromPath(path), true, {}));
  EXPECT_EQ(edtest::Column(grid, 0), std::vector<std::wstring>{L"keep"});
}

struct NumberCase {
  double value;
  int digits;
  std::wstring text;
};

class NumberTexts : public ::testing::TestWithParam<NumberCase> {};

TEST_P(NumberTexts, AreShortOrRoundedToTheDecimals) { EXPECT_EQ(tabulon::editor::NumberText(GetParam().value, GetParam().digits), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Values, NumberTexts,
                         ::testing::Values(NumberCase{12.0, 0, L"12"}, NumberCase{1000000.0, 0, L"1000000"}, NumberCase{0.1, 0, L"0.1"},
                                           NumberCase{12.345, 2, L"12.35"}, NumberCase{-0.001, 2, L"0.00"}, NumberCase{7.0, 3, L"7.000"},
                                           NumberCase{-2.5, 0, L"-2.5"}));

TEST(ExactNumbers, OnlyTextsThatReadBackUnchangedAreNumbers) {
  double value = 0.0;
  EXPECT_TRUE(tabulon::editor::ExactNumber(L"12.5", value));
  EXPECT_EQ(value, 12.5);
  for (const wchar_t* text : {L"12.50", L"007", L"+1", L" 1", L"1e5", L"", L"一", L"nan", L"1,5"})
    EXPECT_FALSE(tabulon::editor::ExactNumber(text, value)) << text;
}

}  // namespace

namespace {

class DataFiles : public ::testing::TestWithParam<const char*> {};

// What the programs write out by extension reads back as rows by column name.
TEST_P(DataFiles, WrittenByExtensionReadBackAsRows) {
  tabulon::test::ScratchDir dir;
  const auto path = dir / GetParam();
  ASSERT_TRUE(tabulon::editor::WriteDataFileGrid(edtest::MakeGrid(kNames, kRows), path).ok());
  auto rows = tabulon::editor::ReadDataFileRows(path);
  ASSERT_TRUE(rows.ok()) << rows.describe();
  ASSERT_EQ(rows->size(), 3u);
  EXPECT_EQ(rows->at(1).at(L"备注"), L"注意: 去毛刺");
  EXPECT_EQ(rows->at(2).at(L"备注"), L"12.50");
  EXPECT_EQ(rows->at(0).at(L"工时"), L"12.5");
}

INSTANTIATE_TEST_SUITE_P(Formats, DataFiles, ::testing::Values("t.xlsx", "t.xls", "t.txt"));

TEST(DataFiles, UnknownExtensionIsRefused) {
  tabulon::test::ScratchDir dir;
  const auto written = tabulon::editor::WriteDataFileGrid(edtest::MakeGrid(kNames, kRows), dir / "t.ods");
  ASSERT_FALSE(written.ok());
  EXPECT_EQ(written.error().file, (dir / "t.ods").string());
}

}  // namespace
