// `tabulon get DRAWING (--card CODE | --pick X,Y) [--block NAME] [-o FILE]`: the rows
// of one block of a placed card, as the drawing holds them, in CSV, TSV or JSON by the
// file's extension (CSV on standard output). Columns are headed by their show names, so
// the file can be given back to `create` and `update`.
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include <nlohmann/json.hpp>

#include "card/data_grid.h"
#include "cli_command.h"
#include "host/svc/utf8.h"
#include "placed_card_cli.h"

namespace tabulon::cli {
namespace {

struct GetArgs {
  std::string drawing;
  CardChoice card;
  std::string block;
  std::string output = "-";
};

std::string Quoted(const std::string& field, char separator) {
  if (field.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) return field;
  std::string out = "\"";
  for (char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

std::string Delimited(const KrmDataGrid& grid, char separator) {
  std::ostringstream out;
  for (std::size_t c = 0; c < grid.cols.size(); ++c) {
    out << (c ? std::string(1, separator) : "") << Quoted(svc::toUtf8(grid.cols[c].att.GetShowName()), separator);
  }
  out << "\n";
  for (int r = 0; r < grid.RowCount(); ++r) {
    for (std::size_t c = 0; c < grid.cols.size(); ++c) {
      out << (c ? std::string(1, separator) : "") << Quoted(svc::toUtf8(grid.GetCell(r, static_cast<int>(c))), separator);
    }
    out << "\n";
  }
  return out.str();
}

std::string Json(const KrmDataGrid& grid) {
  nlohmann::ordered_json rows = nlohmann::ordered_json::array();
  for (int r = 0; r < grid.RowCount(); ++r) {
    nlohmann::ordered_json row = nlohmann::ordered_json::object();
    for (std::size_t c = 0; c < grid.cols.size(); ++c) {
      row[svc::toUtf8(grid.cols[c].att.GetShowName())] = svc::toUtf8(grid.GetCell(r, static_cast<int>(c)));
    }
    rows.push_back(std::move(row));
  }
  return rows.dump(2) + "\n";
}

// The grid named `block` (the page base when empty); CliError names the blocks there are.
KrmDataGrid GridOf(const KrmCardData& data, const std::string& block) {
  KrmDataGrid grid;
  if (block.empty()) {
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid;
  }
  if (data.GetGridByName(svc::fromUtf8(block), grid) == 1) return grid;
  std::vector<std::wstring> names;
  data.GetGridNames(names);
  std::string known;
  for (const auto& name : names) known += (known.empty() ? "" : ", ") + svc::toUtf8(name);
  throw CliError("--block " + block + ": the card has no such block (it has " + known + ")");
}

void RunGet(const GetArgs& args, const GlobalOptions& globals) {
  const std::string extension = args.output == "-" ? ".csv" : std::filesystem::path(args.output).extension().string();
  if (extension != ".csv" && extension != ".tsv" && extension != ".json")
    throw CliError("-o " + args.output + ": unknown format \"" + extension + "\" (use .csv, .tsv or .json)");
  PlacedCardSession session(args.drawing, globals.library);
  const KrmOpenedCard opened = session.OpenCard(args.card);
  const KrmDataGrid grid = GridOf(opened.data, args.block);
  const std::string text = extension == ".json" ? Json(grid) : Delimited(grid, extension == ".tsv" ? '\t' : ',');
  if (args.output == "-") {
    std::cout << text;
    return;
  }
  std::ofstream out(args.output, std::ios::binary);
  out << text;
  if (!out) throw CliError("cannot write " + args.output);
}

const CliCommand registration(61, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<GetArgs>();
  auto* sub = app.add_subcommand("get", "read the rows of one block of a placed card");
  sub->add_option("drawing", args->drawing, "the DXF drawing, - for standard input")->required();
  AddCardChoice(sub, args->card);
  sub->add_option("--block", args->block, "the block (default: the one whose rows make the pages)");
  sub->add_option("-o,--output", args->output, "a .csv, .tsv or .json file (default: CSV on standard output)");
  sub->callback([args, &globals] { RunGet(*args, globals); });
});

}  // namespace
}  // namespace tabulon::cli
