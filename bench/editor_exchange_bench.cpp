// The card editor's heavy paths: projecting a table of 5,000 cells into the grid (as a
// rebuild does it, with the columns auto-sized), and writing and reading a 10,000-row,
// 10-column .xlsx. The last benchmark does both once beside python3-openpyxl on the same
// table and reports the times and their ratios (openpyxl / ours).
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>

#include "editor/krm_grid_ctrl.h"
#include "editor/sheet_exchange.h"

namespace {

namespace fs = std::filesystem;

KrmDataGrid Table(int rows, int cols) {
  static const std::wstring kHan = L"工序内容铣削车外圆钻孔攻丝热处理检验装配淬火回火磨平面去毛刺清洗";
  std::mt19937 random(11);
  std::uniform_int_distribution<std::size_t> han(0, kHan.size() - 1);
  std::uniform_int_distribution<int> number(0, 99999);
  KrmDataGrid grid;
  grid.rowsFirst = 20;
  grid.rowsNext = 30;
  for (int c = 0; c < cols; ++c) {
    KrmDataTCol col;
    col.att.SetShowName(L"列" + std::to_wstring(c));
    col.att.SetCtrType(c == 2 ? L"CMB_LIST" : c == 3 ? L"EDT_NUM" : L"");
    col.att.SetCtrContent(L"甲;乙;丙");
    for (int r = 0; r < rows; ++r) {
      if (c % 2 == 1) {
        col.values.push_back(std::to_wstring(number(random)) + L"." + std::to_wstring(number(random) % 100));
      } else {
        std::wstring text;
        for (int i = 0; i < 12; ++i) text.push_back(kHan[han(random)]);
        col.values.push_back(text);
      }
    }
    grid.cols.push_back(std::move(col));
  }
  return grid;
}

fs::path Scratch(const std::string& name) { return fs::temp_directory_path() / ("tabulon-bench-" + std::to_string(getpid()) + "-" + name); }

void BM_GridProjection5000Cells(benchmark::State& state) {
  const KrmDataGrid grid = Table(500, 10);
  KrmGridCtrl ctrl;
  for (auto _ : state) {
    ctrl.LoadData(grid, -1);
    ctrl.AutoSizeColumns();
    benchmark::DoNotOptimize(ctrl.GetRowCount());
  }
  state.counters["cells"] = 5000;
}
BENCHMARK(BM_GridProjection5000Cells)->Unit(benchmark::kMillisecond);

void BM_XlsxExport10000Rows(benchmark::State& state) {
  const KrmDataGrid grid = Table(10000, 10);
  const fs::path path = Scratch("export.xlsx");
  for (auto _ : state) {
    if (!tabulon::editor::WriteSheetFile(grid, path, true).ok()) state.SkipWithError("export failed");
  }
  state.counters["bytes"] = static_cast<double>(fs::file_size(path));
  fs::remove(path);
}
BENCHMARK(BM_XlsxExport10000Rows)->Unit(benchmark::kMillisecond);

void BM_XlsxImport10000Rows(benchmark::State& state) {
  const KrmDataGrid grid = Table(10000, 10);
  const fs::path path = Scratch("import.xlsx");
  if (!tabulon::editor::WriteSheetFile(grid, path, true).ok()) state.SkipWithError("export failed");
  const std::vector<int> digits(10, 2);
  for (auto _ : state) {
    auto columns = tabulon::editor::ReadSheetColumns(path, true, digits);
    if (!columns.ok()) state.SkipWithError("import failed");
    benchmark::DoNotOptimize(columns);
  }
  fs::remove(path);
}
BENCHMARK(BM_XlsxImport10000Rows)->Unit(benchmark::kMillisecond);

double Seconds(const std::chrono::steady_clock::time_point& since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

// openpyxl writes the same table (from a text file of it) and reads ours; it reports
// its own two times, without the start of the interpreter.
const char* kOpenpyxl = R"(
import sys, time, openpyxl
rows = [line.rstrip("\n").split("\t") for line in open(sys.argv[1], encoding="utf-8")]
t = time.perf_counter()
wb = openpyxl.Workbook()
ws = wb.active
for row in rows:
    ws.append(row)
wb.save(sys.argv[2])
write = time.perf_counter() - t
t = time.perf_counter()
ws = openpyxl.load_workbook(sys.argv[3]).worksheets[0]
count = sum(1 for _ in ws.iter_rows(values_only=True))
read = time.perf_counter() - t
print(write, read, count)
)";

void BM_XlsxVersusOpenpyxl(benchmark::State& state) {
  const KrmDataGrid grid = Table(10000, 10);
  const fs::path ours = Scratch("ours.xlsx"), theirs = Scratch("theirs.xlsx"), text = Scratch("table.tsv"), script = Scratch("openpyxl.py");
  {
    std::ofstream out(text, std::ios::binary);
    std::wstring all;
    for (int r = -1; r < grid.RowCount(); ++r) {
      for (std::size_t c = 0; c < grid.cols.size(); ++c)
        all += (c ? L"\t" : L"") + (r < 0 ? grid.cols[c].att.GetShowName() : grid.cols[c].values[static_cast<std::size_t>(r)]);
      all += L"\n";
    }
    std::string utf8;
    for (wchar_t ch : all) {
      const auto u = static_cast<std::uint32_t>(ch);
      if (u < 0x80) utf8 += static_cast<char>(u);
      else if (u < 0x800) utf8 += {static_cast<char>(0xC0 | (u >> 6)), static_cast<char>(0x80 | (u & 0x3F))};
      else utf8 += {static_cast<char>(0xE0 | (u >> 12)), static_cast<char>(0x80 | ((u >> 6) & 0x3F)), static_cast<char>(0x80 | (u & 0x3F))};
    }
    out << utf8;
    std::ofstream(script) << kOpenpyxl;
  }
  for (auto _ : state) {
    auto start = std::chrono::steady_clock::now();
    if (!tabulon::editor::WriteSheetFile(grid, ours, true).ok()) state.SkipWithError("export failed");
    const double ourWrite = Seconds(start);
    start = std::chrono::steady_clock::now();
    auto columns = tabulon::editor::ReadSheetColumns(ours, true, {});
    const double ourRead = Seconds(start);
    if (!columns.ok()) state.SkipWithError("import failed");
    const std::string command = "/usr/bin/python3 " + script.string() + " " + text.string() + " " + theirs.string() + " " + ours.string();
    FILE* pipe = popen(command.c_str(), "r");
    double theirWrite = 0, theirRead = 0;
    int count = 0;
    if (pipe == nullptr || std::fscanf(pipe, "%lf %lf %d", &theirWrite, &theirRead, &count) != 3) state.SkipWithError("openpyxl failed");
    if (pipe != nullptr) pclose(pipe);
    state.counters["ours_write_ms"] = ourWrite * 1e3;
    state.counters["ours_read_ms"] = ourRead * 1e3;
    state.counters["openpyxl_write_ms"] = theirWrite * 1e3;
    state.counters["openpyxl_read_ms"] = theirRead * 1e3;
    state.counters["write_ratio"] = ourWrite > 0 ? theirWrite / ourWrite : 0;
    state.counters["read_ratio"] = ourRead > 0 ? theirRead / ourRead : 0;
    state.counters["rows_read_by_openpyxl"] = count;
  }
  for (const fs::path& p : {ours, theirs, text, script}) fs::remove(p);
}
BENCHMARK(BM_XlsxVersusOpenpyxl)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
