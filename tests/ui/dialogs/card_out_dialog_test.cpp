// The transfer dialog lists the cards of its model's source folder, hands the user's
// selection to it, and copies on OK.
#include "ui/dialogs/card_out_dialog.h"

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

namespace fs = std::filesystem;
using tabulon::svc::fromPath;

TEST(CardOutDialog, TheSelectedCardsAloneAreCopiedWithTheirTables) {
  tabulon::test::ScratchDir lib;
  tabulon::test::ScratchDir out;
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  const fs::path src = lib.path() / "src";
  authtest::WriteTable(src, L"T1", L"ROW");
  authtest::WriteTable(src, L"T2", L"ROW");
  authtest::WriteCard(src, L"C1", L"T1", L"T1");
  authtest::WriteCard(src, L"C2", L"T2", L"T2");

  KrmCardOutModel model(fromPath(lib.path()), fromPath(src) + L"/");
  tabulon::ui::UiStrings strings{"en"};
  tabulon::ui::CardOutDialog dialog(model, strings);
  EXPECT_EQ(dialog.sourceEdit()->text(), tabulon::ui::toQString(model.SourcePath()));
  ASSERT_EQ(dialog.cardList()->count(), 2);
  EXPECT_EQ(dialog.cardList()->selectedItems().size(), 2);

  dialog.cardList()->item(1)->setSelected(false);
  EXPECT_EQ(model.Selection(), (std::vector<int>{0}));
  dialog.targetEdit()->clear();
  QTest::keyClicks(dialog.targetEdit(), QString::fromStdString(out.path().string()));
  EXPECT_EQ(model.TargetPath(), fromPath(out.path()));

  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  const bool firstIsC1 = fs::exists(out.path() / "C1.crd");
  EXPECT_NE(firstIsC1, fs::exists(out.path() / "C2.crd"));
  EXPECT_TRUE(fs::exists(out.path() / (firstIsC1 ? "T1.tbl" : "T2.tbl")));
  EXPECT_FALSE(fs::exists(out.path() / (firstIsC1 ? "T2.tbl" : "T1.tbl")));
}

}  // namespace
