// A user channel that answers from a list of typed answers (see qaed_input.h), one per
// request, in order; with the list used up every request is cancelled. What is printed
// is collected, and a transcript shows the session as a terminal would. Used by the
// tests and by the command-line program's --answer options.
//
// Message boxes with a choice take the next answer when it is one of their buttons
// ("yes", "no", "ok", "cancel"); otherwise, and for boxes with only OK, nobody chooses
// and the box gives its safest button (qaSafestButton).
#pragma once

#include "host/ed/qaed_user_io.h"

#include <deque>
#include <iosfwd>
#include <string>
#include <vector>

class QaEdScriptedIO : public QaEdUserIO {
 public:
  QaEdScriptedIO() = default;
  explicit QaEdScriptedIO(std::vector<std::wstring> answers);

  void addAnswer(std::wstring answer);
  std::size_t pendingAnswers() const { return answers_.size(); }
  // Mirrors the transcript, UTF-8, to `echo` as it grows; null stops. Must outlive use.
  void setEcho(std::ostream* echo) { echo_ = echo; }

  // The text of print() calls alone.
  const std::wstring& printed() const { return printed_; }
  // Prompts, the answers given, printed text and message boxes, in order.
  const std::wstring& transcript() const { return transcript_; }
  // The prompts asked, one entry per request.
  const std::vector<std::wstring>& prompts() const { return prompts_; }
  // The texts of the message boxes shown.
  const std::vector<std::wstring>& messageBoxes() const { return boxes_; }

  void print(std::wstring_view text) override;
  QaEdInput request(const QaEdRequest& request) override;
  int messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) override;

 private:
  void record(std::wstring_view text);

  std::deque<std::wstring> answers_;
  std::ostream* echo_ = nullptr;
  std::wstring printed_;
  std::wstring transcript_;
  std::vector<std::wstring> prompts_;
  std::vector<std::wstring> boxes_;
};
