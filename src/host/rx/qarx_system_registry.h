// The host's system registry: a dictionary of named objects that modules publish for
// one another. Its entry "ServiceDictionary" is a dictionary of the suite's services,
// found by name and then cast to their class (KrmStdService::cast(...)).
#pragma once

#include "host/db/qarx_class.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QaRxDictionary : public QaRxObject {
  QARX_DECLARE_MEMBERS(QaRxDictionary)

 public:
  QaRxDictionary() = default;
  QaRxDictionary(const QaRxDictionary&) = delete;
  QaRxDictionary& operator=(const QaRxDictionary&) = delete;

  // The entry of that name (exact spelling), null when there is none. Not owned.
  QaRxObject* at(std::wstring_view key) const;
  // Puts an entry and gives back the one it replaces (null when new).
  std::unique_ptr<QaRxObject> atPut(const std::wstring& key, std::unique_ptr<QaRxObject> value);
  // Takes an entry out; null when there was none.
  std::unique_ptr<QaRxObject> remove(std::wstring_view key);
  std::vector<std::wstring> keys() const;
  std::size_t size() const { return entries_.size(); }

 private:
  std::map<std::wstring, std::unique_ptr<QaRxObject>, std::less<>> entries_;
};

inline constexpr wchar_t kServiceDictionaryName[] = L"ServiceDictionary";

QaRxDictionary& qaSysRegistry();
// The registry's "ServiceDictionary", made on first use.
QaRxDictionary& qaServiceDictionary();

// A service by name, cast to its class; null when missing or of another class.
template <class T>
T* qaFindService(std::wstring_view name) {
  return T::cast(qaServiceDictionary().at(name));
}
