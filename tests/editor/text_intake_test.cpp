#include <gtest/gtest.h>

#include "drawing/generation_library.h"
#include "editor/krm_dlg_create_crd.h"
#include "editor/table_pickup.h"
#include "editor/word_lib.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_text.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

namespace {

TEST(TextRows, AreGroupedByHeightAndOrderedLeftToRight) {
  // Two rows of a table, given in no order; the second row's texts stand a little off.
  const std::vector<KrmPickedText> texts = {{L"键槽", 20, 91.6, 2.5}, {L"1", 0, 100, 2.5}, {L"铣", 10, 92.4, 2.5},
                                            {L"外圆", 20, 100.2, 2.5}, {L"2", 0, 92, 2.5},   {L"车", 10, 99.9, 2.5}};
  const auto rows = GroupTextsIntoRows(texts);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0], (std::vector<std::wstring>{L"1", L"车", L"外圆"}));
  EXPECT_EQ(rows[1], (std::vector<std::wstring>{L"2", L"铣", L"键槽"}));
}

TEST(WordLibrary, GroupsPhrasesUnderTheirCategories) {
  const auto categories = CKrmWordLib::Parse(L"去毛刺\n[车削]\r\n车外圆\n\n  车端面  \n[热处理]\n淬火\n");
  ASSERT_EQ(categories.size(), 3u);
  EXPECT_EQ(categories[0].name, L"");
  EXPECT_EQ(categories[0].phrases, std::vector<std::wstring>{L"去毛刺"});
  EXPECT_EQ(categories[1].name, L"车削");
  EXPECT_EQ(categories[1].phrases, (std::vector<std::wstring>{L"车外圆", L"车端面"}));
  EXPECT_EQ(categories[2].phrases, std::vector<std::wstring>{L"淬火"});
}

TEST(WordLibrary, MissingFileOffersNothing) {
  CKrmWordLib library;
  library.SetLibPath(L"/nonexistent/wordlib.txt");
  std::wstring word;
  bool asked = false;
  EXPECT_FALSE(library.GetWord(word, [&](const auto&, std::wstring&) { return asked = true; }));
  EXPECT_FALSE(asked);
}

class TextIntake : public ::testing::Test {
 protected:
  void SetUp() override {
    db = qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "card.dxf")->database();
    cardPath = gentest::WriteSampleLibrary(lib.path());
    ASSERT_EQ(dialog.LoadTemplate(cardPath), 1);
    dialog.OnInitDialog();
    KrmCardData data;
    dialog.GetCardData(data);
    dialog.SelectTab(data.GetBaseGrid());
    dialog.AddRow();
    dialog.AddRow();  // three rows
  }
  void TearDown() override { qaDocManager().closeAll(); }

  KrmDataGrid Main() const {
    KrmCardData data;
    dialog.GetCardData(data);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid;
  }

  QaDbDatabase* db = nullptr;
  tabulon::test::ScratchDir lib;
  std::wstring cardPath;
  QaEdScriptedIO io;
  QaEdUserIOScope scope{io};
  KrmDlgCreateCrd dialog{nullptr, nullptr};
};

TEST_F(TextIntake, PickedTableTextsFillRowsFromTheFocusRow) {
  gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(0, 100, 0), L"车", QaDbObjectId(), 2.5));
  gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(30, 100, 0), L"外圆", QaDbObjectId(), 2.5));
  gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(0, 92, 0), L"铣", QaDbObjectId(), 2.5));
  gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(30, 92, 0), L"键槽", QaDbObjectId(), 2.5));
  gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(0, 84, 0), L"磨", QaDbObjectId(), 2.5));
  dialog.Grid().SetFocusCell(2, 1);
  io.addAnswer(L"all");
  // The names are the table's columns in order: 序号, 工序, 内容; the rows' texts fill
  // them from the first, and a row past the table's end is dropped.
  dialog.PickTableData();
  const KrmDataGrid grid = Main();
  EXPECT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(grid.GetCell(1, 0), L"车");
  EXPECT_EQ(grid.GetCell(1, 1), L"外圆");
  EXPECT_EQ(grid.GetCell(2, 0), L"铣");
  EXPECT_EQ(grid.GetCell(0, 1), L"");
}

TEST_F(TextIntake, CancelledPickLeavesTheTable) {
  const KrmDataGrid before = Main();
  dialog.Grid().SetFocusCell(1, 1);
  io.addAnswer(L"cancel");
  dialog.PickTableData();
  EXPECT_TRUE(Main().SameContent(before));
}

TEST_F(TextIntake, WordGoesIntoTheSelectedCellAndIsCommitted) {
  dialog.Grid().SetSelectedRange(2, 2, 2, 2);
  dialog.InsertWord(L"去毛刺");
  EXPECT_EQ(Main().GetCell(1, 1), L"去毛刺");
}

TEST_F(TextIntake, SinglePickedTextComesBack) {
  const QaDbObjectId id = gentest::AddEntity(*db, std::make_unique<QaDbText>(QaGePoint3d(5, 5, 0), L"Φ20", QaDbObjectId(), 2.5));
  io.addAnswer(L"#" + tabulon::svc::fromUtf8(id.handle().ascii()));
  std::wstring text;
  EXPECT_TRUE(dialog.PickTextForEditor(text));
  EXPECT_EQ(text, L"Φ20");
}

}  // namespace
