#include "samples/sample_demo.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "card/calc_column.h"
#include "card/card_data.h"
#include "card/card_template.h"
#include "drawing/card_engine.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"
#include "shell/bom_card_export.h"
#include "shell/krm_host_session.h"
#include "samples/sample_assembly.h"
#include "samples/sample_cards.h"
#include "samples/sample_form.h"
#include "samples/sample_library.h"

namespace tabulon::samples {

namespace {

using tabulon::svc::fromPath;
using tabulon::svc::toUtf8;

// Where things stand in the drawing: two assembly sheets from the origin, the parts list
// card to their right, the process cards below.
constexpr double kGap = 10;
const QaGePoint3d kCoverSheetPoint(kSheetWidth + kGap, 0, 0);
const QaGePoint3d kPartsListPoint(2 * (kSheetWidth + kGap), 0, 0);
const QaGePoint3d kProcessCardsPoint(kProcessCardsX, kProcessCardsY, 0);

void tell(const DemoOptions& options, const std::string& step) {
  if (options.progress) options.progress(step);
}

std::filesystem::path writeOptions(const std::filesystem::path& configDir) {
  std::filesystem::create_directories(configDir);
  const auto path = configDir / "options.ini";
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << SampleOptionsText();
  if (!out) throw std::runtime_error("demo: cannot write " + path.string());
  return path;
}

void save(QaDbDatabase& db, const std::filesystem::path& path) {
  std::string error;
  if (db.saveAs(path, QaDb::kDwgR2018, &error) != Qa::eOk)
    throw std::runtime_error("demo: " + (error.empty() ? "cannot save " + path.string() : error));
}

// Pages in the drawing: one anonymous group each.
int pageGroups(QaDbDatabase& db) {
  QaDbDictionary* groups = nullptr;
  if (db.getGroupDictionary(groups, QaDb::kForRead) != Qa::eOk) return 0;
  const int n = groups->numEntries();
  groups->close();
  return n;
}

}  // namespace

std::vector<SampleRow> SampleRowsWithCalculatedColumns(const std::filesystem::path& library, const std::wstring& card,
                                                       const std::wstring& block, const std::vector<SampleRow>& rows) {
  KrmCardTemplate t;
  if (t.LoadTemplate(fromPath(library) + L"/" + card + L".crd") != 1)
    throw std::runtime_error("demo: the card " + toUtf8(card) + " does not load: " + toUtf8(t.LoadProblems()));
  KrmCardData data;
  data.InitFromTemplate(t);
  KrmDataGrid grid;
  if (data.GetGridByName(block, grid) != 1) return rows;
  for (auto& col : grid.cols) {
    col.values.clear();
    for (const auto& row : rows) {
      auto it = row.find(col.att.GetShowName());
      col.values.push_back(it == row.end() ? L"" : it->second);
    }
  }
  KrmRunCalcColumns(grid, kKrmAllRows, 1);  // rows without times stay empty
  std::vector<SampleRow> out = rows;
  for (const auto& col : grid.cols)
    for (std::size_t r = 0; r < out.size() && r < col.values.size(); ++r) out[r][col.att.GetShowName()] = col.values[r];
  return out;
}

DemoResult RunSampleDemo(const DemoOptions& options) {
  DemoResult result;
  const std::filesystem::path folder = options.folder;
  std::filesystem::create_directories(folder);

  result.library = folder / "library";
  result.options = writeOptions(folder / "config");
  setenv("TABULON_HOME", (folder / "config").c_str(), 1);
  tabulon::svc::setLibraryOverride(result.library);
  // Everything from here on, the library's drawings included, is measured as every
  // program measures: inside a host session.
  QaEdScriptedIO io;
  KrmHostSession session(io);

  tell(options, "writing the sample card library");
  WriteSampleLibrary(result.library);

  tell(options, "drawing the assembly sheets");
  result.assembly = folder / "assembly.dxf";
  {
    QaDbDatabase sheets;
    DrawAssemblySheet(sheets, QaGePoint3d(0, 0, 0), SampleOutputShaftSheet());
    DrawAssemblySheet(sheets, kCoverSheetPoint, SampleCoverSheet());
    save(sheets, result.assembly);
  }

  QaApDocument* doc = qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), folder / "demo.dxf");
  QaDbDatabase& db = *doc->database();
  EnsureFormStyles(db);

  DrawAssemblySheet(db, QaGePoint3d(0, 0, 0), SampleOutputShaftSheet());
  DrawAssemblySheet(db, kCoverSheetPoint, SampleCoverSheet());

  tell(options, "making the batch of process cards");
  {
    KrmCardEngine engine;
    engine.InitCardPath(fromPath(result.library));
    engine.SetInsert(kProcessCardsPoint);
    for (const SampleCardContent& content : SampleProcessCards()) {
      engine.SetCardName(content.card);
      DemoCard card{content.card, content.part, 0, 0};
      for (const auto& [block, rows] : content.blocks) {
        engine.SetTableContent(block, SampleRowsWithCalculatedColumns(result.library, content.card, block, rows));
        if (block == kRowBlock) card.rows = static_cast<int>(rows.size());
      }
      const int before = pageGroups(db);
      if (const tabulon::Status made = engine.Create(); !made.ok())
        throw std::runtime_error("demo: the card of " + toUtf8(content.part) + " was not made: " + made.describe());
      card.pages = pageGroups(db) - before;
      result.batchPages += card.pages;
      result.cards.push_back(card);
    }
    if (const tabulon::Status finished = engine.Finish(); !finished.ok())
      throw std::runtime_error("demo: the batch was not numbered: " + finished.describe());
  }

  tell(options, "turning the bill of materials into a parts list card");
  {
    std::vector<std::wstring> frames;
    KrmBomRow title;
    std::vector<KrmBomRow> rows;
    // Both frames: selecting nothing takes them all.
    io.addAnswer(L"");
    if (KrmCollectBomFrames(&db, frames)) KrmCollectBomData(frames, &db, title, rows);
    result.bomFrames = static_cast<int>(frames.size());
    result.bomRows = static_cast<int>(rows.size());
    io.addAnswer(L"");
    io.addAnswer(std::to_wstring(kPartsListPoint.x) + L"," + std::to_wstring(kPartsListPoint.y));
    const int before = pageGroups(db);
    const auto done = session.runCommand(L"KrmBomCardExp");
    if (!done || *done != 1)
      throw std::runtime_error("demo: the bill-of-materials export made no card from " +
                               std::to_string(result.bomRows) + " rows of " + std::to_string(result.bomFrames) +
                               " frames");
    const AssemblySheet shaft = SampleOutputShaftSheet(), cover = SampleCoverSheet();
    result.cards.push_back({kPartsListCard,
                            shaft.title[1].second + L" " + shaft.title[0].second + L" + " + cover.title[1].second +
                                L" " + cover.title[0].second,
                            result.bomRows, pageGroups(db) - before});
  }

  tell(options, "saving the drawing");
  result.drawing = folder / "demo.dxf";
  save(db, result.drawing);
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForRead);
  result.entities = space ? static_cast<int>(space->liveEntityIds().size()) : 0;
  return result;
}

}  // namespace tabulon::samples
