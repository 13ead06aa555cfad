#include "host/db/qadb_xdata.h"

#include <stdexcept>

QaDbXDataItem::QaDbXDataItem(int code, Value value) : code_(code), value_(std::move(value)) {
  bool ok = false;
  switch (code) {
    case kString:
    case kAppName:
    case kLayerName:
      ok = std::holds_alternative<std::wstring>(value_);
      break;
    case kControl:
      ok = std::holds_alternative<std::wstring>(value_) &&
           (std::get<std::wstring>(value_) == L"{" || std::get<std::wstring>(value_) == L"}");
      break;
    case kBinary:
      ok = std::holds_alternative<std::vector<std::uint8_t>>(value_);
      break;
    case kHandle:
      ok = std::holds_alternative<QaDbHandle>(value_);
      break;
    case kPoint:
    case kWorldPosition:
    case kWorldDisplacement:
    case kWorldDirection:
      ok = std::holds_alternative<QaGePoint3d>(value_);
      break;
    case kReal:
    case kDistance:
    case kScaleFactor:
      ok = std::holds_alternative<double>(value_);
      break;
    case kInt16:
      ok = std::holds_alternative<std::int32_t>(value_) && std::get<std::int32_t>(value_) >= -32768 &&
           std::get<std::int32_t>(value_) <= 32767;
      break;
    case kInt32:
      ok = std::holds_alternative<std::int32_t>(value_);
      break;
    default:
      throw std::invalid_argument("extended data: unknown item code " + std::to_string(code));
  }
  if (!ok) throw std::invalid_argument("extended data: value does not fit item code " + std::to_string(code));
}
