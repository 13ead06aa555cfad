#include "host/ed/qaed_scripted_io.h"

#include "host/ed/qa_message_box.h"
#include "host/svc/utf8.h"

#include <cwctype>
#include <ostream>

namespace {

std::optional<int> buttonOf(std::wstring_view answer) {
  std::wstring word;
  for (wchar_t c : answer)
    if (!std::iswspace(static_cast<wint_t>(c))) word += static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  if (word == L"yes" || word == L"y") return IDYES;
  if (word == L"no" || word == L"n") return IDNO;
  if (word == L"ok") return IDOK;
  if (word == L"cancel" || word == L"esc") return IDCANCEL;
  return std::nullopt;
}

const wchar_t* buttonName(int id) {
  switch (id) {
    case IDYES: return L"yes";
    case IDNO: return L"no";
    case IDCANCEL: return L"cancel";
    default: return L"ok";
  }
}

}  // namespace

QaEdScriptedIO::QaEdScriptedIO(std::vector<std::wstring> answers) : answers_(answers.begin(), answers.end()) {}

void QaEdScriptedIO::addAnswer(std::wstring answer) { answers_.push_back(std::move(answer)); }

void QaEdScriptedIO::record(std::wstring_view text) {
  transcript_ += text;
  if (echo_) {
    *echo_ << tabulon::svc::toUtf8(text);
    echo_->flush();
  }
}

void QaEdScriptedIO::print(std::wstring_view text) {
  printed_ += text;
  record(text);
}

QaEdInput QaEdScriptedIO::request(const QaEdRequest& request) {
  prompts_.push_back(request.prompt);
  record(request.prompt);
  if (answers_.empty()) {
    record(L"*cancel*\n");
    return QaEdInput::cancel();
  }
  std::wstring answer = std::move(answers_.front());
  answers_.pop_front();
  record(answer + L"\n");
  return qaedParseInput(answer, request.kind);
}

int QaEdScriptedIO::messageBox(std::wstring_view text, std::wstring_view caption, unsigned type) {
  boxes_.emplace_back(text);
  int result = qaSafestButton(type);
  if ((type & MB_TYPEMASK) != MB_OK && !answers_.empty()) {
    if (auto button = buttonOf(answers_.front()); button && qaBoxHasButton(type, *button)) {
      result = *button;
      answers_.pop_front();
    }
  }
  record(L"\n[" + std::wstring(caption) + L"] " + std::wstring(text) + L" -> " + buttonName(result) + L"\n");
  return result;
}
