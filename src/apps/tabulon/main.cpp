// The `tabulon` program: the plug-in's commands on DXF drawings, without dialogs.
#include "cli_command.h"

#include <algorithm>
#include <clocale>
#include <iostream>

namespace tabulon::cli {

std::vector<std::pair<int, CommandSetup>>& registeredCommands() {
  static std::vector<std::pair<int, CommandSetup>> commands;
  return commands;
}

CliCommand::CliCommand(int order, CommandSetup setup) {
  registeredCommands().emplace_back(order, std::move(setup));
}

}  // namespace tabulon::cli

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "C.UTF-8");
  using namespace tabulon::cli;
  CLI::App app{"tabulon: process cards in DXF drawings"};
  app.set_version_flag("--version", "tabulon 0.1.0");
  app.require_subcommand(1);
  GlobalOptions globals;
  app.add_option("--library", globals.library, "card library folder (card root)");

  auto& commands = registeredCommands();
  std::stable_sort(commands.begin(), commands.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [order, setup] : commands) setup(app, globals);

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e);
  } catch (const CliError& e) {
    std::cerr << "tabulon: " << e.what() << "\n";
    return e.exitCode;
  } catch (const std::exception& e) {
    std::cerr << "tabulon: " << e.what() << "\n";
    return 1;
  }
  return 0;
}
