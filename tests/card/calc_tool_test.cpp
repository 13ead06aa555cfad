#include "card/calc_tool.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "card/calc_formula.h"

namespace {

using Vars = std::map<std::wstring, std::wstring>;

// Runs `formula` over `vars` with a fresh calculator; the result text, or "FAILED".
std::wstring evaluate(const std::wstring& formula, const Vars& vars, const std::wstring& expName = L"结果") {
  KRCalcTool tool;
  EXPECT_EQ(tool.Init(), 1);
  tool.setExpName(expName);
  tool.setFormula(formula);
  tool.setVar(vars);
  std::wstring result = L"FAILED";
  tool.run(result);
  return result;
}

TEST(KRCalcTool, EvaluatesWithChineseAndIrregularColumnNames) {
  const Vars row = {{L"数量", L"3"},       {L"单价", L"12.5"}, {L"价", L"100"},       {L"长度(mm)", L"200"},
                    {L"宽 度", L"4"},      {L"a", L"2"},       {L"x", L"4"},          {L"重量/kg", L"1.5"},
                    {L"A-1", L"10"},       {L"A", L"6"},       {L"单价(元)", L"20"},  {L"备注", L"见图"},
                    {L"件数", L"2件"},     {L"空", L"  "}};
  const std::vector<std::pair<std::wstring, std::wstring>> cases = {
      {L"数量*单价", L"37.5"},
      {L"数量 * 单价 + 价", L"137.5"},  // "单价" is not read as "单" and "价"
      {L"单价(元)/单价", L"1.6"},        // the longer of two names starting alike
      {L"长度(mm)*宽 度", L"800"},       // names with brackets and blanks
      {L"max(a, 5) + a", L"7"},         // "a" is not found inside "max"
      {L"max(x, 1) + x", L"8"},         // nor "x"
      {L"重量/kg*2", L"3"},
      {L"A*A-1", L"60"},
      {L"（数量＋1）×单价", L"50"},       // full-width operators of an input method
      {L"数量÷2", L"1.5"},
      {L"数量>2 ? 1 : 0", L"1"},
      {L"件数*单价", L"25"},             // a cell counts its leading number
      {L"空+1", L"1"},                  // and a blank cell 0
      {L"0.1+0.2", L"0.3"},             // readable decimal text
      {L"-数量*0", L"0"},               // no "-0"
      {L"2^40", L"1099511627776"},
  };
  for (const auto& [formula, expected] : cases) {
    EXPECT_EQ(evaluate(formula, row), expected) << testing::PrintToString(formula);
  }
}

TEST(KRCalcTool, AcceptsTheResultNameInFrontOfTheFormula) {
  const Vars row = {{L"数量", L"4"}, {L"单价", L"2.5"}};
  EXPECT_EQ(evaluate(L"总价=数量*单价", row, L"总价"), L"10");
  EXPECT_EQ(evaluate(L" 总价 ＝ 数量*单价", row, L"总价"), L"10");
  EXPECT_EQ(evaluate(L"总价=数量*单价", row, L"合计"), L"FAILED");  // another name is no label
  EXPECT_EQ(evaluate(L"数量==4", row, L"数量"), L"1");               // "==" compares
}

TEST(KRCalcTool, FailsWithoutChangingTheResultAndSaysWhy) {
  const Vars row = {{L"数量", L"3"}, {L"单价", L"abc"}, {L"零", L"0"}};
  // Formula, and what the message names.
  const std::vector<std::pair<std::wstring, std::wstring>> cases = {
      {L"数量*", L"数量*"}, {L"数量*重量", L"重量"}, {L"数量*单价", L"\"单价\" holds \"abc\""},
      {L"数量/零", L"finite"}, {L"", L"empty"}, {L"(数量", L"数量"}};
  for (const auto& [formula, mentioned] : cases) {
    KRCalcTool tool;
    ASSERT_EQ(tool.Init(), 1);
    tool.setFormula(formula);
    tool.setVar(row);
    std::wstring result = L"unchanged";
    EXPECT_EQ(tool.run(result), 0) << testing::PrintToString(formula);
    EXPECT_EQ(result, L"unchanged");
    EXPECT_NE(tool.lastError().find(mentioned), std::wstring::npos) << testing::PrintToString(tool.lastError());
    EXPECT_EQ(tool.lastError().find(L"_c"), std::wstring::npos) << "generated identifier leaked into the message";
  }
}

TEST(KRCalcTool, ChecksGivesVariablesAndForgetsOnClear) {
  KRCalcTool tool;
  std::wstring message;
  std::wstring result = L"before";
  Vars used;
  tool.setFormula(L"数量*单价+数量");
  EXPECT_EQ(tool.run(result), 0);  // nothing works before Init
  EXPECT_EQ(tool.getVar(used), 0);
  ASSERT_EQ(tool.Init(), 1);

  tool.setVar({{L"数量", L"abc"}, {L"单价", L"2"}, {L"备注", L"x"}});
  EXPECT_EQ(tool.check(message), 1) << "values are run's business, not check's";
  EXPECT_EQ(tool.getVar(used), 1);
  EXPECT_EQ(used, (Vars{{L"数量", L"abc"}, {L"单价", L"2"}}));
  tool.setFormula(L"数量*重量");
  EXPECT_EQ(tool.check(message), 0);
  EXPECT_NE(message.find(L"重量"), std::wstring::npos);

  tool.setVar({{L"数量", L"3"}});
  tool.clear();
  tool.setFormula(L"数量*2");
  EXPECT_EQ(tool.run(result), 0) << "variables of the last run were kept";
  tool.setVar({{L"数量", L"3"}});
  EXPECT_EQ(tool.run(result), 1);
  EXPECT_EQ(result, L"6");
}

TEST(KrmCalcFormula, GeneratedIdentifiersNeverClashWithTheFormula) {
  const KrmCalcFormula formula(L"_c0_ + 数量", {L"数量"});
  const std::string id = formula.identifier(0);
  EXPECT_EQ(formula.expression().find(id), formula.expression().rfind(id));
  EXPECT_EQ(formula.nameIndex(id), 0);
  EXPECT_EQ(formula.nameIndex("_c0_"), -1);
  EXPECT_EQ(formula.restoreNames("bad token \"" + id + "\""), L"bad token \"数量\"");
}

}  // namespace
