#include "editor/krm_dlg_create_crd.h"

#include <gtest/gtest.h>

#include "drawing/card_tag.h"
#include "drawing/generation_library.h"
#include "drawing/placed_card_read.h"
#include "host/db/qadb_open.h"
#include "editor/dialog_settings.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/krm_reg_service.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

namespace {

// The sample card: TITLE and BATCH on the first page, ROW the main table (5 rows on the
// first page, 8 on each further one, 序号 numbered automatically), SIGN.
class CardEditor : public ::testing::Test {
 protected:
  void SetUp() override {
    previousHome_ = getenv("TABULON_HOME") != nullptr ? getenv("TABULON_HOME") : "";
    setenv("TABULON_HOME", home.path().c_str(), 1);
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "card.dxf");
    cardPath = gentest::WriteSampleLibrary(lib.path());
  }
  void TearDown() override {
    qaDocManager().closeAll();
    setenv("TABULON_HOME", previousHome_.c_str(), 1);
  }

  std::unique_ptr<KrmDlgCreateCrd> Open() {
    auto dialog = std::make_unique<KrmDlgCreateCrd>(&settings, &document);
    EXPECT_EQ(dialog->LoadTemplate(cardPath), 1);
    dialog->SetInsertPoint(QaGePoint3d(0, 0, 0));
    dialog->OnInitDialog();
    dialog->SelectTab(Main(*dialog));
    return dialog;
  }
  static int Main(const KrmDlgCreateCrd& dialog) {
    KrmCardData data;
    dialog.GetCardData(data);
    return data.GetBaseGrid();
  }
  static KrmDataGrid MainGrid(const KrmDlgCreateCrd& dialog) {
    KrmCardData data;
    dialog.GetCardData(data);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid;
  }
  static std::wstring Cell(const KrmDlgCreateCrd& dialog, const std::wstring& block, const std::wstring& column, int row = 0) {
    KrmCardData data;
    dialog.GetCardData(data);
    KrmDataGrid grid;
    data.GetGridByName(block, grid);
    return grid.GetCell(row, grid.FindCol(column));
  }
  // Types `text` into grid cell (row, col) and ends the edit.
  static void Type(KrmDlgCreateCrd& dialog, int row, int col, const std::wstring& text) {
    dialog.Grid().SetItemText(row, col, text);
    dialog.OnGridEndEdit(row, col);
  }
  // Rows typed into the main table through the commands: add row, then the step column.
  static void TypeSteps(KrmDlgCreateCrd& dialog, int count) {
    for (int r = 1; r <= count; ++r) {
      if (r > 1) dialog.AddRow();
      Type(dialog, dialog.Grid().GetRowCount() - 1, 2, L"step" + std::to_wstring(r));
    }
  }
  static std::vector<std::wstring> Column(const KrmDataGrid& grid, int col) { return grid.cols.at(static_cast<std::size_t>(col)).values; }

  tabulon::test::ScratchDir home;
  tabulon::test::ScratchDir lib;
  std::wstring cardPath;
  KrmRegService settings;
  KrmDocValue document;
  QaEdScriptedIO io;
  QaEdUserIOScope scope{io};

 private:
  std::string previousHome_;
};

TEST_F(CardEditor, CreateModeStartsCleanAndFinishGenerates) {
  auto dialog = Open();
  EXPECT_EQ(dialog->TabNames(), (std::vector<std::wstring>{L"TITLE", L"BATCH", L"ROW", L"SIGN"}));
  EXPECT_EQ(MainGrid(*dialog).RowCount(), 1);
  EXPECT_EQ(dialog->TotalLabel(), L"/1");
  Type(*dialog, 1, 2, L"车外圆");
  EXPECT_EQ(MainGrid(*dialog).GetCell(0, 1), L"车外圆");
  dialog->OnFinish();
  EXPECT_EQ(dialog->GetEnd(), KrmDlgCreateCrd::End::kOk);
  EXPECT_TRUE(dialog->GetGenerationStatus().ok());
  EXPECT_FALSE(document.lastCardIds.empty());
  EXPECT_TRUE(io.messageBoxes().empty());
}

TEST_F(CardEditor, CancelOfAnUnchangedCardAsksNothing) {
  auto dialog = Open();
  dialog->SelectTab(0);  // a tab change alone is no change
  dialog->OnCancelCard();
  EXPECT_EQ(dialog->GetEnd(), KrmDlgCreateCrd::End::kCancel);
  EXPECT_TRUE(io.messageBoxes().empty());
}

struct CancelAnswer {
  const wchar_t* answer;
  KrmDlgCreateCrd::End end;
  int saveOnCancel;
};

