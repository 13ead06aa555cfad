// `tabulon create [DRAWING] --card NAME --data BLOCK=FILE ... -o OUT`: cards made without
// a dialog, from rows in data files, as one batch with continuous batch numbers.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/table_rows_file.h"
#include "cli_command.h"
#include "drawing/card_engine.h"
#include "editor/table_rows_import.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"
#include "shell/krm_host_session.h"

namespace tabulon::cli {
namespace {

namespace fs = std::filesystem;

struct CreateArgs {
  std::string drawing;
  std::string output;
  std::vector<std::string> cards;
  std::vector<std::string> data;
  std::string batch;
  std::vector<double> at;
  int pageStart = 1;
  int batchStart = 1;
  int pageStep = 1;
  std::string library;
  bool ignoreUnknownColumns = false;
};

// One card of the batch, with its rows per block class.
struct CardJob {
  std::string name;  // as given: relative to the library, or a path
  std::map<std::wstring, KrmTableRows> tables;
  std::map<std::wstring, std::string> sources;  // where the rows of a block came from
};

KrmTableRows ReadRowsOrThrow(const fs::path& file) {
  auto rows = editor::ReadDataFileRows(file);
  if (!rows.ok()) throw CliError(rows.describe());
  return std::move(rows).value();
}

// "[K:]BLOCK=FILE": K is the one-based position of the --card it belongs to, all cards
// when absent.
void AddDataOption(const std::string& option, std::vector<CardJob>& jobs) {
  const auto eq = option.find('=');
  if (eq == std::string::npos || eq == 0 || eq + 1 == option.size())
    throw CliError("--data " + option + ": expected BLOCK=FILE or K:BLOCK=FILE");
  std::string block = option.substr(0, eq);
  const fs::path file = option.substr(eq + 1);
  std::size_t first = 0, last = jobs.size();
  if (const auto colon = block.find(':'); colon != std::string::npos) {
    int k = 0;
    try {
      k = std::stoi(block.substr(0, colon));
    } catch (const std::exception&) {
      throw CliError("--data " + option + ": \"" + block.substr(0, colon) + "\" is no card number");
    }
    if (k < 1 || k > static_cast<int>(jobs.size()))
      throw CliError("--data " + option + ": there is no card number " + std::to_string(k));
    first = static_cast<std::size_t>(k - 1);
    last = first + 1;
    block = block.substr(colon + 1);
  }
  const KrmTableRows rows = ReadRowsOrThrow(file);
  for (std::size_t j = first; j < last; ++j) {
    jobs[j].tables[svc::fromUtf8(block)] = rows;
    jobs[j].sources[svc::fromUtf8(block)] = file.string();
  }
}

// A batch file: {"insert": [x, y], "pageStart": n, "batchStart": n, "pageStep": n,
// "cards": [{"card": NAME, "data": {BLOCK: FILE or [rows]}}]}. Files are relative to
// the batch file's folder.
void ReadBatchFile(const fs::path& path, CreateArgs& args, std::vector<CardJob>& jobs) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw CliError(path.string() + ": cannot open the batch file");
  nlohmann::json doc;
  try {
    doc = nlohmann::json::parse(in);
  } catch (const nlohmann::json::exception& e) {
    throw CliError(path.string() + ": not valid JSON: " + e.what());
  }
  try {
    if (doc.contains("insert")) args.at = doc["insert"].get<std::vector<double>>();
    args.pageStart = doc.value("pageStart", args.pageStart);
    args.batchStart = doc.value("batchStart", args.batchStart);
    args.pageStep = doc.value("pageStep", args.pageStep);
    if (!doc.contains("cards") || !doc["cards"].is_array())
      throw CliError(path.string() + ": \"cards\" must be an array of cards");
    for (std::size_t i = 0; i < doc["cards"].size(); ++i) {
      const auto& card = doc["cards"][i];
      const std::string where = path.string() + ": cards[" + std::to_string(i) + "]";
      if (!card.contains("card") || !card["card"].is_string()) throw CliError(where + ": \"card\" (the card name) is missing");
      CardJob job{card["card"].get<std::string>(), {}, {}};
      const nlohmann::json data = card.value("data", nlohmann::json::object());
      if (!data.is_object()) throw CliError(where + ": \"data\" must map block names to files or rows");
      for (const auto& [block, value] : data.items()) {
        if (value.is_string()) {
          const fs::path file = path.parent_path() / value.get<std::string>();
          job.tables[svc::fromUtf8(block)] = ReadRowsOrThrow(file);
          job.sources[svc::fromUtf8(block)] = file.string();
        } else {
          auto rows = ParseJsonRows(value.dump(), where + ".data." + block);
          if (!rows.ok()) throw CliError(rows.describe());
          job.tables[svc::fromUtf8(block)] = std::move(rows).value();
          job.sources[svc::fromUtf8(block)] = where + ".data." + block;
        }
      }
      jobs.push_back(std::move(job));
    }
  } catch (const nlohmann::json::exception& e) {
    throw CliError(path.string() + ": " + e.what());
  }
}

// Folder and file name of a card name: relative names are under the library.
std::pair<fs::path, std::string> LocateCard(const std::string& name, const fs::path& library) {
  fs::path path = name;
  if (path.is_relative()) path = library / path;
  return {path.parent_path(), path.filename().string()};
}

std::string JoinNames(const std::vector<std::wstring>& names) {
  std::string joined;
  for (const auto& name : names) joined += (joined.empty() ? "" : ", ") + svc::toUtf8(name);
  return joined;
}

// The column names a row of `grid` may use: each column's show name, and its in-name
// where that differs.
std::vector<std::wstring> ColumnNames(const KrmDataGrid& grid) {
  std::vector<std::wstring> names;
  for (const KrmDataTCol& col : grid.cols) {
    names.push_back(col.att.GetShowName());
    if (!col.att.GetInName().empty() && col.att.GetInName() != col.att.GetShowName())
      names.push_back(col.att.GetInName());
  }
  return names;
}

// Every block the data names must be a class of the card, and every column of its rows
// must be named by a cell of that block, unless unknown columns are to be left out. A
// card that cannot be loaded is left to the engine, which says so.
void CheckBlocks(const CardJob& job, const fs::path& folder, const std::string& file, bool ignoreUnknownColumns) {
  fs::path cardPath = folder / file;
  if (cardPath.extension() != ".crd") cardPath += ".crd";
  KrmCardTemplate cardTemplate;
  if (cardTemplate.LoadTemplate(svc::fromPath(cardPath)) != 1) return;
  std::vector<std::wstring> names;
  cardTemplate.GetBlockNames(names, 0);
  for (const auto& [block, rows] : job.tables) {
    if (std::find(names.begin(), names.end(), block) == names.end())
      throw CliError("card " + job.name + ": the data names the block \"" + svc::toUtf8(block) +
                     "\", which the card does not have (it has " + JoinNames(names) + ")");
  }
  if (ignoreUnknownColumns) return;
  KrmCardData data;
  data.InitFromTemplate(cardTemplate);
  for (const auto& [block, rows] : job.tables) {
    KrmDataGrid grid;
    data.GetGridByName(block, grid);
    const std::vector<std::wstring> columns = ColumnNames(grid);
    std::vector<std::wstring> unknown;
    for (const auto& row : rows)
      for (const auto& [column, text] : row)
        if (std::find(columns.begin(), columns.end(), column) == columns.end() &&
            std::find(unknown.begin(), unknown.end(), column) == unknown.end())
          unknown.push_back(column);
    if (unknown.empty()) continue;
    const auto source = job.sources.find(block);
    const Error error = MakeError("card " + job.name + ": no cell of the block " + svc::toUtf8(block) +
                                  " takes the data column" + (unknown.size() > 1 ? "s " : " ") + JoinNames(unknown) +
                                  " (the block has " + JoinNames(columns) +
                                  "); --ignore-unknown-columns leaves such columns out")
                            .inFile(source == job.sources.end() ? std::string() : source->second)
                            .inField(svc::toUtf8(unknown.front()));
    throw CliError(error.describe());
  }
}

void RunCreate(const CreateArgs& given) {
  CreateArgs args = given;
  if (!args.library.empty()) svc::setLibraryOverride(args.library);
  const fs::path library = svc::libraryDir();

  std::vector<CardJob> jobs;
  if (!args.batch.empty()) ReadBatchFile(args.batch, args, jobs);
  for (const auto& card : args.cards) jobs.push_back(CardJob{card, {}, {}});
  if (jobs.empty()) throw CliError("no card given (--card NAME or --batch FILE)");
  for (const auto& option : args.data) AddDataOption(option, jobs);
  for (const auto& job : jobs) {
    if (job.tables.empty()) throw CliError("card " + job.name + ": no data given (--data BLOCK=FILE)");
    const auto [folder, file] = LocateCard(job.name, library);
    CheckBlocks(job, folder, file, args.ignoreUnknownColumns);
  }
  if (!args.at.empty() && args.at.size() != 2 && args.at.size() != 3)
    throw CliError("--at: expected X,Y or X,Y,Z");

  QaEdScriptedIO io;
  io.setEcho(&std::cerr);
  KrmHostSession session(io);
  if (args.drawing.empty()) {
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), args.output);
  } else {
    std::string error;
    if (!session.openDrawing(args.drawing, &error)) throw CliError("cannot read the drawing " + args.drawing + ": " + error);
  }

  const bool progress = isatty(STDERR_FILENO) && jobs.size() > 1;
  // What the engine printed ends its line before anything else is written.
  const auto endEngineLine = [&io] {
    if (!io.transcript().empty() && io.transcript().back() != L'\n') std::cerr << "\n";
  };
  {
    KrmCardEngine engine;
    engine.SetPageStart_C(args.pageStart);
    engine.SetPageStart_B(args.batchStart);
    engine.SetPageStep(args.pageStep);
    if (!args.at.empty()) engine.SetInsert({args.at[0], args.at[1], args.at.size() > 2 ? args.at[2] : 0.0});
    for (std::size_t j = 0; j < jobs.size(); ++j) {
      if (progress) std::cerr << "\rcard " << j + 1 << "/" << jobs.size() << ": " << jobs[j].name << std::flush;
      const auto [folder, file] = LocateCard(jobs[j].name, library);
      engine.InitCardPath(svc::fromPath(folder));
      engine.SetCardName(svc::fromUtf8(file));
      for (const auto& [block, rows] : jobs[j].tables) engine.SetTableContent(block, rows);
      const Status made = engine.Create();
      if (!made.ok()) {
        if (progress) std::cerr << "\n";
        endEngineLine();
        throw CliError("card " + jobs[j].name + " was not created (" + made.describe() +
                       "); the drawing is left as it was");
      }
    }
    if (progress) std::cerr << "\n";
    endEngineLine();
    if (const Status finished = engine.Finish(); !finished.ok())
      throw CliError("the batch was not numbered: " + finished.describe());
  }

  std::string error;
  QaDbDatabase* db = qaWorkingDatabase();
  if (db->saveAs(args.output, QaDb::kDwgCurrent, &error) != Qa::eOk)
    throw CliError("cannot write the drawing " + args.output + ": " + error);
}

