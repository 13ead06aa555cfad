// The card template dialog shows the tables chosen in the library and the model's
// arrangement summary, and writes the card through its model on OK.
#include "ui/dialogs/make_card_dialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring/authoring_test_support.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::ui::MakeCardDialog;
using tabulon::ui::toQString;

class MakeCardDialogTest : public ::testing::Test {
 protected:
  MakeCardDialogTest() : scope(io), model(tabulon::svc::fromPath(lib.path())) {
    authtest::WriteTable(lib.path(), L"T1", L"ROW");
    authtest::WriteTable(lib.path(), L"T2", L"LINE");
  }
  std::unique_ptr<MakeCardDialog> Open(std::function<bool(KrmCardDir &)> arrangement = {}) {
    tabulon::ui::AuthoringRunners runners;
    runners.loadCards = [this](KrmLoadCardsModel &library) {
      library.Open();
      return authtest::Pick(L"/", picks.at(picked++))(library);
    };
    runners.arrangement = std::move(arrangement);
    return std::make_unique<MakeCardDialog>(model, runners, strings);
  }

  tabulon::test::ScratchDir lib;
  QaEdScriptedIO io;
  QaEdUserIOScope scope;
  KrmMakeCardModel model;
  std::vector<std::wstring> picks;
  std::size_t picked = 0;
  tabulon::ui::UiStrings strings{"en"};
};

TEST_F(MakeCardDialogTest, ATableChosenForTheFirstPageServesBothAndOkWritesTheCard) {
  auto dialog = Open();
  EXPECT_FALSE(dialog->arrangeButton()->isEnabled());
  picks = {L"T1"};
  QTest::mouseClick(dialog->firstButton(), Qt::LeftButton);
  EXPECT_EQ(dialog->firstLabel()->text(), toQString(model.FirstDisplay()));
  EXPECT_EQ(dialog->nextLabel()->text(), toQString(model.NextDisplay()));
  EXPECT_FALSE(dialog->nextLabel()->text().isEmpty());
  EXPECT_EQ(dialog->summaryLabel()->text(), toQString(model.Summary()));

  dialog->nameEdit()->clear();
  QTest::keyClicks(dialog->nameEdit(), QStringLiteral("C1"));
  EXPECT_EQ(dialog->showNameEdit()->text(), QStringLiteral("C1"));
  QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog->result(), QDialog::Accepted);
  EXPECT_TRUE(std::filesystem::exists(lib.path() / "C1.crd"));
}

TEST_F(MakeCardDialogTest, TablesThatDisagreeAreNamedAndNothingIsWritten) {
  auto dialog = Open();
  picks = {L"T1", L"T2"};
  QTest::mouseClick(dialog->firstButton(), Qt::LeftButton);
  QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
  ASSERT_TRUE(dialog->compareButton()->isEnabled());
  QTest::mouseClick(dialog->compareButton(), Qt::LeftButton);
  ASSERT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_NE(io.messageBoxes()[0].find(L"分页基准块"), std::wstring::npos);
  QTest::mouseClick(dialog->okButton(), Qt::LeftButton);
  EXPECT_NE(dialog->result(), QDialog::Accepted);
  EXPECT_FALSE(std::filesystem::exists(lib.path() / "Drawing1.crd"));
}

TEST_F(MakeCardDialogTest, TheArrangementEditedReachesTheSummary) {
  auto dialog = Open([](KrmCardDir &dir) {
    dir.SetFstN(2);
    dir.SetDir(3);
    return true;
  });
  ASSERT_TRUE(dialog->arrangeButton()->isEnabled());
  QTest::mouseClick(dialog->arrangeButton(), Qt::LeftButton);
  EXPECT_EQ(model.Arrangement().GetFstN(), 2);
  EXPECT_EQ(dialog->summaryLabel()->text(), toQString(KrmMakeCardModel::SummaryOf(model.Arrangement())));
}

}  // namespace
