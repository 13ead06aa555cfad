#include "editor/editor_commands.h"

#include <gtest/gtest.h>

#include "drawing/generation_library.h"
#include "editor/krm_dlg_create_crd.h"
#include "support/test_support.h"

namespace {

TEST(EditorCommands, FollowTheModeTheTableTheSelectionAndThePageMode) {
  tabulon::test::ScratchDir lib;
  KrmDlgCreateCrd dialog(nullptr, nullptr);
  ASSERT_EQ(dialog.LoadTemplate(gentest::WriteSampleLibrary(lib.path())), 1);
  dialog.OnInitDialog();
  dialog.SelectTab(0);  // the title block
  EXPECT_FALSE(KrmCommandExists(dialog, KrmEditorCommand::kUpdateDrawing));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kPreviewAllPages));
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kFinish));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kAddRow));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kCopy));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kArrangement));

  KrmCardData data;
  dialog.GetCardData(data);
  dialog.SelectTab(data.GetBaseGrid());
  dialog.AddRow();  // two rows, the second selected
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kAddRow));
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kCopy));
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kMoveRowUp));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kMoveRowDown));
  EXPECT_FALSE(KrmCommandEnabled(dialog, KrmEditorCommand::kNextPage));
  dialog.OnPageModeBox(true);
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kNextPage));
  dialog.OnPlacePages(true);
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kArrangement));

  dialog.SetEditMode(1);
  EXPECT_TRUE(KrmCommandEnabled(dialog, KrmEditorCommand::kUpdateDrawing));
}

}  // namespace
