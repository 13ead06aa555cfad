// Running one of the plug-in's commands on a drawing file for the `tabulon` program:
// the host is stood up around the plug-in, the drawing opened as the current document,
// the command run with scripted answers, and the drawing saved.
#pragma once

#include <string>
#include <vector>

namespace tabulon::cli {

struct PluginRun {
  std::string drawing;               // a DXF file, or "-" for standard input
  std::string command;               // as a user types it: "KrmDelBlkID", "_KrmDelBlkID"
  std::vector<std::string> answers;  // one per question, in order (see the input syntax)
  std::string output;                // "" saves in place (when something changed), "-" to standard output
  std::string library;               // card root override, "" for the configured one
  int* commandResult = nullptr;      // when set, receives the command's answer (1 done, 0 not)
  std::vector<std::string> data;     // BLOCK=FILE: the rows the card editor takes (KrmCardEdit)
};

// Runs it; the command-line transcript goes to standard output (to standard error when
// the drawing goes to standard output). Throws CliError with a message on failure.
void runPluginCommand(const PluginRun& run);

// The help text on answers shared by the subcommands.
extern const char* const kAnswerSyntaxHelp;

}  // namespace tabulon::cli
