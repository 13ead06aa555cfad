// Settings through the settings service.
#include "editor/dialog_settings.h"

#include "host/svc/krm_reg_service.h"

namespace {

constexpr int kUserSettings = 17;

// Opens the store and selects the subkey, making it when missing. `created` tells that
// it was missing. 0 when nothing could be opened (the store is closed again).
int OpenSubKey(KrmRegService& service, const std::wstring& subKey, int readOnly, bool& created) {
  created = false;
  if (!service.Open(kUserSettings, readOnly, 1)) return 0;
  if (service.OpenSubKey(subKey)) return 1;
  created = true;
  if (service.CreateSubKey(subKey)) return 1;
  service.Close();
  return 0;
}

}  // namespace

int ReadDialogSetting(KrmRegService* service, const std::wstring& subKey, const std::wstring& name, std::wstring& value) {
  bool created = false;
  if (service == nullptr || !OpenSubKey(*service, subKey, 1, created)) return 0;
  int found = 0;
  if (!created) found = service->Read(name, value);
  service->Close();
  return found;
}

int WriteDialogSetting(KrmRegService* service, const std::wstring& subKey, const std::wstring& name, const std::wstring& value) {
  bool created = false;
  if (service == nullptr || !OpenSubKey(*service, subKey, 0, created)) return 0;
  const int written = service->Write(name, value);
  return service->Close() && written ? 1 : 0;
}

const std::array<const wchar_t*, 14>& GridFontValueNames() {
  static const std::array<const wchar_t*, 14> names = {
      L"FontHeight",   L"FontWidth",        L"FontEscapement",    L"FontOrientation", L"FontWeight",
      L"FontItalic",   L"FontUnderline",    L"FontStrikeOut",     L"FontCharSet",     L"FontOutPrecision",
      L"FontClipPrecision", L"FontQuality", L"FontPitchAndFamily", L"FontFaceName"};
  return names;
}

int ReadGridFont(KrmRegService* service, KrmGridFont& font) {
  bool created = false;
  if (service == nullptr || !OpenSubKey(*service, kGridSubKey, 1, created)) return 0;
  if (!created) {
    for (std::size_t i = 0; i < font.values.size(); ++i) {
      int value = 0;
      if (service->Read(GridFontValueNames()[i], value)) font.values[i] = value;
    }
    std::wstring face;
    if (service->Read(GridFontValueNames()[13], face)) font.faceName = face.substr(0, 32);
  }
  service->Close();
  return created ? 0 : 1;
}

int WriteGridFont(KrmRegService* service, const KrmGridFont& font) {
  bool created = false;
  if (service == nullptr || !OpenSubKey(*service, kGridSubKey, 0, created)) return 0;
  int written = 1;
  for (std::size_t i = 0; i < font.values.size(); ++i) written &= service->Write(GridFontValueNames()[i], font.values[i]);
  written &= service->Write(GridFontValueNames()[13], font.faceName.substr(0, 32));
  return service->Close() && written ? 1 : 0;
}
