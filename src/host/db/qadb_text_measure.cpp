#include "host/db/qadb_text_measure.h"

namespace {
QaDbTextWidthFunction& installed() {
  static QaDbTextWidthFunction fn;
  return fn;
}

// Characters drawn about one text height wide in CAD fonts: CJK, Hangul, kana and the
// full-width forms.
bool isWide(wchar_t c) {
  auto u = static_cast<unsigned long>(c);
  return (u >= 0x1100 && u <= 0x115F) || (u >= 0x2E80 && u <= 0xA4CF) || (u >= 0xAC00 && u <= 0xD7A3) ||
         (u >= 0xF900 && u <= 0xFAFF) || (u >= 0xFE30 && u <= 0xFE4F) || (u >= 0xFF00 && u <= 0xFF60) ||
         (u >= 0xFFE0 && u <= 0xFFE6) || (u >= 0x20000 && u <= 0x3FFFD);
}
}  // namespace

QaDbTextWidthScope::QaDbTextWidthScope(QaDbTextWidthFunction fn) : previous_(std::move(installed())) {
  installed() = std::move(fn);
}

QaDbTextWidthScope::~QaDbTextWidthScope() { installed() = std::move(previous_); }

double qadbEstimateTextWidth(const std::wstring& text, double height, double widthFactor) {
  double units = 0.0;
  for (wchar_t c : text) {
    if (c == L'\n' || c == L'\r') continue;
    units += isWide(c) ? 1.0 : 0.6;
  }
  return units * height * widthFactor;
}

double qadbTextWidth(const std::wstring& text, QaDbObjectId style, double height, double widthFactor) {
  if (installed()) return installed()(text, style, height, widthFactor);
  return qadbEstimateTextWidth(text, height, widthFactor);
}
