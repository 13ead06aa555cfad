#include "shell/krm_tabulon_app.h"

#include "host/ap/krm_doc_value.h"
#include "host/ed/drawing_fixture.h"
#include "host/ed/qaed_command_stack.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/scoped_env.h"
#include "host/svc/utf8.h"
#include "shell/krm_command_table.h"
#include "shell/krm_commands.h"
#include "shell/krm_host_session.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

using tabulon::test::DrawingFixture;
using tabulon::test::ScopedEnv;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

// A configuration folder of its own, Chinese texts, and a drawing as current document.
class KrmTabulonPlugin : public DrawingFixture {
 protected:
  void SetUp() override {
    DrawingFixture::SetUp();
    env.set("TABULON_HOME", home.path().string());
    writeFile(home / "tabulon.ini", "[Paths]\nLocale=zh_CN\nLibrary=" + (home / "Cards").string() + "\n");
  }
  void makeLibrary() { std::filesystem::create_directory(home / "Cards"); }

  ScratchDir home;
  ScopedEnv env;
  QaEdScriptedIO io;
};

TEST_F(KrmTabulonPlugin, MessagesAboveFifteenAnswerZeroAndTouchNothing) {
  for (int msg : {16, 17, 99, 1000}) EXPECT_EQ(qarxEntryPoint(msg, nullptr), 0) << msg;
  EXPECT_FALSE(KrmTabulonApp().isInitialised());
  EXPECT_TRUE(qaedCommandStack().commandsOfGroup(kKrmCommandGroup).empty());
  KrmHostSession session(io);
  const auto before = qaedCommandStack().commandsOfGroup(kKrmCommandGroup).size();
  KrmSetCardRoot(L"/somewhere");
  for (int msg : {16, 42}) EXPECT_EQ(qarxEntryPoint(msg, nullptr), 0);
  EXPECT_EQ(qaedCommandStack().commandsOfGroup(kKrmCommandGroup).size(), before);
  EXPECT_EQ(KrmCardRoot(), L"/somewhere");
  EXPECT_TRUE(KrmTabulonApp().isInitialised());
}

TEST_F(KrmTabulonPlugin, InitRegistersTheSixCommandsAndUnloadRemovesThem) {
  EXPECT_EQ(qarxGetApiVersion(), 0x7E9000A);
  {
    KrmHostSession session(io);
    const auto commands = qaedCommandStack().commandsOfGroup(L"KrmTabulon");
    ASSERT_EQ(commands.size(), 6u);
    const wchar_t* names[] = {L"KrmMakeTbl", L"KrmMakeCard", L"KrmCreateCard", L"KrmCardEdit", L"KrmBomCardExp", L"KrmDelBlkID"};
    for (std::size_t i = 0; i < 6; ++i) {
      EXPECT_EQ(commands[i]->localName, names[i]);
      EXPECT_EQ(commands[i]->globalName, std::wstring(L"_") + names[i]);
      EXPECT_EQ(commands[i]->flags, 1);
      EXPECT_EQ(commands[i]->resource, KrmTabulonApp().resourceInstance());
    }
    EXPECT_EQ(KrmCardRoot(), L"Cards");
    EXPECT_TRUE(qarxDynamicLinker().isUnloadAllowed(kKrmTabulonModuleName));
    EXPECT_TRUE(qarxDynamicLinker().isMultiDocument(kKrmTabulonModuleName));
    // Library load made the Chinese table the plug-in's resource and the per-document managers.
    ASSERT_NE(KrmTabulonApp().resourceInstance(), nullptr);
    EXPECT_EQ(KrmTabulonApp().resourceInstance()->locale(), "zh_CN");
    EXPECT_EQ(qaResourceHandle(), KrmTabulonApp().resourceInstance());
    EXPECT_NE(KrmCurDocValue(), nullptr);
  }
  EXPECT_TRUE(qaedCommandStack().commandsOfGroup(L"KrmTabulon").empty());
  EXPECT_EQ(qaResourceHandle(), nullptr);
  EXPECT_EQ(KrmDocValueManager(), nullptr);
  EXPECT_FALSE(KrmTabulonExtensionInitialised());
}

TEST_F(KrmTabulonPlugin, TextsFollowTheConfiguredLanguage) {
  writeFile(home / "tabulon.ini", "[Paths]\nLocale=en_US.UTF-8\n");
  KrmHostSession session(io);
  EXPECT_EQ(session.runCommand(L"KrmMakeTbl"), 0);
  EXPECT_EQ(io.printed(), L"The card library folder does not exist");
}

