// The table template dialog shows its model's lines and availability, and its buttons,
// name fields and fill-order list reach the model, up to the template written by OK.
#include "ui/dialogs/make_table_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring/authoring_test_support.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"
#include "ui/ui_strings.h"

namespace {

using authtest::Choose;
using tabulon::ui::MakeTableDialog;
using tabulon::ui::toQString;

class MakeTableDialogTest : public ::testing::Test {
 protected:
  MakeTableDialogTest() : scope(io), model(tabulon::svc::fromPath(lib.path())) {}

  // A dialog whose chooser takes the classes queued in `choices`, one per run.
  std::unique_ptr<MakeTableDialog> Open() {
    tabulon::ui::AuthoringRunners runners;
    runners.selSgl = [this](KrmSelSglModel &chooser) {
      if (choices.empty()) return KrmDialogEnd::kCancel;
      auto run = choices.front();
      choices.erase(choices.begin());
      return run(chooser);
    };
    return std::make_unique<MakeTableDialog>(model, runners, strings);
  }

  tabulon::test::ScratchDir lib;
  authtest::Form form;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
  KrmMakeTblModel model;
  std::vector<KrmSelSglRunner> choices;
  tabulon::ui::UiStrings strings{"en"};
};

TEST_F(MakeTableDialogTest, BeforeAPickOnlyTheNamesAndTheLibraryAreOffered) {
  auto dialog = Open();
  EXPECT_EQ(dialog->nameEdit()->text(), toQString(model.Name()));
  EXPECT_EQ(dialog->showNameEdit()->text(), toQString(model.ShowName()));
  EXPECT_EQ(dialog->statusLabel()->text(), toQString(model.StatusLine()));
  EXPECT_TRUE(dialog->chooseNameButton()->isEnabled());
  EXPECT_EQ(dialog->singleButton()->isEnabled(), model.Available().chooseSingle);
  EXPECT_FALSE(dialog->pageBaseButton()->isEnabled());
  EXPECT_FALSE(dialog->okButton()->isEnabled());
  EXPECT_FALSE(dialog->fillOrderBox()->isEnabled());
  EXPECT_EQ(dialog->fillOrderBox()->count(), 8);
}

TEST_F(MakeTableDialogTest, TypedNameIsFollowedByTheShowName) {
  auto dialog = Open();
  dialog->nameEdit()->clear();
  QTest::keyClicks(dialog->nameEdit(), QStringLiteral("Turn"));
  EXPECT_EQ(model.Name(), L"Turn");
  EXPECT_EQ(dialog->showNameEdit()->text(), QStringLiteral("Turn"));
  QTest::keyClicks(dialog->showNameEdit(), QStringLiteral(" 1"));
  EXPECT_EQ(model.ShowName(), L"Turn 1");
  EXPECT_EQ(model.Name(), L"Turn");
}

TEST_F(MakeTableDialogTest, ChoicesMadeThroughTheButtonsAreShownAndWrittenByOk) {
  auto dialog = Open();
  ASSERT_TRUE(model.TakeSelection(form.ids).ok());
  dialog->refresh();
  EXPECT_EQ(dialog->statusLabel()->text(), toQString(model.StatusLine()));
  EXPECT_TRUE(dialog->singleButton()->isEnabled());

  choices = {Choose({L"TITLE", L"PAGE"}), Choose({L"ROW"}), Choose({L"ROW"}), Choose({L"TITLE"}, L"页码")};
  QTest::mouseClick(dialog->singleButton(), Qt::LeftButton);
  QTest::mouseClick(dialog->multiButton(), Qt::LeftButton);
  QTest::mouseClick(dialog->pageBaseButton(), Qt::LeftButton);
  QTest::mouseClick(dialog->pageAttButton(0), Qt::LeftButton);
  EXPECT_EQ(dialog->singleLabel()->text(), toQString(model.SingleSummary()));
  EXPECT_EQ(dialog->multiLabel()->text(), toQString(model.MultiSummary()));
  EXPECT_EQ(dialog->pageBaseLabel()->text(), QStringLiteral("块名:ROW"));
  EXPECT_EQ(dialog->pageAttLabel(0)->text(), QStringLiteral("块名:TITLE,属性名:页码"));
  EXPECT_TRUE(dialog->pageAttLabel(1)->text().isEmpty());

  ASSERT_EQ(dialog->classList()->count(), 1);
  EXPECT_EQ(dialog->classList()->item(0)->text(), QStringLiteral("ROW"));
  ASSERT_TRUE(dialog->fillOrderBox()->isEnabled());
  dialog->fillOrderBox()->setCurrentIndex(5);
  EXPECT_EQ(model.CurrentFillOrder(), 5);

  ASSERT_TRUE(dialog->okButton()->isEnabled());
  QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog->result(), QDialog::Accepted);
  KrmTableAttributes table;
  ASSERT_EQ(table.InitTable(tabulon::svc::fromPath(lib.path() / "Drawing1.tbl")), 1);
  int order = -1, count = -1;
  ASSERT_EQ(table.getBlkNum(L"ROW", order, count), 1);
  EXPECT_EQ(order, 5);
  EXPECT_TRUE(std::filesystem::exists(lib.path() / "Drawing1.dxf"));
}

TEST_F(MakeTableDialogTest, OkRefusedByTheModelKeepsTheDialogOpenAndWritesNothing) {
  auto dialog = Open();
  ASSERT_TRUE(model.TakeSelection(form.ids).ok());
  choices = {Choose({L"ROW"})};
  dialog->refresh();
  QTest::mouseClick(dialog->multiButton(), Qt::LeftButton);
  QTest::mouseClick(dialog->okButton(), Qt::LeftButton);  // no page base
  EXPECT_NE(dialog->result(), QDialog::Accepted);
  ASSERT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_EQ(io.messageBoxes()[0], L"请指定分页基准块");
  EXPECT_FALSE(std::filesystem::exists(lib.path() / "Drawing1.tbl"));
}

TEST(FillOrderIcons, EachOrderHasItsOwnPicture) {
  std::vector<QImage> pictures;
  for (int order = 0; order < 8; ++order)
    pictures.push_back(MakeTableDialog::fillOrderIcon(order).pixmap(32, 32).toImage());
  for (std::size_t a = 0; a < pictures.size(); ++a)
    for (std::size_t b = a + 1; b < pictures.size(); ++b) EXPECT_NE(pictures[a], pictures[b]) << a << " " << b;
}

}  // namespace
