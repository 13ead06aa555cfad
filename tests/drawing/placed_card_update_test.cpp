#include "drawing/placed_card_update.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "drawing/extents_util.h"
#include "host/db/qadb_group.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/ed/qaed_selection.h"
#include "placed_card_fixture.h"

namespace {

using reedittest::PlacedCardTest;

class PlacedCardUpdate : public PlacedCardTest {
 protected:
  // Opens the card, lets `edit` change a copy of its data, and updates the drawing.
  template <class Edit>
  int Update(const std::wstring& code, Edit edit) {
    KrmOpenedCard opened = Open(code);
    KrmCardData after = opened.data;
    edit(after);
    stats = KrmUpdateStats();
    return UpdatePlacedCard(*opened.cardTemplate, opened.data, after, opened.card, &stats);
  }

  static std::vector<std::wstring> Padded(std::vector<std::wstring> steps, std::size_t size) {
    steps.resize(size);
    return steps;
  }

  KrmUpdateStats stats;
};

TEST_F(PlacedCardUpdate, AnUnchangedRowKeepsWhatWasEditedByHand) {
  const std::wstring code = Place(Steps(3));
  EditByHand(ReadBack(code).pages[0].refs[0].refId, L"工序", L"手改");

  ASSERT_EQ(Update(code, [](KrmCardData& d) { SetSteps(d, {L"手改", L"工序2", L"新三"}); }), 1);
  // Row 0 is unchanged in the data (the read-back saw the hand edit); only row 2 is written.
  EXPECT_EQ(DrawnSteps(ReadBack(code)), (std::vector<std::wstring>{L"手改", L"工序2", L"新三", L"", L""}));
  EXPECT_EQ(stats.rowBlocksWritten, 1);

  // An edit the data does not know of stays as long as its row does not change.
  EditByHand(ReadBack(code).pages[0].refs[1].refId, L"内容", L"现场补记");
  ASSERT_EQ(Update(code, [](KrmCardData& d) { SetSteps(d, {L"手改", L"工序2", L"三"}); }), 1);
  EXPECT_EQ(ReadBack(code).pages[0].refs[1].texts.at(2), L"现场补记");
}

TEST_F(PlacedCardUpdate, ARowInsertedNearTheTopOfFullPagesPushesTheLastRecordOntoANewPage) {
  const std::wstring code = Place(Steps(13));  // 5 + 8: both pages full
  EditByHand(ReadBack(code).pages[0].refs[0].refId, L"内容", L"首行手记");

  std::vector<std::wstring> steps = Steps(13);
  steps.insert(steps.begin() + 1, L"插入");
  ASSERT_EQ(Update(code, [&](KrmCardData& d) { SetSteps(d, steps); }), 1);

  const KrmPlacedCard card = ReadBack(code);
  ASSERT_EQ(card.pages.size(), 3u);
  EXPECT_EQ(DrawnSteps(card), Padded(steps, 21));
  EXPECT_EQ(card.pages[0].refs[0].texts.at(2), L"首行手记");  // nothing in front of the new row written
  EXPECT_EQ(stats.pagesAdded, 1);
  // Rows 1..13 moved, and the clone's seven rows behind the last record were blanked.
  EXPECT_EQ(stats.rowBlocksWritten, 13 + 7);
  EXPECT_EQ(ClassText(card.pages[2], L"TITLE", L"页码"), L"3");
}

TEST_F(PlacedCardUpdate, CuttingThreePagesToOneErasesTheLastTwo) {
  const std::wstring code = Place(Steps(21));
  ASSERT_EQ(ReadBack(code).pages.size(), 3u);
  const std::vector<QaDbObjectId> lastPage = ReadBack(code).pages[2].allIds;

  ASSERT_EQ(Update(code, [](KrmCardData& d) { SetSteps(d, {L"甲", L"乙", L"丙"}); }), 1);
  EXPECT_EQ(stats.pagesCut, 2);
  const KrmPlacedCard card = ReadBack(code);
  ASSERT_EQ(card.pages.size(), 1u);
  EXPECT_EQ(DrawnSteps(card), (std::vector<std::wstring>{L"甲", L"乙", L"丙", L"", L""}));
  for (const KrmLoadAtt& row : card.pages[0].refs) EXPECT_EQ(row.recordHead, 1);
  QaDbObjectPointer<QaDbEntity> erased(lastPage.front(), QaDb::kForRead);
  EXPECT_FALSE(erased);

  // The groups of the cut pages stay, empty.
  int groups = 0, empty = 0;
  QaDbObjectPointer<QaDbDictionary> dictionary(qaWorkingDatabase()->groupDictionaryId(), QaDb::kForRead);
  for (auto it = dictionary->newIterator(); !it->done(); it->next()) {
    QaDbObjectPointer<QaDbGroup> group(it->objectId(), QaDb::kForRead);
    ++groups;
    if (group->allEntityIds().empty()) ++empty;
  }
  EXPECT_EQ(groups, 3);
  EXPECT_EQ(empty, 2);
}

TEST_F(PlacedCardUpdate, AOnePageCardGrowsFromTheSideDrawingATwoPageCardByAClone) {
  const std::wstring one = Place(Steps(5));
  const std::wstring two = Place(Steps(13), {}, QaGePoint3d(0, 500, 0));
  // Without the continuation's side drawing only the clone can be made.
  std::filesystem::remove(lib / "next.dxf");
  ASSERT_EQ(Update(two, [](KrmCardData& d) { SetSteps(d, Steps(14)); }), 1);
  EXPECT_EQ(ReadBack(two).pages.size(), 3u);
  ASSERT_EQ(Update(one, [](KrmCardData& d) { SetSteps(d, Steps(6)); }), 1);
  EXPECT_EQ(ReadBack(one).pages.size(), 1u);

  gentest::WriteSampleDrawing(lib.path(), L"next", 8);
  ASSERT_EQ(Update(one, [](KrmCardData& d) { SetSteps(d, Steps(6)); }), 1);
  const KrmPlacedCard card = ReadBack(one);
  ASSERT_EQ(card.pages.size(), 2u);
  EXPECT_EQ(card.pages[1].refs.size(), 8u);
  EXPECT_EQ(DrawnSteps(card), Padded(Steps(6), 13));
  // The new page is filled like a generated one: its title rows and its page number.
  EXPECT_EQ(ClassText(card.pages[1], L"TITLE", L"图号"), L"DWG-1");
  EXPECT_EQ(ClassText(card.pages[1], L"TITLE", L"页码"), L"2");
  EXPECT_EQ(card.pages[1].pageIndex, 1);
  // It lies beside the first page, where generation puts a second page.
  const double firstX = LowerLeftOf(card.pages[0].allIds).x;
  EXPECT_GT(LowerLeftOf(card.pages[1].allIds).x, firstX + gentest::kPageWidth);
}

TEST_F(PlacedCardUpdate, ARecordThatNeedsOneMoreRowBlockRewritesTheRowsBehindIt) {
  const std::wstring code = Place(Steps(4));
  ASSERT_EQ(Update(code, [](KrmCardData& d) {
              KrmDataGrid grid;
              d.GetGridAt(d.GetBaseGrid(), grid);
              grid.cols[2].values[1] = L"上\r\n下";
              d.SetGridAt(d.GetBaseGrid(), grid);
            }),
            1);
  const KrmOpenedCard opened = Open(code);
  EXPECT_EQ(DrawnSteps(opened.card), (std::vector<std::wstring>{L"工序1", L"工序2", L"", L"工序3", L"工序4"}));
  EXPECT_EQ(opened.card.pages[0].refs[2].recordHead, 0);
  EXPECT_EQ(Column(opened.data, 2).at(1), L"上\r\n下");
  EXPECT_EQ(Column(opened.data, 1), Steps(4));

  // Back to one line: the continuation becomes a record head again.
  ASSERT_EQ(Update(code, [](KrmCardData& d) {
              KrmDataGrid grid;
              d.GetGridAt(d.GetBaseGrid(), grid);
              grid.cols[2].values[1] = L"";
              d.SetGridAt(d.GetBaseGrid(), grid);
            }),
            1);
  const KrmPlacedCard card = ReadBack(code);
  EXPECT_EQ(DrawnSteps(card), (std::vector<std::wstring>{L"工序1", L"工序2", L"工序3", L"工序4", L""}));
  for (const KrmLoadAtt& row : card.pages[0].refs) EXPECT_EQ(row.recordHead, 1);
}

TEST_F(PlacedCardUpdate, AChangeOfPageStepRewritesEveryPageRecordAndNumber) {
  const std::wstring code = Place(Steps(21));
  ASSERT_EQ(Update(code, [](KrmCardData& d) { d.PageStep() = 2; d.PageStartCur() = 10; }), 1);
  EXPECT_EQ(stats.rowBlocksWritten, 0);
  const KrmPlacedCard card = ReadBack(code);
  ASSERT_EQ(card.pages.size(), 3u);
  const std::vector<std::wstring> numbers = {L"10", L"12", L"14"};
  for (std::size_t p = 0; p < card.pages.size(); ++p) {
    EXPECT_EQ(ClassText(card.pages[p], L"TITLE", L"页码"), numbers[p]);
    QaDbObjectPointer<QaDbGroup> group(card.pages[p].groupId, QaDb::kForRead);
    KrmCardTag tag;
    ReadCardTagOfGroup(group.object(), tag);
    EXPECT_EQ(tag.pageStep, 2);
    EXPECT_EQ(tag.pageStartCur, 10);
    EXPECT_EQ(tag.entityIndex, static_cast<int>(p));
  }
}

TEST_F(PlacedCardUpdate, ArrangingAgainTakesTheFirstPageAsModuleAndACancelLeavesTheRestInPlace) {
  shape.dir.SetFstT(0);  // pages run up in one column
  cardPath = gentest::WriteSampleLibrary(lib.path(), shape);
  const std::wstring code = Place(Steps(13));
  {
    QaEdScriptedIO io({L"1000,0"});
    QaEdUserIOScope scope(io);
    KrmOpenedCard opened = Open(code);
    opened.cardTemplate->SetArrangeOptions(1, 1);
    ASSERT_EQ(MovePlacedCard(*opened.cardTemplate, opened.card), 1);
  }
  KrmPlacedCard card = ReadBack(code);
  ASSERT_EQ(card.pages.size(), 2u);
  EXPECT_EQ(LowerLeftOf(card.pages[0].allIds), QaGePoint3d(1000, 0, 0));
  // The continuation (94 high) is taller than the first page (70): the first page sets the
  // module, with the gap of 10 above it.
  EXPECT_EQ(LowerLeftOf(card.pages[1].allIds), QaGePoint3d(1000, 80, 0));

  QaEdScriptedIO io({L"0,2000", L"cancel"});
  QaEdUserIOScope scope(io);
  KrmOpenedCard opened = Open(code);
  opened.cardTemplate->SetArrangeOptions(1, 0);
  EXPECT_EQ(MovePlacedCard(*opened.cardTemplate, opened.card), 0);
  card = ReadBack(code);
  EXPECT_EQ(LowerLeftOf(card.pages[0].allIds), QaGePoint3d(0, 2000, 0));
  EXPECT_EQ(LowerLeftOf(card.pages[1].allIds), QaGePoint3d(1000, 80, 0));
}

TEST_F(PlacedCardUpdate, TheSameDataModifiesNothingInALoadedDrawing) {
  Place(Steps(9), {L"一\r\n二", L"粗车外圆至尺寸并留精车余量零点五毫米,倒角去毛刺后检验"});
  const auto file = lib / "placed.dxf";
  ASSERT_EQ(qaWorkingDatabase()->saveAs(file), Qa::eOk);
  qaDocManager().closeAll();
  ASSERT_NE(qaDocManager().openDocument(file), nullptr);
  std::wstring code;
  for (const QaDbObjectId& id : qaedModelSpaceEntities(qaWorkingDatabase())) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    KrmCardTag tag;
    ReadCardTagOfEntity(entity.object(), tag);
    if (!tag.cardCode.empty()) code = tag.cardCode;
  }
  ASSERT_EQ(Update(code, [](KrmCardData&) {}), 1);
  int modified = 0;
  for (const QaDbObjectId& id : qaWorkingDatabase()->objectIds(true)) {
    if (id.rawObject() != nullptr && id.rawObject()->isModified()) ++modified;
  }
  EXPECT_EQ(modified, 0);
}

}  // namespace
