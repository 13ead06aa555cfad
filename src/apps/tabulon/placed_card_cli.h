// What the subcommands on placed cards (cards, get, set, update) share: the drawing
// opened as the current document of a host session, the card chosen by code or by a
// point, and the drawing saved to the output only when everything went well, so that
// the input is never touched.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli_command.h"
#include "card/table_rows.h"
#include "drawing/placed_card_read.h"
#include "host/ed/qaed_scripted_io.h"
#include "shell/krm_host_session.h"

namespace tabulon::cli {

// --card CODE or --pick X,Y.
struct CardChoice {
  std::string code;
  std::vector<double> pick;
};

// Adds the two options to `sub`, each excluding the other (OpenCard asks for one).
void AddCardChoice(CLI::App* sub, CardChoice& choice);

// Reads "BLOCK=FILE" options into rows per block; throws CliError naming the option or
// the file.
std::map<std::wstring, KrmTableRows> ReadDataOptions(const std::vector<std::string>& options);

// A temporary file removed when the object goes.
class TempPath {
 public:
  explicit TempPath(const std::string& suffix);
  ~TempPath();
  TempPath(const TempPath&) = delete;
  TempPath& operator=(const TempPath&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

class PlacedCardSession {
 public:
  // Opens `drawing` ("-" for standard input) with the card library `library` ("" for the
  // configured one). Throws CliError when it cannot be read.
  PlacedCardSession(const std::string& drawing, const std::string& library);
  ~PlacedCardSession();
  PlacedCardSession(const PlacedCardSession&) = delete;
  PlacedCardSession& operator=(const PlacedCardSession&) = delete;

  // The chosen card, read back. Throws CliError for a drawing without cards, a code no
  // card has, a point on no card, or a card whose template is gone from the library.
  KrmOpenedCard OpenCard(const CardChoice& choice);
  // Saves the drawing to `output` ("-" for standard output). Throws CliError.
  void Save(const std::string& output);
  // Objects of the drawing changed since it was read.
  int ModifiedCount() const;
  const std::string& drawingName() const { return drawing_; }

 private:
  std::string drawing_;
  std::optional<TempPath> input_;
  QaEdScriptedIO io_;
  std::unique_ptr<KrmHostSession> session_;
};

}  // namespace tabulon::cli
