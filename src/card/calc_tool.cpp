#include "card/calc_tool.h"

#include "card/calc_formula.h"
#include "card/calc_number_format.h"

#include <muParser.h>

#include <charconv>
#include <cmath>
#include <vector>

struct KRCalcTool::Impl {
  mu::Parser parser;
  std::vector<double> values;  // the parser points into this; sized before variables are defined
};

namespace {

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == 0x3000; }

std::wstring trimmed(const std::wstring& text) {
  std::size_t first = 0;
  std::size_t last = text.size();
  while (first < last && isBlank(text[first])) ++first;
  while (last > first && isBlank(text[last - 1])) --last;
  return text.substr(first, last - first);
}

bool isEqualsSign(wchar_t c) { return c == L'=' || c == 0xFF1D; }

std::wstring shortestText(double value) {
  char buffer[64];
  const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  if (error != std::errc()) return L"";
  return std::wstring(buffer, end);
}

}  // namespace

KRCalcTool::KRCalcTool() = default;
KRCalcTool::~KRCalcTool() = default;

int KRCalcTool::Init() {
  try {
    if (!impl_) impl_ = std::make_unique<Impl>();
    return 1;
  } catch (const std::exception&) {
    impl_.reset();
    return 0;
  }
}

void KRCalcTool::clear() {
  expName_.clear();
  formula_.clear();
  variables_.clear();
  lastError_.clear();
}

void KRCalcTool::setExpName(const std::wstring& name) { expName_ = name; }

void KRCalcTool::setFormula(const std::wstring& formula) { formula_ = formula; }

void KRCalcTool::setVar(const std::map<std::wstring, std::wstring>& variables) { variables_ = variables; }

std::wstring KRCalcTool::formulaBody() const {
  std::wstring body = trimmed(formula_);
  // "总价 = 数量 * 单价": the result's own name in front is a label, not a term.
  const std::wstring name = trimmed(expName_);
  if (!name.empty() && body.compare(0, name.size(), name) == 0) {
    std::size_t at = name.size();
    while (at < body.size() && isBlank(body[at])) ++at;
    if (at < body.size() && isEqualsSign(body[at]) && (at + 1 == body.size() || !isEqualsSign(body[at + 1]))) {
      body = trimmed(body.substr(at + 1));
    }
  }
  return body;
}

bool KRCalcTool::prepare(bool useValues, double* value) {
  lastError_.clear();
  if (!impl_) {
    lastError_ = L"the calculator is not initialised";
    return false;
  }
  const std::wstring body = formulaBody();
  if (body.empty()) {
    lastError_ = L"the formula is empty";
    return false;
  }
  std::vector<std::wstring> names;
  names.reserve(variables_.size());
  for (const auto& entry : variables_) names.push_back(entry.first);
  const KrmCalcFormula formula(body, names);

  mu::Parser& parser = impl_->parser;
  parser.ClearVar();
  impl_->values.assign(names.size(), 0.0);
  for (std::size_t index : formula.usedNames()) {
    if (useValues) {
      const std::wstring& text = variables_.at(names[index]);
      if (!trimmed(text).empty()) {
        const std::optional<double> number = KrmLeadingNumber(text);
        if (!number) {
          lastError_ = L"column \"" + names[index] + L"\" holds \"" + text + L"\", which is not a number";
          return false;
        }
        impl_->values[index] = *number;
      }
    }
    parser.DefineVar(formula.identifier(index), &impl_->values[index]);
  }
  try {
    parser.SetExpr(formula.expression());
    const double result = parser.Eval();
    if (value != nullptr) *value = result;
  } catch (const mu::Parser::exception_type& error) {
    lastError_ = L"formula \"" + body + L"\": " + formula.restoreNames(error.GetMsg());
    return false;
  }
  return true;
}

int KRCalcTool::check(std::wstring& message) {
  if (prepare(false, nullptr)) return 1;
  message = lastError_;
  return 0;
}

int KRCalcTool::getVar(std::map<std::wstring, std::wstring>& variables) {
  if (!impl_) return 0;
  const std::wstring body = formulaBody();
  if (body.empty()) return 0;
  std::vector<std::wstring> names;
  for (const auto& entry : variables_) names.push_back(entry.first);
  const KrmCalcFormula formula(body, names);
  for (std::size_t index : formula.usedNames()) variables[names[index]] = variables_.at(names[index]);
  return 1;
}

int KRCalcTool::run(std::wstring& result) {
  double value = 0.0;
  if (!prepare(true, &value)) return 0;
  if (!std::isfinite(value)) {
    lastError_ = L"formula \"" + formulaBody() + L"\" gives no finite number";
    return 0;
  }
  if (value == 0.0) value = 0.0;  // no "-0"
  result = shortestText(value);
  return 1;
}
