// `tabulon update DRAWING (--card CODE | --pick X,Y) --data BLOCK=FILE... [--page-start N]
// [--batch-start N] [--page-step N] -o OUT`: the named blocks of a placed card take the
// rows of the files, and the drawing is brought in line with the fewest rewrites: pages
// are added or cut at the end, and only the rows that changed are written.
#include <iostream>
#include <memory>

#include "card/card_data.h"
#include "cli_command.h"
#include "drawing/card_data_rows.h"
#include "drawing/placed_card_update.h"
#include "host/svc/utf8.h"
#include "placed_card_cli.h"

namespace tabulon::cli {
namespace {

struct UpdateArgs {
  std::string drawing;
  CardChoice card;
  std::vector<std::string> data;
  int pageStart = 1;
  int batchStart = 1;
  int pageStep = 1;
  bool givenPageStart = false;
  bool givenBatchStart = false;
  bool givenPageStep = false;
  std::string output;
};

void RunUpdate(const UpdateArgs& args, const GlobalOptions& globals) {
  const auto tables = ReadDataOptions(args.data);
  if (args.givenPageStep && args.pageStep < 1) throw CliError("--page-step must be 1 or more");
  PlacedCardSession session(args.drawing, globals.library);
  KrmOpenedCard opened = session.OpenCard(args.card);

  KrmCardData after = opened.data;
  for (const auto& [block, rows] : tables) {
    const Status set = SetBlockRows(after, block, rows);
    if (!set.ok()) throw CliError("--data " + set.error().field + ": " + set.describe());
  }
  if (args.givenPageStart) after.PageStartCur() = args.pageStart;
  if (args.givenBatchStart) after.PageStartSum() = args.batchStart;
  if (args.givenPageStep) after.PageStep() = args.pageStep;
  // Numbers the card's pages anew when their count or numbering changes; otherwise the
  // numbers stand as they are (a card of a batch keeps its batch numbers).
  if (args.givenPageStart || args.givenBatchStart || args.givenPageStep ||
      PagesNeeded(after) != static_cast<int>(opened.card.pages.size())) {
    RenumberPages(after);
  }

  KrmUpdateStats stats;
  UpdatePlacedCard(*opened.cardTemplate, opened.data, after, opened.card, &stats);
  std::cerr << "card " << tabulon::svc::toUtf8(opened.card.cardCode) << ": " << stats.rowBlocksWritten
            << " row blocks and " << stats.classRowsWritten << " other blocks written, " << stats.pagesAdded
            << " pages added, " << stats.pagesCut << " cut, " << session.ModifiedCount() << " objects changed\n";
  session.Save(args.output);
}

const CliCommand registration(63, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<UpdateArgs>();
  auto* sub = app.add_subcommand("update", "give blocks of a placed card new rows and bring the drawing in line");
  sub->add_option("drawing", args->drawing, "the DXF drawing, - for standard input")->required();
  AddCardChoice(sub, args->card);
  sub->add_option("-d,--data", args->data, "rows of a block: BLOCK=FILE (.csv, .tsv, .json or .txt)")->required();
  auto* start = sub->add_option("--page-start", args->pageStart, "first page number of the card");
  auto* batch = sub->add_option("--batch-start", args->batchStart, "first batch page number");
  auto* step = sub->add_option("--page-step", args->pageStep, "step of the page numbers");
  sub->add_option("-o,--output", args->output, "where to save the drawing, - for standard output")->required();
  sub->callback([args, start, batch, step, &globals] {
    args->givenPageStart = start->count() > 0;
    args->givenBatchStart = batch->count() > 0;
    args->givenPageStep = step->count() > 0;
    RunUpdate(*args, globals);
  });
});

}  // namespace
}  // namespace tabulon::cli
