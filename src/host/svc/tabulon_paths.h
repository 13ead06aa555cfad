// Where the programs keep their configuration and find the card library and the phrase
// library. The configuration folder is $TABULON_HOME, else $XDG_CONFIG_HOME/tabulon
// (~/.config/tabulon); it holds tabulon.ini ([Paths] Library=, WordLib=, Locale=),
// options.ini and settings.ini. Relative paths in tabulon.ini are taken from the
// configuration folder, and a leading "~/" from the home folder.
#pragma once

#include <filesystem>
#include <string>

namespace tabulon::svc {

std::filesystem::path configDir();
// $XDG_DATA_HOME/tabulon, else ~/.local/share/tabulon.
std::filesystem::path dataDir();

std::filesystem::path tabulonIniPath();
std::filesystem::path optionsIniPath();
std::filesystem::path settingsIniPath();

// The card root given on the command line (--library); it wins over tabulon.ini.
// Process-wide; an empty path removes the override.
void setLibraryOverride(const std::filesystem::path& dir);
std::filesystem::path libraryOverride();

// The card root: the override, else [Paths] Library=, else dataDir()/Cards. Whether
// the folder exists is not checked here.
std::filesystem::path libraryDir();

// The phrase library file: [Paths] WordLib=, else dataDir()/wordlib.txt.
std::filesystem::path wordLibPath();

// The language of the user interface, such as "zh_CN" or "en_US": [Paths] Locale=,
// else the first of LC_ALL, LC_MESSAGES and LANG that names a language ("C" and
// "POSIX" do not), with encoding and modifier cut off; else "zh_CN".
std::string configuredLocale();

// "zh_CN.UTF-8@euro" -> "zh_CN"; "C", "POSIX" and empty texts give "".
std::string normaliseLocaleName(const std::string& name);

}  // namespace tabulon::svc
