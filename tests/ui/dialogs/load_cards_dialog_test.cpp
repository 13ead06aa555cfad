// The library dialog shows its model's tree and the side drawing of the selection,
// flips a card's pages, deletes after the question, and confirms the selection on OK.
#include "ui/dialogs/load_cards_dialog.h"

#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring/authoring_test_support.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"
#include "ui/dialogs/drawing_preview.h"
#include "ui/ui_strings.h"

namespace {

namespace fs = std::filesystem;
using tabulon::ui::LoadCardsDialog;
using tabulon::ui::toQString;

// /T0 table; /a/b/ tables T1 and T2 and card C1 (T1, T2).
class LoadCardsDialogTest : public ::testing::Test {
 protected:
  LoadCardsDialogTest() : scope(io) {
    authtest::WriteTable(lib.path(), L"T0", L"ROW");
    authtest::WriteTable(lib.path() / "a" / "b", L"T1", L"ROW");
    authtest::WriteTable(lib.path() / "a" / "b", L"T2", L"ROW");
    authtest::WriteCard(lib.path() / "a" / "b", L"C1", L"T1", L"T2");
  }
  std::wstring Root() const { return tabulon::svc::fromPath(lib.path()); }

  tabulon::test::ScratchDir lib;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
  tabulon::ui::UiStrings strings{"en"};
};

// The texts of the tree rows below `row`, depth first.
QStringList Rows(QTreeWidgetItem *row) {
  QStringList out;
  for (int i = 0; i < row->childCount(); ++i) {
    out << row->child(i)->text(0);
    out << Rows(row->child(i));
  }
  return out;
}

TEST_F(LoadCardsDialogTest, TheTreeIsTheModelsAndAClickedTemplateIsPreviewedAndConfirmed) {
  KrmLoadCardsModel model(Root(), L".tbl");
  model.Open();
  LoadCardsDialog dialog(model, strings);
  ASSERT_EQ(dialog.tree()->topLevelItemCount(), 1);
  EXPECT_EQ(Rows(dialog.tree()->topLevelItem(0)).size(), 5);  // T0, a, b, T1, T2
  EXPECT_EQ(dialog.tree()->currentItem(), dialog.rowOf(model.Selected()));
  EXPECT_FALSE(dialog.flipButton()->isVisibleTo(&dialog));

  const auto *t2 = model.Find(L"/a/b/", L"T2");
  ASSERT_NE(t2, nullptr);
  dialog.tree()->setCurrentItem(dialog.rowOf(t2));
  EXPECT_EQ(model.Selected(), t2);
  EXPECT_EQ(dialog.preview()->shownPath(), tabulon::svc::toPath(model.PreviewPath()));
  EXPECT_GT(dialog.preview()->itemCount(), 0);

  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(model.SelectedFileName(), L"T2");
  EXPECT_EQ(model.selectedFolder(), L"/a/b/");
}

TEST_F(LoadCardsDialogTest, ACardFlipsToItsContinuationPage) {
  KrmLoadCardsModel model(Root(), L".crd");
  model.Open();
  LoadCardsDialog dialog(model, strings);
  ASSERT_TRUE(dialog.flipButton()->isVisibleTo(&dialog));
  EXPECT_EQ(dialog.flipButton()->text(), toQString(model.FlipCaption()));
  EXPECT_EQ(dialog.preview()->shownPath().filename(), fs::path("T1"));
  QTest::mouseClick(dialog.flipButton(), Qt::LeftButton);
  EXPECT_TRUE(model.ShowingContinuation());
  EXPECT_EQ(dialog.preview()->shownPath().filename(), fs::path("T2"));
  EXPECT_EQ(dialog.flipButton()->text(), toQString(model.FlipCaption()));
}

TEST_F(LoadCardsDialogTest, DeletingAsksAndOnYesTheTemplateLeavesTreeAndDisk) {
  KrmLoadCardsModel model(Root(), L".tbl");
  model.Open();
  LoadCardsDialog dialog(model, strings);
  ASSERT_TRUE(model.SelectPath(L"/", L"T0"));
  dialog.rebuild();
  ASSERT_TRUE(dialog.deleteButton()->isEnabled());

  io.addAnswer(L"no");
  QTest::mouseClick(dialog.deleteButton(), Qt::LeftButton);
  EXPECT_TRUE(fs::exists(lib.path() / "T0.tbl"));
  io.addAnswer(L"yes");
  QTest::mouseClick(dialog.deleteButton(), Qt::LeftButton);
  EXPECT_EQ(io.messageBoxes().size(), 2u);
  EXPECT_FALSE(fs::exists(lib.path() / "T0.tbl"));
  EXPECT_EQ(model.Find(L"/", L"T0"), nullptr);
  EXPECT_EQ(Rows(dialog.tree()->topLevelItem(0)).size(), 4);
}

}  // namespace
