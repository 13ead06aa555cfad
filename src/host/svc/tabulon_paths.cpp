#include "host/svc/tabulon_paths.h"

#include "host/svc/ini_file.h"
#include "host/svc/utf8.h"

#include <cstdlib>
#include <mutex>

#include <pwd.h>
#include <unistd.h>

namespace tabulon::svc {

namespace fs = std::filesystem;

namespace {

std::string envOrEmpty(const char* name) {
  const char* value = std::getenv(name);
  return value ? std::string(value) : std::string();
}

fs::path homeDir() {
  if (auto home = envOrEmpty("HOME"); !home.empty()) return home;
  if (const passwd* pw = getpwuid(getuid()); pw && pw->pw_dir) return pw->pw_dir;
  return fs::current_path();
}

// Process-wide override of the card root, set once by a program's option parser.
struct LibraryOverride {
  std::mutex mutex;
  fs::path dir;
};

LibraryOverride& libraryOverrideState() {
  static LibraryOverride state;
  return state;
}

// A path as written in tabulon.ini, made absolute.
fs::path resolveConfigured(const std::wstring& value) {
  auto text = toUtf8(value);
  if (text == "~") return homeDir();
  if (text.starts_with("~/")) return homeDir() / text.substr(2);
  fs::path p(text);
  return p.is_absolute() ? p : configDir() / p;
}

std::optional<std::wstring> pathsValue(const wchar_t* key) {
  auto value = IniFile::load(tabulonIniPath()).get(L"Paths", key);
  if (value && value->empty()) return std::nullopt;
  return value;
}

}  // namespace

fs::path configDir() {
  if (auto home = envOrEmpty("TABULON_HOME"); !home.empty()) return home;
  if (auto xdg = envOrEmpty("XDG_CONFIG_HOME"); !xdg.empty()) return fs::path(xdg) / "tabulon";
  return homeDir() / ".config" / "tabulon";
}

fs::path dataDir() {
  if (auto xdg = envOrEmpty("XDG_DATA_HOME"); !xdg.empty()) return fs::path(xdg) / "tabulon";
  return homeDir() / ".local" / "share" / "tabulon";
}

fs::path tabulonIniPath() { return configDir() / "tabulon.ini"; }
fs::path optionsIniPath() { return configDir() / "options.ini"; }
fs::path settingsIniPath() { return configDir() / "settings.ini"; }

void setLibraryOverride(const fs::path& dir) {
  auto& state = libraryOverrideState();
  std::lock_guard lock(state.mutex);
  state.dir = dir.empty() ? fs::path() : fs::absolute(dir);
}

fs::path libraryOverride() {
  auto& state = libraryOverrideState();
  std::lock_guard lock(state.mutex);
  return state.dir;
}

fs::path libraryDir() {
  if (auto dir = libraryOverride(); !dir.empty()) return dir;
  if (auto value = pathsValue(L"Library")) return resolveConfigured(*value);
  return dataDir() / "Cards";
}

fs::path wordLibPath() {
  if (auto value = pathsValue(L"WordLib")) return resolveConfigured(*value);
  return dataDir() / "wordlib.txt";
}

std::string normaliseLocaleName(const std::string& name) {
  auto cut = name.find_first_of(".@");
  auto base = name.substr(0, cut);
  if (base.empty() || base == "C" || base == "POSIX") return {};
  return base;
}

std::string configuredLocale() {
  if (auto value = pathsValue(L"Locale")) {
    if (auto name = normaliseLocaleName(toUtf8(*value)); !name.empty()) return name;
  }
  for (const char* var : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (auto name = normaliseLocaleName(envOrEmpty(var)); !name.empty()) return name;
  }
  return "zh_CN";
}

}  // namespace tabulon::svc
