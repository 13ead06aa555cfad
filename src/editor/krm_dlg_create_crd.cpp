// The card editor's life cycle, commits, page controls and keys.
#include "editor/krm_dlg_create_crd.h"

#include <algorithm>
#include <limits>

#include "card/paging.h"
#include "drawing/card_generation.h"
#include "drawing/extents_util.h"
#include "drawing/placed_card_update.h"
#include "editor/dialog_settings.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaed_prompts.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

namespace {

constexpr unsigned kAllRows = std::numeric_limits<unsigned>::max();

}  // namespace

KrmDlgCreateCrd::KrmDlgCreateCrd(KrmRegService* settings, KrmDocValue* document)
    : settings_(settings),
      document_(document),
      updater_([](KrmCardTemplate& cardTemplate, KrmCardData& oldData, KrmCardData& newData, KrmPlacedCard& card) {
        return UpdatePlacedCard(cardTemplate, oldData, newData, card);
      }),
      m_grid(settings) {
  std::wstring stored;
  if (ReadDialogSetting(settings_, kCreateCardSubKey, kCutPageValue, stored)) m_pageMode = BoxInteger(stored) != 0 ? 1 : 0;
}

int KrmDlgCreateCrd::LoadTemplate(const std::wstring& path) { return m_template.LoadTemplate(path) == 1 ? 1 : 0; }

int KrmDlgCreateCrd::MainPages() const {
  KrmDataGrid main;
  if (!m_cardData.GetGridAt(m_cardData.GetBaseGrid(), main)) return 1;
  return PageCount(main.RowCount(), main.rowsFirst, std::max(main.rowsNext, 1));
}

void KrmDlgCreateCrd::OnInitDialog() {
  if (OnMainTable()) {
    pageModeBox_ = m_pageMode != 0;
    pageModeBoxEnabled_ = true;
    ApplyPageMode();
    if (pageModeBox_) pageBox_ = std::to_wstring(m_cardData.GetCurRow() + 1);
  } else {
    pageModeBox_ = false;
    pageModeBoxEnabled_ = false;
    ApplyPageMode();
  }
  ShowPageTotal();
  FillTabs();
  placePages_ = false;
  autoArrange_ = true;
}

void KrmDlgCreateCrd::FillTabs() {
  if (!m_editMode) m_cardData.InitFromTemplate(m_template);
  m_cardData.RunColumnCalc(kAllRows, m_calcSkipZero);
  FillPageNumbers();
  m_cardSaved.FillPageNumbers(1, MainPages());
  // A fresh card's numbering may name the pages; the page total follows the table.
  ShowPageTotal();
  ReloadGrid();
  if (!m_editMode) m_cardSaved = m_cardData;
}

void KrmDlgCreateCrd::FillPageNumbers() {
  try {
    m_cardData.FillPageNumbers(1, MainPages());
  } catch (const std::out_of_range&) {
    // A binding that names an attribute the class lacks writes nothing.
  }
}

std::wstring KrmDlgCreateCrd::Title(const std::wstring& caption) const { return caption + m_template.GetCardShowName(); }

bool KrmDlgCreateCrd::RestoredWindowRect(KrmWindowRect& out) const {
  if (document_ == nullptr || document_->dialogRect.left + document_->dialogRect.top == 0) return false;
  out = document_->dialogRect;
  return true;
}

std::vector<std::wstring> KrmDlgCreateCrd::TabNames() const {
  std::vector<std::wstring> names;
  m_cardData.GetGridNames(names);
  return names;
}

void KrmDlgCreateCrd::SelectTab(int index) {
  if (index < 0 || index >= m_cardData.GridCount()) return;
  m_cardData.SetCurGrid(index);
  if (OnMainTable()) {
    pageModeBoxEnabled_ = true;
    pageModeBox_ = m_pageMode != 0;
  } else {
    pageModeBoxEnabled_ = false;
    pageModeBox_ = false;
  }
  ApplyPageMode();
  if (pageModeBox_) pageBox_ = std::to_wstring(m_cardData.GetCurRow() + 1);
  ReloadGrid();
}

void KrmDlgCreateCrd::CopyGridIntoData() {
  for (int r = 1; r < m_grid.GetRowCount(); ++r) {
    for (int c = 1; c < m_grid.GetColumnCount(); ++c) m_cardData.SetCell(m_grid.GetItemText(r, c), r - 1, c - 1);
  }
}

