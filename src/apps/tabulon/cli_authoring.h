// What the authoring commands of the `tabulon` program share: the card root from
// --library, relative library folders, window selections and the yes/no/cancel
// answers given on the command line.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "cli_command.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/result.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {

// The card root as the models take it: the library folder without a trailing '/'.
std::wstring AuthoringRoot(const std::string& library);

// A folder relative to the library as "/a/b/": "" and "/" give "/". Throws CliError
// for a folder that would climb out of the library ("..").
std::wstring RelativeFolder(const std::string& folder, const std::string& option);

// The selection answer of a window "X0,Y0,X1,Y1", or "all" when none was given.
// Throws CliError when the window does not have four numbers.
std::wstring SelectionAnswer(const std::vector<double>& window);

// "yes", "no" or "cancel" checked; empty when none was given.
std::optional<std::wstring> AnswerWord(const std::string& answer);

// "dir/name" split into the relative folder "/dir/" and the stem "name".
std::pair<std::wstring, std::wstring> SplitLibraryName(const std::string& name);

// Names a table or card template model, makes its library folder when missing and
// writes it through the model's OnOK. `pathOf(model)` gives the path without extension
// once the model is named. A template of the same name is answered by `answer` through
// `io`; with no answer given that is an error naming the file. Returns the path.
template <class Model, class PathOf>
std::wstring WriteTemplate(Model& model, PathOf pathOf, const std::string& name, const std::string& showName,
                           const std::wstring& root, const std::wstring& folder, const char* kind,
                           const wchar_t* extension, QaEdScriptedIO& io, const std::optional<std::wstring>& answer) {
  model.SetName(svc::fromUtf8(name));
  if (!showName.empty()) model.SetShowName(svc::fromUtf8(showName));
  model.SetFolder(folder);
  std::error_code ignored;
  std::filesystem::create_directories(svc::toPath(root + folder), ignored);

  const std::wstring path = pathOf(model);
  if (answer) {
    io.addAnswer(*answer);
  } else if (std::filesystem::exists(svc::toPath(path + extension))) {
    throw CliError(std::string("a ") + kind + " " + svc::toUtf8(path + extension) +
                   " exists; say with --answer yes (keep its id), no (new id) or cancel what to do");
  }
  if (const Status saved = model.OnOK(); !saved.ok()) throw CliError(saved.describe());
  return path;
}

}  // namespace tabulon::cli
