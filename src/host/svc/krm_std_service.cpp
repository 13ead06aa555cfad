#include "host/svc/krm_std_service.h"

#include "host/svc/ini_file.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"

#include <system_error>

QARX_DEFINE_MEMBERS(KrmStdService, QaRxObject, L"")

std::wstring KrmStdService::getTabulonDir(QaDbDatabase*) const {
  const auto dir = tabulon::svc::libraryDir();
  std::error_code ec;
  if (!std::filesystem::is_directory(dir, ec)) return {};
  return tabulon::svc::fromPath(dir);
}

int KrmStdService::getOstrelmOptionData(const std::wstring& section, const std::wstring& key, std::wstring& value,
                                        int) const {
  const auto ini = tabulon::svc::IniFile::load(tabulon::svc::optionsIniPath());
  auto found = ini.get(section, key);
  if (!found) return 0;
  value = *found;
  return 1;
}

std::wstring KrmStdService::getCurrentWordLib(QaDbDatabase*) const {
  return tabulon::svc::fromPath(tabulon::svc::wordLibPath());
}