class CardEditorCancel : public CardEditor, public ::testing::WithParamInterface<CancelAnswer> {};

TEST_P(CardEditorCancel, ChangedCardAsksTheSaveQuestion) {
  auto dialog = Open();
  Type(*dialog, 1, 2, L"铣");
  io.addAnswer(GetParam().answer);
  dialog->OnCancelCard();
  ASSERT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_EQ(io.messageBoxes()[0], L"是否保存改动后的卡片?");
  EXPECT_EQ(dialog->GetEnd(), GetParam().end);
  EXPECT_EQ(dialog->GetSaveOnCancel(), GetParam().saveOnCancel);
  EXPECT_TRUE(document.lastCardIds.empty());  // nothing generated whatever the answer
}

INSTANTIATE_TEST_SUITE_P(Answers, CardEditorCancel,
                         ::testing::Values(CancelAnswer{L"yes", KrmDlgCreateCrd::End::kCancel, 1},
                                           CancelAnswer{L"no", KrmDlgCreateCrd::End::kCancel, 0},
                                           CancelAnswer{L"cancel", KrmDlgCreateCrd::End::kOpen, 0}));

TEST_F(CardEditor, TurningThePageMakesTheCardDirty) {
  auto dialog = Open();
  TypeSteps(*dialog, 7);
  KrmCardData data;
  dialog->GetCardData(data);
  dialog->SetCardSaved(data);  // as if the drawing held these rows
  dialog->OnPageModeBox(true);
  dialog->OnNextPage();
  EXPECT_EQ(dialog->PageBoxText(), L"2");
  io.addAnswer(L"no");
  dialog->OnCancelCard();
  EXPECT_EQ(io.messageBoxes().size(), 1u);
}

TEST_F(CardEditor, RowAddedOnAFullLastPageAddsAPageAndRenumbers) {
  auto dialog = Open();
  TypeSteps(*dialog, 5);
  EXPECT_EQ(dialog->TotalLabel(), L"/1");
  EXPECT_EQ(Cell(*dialog, L"TITLE", L"总页"), L"1");
  dialog->AddRow();
  const KrmDataGrid grid = MainGrid(*dialog);
  EXPECT_EQ(grid.RowCount(), 6);
  EXPECT_EQ(Column(grid, 0), (std::vector<std::wstring>{L"1", L"2", L"3", L"4", L"5", L"6"}));
  EXPECT_EQ(dialog->TotalLabel(), L"/2");
  EXPECT_EQ(Cell(*dialog, L"TITLE", L"总页"), L"2");
}

TEST_F(CardEditor, DeleteInsertAndMoveKeepTheRowNumbers) {
  auto dialog = Open();
  TypeSteps(*dialog, 6);
  // Delete from 5 to 2: rows 2 to 5 go.
  KrmDlgDelRow del = dialog->ProposeDeleteRows();
  del.fromText = L"5";
  del.toText = L"2";
  dialog->ApplyDeleteRows(del, true);
  KrmDataGrid grid = MainGrid(*dialog);
  EXPECT_EQ(Column(grid, 1), (std::vector<std::wstring>{L"step1", L"step6"}));
  EXPECT_EQ(Column(grid, 0), (std::vector<std::wstring>{L"1", L"2"}));

  // Two rows before the second one.
  dialog->Grid().SetSelectedRange(2, 1, 2, 2);
  KrmDlgAddRow insert = dialog->ProposeInsertRows();
  EXPECT_EQ(insert.countText, L"2");
  dialog->ApplyInsertRows(insert, true);
  grid = MainGrid(*dialog);
  EXPECT_EQ(Column(grid, 1), (std::vector<std::wstring>{L"step1", L"", L"", L"step6"}));
  EXPECT_EQ(Column(grid, 0), (std::vector<std::wstring>{L"1", L"2", L"3", L"4"}));

  // The last row up, twice; the focus follows it.
  dialog->Grid().SetFocusCell(4, 2);
  dialog->MoveRowUp();
  EXPECT_EQ(dialog->Grid().GetFocusCell().first, 3);
  dialog->MoveRowUp();
  grid = MainGrid(*dialog);
  EXPECT_EQ(Column(grid, 1), (std::vector<std::wstring>{L"step1", L"step6", L"", L""}));
  EXPECT_EQ(Column(grid, 0), (std::vector<std::wstring>{L"1", L"2", L"3", L"4"}));

  // Up on the first row and down on the last change nothing.
  dialog->Grid().SetFocusCell(1, 2);
  EXPECT_FALSE(dialog->CanMoveRow(false));
  dialog->MoveRowUp();
  dialog->Grid().SetFocusCell(4, 2);
  EXPECT_FALSE(dialog->CanMoveRow(true));
  dialog->MoveRowDown();
  EXPECT_TRUE(MainGrid(*dialog).SameContent(grid));
}

