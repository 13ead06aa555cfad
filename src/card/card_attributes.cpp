#include "card/card_attributes.h"

#include "card/file_utils.h"
#include "card/template_json.h"

KrmCardAttributes::KrmCardAttributes() : id_(KrmNewTemplateId()) {}

int KrmCardAttributes::InitCard(const std::wstring& path) {
  std::wstring reason;
  return InitCard(path, reason);
}

int KrmCardAttributes::InitCard(const std::wstring& path, std::wstring& reason) {
  std::string bytes;
  if (!KrmReadWholeFile(KrmWithExtension(path, kKrmCardExtension), bytes, reason)) return 0;
  std::wstring why;
  if (!KrmCardFromJson(bytes, *this, why)) {
    reason = KrmWithExtension(path, kKrmCardExtension) + L": " + why;
    return 0;
  }
  return 1;
}

int KrmCardAttributes::OutputCard(const std::wstring& path) const {
  std::wstring reason;
  return OutputCard(path, reason);
}

int KrmCardAttributes::OutputCard(const std::wstring& path, std::wstring& reason) const {
  std::string text;
  std::wstring why;
  if (!KrmCardToJson(*this, text, why)) {
    reason = KrmWithExtension(path, kKrmCardExtension) + L": " + why;
    return 0;
  }
  return KrmWriteWholeFile(KrmWithExtension(path, kKrmCardExtension), text, reason) ? 1 : 0;
}

void KrmCardAttributes::Reset() {
  std::wstring id = std::move(id_);
  *this = KrmCardAttributes();
  id_ = std::move(id);
}
