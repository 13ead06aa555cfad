// The suite's standard service "KRM_STD_SERVICE": where the card library and the phrase
// library are, and the option store (options.ini in the configuration folder, same
// sections and keys as the suite's option store). Every call reads the configuration
// afresh, so a change takes effect at the next command. Owned by the service dictionary.
#pragma once

#include "host/db/qarx_class.h"

#include <string>

class QaDbDatabase;

class KrmStdService : public QaRxObject {
  QARX_DECLARE_MEMBERS(KrmStdService)

 public:
  // The card library folder for a drawing ("/" separators, as configured): the card
  // root of tabulon_paths.h when that folder exists, else empty. All drawings share it.
  virtual std::wstring getTabulonDir(QaDbDatabase* db) const;

  // The value of `key` in `section` of options.ini; non-zero when the key is present
  // (an empty value counts as present), 0 when absent. `flag` is passed as 0 by the
  // system and does not change the answer. Throws tabulon::svc::IniError naming file
  // and line when options.ini cannot be parsed.
  virtual int getOstrelmOptionData(const std::wstring& section, const std::wstring& key, std::wstring& value,
                                   int flag) const;

  // The phrase library file for a drawing (whether it exists is not checked).
  virtual std::wstring getCurrentWordLib(QaDbDatabase* db) const;
};
