#include "card/card_attributes.h"

#include "card/file_utils.h"
#include "card/template_json.h"
#include "card/utf8_text.h"

KrmCardAttributes::KrmCardAttributes() : id_(KrmNewTemplateId()) {}

int KrmCardAttributes::InitCard(const std::wstring& path) { return ReadCard(path).ok() ? 1 : 0; }

tabulon::Status KrmCardAttributes::ReadCard(const std::wstring& path) {
  const std::wstring file = KrmWithExtension(path, kKrmCardExtension);
  auto bytes = KrmReadWholeFile(file);
  if (!bytes.ok()) return bytes.status();
  tabulon::Status read = KrmCardFromJson(*bytes, *this);
  if (!read.ok()) return tabulon::Error(read.error()).inFile(KrmToUtf8(file));
  return read;
}

int KrmCardAttributes::OutputCard(const std::wstring& path) const { return WriteCard(path).ok() ? 1 : 0; }

tabulon::Status KrmCardAttributes::WriteCard(const std::wstring& path) const {
  const std::wstring file = KrmWithExtension(path, kKrmCardExtension);
  auto text = KrmCardToJson(*this);
  if (!text.ok()) return tabulon::Error(text.error()).inFile(KrmToUtf8(file));
  return KrmWriteWholeFile(file, *text);
}

void KrmCardAttributes::Reset() {
  std::wstring id = std::move(id_);
  *this = KrmCardAttributes();
  id_ = std::move(id);
}
