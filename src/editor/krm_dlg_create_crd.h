// KrmDlgCreateCrd: the card editor's logic, free of any widget. It owns the working copy
// of a card's data and the snapshot of what the drawing holds, the template, the grid
// projection (KrmGridCtrl) and the state of the page controls, and carries out the
// dialog's life cycle (create mode generates at finish, edit mode writes back through the
// drawing updater), its commands and keys. A window shows it and forwards the user's
// actions; results that the user must see go through the host's message boxes and
// command line. The settings service, the document record and the updater are the
// caller's and must outlive the object.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "drawing/placed_card.h"
#include "editor/krm_grid_ctrl.h"
#include "editor/row_page_dialogs.h"
#include "host/ap/krm_doc_value.h"
#include "host/ge/qage_point3d.h"
#include "host/svc/result.h"

class KrmRegService;
class QaDbDatabase;

// Brings the drawing from `oldData` to `newData` for a placed card; 1 on success.
using KrmDrawingUpdater =
    std::function<int(KrmCardTemplate& cardTemplate, KrmCardData& oldData, KrmCardData& newData, KrmPlacedCard& card)>;

class KrmDlgCreateCrd {
 public:
  enum class End { kOpen, kOk, kCancel };

  // Reads the stored page mode. `settings` and `document` may be null.
  KrmDlgCreateCrd(KrmRegService* settings, KrmDocValue* document);
  KrmDlgCreateCrd(const KrmDlgCreateCrd&) = delete;
  KrmDlgCreateCrd& operator=(const KrmDlgCreateCrd&) = delete;

  // --- What the openers set before the dialog opens.
  // 0 when the card can't be loaded.
  int LoadTemplate(const std::wstring& path);
  void SetEditMode(int on) { m_editMode = on; }
  int GetEditMode() const { return m_editMode; }
  void SetCardData(const KrmCardData& data) { m_cardData = data; }
  void SetCardSaved(const KrmCardData& data) { m_cardSaved = data; }
  void SetPlacedCard(const KrmPlacedCard& card) { m_placedCard = card; }
  void SetInsertPoint(const QaGePoint3d& point) { m_insertPoint = point; }
  // The drawing update of edit mode; UpdatePlacedCard unless another is given.
  void SetDrawingUpdater(KrmDrawingUpdater updater) { updater_ = std::move(updater); }

  // --- What the opener reads afterwards.
  void GetCardData(KrmCardData& out) const { out = m_cardData; }
  void GetCardSaved(KrmCardData& out) const { out = m_cardSaved; }
  int GetSaveOnCancel() const { return m_saveOnCancel; }
  void GetCardDir(KrmCardDir& out) const { m_template.GetDir(out); }
  int GetPlacePages() const { return m_template.GetRearrange(); }
  int GetAutoArrange() const { return m_template.GetAutoArrange(); }
  End GetEnd() const { return end_; }
  // The status of the generation that finish ran in create mode.
  const tabulon::Status& GetGenerationStatus() const { return generation_; }

  // --- Life cycle.
  void OnInitDialog();
  // The window's title: the given caption and the card's show name.
  std::wstring Title(const std::wstring& caption) const;
  // The rectangle to restore, when the document record has one (left + top nonzero).
  bool RestoredWindowRect(KrmWindowRect& out) const;
  void SetWindowRect(const KrmWindowRect& rect) { windowRect_ = rect; }
  void OnFinish();
  void OnCancelCard();
  void OnQuit() { end_ = End::kCancel; }
  // The window goes: the card's name leaves the document's list of open cards.
  void OnDestroy();
  void UpdateDrawing();
  void SetAutoUpdate(int on);
  int GetAutoUpdate() const { return m_autoUpdate; }

  // --- Tabs.
  std::vector<std::wstring> TabNames() const;
  int CurTab() const { return m_cardData.GetCurGrid(); }
  bool OnMainTable() const { return m_cardData.GetCurGrid() == m_cardData.GetBaseGrid(); }
  void SelectTab(int index);

  // --- The grid: a cell's edit ended (grid coordinates).
  void OnGridEndEdit(int row, int col);
  KrmGridCtrl& Grid() { return m_grid; }
  const KrmGridCtrl& Grid() const { return m_grid; }
  // The grid's replace wrote into cells.
  void NotePasted() { m_pasted = 1; }

  // --- Page controls.
  bool PageModeBoxChecked() const { return pageModeBox_; }
  bool PageModeBoxEnabled() const { return pageModeBoxEnabled_; }
  bool PageControlsEnabled() const { return pageControlsEnabled_; }
  const std::wstring& PageBoxText() const { return pageBox_; }
  void SetPageBoxText(const std::wstring& text) { pageBox_ = text; }
  const std::wstring& TotalLabel() const { return totalLabel_; }
  int GetPageMode() const { return m_pageMode; }
  // The page mode box clicked (or its menu entry).
  void OnPageModeBox(bool checked);
  void OnFirstPage();
  void OnPrevPage();
  void OnNextPage();
  void OnLastPage();
  void OnGoPage();
  void NextPageAtTop();
  void SetPageBox(int page, int clampHigh);
  int GetPageBox() const;
  int GetTotalPages() const;
  void ShowPageTotal();
  void ApplyPageMode();
  void ReloadGrid();
  // Pages of the main table.
  int MainPages() const;