const CliCommand registration(30, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<CreateArgs>();
  auto* sub = app.add_subcommand("create", "create cards from data files, as one batch with continuous batch numbers");
  sub->add_option("drawing", args->drawing, "the DXF drawing to add the cards to (default: a new drawing)")
      ->check(CLI::ExistingFile);
  sub->add_option("-o,--output", args->output, "where to save the drawing")->required();
  sub->add_option("-c,--card", args->cards, "a card of the library, e.g. sub/name (repeat for a batch)");
  sub->add_option("-d,--data", args->data,
                  "rows of a block: BLOCK=FILE for every card, K:BLOCK=FILE for the K-th --card; "
                  "FILE is .csv, .tsv, .json (array of objects), .txt (exchange format), .xlsx or .xls");
  sub->add_option("-b,--batch", args->batch, "a JSON batch file {\"cards\": [{\"card\": NAME, \"data\": {BLOCK: FILE}}]}")
      ->check(CLI::ExistingFile);
  sub->add_option("--at", args->at, "insertion point of the first card, X,Y")->delimiter(',')->expected(2, 3);
  sub->add_option("--page-start", args->pageStart, "first page number of each card (default 1)");
  sub->add_option("--batch-start", args->batchStart, "first batch page number (default 1)");
  sub->add_option("--page-step", args->pageStep, "step of the page numbers (default 1)");
  sub->add_flag("--ignore-unknown-columns", args->ignoreUnknownColumns,
                "leave out data columns that no cell of their block takes (without it they are an error)");
  sub->callback([args, &globals] {
    args->library = globals.library;
    RunCreate(*args);
  });
});

}  // namespace
}  // namespace tabulon::cli
