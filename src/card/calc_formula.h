// Turns the expression of a calculated column into text the expression parser reads:
// column show names (Chinese, or holding blanks and signs) become generated ASCII
// identifiers, and full-width operators typed through a Chinese input method become
// their ASCII forms. A plain value; nothing refers back to the caller's strings.
#pragma once

#include <string>
#include <vector>

class KrmCalcFormula {
 public:
  // Translates `formula` for the variables `names`. Where several names could start at
  // one place the longest wins; a name that begins or ends with a letter, digit, "_" or
  // "." only matches where it is not glued to more of those characters, so a column "a"
  // is not found inside "max".
  KrmCalcFormula(const std::wstring& formula, const std::vector<std::wstring>& names);

  // The expression in ASCII identifiers, UTF-8 for what is not a name.
  const std::string& expression() const { return expression_; }
  // The identifier that stands for names[index].
  std::string identifier(std::size_t index) const;
  // The index of the name an identifier stands for, or -1.
  int nameIndex(const std::string& identifier) const;
  // The names that occur in the formula, as indexes into `names`, in first-use order.
  const std::vector<std::size_t>& usedNames() const { return used_; }
  // `text` (a parser message) with every identifier replaced by its show name.
  std::wstring restoreNames(const std::string& text) const;

 private:
  std::vector<std::wstring> names_;
  std::string prefix_;  // identifiers are prefix_ + index + "_"
  std::string expression_;
  std::vector<std::size_t> used_;
};
