// Undo and redo of whole commands on a drawing, without a window.
#include <gtest/gtest.h>

#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "ui/studio/drawing_history.h"
#include "ui_test_drawing.h"

namespace {

using tabulon::ui::DrawingHistory;

int liveEntities(QaDbDatabase &db) {
  QaDbObjectPointer<QaDbBlockTableRecord> model(db.modelSpaceId(), QaDb::kForRead);
  return static_cast<int>(model->liveEntityIds().size());
}

void eraseByHandle(QaDbDatabase &db, QaDbHandle handle) {
  QaDbObjectPointer<QaDbEntity> e(db.objectIdFromHandle(handle), QaDb::kForWrite);
  ASSERT_TRUE(e);
  e->erase();
}

class DrawingHistoryTest : public ::testing::Test {
 protected:
  DrawingHistoryTest() : handles(tabulon::test::FillTestDrawing(db)) {}
  QaDbDatabase db;
  tabulon::test::TestDrawing handles;
  DrawingHistory history;
};

TEST_F(DrawingHistoryTest, ACommandThatChangesNothingLeavesNoStep) {
  ASSERT_TRUE(history.begin(db).ok());
  EXPECT_FALSE(history.end(db, L"Nothing"));
  EXPECT_FALSE(history.canUndo());
}

TEST_F(DrawingHistoryTest, UndoBringsBackWhatTheCommandErasedAndRedoErasesItAgain) {
  ASSERT_TRUE(history.begin(db).ok());
  eraseByHandle(db, handles.circle);
  ASSERT_TRUE(history.end(db, L"Erase"));
  EXPECT_EQ(history.undoName(), L"Erase");
  EXPECT_EQ(liveEntities(db), 3);

  ASSERT_TRUE(history.undo(db).ok());
  EXPECT_EQ(liveEntities(db), 4);
  EXPECT_FALSE(db.objectIdFromHandle(handles.circle).isErased());
  EXPECT_TRUE(history.canRedo());

  ASSERT_TRUE(history.redo(db).ok());
  EXPECT_EQ(liveEntities(db), 3);
  EXPECT_TRUE(history.canUndo());
  EXPECT_FALSE(history.canRedo());
}

TEST_F(DrawingHistoryTest, ANewStepDropsTheRedoSteps) {
  ASSERT_TRUE(history.begin(db).ok());
  eraseByHandle(db, handles.circle);
  ASSERT_TRUE(history.end(db, L"One"));
  ASSERT_TRUE(history.undo(db).ok());
  ASSERT_TRUE(history.begin(db).ok());
  eraseByHandle(db, handles.left);
  ASSERT_TRUE(history.end(db, L"Two"));
  EXPECT_FALSE(history.canRedo());
  EXPECT_EQ(history.undoName(), L"Two");
}

TEST_F(DrawingHistoryTest, ObjectsChangedBeforeTheCommandStayFlaggedAfterIt) {
  // The new drawing's objects are all flagged modified; a command in between must not
  // lose that, or a save would write them as they were read.
  ASSERT_TRUE(DrawingHistory::changed(db));
  ASSERT_TRUE(history.begin(db).ok());
  EXPECT_FALSE(DrawingHistory::changed(db));
  history.end(db, L"Nothing");
  EXPECT_TRUE(db.objectIdFromHandle(handles.left).rawObject()->isModified());
}

TEST_F(DrawingHistoryTest, NothingToUndoSaysSo) {
  const auto status = history.undo(db);
  ASSERT_FALSE(status.ok());
  EXPECT_FALSE(status.error().message.empty());
}

}  // namespace
