#include "drawing/side_drawing.h"

#include <gtest/gtest.h>

#include "drawing/block_names.h"
#include "drawing/card_tag.h"
#include "drawing/extents_util.h"
#include "drawing/page_copy.h"
#include "records_test_support.h"
#include "support/test_support.h"

namespace {

using recordstest::addLine;
using recordstest::addToModelSpace;

// What an independent reader sees: audit errors, prefixed blocks, marked entities.
const char* kInspect = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
print("errors", len(doc.audit().errors))
print("blocks", sorted(b.name for b in doc.blocks if not b.name.startswith("*")))
print("marked", [e.has_xdata("KRM_TABULONPARA") and not e.get_xdata("KRM_TABULONPARA") for e in doc.modelspace()])
)";

// A hand-made page standing at (200, 300): lines, a circle, a text and two row blocks.
class SideDrawing : public ::testing::Test {
 protected:
  void SetUp() override {
    const QaDbObjectId row = recordstest::addBlock(form, L"ROW", {L"工序", L"内容"});
    picked = {addLine(form, 200, 300, 210, 300), addLine(form, 200, 340, 260, 340),
              addToModelSpace(form, std::make_unique<QaDbCircle>(QaGePoint3d(230, 320, 0), QaGeVector3d::kZAxis, 3)),
              addToModelSpace(form, std::make_unique<QaDbText>(QaGePoint3d(202, 330, 0), L"工艺卡", QaDbObjectId(), 5))};
    for (double y : {310.0, 320.0}) picked.push_back(addToModelSpace(form, std::make_unique<QaDbBlockReference>(QaGePoint3d(220, y, 0), row)));
    ASSERT_EQ(WriteSideDrawing((dir / "T1.dwg").wstring(), L"T1", picked), 1);
  }
  QaDbDatabase form;
  std::vector<QaDbObjectId> picked;
  tabulon::test::ScratchDir dir;
};

TEST_F(SideDrawing, WrittenPageStartsAtTheOriginWithPrefixedBlocksAndMarkedEntities) {
  QaDbDatabase side(false);
  ASSERT_EQ(side.readDwgFile(dir / "T1.dxf"), Qa::eOk);
  const std::vector<QaDbObjectId> ids =
      QaDbObjectPointer<QaDbBlockTableRecord>(side.modelSpaceId(), QaDb::kForRead)->liveEntityIds();
  EXPECT_EQ(ids.size(), picked.size());
  EXPECT_EQ(LowerLeftOf(ids), QaGePoint3d(0, 0, 0));

  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  const auto seen = tabulon::test::runPython(kInspect, {(dir / "T1.dxf").string()});
  EXPECT_EQ(seen.output, "errors 0\nblocks ['T1_ROW']\nmarked [True, True, True, True, True, True]\n");
}

TEST_F(SideDrawing, PageCopiedOutIsScaledMovedAndDropsTheCircle) {
  QaDbDatabase current;
  KrmEntityPool pool;
  const KrmEntityList page = ReadSideDrawing(dir / "T1.dxf", {100, 100, 0}, 2, pool, &current);
  ASSERT_EQ(page.size(), picked.size() - 1);
  const auto* line = QaDbLine::cast(page[0]);
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->startPoint(), QaGePoint3d(100, 100, 0));
  EXPECT_EQ(line->endPoint(), QaGePoint3d(120, 100, 0));
  EXPECT_EQ(page[2]->isA(), QaDbText::desc());
  for (QaDbEntity* entity : {page[3], page[4]}) {
    const auto* ref = QaDbBlockReference::cast(entity);
    ASSERT_NE(ref, nullptr);
    EXPECT_FALSE(HasCardTag(ref));  // free for the card's own records
    EXPECT_EQ(GetBlockName(ref->blockTableRecord()), L"T1_ROW");
    EXPECT_EQ(ref->pendingAttributes().size(), 2u);
  }
  EXPECT_EQ(QaDbBlockReference::cast(page[4])->position(), QaGePoint3d(140, 140, 0));
  EXPECT_EQ(LowerLeftOf(AppendToModelSpace(page, pool, &current)), QaGePoint3d(100, 100, 0));
}

TEST_F(SideDrawing, UnreadableOrUncopyableDrawingGivesAnEmptyPage) {
  QaDbDatabase current;
  KrmEntityPool pool;
  tabulon::test::writeFile(dir / "broken.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nx\n");
  ASSERT_EQ(WriteSideDrawing((dir / "circle").wstring(), L"T2", {picked[2]}), 1);
  for (const char* name : {"missing.dxf", "broken.dxf", "circle.dxf"})
    EXPECT_TRUE(ReadSideDrawing(dir / name, {0, 0, 0}, 0, pool, &current).empty()) << name;
  EXPECT_EQ(pool.size(), 0u);
}

TEST(PageCopy, RealDrawingKeepsEveryCopyableEntity) {
  const std::filesystem::path file = tabulon::test::fixturesDir() / "hanochhu_2308PM-04-T3-2429_pid_attribs.dxf";
  QaDbDatabase original(false), current;
  ASSERT_EQ(original.readDwgFile(file), Qa::eOk);
  std::size_t copyable = 0;
  for (QaDbObjectId id : QaDbObjectPointer<QaDbBlockTableRecord>(original.modelSpaceId(), QaDb::kForRead)->liveEntityIds()) {
    const QaRxClass* kind = id.rawObject()->isA();
    copyable += kind == QaDbLine::desc() || kind == QaDbText::desc() || kind == QaDbMText::desc() ||
                kind == QaDbPolyline::desc() || kind == QaDbBlockReference::desc();
  }
  KrmEntityPool pool;
  const KrmEntityList page = ReadSideDrawing(file, {0, 0, 0}, 1, pool, &current);
  EXPECT_GT(copyable, 0u);
  EXPECT_EQ(page.size(), copyable);
  EXPECT_EQ(AppendToModelSpace(page, pool, &current).size(), copyable);
}

}  // namespace