  // --- Row commands (row_commands).
  void AddRow();
  // Insert rows: the proposal, then the dialog's answer.
  KrmDlgAddRow ProposeInsertRows();
  void ApplyInsertRows(const KrmDlgAddRow& dialog, bool ok);
  KrmDlgDelRow ProposeDeleteRows();
  void ApplyDeleteRows(const KrmDlgDelRow& dialog, bool ok);
  void MoveRowUp() { MoveRow(false); }
  void MoveRowDown() { MoveRow(true); }
  bool CanMoveRow(bool down) const;
  void RecalcRow();
  void RecalcAll();
  KrmDlgPageSet ProposePageSet() const;
  // Stores the numbering of an accepted dialog.
  void ApplyPageSet(const KrmDlgPageSet& dialog);
  KrmDlgArrang ProposeArrang() const;
  void ApplyArrang(const KrmDlgArrang& dialog);
  void OnPlacePages(bool checked);
  void OnAutoArrange(bool checked);
  bool PlacePagesChecked() const { return placePages_; }
  bool AutoArrangeChecked() const { return autoArrange_; }
  bool AutoArrangeEnabled() const { return placePages_; }
  bool ArrangementEnabled() const { return placePages_ && autoArrange_; }
  // The extents of a page (page box - 1) or of all pages of the placed card; false when
  // there is nothing to show.
  bool PreviewPageArea(QaGePoint3d& lower, QaGePoint3d& upper) const;
  bool PreviewAllArea(QaGePoint3d& lower, QaGePoint3d& upper) const;
  // Shows an area: the hint on the command line, then waits for a key or click.
  void ShowWindowArea(const QaGePoint3d& lower, const QaGePoint3d& upper);

  // --- Text from outside the cells.
  // A phrase of the word library into the selected cell, committed like a typed value.
  void InsertWord(const std::wstring& word);
  // Rows picked from the drawing into the table, from the focus row on; on the main
  // table several rows, else one. No row is added.
  void PickTableData();
  // The drawing's own data (its title block) into the focus row.
  void TakeDrawingData(QaDbDatabase* db);
  // Text picked from the drawing for an open cell editor; false when none was picked.
  bool PickTextForEditor(std::wstring& text);

  // --- Keys after the grid has handled them.
  // Ctrl with a letter ("I", "D", "N", "P", "S", "Q"); true when it ran a command.
  bool OnCtrlKey(wchar_t letter);
  // The Return character after the grid moved the selection.
  void OnReturn();

  // --- Exchange with files (the chosen path; exchange).
  void ImportTextFile(const std::wstring& path);
  tabulon::Status ExportTextFile(const std::wstring& path);
  void ImportSheetFile(const std::wstring& path);
  // On success the window has the system open the file; on failure nothing is shown.
  tabulon::Status ExportSheetFile(const std::wstring& path);
  const std::wstring& LastDataFile() const { return m_lastDataFile; }

  // The view options that do not persist.
  int m_showColHeader = 1;
  int m_gridLinesH = 1;
  int m_showRowHeader = 1;
  int m_gridLinesV = 1;
  int m_sortOnClick = 0;
  int m_sortNumeric = 0;
  int m_calcOnEdit = 1;
  int m_calcSkipZero = 1;

 private:
  void FillTabs();
  void CopyGridIntoData();
  void StoreRenumbered(KrmDataGrid& grid);
  void MoveRow(bool down);
  // The table row of a grid row by the row commands' rule.
  int TableRow(int gridRow) const;
  void FillPageNumbers();
  void AutoUpdate();
  void ShowFileError();
  void FillRowsFromMaps(const std::map<std::wstring, std::wstring>& single,
                        const std::vector<std::map<std::wstring, std::wstring>>& maps);

  KrmRegService* settings_;
  KrmDocValue* document_;
  KrmDrawingUpdater updater_;

  KrmGridCtrl m_grid;
  KrmCardData m_cardData;
  KrmCardData m_cardSaved;
  KrmPlacedCard m_placedCard;
  KrmCardTemplate m_template;
  QaGePoint3d m_insertPoint;
  int m_pageMode = 0;
  std::wstring m_lastDataFile;
  int m_editMode = 0;
  int m_autoUpdate = 0;
  int m_saveOnCancel = 0;
  int m_pasted = 0;

  End end_ = End::kOpen;
  tabulon::Status generation_;
  KrmWindowRect windowRect_;
  bool pageModeBox_ = false;
  bool pageModeBoxEnabled_ = false;
  bool pageControlsEnabled_ = false;
  std::wstring pageBox_;
  std::wstring totalLabel_;
  bool placePages_ = false;
  bool autoArrange_ = true;
};