void KrmDlgCreateCrd::OnFinish() {
  end_ = End::kOk;
  if (document_ != nullptr) document_->dialogRect = windowRect_;
  WriteDialogSetting(settings_, kCreateCardSubKey, kCutPageValue, std::to_wstring(m_pageMode));
  if (m_grid.GetModified() && m_pasted) CopyGridIntoData();
  m_template.SetArrangeOptions(placePages_ ? 1 : 0, autoArrange_ ? 1 : 0);
  m_template.SetInsertPoint(m_insertPoint);
  m_cardData.KeepBlankRows();
  if (m_editMode) return;
  std::vector<QaDbObjectId> ids;
  if (CreateCardPages(m_template, m_cardData, ids) != 1) {
    generation_ = tabulon::MakeError("the card could not be generated").inFile(tabulon::svc::toUtf8(m_template.GetPath()));
  }
  if (document_ != nullptr) document_->lastCardIds = ids;
}

void KrmDlgCreateCrd::OnCancelCard() {
  if (m_grid.GetModified()) CopyGridIntoData();
  if (!m_cardData.IsDifferent(m_cardSaved)) {
    end_ = End::kCancel;
    return;
  }
  const int answer = QaMessageBox(KrmLoadString(162, L"是否保存改动后的卡片?"), MB_YESNOCANCEL | MB_ICONQUESTION);
  if (answer == IDCANCEL) return;
  if (answer == IDYES) m_saveOnCancel = 1;
  end_ = End::kCancel;
}

void KrmDlgCreateCrd::OnDestroy() {
  if (document_ == nullptr || m_placedCard.cardCode.empty()) return;
  auto& open = document_->OpenCardsList;
  const auto found = std::find(open.begin(), open.end(), m_placedCard.cardCode);
  if (found != open.end()) open.erase(found);
}

void KrmDlgCreateCrd::UpdateDrawing() {
  if (!m_editMode) return;
  m_cardData.KeepBlankRows();
  if (updater_ && updater_(m_template, m_cardSaved, m_cardData, m_placedCard) != 1) return;
  m_cardSaved = m_cardData;
}

void KrmDlgCreateCrd::SetAutoUpdate(int on) {
  m_autoUpdate = on != 0 && m_editMode ? 1 : 0;
  if (m_autoUpdate) UpdateDrawing();
}

void KrmDlgCreateCrd::AutoUpdate() {
  if (m_autoUpdate) UpdateDrawing();
}

void KrmDlgCreateCrd::OnGridEndEdit(int row, int col) {
  const std::wstring text = m_grid.GetItemText(row, col);
  SetPageBox(m_cardData.GetCurRow() + 1, 0);
  const int page = pageModeBox_ ? GetPageBox() - 1 : -1;
  KrmDataGrid grid;
  m_cardData.GetCurGridData(grid);
  int storeRow = row;
  if (page >= 1) storeRow = row + (page - 1) * grid.rowsNext + grid.rowsFirst;
  if (storeRow < 1 || col < 1) return;
  m_cardData.SetCell(text, storeRow - 1, col - 1);
  if (m_calcOnEdit) {
    m_cardData.RunColumnCalc(static_cast<unsigned>(storeRow - 1), m_calcSkipZero);
    // The row is written back at its store index, which on a later page is not the
    // row shown: the next rebuild puts it right.
    for (int c = 0; c + 1 < m_grid.GetColumnCount(); ++c) m_grid.SetCellText(storeRow - 1, c, m_cardData.GetCell(storeRow - 1, c));
  }
  AutoUpdate();
}

// --- Page controls.

void KrmDlgCreateCrd::SetPageBox(int page, int clampHigh) {
  if (!pageModeBox_) return;
  page = std::max(page, 1);
  if (clampHigh) page = std::min(page, MainPages());
  pageBox_ = std::to_wstring(page);
}

int KrmDlgCreateCrd::GetPageBox() const { return pageBox_.empty() ? 0 : BoxInteger(pageBox_); }

int KrmDlgCreateCrd::GetTotalPages() const { return totalLabel_.size() > 1 ? BoxInteger(totalLabel_.substr(1)) : 0; }

void KrmDlgCreateCrd::ShowPageTotal() { totalLabel_ = L"/" + std::to_wstring(MainPages()); }

void KrmDlgCreateCrd::ApplyPageMode() {
  pageBox_ = pageModeBox_ ? L"1" : L"";
  pageControlsEnabled_ = pageModeBox_;
  ShowPageTotal();
}

void KrmDlgCreateCrd::ReloadGrid() {
  KrmDataGrid local;
  m_cardData.GetCurGridData(local);
  m_grid.SetPageMode(pageModeBox_ ? 1 : 0);
  const int page = pageModeBox_ ? GetPageBox() - 1 : -1;
  m_grid.LoadData(local, page);
  m_grid.SetMainTable(OnMainTable() ? 1 : 0);
  if (m_showColHeader == 0) m_grid.ToggleColHeader();
  if (m_showRowHeader == 0) m_grid.ToggleRowHeader();
  m_grid.AutoSizeColumns();
  if (pageModeBox_ && GetPageBox() != 0) m_cardData.SetCurRow(GetPageBox() - 1);
}

