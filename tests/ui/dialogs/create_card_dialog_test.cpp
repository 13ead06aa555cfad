// The card editor's window against its model: what the model holds is what the window
// shows, and what the user does in the window reaches the model.
#include "ui/dialogs/create_card_dialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <fstream>

#include "drawing/generation_library.h"
#include "editor/krm_dlg_create_crd.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/krm_reg_service.h"
#include "support/test_support.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/grid/grid_ctrl.h"
#include "ui/grid/grid_find.h"
#include "ui/grid/grid_model.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::ui::CreateCardDialog;
using tabulon::ui::toQString;

// Runs `f` on the next modal window that opens (the small dialogs).
void OnNextModal(std::function<void(QWidget&)> f) {
  QTimer::singleShot(0, [f = std::move(f)] {
    QWidget* modal = QApplication::activeModalWidget();
    ASSERT_NE(modal, nullptr);
    f(*modal);
  });
}

// The sample card: TITLE, BATCH, ROW (the main table: 5 rows on the first page, 8 on
// each further one) and SIGN, opened in create mode on the main table.
class CardEditorWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    previousHome_ = getenv("TABULON_HOME") != nullptr ? getenv("TABULON_HOME") : "";
    setenv("TABULON_HOME", home.path().c_str(), 1);
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "card.dxf");
    model = std::make_unique<KrmDlgCreateCrd>(&settings, &document);
    ASSERT_EQ(model->LoadTemplate(gentest::WriteSampleLibrary(lib.path())), 1);
    window = std::make_unique<CreateCardDialog>(*model, strings);
    KrmCardData data;
    model->GetCardData(data);
    window->tabs().setCurrentIndex(data.GetBaseGrid());
  }
  void TearDown() override {
    window.reset();
    model.reset();
    qaDocManager().closeAll();
    setenv("TABULON_HOME", previousHome_.c_str(), 1);
  }

  int MainRows() const {
    KrmCardData data;
    model->GetCardData(data);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid.RowCount();
  }
  std::wstring MainCell(int row, int col) const {
    KrmCardData data;
    model->GetCardData(data);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid.GetCell(row, col);
  }
  // Types into grid cell (row, col) through its editor, ended by `key`.
  void TypeInto(int row, int col, const QString& text, Qt::Key key = Qt::Key_Return) {
    tabulon::ui::CGridCtrl& grid = window->grid();
    const QModelIndex index = grid.gridModel().indexOf(row, col);
    grid.setCurrentIndex(index);
    grid.edit(index);
    QWidget* editor = grid.indexWidget(index);
    ASSERT_NE(editor, nullptr);
    // Key events carry only Latin-1; the editor gets the text as an input method would.
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (line == nullptr) line = editor->findChild<QLineEdit*>();
    ASSERT_NE(line, nullptr);
    line->setText(text);
    QTest::keyClick(line, key);
    QCoreApplication::processEvents();  // Return commits through a queued call
  }
  void Click(const char* name) {
    QPushButton* b = window->button(QString::fromLatin1(name));
    ASSERT_NE(b, nullptr) << name;
    ASSERT_TRUE(b->isEnabled()) << name;
    b->click();
  }
  // What the window's grid shows equals the model's grid, cell by cell.
  void ExpectGridShown() {
    const KrmGridCtrl& source = model->Grid();
    tabulon::ui::CGridCtrl& shown = window->grid();
    ASSERT_EQ(shown.GetRowCount(), source.GetRowCount());
    ASSERT_EQ(shown.GetColumnCount(), source.GetColumnCount());
    for (int r = 0; r < source.GetRowCount(); ++r) {
      for (int c = 0; c < source.GetColumnCount(); ++c) {
        EXPECT_EQ(shown.GetItemText(r, c), toQString(source.GetItemText(r, c))) << r << "," << c;
      }
    }
  }

  tabulon::test::ScratchDir home;
  tabulon::test::ScratchDir lib;
  tabulon::ui::UiStrings strings{"zh_CN"};
  KrmRegService settings;
  KrmDocValue document;
  QaEdScriptedIO io;
  QaEdUserIOScope scope{io};
  std::unique_ptr<KrmDlgCreateCrd> model;
  std::unique_ptr<CreateCardDialog> window;

 private:
  std::string previousHome_;
};

