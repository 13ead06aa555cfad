// How worksheet cells become text.
#include "editor/sheet_table.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace tabulon::editor {

int SheetColumnCount(const SheetTable& table) {
  std::size_t widest = 0;
  for (const auto& row : table) widest = std::max(widest, row.size());
  return static_cast<int>(widest);
}

namespace {

std::wstring Widen(const char* first, const char* last) { return std::wstring(first, last); }

}  // namespace

std::wstring NumberText(double value) {
  if (!std::isfinite(value)) return L"";
  char buffer[400];
  const double magnitude = std::fabs(value);
  const bool fixed = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e21);
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, fixed ? std::chars_format::fixed : std::chars_format::general);
  return Widen(buffer, result.ptr);
}

std::wstring NumberText(double value, int digits) {
  if (digits <= 0 || !std::isfinite(value)) return NumberText(value);
  digits = std::min(digits, 15);
  char buffer[400];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits);
  if (result.ec != std::errc()) return NumberText(value);
  std::wstring text = Widen(buffer, result.ptr);
  // A negative value that rounds to zero is written without its sign.
  if (text.starts_with(L'-') && text.find_first_not_of(L"-0.") == std::wstring::npos) text.erase(0, 1);
  return text;
}

bool ExactNumber(const std::wstring& text, double& value) {
  if (text.empty() || text.size() > 40) return false;
  std::string narrow;
  for (wchar_t c : text) {
    if (c > 0x7F) return false;
    narrow.push_back(static_cast<char>(c));
  }
  double parsed = 0.0;
  const auto result = std::from_chars(narrow.data(), narrow.data() + narrow.size(), parsed);
  if (result.ec != std::errc() || result.ptr != narrow.data() + narrow.size()) return false;
  if (!std::isfinite(parsed) || NumberText(parsed) != text) return false;
  value = parsed;
  return true;
}

std::wstring CellText(const SheetCell& cell, int digits) {
  switch (cell.kind) {
    case SheetCell::Kind::kText:
      return cell.text;
    case SheetCell::Kind::kNumber:
      return NumberText(cell.number, digits);
    case SheetCell::Kind::kBool:
      return cell.number != 0.0 ? L"TRUE" : L"FALSE";
    case SheetCell::Kind::kEmpty:
      break;
  }
  return L"";
}

}  // namespace tabulon::editor
