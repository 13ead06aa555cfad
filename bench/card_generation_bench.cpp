// Generating and saving a long card: 2,000 rows (100 pages of 20 row blocks) and 20,000
// rows (1,000 pages), through the headless engine into a new drawing, then saved as DXF.
// The second case should take no more than about ten times the first: nothing in
// generation, grouping or saving may grow with the square of the entity count.
#include <benchmark/benchmark.h>

#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "../tests/drawing/generation_library.h"
#include "drawing/card_engine.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"

namespace {

// A card library in a private temporary folder, removed at exit.
struct BenchLibrary {
  BenchLibrary() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tabulon-bench-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    gentest::LibraryShape shape;
    shape.firstRows = 20;
    shape.nextRows = 20;
    gentest::WriteSampleLibrary(folder, shape);
  }
  ~BenchLibrary() { std::filesystem::remove_all(folder); }
  std::filesystem::path folder;
};

const BenchLibrary& Library() {
  static const BenchLibrary library;
  return library;
}

void BM_GenerateAndSave(benchmark::State& state) {
  const BenchLibrary& library = Library();
  KrmTableRows rows;
  for (int i = 0; i < state.range(0); ++i) {
    rows.push_back({{L"工序", L"工序" + std::to_wstring(i + 1)}, {L"内容", L"车外圆 Φ" + std::to_wstring(20 + i % 50)}});
  }
  const auto output = library.folder / "out.dxf";
  for (auto _ : state) {
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), output);
    {
      KrmCardEngine engine;
      engine.InitCardPath(KrmFromFsPath(library.folder));
      engine.SetCardName(L"card");
      engine.SetTableContent(L"ROW", rows);
      if (engine.PlayCreate() != 1) state.SkipWithError("the card was not created");
    }
    if (qaWorkingDatabase()->saveAs(output) != Qa::eOk) state.SkipWithError("the drawing was not saved");
    state.PauseTiming();
    qaDocManager().closeAll();
    state.ResumeTiming();
  }
  state.counters["pages"] = static_cast<double>((state.range(0) + 19) / 20);
}

BENCHMARK(BM_GenerateAndSave)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace
