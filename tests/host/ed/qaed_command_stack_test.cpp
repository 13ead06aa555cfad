#include "host/ed/qaed_command_stack.h"

#include "host/ed/qaed_scripted_io.h"
#include "host/rx/qa_lang_resource.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(QaEdCommandStack, RegistersAndFindsCommandsByGlobalAndLocalName) {
  QaEdCommandStack stack;
  auto handler = [] { return 1; };
  EXPECT_EQ(stack.addCommand(L"G", L"_Global", L"Local", QA_CMD_MODAL, handler), Qa::eOk);
  EXPECT_EQ(stack.addCommand(L"G", L"_Other", L"Local", QA_CMD_MODAL, handler), Qa::eDuplicateKey);
  EXPECT_EQ(stack.addCommand(L"H", L"_GLOBAL", L"X", QA_CMD_MODAL, handler), Qa::eDuplicateKey);
  EXPECT_EQ(stack.addCommand(L"G", L"_Y", L"Y", QA_CMD_MODAL, nullptr), Qa::eInvalidInput);
  EXPECT_EQ(stack.addCommand(L"", L"_Y", L"Y", QA_CMD_MODAL, handler), Qa::eInvalidInput);

  ASSERT_NE(stack.lookupLocalCmd(L"local"), nullptr);
  EXPECT_EQ(stack.lookupLocalCmd(L"local")->globalName, L"_Global");
  EXPECT_EQ(stack.lookupCmd(L"_global"), stack.lookupCmd(L"LOCAL"));
  EXPECT_EQ(stack.lookupCmd(L"_Local"), nullptr);  // "_" asks for global names only
  EXPECT_EQ(stack.lookupCmd(L"nothing"), nullptr);

  EXPECT_EQ(stack.removeCmd(L"G", L"_Global"), Qa::eOk);
  EXPECT_EQ(stack.removeCmd(L"G", L"_Global"), Qa::eKeyNotFound);
  EXPECT_EQ(stack.removeGroup(L"G"), Qa::eKeyNotFound);
}

TEST(QaEdCommandStack, RemovesAWholeGroup) {
  QaEdCommandStack stack;
  stack.addCommand(L"A", L"_a1", L"a1", 0, [] { return 1; });
  stack.addCommand(L"A", L"_a2", L"a2", 0, [] { return 1; });
  stack.addCommand(L"B", L"_b1", L"b1", 0, [] { return 1; });
  EXPECT_EQ(stack.commandsOfGroup(L"a").size(), 2u);
  EXPECT_EQ(stack.groups(), (std::vector<std::wstring>{L"A", L"B"}));
  EXPECT_EQ(stack.removeGroup(L"A"), Qa::eOk);
  EXPECT_EQ(stack.lookupCmd(L"a1"), nullptr);
  EXPECT_NE(stack.lookupCmd(L"b1"), nullptr);
}

TEST(QaEdCommandStack, EndsAFailingCommandWithALineAndGoesOn) {
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  QaEdCommandStack stack;
  stack.addCommand(L"G", L"_Bad", L"Bad", QA_CMD_MODAL, []() -> int { throw std::out_of_range("index 7 out of range"); });
  stack.addCommand(L"G", L"_Good", L"Good", QA_CMD_MODAL, [] { return 1; });
  EXPECT_EQ(stack.invoke(L"Bad"), std::nullopt);
  EXPECT_NE(io.printed().find(L"index 7 out of range"), std::wstring::npos);
  EXPECT_TRUE(stack.activeCommand().empty());
  EXPECT_EQ(stack.invoke(L"Good"), 1);
  EXPECT_EQ(stack.invoke(L"Missing"), std::nullopt);
  EXPECT_NE(io.printed().find(L"Missing"), std::wstring::npos);
}

TEST(QaEdCommandStack, RefusesAModalCommandInsideAnotherButRunsATransparentOne) {
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  QaEdCommandStack stack;
  std::optional<int> nestedModal, nestedTransparent;
  std::wstring activeInside;
  stack.addCommand(L"G", L"_Inner", L"Inner", QA_CMD_MODAL, [] { return 5; });
  stack.addCommand(L"G", L"_Zoom", L"Zoom", QA_CMD_TRANSPARENT, [&] {
    activeInside = stack.activeCommand();
    return 6;
  });
  stack.addCommand(L"G", L"_Outer", L"Outer", QA_CMD_MODAL, [&] {
    nestedModal = stack.invoke(L"Inner");
    nestedTransparent = stack.invoke(L"Zoom");
    return 1;
  });
  EXPECT_EQ(stack.invoke(L"Outer"), 1);
  EXPECT_EQ(nestedModal, std::nullopt);
  EXPECT_EQ(nestedTransparent, 6);
  EXPECT_EQ(activeInside, L"_Zoom");
  EXPECT_EQ(stack.invoke(L"Inner"), 5);
}

TEST(QaEdCommandStack, MakesTheCommandsResourceCurrentWhileItRuns) {
  QaLangResource resource("Test", "zh_CN", "", QaStringTable::parse("[Strings]\n7=seven\n"));
  QaEdCommandStack stack;
  std::wstring seen;
  stack.addCommand(L"G", L"_Show", L"Show", 0, [&] {
    seen = KrmLoadString(7, L"literal");
    return 1;
  }, &resource);
  stack.invoke(L"Show");
  EXPECT_EQ(seen, L"seven");
  EXPECT_EQ(qaResourceHandle(), nullptr);
  EXPECT_EQ(KrmLoadString(7, L"literal"), L"literal");
}
