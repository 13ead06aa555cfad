// Editing a long placed card: a card of 2,000 rows (100 pages of 20 row blocks) stands in
// the drawing. Reading it back into card data; changing one cell in the middle as the
// access facade does (read back, then update), reporting the row blocks written, which
// must stay at most 2 when the cell's line count does not change; and the same through
// OstrelmTabulon::SetItemText. The whole one-cell edit should take under 50 ms.
#include <benchmark/benchmark.h>

#include <stdlib.h>

#include <filesystem>
#include <memory>
#include <string>

#include "../tests/drawing/generation_library.h"
#include "card/data_grid.h"
#include "drawing/card_engine.h"
#include "drawing/card_tag.h"
#include "drawing/ostrelm_tabulon.h"
#include "drawing/placed_card_read.h"
#include "drawing/placed_card_update.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaed_selection.h"
#include "host/svc/krm_card_root.h"

namespace {

constexpr int kRows = 2000;
constexpr int kMiddle = kRows / 2;

// A library in a private temporary folder and a drawing with one long card in it, made
// once and removed at exit.
struct PlacedLongCard {
  PlacedLongCard() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tabulon-bench-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    gentest::LibraryShape shape;
    shape.firstRows = 20;
    shape.nextRows = 20;
    cardPath = gentest::WriteSampleLibrary(folder, shape);
    KrmSetCardRoot(KrmFromFsPath(folder));
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), folder / "long.dxf");
    KrmTableRows rows;
    for (int i = 0; i < kRows; ++i) {
      rows.push_back({{L"工序", L"工序" + std::to_wstring(i + 1)}, {L"内容", L"车外圆 Φ" + std::to_wstring(20 + i % 50)}});
    }
    KrmCardEngine engine;
    engine.InitCardPath(KrmFromFsPath(folder));
    engine.SetCardName(L"card");
    engine.SetTableContent(L"ROW", rows);
    engine.PlayCreate();
    std::vector<QaDbObjectId> ids;
    engine.GetAllEnt(ids);
    if (!ids.empty()) {
      QaDbObjectPointer<QaDbEntity> entity(ids.front(), QaDb::kForRead);
      KrmCardTag tag;
      ReadCardTagOfEntity(entity.object(), tag);
      code = tag.cardCode;
    }
  }
  ~PlacedLongCard() {
    qaDocManager().closeAll();
    std::filesystem::remove_all(folder);
  }
  std::filesystem::path folder;
  std::wstring cardPath;
  std::wstring code;
};

PlacedLongCard& Card() {
  static PlacedLongCard card;
  return card;
}

void BM_ReadBack(benchmark::State& state) {
  PlacedLongCard& card = Card();
  for (auto _ : state) {
    auto opened = OpenPlacedCard(card.cardPath, card.code);
    if (!opened.ok()) state.SkipWithError(opened.describe().c_str());
    benchmark::DoNotOptimize(opened);
  }
  state.counters["rows"] = kRows;
}

// Read back and update, as SetItemText does, with the texts alternating so that every
// iteration changes the cell.
void BM_OneCellEdit(benchmark::State& state) {
  PlacedLongCard& card = Card();
  int written = 0, edits = 0;
  for (auto _ : state) {
    auto opened = OpenPlacedCard(card.cardPath, card.code);
    if (!opened.ok()) {
      state.SkipWithError(opened.describe().c_str());
      break;
    }
    KrmCardData after = opened->data;
    after.SetCurGrid(after.GetBaseGrid());
    after.SetCell(edits % 2 == 0 ? L"改甲" : L"改乙", kMiddle, 1);
    KrmUpdateStats stats;
    UpdatePlacedCard(*opened->cardTemplate, opened->data, after, opened->card, &stats);
    written += stats.rowBlocksWritten;
    ++edits;
  }
  state.counters["row_blocks_written"] = edits == 0 ? 0.0 : static_cast<double>(written) / edits;
}

void BM_FacadeSetItemText(benchmark::State& state) {
  PlacedLongCard& card = Card();
  OstrelmTabulon cards;
  cards.Init();
  int edits = 0;
  for (auto _ : state) {
    if (cards.SetItemText(0, 2, edits++ % 2 == 0 ? L"门面甲" : L"门面乙", kMiddle, 1) != 1) {
      state.SkipWithError("the cell was not written");
      break;
    }
  }
  state.counters["cards"] = cards.GetCardCount();
  benchmark::DoNotOptimize(card);
}

BENCHMARK(BM_ReadBack)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OneCellEdit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FacadeSetItemText)->Unit(benchmark::kMillisecond);

}  // namespace
