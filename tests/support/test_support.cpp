#include "support/test_support.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>

namespace tabulon::test {

namespace fs = std::filesystem;

fs::path fixturesDir() { return fs::path(TABULON_SHARED_DIR) / "fixtures" / "dxf-real"; }
fs::path sourceDir() { return fs::path(TABULON_SOURCE_DIR); }
fs::path cliPath() { return fs::path(TABULON_CLI); }

ScratchDir::ScratchDir() {
  std::random_device rd;
  std::mt19937_64 gen(rd());
  auto base = fs::temp_directory_path();
  for (int attempt = 0; attempt < 100; ++attempt) {
    auto candidate = base / ("tabulon-test-" + std::to_string(gen()));
    if (fs::create_directory(candidate)) {
      path_ = candidate;
      return;
    }
  }
  throw std::runtime_error("cannot create a scratch folder");
}

ScratchDir::~ScratchDir() {
  std::error_code ec;
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(path_, ec);
}

PrivateHome::PrivateHome() {
  if (const char* old = std::getenv("TABULON_HOME")) previous_ = old;
  ::setenv("TABULON_HOME", dir_.path().c_str(), 1);
}

PrivateHome::~PrivateHome() {
  if (previous_) ::setenv("TABULON_HOME", previous_->c_str(), 1);
  else ::unsetenv("TABULON_HOME");
}

std::string shellQuote(const std::string& arg) {
  std::string out = "'";
  for (char c : arg) {
    if (c == '\'') out += "'\\''";
    else out += c;
  }
  return out + "'";
}

CommandResult runCommand(const std::string& commandLine) {
  CommandResult result;
  std::string full = commandLine + " 2>&1";
  FILE* pipe = popen(full.c_str(), "r");
  if (!pipe) throw std::runtime_error("popen failed: " + commandLine);
  std::array<char, 4096> buf{};
  size_t n;
  while ((n = fread(buf.data(), 1, buf.size(), pipe)) > 0) result.output.append(buf.data(), n);
  int status = pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

CommandResult runPython(const std::string& script, const std::vector<std::string>& args) {
  ScratchDir dir;
  auto scriptPath = dir / "script.py";
  writeFile(scriptPath, script);
  std::string cmd = "/usr/bin/python3 " + shellQuote(scriptPath.string());
  for (const auto& a : args) cmd += " " + shellQuote(a);
  return runCommand(cmd);
}

bool ezdxfAvailable() {
  static const bool available = runCommand("/usr/bin/python3 -c 'import ezdxf'").exitCode == 0;
  return available;
}

std::string readFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void writeFile(const fs::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot write " + path.string());
  out << bytes;
}

}  // namespace tabulon::test