TEST_F(CardEditorWindow, ShowsTheModelsTabsGridAndPageTotal) {
  const auto names = model->TabNames();
  ASSERT_EQ(window->tabs().count(), static_cast<int>(names.size()));
  for (int i = 0; i < window->tabs().count(); ++i) EXPECT_EQ(window->tabs().tabText(i), toQString(names[static_cast<std::size_t>(i)]));
  EXPECT_EQ(window->tabs().currentIndex(), model->CurTab());
  ExpectGridShown();
  EXPECT_EQ(window->totalLabel().text(), toQString(model->TotalLabel()));
  EXPECT_TRUE(window->pageModeBox().isEnabled());
}

TEST_F(CardEditorWindow, CreateModeHidesTheCommandsOfAPlacedCard) {
  for (const char* name : {"updateDrawing", "previewPage", "previewAll", "pickCard"}) {
    EXPECT_TRUE(window->button(QString::fromLatin1(name))->isHidden()) << name;
  }
}

TEST_F(CardEditorWindow, ASideTableDisablesTheRowCommandsAndPageMode) {
  window->tabs().setCurrentIndex(0);  // TITLE
  EXPECT_EQ(model->CurTab(), 0);
  EXPECT_FALSE(window->button(QStringLiteral("addRow"))->isEnabled());
  EXPECT_FALSE(window->pageModeBox().isEnabled());
  ExpectGridShown();
}

TEST_F(CardEditorWindow, TypedTextIsCommittedAndReturnOnTheLastRowAddsOne) {
  TypeInto(1, 2, QStringLiteral("车外圆"));
  EXPECT_EQ(MainCell(0, 1), L"车外圆");
  EXPECT_EQ(MainRows(), 2);
  ExpectGridShown();
}

TEST_F(CardEditorWindow, TheCellBeingEditedTellsHowManyRowBlocksItsTextWillTake) {
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  tabulon::ui::CGridCtrl& grid = window->grid();
  const QModelIndex index = grid.gridModel().indexOf(1, 3);  // 内容, a wrapping cell 60 wide
  grid.setCurrentIndex(index);
  grid.edit(index);
  auto* line = qobject_cast<QLineEdit*>(grid.indexWidget(index));
  ASSERT_NE(line, nullptr);
  line->setFocus();
  QCoreApplication::processEvents();
  EXPECT_TRUE(window->landingLabel().text().isEmpty());
  line->setText(QString(60, QChar(0x8F66)));  // sixty times 车
  EXPECT_TRUE(window->landingLabel().text().contains(QStringLiteral("行"))) << window->landingLabel().text().toStdString();
  QTest::keyClick(line, Qt::Key_Tab);
  QCoreApplication::processEvents();
  EXPECT_TRUE(window->landingLabel().text().isEmpty());
}

TEST_F(CardEditorWindow, RowsAddedPastThePageAreCountedAndPageModeTurnsPages) {
  for (int i = 0; i < 6; ++i) Click("addRow");
  EXPECT_EQ(MainRows(), 7);
  EXPECT_EQ(window->totalLabel().text(), QStringLiteral("/2"));
  window->pageModeBox().click();
  EXPECT_TRUE(model->PageModeBoxChecked());
  EXPECT_EQ(window->grid().GetRowCount(), 1 + 5);
  Click("nextPage");
  EXPECT_EQ(window->pageBox().text(), QStringLiteral("2"));
  EXPECT_EQ(window->grid().GetRowCount(), 1 + 2);
  ExpectGridShown();
}

