#include "drawing/cell_xdata.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cwchar>
#include <cwctype>

#include "host/db/qadb_database.h"
#include "host/db/qadb_object.h"

namespace {

std::wstring trimmed(const std::wstring& s) {
  std::size_t b = 0;
  std::size_t e = s.size();
  while (b < e && std::iswspace(s[b])) ++b;
  while (e > b && std::iswspace(s[e - 1])) --e;
  return s.substr(b, e - b);
}

// A whole decimal number, spaces around allowed; nothing else.
bool parseInteger(const std::wstring& text, int& out) {
  const std::wstring s = trimmed(text);
  if (s.empty()) return false;
  wchar_t* end = nullptr;
  errno = 0;
  const long v = std::wcstol(s.c_str(), &end, 10);
  if (errno != 0 || end != s.c_str() + s.size() || v < INT_MIN || v > INT_MAX) return false;
  out = static_cast<int>(v);
  return true;
}

bool parseReal(const std::wstring& text, double& out) {
  const std::wstring s = trimmed(text);
  if (s.empty()) return false;
  wchar_t* end = nullptr;
  errno = 0;
  const double v = std::wcstod(s.c_str(), &end);
  if (errno != 0 || end != s.c_str() + s.size()) return false;
  out = v;
  return true;
}

std::wstring realText(double v) {
  wchar_t buf[64];
  std::swprintf(buf, 64, L"%.15g", v);
  return buf;
}

bool isNumberedList(const std::vector<QaDbXDataItem>& stored) {
  if (stored.empty() || stored.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < stored.size(); i += 2) {
    if (stored[i].code() != QaDbXDataItem::kInt32 || !stored[i].isInteger()) return false;
  }
  return true;
}

}  // namespace

KR_QRXAppXdata::KR_QRXAppXdata(const std::wstring& appName, QaDbDatabase* database)
    : appName_(appName), database_(database) {}

std::vector<std::pair<int, QaDbXDataItem>> KR_QRXAppXdata::decode(const std::vector<QaDbXDataItem>& stored) {
  std::vector<std::pair<int, QaDbXDataItem>> out;
  auto put = [&out](int number, const QaDbXDataItem& value) {
    auto it = std::find_if(out.begin(), out.end(), [number](const auto& p) { return p.first == number; });
    if (it == out.end()) out.emplace_back(number, value);
    else it->second = value;
  };
  if (isNumberedList(stored)) {
    for (std::size_t i = 0; i < stored.size(); i += 2) put(stored[i].asInt(), stored[i + 1]);
    return out;
  }
  int number = 0;
  for (const QaDbXDataItem& item : stored) {
    if (item.code() == QaDbXDataItem::kControl) continue;
    put(++number, item);
  }
  return out;
}

bool KR_QRXAppXdata::getXdata(const QaDbObject* object) {
  items_.clear();
  if (object == nullptr || !object->hasXData(appName_)) return false;
  items_ = decode(object->xData(appName_));
  return true;
}

std::vector<QaDbXDataItem> KR_QRXAppXdata::encode() const {
  std::vector<QaDbXDataItem> out;
  out.reserve(items_.size() * 2);
  for (const auto& [number, value] : items_) {
    out.push_back(QaDbXDataItem::int32(number));
    out.push_back(value);
  }
  return out;
}

Qa::ErrorStatus KR_QRXAppXdata::setXdata(QaDbObject* object) const {
  if (object == nullptr) return Qa::eNullObjectPointer;
  if (database_ != nullptr && object->database() != database_) database_->registerApp(appName_);
  return object->setXData(appName_, encode());
}

Qa::ErrorStatus KR_QRXAppXdata::setXdataPlain(QaDbObject* object) const {
  if (object == nullptr) return Qa::eNullObjectPointer;
  int last = 0;
  for (const auto& p : items_) last = std::max(last, p.first);
  std::vector<QaDbXDataItem> values;
  for (int n = 1; n <= last; ++n) {
    const QaDbXDataItem* v = find(n);
    values.push_back(v != nullptr ? *v : QaDbXDataItem::string(L""));
  }
  if (database_ != nullptr && object->database() != database_) database_->registerApp(appName_);
  return object->setXData(appName_, std::move(values));
}

const QaDbXDataItem* KR_QRXAppXdata::find(int item) const {
  for (const auto& p : items_) {
    if (p.first == item) return &p.second;
  }
  return nullptr;
}

bool KR_QRXAppXdata::hasItem(int item) const { return find(item) != nullptr; }

std::vector<int> KR_QRXAppXdata::itemNumbers() const {
  std::vector<int> out;
  for (const auto& p : items_) out.push_back(p.first);
  return out;
}

bool KR_QRXAppXdata::getString(int item, std::wstring& out, bool convert) const {
  const QaDbXDataItem* v = find(item);
  if (v == nullptr) return false;
  if (v->isString()) {
    out = v->asString();
    return true;
  }
  if (!convert) return false;
  if (v->isInteger()) {
    out = std::to_wstring(v->asInt());
    return true;
  }
  if (v->isReal()) {
    out = realText(v->asReal());
    return true;
  }
  return false;
}

bool KR_QRXAppXdata::getInteger(int item, int& out, bool convert) const {
  const QaDbXDataItem* v = find(item);
  if (v == nullptr) return false;
  if (v->isInteger()) {
    out = v->asInt();
    return true;
  }
  if (convert && v->isString()) return parseInteger(v->asString(), out);
  return false;
}

bool KR_QRXAppXdata::getReal(int item, double& out, bool convert) const {
  const QaDbXDataItem* v = find(item);
  if (v == nullptr) return false;
  if (v->isReal()) {
    out = v->asReal();
    return true;
  }
  if (!convert) return false;
  if (v->isInteger()) {
    out = v->asInt();
    return true;
  }
  if (v->isString()) return parseReal(v->asString(), out);
  return false;
}

void KR_QRXAppXdata::set(int item, QaDbXDataItem value) {
  for (auto& p : items_) {
    if (p.first == item) {
      p.second = std::move(value);
      return;
    }
  }
  items_.emplace_back(item, std::move(value));
}

void KR_QRXAppXdata::setString(int item, const std::wstring& text) { set(item, QaDbXDataItem::string(text)); }
void KR_QRXAppXdata::setInteger(int item, int value) { set(item, QaDbXDataItem::int32(value)); }
void KR_QRXAppXdata::setReal(int item, double value) { set(item, QaDbXDataItem::real(value)); }
