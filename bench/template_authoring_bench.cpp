// Template authoring on large drawn forms: scanning the block classes of a pick, and
// making a table template of it (record, side drawing and .tbl written).
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "authoring/block_scanning.h"
#include "authoring/make_table_model.h"
#include "host/db/qadb.h"
#include "host/svc/utf8.h"

namespace {

QaDbObjectId AddToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId id;
  space->appendQaDbEntity(std::move(entity), id);
  id.rawObject()->close();
  return id;
}

QaDbObjectId AddBlock(QaDbDatabase& db, const std::wstring& name, int cells) {
  QaDbObjectId blockId, id;
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForWrite);
  table->add(std::make_unique<QaDbBlockTableRecord>(name), blockId);
  QaDbBlockTableRecord* block = QaDbBlockTableRecord::cast(blockId.rawObject());
  block->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(180, 0, 0)), id);
  id.rawObject()->close();
  for (int c = 0; c < cells; ++c) {
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(2 + 20.0 * c, 2, 0), L"", L"C" + std::to_wstring(c),
                                                         L"");
    def->setHeight(3);
    def->setXData(L"KRM_XDATA_ORDER", {QaDbXDataItem::string(std::to_wstring(cells - c))});
    block->appendQaDbEntity(std::move(def), id);
    id.rawObject()->close();
  }
  block->close();
  return blockId;
}

// A form with a frame line, 8 single blocks and `rows` references of each of 2 row blocks.
std::vector<QaDbObjectId> DrawForm(QaDbDatabase& db, int rows) {
  std::vector<QaDbObjectId> ids;
  ids.push_back(AddToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(200, 0, 0))));
  for (int s = 0; s < 8; ++s)
    ids.push_back(AddToModelSpace(db, std::make_unique<QaDbBlockReference>(QaGePoint3d(10.0 * s, 0, 0),
                                                                          AddBlock(db, L"S" + std::to_wstring(s), 4))));
  const QaDbObjectId rowA = AddBlock(db, L"ROW", 8), rowB = AddBlock(db, L"SIGN", 2);
  for (int r = 0; r < rows; ++r) {
    ids.push_back(AddToModelSpace(db, std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 8.0 * r, 0), rowA)));
    ids.push_back(AddToModelSpace(db, std::make_unique<QaDbBlockReference>(QaGePoint3d(190, 8.0 * r, 0), rowB)));
  }
  return ids;
}

void BM_CollectBlockClasses(benchmark::State& state) {
  QaDbDatabase db;
  const auto ids = DrawForm(db, static_cast<int>(state.range(0)));
  std::vector<KrmDataAttTR> classes;
  for (auto _ : state) {
    CollectBlockClasses(ids, classes);
    benchmark::DoNotOptimize(classes.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(ids.size()));
}
BENCHMARK(BM_CollectBlockClasses)->Arg(100)->Arg(2000)->Unit(benchmark::kMicrosecond);

void BM_MakeTableTemplate(benchmark::State& state) {
  QaDbDatabase db;
  const auto ids = DrawForm(db, static_cast<int>(state.range(0)));
  const auto dir = std::filesystem::temp_directory_path() / "tabulon_authoring_bench";
  std::filesystem::create_directories(dir);
  for (auto _ : state) {
    std::filesystem::remove(dir / "T.tbl");
    KrmMakeTblModel model(tabulon::svc::fromPath(dir));
    model.SetName(L"T");
    (void)model.TakeSelection(ids);
    model.ChooseMultiBlocks([](KrmSelSglModel&) { return KrmDialogEnd::kOk; });
    model.ChoosePageBase([](KrmSelSglModel& chooser) {
      chooser.SelectByName(L"ROW");
      return KrmDialogEnd::kOk;
    });
    if (!model.OnOK().ok()) state.SkipWithError("the template was not written");
  }
  std::filesystem::remove_all(dir);
}
BENCHMARK(BM_MakeTableTemplate)->Arg(100)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace
