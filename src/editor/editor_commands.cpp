// When the card editor's commands are enabled.
#include "editor/editor_commands.h"

#include "editor/krm_dlg_create_crd.h"

bool KrmCommandExists(const KrmDlgCreateCrd& dialog, KrmEditorCommand command) {
  switch (command) {
    case KrmEditorCommand::kPreviewPage:
    case KrmEditorCommand::kPreviewAllPages:
    case KrmEditorCommand::kUpdateDrawing:
    case KrmEditorCommand::kAutoUpdate:
      return dialog.GetEditMode() != 0;
    default:
      return true;
  }
}

bool KrmCommandEnabled(const KrmDlgCreateCrd& dialog, KrmEditorCommand command) {
  if (!KrmCommandExists(dialog, command)) return false;
  const bool selected = dialog.Grid().GetSelectedCount() > 0;
  switch (command) {
    case KrmEditorCommand::kCut:
    case KrmEditorCommand::kCopy:
    case KrmEditorCommand::kPaste:
    case KrmEditorCommand::kClear:
    case KrmEditorCommand::kWordLibrary:
    case KrmEditorCommand::kPickTableData:
    case KrmEditorCommand::kRecalcRow:
    case KrmEditorCommand::kRowHeight:
    case KrmEditorCommand::kColumnWidth:
    case KrmEditorCommand::kFitRows:
    case KrmEditorCommand::kFitColumns:
    case KrmEditorCommand::kHideRows:
    case KrmEditorCommand::kHideColumns:
    case KrmEditorCommand::kShowRows:
    case KrmEditorCommand::kShowColumns:
      return selected;
    case KrmEditorCommand::kAddRow:
    case KrmEditorCommand::kInsertRows:
    case KrmEditorCommand::kDeleteRows:
    case KrmEditorCommand::kPageMode:
      return dialog.OnMainTable();
    case KrmEditorCommand::kMoveRowUp:
      return dialog.OnMainTable() && dialog.CanMoveRow(false);
    case KrmEditorCommand::kMoveRowDown:
      return dialog.OnMainTable() && dialog.CanMoveRow(true);
    case KrmEditorCommand::kGoPage:
    case KrmEditorCommand::kFirstPage:
    case KrmEditorCommand::kPrevPage:
    case KrmEditorCommand::kNextPage:
    case KrmEditorCommand::kLastPage:
    case KrmEditorCommand::kPreviewPage:
      return dialog.PageModeBoxChecked();
    case KrmEditorCommand::kAutoArrange:
      return dialog.AutoArrangeEnabled();
    case KrmEditorCommand::kArrangement:
      return dialog.ArrangementEnabled();
    default:
      return true;
  }
}
