#include "host/ed/qaed_console_io.h"

#include "host/ed/qa_message_box.h"
#include "host/svc/utf8.h"

#include <cwctype>
#include <istream>
#include <ostream>
#include <string>

using tabulon::svc::fromUtf8;
using tabulon::svc::toUtf8;

void QaEdConsoleIO::print(std::wstring_view text) {
  out_ << toUtf8(text);
  out_.flush();
}

bool QaEdConsoleIO::readLine(std::wstring& line) {
  std::string bytes;
  if (!std::getline(in_, bytes)) return false;
  if (!bytes.empty() && bytes.back() == '\r') bytes.pop_back();
  line = fromUtf8(bytes);
  return true;
}

QaEdInput QaEdConsoleIO::request(const QaEdRequest& request) {
  print(request.prompt);
  std::wstring line;
  if (!readLine(line)) {
    print(L"*cancel*\n");
    return QaEdInput::cancel();
  }
  return qaedParseInput(line, request.kind);
}

int QaEdConsoleIO::messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) {
  print(L"\n[" + std::wstring(caption) + L"] " + std::wstring(text) + L"\n");
  const unsigned buttons = type & MB_TYPEMASK;
  if (buttons == MB_OK) return IDOK;
  std::wstring choices = buttons == MB_OKCANCEL ? L"(O)K/(C)ancel" : buttons == MB_YESNO ? L"(Y)es/(N)o" : L"(Y)es/(N)o/(C)ancel";
  while (true) {
    print(choices + L": ");
    std::wstring line;
    if (!readLine(line)) return qaSafestButton(type);
    std::wstring word;
    for (wchar_t c : line)
      if (!std::iswspace(static_cast<wint_t>(c))) word += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    int answer = 0;
    if (word == L"y" || word == L"yes") answer = IDYES;
    else if (word == L"n" || word == L"no") answer = IDNO;
    else if (word == L"o" || word == L"ok") answer = IDOK;
    else if (word == L"c" || word == L"cancel") answer = IDCANCEL;
    if (qaBoxHasButton(type, answer)) return answer;
  }
}
