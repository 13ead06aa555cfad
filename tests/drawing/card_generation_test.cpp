#include "drawing/card_generation.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/paging.h"
#include "drawing/card_tag.h"
#include "drawing/extents_util.h"
#include "drawing/page_reader.h"
#include "generation_library.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"

namespace {

// Row texts of one page of the read-back: column 1 (step) of every row block.
std::vector<std::wstring> StepsOf(const KrmLoadGroup& page) {
  std::vector<std::wstring> steps;
  for (const KrmLoadAtt& row : page.refs) steps.push_back(row.texts.at(1));
  return steps;
}

std::wstring TitleText(const KrmLoadGroup& page, const std::wstring& column) {
  for (const KrmLoadTAtt& cls : page.otherClasses) {
    for (std::size_t c = 0; c < cls.colNames.size(); ++c) {
      if (cls.colNames[c] == column && !cls.refs.empty()) return cls.refs.front().texts.at(c);
    }
  }
  return L"<none>";
}

class CardGeneration : public ::testing::Test {
 protected:
  void SetUp() override {
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "generated.dxf");
    cardPath = gentest::WriteSampleLibrary(lib.path(), shape);
  }
  void TearDown() override { qaDocManager().closeAll(); }

  // Loads the card and fills its row class with `steps` (and `contents`).
  void Prepare(const std::vector<std::wstring>& steps, const std::vector<std::wstring>& contents = {}) {
    ASSERT_EQ(cardTemplate.LoadTemplate(cardPath), 1);
    data.InitFromTemplate(cardTemplate);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    ASSERT_EQ(grid.blockName, L"ROW");
    for (KrmDataTCol& col : grid.cols) col.values.assign(steps.size(), L"");
    for (std::size_t r = 0; r < steps.size(); ++r) {
      grid.cols[0].values[r] = std::to_wstring(r + 1);
      grid.cols[1].values[r] = steps[r];
      if (r < contents.size()) grid.cols[2].values[r] = contents[r];
    }
    data.SetGridAt(data.GetBaseGrid(), grid);
    data.FillPageNumbers(1, PageCount(data.GetRowsNeeded(data.GetBaseGrid()), grid.rowsFirst, grid.rowsNext));
  }

  int Generate() { return CreateCardPages(cardTemplate, data, out); }

  std::wstring CodeOfCard() const {
    QaDbObjectPointer<QaDbEntity> entity(out.at(0), QaDb::kForRead);
    KrmCardTag tag;
    ReadCardTagOfEntity(entity.object(), tag);
    return tag.cardCode;
  }

  KrmPlacedCard ReadBack(QaDbDatabase& db) const {
    KrmPlacedCard placed;
    placed.baseBlockName = L"ROW";
    placed.baseColNames = {L"序号", L"工序", L"内容"};
    placed.baseFillOrder = 1;
    placed.otherGrids = {{L"TITLE", {L"图号", L"页码", L"总页", L"批总"}, 0}, {L"BATCH", {L"批页"}, 0}};
    ReadPageGroups(db, CodeOfCard(), placed);
    return placed;
  }

  std::size_t LiveEntityCount() const {
    QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForRead);
    return space->liveEntityIds().size();
  }

  static std::vector<std::wstring> Steps(int count) {
    std::vector<std::wstring> steps;
    for (int i = 1; i <= count; ++i) steps.push_back(L"工序" + std::to_wstring(i));
    return steps;
  }

  gentest::LibraryShape shape;  // 5 row blocks on the first page, 8 on the others
  tabulon::test::ScratchDir lib;
  std::wstring cardPath;
  KrmCardTemplate cardTemplate;
  KrmCardData data;
  std::vector<QaDbObjectId> out;
};

struct RowCountCase {
  int rows;
  std::vector<int> filledPerPage;
};

