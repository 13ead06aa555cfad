#include "drawing/card_engine.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/block_names.h"
#include "drawing/extents_util.h"
#include "drawing/page_group.h"
#include "generation_library.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/ed/qaed_scripted_io.h"
#include "support/test_support.h"

namespace {

KrmTableRows Rows(int count, const std::wstring& prefix = L"工序") {
  KrmTableRows rows;
  for (int i = 1; i <= count; ++i) rows.push_back({{L"工序", prefix + std::to_wstring(i)}});
  return rows;
}

// Texts of attribute `tag` on the references of class `block` in model space, in the
// order the references were appended.
std::vector<std::wstring> TextsOf(const std::wstring& block, const std::wstring& tag) {
  std::vector<std::wstring> texts;
  QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForRead);
  for (const QaDbObjectId& id : space->liveEntityIds()) {
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
    if (!ref || StripBlockPrefix(GetBlockName(ref->blockTableRecord())) != block) continue;
    for (const QaDbObjectId& attId : ref->attributeIds()) {
      QaDbObjectPointer<QaDbAttribute> att(attId, QaDb::kForRead);
      if (att && att->tag() == tag) texts.push_back(att->textString());
    }
  }
  return texts;
}

std::vector<std::wstring> Numbers(std::initializer_list<int> values) {
  std::vector<std::wstring> texts;
  for (int v : values) texts.push_back(std::to_wstring(v));
  return texts;
}

class CardEngine : public ::testing::Test {
 protected:
  void SetUp() override {
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "engine.dxf");
    gentest::WriteSampleLibrary(lib.path());  // 5 rows on the first page, 8 after
  }
  void TearDown() override { qaDocManager().closeAll(); }

  std::size_t LiveEntityCount() const {
    QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForRead);
    return space->liveEntityIds().size();
  }

  std::wstring Library() const { return KrmFromFsPath(lib.path()); }

  tabulon::test::ScratchDir lib;
};

