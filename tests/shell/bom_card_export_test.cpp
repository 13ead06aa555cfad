#include "shell/bom_card_export.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "drawing/extents_util.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/scoped_env.h"
#include "host/svc/tabulon_paths.h"
#include "shell/krm_host_session.h"
#include "samples/sample_assembly.h"
#include "samples/sample_library.h"
#include "support/test_support.h"

namespace {

using namespace tabulon::samples;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

// The sample library, written once.
ScratchDir& libraryDir() {
  static ScratchDir dir;
  static bool written = false;
  if (!written) {
    WriteSampleLibrary(dir.path());
    written = true;
  }
  return dir;
}

// A host with the plug-in loaded, a configuration folder of its own with the sample
// options, the sample library, and an empty drawing as current document.
class BomCardExport : public ::testing::Test {
 protected:
  void SetUp() override {
    env.set("TABULON_HOME", home.path().string());
    writeOptions(SampleOptionsText());
    writeFile(home / "tabulon.ini", "[Paths]\nLocale=zh_CN\nLibrary=" + libraryDir().path().string() + "\n");
    session = std::make_unique<KrmHostSession>(io);
    db = qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), home / "bom.dxf")->database();
    KrmBomLastEntry() = 0;
  }
  void TearDown() override { session.reset(); }

  void writeOptions(const std::string& text) { writeFile(home / "options.ini", text); }

  // Frame references, as the user would pick them.
  std::wstring pick(QaDbObjectId id) const { return L"#" + id.handle().text(); }

  // Texts of the attribute `tag` of every reference of a block whose name ends in
  // `_blockName` (the generated card's blocks), from top to bottom.
  std::vector<std::wstring> cardTexts(const std::wstring& blockName, const std::wstring& tag) const {
    std::vector<std::pair<double, std::wstring>> found;
    QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
    for (auto id : space->liveEntityIds()) {
      QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
      if (!ref) continue;
      QaDbObjectPointer<QaDbBlockTableRecord> block(ref->blockTableRecord(), QaDb::kForRead);
      const std::wstring& name = block->getName();
      const std::wstring suffix = L"_" + blockName;
      if (name.size() <= suffix.size() || name.compare(name.size() - suffix.size(), suffix.size(), suffix) != 0) continue;
      for (auto attId : ref->attributeIds()) {
        QaDbObjectPointer<QaDbAttribute> att(attId, QaDb::kForRead);
        if (att && att->tag() == tag) found.emplace_back(-ref->position().y, att->textString());
      }
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::wstring> texts;
    for (auto& f : found) texts.push_back(f.second);
    return texts;
  }

  ScratchDir home;
  tabulon::test::ScopedEnv env;
  QaEdScriptedIO io;
  std::unique_ptr<KrmHostSession> session;
  QaDbDatabase* db = nullptr;
};

std::vector<std::wstring> column(const std::vector<KrmBomRow>& rows, const std::wstring& key) {
  std::vector<std::wstring> out;
  for (const auto& row : rows) out.push_back(row.count(key) ? row.at(key) : L"?");
  return out;
}

