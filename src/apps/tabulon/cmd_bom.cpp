// `tabulon bom DRAWING [--answer A]... [-o OUT]`: the bill of materials of the drawing's
// frames becomes a card (command KrmBomCardExp), with scripted answers.
#include <memory>

#include "cli_command.h"
#include "cli_plugin_run.h"

namespace tabulon::cli {
namespace {

const CliCommand registration(40, [](CLI::App& app, GlobalOptions& globals) {
  auto run = std::make_shared<PluginRun>();
  run->command = "KrmBomCardExp";
  auto* sub = app.add_subcommand("bom", "make a card from the bill of materials of the drawing's frames");
  sub->add_option("drawing", run->drawing, "the DXF drawing, - for standard input")->required();
  sub->add_option("-a,--answer", run->answers, std::string("an answer (repeat in order); ") + kAnswerSyntaxHelp)
      ->allow_extra_args(false);
  sub->add_option("-o,--output", run->output,
                  "where to save the drawing (default: in place when a card was made; - for standard output)");
  sub->footer(
      "Questions, in order: with two or more frames, which frames (selecting nothing takes them all); then the "
      "insertion point, Enter for the origin, or with several entries in options.ini a keyword 1, 2, ... to "
      "choose the card first. Frames, title blocks and BOM rows are those of options.ini [KrmFrame]; the card "
      "and its blocks those of [KrmcadTabulon_List]. `tabulon demo` writes an example of both.");
  sub->callback([run, &globals] {
    int made = 0;
    run->library = globals.library;
    run->commandResult = &made;
    runPluginCommand(*run);
    if (made != 1) throw CliError("no card was made from the bill of materials", 2);
  });
});

}  // namespace
}  // namespace tabulon::cli
