// The dialog base keeps its geometry in the settings store and can step aside for the
// drawing while a modal run goes on.
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "ui/gadgets/resize_dialog.h"

namespace {

using tabulon::ui::CResizeDlg;

TEST(ResizeDialog, ReopensWhereItWasClosed) {
  const QString name = QStringLiteral("ResizeDialogTest");
  {
    CResizeDlg dlg(name);
    dlg.show();
    dlg.setGeometry(40, 50, 333, 222);
    dlg.accept();
  }
  const auto stored = CResizeDlg::StoredGeometry(name);
  ASSERT_TRUE(stored.has_value());
  EXPECT_EQ(stored->width(), 333);
  EXPECT_EQ(stored->height(), 222);
  CResizeDlg again(name);
  again.show();
  EXPECT_EQ(again.width(), 333);
  again.reject();
}

TEST(ResizeDialog, EditorCommandHidesWithoutEndingTheModalRun) {
  CResizeDlg dlg(QString{});
  bool hiddenMeanwhile = false;
  bool stillRunning = false;
  QTimer::singleShot(0, &dlg, [&] {
    dlg.BeginEditorCommand();
    hiddenMeanwhile = !dlg.isVisible();
    QTimer::singleShot(10, &dlg, [&] {
      stillRunning = true;  // the modal loop kept running while hidden
      dlg.CompleteEditorCommand(1);
      EXPECT_TRUE(dlg.isVisible());
      dlg.accept();
    });
  });
  EXPECT_EQ(dlg.exec(), QDialog::Accepted);
  EXPECT_TRUE(hiddenMeanwhile);
  EXPECT_TRUE(stillRunning);
}

}  // namespace
