#include "cli_authoring.h"

#include <filesystem>
#include <sstream>

#include "cli_command.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {

std::wstring AuthoringRoot(const std::string& library) {
  if (!library.empty()) svc::setLibraryOverride(library);
  std::wstring root = svc::fromPath(svc::libraryDir());
  while (root.size() > 1 && root.back() == L'/') root.pop_back();
  return root;
}

std::wstring RelativeFolder(const std::string& folder, const std::string& option) {
  std::wstring result = L"/";
  std::istringstream parts(folder);
  for (std::string part; std::getline(parts, part, '/');) {
    if (part.empty() || part == ".") continue;
    if (part == "..") throw CliError(option + " " + folder + ": a library folder cannot climb out of the library");
    result += svc::fromUtf8(part) + L"/";
  }
  return result;
}

std::wstring SelectionAnswer(const std::vector<double>& window) {
  if (window.empty()) return L"all";
  if (window.size() != 4) throw CliError("--window: expected X0,Y0,X1,Y1");
  std::wostringstream text;
  text << L"window " << window[0] << L"," << window[1] << L" " << window[2] << L"," << window[3];
  return text.str();
}

std::optional<std::wstring> AnswerWord(const std::string& answer) {
  if (answer.empty()) return std::nullopt;
  if (answer != "yes" && answer != "no" && answer != "cancel")
    throw CliError("--answer " + answer + ": expected yes, no or cancel");
  return svc::fromUtf8(answer);
}

std::pair<std::wstring, std::wstring> SplitLibraryName(const std::string& name) {
  const auto slash = name.rfind('/');
  if (slash == std::string::npos) return {L"/", svc::fromUtf8(name)};
  return {RelativeFolder(name.substr(0, slash), name), svc::fromUtf8(name.substr(slash + 1))};
}

}  // namespace tabulon::cli
