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
  const Vars row = {{L"数量", L"3"},        {L"单价", L"12.5"},     {L"价", L"100"},
                    {L"长度(mm)", L"200"},  {L"宽 度", L"4"},       {L"a", L"2"},
                    {L"重量/kg", L"1.5"},   {L"A-1", L"10"},        {L"A", L"6"},
                    {L"x", L"4"},           {L"单价(元)", L"20"}};
  struct Case {
    std::wstring formula;
    std::wstring expected;
  };
  const std::vector<Case> cases = {
      {L"数量*单价", L"37.5"},
      {L"数量 * 单价 + 价", L"137.5"},     // "单价" is not read as "单" and "价"
      {L"价-单价", L"87.5"},
      {L"长度(mm)*宽 度", L"800"},          // names with brackets and blanks
      {L"max(a, 5) + a", L"7"},            // "a" is not found inside "max"
      {L"max(x, 1) + x", L"8"},            // nor "x"
      {L"单价(元)/单价", L"1.6"},           // the longer of two names starting alike
      {L"A*A-1", L"60"},
      {L"重量/kg*2", L"3"},
      {L"A-1+1", L"11"},                   // the whole name wins over "A" minus 1
      {L"（数量＋1）×单价", L"50"},          // full-width operators of an input method
      {L"数量÷2", L"1.5"},
      {L"数量>2 ? 1 : 0", L"1"},
      {L"0.1+0.2", L"0.3"},                // readable decimal text, not 0.30000000000000004
      {L"-数量*0", L"0"},                  // no "-0"
      {L"2^40", L"1099511627776"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(evaluate(c.formula, row), c.expected) << testing::PrintToString(c.formula);
  }
}

TEST(KRCalcTool, ReadsCellsAsTheirLeadingNumber) {
  EXPECT_EQ(evaluate(L"数量*单价", {{L"数量", L"2件"}, {L"单价", L" 12.5元"}}), L"25");
  EXPECT_EQ(evaluate(L"数量*单价+1", {{L"数量", L""}, {L"单价", L"12.5"}}), L"1");   // empty counts 0
  EXPECT_EQ(evaluate(L"数量+1", {{L"数量", L"   "}, {L"备注", L"不是数字"}}), L"1");  // unused cells do not matter
}

TEST(KRCalcTool, AcceptsTheResultNameInFrontOfTheFormula) {
  const Vars row = {{L"数量", L"4"}, {L"单价", L"2.5"}};
  EXPECT_EQ(evaluate(L"总价=数量*单价", row, L"总价"), L"10");
  EXPECT_EQ(evaluate(L" 总价 ＝ 数量*单价", row, L"总价"), L"10");
  // Another name in front is no label, and "==" is a comparison.
  EXPECT_EQ(evaluate(L"总价=数量*单价", row, L"合计"), L"FAILED");
  EXPECT_EQ(evaluate(L"数量==4", row, L"数量"), L"1");
}

TEST(KRCalcTool, FailsWithoutChangingTheResultAndSaysWhy) {
  const Vars row = {{L"数量", L"3"}, {L"单价", L"abc"}, {L"零", L"0"}};
  struct Case {
    std::wstring formula;
    std::wstring mentioned;  // the message names this
  };
  const std::vector<Case> cases = {
      {L"数量*", L"数量*"},           // incomplete
      {L"数量*重量", L"重量"},         // unknown name, given in the user's words
      {L"数量*单价", L"单价"},         // a used cell that is no number
      {L"数量/零", L"数量/零"},        // division by zero gives no finite number
      {L"", L"empty"},
      {L"(数量", L"数量"},
  };
  for (const Case& c : cases) {
    KRCalcTool tool;
    ASSERT_EQ(tool.Init(), 1);
    tool.setFormula(c.formula);
    tool.setVar(row);
    std::wstring result = L"unchanged";
    EXPECT_EQ(tool.run(result), 0) << testing::PrintToString(c.formula);
    EXPECT_EQ(result, L"unchanged");
    EXPECT_NE(tool.lastError().find(c.mentioned), std::wstring::npos)
        << testing::PrintToString(c.formula) << ": " << testing::PrintToString(tool.lastError());
    EXPECT_EQ(tool.lastError().find(L"_c"), std::wstring::npos) << "generated identifier leaked into the message";
  }
}

TEST(KRCalcTool, ChecksSyntaxAndNamesButNotValues) {
  KRCalcTool tool;
  ASSERT_EQ(tool.Init(), 1);
  tool.setVar({{L"数量", L"abc"}, {L"单价", L"2"}});
  std::wstring message;
  tool.setFormula(L"数量*单价");
  EXPECT_EQ(tool.check(message), 1);  // the value is run's business
  EXPECT_TRUE(message.empty());
  tool.setFormula(L"数量*重量");
  EXPECT_EQ(tool.check(message), 0);
  EXPECT_NE(message.find(L"重量"), std::wstring::npos);
}

TEST(KRCalcTool, GivesTheVariablesTheFormulaUses) {
  KRCalcTool tool;
  ASSERT_EQ(tool.Init(), 1);
  tool.setFormula(L"数量*单价+数量");
  tool.setVar({{L"数量", L"3"}, {L"单价", L"2"}, {L"备注", L"x"}});
  Vars used;
  EXPECT_EQ(tool.getVar(used), 1);
  EXPECT_EQ(used, (Vars{{L"数量", L"3"}, {L"单价", L"2"}}));
}

TEST(KRCalcTool, ClearForgetsTheLastRun) {
  KRCalcTool tool;
  ASSERT_EQ(tool.Init(), 1);
  tool.setExpName(L"总价");
  tool.setFormula(L"数量*2");
  tool.setVar({{L"数量", L"3"}});
  std::wstring result;
  ASSERT_EQ(tool.run(result), 1);
  EXPECT_EQ(result, L"6");
  tool.clear();
  Vars used;
  EXPECT_EQ(tool.getVar(used), 0);
  EXPECT_EQ(tool.run(result), 0);
  tool.setFormula(L"数量*2");
  EXPECT_EQ(tool.run(result), 0) << "variables of the last run were kept";
}

TEST(KRCalcTool, DoesNothingBeforeInit) {
  KRCalcTool tool;
  tool.setFormula(L"1+1");
  std::wstring message;
  std::wstring result = L"before";
  Vars used;
  EXPECT_EQ(tool.check(message), 0);
  EXPECT_EQ(tool.run(result), 0);
  EXPECT_EQ(result, L"before");
  EXPECT_EQ(tool.getVar(used), 0);
  EXPECT_EQ(tool.Init(), 1);
  EXPECT_EQ(tool.run(result), 1);
  EXPECT_EQ(result, L"2");
}

TEST(KrmCalcFormula, GeneratedIdentifiersNeverClashWithTheFormula) {
  // The formula itself contains what would be the first identifier.
  const KrmCalcFormula formula(L"_c0_ + 数量", {L"数量"});
  EXPECT_EQ(formula.usedNames(), std::vector<std::size_t>{0});
  EXPECT_EQ(formula.expression().find(formula.identifier(0)), formula.expression().rfind(formula.identifier(0)));
  EXPECT_EQ(formula.nameIndex(formula.identifier(0)), 0);
  EXPECT_EQ(formula.nameIndex("_c0_"), -1);
  EXPECT_EQ(formula.restoreNames("bad token \"" + formula.identifier(0) + "\""), L"bad token \"数量\"");
}

}  // namespace
