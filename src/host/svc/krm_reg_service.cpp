#include "host/svc/krm_reg_service.h"

#include "host/svc/tabulon_paths.h"

#include <charconv>
#include <stdexcept>
#include <system_error>

#include "host/svc/utf8.h"

QARX_DEFINE_MEMBERS(KrmRegService, QaRxObject, L"")

using tabulon::svc::IniError;
using tabulon::svc::IniFile;

int KrmRegService::Open(int, int readOnly, int create) {
  if (isOpen()) Close();
  const auto path = tabulon::svc::settingsIniPath();
  std::error_code ec;
  if (!create && !std::filesystem::exists(path, ec)) return 0;
  try {
    ini_ = IniFile::load(path);
  } catch (const IniError&) {
    return 0;
  }
  readOnly_ = readOnly != 0;
  subKey_.reset();
  createdSubKeys_.clear();
  writes_.clear();
  return 1;
}

int KrmRegService::OpenSubKey(const std::wstring& name) {
  if (!isOpen() || name.empty() || !ini_->hasSection(name)) return 0;
  subKey_ = name;
  return 1;
}

int KrmRegService::CreateSubKey(const std::wstring& name) {
  if (!isOpen() || name.empty()) return 0;
  try {
    ini_->addSection(name);
  } catch (const std::invalid_argument&) {
    return 0;
  }
  createdSubKeys_.push_back(name);
  subKey_ = name;
  return 1;
}

int KrmRegService::Read(const std::wstring& name, std::wstring& value) {
  if (!isOpen() || !subKey_) return 0;
  auto found = ini_->get(*subKey_, name);
  if (!found) return 0;
  value = *found;
  return 1;
}

int KrmRegService::Read(const std::wstring& name, int& value) {
  std::wstring text;
  if (!Read(name, text)) return 0;
  const auto narrow = tabulon::svc::toUtf8(text);
  int parsed = 0;
  const auto [end, ec] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), parsed);
  if (ec != std::errc() || end != narrow.data() + narrow.size()) return 0;
  value = parsed;
  return 1;
}

int KrmRegService::Write(const std::wstring& name, const std::wstring& value) {
  if (!isOpen() || !subKey_ || readOnly_) return 0;
  try {
    ini_->set(*subKey_, name, value);
  } catch (const std::invalid_argument&) {
    return 0;
  }
  writes_.emplace_back(*subKey_, name, value);
  return 1;
}

int KrmRegService::Write(const std::wstring& name, int value) { return Write(name, std::to_wstring(value)); }

int KrmRegService::Close() {
  if (!isOpen()) return 0;
  int result = 1;
  if (!readOnly_ && (!writes_.empty() || !createdSubKeys_.empty())) {
    const auto path = tabulon::svc::settingsIniPath();
    try {
      IniFile current = IniFile::load(path);
      for (const auto& section : createdSubKeys_) current.addSection(section);
      for (const auto& [section, name, value] : writes_) current.set(section, name, value);
      current.save(path);
    } catch (const std::exception&) {
      result = 0;
    }
  }
  ini_.reset();
  subKey_.reset();
  createdSubKeys_.clear();
  writes_.clear();
  return result;
}
