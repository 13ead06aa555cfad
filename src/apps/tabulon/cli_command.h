// Subcommands of the `tabulon` program register themselves here: each cmd_*.cpp
// defines one static CliCommand that adds its CLI11 subcommand to the app.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace tabulon::cli {

// Options every subcommand may read.
struct GlobalOptions {
  std::string library;  // --library DIR: card root folder, empty for the configured one
};

using CommandSetup = std::function<void(CLI::App& app, GlobalOptions& globals)>;

// Registers a subcommand at static-initialisation time.
struct CliCommand {
  CliCommand(int order, CommandSetup setup);
};

// All registered subcommands, sorted by their order.
std::vector<std::pair<int, CommandSetup>>& registeredCommands();

// Thrown by a subcommand to end the program with a message and a non-zero status.
struct CliError : std::runtime_error {
  explicit CliError(const std::string& what, int code = 1) : std::runtime_error(what), exitCode(code) {}
  int exitCode;
};

}  // namespace tabulon::cli