TEST_F(CardEditorWindow, TheInsertDialogsCountReachesTheRows) {
  OnNextModal([](QWidget& dialog) {
    auto* count = dialog.findChild<QLineEdit*>(QStringLiteral("count"));
    ASSERT_NE(count, nullptr);
    count->setText(QStringLiteral("3"));
    static_cast<QDialog&>(dialog).accept();
  });
  Click("insertRows");
  EXPECT_EQ(MainRows(), 4);
}

TEST_F(CardEditorWindow, ARefusedRowCountKeepsTheDialogOpenUntilCancelled) {
  OnNextModal([](QWidget& dialog) {
    dialog.findChild<QLineEdit*>(QStringLiteral("count"))->setText(QStringLiteral("0"));
    OnNextModal([](QWidget& box) { static_cast<QDialog&>(box).reject(); });  // the message
    static_cast<QDialog&>(dialog).accept();
    QTimer::singleShot(0, &dialog, [&dialog] {
      EXPECT_TRUE(dialog.isVisible());
      static_cast<QDialog&>(dialog).reject();
    });
  });
  Click("insertRows");
  EXPECT_EQ(MainRows(), 1);
}

TEST_F(CardEditorWindow, ExportedTextComesBackByImport) {
  TypeInto(1, 2, QStringLiteral("粗车"), Qt::Key_Tab);
  const QString file = QString::fromStdString((lib.path() / "rows.txt").string());
  KrmFileDialogSpec asked;
  window->setFileChooser([&](const KrmFileDialogSpec& request) {
    asked = request;
    return file;
  });
  Click("exportText");
  EXPECT_TRUE(asked.save);
  ASSERT_TRUE(window->lastExport().ok()) << window->lastExport().describe();
  TypeInto(1, 2, QStringLiteral("精车"), Qt::Key_Tab);
  Click("importText");
  EXPECT_FALSE(asked.save);
  EXPECT_EQ(MainCell(0, 1), L"粗车");
  ExpectGridShown();
}

TEST_F(CardEditorWindow, ExportedSheetOpensAfterwardsAndAFailedOneDoesNot) {
  TypeInto(1, 2, QStringLiteral("粗车"), Qt::Key_Tab);
  QString chosen = QString::fromStdString((lib.path() / "rows.xlsx").string());
  window->setFileChooser([&](const KrmFileDialogSpec&) { return chosen; });
  QStringList opened;
  window->setFileOpener([&](const QString& path) { opened << path; });
  Click("exportSheet");
  ASSERT_TRUE(window->lastExport().ok()) << window->lastExport().describe();
  EXPECT_EQ(opened, QStringList{chosen});
  chosen = QString::fromStdString((lib.path() / "missing" / "rows.xlsx").string());
  Click("exportSheet");
  EXPECT_FALSE(window->lastExport().ok());
  EXPECT_EQ(opened.size(), 1);
}

TEST_F(CardEditorWindow, FinishInCreateModeGeneratesTheCard) {
  TypeInto(1, 2, QStringLiteral("车外圆"), Qt::Key_Tab);
  Click("finish");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  EXPECT_EQ(model->GetEnd(), KrmDlgCreateCrd::End::kOk);
  EXPECT_TRUE(model->GetGenerationStatus().ok());
  EXPECT_FALSE(document.lastCardIds.empty());
}

TEST_F(CardEditorWindow, TheCellTheUserSelectsIsTheModelsSelection) {
  window->grid().setCurrentIndex(window->grid().gridModel().indexOf(1, 2));
  const KrmCellRange selected = model->Grid().GetSelectedCellRange();
  EXPECT_EQ(selected.top, 1);
  EXPECT_EQ(selected.left, 2);
  EXPECT_EQ(model->Grid().GetFocusCell().first, 1);
  EXPECT_EQ(model->Grid().GetFocusCell().second, 2);
}

TEST_F(CardEditorWindow, CancelOfAnUnchangedCardClosesWithoutAsking) {
  Click("cancel");
  EXPECT_EQ(model->GetEnd(), KrmDlgCreateCrd::End::kCancel);
  EXPECT_TRUE(io.messageBoxes().empty());
}

}  // namespace