TEST_F(KrmTabulonPlugin, FramedCommandsWithoutLibraryPrintMessage159AndChangeNothing) {
  KrmHostSession session(io);
  line({0, 0, 0}, {1, 1, 0});
  const auto objects = db->numObjects();
  const auto seed = db->handseed();
  for (const wchar_t* name : {L"KrmMakeTbl", L"_KrmMakeCard", L"KrmCreateCard", L"KrmCardEdit", L"KrmBomCardExp"}) {
    io = QaEdScriptedIO();
    EXPECT_EQ(session.runCommand(name), 0) << name;
    EXPECT_EQ(io.printed(), L"卡片源路径不存在") << name;
  }
  EXPECT_EQ(db->numObjects(), objects);
  EXPECT_EQ(db->handseed(), seed);
  EXPECT_EQ(KrmCardRoot(), L"");
}

TEST_F(KrmTabulonPlugin, FramedCommandsWithALibraryResolveTheRootAndRunTheirBody) {
  makeLibrary();
  KrmHostSession session(io);
  // The body runs: without a card editor in this program it says where to turn.
  EXPECT_EQ(session.runCommand(L"KrmCreateCard"), 0);
  EXPECT_EQ(io.printed(), L"\n此程序没有卡片编辑器,请使用 tabulon create");
  EXPECT_EQ(KrmCardRoot(), tabulon::svc::fromPath(home / "Cards"));
  // The body runs with the plug-in's resource current, and the previous one comes back.
  const QaLangResource* inside = nullptr;
  {
    QaResourceScope other(nullptr);
    KrmRunFramed([&] {
      inside = qaResourceHandle();
      return 1;
    });
    EXPECT_EQ(qaResourceHandle(), nullptr);
  }
  EXPECT_EQ(inside, KrmTabulonApp().resourceInstance());
}

TEST(KrmStripBlockPrefix, KeepsWhatFollowsTheLastUnderscore) {
  struct Case {
    const wchar_t* name;
    const wchar_t* expected;
  };
  for (const auto& c : {Case{L"A_B_C", L"C"}, Case{L"X_Y", L"Y"}, Case{L"PLAIN", L"PLAIN"}, Case{L"_LEAD", L"LEAD"},
                        Case{L"TAIL_", L""}, Case{L"3f2a_首页_标题栏", L"标题栏"}, Case{L"", L""}}) {
    EXPECT_EQ(KrmStripBlockPrefix(c.name), c.expected) << testing::PrintToString(std::wstring(c.name));
  }
}

class KrmDelBlkIDCommand : public KrmTabulonPlugin {
 protected:
  std::wstring blockName(QaDbObjectId id) {
    QaDbObjectPointer<QaDbBlockTableRecord> rec(id, QaDb::kForRead);
    return rec ? rec->getName() : L"?";
  }
};

TEST_F(KrmDelBlkIDCommand, StripsThePrefixesOfThePickedReferencesBlocks) {
  const auto abc = block(L"A_B_C");
  const auto xy = block(L"X_Y");
  const auto untouched = block(L"Q_R");
  const auto clash = block(L"K_C");  // would become "C" too: that rename is passed over
  insert(abc, {0, 0, 0});
  insert(abc, {20, 0, 0});
  insert(xy, {40, 0, 0});
  insert(untouched, {60, 0, 0});
  const auto clashRef = insert(clash, {80, 0, 0});
  const auto loose = line({0, 0, 0}, {5, 5, 0});
  io.addAnswer(L"all r 60,5");  // everything but the Q_R reference
  KrmHostSession session(io);
  EXPECT_EQ(session.runCommand(L"KrmDelBlkID"), 1);
  EXPECT_EQ(blockName(abc), L"C");
  EXPECT_EQ(blockName(xy), L"Y");
  EXPECT_EQ(blockName(untouched), L"Q_R");
  EXPECT_EQ(blockName(clash), L"K_C");
  EXPECT_FALSE(loose.isErased());
  EXPECT_FALSE(clashRef.isErased());
  EXPECT_EQ(io.prompts().size(), 1u);
  EXPECT_NE(io.printed().find(L"\n请选择整个卡片实体/R移除实体:"), std::wstring::npos);
}

TEST_F(KrmDelBlkIDCommand, DoesNothingWithoutASelection) {
  const auto abc = block(L"A_B_C");
  insert(abc, {0, 0, 0});
  io.addAnswer(L"");
  KrmHostSession session(io);
  EXPECT_EQ(session.runCommand(L"KrmDelBlkID"), 0);
  EXPECT_EQ(session.runCommand(L"KrmDelBlkID"), 0);  // no answers left: cancelled
  EXPECT_EQ(blockName(abc), L"A_B_C");
}
