// KrmMakeTbl and KrmMakeCard run whole in the studio: the form drawn in the open
// drawing is picked from the table dialog, its classes chosen in the chooser, the
// table taken into a card from the library dialog, and the templates land in the
// card library.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <filesystem>

#include "authoring/authoring_test_support.h"
#include "host/svc/scoped_env.h"
#include "host/svc/tabulon_paths.h"
#include "authoring_steps.h"
#include "modal_script.h"
#include "support/test_support.h"
#include "host/ap/qaap_doc_manager.h"
#include "ui/dialogs/cell_descriptor_dialog.h"
#include "ui/dialogs/load_cards_dialog.h"
#include "ui/dialogs/make_card_dialog.h"
#include "ui/dialogs/make_table_dialog.h"
#include "ui/dialogs/sel_sgl_dialog.h"
#include "ui/studio/studio_user_io.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"

namespace {

namespace fs = std::filesystem;
using tabulon::test::ChooseRows;
using tabulon::test::ModalScript;
using tabulon::test::PickTemplate;
using tabulon::ui::LoadCardsDialog;
using tabulon::ui::MakeCardDialog;
using tabulon::ui::MakeTableDialog;
using tabulon::ui::SelSglDialog;

class StudioAuthoring : public ::testing::Test {
 protected:
  void SetUp() override {
    env.set("TABULON_HOME", home.path().string());
    tabulon::svc::setLibraryOverride({});  // a demo run earlier may have left its library
    tabulon::test::writeFile(home / "tabulon.ini", "[Paths]\nLocale=en\nLibrary=" + lib.path().string() + "\n");
    QaDbDatabase db;
    authtest::DrawForm(db);
    ASSERT_EQ(db.saveAs(home / "form.dxf"), Qa::eOk);
  }
  tabulon::test::ScratchDir home;
  tabulon::test::ScratchDir lib;
  tabulon::test::ScopedEnv env;
  tabulon::ui::UiStrings strings{"en"};
};

TEST_F(StudioAuthoring, TableAndCardTemplatesAreMadeByHand) {
  tabulon::ui::StudioWindow window(strings);
  ASSERT_TRUE(window.openDrawing(home / "form.dxf").ok());
  // The selection in the drawing: everything, then Enter.
  int requests = 0;
  QObject::connect(&window.userIO(), &tabulon::ui::StudioUserIO::waitingForInput, &window, [&] {
    ++requests;
    QTimer::singleShot(0, &window, [&window] {
      window.userIO().answerText(QStringLiteral("all"));
      window.userIO().answerText(QString());
    });
  });

  ModalScript script;
  script.then<MakeTableDialog>([](MakeTableDialog &dialog) {
    dialog.nameEdit()->clear();
    QTest::keyClicks(dialog.nameEdit(), QStringLiteral("P1"));
    QTest::mouseClick(dialog.pickButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.singleButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.multiButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.pageBaseButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  });
  script.then<SelSglDialog>([](SelSglDialog &d) { ChooseRows(d, {QStringLiteral("TITLE"), QStringLiteral("PAGE")}); });
  script.then<SelSglDialog>([](SelSglDialog &d) { ChooseRows(d, {QStringLiteral("ROW")}); });
  script.then<SelSglDialog>([](SelSglDialog &d) { ChooseRows(d, {QStringLiteral("ROW")}); });
  EXPECT_EQ(window.runCommandLine(QStringLiteral("KrmMakeTbl")), 1);
  EXPECT_TRUE(script.done());
  EXPECT_FALSE(script.failed());
  EXPECT_EQ(requests, 1);
  EXPECT_TRUE(fs::exists(lib.path() / "P1.tbl"));
  EXPECT_TRUE(fs::exists(lib.path() / "P1.dxf"));

  script.then<MakeCardDialog>([](MakeCardDialog &dialog) {
    dialog.nameEdit()->clear();
    QTest::keyClicks(dialog.nameEdit(), QStringLiteral("C1"));
    QTest::mouseClick(dialog.firstButton(), Qt::LeftButton);
    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  });
  script.then<LoadCardsDialog>([](LoadCardsDialog &dialog) { PickTemplate(dialog, QStringLiteral("P1")); });
  EXPECT_EQ(window.runCommandLine(QStringLiteral("KrmMakeCard")), 1);
  EXPECT_TRUE(script.done());
  KrmCardAttributes card;
  ASSERT_EQ(card.InitCard(tabulon::svc::fromPath(lib.path() / "C1")), 1);
  ASSERT_EQ(card.getTblCount(), 2);
  EXPECT_EQ(card.getTblFile(0), L"P1");
  EXPECT_EQ(card.getTblFile(1), L"P1");
}

}  // namespace

namespace {

// KrmCellDesc: the block picked at the command line, a property typed into the dialog,
// OK; the change is one undo step.
TEST_F(StudioAuthoring, CellDescriptionIsWrittenByTheCommandAndUndoneAsOneStep) {
  tabulon::ui::StudioWindow window(strings);
  ASSERT_TRUE(window.openDrawing(home / "form.dxf").ok());
  // The pick: a point on the base line of the first ROW reference (at 110, 120).
  QObject::connect(&window.userIO(), &tabulon::ui::StudioUserIO::waitingForInput, &window, [&window] {
    QTimer::singleShot(0, &window, [&window] { window.userIO().answerText(QStringLiteral("150,120")); });
  });
  ModalScript script;
  script.then<tabulon::ui::CellDescriptorDialog>([](tabulon::ui::CellDescriptorDialog &dialog) {
    EXPECT_EQ(dialog.blockLabel()->text(), QStringLiteral("ROW"));
    dialog.field(L"length")->setText(QStringLiteral("kNewline"));
    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  });
  ASSERT_EQ(window.runCommandLine(QStringLiteral("KrmCellDesc")), 1);
  EXPECT_TRUE(script.done());

  auto lengthNow = [&] {
    auto definition = FindAttributeDefinition(*qaWorkingDatabase(), L"ROW", L"工序");
    EXPECT_TRUE(definition.ok());
    KrmCellDescriptorEditor editor(*definition);
    return editor.Value(L"length");
  };
  EXPECT_EQ(lengthNow(), L"kNewline");
  ASSERT_TRUE(window.undo().ok());
  EXPECT_EQ(lengthNow(), L"");
}

}  // namespace