TEST_F(CardEditor, DeletingEveryRowLeavesOnePageWithOnlyTheHeader) {
  auto dialog = Open();
  TypeSteps(*dialog, 3);
  dialog->Grid().SetSelectedRange(-1, -1, -1, -1);  // nothing selected: every row
  dialog->ApplyDeleteRows(dialog->ProposeDeleteRows(), true);
  EXPECT_EQ(MainGrid(*dialog).RowCount(), 0);
  EXPECT_EQ(dialog->Grid().GetRowCount(), 1);
  EXPECT_EQ(dialog->TotalLabel(), L"/1");
}

TEST_F(CardEditor, PageModeShowsOnePageAndReturnAtTheEndOfAFullPageWraps) {
  auto dialog = Open();
  TypeSteps(*dialog, 5);
  dialog->OnPageModeBox(true);
  EXPECT_EQ(dialog->PageBoxText(), L"1");
  EXPECT_EQ(dialog->Grid().GetRowCount(), 6);
  // Return on the fifth row of a first page of five: the grid wraps, the dialog adds the
  // sixth row on a new page and turns to it.
  dialog->Grid().SetSelectedRange(5, 2, 5, 2);
  ASSERT_EQ(dialog->Grid().OnChar(L'\r'), KrmGridCtrl::ReturnMove::kWrapped);
  dialog->OnReturn();
  EXPECT_EQ(MainGrid(*dialog).RowCount(), 6);
  EXPECT_EQ(dialog->PageBoxText(), L"2");
  EXPECT_EQ(dialog->TotalLabel(), L"/2");
  EXPECT_EQ(dialog->Grid().GetRowCount(), 2);
  EXPECT_EQ(dialog->Grid().GetPageWrap(), 0);
  // Typing on page 2 lands on table row 6.
  Type(*dialog, 1, 2, L"page two");
  EXPECT_EQ(MainGrid(*dialog).GetCell(5, 1), L"page two");
}

TEST_F(CardEditor, PageNavigationStaysWithinThePages) {
  auto dialog = Open();
  TypeSteps(*dialog, 14);  // 5 + 8 + 1: three pages
  dialog->OnPageModeBox(true);
  dialog->OnPrevPage();
  EXPECT_EQ(dialog->PageBoxText(), L"1");
  dialog->OnLastPage();
  EXPECT_EQ(dialog->PageBoxText(), L"3");
  dialog->OnNextPage();
  EXPECT_EQ(dialog->PageBoxText(), L"3");
  EXPECT_EQ(dialog->Grid().GetItemText(1, 2), L"step14");
  for (const wchar_t* typed : {L"0", L"9"}) {
    dialog->SetPageBoxText(typed);
    dialog->OnGoPage();
    EXPECT_EQ(dialog->PageBoxText(), L"1") << typed;
  }
}

TEST_F(CardEditor, CommitsAndRowCommandsMapPageRowsDifferently) {
  auto dialog = Open();
  TypeSteps(*dialog, 20);  // pages of 5, 8, 8 rows (three pages)
  dialog->OnPageModeBox(true);
  dialog->OnNextPage();
  dialog->OnNextPage();
  ASSERT_EQ(dialog->PageBoxText(), L"3");
  // An edit of grid row 3 on page 3 writes table row 5 + 8 + 3 = 16.
  Type(*dialog, 3, 2, L"edited");
  EXPECT_EQ(MainGrid(*dialog).GetCell(15, 1), L"edited");
  // A row command on grid row 3 of page 3 works on table row 3 + 2 * 5 = 13.
  dialog->Grid().SetSelectedRange(3, 2, 3, 2);
  KrmDlgDelRow del = dialog->ProposeDeleteRows();
  EXPECT_EQ(del.fromText, L"13");
}

TEST_F(CardEditor, NumberingChangeReachesThePageNumbers) {
  auto dialog = Open();
  TypeSteps(*dialog, 6);  // two pages
  KrmDlgPageSet set = dialog->ProposePageSet();
  EXPECT_EQ(set.stepText, L"1");
  set.stepText = L"2";
  set.startSumText = L"10";
  set.startCurText = L"7";
  ASSERT_TRUE(set.Accept());
  dialog->ApplyPageSet(set);
  EXPECT_EQ(Cell(*dialog, L"TITLE", L"页码"), L"7");
  EXPECT_EQ(Cell(*dialog, L"TITLE", L"总页"), L"12");  // (2 - 1) * 2 + 10
  EXPECT_EQ(Cell(*dialog, L"BATCH", L"批页"), L"7");
  set.stepText = L"0";
  EXPECT_FALSE(set.Accept());
}

