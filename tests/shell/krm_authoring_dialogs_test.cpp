// KrmMakeTbl and KrmMakeCard open the authoring dialogs the program publishes, on models
// over the card root; without them they say where to turn.
#include "shell/krm_authoring_dialogs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "authoring/authoring_test_support.h"
#include "authoring/make_card_model.h"
#include "authoring/make_table_model.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/scoped_env.h"
#include "shell/krm_host_session.h"
#include "support/test_support.h"

namespace {

using authtest::Choose;
using tabulon::test::ScratchDir;

// A dialog the way a user fills it: pick everything, choose the classes, OK.
class ScriptedDialogs : public KrmAuthoringDialogs {
 public:
  bool RunMakeTable(KrmMakeTblModel& model) override {
    if (!model.PickBlocks().ok()) return false;
    model.ChooseSingleBlocks(Choose({L"TITLE", L"PAGE"}));
    model.ChooseMultiBlocks(Choose({L"ROW"}));
    model.ChoosePageBase(Choose({L"ROW"}));
    model.SetName(L"T1");
    return model.OnOK().ok();
  }
  bool RunMakeCard(KrmMakeCardModel& model) override {
    model.ChooseFirst(authtest::Pick(L"/", L"T1"));
    model.SetName(L"C1");
    return model.OnOK().ok();
  }
};

class AuthoringDialogCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    env.set("TABULON_HOME", home.path().string());
    tabulon::test::writeFile(home / "tabulon.ini", "[Paths]\nLocale=zh_CN\nLibrary=" + lib.path().string() + "\n");
    session = std::make_unique<KrmHostSession>(io);
    auto db = std::make_unique<QaDbDatabase>();
    authtest::DrawForm(*db);
    qaDocManager().addDocument(std::move(db), home / "f.dxf");
  }
  void TearDown() override {
    qaServiceDictionary().remove(KRM_AUTHORING_DIALOGS);
    session.reset();
  }
  ScratchDir home;
  ScratchDir lib;
  tabulon::test::ScopedEnv env;
  QaEdScriptedIO io;
  std::unique_ptr<KrmHostSession> session;
};

TEST_F(AuthoringDialogCommands, WithoutDialogsTheCommandsSayWhereToTurn) {
  EXPECT_EQ(session->runCommand(L"KrmMakeTbl"), 0);
  EXPECT_EQ(io.printed(), L"\n此程序没有模板对话框,请使用 tabulon make-table 或 make-card");
  EXPECT_TRUE(std::filesystem::is_empty(lib.path()));
}

TEST_F(AuthoringDialogCommands, PublishedDialogsWriteTemplatesIntoTheCardRoot) {
  qaServiceDictionary().atPut(KRM_AUTHORING_DIALOGS, std::make_unique<ScriptedDialogs>());
  io.addAnswer(L"all");
  EXPECT_EQ(session->runCommand(L"KrmMakeTbl"), 1);
  EXPECT_TRUE(std::filesystem::exists(lib.path() / "T1.tbl"));
  EXPECT_TRUE(std::filesystem::exists(lib.path() / "T1.dxf"));
  EXPECT_EQ(session->runCommand(L"KrmMakeCard"), 1);
  EXPECT_TRUE(std::filesystem::exists(lib.path() / "C1.crd"));
}

}  // namespace
