// `tabulon set DRAWING (--card CODE | --pick X,Y) --block NAME --row R --column COLUMN
// --text TEXT -o OUT`: one cell of a placed card changed through the access facade. Rows
// count over all pages from 0; a row past the end of the page-base block adds rows and
// pages. The drawing is saved to OUT only when the change went through.
#include <iostream>
#include <memory>

#include "card/data_grid.h"
#include "cli_command.h"
#include "drawing/ostrelm_tabulon.h"
#include "host/svc/utf8.h"
#include "placed_card_cli.h"

namespace tabulon::cli {
namespace {

struct SetArgs {
  std::string drawing;
  CardChoice card;
  std::string block;
  int row = 0;
  std::string column;
  std::string text;
  std::string output;
};

std::string Joined(const std::vector<std::wstring>& names) {
  std::string out;
  for (const auto& name : names) out += (out.empty() ? "" : ", ") + svc::toUtf8(name);
  return out;
}

void RunSet(const SetArgs& args, const GlobalOptions& globals) {
  PlacedCardSession session(args.drawing, globals.library);
  const KrmOpenedCard opened = session.OpenCard(args.card);
  const KrmCardData& data = opened.data;

  const int grid = data.FindGrid(svc::fromUtf8(args.block));
  if (grid < 0) {
    std::vector<std::wstring> names;
    data.GetGridNames(names);
    throw CliError("--block " + args.block + ": the card has no such block (it has " + Joined(names) + ")");
  }
  KrmDataGrid cells;
  data.GetGridAt(grid, cells);
  const int col = cells.FindCol(svc::fromUtf8(args.column));
  if (col < 0) {
    std::vector<std::wstring> names;
    for (const auto& c : cells.cols) names.push_back(c.att.GetShowName());
    throw CliError("--column " + args.column + ": the block " + args.block + " has no such column (it has " +
                   Joined(names) + ")");
  }
  if (args.row < 0) throw CliError("--row " + std::to_string(args.row) + ": rows count from 0");
  if (args.row >= cells.RowCount() && grid != data.GetBaseGrid()) {
    KrmDataGrid base;
    data.GetGridAt(data.GetBaseGrid(), base);
    throw CliError("--row " + std::to_string(args.row) + ": the block " + args.block + " has " +
                   std::to_string(cells.RowCount()) + " rows and cannot grow (only " + svc::toUtf8(base.blockName) +
                   " adds rows and pages)");
  }

  OstrelmTabulon cards;
  cards.Init();
  int n = 0;
  while (n < cards.GetCardCount() && cards.GetFlagId(n) != opened.card.cardCode) ++n;
  if (n == cards.GetCardCount()) throw CliError("the card " + svc::toUtf8(opened.card.cardCode) + " cannot be edited");
  if (cards.SetItemText(n, grid, svc::fromUtf8(args.text), args.row, col) != 1)
    throw CliError("the card " + svc::toUtf8(opened.card.cardCode) + " was not updated; nothing is saved");
  session.Save(args.output);
}

const CliCommand registration(62, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<SetArgs>();
  auto* sub = app.add_subcommand("set", "change one cell of a placed card");
  sub->add_option("drawing", args->drawing, "the DXF drawing, - for standard input")->required();
  AddCardChoice(sub, args->card);
  sub->add_option("--block", args->block, "the block of the cell")->required();
  sub->add_option("--row", args->row, "the row, counted over all pages from 0")->required();
  sub->add_option("--column", args->column, "the column's show name")->required();
  sub->add_option("--text", args->text, "the new text")->required();
  sub->add_option("-o,--output", args->output, "where to save the drawing, - for standard output")->required();
  sub->callback([args, &globals] { RunSet(*args, globals); });
});

}  // namespace
}  // namespace tabulon::cli
