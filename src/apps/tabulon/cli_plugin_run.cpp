#include "cli_plugin_run.h"

#include "cli_command.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_object.h"
#include "host/ed/qaed_command_stack.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"
#include "shell/krm_command_table.h"
#include "shell/krm_data_card_editor.h"
#include "shell/krm_host_session.h"
#include "host/rx/qarx_system_registry.h"
#include "placed_card_cli.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include <unistd.h>

namespace tabulon::cli {

namespace fs = std::filesystem;

const char* const kAnswerSyntaxHelp =
    "answers, one per question: x,y[,z] a point; \"\" Enter; cancel; a keyword or text; "
    "#HANDLE an entity; for selections all, #H1,#H2, window x1,y1 x2,y2, r (remove) and a (add); "
    "yes/no/ok for message boxes";

namespace {

// A temporary file removed when the object goes.
class TempFile {
 public:
  explicit TempFile(const std::string& suffix) {
    auto pattern = (fs::temp_directory_path() / ("tabulon-XXXXXX" + suffix)).string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int fd = mkstemps(name.data(), static_cast<int>(suffix.size()));
    if (fd < 0) throw CliError("cannot create a temporary file in " + fs::temp_directory_path().string());
    ::close(fd);
    path_ = name.data();
  }
  ~TempFile() {
    std::error_code ec;
    fs::remove(path_, ec);
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

bool anythingModified(QaDbDatabase& db) {
  for (auto id : db.objectIds(true))
    if (auto* object = id.rawObject(); object && object->isModified()) return true;
  return false;
}

std::string knownCommands() {
  std::string names;
  for (const auto* command : qaedCommandStack().commandsOfGroup(kKrmCommandGroup))
    names += (names.empty() ? "" : ", ") + tabulon::svc::toUtf8(command->localName);
  return names;
}

}  // namespace

void runPluginCommand(const PluginRun& run) {
  if (!run.library.empty()) {
    std::error_code ec;
    if (!fs::is_directory(run.library, ec)) throw CliError("--library: not a folder: " + run.library);
    tabulon::svc::setLibraryOverride(run.library);
  }
  const bool toStdout = run.output == "-" || (run.output.empty() && run.drawing == "-");
  std::ostream& transcript = toStdout ? std::cerr : std::cout;

  std::optional<TempFile> input;
  fs::path inputPath = run.drawing;
  if (run.drawing == "-") {
    input.emplace(".dxf");
    std::ofstream out(input->path(), std::ios::binary);
    out << std::cin.rdbuf();
    if (!out) throw CliError("cannot store the drawing read from standard input");
    inputPath = input->path();
  } else if (!fs::exists(inputPath)) {
    throw CliError("no such drawing: " + run.drawing);
  }

  // The card editor of this program: the rows of the data files, confirmed at once.
  const auto tables = ReadDataOptions(run.data);
  std::vector<std::wstring> answers;
  for (const auto& a : run.answers) answers.push_back(tabulon::svc::fromUtf8(a));
  QaEdScriptedIO io(std::move(answers));
  io.setEcho(&transcript);
  KrmHostSession session(io);

  std::string error;
  QaApDocument* doc = session.openDrawing(inputPath, &error);
  if (!doc) throw CliError("cannot read the drawing " + run.drawing + ": " + error);
  const auto command = tabulon::svc::fromUtf8(run.command);
  if (!qaedCommandStack().lookupCmd(command))
    throw CliError("unknown command \"" + run.command + "\"; the plug-in has " + knownCommands());
  auto editor = std::make_unique<KrmDataCardEditor>(tables);
  const KrmDataCardEditor& edits = *editor;
  qaServiceDictionary().atPut(KRM_CARD_EDITOR, std::move(editor));
  struct EditorScope {
    ~EditorScope() { qaServiceDictionary().remove(KRM_CARD_EDITOR); }
  } editorScope;
  const auto result = session.runCommand(command);
  if (edits.lastError()) throw CliError("the card was not changed: " + edits.lastError()->describe());
  if (!run.data.empty() && edits.editCount() == 0)
    throw CliError("--data is for the card editor, which the command " + run.command + " did not open");
  if (!io.transcript().empty() && io.transcript().back() != L'\n') transcript << "\n";
  if (!result) throw CliError("the command " + run.command + " failed");
  if (run.commandResult) *run.commandResult = *result;

  QaDbDatabase* db = doc->database();
  if (toStdout) {
    TempFile output(".dxf");
    if (db->saveAs(output.path(), QaDb::kDwgCurrent, &error) != Qa::eOk) throw CliError("cannot write the drawing: " + error);
    std::ifstream in(output.path(), std::ios::binary);
    std::cout << in.rdbuf();
    std::cout.flush();
  } else if (!run.output.empty() || anythingModified(*db)) {
    const fs::path target = run.output.empty() ? fs::path(run.drawing) : fs::path(run.output);
    if (db->saveAs(target, QaDb::kDwgCurrent, &error) != Qa::eOk)
      throw CliError("cannot write the drawing " + target.string() + ": " + error);
  }
}

}  // namespace tabulon::cli
