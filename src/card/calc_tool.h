// The expression engine of calculated columns. One object serves one column's run: the
// caller sets the formula, the result's name and the row's variables (column show name
// to cell text), then checks and runs. Variables are show names, Chinese included; the
// arithmetic is that of muparser (+ - * / ^, parentheses, comparisons, ?:, sqrt, abs,
// min, max, sum, avg, rint and the like). The parser is owned by the object.
#pragma once

#include <map>
#include <memory>
#include <string>

class KRCalcTool {
 public:
  KRCalcTool();
  virtual ~KRCalcTool();
  KRCalcTool(const KRCalcTool&) = delete;
  KRCalcTool& operator=(const KRCalcTool&) = delete;

  // Makes the parser; 0 when it cannot be made. Nothing else works before it.
  int Init();
  // Forgets formula, result name and variables.
  void clear();
  // The name the result is known by; a formula may begin with "<name> =".
  void setExpName(const std::wstring& name);
  void setFormula(const std::wstring& formula);
  // The variables of this row: show name to cell text. An empty or blank cell counts 0,
  // a cell that begins with a number counts that number ("12.5元" counts 12.5).
  void setVar(const std::map<std::wstring, std::wstring>& variables);

  // Non-zero when the formula parses and names only known variables; else fills
  // `message` with what is wrong, in the show names' terms.
  int check(std::wstring& message);
  // Adds to `variables` each variable the formula uses with its text; 0 when there is
  // no usable formula.
  int getVar(std::map<std::wstring, std::wstring>& variables);
  // Evaluates; non-zero on success with `result` the value as decimal text (up to 15
  // significant digits). On failure `result` is unchanged and lastError() tells why: a
  // formula that does not parse, a used cell that is not a number, or a result that is
  // not finite (division by zero).
  int run(std::wstring& result);
  const std::wstring& lastError() const { return lastError_; }

 private:
  struct Impl;
  // Parses the formula with the current variables; with `useValues` false every
  // variable is 0 (only the syntax counts). Returns false and sets lastError_ on failure.
  bool prepare(bool useValues, double* value);
  std::wstring formulaBody() const;

  std::unique_ptr<Impl> impl_;
  std::wstring expName_;
  std::wstring formula_;
  std::map<std::wstring, std::wstring> variables_;
  std::wstring lastError_;
};
