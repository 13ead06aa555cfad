// Several drawings at once: each a document of the document manager, the current one
// following the tab; the title shows the file and a changed mark; closing a changed
// drawing asks.
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include <gtest/gtest.h>

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "host/ed/qa_message_box.h"
#include "support/test_support.h"
#include "ui/studio/studio_user_io.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"
#include "ui_test_drawing.h"

namespace {

class StudioDocuments : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char *name : {"a.dxf", "b.dxf"}) {
      QaDbDatabase db;
      tabulon::test::FillTestDrawing(db);
      ASSERT_EQ(db.saveAs(dir / name), Qa::eOk);
    }
  }
  tabulon::test::ScratchDir dir;
  tabulon::ui::UiStrings strings{"en"};
};

TEST_F(StudioDocuments, EachDrawingIsADocumentAndTheTabPicksTheCurrentOne) {
  tabulon::ui::StudioWindow window(strings);
  auto a = window.openDrawing(dir / "a.dxf");
  auto b = window.openDrawing(dir / "b.dxf");
  ASSERT_TRUE(a.ok());
  ASSERT_TRUE(b.ok());
  EXPECT_EQ(qaDocManager().documentCount(), 2);
  EXPECT_EQ(qaCurDoc(), *b);
  window.findChild<QTabWidget *>()->setCurrentIndex(0);
  EXPECT_EQ(qaCurDoc(), *a);
  EXPECT_EQ(window.currentDocument(), *a);
  EXPECT_TRUE(window.windowTitle().startsWith(QStringLiteral("a.dxf")));
  // The last opened comes first among the recent files.
  const QStringList recent = window.recentFiles();
  ASSERT_GE(recent.size(), 2);
  EXPECT_TRUE(recent.at(0).endsWith(QStringLiteral("b.dxf")));
  EXPECT_TRUE(recent.at(1).endsWith(QStringLiteral("a.dxf")));
}

// A drawing with one reference to a block whose name carries a prefix.
void writePrefixedBlockDrawing(const std::filesystem::path &path) {
  QaDbDatabase db;
  QaDbObjectId block;
  {
    QaDbObjectPointer<QaDbBlockTable> blocks(db.blockTableId(), QaDb::kForWrite);
    blocks->add(std::make_unique<QaDbBlockTableRecord>(L"P1_CELL"), block);
    block.rawObject()->close();
  }
  {
    QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForWrite);
    QaDbObjectId line;
    record->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(5, 5, 0)), line);
    line.rawObject()->close();
  }
  QaDbObjectPointer<QaDbBlockTableRecord> model(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId ref;
  model->appendQaDbEntity(std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), block), ref);
  ref.rawObject()->close();
  model.close();
  ASSERT_EQ(db.saveAs(path), Qa::eOk);
}

TEST_F(StudioDocuments, ChangedDrawingShowsTheMarkAndClosingAsks) {
  const auto file = dir / "p.dxf";
  writePrefixedBlockDrawing(file);
  const std::string original = tabulon::test::readFile(file);
  tabulon::ui::StudioWindow window(strings);
  ASSERT_TRUE(window.openDrawing(file).ok());
  EXPECT_FALSE(window.isWindowModified());
  QSignalSpy finished(&window, &tabulon::ui::StudioWindow::scriptFinished);
  window.runScript({QStringLiteral("KrmDelBlkID"), QStringLiteral("all"), QString()});
  ASSERT_TRUE(finished.wait(5000));
  EXPECT_TRUE(window.isWindowModified());
  EXPECT_TRUE(window.windowTitle().contains(QStringLiteral("p.dxf[*]")));

  auto &io = window.userIO();
  io.setUnattendedBoxes(true);
  EXPECT_FALSE(window.closeCurrent());  // nobody answers: Cancel keeps it open
  EXPECT_EQ(window.documentCount(), 1);
  io.queueBoxAnswer(IDNO);
  EXPECT_TRUE(window.closeCurrent());
  EXPECT_EQ(window.documentCount(), 0);
  EXPECT_EQ(tabulon::test::readFile(file), original);  // not saved
}

}  // namespace
