#include "card/calc_formula.h"

#include "card/utf8_text.h"

#include <algorithm>

namespace {

bool isIdentifierChar(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_' ||
         c == L'.';
}

// Full-width forms and the usual typographic operators as the parser knows them.
wchar_t normalizedOperator(wchar_t c) {
  if (c >= 0xFF01 && c <= 0xFF5E) return static_cast<wchar_t>(c - 0xFEE0);
  switch (c) {
    case 0x3000: return L' ';
    case 0x00D7: return L'*';  // multiplication sign
    case 0x00F7: return L'/';  // division sign
    case 0x2212: return L'-';  // minus sign
    case 0x3002: return L'.';  // ideographic full stop typed as a decimal point
    default: return c;
  }
}

void appendUtf8(std::string& out, wchar_t c) { out += KrmToUtf8(std::wstring_view(&c, 1)); }

bool nameMatchesAt(const std::wstring& formula, std::size_t at, const std::wstring& name) {
  if (name.empty() || formula.compare(at, name.size(), name) != 0) return false;
  if (isIdentifierChar(name.front()) && at > 0 && isIdentifierChar(formula[at - 1])) return false;
  const std::size_t end = at + name.size();
  if (isIdentifierChar(name.back()) && end < formula.size() && isIdentifierChar(formula[end])) return false;
  return true;
}

}  // namespace

KrmCalcFormula::KrmCalcFormula(const std::wstring& formula, const std::vector<std::wstring>& names)
    : names_(names), prefix_("_c") {
  // An identifier must never be mistaken for something the user wrote.
  const std::string utf8Formula = KrmToUtf8(formula);
  while (utf8Formula.find(prefix_) != std::string::npos) prefix_ += '_';

  // Longest names first, so that "单价" is not read as "价" when both are columns.
  std::vector<std::size_t> byLength(names_.size());
  for (std::size_t k = 0; k < byLength.size(); ++k) byLength[k] = k;
  std::stable_sort(byLength.begin(), byLength.end(),
                   [&](std::size_t a, std::size_t b) { return names_[a].size() > names_[b].size(); });

  for (std::size_t at = 0; at < formula.size();) {
    const auto match = std::find_if(byLength.begin(), byLength.end(),
                                    [&](std::size_t k) { return nameMatchesAt(formula, at, names_[k]); });
    if (match != byLength.end()) {
      // Blanks on both sides keep the identifier from gluing to a neighbouring token.
      expression_ += ' ';
      expression_ += identifier(*match);
      expression_ += ' ';
      if (std::find(used_.begin(), used_.end(), *match) == used_.end()) used_.push_back(*match);
      at += names_[*match].size();
    } else {
      appendUtf8(expression_, normalizedOperator(formula[at]));
      ++at;
    }
  }
}

std::string KrmCalcFormula::identifier(std::size_t index) const {
  return prefix_ + std::to_string(index) + "_";
}

int KrmCalcFormula::nameIndex(const std::string& id) const {
  if (id.size() <= prefix_.size() + 1 || id.compare(0, prefix_.size(), prefix_) != 0 || id.back() != '_') {
    return -1;
  }
  const std::string digits = id.substr(prefix_.size(), id.size() - prefix_.size() - 1);
  if (digits.empty() || digits.size() > 9 ||
      !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return -1;
  }
  const int index = std::stoi(digits);
  return static_cast<std::size_t>(index) < names_.size() && identifier(static_cast<std::size_t>(index)) == id
             ? index
             : -1;
}

std::wstring KrmCalcFormula::restoreNames(const std::string& text) const {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    if (text.compare(at, prefix_.size(), prefix_) == 0) {
      std::size_t end = at + prefix_.size();
      while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
      if (end < text.size() && text[end] == '_') {
        const int index = nameIndex(text.substr(at, end + 1 - at));
        if (index >= 0) {
          out += KrmToUtf8(names_[static_cast<std::size_t>(index)]);
          at = end + 1;
          continue;
        }
      }
    }
    out += text[at++];
  }
  return KrmFromUtf8(out);
}
