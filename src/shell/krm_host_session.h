// The host around the plug-in for a program without a window (the command-line program,
// tests): puts the suite's base services into the service dictionary, makes a user
// channel current, and loads the plug-in; on the way out it unloads the plug-in, closes
// every open drawing, takes the services out and restores the previous channel. One
// session at a time.
// The channel must outlive the session.
#pragma once

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
  QaEdUserIOScope io_;
};