TEST_F(BomCardExport, OneFrameNeedsNoSelectionAndGivesItsRowsAndTitle) {
  DrawAssemblySheet(*db, {0, 0, 0}, SampleOutputShaftSheet());
  std::vector<std::wstring> frames;
  ASSERT_TRUE(KrmCollectBomFrames(db, frames));
  EXPECT_EQ(frames.size(), 1u);
  EXPECT_TRUE(io.prompts().empty());
  KrmBomRow title;
  std::vector<KrmBomRow> rows;
  KrmCollectBomData(frames, db, title, rows);
  EXPECT_EQ(column(rows, L"序号"), (std::vector<std::wstring>{L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8"}));
  EXPECT_EQ(rows[2].at(L"名称"), L"深沟球轴承 6206");
  EXPECT_EQ(rows[2].at(L"总重"), L"0.40");
  // Mapped fields stand under both names.
  EXPECT_EQ(title.at(L"图样代号"), L"XH-01-00");
  EXPECT_EQ(title.at(L"图号"), L"XH-01-00");
  EXPECT_EQ(title.at(L"名称"), L"输出轴组件");
  EXPECT_EQ(title.at(L"设计"), L"张伟");
}

TEST_F(BomCardExport, TwoSelectedFramesConcatenateRowsUnderTheTitleOfTheFirst) {
  const auto shaft = DrawAssemblySheet(*db, {0, 0, 0}, SampleOutputShaftSheet());
  const auto cover = DrawAssemblySheet(*db, {500, 0, 0}, SampleCoverSheet());
  io.addAnswer(pick(cover) + L"," + pick(shaft));
  std::vector<std::wstring> frames;
  ASSERT_TRUE(KrmCollectBomFrames(db, frames));
  ASSERT_EQ(io.prompts().size(), 1u);
  EXPECT_NE(io.prompts()[0].find(L"选择明细表所在的图框"), std::wstring::npos);
  EXPECT_EQ(frames, (std::vector<std::wstring>{cover.handle().text(), shaft.handle().text()}));
  KrmBomRow title;
  std::vector<KrmBomRow> rows;
  KrmCollectBomData(frames, db, title, rows);
  ASSERT_EQ(rows.size(), 13u);
  EXPECT_EQ(rows[0].at(L"名称"), L"箱盖");
  EXPECT_EQ(rows[4].at(L"名称"), L"圆锥销 8×35");
  EXPECT_EQ(rows[5].at(L"名称"), L"输出轴");
  EXPECT_EQ(title.at(L"图号"), L"XH-02-00");
}

// What ends the collection, and what keeps every frame.
TEST_F(BomCardExport, SelectionDecidesWhichFramesCount) {
  struct Case {
    std::wstring answer;
    bool goesOn;
    std::size_t frames;
    bool message;  // "no frame selected"
  } cases[] = {
      {L"cancel", false, 0, false},
      {L"", true, 2, false},  // nothing selected: all frames
      {L"#LINE", false, 0, true},
      {L"#ROW", true, 1, false},  // a BOM row inside the cover's frame picks that frame
  };
  DrawAssemblySheet(*db, {0, 0, 0}, SampleOutputShaftSheet());
  const auto cover = DrawAssemblySheet(*db, {500, 0, 0}, SampleCoverSheet());
  QaDbObjectId outside;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForWrite);
    auto line = std::make_unique<QaDbLine>(QaGePoint3d(2000, 2000, 0), QaGePoint3d(2100, 2000, 0));
    QaDbEntity* raw = line.get();
    space->appendQaDbEntity(std::move(line), outside);
    raw->close();
  }
  QaDbObjectId coverRow;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
    for (auto id : space->liveEntityIds()) {
      QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
      if (ref && ref->position().x > 500 && ref->position().y > 61 && ref->position().y < 80) coverRow = id;
    }
  }
  ASSERT_FALSE(coverRow.isNull());
  for (const auto& c : cases) {
    QaEdScriptedIO local;
    QaEdUserIOScope scope(local);
    std::wstring answer = c.answer;
    if (answer == L"#LINE") answer = pick(outside);
    if (answer == L"#ROW") answer = pick(coverRow);
    local.addAnswer(answer);
    std::vector<std::wstring> frames;
    EXPECT_EQ(KrmCollectBomFrames(db, frames), c.goesOn) << c.answer;
    EXPECT_EQ(frames.size(), c.frames) << c.answer;
    EXPECT_EQ(local.printed().find(L"没有选择到图框！") != std::wstring::npos, c.message) << c.answer;
    if (c.answer == L"#ROW") {
      EXPECT_EQ(frames[0], cover.handle().text());
    }
  }
}