TEST_F(CardEngine, BatchNumbersRunOnAcrossCardsAndAreWrittenWhenTheEngineEnds) {
  std::optional<KrmCardEngine> engine(std::in_place);
  engine->InitCardPath(Library());
  // Cards of 2, 1 and 3 pages.
  for (int rows : {6, 3, 14}) {
    engine->SetCardName(L"card");
    engine->SetTableContent(L"ROW", Rows(rows));
    ASSERT_EQ(engine->PlayCreate(), 1);
  }
  EXPECT_EQ(engine->BatchCurIds().size(), 6u);
  EXPECT_EQ(TextsOf(L"TITLE", L"页码"), Numbers({1, 2, 1, 1, 2, 3}));
  // Until the batch ends each card carries its own numbers.
  EXPECT_EQ(TextsOf(L"BATCH", L"批页"), Numbers({1, 2, 1, 1, 2, 3}));
  engine.reset();
  EXPECT_EQ(TextsOf(L"BATCH", L"批页"), Numbers({1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(TextsOf(L"TITLE", L"批总"), Numbers({6, 6, 6, 6, 6, 6}));
  EXPECT_EQ(TextsOf(L"TITLE", L"总页"), Numbers({2, 2, 1, 3, 3, 3}));
}

TEST_F(CardEngine, FinishNumbersTheBatchAndReportsPagesThatAreGone) {
  KrmCardEngine engine;
  engine.InitCardPath(Library());
  for (int rows : {6, 14}) {  // 2 and 3 pages
    engine.SetCardName(L"card");
    engine.SetTableContent(L"ROW", Rows(rows));
    ASSERT_EQ(engine.PlayCreate(), 1);
  }
  {
    QaDbObjectPointer<QaDbBlockReference> gone(engine.BatchCurIds()[1], QaDb::kForWrite);
    ASSERT_TRUE(gone);
    ASSERT_EQ(gone->erase(), Qa::eOk);
  }
  const tabulon::Status finished = engine.Finish();
  ASSERT_FALSE(finished.ok());
  EXPECT_EQ(finished.error().field, "batch page number");
  // How many pages missed their number, of how many.
  EXPECT_NE(finished.error().message.find(" 1 "), std::string::npos) << finished.describe();
  EXPECT_NE(finished.error().message.find(" 5 "), std::string::npos) << finished.describe();
  // The pages still there are numbered on without a gap.
  EXPECT_EQ(TextsOf(L"BATCH", L"批页"), Numbers({1, 2, 3, 4}));
  EXPECT_EQ(TextsOf(L"TITLE", L"批总"), Numbers({4, 4, 4, 4, 4}));
  // Finished, the engine starts afresh: nothing left to number.
  EXPECT_TRUE(engine.BatchCurIds().empty());
  EXPECT_TRUE(engine.Finish().ok());
}

TEST_F(CardEngine, PageStartsAndStepShapeTheNumbers) {
  {
    KrmCardEngine engine;
    engine.InitCardPath(Library());
    engine.SetCardName(L"card");
    engine.SetPageStart_C(10);
    engine.SetPageStart_B(100);
    engine.SetPageStep(2);
    engine.SetTableContent(L"ROW", Rows(14));
    ASSERT_EQ(engine.PlayCreate(), 1);
    EXPECT_EQ(TextsOf(L"TITLE", L"页码"), Numbers({10, 12, 14}));
  }
  EXPECT_EQ(TextsOf(L"BATCH", L"批页"), Numbers({100, 102, 104}));
  EXPECT_EQ(TextsOf(L"TITLE", L"批总"), Numbers({104, 104, 104}));
}

TEST_F(CardEngine, CardNameAndPathAreNormalised) {
  for (const auto& [path, name] : {std::pair{Library(), std::wstring(L"card")}, std::pair{Library() + L"/", std::wstring(L"card.crd")}}) {
    SCOPED_TRACE(KrmToUtf8(path + L" " + name));
    qaDocManager().closeAll();
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "engine.dxf");
    QaEdScriptedIO io;
    QaEdUserIOScope scope(io);
    {
      KrmCardEngine engine;
      engine.InitCardPath(path);
      engine.SetCardName(name);
      engine.SetTableContent(L"ROW", Rows(2));
      EXPECT_EQ(engine.PlayCreate(), 1);
    }
    EXPECT_EQ(io.printed(), L"");
    EXPECT_EQ(TextsOf(L"ROW", L"工序"), (std::vector<std::wstring>{L"工序1", L"工序2", L"", L"", L""}));
  }
}

TEST_F(CardEngine, MissingTemplateOrContentCreatesNothing) {
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  KrmCardEngine engine;
  engine.InitCardPath(Library());
  engine.SetCardName(L"card");
  EXPECT_EQ(engine.PlayCreate(), 0);  // no table content
  EXPECT_EQ(io.printed(), L"");
  engine.SetCardName(L"absent.CRD");
  engine.SetTableContent(L"ROW", Rows(1));
  EXPECT_EQ(engine.PlayCreate(), 0);
  EXPECT_EQ(io.printed(), L"\nLoad card error ! please check card Ppath=" + Library() +
                              L"/,card name=absent.CRD.crd");
  EXPECT_EQ(LiveEntityCount(), 0u);
}

TEST_F(CardEngine, CreateSaysWhatFailedAndWhere) {
  QaEdScriptedIO io;
  QaEdUserIOScope scope(io);
  KrmCardEngine engine;
  engine.InitCardPath(Library());
  engine.SetCardName(L"card");
  const tabulon::Status empty = engine.Create();
  ASSERT_FALSE(empty.ok());
  EXPECT_EQ(empty.error().field, "table content");

  engine.SetCardName(L"absent");
  engine.SetTableContent(L"ROW", Rows(1));
  const tabulon::Status absent = engine.Create();
  ASSERT_FALSE(absent.ok());
  EXPECT_EQ(absent.error().file, (lib.path() / "absent.crd").string());
  EXPECT_FALSE(absent.error().message.empty());

  std::filesystem::remove(lib.path() / "first.dxf");
  engine.SetCardName(L"card");
  engine.SetTableContent(L"ROW", Rows(1));
  const tabulon::Status undrawn = engine.Create();
  ASSERT_FALSE(undrawn.ok());
  EXPECT_EQ(undrawn.error().file, (lib.path() / "card.crd").string());
  EXPECT_EQ(LiveEntityCount(), 0u);
}

TEST_F(CardEngine, ColumnsTakeTheInNameBeforeTheShowNameAndUnknownBlocksAreIgnored) {
  {
    KrmCardEngine engine;
    engine.InitCardPath(Library());
    engine.SetCardName(L"card");
    engine.SetTableContent(L"ROW", {{{L"工序_CODE", L"按编码"}, {L"工序", L"按名称"}},
                                    {{L"工序_CODE", L""}, {L"工序", L"编码为空"}},
                                    {{L"内容", L"只有名称"}}});
    engine.SetTableContent(L"TITLE", {{{L"图号", L"TB-01"}}});
    engine.SetTableContent(L"NOSUCH", {{{L"x", L"y"}}});
    ASSERT_EQ(engine.PlayCreate(), 1);
  }
  EXPECT_EQ(TextsOf(L"ROW", L"工序"), (std::vector<std::wstring>{L"按编码", L"编码为空", L"", L"", L""}));
  EXPECT_EQ(TextsOf(L"ROW", L"内容").at(2), L"只有名称");
  EXPECT_EQ(TextsOf(L"TITLE", L"图号"), std::vector<std::wstring>{L"TB-01"});
}

TEST_F(CardEngine, LaterCardsStandBesideTheEarlierOnesWhateverTheInsertPoint) {
  KrmCardEngine engine;
  engine.InitCardPath(Library());
  engine.SetCardName(L"card");
  engine.SetInsert({100, 50, 0});
  engine.SetTableContent(L"ROW", Rows(6));
  ASSERT_EQ(engine.PlayCreate(), 1);
  std::vector<QaDbObjectId> first;
  engine.GetAllEnt(first);
  QaGePoint3d lower, upper;
  ASSERT_TRUE(BoxOf(first, lower, upper));
  EXPECT_EQ(lower, QaGePoint3d(100, 50, 0));

  engine.SetCardName(L"card");
  engine.SetInsert({-5000, -5000, 0});
  engine.SetTableContent(L"ROW", Rows(1));
  ASSERT_EQ(engine.PlayCreate(), 1);
  std::vector<QaDbObjectId> all;
  engine.GetAllEnt(all);
  // The first card's ids, then both cards' ids again.
  ASSERT_GT(all.size(), 2 * first.size());
  const std::vector<QaDbObjectId> second(all.begin() + static_cast<std::ptrdiff_t>(2 * first.size()), all.end());
  EXPECT_EQ(LowerLeftOf(second), QaGePoint3d(upper.x + 10, 50, 0));
}

}  // namespace
