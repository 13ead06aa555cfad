#include "authoring/refusal.h"

#include "host/ed/qa_message_box.h"
#include "host/svc/utf8.h"

tabulon::Error KrmRefuse(const std::wstring& text, const std::string& field) {
  QaMessageBox(text, MB_OK | MB_ICONWARNING);
  return tabulon::MakeError(tabulon::svc::toUtf8(text)).inField(field);
}