TEST_F(CardEditor, SingleRecordTablesHaveNoPageMode) {
  auto dialog = Open();
  dialog->OnPageModeBox(true);
  dialog->SelectTab(0);
  EXPECT_FALSE(dialog->PageModeBoxEnabled());
  EXPECT_FALSE(dialog->PageModeBoxChecked());
  EXPECT_FALSE(dialog->OnMainTable());
  // Return on the last row of the title block never adds a row.
  const int rows = dialog->Grid().GetRowCount();
  dialog->Grid().SetSelectedRange(rows - 1, 1, rows - 1, 1);
  dialog->Grid().OnChar(L'\r');
  dialog->OnReturn();
  EXPECT_EQ(dialog->Grid().GetRowCount(), rows);
  dialog->SelectTab(Main(*dialog));
  EXPECT_TRUE(dialog->PageModeBoxChecked());
}

TEST_F(CardEditor, PageModeIsStoredAtFinishAndViewOptionsAreNot) {
  {
    auto dialog = Open();
    dialog->OnPageModeBox(true);
    dialog->m_calcOnEdit = 0;
    dialog->OnFinish();
  }
  std::wstring stored;
  ASSERT_EQ(ReadDialogSetting(&settings, kCreateCardSubKey, kCutPageValue, stored), 1);
  EXPECT_EQ(stored, L"1");
  auto second = Open();
  EXPECT_EQ(second->GetPageMode(), 1);
  EXPECT_TRUE(second->PageModeBoxChecked());
  EXPECT_EQ(second->m_calcOnEdit, 1);
}

TEST_F(CardEditor, FileThatIsNoTableShowsTheFormatMessageAndKeepsTheTable) {
  auto dialog = Open();
  TypeSteps(*dialog, 2);
  const KrmDataGrid before = MainGrid(*dialog);
  tabulon::test::writeFile(home / "renamed.xlsx", "\"序号\"\t\n");
  tabulon::test::writeFile(home / "empty.xls", "");
  tabulon::test::writeFile(home / "noheader.txt", "序号\n1\n");
  for (const char* name : {"renamed.xlsx", "empty.xls", "noheader.txt", "missing.txt"}) {
    SCOPED_TRACE(name);
    const std::wstring path = tabulon::svc::fromPath(home / name);
    const std::size_t boxes = io.messageBoxes().size();
    if (std::string(name).ends_with(".txt")) dialog->ImportTextFile(path);
    else dialog->ImportSheetFile(path);
    ASSERT_EQ(io.messageBoxes().size(), boxes + 1);
    EXPECT_EQ(io.messageBoxes().back(), L"文件格式出错！");
    EXPECT_TRUE(MainGrid(*dialog).SameContent(before));
  }
}

TEST_F(CardEditor, SheetExportedFromTheMainTableImportsBack) {
  auto dialog = Open();
  TypeSteps(*dialog, 3);
  const KrmDataGrid before = MainGrid(*dialog);
  const std::wstring path = tabulon::svc::fromPath(home / "rows.xls");
  ASSERT_TRUE(dialog->ExportSheetFile(path).ok());
  dialog->Grid().SetSelectedRange(-1, -1, -1, -1);
  dialog->ApplyDeleteRows(dialog->ProposeDeleteRows(), true);
  dialog->ImportSheetFile(path);
  EXPECT_TRUE(MainGrid(*dialog).SameContent(before));
  EXPECT_EQ(dialog->LastDataFile(), path);
  EXPECT_TRUE(io.messageBoxes().empty());
}

TEST_F(CardEditor, ArrangementFollowsThePlacePagesBox) {
  auto dialog = Open();
  EXPECT_FALSE(dialog->PlacePagesChecked());
  EXPECT_TRUE(dialog->AutoArrangeChecked());
  EXPECT_FALSE(dialog->ArrangementEnabled());
  dialog->OnPlacePages(true);
  EXPECT_TRUE(dialog->ArrangementEnabled());
  KrmDlgArrang arrang = dialog->ProposeArrang();
  arrang.horText = L"25.5";
  arrang.ChoosePriority(false);
  arrang.rowsText = L"3.9";
  dialog->ApplyArrang(arrang);
  dialog->OnAutoArrange(false);
  dialog->OnPlacePages(false);
  EXPECT_TRUE(dialog->AutoArrangeChecked());
  dialog->OnFinish();
  KrmCardDir dir;
  dialog->GetCardDir(dir);
  EXPECT_EQ(dir.GetHor(), 25.5);
  EXPECT_EQ(dir.GetFstT(), 2);
  EXPECT_EQ(dir.GetFstN(), 3);
  EXPECT_EQ(dialog->GetPlacePages(), 0);
  EXPECT_EQ(dialog->GetAutoArrange(), 1);
}

