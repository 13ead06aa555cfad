// The suite's settings service "KRM_REG_SERVICE": dialogs keep small settings in it.
// On this platform the store is settings.ini in the configuration folder and a subkey
// is a section. Use: Open, OpenSubKey (or CreateSubKey), Read or Write, Close. Writes
// are collected and applied at Close to the file as it is then, so two programs that
// change different values do not undo each other. Results are non-zero on success.
// Owned by the service dictionary; one session at a time.
#pragma once

#include "host/db/qarx_class.h"
#include "host/svc/ini_file.h"

#include <optional>
#include <string>
#include <tuple>
#include <vector>

class KrmRegService : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmRegService)

 public:
  // Opens the store. `type` names the store (the system passes 17, the user's settings;
  // this platform has one store for every type); `readOnly` 1 to read, 0 to write;
  // `create` 1 opens an empty store when settings.ini does not exist yet, 0 fails then.
  // A session still open is closed first. 0 when settings.ini cannot be read.
  virtual int Open(int type, int readOnly, int create);
  // Selects an existing subkey; 0 when it is missing or nothing is open.
  virtual int OpenSubKey(const std::wstring& name);
  // Selects a subkey, making it when missing (saved at Close unless read-only).
  virtual int CreateSubKey(const std::wstring& name);
  // 0 when the value is missing, nothing is selected, or (integer) it is no number.
  virtual int Read(const std::wstring& name, std::wstring& value);
  virtual int Read(const std::wstring& name, int& value);
  // 0 when read-only, nothing is selected, or the name or value cannot be stored.
  virtual int Write(const std::wstring& name, const std::wstring& value);
  virtual int Write(const std::wstring& name, int value);
  // Saves what was written and ends the session; 0 when the save failed or nothing
  // was open.
  virtual int Close();

  bool isOpen() const { return ini_.has_value(); }

 private:
  std::optional<tabulon::svc::IniFile> ini_;
  bool readOnly_ = true;
  std::optional<std::wstring> subKey_;
  std::vector<std::wstring> createdSubKeys_;
  std::vector<std::tuple<std::wstring, std::wstring, std::wstring>> writes_;  // section, name, value
};
