#include "authoring/load_cards_model.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring_test_support.h"
#include "support/test_support.h"

namespace {

namespace fs = std::filesystem;
using Item = KrmLoadCardsModel::Item;
using tabulon::svc::fromPath;

// Library: /T0 table, /a/b/T1 table with card C1 (tables T1, T1), /a/only/T2 table,
// /empty/ nothing.
class Library : public ::testing::Test {
 protected:
  void SetUp() override {
    authtest::WriteTable(lib.path(), L"T0", L"ROW");
    authtest::WriteTable(lib.path() / "a" / "b", L"T1", L"ROW");
    authtest::WriteTable(lib.path() / "a" / "b", L"T2", L"ROW");
    authtest::WriteCard(lib.path() / "a" / "b", L"C1", L"T1", L"T2");
    authtest::WriteTable(lib.path() / "a" / "only", L"T3", L"ROW");
    fs::create_directories(lib.path() / "empty");
  }
  std::wstring Root() const { return fromPath(lib.path()); }
  static std::vector<std::wstring> Texts(const Item& item) {
    std::vector<std::wstring> texts;
    for (const auto& child : item.children) texts.push_back(child->text);
    return texts;
  }
  tabulon::test::ScratchDir lib;
};

TEST_F(Library, CardTreeHidesFoldersWithoutCardsAtEveryDepth) {
  KrmLoadCardsModel cards(Root(), L".crd");
  cards.Open();
  EXPECT_EQ(cards.Caption(), L"选择卡片");
  EXPECT_EQ(Texts(cards.Root()), (std::vector<std::wstring>{L"a"}));
  const Item& a = *cards.Root().children[0];
  EXPECT_EQ(Texts(a), (std::vector<std::wstring>{L"b"}));
  ASSERT_NE(cards.Selected(), nullptr);
  EXPECT_EQ(cards.Selected()->text, L"C1 卡");  // first template down the first children
}

TEST_F(Library, CardPreviewFlipsBetweenItsTablesAndResetsOnANewSelection) {
  KrmLoadCardsModel cards(Root(), L".crd");
  cards.Open();
  const std::wstring folder = Root() + L"/a/b/";
  EXPECT_EQ(cards.PreviewPath(), folder + L"T1");
  EXPECT_EQ(cards.FlipCaption(), L"看续页");
  cards.Flip();
  EXPECT_EQ(cards.PreviewPath(), folder + L"T2");
  EXPECT_EQ(cards.FlipCaption(), L"看首页");
  cards.Select(cards.Selected());
  EXPECT_EQ(cards.PreviewPath(), folder + L"T1");
}

TEST_F(Library, ConfirmGivesNamesAndRelativeFolders) {
  KrmLoadCardsModel tables(Root(), L".tbl");
  tables.Open();
  EXPECT_EQ(tables.Selected()->text, L"T1 显示");  // folders come first in the reader's order
  tables.Confirm();
  EXPECT_EQ(tables.selectedNames(), (std::vector<std::wstring>{L"T1", L"T1 显示"}));
  EXPECT_EQ(tables.selectedFolder(), L"/a/b/");
  ASSERT_TRUE(tables.SelectPath(L"/a/only/", L""));
  tables.Confirm();
  EXPECT_TRUE(tables.selectedNames().empty());
  EXPECT_EQ(tables.selectedFolder(), L"/a/only/");
  tables.Select(&tables.Root());
  tables.Confirm();
  EXPECT_TRUE(tables.SelectedFileName().empty());
  EXPECT_EQ(tables.selectedFolder(), L"/");
}

TEST_F(Library, DeletingTheLastTemplateRemovesEmptiedFoldersUpwards) {
  KrmLoadCardsModel tables(Root(), L".tbl");
  tables.Open();
  ASSERT_TRUE(tables.SelectPath(L"/a/only/", L"T3"));
  EXPECT_FALSE(tables.DeleteQuestion().empty());
  EXPECT_FALSE(tables.DeleteSelected(false));
  EXPECT_TRUE(fs::exists(lib.path() / "a" / "only" / "T3.tbl"));
  ASSERT_TRUE(tables.DeleteSelected(true));
  EXPECT_EQ(tables.Selected()->text, L"a");  // the first ancestor that still has children
  EXPECT_EQ(Texts(*tables.Root().children[0]), (std::vector<std::wstring>{L"b"}));
  EXPECT_FALSE(fs::exists(lib.path() / "a" / "only" / "T3.tbl"));
  EXPECT_FALSE(fs::exists(lib.path() / "a" / "only" / "T3.dxf"));
  EXPECT_TRUE(fs::exists(lib.path() / "a" / "only"));  // on disk the folder stays
}

TEST_F(Library, DeletedTableLeavesItsCardsWithAnEmptyPreview) {
  KrmLoadCardsModel tables(Root(), L".tbl");
  tables.Open();
  ASSERT_TRUE(tables.SelectPath(L"/a/b/", L"T1"));
  ASSERT_TRUE(tables.DeleteSelected(true));
  EXPECT_TRUE(fs::exists(lib.path() / "a" / "b" / "C1.crd"));
  KrmLoadCardsModel cards(Root(), L".crd");
  cards.Open();
  EXPECT_FALSE(fs::exists(cards.PreviewPath() + L".dxf"));
}

TEST_F(Library, EmptyLibrarySelectsNothingAndConfirmsNothing) {
  tabulon::test::ScratchDir empty;
  KrmLoadCardsModel tables(fromPath(empty.path()), L".tbl");
  tables.Open();
  EXPECT_EQ(tables.Selected(), nullptr);
  EXPECT_TRUE(tables.Root().children.empty());
  EXPECT_TRUE(tables.DeleteQuestion().empty());
  tables.Confirm();
  EXPECT_TRUE(tables.selectedFolder().empty());
}

}  // namespace
