// Extended data: typed items that an application attaches to an object, grouped by
// application name. Item codes follow the drawing format (1000 string ... 1071 int32);
// the 1001 application name is not an item, it is the key of the item list.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/db/qadb_handle.h"
#include "host/ge/qage_point3d.h"

class QaDbXDataItem {
 public:
  enum Code : int {
    kString = 1000,
    kAppName = 1001,
    kControl = 1002,  // "{" or "}"
    kLayerName = 1003,
    kBinary = 1004,
    kHandle = 1005,
    kPoint = 1010,
    kWorldPosition = 1011,
    kWorldDisplacement = 1012,
    kWorldDirection = 1013,
    kReal = 1040,
    kDistance = 1041,
    kScaleFactor = 1042,
    kInt16 = 1070,
    kInt32 = 1071,
  };
  using Value = std::variant<std::wstring, double, std::int32_t, QaGePoint3d, std::vector<std::uint8_t>, QaDbHandle>;

  QaDbXDataItem() : code_(kString), value_(std::wstring()) {}
  // Checks that the value's type fits the code; throws std::invalid_argument otherwise.
  QaDbXDataItem(int code, Value value);

  static QaDbXDataItem string(std::wstring s) { return {kString, std::move(s)}; }
  static QaDbXDataItem control(bool open) { return {kControl, std::wstring(open ? L"{" : L"}")}; }
  static QaDbXDataItem layerName(std::wstring s) { return {kLayerName, std::move(s)}; }
  static QaDbXDataItem binary(std::vector<std::uint8_t> b) { return {kBinary, std::move(b)}; }
  static QaDbXDataItem handle(QaDbHandle h) { return {kHandle, h}; }
  static QaDbXDataItem point(const QaGePoint3d& p, int code = kPoint) { return {code, p}; }
  static QaDbXDataItem real(double d, int code = kReal) { return {code, d}; }
  static QaDbXDataItem int16(std::int16_t i) { return {kInt16, std::int32_t(i)}; }
  static QaDbXDataItem int32(std::int32_t i) { return {kInt32, i}; }

  int code() const { return code_; }
  const Value& value() const { return value_; }
  // Typed access; std::bad_variant_access when the item holds another type.
  const std::wstring& asString() const { return std::get<std::wstring>(value_); }
  double asReal() const { return std::get<double>(value_); }
  std::int32_t asInt() const { return std::get<std::int32_t>(value_); }
  const QaGePoint3d& asPoint() const { return std::get<QaGePoint3d>(value_); }
  const std::vector<std::uint8_t>& asBinary() const { return std::get<std::vector<std::uint8_t>>(value_); }
  QaDbHandle asHandle() const { return std::get<QaDbHandle>(value_); }

  bool isString() const { return std::holds_alternative<std::wstring>(value_); }
  bool isInteger() const { return std::holds_alternative<std::int32_t>(value_); }
  bool isReal() const { return std::holds_alternative<double>(value_); }

  bool operator==(const QaDbXDataItem& o) const = default;

 private:
  int code_;
  Value value_;
};

// The items of one application.
struct QaDbXDataApp {
  std::wstring appName;
  std::vector<QaDbXDataItem> items;
  bool operator==(const QaDbXDataApp& o) const = default;
};

// All extended data of one object, in stored order of the applications.
using QaDbXData = std::vector<QaDbXDataApp>;