TEST_F(BomCardExport, DrawingWithoutFramesReportsTheSuiteNotReady) {
  std::vector<std::wstring> frames;
  EXPECT_FALSE(KrmCollectBomFrames(db, frames));
  EXPECT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_FALSE(KrmCollectBomFrames(nullptr, frames));
}

TEST_F(BomCardExport, EntriesRunUpToTheFirstIncompleteSection) {
  writeOptions(
      "[KrmcadTabulon_List]\nLISTEXP_DATA_CARD=A\nLISTEXP_DATA_TITLE=TA\nLISTEXP_DATA_LIST=LA\n"
      "[KrmcadTabulon_List1]\nLISTEXP_DATA_CARD=B\nLISTEXP_DATA_TITLE=TB\nLISTEXP_DATA_LIST=LB\n"
      "[KrmcadTabulon_List2]\nLISTEXP_DATA_CARD=C\nLISTEXP_DATA_TITLE=TC\n"
      "[KrmcadTabulon_List3]\nLISTEXP_DATA_CARD=D\nLISTEXP_DATA_TITLE=TD\nLISTEXP_DATA_LIST=LD\n");
  std::vector<KrmBomExportEntry> entries;
  std::vector<std::pair<std::wstring, std::wstring>> missing;
  KrmReadBomExportEntries(entries, missing);
  EXPECT_TRUE(missing.empty());
  EXPECT_EQ(entries, (std::vector<KrmBomExportEntry>{{L"A", L"TA", L"LA"}, {L"B", L"TB", L"LB"}}));

  writeOptions("[KrmcadTabulon_List]\nLISTEXP_DATA_CARD=A\n");
  KrmReadBomExportEntries(entries, missing);
  EXPECT_TRUE(entries.empty());
  EXPECT_EQ(missing, (std::vector<std::pair<std::wstring, std::wstring>>{
                         {L"KrmcadTabulon_List", L"LISTEXP_DATA_TITLE"}, {L"KrmcadTabulon_List", L"LISTEXP_DATA_LIST"}}));
}

TEST_F(BomCardExport, KeywordChangesTheEntryAndTheChoiceIsRememberedAcrossRuns) {
  const std::vector<KrmBomExportEntry> entries = {{L"零件明细表", L"T", L"L"}, {L"外购件清单", L"T", L"L"}};
  io.addAnswer(L"2");
  io.addAnswer(L"100,50");
  int chosen = -1;
  QaGePoint3d point;
  ASSERT_TRUE(KrmChooseBomEntry(entries, chosen, point));
  EXPECT_EQ(chosen, 1);
  EXPECT_TRUE(point.isEqualTo({100, 50, 0}));
  ASSERT_EQ(io.prompts().size(), 2u);
  EXPECT_EQ(io.prompts()[0], L"插入点[<零件明细表>(1)/外购件清单(2)]<按回车键则默认为当前点>");
  EXPECT_EQ(io.prompts()[1], L"插入点[零件明细表(1)/<外购件清单>(2)]<按回车键则默认为当前点>");

  // The next run proposes the entry chosen before; Enter takes it at the origin.
  io.addAnswer(L"");
  ASSERT_TRUE(KrmChooseBomEntry(entries, chosen, point));
  EXPECT_EQ(chosen, 1);
  EXPECT_TRUE(point.isEqualTo({0, 0, 0}));
  EXPECT_EQ(io.prompts()[2], io.prompts()[1]);

  // A remembered choice beyond the entries starts over at the first; cancel ends.
  KrmBomLastEntry() = 5;
  io.addAnswer(L"cancel");
  EXPECT_FALSE(KrmChooseBomEntry(entries, chosen, point));
  EXPECT_EQ(io.prompts()[3], io.prompts()[0]);
}

TEST_F(BomCardExport, SingleEntryAsksForThePointOnly) {
  io.addAnswer(L"");
  int chosen = -1;
  QaGePoint3d point(1, 1, 0);
  ASSERT_TRUE(KrmChooseBomEntry({{L"A", L"T", L"L"}}, chosen, point));
  EXPECT_EQ(chosen, 0);
  EXPECT_TRUE(point.isEqualTo({0, 0, 0}));
  EXPECT_EQ(io.prompts().back(), L"插入点<按回车键则默认为当前点>");
}

