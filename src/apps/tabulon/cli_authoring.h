// What the authoring commands of the `tabulon` program share: the card root from
// --library, relative library folders, window selections and the yes/no/cancel
// answers given on the command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

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

}  // namespace tabulon::cli