// Edit mode: the card comes from the drawing; every update goes through the updater.
TEST_F(CardEditor, AutoUpdateWritesEachCommittedCellThroughTheUpdater) {
  KrmCardData card;
  {
    auto create = Open();
    TypeSteps(*create, 2);
    create->GetCardData(card);
  }
  struct Call {
    std::wstring oldStep;
    std::wstring newStep;
  };
  std::vector<Call> calls;
  KrmDlgCreateCrd dialog(&settings, &document);
  ASSERT_EQ(dialog.LoadTemplate(cardPath), 1);
  dialog.SetEditMode(1);
  dialog.SetCardData(card);
  dialog.SetCardSaved(card);
  KrmPlacedCard placed;
  placed.cardCode = L"ABCD1234";
  dialog.SetPlacedCard(placed);
  document.OpenCardsList = {L"ABCD1234"};
  dialog.SetDrawingUpdater([&](KrmCardTemplate&, KrmCardData& oldData, KrmCardData& newData, KrmPlacedCard& placedCard) {
    KrmDataGrid oldGrid, newGrid;
    oldData.GetGridAt(oldData.GetBaseGrid(), oldGrid);
    newData.GetGridAt(newData.GetBaseGrid(), newGrid);
    EXPECT_EQ(placedCard.cardCode, L"ABCD1234");
    calls.push_back({oldGrid.GetCell(1, 1), newGrid.GetCell(1, 1)});
    return 1;
  });
  dialog.OnInitDialog();
  dialog.SelectTab(Main(dialog));
  EXPECT_EQ(dialog.Grid().GetItemText(2, 2), L"step2");
  dialog.SetAutoUpdate(1);
  ASSERT_EQ(calls.size(), 1u);
  Type(dialog, 2, 2, L"磨");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[1].oldStep, L"step2");
  EXPECT_EQ(calls[1].newStep, L"磨");
  dialog.AddRow();
  EXPECT_EQ(calls.size(), 3u);
  // Each edit was written: nothing is left to ask about.
  dialog.OnCancelCard();
  EXPECT_TRUE(io.messageBoxes().empty());
  dialog.OnDestroy();
  EXPECT_TRUE(document.OpenCardsList.empty());
}

// Edit mode on a card generated in the drawing: with auto update, each commit and each
// row command is in the drawing at once, through the update of placed cards.
TEST_F(CardEditor, AutoUpdateBringsTheDrawingInLineAfterEachEdit) {
  {
    auto create = Open();
    TypeSteps(*create, 3);
    create->OnFinish();
    ASSERT_TRUE(create->GetGenerationStatus().ok());
  }
  KrmCardTag tag;
  {
    QaDbObjectPointer<QaDbEntity> entity(document.lastCardIds.at(0), QaDb::kForRead);
    ASSERT_TRUE(ReadCardTagOfEntity(entity.object(), tag));
  }
  auto opened = OpenPlacedCard(cardPath, tag.cardCode);
  ASSERT_TRUE(opened.ok()) << opened.describe();

  KrmDlgCreateCrd dialog(&settings, &document);
  ASSERT_EQ(dialog.LoadTemplate(cardPath), 1);
  dialog.SetEditMode(1);
  dialog.SetCardData(opened->data);
  dialog.SetCardSaved(opened->data);
  dialog.SetPlacedCard(opened->card);
  dialog.OnInitDialog();
  dialog.SelectTab(Main(dialog));
  dialog.SetAutoUpdate(1);
  Type(dialog, 2, 2, L"磨");
  for (int i = 0; i < 3; ++i) dialog.AddRow();  // six rows: a second page

  auto again = OpenPlacedCard(cardPath, tag.cardCode);
  ASSERT_TRUE(again.ok()) << again.describe();
  KrmDataGrid grid;
  again->data.GetGridAt(again->data.GetBaseGrid(), grid);
  EXPECT_EQ(grid.GetCell(1, 1), L"磨");
  EXPECT_EQ(grid.GetCell(2, 1), L"step3");
  EXPECT_EQ(again->card.pages.size(), 2u);
}

}  // namespace
