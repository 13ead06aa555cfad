// Helpers shared by every test executable: paths of fixtures, scratch folders,
// and running outside programs (the tabulon CLI, the independent ezdxf reader).
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tabulon::test {

// Folder with real-world DXF files written by other programs.
std::filesystem::path fixturesDir();
// Repository root (for resources/ and the like).
std::filesystem::path sourceDir();
// Path of the built `tabulon` program.
std::filesystem::path cliPath();

// A fresh, empty folder removed again when the object goes away.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

// Points TABULON_HOME at a fresh scratch folder for the object's lifetime and puts
// the old value back afterwards.
class PrivateHome {
 public:
  PrivateHome();
  ~PrivateHome();
  PrivateHome(const PrivateHome&) = delete;
  PrivateHome& operator=(const PrivateHome&) = delete;
  const std::filesystem::path& path() const { return dir_.path(); }

 private:
  ScratchDir dir_;
  std::optional<std::string> previous_;
};

struct CommandResult {
  int exitCode = -1;
  std::string output;  // stdout and stderr together
};

// Runs a shell command line and collects what it prints.
CommandResult runCommand(const std::string& commandLine);

// Runs /usr/bin/python3 with the given script text (fed on stdin) and arguments.
CommandResult runPython(const std::string& script, const std::vector<std::string>& args = {});

// True when /usr/bin/python3 can import ezdxf.
bool ezdxfAvailable();

// Reads a whole file as bytes.
std::string readFile(const std::filesystem::path& path);
// Writes bytes to a file, replacing it.
void writeFile(const std::filesystem::path& path, const std::string& bytes);

// Quotes an argument for /bin/sh.
std::string shellQuote(const std::string& arg);

}  // namespace tabulon::test