void KrmDlgCreateCrd::OnPageModeBox(bool checked) {
  if (!pageModeBoxEnabled_) return;
  pageModeBox_ = checked;
  m_pageMode = checked ? 1 : 0;
  ApplyPageMode();
  ReloadGrid();
}

void KrmDlgCreateCrd::OnFirstPage() {
  if (pageModeBox_) pageBox_ = L"1";
  ReloadGrid();
}

void KrmDlgCreateCrd::OnPrevPage() {
  SetPageBox(m_cardData.GetCurRow(), 0);
  ReloadGrid();
}

void KrmDlgCreateCrd::OnNextPage() {
  SetPageBox(m_cardData.GetCurRow() + 2, 1);
  ReloadGrid();
}

void KrmDlgCreateCrd::OnLastPage() {
  SetPageBox(GetTotalPages(), 0);
  ReloadGrid();
}

void KrmDlgCreateCrd::OnGoPage() {
  const int typed = GetPageBox();
  if (pageModeBox_) pageBox_ = typed >= 1 && typed <= GetTotalPages() ? std::to_wstring(typed) : L"1";
  ReloadGrid();
}

void KrmDlgCreateCrd::NextPageAtTop() {
  SetPageBox(m_cardData.GetCurRow() + 2, 1);
  ReloadGrid();
  m_grid.SetSelectedRange(0, 0, 0, 0);
  m_grid.SetFocusCell(0, 0);
}

// --- Keys.

bool KrmDlgCreateCrd::OnCtrlKey(wchar_t letter) {
  if (OnMainTable()) {
    if (letter == L'I') {
      KrmDlgAddRow dialog = ProposeInsertRows();
      ApplyInsertRows(dialog, true);
      return true;
    }
    if (letter == L'D') {
      ApplyDeleteRows(ProposeDeleteRows(), true);
      return true;
    }
    if (letter == L'N') {
      AddRow();
      if (pageModeBox_) {
        if (GetPageBox() >= MainPages()) {
          const int last = m_grid.GetRowCount() - 1;
          m_grid.SetSelectedRange(last, 0, last, 0);
          m_grid.SetFocusCell(last, 0);
        } else {
          NextPageAtTop();
        }
      }
      return true;
    }
  }
  if (letter == L'S') {
    OnFinish();
    return true;
  }
  if (letter == L'Q') {
    OnQuit();
    return true;
  }
  return letter == L'P';  // printing is the window's
}

void KrmDlgCreateCrd::OnReturn() {
  const int selected = m_grid.GetSelectedCellRange().top;
  if (selected == m_grid.GetRowCount() && OnMainTable()) {
    AddRow();
    m_grid.SetSelectedRange(selected, 0, selected, 0);
    m_grid.SetFocusCell(selected, 0);
    return;
  }
  if (m_grid.GetPageWrap() && pageModeBox_) {
    KrmDataGrid main;
    m_cardData.GetGridAt(m_cardData.GetBaseGrid(), main);
    const int nextPage = m_cardData.GetCurRow() + 1;
    const int firstRowOfNext = main.rowsFirst + (nextPage - 1) * main.rowsNext;
    if (firstRowOfNext >= main.RowCount()) AddRow();
    NextPageAtTop();
    m_grid.ClearPageWrap();
  }
}

// --- Preview.

bool KrmDlgCreateCrd::PreviewPageArea(QaGePoint3d& lower, QaGePoint3d& upper) const {
  if (!m_editMode) return false;
  const int page = GetPageBox() - 1;
  if (page < 0 || page >= static_cast<int>(m_placedCard.pages.size())) return false;
  return BoxOf(m_placedCard.pages[static_cast<std::size_t>(page)].allIds, lower, upper);
}

bool KrmDlgCreateCrd::PreviewAllArea(QaGePoint3d& lower, QaGePoint3d& upper) const {
  if (!m_editMode) return false;
  std::vector<QaDbObjectId> ids;
  for (const KrmLoadGroup& page : m_placedCard.pages) ids.insert(ids.end(), page.allIds.begin(), page.allIds.end());
  return !ids.empty() && BoxOf(ids, lower, upper);
}

void KrmDlgCreateCrd::ShowWindowArea(const QaGePoint3d&, const QaGePoint3d&) {
  const std::wstring hint = KrmLoadString(177, L"\n提示:按任意键或点击鼠标返回");
  qautPrintf(L"%ls", hint.c_str());
  QaGePoint3d ignored;
  qaedGetPoint(nullptr, L"", ignored);
}
