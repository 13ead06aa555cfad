#include "authoring/card_out_model.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring_test_support.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"

namespace {

namespace fs = std::filesystem;
using tabulon::svc::fromPath;
using tabulon::test::readFile;

// Source folder /src with cards C1 (T1, T2) and C2 (T2, T2), and a card in a sub-folder.
class Transfer : public ::testing::Test {
 protected:
  Transfer() : scope(io) {
    authtest::WriteTable(Src(), L"T1", L"ROW");
    authtest::WriteTable(Src(), L"T2", L"ROW");
    authtest::WriteCard(Src(), L"C1", L"T1", L"T2");
    authtest::WriteCard(Src(), L"C2", L"T2", L"T2");
    authtest::WriteCard(Src() / "deeper", L"C3", L"T1", L"T1");
  }
  fs::path Src() const { return lib.path() / "src"; }
  KrmCardOutModel Model(const fs::path& target) {
    KrmCardOutModel model(fromPath(lib.path()), fromPath(Src()) + L"/");
    model.RefreshList();
    model.SetTargetPath(fromPath(target));
    return model;
  }

  tabulon::test::ScratchDir lib;
  tabulon::test::ScratchDir out;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
};

TEST_F(Transfer, CopiesCardsWithTheirFilesByteForByte) {
  KrmCardOutModel model = Model(out.path());
  EXPECT_EQ(model.ListNames(), (std::vector<std::wstring>{L"C1 卡", L"C2 卡"}));
  ASSERT_TRUE(model.OnOK().ok());
  for (const char* name : {"C1.crd", "C2.crd", "T1.tbl", "T1.dxf", "T2.tbl", "T2.dxf"}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(fs::exists(out.path() / name));
    EXPECT_EQ(readFile(out.path() / name), readFile(Src() / name));
  }
  EXPECT_FALSE(fs::exists(out.path() / "C3.crd"));
  EXPECT_TRUE(io.messageBoxes().empty());
}

TEST_F(Transfer, ExistingTableStopsSilentlyWithoutAnAnswerYet) {
  tabulon::test::writeFile(out.path() / "T1.tbl", "theirs");
  KrmCardOutModel model = Model(out.path());
  ASSERT_TRUE(model.SelectByFileNames({L"C1"}));
  EXPECT_FALSE(model.OnOK().ok());
  EXPECT_TRUE(fs::exists(out.path() / "C1.crd"));
  EXPECT_EQ(readFile(out.path() / "T1.tbl"), "theirs");
  EXPECT_FALSE(fs::exists(out.path() / "T2.tbl"));
  EXPECT_TRUE(io.messageBoxes().empty());
}

TEST_F(Transfer, AnswerForACardRulesItsFiles) {
  for (const char* name : {"C1.crd", "T1.tbl", "T1.dxf"}) tabulon::test::writeFile(out.path() / name, "theirs");
  KrmCardOutModel model = Model(out.path());
  ASSERT_TRUE(model.SelectByFileNames({L"C1"}));
  io.addAnswer(L"no");
  ASSERT_TRUE(model.OnOK().ok());
  for (const char* name : {"C1.crd", "T1.tbl", "T1.dxf"}) EXPECT_EQ(readFile(out.path() / name), "theirs") << name;
  EXPECT_EQ(readFile(out.path() / "T2.tbl"), readFile(Src() / "T2.tbl"));
  ASSERT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_NE(io.messageBoxes()[0].find(L"C1.crd"), std::wstring::npos);

  io.addAnswer(L"yes");
  ASSERT_TRUE(model.OnOK().ok());
  EXPECT_EQ(readFile(out.path() / "T1.tbl"), readFile(Src() / "T1.tbl"));
}

TEST_F(Transfer, SameFolderIsRefusedButOnlyExactly) {
  KrmCardOutModel model = Model(Src());
  EXPECT_FALSE(model.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().back(), L"卡片源路径和目标路径不能相同");
  KrmCardOutModel missing(fromPath(lib.path()), fromPath(lib.path() / "nowhere"));
  missing.SetTargetPath(fromPath(out.path()));
  EXPECT_FALSE(missing.OnOK().ok());
  EXPECT_EQ(io.messageBoxes().back(), L"卡片源路径不存在");
}

TEST_F(Transfer, MissingTargetIsMadeOnlyOneLevelDeepAndOnYes) {
  KrmCardOutModel model = Model(out.path() / "new");
  io.addAnswer(L"no");
  EXPECT_FALSE(model.OnOK().ok());
  EXPECT_FALSE(fs::exists(out.path() / "new"));
  io.addAnswer(L"yes");
  ASSERT_TRUE(model.OnOK().ok());
  EXPECT_TRUE(fs::exists(out.path() / "new" / "C1.crd"));
  KrmCardOutModel deep = Model(out.path() / "x" / "y");
  io.addAnswer(L"yes");
  EXPECT_FALSE(deep.OnOK().ok());
  EXPECT_FALSE(fs::exists(out.path() / "x"));
}

TEST_F(Transfer, NoSelectionCopiesNothingAndSucceeds) {
  KrmCardOutModel model = Model(out.path());
  model.SetSelection({});
  ASSERT_TRUE(model.OnOK().ok());
  EXPECT_TRUE(fs::is_empty(out.path()));
}

TEST_F(Transfer, NamesAndLinksLeadingOutOfTheTargetAreNotFollowed) {
  // A card naming tables outside its folder, and a target file that is a link outside.
  authtest::WriteCard(Src(), L"C9", L"../escape", L"T1");
  tabulon::test::ScratchDir elsewhere;
  tabulon::test::writeFile(elsewhere.path() / "victim", "keep");
  fs::create_symlink(elsewhere.path() / "victim", out.path() / "T1.tbl");
  KrmCardOutModel model = Model(out.path());
  ASSERT_TRUE(model.SelectByFileNames({L"C9"}));
  io.addAnswer(L"yes");
  ASSERT_TRUE(model.OnOK().ok());
  EXPECT_EQ(readFile(elsewhere.path() / "victim"), "keep");
  EXPECT_FALSE(fs::exists(lib.path() / "escape.tbl"));
  EXPECT_TRUE(fs::exists(out.path() / "C9.crd"));
  EXPECT_TRUE(fs::exists(out.path() / "T1.dxf"));
  EXPECT_FALSE(StaysInFolder(fromPath(out.path()), L"/etc/passwd"));
  EXPECT_FALSE(StaysInFolder(fromPath(out.path()), L".."));
}

}  // namespace