// The whole command: two frames, both selected; the card stands at the point given,
// with the rows of both frames in order and the first frame's title.
TEST_F(BomCardExport, CommandMakesThePartsListCardFromBothFrames) {
  const auto shaft = DrawAssemblySheet(*db, {0, 0, 0}, SampleOutputShaftSheet());
  const auto cover = DrawAssemblySheet(*db, {500, 0, 0}, SampleCoverSheet());
  io.addAnswer(pick(shaft) + L"," + pick(cover));
  io.addAnswer(L"1000,0");
  const auto before = QaDbObjectPointer<QaDbBlockTableRecord>(db->modelSpaceId(), QaDb::kForRead)->liveEntityIds();
  ASSERT_EQ(session->runCommand(L"KrmBomCardExp"), 1) << io.transcript();

  const auto numbers = cardTexts(kBomLineBlock, L"序号");
  ASSERT_EQ(numbers.size(), static_cast<std::size_t>(kPartsListFirstRows));
  EXPECT_EQ(std::vector<std::wstring>(numbers.begin(), numbers.begin() + 9),
            (std::vector<std::wstring>{L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"1"}));
  const auto names = cardTexts(kBomLineBlock, L"名称");
  EXPECT_EQ(names[8], L"箱盖");
  EXPECT_EQ(names[12], L"圆锥销 8×35");
  EXPECT_EQ(names[13], L"");
  EXPECT_EQ(cardTexts(kBomHeadBlock, L"产品图号"), (std::vector<std::wstring>{L"XH-01-00"}));
  EXPECT_EQ(cardTexts(kBomHeadBlock, L"编制"), (std::vector<std::wstring>{L"张伟"}));
  EXPECT_EQ(cardTexts(kPageNoBlock, kClassSumTag), (std::vector<std::wstring>{L"1"}));
  EXPECT_EQ(cardTexts(kBatchSumBlock, kBatchSumTag), (std::vector<std::wstring>{L"1"}));

  // The new page's lower-left corner is the point given.
  auto after = QaDbObjectPointer<QaDbBlockTableRecord>(db->modelSpaceId(), QaDb::kForRead)->liveEntityIds();
  after.erase(after.begin(), after.begin() + static_cast<std::ptrdiff_t>(before.size()));
  QaGePoint3d low, high;
  ASSERT_TRUE(BoxOf(after, low, high));
  EXPECT_TRUE(low.isEqualTo({1000, 0, 0}));
  EXPECT_NEAR(high.x - low.x, 210, 1e-9);
}

TEST_F(BomCardExport, MissingOptionPrintsWhichKeyAndMakesNoCard) {
  DrawAssemblySheet(*db, {0, 0, 0}, SampleOutputShaftSheet());
  writeOptions("[KrmFrame]\nFrameBlocks=A3FRAME\nBomRowBlocks=BOMROW\n"
               "[KrmcadTabulon_List]\nLISTEXP_DATA_CARD=零件明细表\nLISTEXP_DATA_TITLE=BOMHEAD\n");
  const auto before = QaDbObjectPointer<QaDbBlockTableRecord>(db->modelSpaceId(), QaDb::kForRead)->liveEntityIds();
  EXPECT_EQ(session->runCommand(L"KrmBomCardExp"), 0);
  EXPECT_NE(io.printed().find(L"\ngetOstrelmOptionData KrmcadTabulon_List FieldMap  LISTEXP_DATA_LIST error !"),
            std::wstring::npos)
      << io.transcript();
  EXPECT_EQ(QaDbObjectPointer<QaDbBlockTableRecord>(db->modelSpaceId(), QaDb::kForRead)->liveEntityIds().size(),
            before.size());
}

}  // namespace
