// `tabulon run DRAWING COMMAND [--answer A]... [-o OUT]`: any command of the plug-in on
// a drawing, with scripted answers.
#include "cli_command.h"
#include "cli_plugin_run.h"

namespace tabulon::cli {
namespace {

const CliCommand registration(50, [](CLI::App& app, GlobalOptions& globals) {
  auto run = std::make_shared<PluginRun>();
  auto* sub = app.add_subcommand("run", "run a command of the plug-in on a drawing, answering its questions from --answer");
  sub->add_option("drawing", run->drawing, "the DXF drawing, - for standard input")->required();
  sub->add_option("command", run->command, "the command, e.g. KrmDelBlkID")->required();
  sub->add_option("-a,--answer", run->answers, std::string("an answer (repeat in order); ") + kAnswerSyntaxHelp)
      ->allow_extra_args(false);
  sub->add_option("-d,--data", run->data,
                  "rows the card editor takes for a block, BLOCK=FILE (KrmCardEdit; none: the card is confirmed unchanged)");
  sub->add_option("-o,--output", run->output, "where to save the drawing (default: in place when changed; - for standard output)");
  sub->footer(std::string("With the answers used up, every further question is cancelled."));
  sub->callback([run, &globals] {
    run->library = globals.library;
    runPluginCommand(*run);
  });
});

}  // namespace
}  // namespace tabulon::cli