TEST_F(CardGeneration, RowsSpillOverPagesThatAreNumberedInOrder) {
  // The first page's capacity, one more, and two full continuation pages after it.
  for (const RowCountCase& c : {RowCountCase{5, {5}}, RowCountCase{6, {5, 1}}, RowCountCase{21, {5, 8, 8}}}) {
    SCOPED_TRACE(c.rows);
    qaDocManager().closeAll();
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "generated.dxf");
    out.clear();
    Prepare(Steps(c.rows));
    ASSERT_EQ(Generate(), 1);

    const KrmPlacedCard placed = ReadBack(*qaWorkingDatabase());
    ASSERT_EQ(placed.pages.size(), c.filledPerPage.size());
    int next = 1;
    for (std::size_t p = 0; p < placed.pages.size(); ++p) {
      const KrmLoadGroup& page = placed.pages[p];
      EXPECT_EQ(page.refs.size(), p == 0 ? 5u : 8u);
      const std::vector<std::wstring> steps = StepsOf(page);
      for (std::size_t r = 0; r < steps.size(); ++r) {
        const bool filled = static_cast<int>(r) < c.filledPerPage[p];
        EXPECT_EQ(steps[r], filled ? L"工序" + std::to_wstring(next++) : L"") << "page " << p << " row " << r;
        EXPECT_EQ(page.refs[r].recordHead, 1);
      }
      EXPECT_EQ(TitleText(page, L"页码"), std::to_wstring(p + 1));
      EXPECT_EQ(TitleText(page, L"总页"), std::to_wstring(placed.pages.size()));
    }
    EXPECT_EQ(next, c.rows + 1);
  }
}

TEST_F(CardGeneration, LineBreaksCarryTheRestIntoTheFollowingRowBlocks) {
  Prepare({L"车", L"铣"}, {L"一\n二\n三", L"四"});
  ASSERT_EQ(Generate(), 1);
  const KrmPlacedCard placed = ReadBack(*qaWorkingDatabase());
  ASSERT_EQ(placed.pages.size(), 1u);
  const std::vector<KrmLoadAtt>& rows = placed.pages[0].refs;
  ASSERT_EQ(rows.size(), 5u);
  const std::vector<int> heads = {1, 0, 0, 1, 1};
  const std::vector<std::wstring> steps = {L"车", L"", L"", L"铣", L""};
  for (std::size_t r = 0; r < rows.size(); ++r) {
    EXPECT_EQ(rows[r].recordHead, heads[r]) << r;
    EXPECT_EQ(rows[r].texts.at(1), steps[r]) << r;
  }
  EXPECT_EQ(rows[1].texts.at(2).substr(0, 1), L"二");
  EXPECT_EQ(rows[2].texts.at(2), L"三");
  EXPECT_EQ(rows[3].texts.at(2), L"四");
}

TEST_F(CardGeneration, EveryPageIsOneGroupOfTaggedEntitiesThatSurvivesSavingAndReloading) {
  Prepare(Steps(13), {L"第一行内容"});
  ASSERT_EQ(Generate(), 1);
  const std::wstring code = CodeOfCard();
  const auto file = lib / "out.dxf";
  ASSERT_EQ(qaWorkingDatabase()->saveAs(file), Qa::eOk);

  QaDbDatabase reloaded(false);
  ASSERT_EQ(reloaded.readDwgFile(file), Qa::eOk);
  const KrmPlacedCard placed = ReadBack(reloaded);
  ASSERT_EQ(placed.pages.size(), 2u);
  std::vector<std::wstring> steps = StepsOf(placed.pages[0]);
  const std::vector<std::wstring> more = StepsOf(placed.pages[1]);
  steps.insert(steps.end(), more.begin(), more.end());
  steps.resize(13);
  EXPECT_EQ(steps, Steps(13));
  EXPECT_EQ(placed.pages[0].refs[0].texts.at(2), L"第一行内容");

  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  const char* inspect = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
print("errors", len(doc.audit().errors))
groups = list(doc.groups)
print("groups", len(groups))
members = set()
for name, group in groups:
    for e in group:
        members.add(e.dxf.handle)
        data = e.get_xdata("KRM_TABULONPARA")
        assert any(value == sys.argv[2] for code, value in data), e.dxftype()
print("grouped", len(members) == len(doc.modelspace()))
)";
  const auto seen = tabulon::test::runPython(inspect, {file.string(), KrmToUtf8(code)});
  EXPECT_EQ(seen.output, "errors 0\ngroups 2\ngrouped True\n");
}

struct PlacementCase {
  int dir;
  int fstT;
  // Page offsets from the insertion point in page modules (width + gap, height + gap).
  double x1, y1, x2, y2;
};

