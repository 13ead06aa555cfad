// `tabulon strip-prefixes DRAWING [-o OUT]`: the command KrmDelBlkID on every entity of
// model space: block definitions lose the generated prefixes of their names.
#include "cli_command.h"
#include "cli_plugin_run.h"

namespace tabulon::cli {
namespace {

const CliCommand registration(40, [](CLI::App& app, GlobalOptions& globals) {
  auto run = std::make_shared<PluginRun>();
  auto* sub = app.add_subcommand("strip-prefixes",
                                 "strip generated prefixes from the block names used in model space (A_B_C becomes C)");
  sub->add_option("drawing", run->drawing, "the DXF drawing, - for standard input")->required();
  sub->add_option("-o,--output", run->output, "where to save the drawing (default: in place; - for standard output)");
  sub->callback([run, &globals] {
    run->library = globals.library;
    run->command = "KrmDelBlkID";
    run->answers = {"all"};
    if (run->output.empty() && run->drawing != "-") run->output = run->drawing;
    runPluginCommand(*run);
  });
});

}  // namespace
}  // namespace tabulon::cli
