// `tabulon cards DRAWING [--json]`: every card placed in a drawing, with its code, name,
// template, pages, and the blocks and cells of its first-page and continuation tables.
#include <iostream>
#include <memory>

#include <nlohmann/json.hpp>

#include "cli_command.h"
#include "drawing/ostrelm_tabulon.h"
#include "host/svc/utf8.h"
#include "placed_card_cli.h"

namespace tabulon::cli {
namespace {

struct CardsArgs {
  std::string drawing;
  bool json = false;
};

// Blocks of one table with their cells, as the facade knows them.
nlohmann::ordered_json TableJson(const OstrelmTabulon& cards, int n, bool continuation) {
  nlohmann::ordered_json table;
  table["table"] = svc::toUtf8(continuation ? cards.GetTblName_(n) : cards.GetTblName(n));
  nlohmann::ordered_json blocks = nlohmann::ordered_json::array();
  std::vector<std::wstring> names;
  if (continuation) {
    cards.GetCell_(names, n);
  } else {
    cards.GetCell(names, n);
  }
  for (const std::wstring& name : names) {
    std::vector<std::wstring> atts;
    if (continuation) {
      cards.GetCellAtt_(name, atts);
    } else {
      cards.GetCellAtt(name, atts);
    }
    nlohmann::ordered_json cells = nlohmann::ordered_json::array();
    for (const std::wstring& att : atts) cells.push_back(svc::toUtf8(att));
    blocks.push_back({{"name", svc::toUtf8(name)}, {"cells", cells}});
  }
  table["blocks"] = blocks;
  return table;
}

void PrintTable(const nlohmann::ordered_json& table, const char* label) {
  std::cout << "  " << label << ": " << table["table"].get<std::string>() << "\n";
  for (const auto& block : table["blocks"]) {
    std::cout << "    " << block["name"].get<std::string>() << ":";
    for (const auto& cell : block["cells"]) std::cout << " " << cell.get<std::string>();
    std::cout << "\n";
  }
}

void RunCards(const CardsArgs& args, const GlobalOptions& globals) {
  PlacedCardSession session(args.drawing, globals.library);
  OstrelmTabulon cards;
  cards.Init();
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (int n = 0; n < cards.GetCardCount(); ++n) {
    nlohmann::ordered_json card;
    card["code"] = svc::toUtf8(cards.GetFlagId(n));
    card["name"] = svc::toUtf8(cards.GetShowName(n));
    card["template"] = svc::toUtf8(cards.GetFilePath(n));
    card["pages"] = cards.GetPageCount(n);
    card["first"] = TableJson(cards, n, false);
    card["continuation"] = TableJson(cards, n, true);
    list.push_back(std::move(card));
  }
  if (args.json) {
    std::cout << list.dump(2) << "\n";
    return;
  }
  if (list.empty()) std::cerr << args.drawing << ": no cards\n";
  for (const auto& card : list) {
    std::cout << card["code"].get<std::string>() << "  " << card["name"].get<std::string>() << "  "
              << card["pages"].get<int>() << (card["pages"].get<int>() == 1 ? " page" : " pages") << "\n";
    std::cout << "  template: " << card["template"].get<std::string>() << "\n";
    PrintTable(card["first"], "first page");
    PrintTable(card["continuation"], "continuation");
  }
}

const CliCommand registration(60, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<CardsArgs>();
  auto* sub = app.add_subcommand("cards", "list the cards placed in a drawing");
  sub->add_option("drawing", args->drawing, "the DXF drawing, - for standard input")->required();
  sub->add_flag("--json", args->json, "print JSON");
  sub->callback([args, &globals] { RunCards(*args, globals); });
});

}  // namespace
}  // namespace tabulon::cli
