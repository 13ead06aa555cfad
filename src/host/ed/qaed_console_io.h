// A user channel on a terminal: prompts and printed text go to an output stream,
// answers are read line by line from an input stream (UTF-8), in the syntax of
// qaed_input.h. The end of the input cancels. The streams must outlive the channel.
#pragma once

#include "host/ed/qaed_user_io.h"

#include <iosfwd>

class QaEdConsoleIO : public QaEdUserIO {
 public:
  QaEdConsoleIO(std::istream& in, std::ostream& out) : in_(in), out_(out) {}

  void print(std::wstring_view text) override;
  QaEdInput request(const QaEdRequest& request) override;
  // A box with a choice waits for y, n, o or c (or the full words); a box with only OK
  // is printed and does not wait.
  int messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) override;

 private:
  bool readLine(std::wstring& line);

  std::istream& in_;
  std::ostream& out_;
};
