#include "drawing/placed_card_read.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "placed_card_fixture.h"

namespace {

using reedittest::PlacedCardTest;

TEST(ReadBaseGridRows, JoinsOverflowAndRestoresForcedBreaks) {
  KrmPlacedCard card;
  KrmLoadGroup first, second;
  first.refs = {{{}, 0, {L"1", L"一\n"}, {}, 1}, {{}, 1, {L"", L"二"}, {}, 0}, {{}, 2, {L"2", L"长文"}, {}, 1}};
  second.refs = {{{}, 0, {L"", L"本续行"}, {}, 0}, {{}, 1, {L"3", L"末行\n"}, {}, 1}};
  card.pages = {first, second};
  KrmDataGrid grid;
  grid.cols.resize(2);
  grid.cols[1].values = {L"stale"};

  ASSERT_EQ(ReadBaseGridRows(card, grid), 1);
  // A continuation joins the row before it, across a page end too, without a separator.
  EXPECT_EQ(grid.cols[1].values, (std::vector<std::wstring>{L"一\r\n二", L"长文本续行", L"末行\r\n"}));
  EXPECT_EQ(grid.cols[0].values, (std::vector<std::wstring>{L"1", L"2", L"3"}));
}

TEST(ReadBaseGridRows, DropsAContinuationWithNoRecordBeforeIt) {
  KrmPlacedCard card;
  KrmLoadGroup page;
  page.refs = {{{}, 0, {L"孤立"}, {}, 0}, {{}, 1, {L"行"}, {}, 1}};
  card.pages = {page};
  KrmDataGrid grid;
  grid.cols.resize(1);
  ReadBaseGridRows(card, grid);
  EXPECT_EQ(grid.cols[0].values, (std::vector<std::wstring>{L"行"}));
}

TEST(ReadOtherGridRows, TakesAtMostTheFirstPagesRowsOfTheExactlyNamedClass) {
  KrmLoadGroup page;
  KrmLoadTAtt near, sign;
  near.blockName = L"t1_SIGN";
  near.refs = {{{}, 0, {L"wrong"}, {}, 1}};
  sign.blockName = L"SIGN";
  sign.refs = {{{}, 0, {L"甲"}, {}, 1}, {{}, 1, {L"乙\n"}, {}, 0}, {{}, 2, {L"丙"}, {}, 1}};
  page.otherClasses = {near, sign};
  KrmDataGrid grid;
  grid.blockName = L"SIGN";
  grid.rowsFirst = 2;
  grid.cols.resize(1);
  ReadOtherGridRows(page, grid);
  // Record heads play no part here.
  EXPECT_EQ(grid.cols[0].values, (std::vector<std::wstring>{L"甲", L"乙\r\n"}));
}

TEST_F(PlacedCardTest, ReadsBackWhatGenerationWroteRowForRow) {
  // Row 1 breaks by force into three row blocks, row 2 wraps by width onto a second.
  const std::wstring wrapped = L"粗车外圆至尺寸并留精车余量零点五毫米,倒角去毛刺后检验";
  const std::wstring code = Place(Steps(7), {L"一\r\n二\r\n三", wrapped});
  const KrmOpenedCard opened = Open(code);

  ASSERT_EQ(opened.card.pages.size(), 2u);
  const std::vector<int> heads = {1, 0, 0, 1, 0};
  for (std::size_t r = 0; r < heads.size(); ++r) EXPECT_EQ(opened.card.pages[0].refs[r].recordHead, heads[r]) << r;
  EXPECT_EQ(Column(opened.data, 1), Steps(7));
  const std::vector<std::wstring> contents = Column(opened.data, 2);
  ASSERT_EQ(contents.size(), 7u);
  EXPECT_EQ(contents[0], L"一\r\n二\r\n三");
  EXPECT_EQ(contents[1], wrapped);
  EXPECT_EQ(contents[2], L"");
}

TEST_F(PlacedCardTest, OpeningTakesTheNumberingFromTheFirstPageAndTrimsEmptyRows) {
  const std::wstring code = Place(Steps(2));
  const KrmOpenedCard opened = Open(code);
  EXPECT_EQ(opened.card.cardCode, code);
  EXPECT_EQ(opened.card.baseBlockName, L"ROW");
  EXPECT_EQ(opened.card.otherGrids.size(), 3u);
  EXPECT_EQ(opened.data.PageStep(), 1);
  EXPECT_EQ(Column(opened.data, 1).size(), 2u);  // three blank row blocks trimmed
  KrmDataGrid title;
  opened.data.GetGridByName(L"TITLE", title);
  EXPECT_EQ(title.cols.at(0).values, std::vector<std::wstring>{L"DWG-1"});
}

TEST_F(PlacedCardTest, OpeningFailsWithAReasonForAnAbsentCardOrAMissingTemplate) {
  const std::wstring code = Place(Steps(1));
  const auto absent = OpenPlacedCard(cardPath, L"NOSUCHCD");
  ASSERT_FALSE(absent.ok());
  EXPECT_NE(absent.error().message.find("no page of the card NOSUCHCD"), std::string::npos);

  std::filesystem::remove(KrmToFsPath(cardPath));
  const auto gone = OpenPlacedCard(cardPath, code);
  ASSERT_FALSE(gone.ok());
  EXPECT_EQ(gone.error().file, KrmToUtf8(cardPath));
}

}  // namespace
