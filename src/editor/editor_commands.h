// The card editor's commands as a menu and its buttons know them, and the rules that
// enable them: which exist only in edit mode, which need selected cells, the main
// table, the page mode, or the page placing boxes. A window asks these when a menu
// opens or the state changes.
#pragma once

class KrmDlgCreateCrd;

enum class KrmEditorCommand {
  kFinish, kCancel, kQuit, kPrint,
  kImportText, kExportText, kImportSheet, kExportSheet,
  kCut, kCopy, kPaste, kClear, kFind, kReplace, kSelectAll,
  kWordLibrary, kPickTableData, kTakeDrawingData,
  kAddRow, kInsertRows, kDeleteRows, kMoveRowUp, kMoveRowDown,
  kPageMode, kGoPage, kFirstPage, kPrevPage, kNextPage, kLastPage,
  kPreviewPage, kPreviewAllPages, kUpdateDrawing, kAutoUpdate,
  kPlacePages, kAutoArrange, kArrangement, kPageNumbering,
  kRecalcRow, kRecalcAll, kCalcOnEdit, kSkipZeroResults,
  kRowHeight, kColumnWidth, kFitRows, kFitColumns, kHideRows, kHideColumns, kShowRows, kShowColumns,
  kShowHeaderRow, kShowRowLabels, kHorizontalLines, kVerticalLines,
  kSortOnClick, kNumericSort, kTextSort, kCellFont, kAbout, kKeyList,
};

// False for the commands that need a placed card while the editor is in create mode:
// their menu entries are removed.
bool KrmCommandExists(const KrmDlgCreateCrd& dialog, KrmEditorCommand command);
// Whether the command can run now.
bool KrmCommandEnabled(const KrmDlgCreateCrd& dialog, KrmEditorCommand command);
