#include "host/rx/qarx_system_registry.h"

QARX_DEFINE_MEMBERS(QaRxDictionary, QaRxObject, L"")

QaRxObject* QaRxDictionary::at(std::wstring_view key) const {
  auto it = entries_.find(key);
  return it == entries_.end() ? nullptr : it->second.get();
}

std::unique_ptr<QaRxObject> QaRxDictionary::atPut(const std::wstring& key, std::unique_ptr<QaRxObject> value) {
  auto& slot = entries_[key];
  std::unique_ptr<QaRxObject> previous = std::move(slot);
  slot = std::move(value);
  return previous;
}

std::unique_ptr<QaRxObject> QaRxDictionary::remove(std::wstring_view key) {
  auto it = entries_.find(key);
  if (it == entries_.end()) return nullptr;
  auto value = std::move(it->second);
  entries_.erase(it);
  return value;
}

std::vector<std::wstring> QaRxDictionary::keys() const {
  std::vector<std::wstring> out;
  for (const auto& [key, value] : entries_) out.push_back(key);
  return out;
}

QaRxDictionary& qaSysRegistry() {
  static QaRxDictionary registry;
  return registry;
}

QaRxDictionary& qaServiceDictionary() {
  auto& registry = qaSysRegistry();
  if (auto* dict = QaRxDictionary::cast(registry.at(kServiceDictionaryName))) return *dict;
  registry.atPut(kServiceDictionaryName, std::make_unique<QaRxDictionary>());
  return *QaRxDictionary::cast(registry.at(kServiceDictionaryName));
}