TEST_F(CardGeneration, PagesFollowTheDirectionRowOrColumnFirst) {
  // Three pages, two per row or column: the continuation pages count from page 1 on.
  const double w = gentest::kPageWidth + 10, h0 = gentest::PageHeight(5) + 10, h1 = gentest::PageHeight(8) + 10;
  const PlacementCase cases[] = {
      {0, 1, w, 0, 2 * w, 0},   {1, 1, -w, 0, -2 * w, 0},        {2, 1, -w, 0, -2 * w, 0},
      {3, 1, w, 0, 2 * w, 0},   {0, 0, 0, h0, 0, h0 + h1},       {1, 0, 0, h0, 0, h0 + h1},
      {2, 0, 0, -h0, 0, -h0 - h1}, {3, 0, 0, -h0, 0, -h0 - h1},
  };
  for (const PlacementCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << "dir " << c.dir << " fstT " << c.fstT);
    qaDocManager().closeAll();
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "placed.dxf");
    out.clear();
    Prepare(Steps(14));
    KrmCardDir dir;
    dir.SetDir(c.dir);
    dir.SetFstT(c.fstT);
    dir.SetFstN(2);
    cardTemplate.SetDir(dir);
    cardTemplate.SetInsertPoint({1000, 2000, 0});
    ASSERT_EQ(Generate(), 1);
    const KrmPlacedCard placed = ReadBack(*qaWorkingDatabase());
    ASSERT_EQ(placed.pages.size(), 3u);
    const QaGePoint3d expected[] = {{1000, 2000, 0}, {1000 + c.x1, 2000 + c.y1, 0}, {1000 + c.x2, 2000 + c.y2, 0}};
    for (std::size_t p = 0; p < 3; ++p) {
      const QaGePoint3d corner = LowerLeftOf(placed.pages[p].allIds);
      EXPECT_NEAR(corner.x, expected[p].x, 1e-6) << p;
      EXPECT_NEAR(corner.y, expected[p].y, 1e-6) << p;
    }
  }
}

TEST_F(CardGeneration, MissingFirstPageDrawingPrintsTheMessageAndDrawsNothing) {
  std::filesystem::remove(lib / "first.dxf");
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  Prepare(Steps(3));
  EXPECT_EQ(Generate(), 0);
  EXPECT_EQ(io.printed(), L"\n获取图纸信息失败");
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(LiveEntityCount(), 0u);
}

TEST_F(CardGeneration, UserPlacesEachPageAndCancellingTakesBackThePagesMade) {
  {
    QaEdScriptedIO io({L"500,0", L"cancel"});
    QaEdUserIOScope scope(io);
    Prepare(Steps(7));
    cardTemplate.SetArrangeOptions(1, 0);
    EXPECT_EQ(Generate(), 0);
    EXPECT_EQ(io.prompts().size(), 2u);
    EXPECT_EQ(LiveEntityCount(), 0u);
    EXPECT_TRUE(out.empty());
  }
  QaEdScriptedIO io({L"500,0", L"0,900"});
  QaEdUserIOScope scope(io);
  ASSERT_EQ(Generate(), 1);
  const KrmPlacedCard placed = ReadBack(*qaWorkingDatabase());
  ASSERT_EQ(placed.pages.size(), 2u);
  EXPECT_EQ(LowerLeftOf(placed.pages[0].allIds), QaGePoint3d(500, 0, 0));
  // Each page moves from the first table's matrix point to the point picked.
  EXPECT_EQ(LowerLeftOf(placed.pages[1].allIds), QaGePoint3d(0, 900, 0));
  EXPECT_EQ(StepsOf(placed.pages[1]).front(), L"工序6");
}

TEST_F(CardGeneration, CardOfOneTableDrawsNothing) {
  KrmCardAttributes card;
  card.setCardName(L"single", L"单页卡");
  card.addTblFile(L"first");
  card.OutputCard(KrmFromFsPath(lib / "single.crd"));
  cardPath = KrmFromFsPath(lib / "single.crd");
  Prepare(Steps(2));
  EXPECT_EQ(Generate(), 0);
  EXPECT_EQ(LiveEntityCount(), 0u);
}

}  // namespace
