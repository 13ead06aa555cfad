// KrmCreateCard: the template chosen through the published creator is loaded, the user
// gives the insertion point, and the creator's editor runs on them.
#include "shell/krm_card_creator.h"

#include <gtest/gtest.h>

#include <memory>

#include "drawing/generation_library.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/scoped_env.h"
#include "host/svc/utf8.h"
#include "shell/krm_host_session.h"
#include "support/test_support.h"

namespace {

using tabulon::test::ScratchDir;

// Chooses the given path and remembers what the editor was asked to do.
class RecordingCreator : public KrmCardCreator {
 public:
  explicit RecordingCreator(std::wstring path) : path_(std::move(path)) {}
  bool ChooseCardTemplate(const std::wstring&, std::wstring& path) override {
    path = path_;
    return !path_.empty();
  }
  void RunCreateEditor(const std::wstring& path, const QaGePoint3d& point) override {
    edited = path;
    at = point;
    ++runs;
  }
  std::wstring edited;
  QaGePoint3d at;
  int runs = 0;

 private:
  std::wstring path_;
};

class CreateCardCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    env.set("TABULON_HOME", home.path().string());
    tabulon::test::writeFile(home / "tabulon.ini", "[Paths]\nLocale=zh_CN\nLibrary=" + lib.path().string() + "\n");
    session = std::make_unique<KrmHostSession>(io);
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), home / "f.dxf");
  }
  void TearDown() override {
    qaServiceDictionary().remove(KRM_CARD_CREATOR);
    session.reset();
  }
  RecordingCreator& Publish(std::wstring path) {
    auto creator = std::make_unique<RecordingCreator>(std::move(path));
    RecordingCreator& out = *creator;
    qaServiceDictionary().atPut(KRM_CARD_CREATOR, std::move(creator));
    return out;
  }
  ScratchDir home;
  ScratchDir lib;
  tabulon::test::ScopedEnv env;
  QaEdScriptedIO io;
  std::unique_ptr<KrmHostSession> session;
};

TEST_F(CreateCardCommand, WithoutACreatorTheCommandSaysWhereToTurn) {
  EXPECT_EQ(session->runCommand(L"KrmCreateCard"), 0);
  EXPECT_EQ(io.printed(), L"\n此程序没有卡片编辑器,请使用 tabulon create");
}

TEST_F(CreateCardCommand, TheChosenCardIsEditedAtTheGivenPoint) {
  const std::wstring card = gentest::WriteSampleLibrary(lib.path());
  RecordingCreator& creator = Publish(card);
  io.addAnswer(L"10,20");
  EXPECT_EQ(session->runCommand(L"KrmCreateCard"), 1);
  ASSERT_EQ(creator.runs, 1);
  EXPECT_EQ(creator.edited, card);
  EXPECT_DOUBLE_EQ(creator.at.x, 10.0);
  EXPECT_DOUBLE_EQ(creator.at.y, 20.0);
}

TEST_F(CreateCardCommand, ACancelledPointOpensNoEditor) {
  RecordingCreator& creator = Publish(gentest::WriteSampleLibrary(lib.path()));
  EXPECT_EQ(session->runCommand(L"KrmCreateCard"), 0);  // no answer: cancelled
  EXPECT_EQ(creator.runs, 0);
}

TEST_F(CreateCardCommand, ATemplateThatDoesNotLoadIsReportedAndOpensNoEditor) {
  RecordingCreator& creator = Publish(tabulon::svc::fromPath(lib.path() / "missing.crd"));
  EXPECT_EQ(session->runCommand(L"KrmCreateCard"), 0);
  EXPECT_EQ(creator.runs, 0);
  EXPECT_EQ(io.printed(), L"卡片源路径不存在");
}

}  // namespace
