// The host for a program without a window (the command-line program, the studio, tests):
// while it runs, the suite's base services are in the service dictionary, texts are
// measured with the real fonts, and a user channel is current. On the way out it closes
// every open drawing, takes the services out and brings back the measurer and channel
// of before. One session at a time; the channel must outlive the session.
#pragma once

#include "host/ed/qaed_user_io.h"
#include "host/gi/qagi_text_measure_hook.h"

#include <filesystem>
#include <string>

class QaApDocument;

class QaHostSession {
 public:
  explicit QaHostSession(QaEdUserIO& io);
  ~QaHostSession();
  QaHostSession(const QaHostSession&) = delete;
  QaHostSession& operator=(const QaHostSession&) = delete;

  // Opens a drawing as the current document; nullptr and the reader's message in
  // `error` when it cannot be read.
  QaApDocument* openDrawing(const std::filesystem::path& path, std::string* error = nullptr);

 private:
  QaEdUserIOScope io_;
  QaGiFontTextWidth measurer_;
};
