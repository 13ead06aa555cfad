// The host with the plug-in loaded, for a program without a window (the command-line
// program, the studio, tests): a QaHostSession (base services, real font measures, the
// user channel) with KrmTabulon loaded in it, so its commands and string tables are
// there. On the way out the plug-in is unloaded before the host session ends. One
// session at a time; the channel must outlive the session.
#pragma once

#include "host/ap/qa_host_session.h"
#include "host/ed/qaed_user_io.h"

#include <filesystem>
#include <optional>
#include <string>

class QaApDocument;

class KrmHostSession {
 public:
  // Throws std::runtime_error when the plug-in cannot be loaded (another session holds it).
  explicit KrmHostSession(QaEdUserIO& io);
  ~KrmHostSession();
  KrmHostSession(const KrmHostSession&) = delete;
  KrmHostSession& operator=(const KrmHostSession&) = delete;

  // Opens a drawing as the current document; nullptr and the reader's message in
  // `error` when it cannot be read.
  QaApDocument* openDrawing(const std::filesystem::path& path, std::string* error = nullptr);
  // Runs a command as a user would type it; see QaEdCommandStack::invoke.
  std::optional<int> runCommand(const std::wstring& name);

 private:
  QaHostSession host_;
};
