// Counting the physical lines of a large card: 1,000 rows by 10 wrapping
// columns of 200-character mixed Chinese and Latin texts. Reports the time of
// one count and how many measuring calls it made.
#include <benchmark/benchmark.h>

#include <random>
#include <string>

#include "card/card_data.h"
#include "card/paging.h"
#include "host/gi/qagi_text_style.h"

namespace {

std::wstring MixedText(std::mt19937& random, size_t length) {
  static const std::wstring kHan = L"工序内容铣削车外圆钻孔攻丝热处理检验装配淬火回火磨平面去毛刺清洗";
  static const std::wstring kLatin = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .,-+";
  std::uniform_int_distribution<int> coin(0, 1);
  std::uniform_int_distribution<size_t> han(0, kHan.size() - 1);
  std::uniform_int_distribution<size_t> latin(0, kLatin.size() - 1);
  std::wstring text;
  while (text.size() < length) text.push_back(coin(random) ? kHan[han(random)] : kLatin[latin(random)]);
  return text;
}

KrmDataGrid LargeGrid() {
  std::mt19937 random(7);
  KrmDataGrid grid;
  grid.blockName = L"ROW";
  for (int c = 0; c < 10; ++c) {
    KrmDataTCol col;
    col.att.SetShowName(L"C" + std::to_wstring(c));
    col.att.SetRowType(kKrmRowNewline);
    col.att.SetWidth(60.0);
    col.att.SetHeight(3.5);
    for (int r = 0; r < 1000; ++r) col.values.push_back(MixedText(random, 200));
    grid.cols.push_back(std::move(col));
  }
  return grid;
}

void BM_GridLinesNeeded(benchmark::State& state) {
  const KrmDataGrid grid = LargeGrid();
  GridLinesNeeded(grid);  // loads the font once, outside the measurement
  QaGiTextStyle::resetMeasureCount();
  int lines = 0;
  for (auto _ : state) {
    lines = GridLinesNeeded(grid);
    benchmark::DoNotOptimize(lines);
  }
  state.counters["lines"] = lines;
  state.counters["measure_calls"] =
      benchmark::Counter(static_cast<double>(QaGiTextStyle::measureCount()) / static_cast<double>(state.iterations()));
}
BENCHMARK(BM_GridLinesNeeded)->Unit(benchmark::kMillisecond);

}  // namespace
