// The host's channel to the user: the command line (printed text, prompts and typed or
// picked answers) and message boxes. The host functions (qautPrintf, qaedGetPoint,
// EntSelEx, qaedSSGet, message boxes) all go through the channel that is current.
// Implementations: scripted answers (tests, the command-line program), the terminal,
// and the studio's view.
#pragma once

#include "host/ed/qaed_input.h"

#include <string>
#include <string_view>

class QaEdUserIO {
 public:
  virtual ~QaEdUserIO() = default;

  // Text on the command line, as given ("\n" starts a new line).
  virtual void print(std::wstring_view text) = 0;

  // Shows the request's prompt and waits for one answer.
  virtual QaEdInput request(const QaEdRequest& request) = 0;

  // A message box; `type` holds the MB_ button and icon bits, the result is an ID_ code.
  virtual int messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) = 0;
};

// The channel in use. Without one installed nobody answers: output is dropped, every
// request is cancelled and every box gives its safest button; nothing blocks.
QaEdUserIO& qaedUserIO();

// Installs a channel for a scope and restores the previous one when the scope ends.
// The channel must outlive the scope.
class QaEdUserIOScope {
 public:
  explicit QaEdUserIOScope(QaEdUserIO& io);
  ~QaEdUserIOScope();
  QaEdUserIOScope(const QaEdUserIOScope&) = delete;
  QaEdUserIOScope& operator=(const QaEdUserIOScope&) = delete;

 private:
  QaEdUserIO* previous_;
};
