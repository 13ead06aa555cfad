#include "drawing/side_drawing.h"

#include <gtest/gtest.h>

#include <sstream>

#include "drawing/block_names.h"
#include "drawing/card_tag.h"
#include "drawing/extents_util.h"
#include "drawing/page_copy.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_polyline.h"
#include "records_test_support.h"
#include "support/test_support.h"

namespace {

using recordstest::addBlock;
using recordstest::addTextStyle;
using recordstest::addToModelSpace;
using recordstest::makeRef;
using tabulon::test::fixturesDir;
using tabulon::test::runPython;
using tabulon::test::ScratchDir;

// What an independent reader sees in a written side drawing.
const char* kInspect = R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
print("errors", len(doc.audit().errors))
print("appid", "KRM_TABULONPARA" in doc.appids)
for block in doc.blocks:
    if not block.name.startswith("*"):
        print("block", block.name)
for e in doc.modelspace():
    print("entity", e.dxftype(), e.has_xdata("KRM_TABULONPARA") and len(e.get_xdata("KRM_TABULONPARA")) == 0)
)";

// A hand-made page standing at (200, 300): a frame line, a circle, a title text, a
// note, and two row blocks.
class SideDrawing : public ::testing::Test {
 protected:
  void SetUp() override {
    const QaDbObjectId style = addTextStyle(form, L"CARD");
    const QaDbObjectId row = addBlock(form, L"ROW", {{L"工序", {1, 2, 0}}, {L"内容", {4, 2, 0}}}, style);
    auto line = [&](double x0, double y0, double x1, double y1) {
      picked.push_back(addToModelSpace(form, std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0))));
    };
    line(200, 300, 210, 300);
    line(200, 340, 260, 340);
    picked.push_back(addToModelSpace(form, std::make_unique<QaDbCircle>(QaGePoint3d(230, 320, 0), QaGeVector3d::kZAxis, 3)));
    picked.push_back(addToModelSpace(form, std::make_unique<QaDbText>(QaGePoint3d(202, 330, 0), L"机加工艺卡", style, 5)));
    auto note = std::make_unique<QaDbMText>();
    note->setContents(L"备注");
    note->setLocation({240, 330, 0});
    note->setTextHeight(3);
    picked.push_back(addToModelSpace(form, std::move(note)));
    for (double y : {310.0, 320.0}) picked.push_back(addToModelSpace(form, makeRef(row, {220, y, 0})));
  }

  QaDbDatabase form;
  std::vector<QaDbObjectId> picked;
  ScratchDir dir;
};

TEST_F(SideDrawing, WrittenPageStartsAtTheOriginWithPrefixedBlocksAndMarkedEntities) {
  const std::filesystem::path stem = dir / "T1";
  std::string error;
  ASSERT_EQ(WriteSideDrawing(stem.wstring(), L"T1", picked, &error), 1) << error;
  const std::filesystem::path file = dir / "T1.dxf";
  ASSERT_TRUE(std::filesystem::exists(file));

  QaDbDatabase side(false);
  ASSERT_EQ(side.readDwgFile(file, 0, &error), Qa::eOk) << error;
  QaDbObjectPointer<QaDbBlockTableRecord> space(side.modelSpaceId(), QaDb::kForRead);
  const std::vector<QaDbObjectId> ids = space->liveEntityIds();
  ASSERT_EQ(ids.size(), picked.size());
  EXPECT_EQ(LowerLeftOf(ids), QaGePoint3d(0, 0, 0));
  space.close();

  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  const auto seen = runPython(kInspect, {file.string()});
  ASSERT_EQ(seen.exitCode, 0) << seen.output;
  EXPECT_NE(seen.output.find("errors 0\n"), std::string::npos) << seen.output;
  EXPECT_NE(seen.output.find("appid True\n"), std::string::npos) << seen.output;
  EXPECT_NE(seen.output.find("block T1_ROW\n"), std::string::npos) << seen.output;
  EXPECT_EQ(seen.output.find("block ROW\n"), std::string::npos) << seen.output;
  EXPECT_EQ(seen.output.find(" False"), std::string::npos) << seen.output;
  std::istringstream lines(seen.output);
  int entities = 0;
  for (std::string l; std::getline(lines, l);) entities += l.rfind("entity ", 0) == 0;
  EXPECT_EQ(entities, static_cast<int>(picked.size()));
}

TEST_F(SideDrawing, PageCopiedOutIsScaledMovedAndLeavesOtherKindsBehind) {
  ASSERT_EQ(WriteSideDrawing((dir / "T1").wstring(), L"T1", picked), 1);
  QaDbDatabase current;
  KrmEntityPool pool;
  const KrmEntityList page = ReadSideDrawing(dir / "T1.dxf", {100, 100, 0}, 2, pool, &current);
  ASSERT_EQ(page.size(), picked.size() - 1);  // the circle is not copied
  EXPECT_EQ(pool.size(), page.size());

  int lines = 0, refs = 0;
  for (QaDbEntity* entity : page) {
    EXPECT_NE(entity->isA(), QaDbCircle::desc());
    EXPECT_FALSE(HasCardTag(entity));  // the copies are free for the card's own records
    if (const QaDbLine* line = QaDbLine::cast(entity); line && line->startPoint().y == 100) {
      ++lines;
      EXPECT_EQ(line->startPoint(), QaGePoint3d(100, 100, 0));
      EXPECT_EQ(line->endPoint(), QaGePoint3d(120, 100, 0));
    }
    if (const QaDbBlockReference* ref = QaDbBlockReference::cast(entity)) {
      ++refs;
      EXPECT_EQ(GetBlockName(ref->blockTableRecord()), L"T1_ROW");
      EXPECT_EQ(ref->blockTableRecord().database(), &current);
      ASSERT_EQ(ref->pendingAttributes().size(), 2u);
      EXPECT_EQ(ref->pendingAttributes()[0]->tag(), L"工序");
      EXPECT_EQ(ref->pendingAttributes()[0]->position().x, ref->position().x + 2);
    }
  }
  EXPECT_EQ(lines, 1);
  EXPECT_EQ(refs, 2);

  const std::vector<QaDbObjectId> ids = AppendToModelSpace(page, pool, &current);
  EXPECT_EQ(ids.size(), page.size());
  EXPECT_EQ(LowerLeftOf(ids), QaGePoint3d(100, 100, 0));
}

TEST_F(SideDrawing, UnreadableOrEmptySideDrawingGivesAnEmptyPage) {
  QaDbDatabase current;
  KrmEntityPool pool;
  EXPECT_TRUE(ReadSideDrawing(dir / "missing.dxf", {0, 0, 0}, 1, pool, &current).empty());
  tabulon::test::writeFile(dir / "broken.dxf", "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nnot-a-number\n");
  EXPECT_TRUE(ReadSideDrawing(dir / "broken.dxf", {0, 0, 0}, 1, pool, &current).empty());

  // Only a circle: nothing on it can be copied.
  ASSERT_EQ(WriteSideDrawing((dir / "circle").wstring(), L"T2", {picked[2]}), 1);
  EXPECT_TRUE(ReadSideDrawing(dir / "circle.dxf", {0, 0, 0}, 1, pool, &current).empty());
  EXPECT_EQ(pool.size(), 0u);
}

TEST_F(SideDrawing, ScaleZeroCountsAsOne) {
  ASSERT_EQ(WriteSideDrawing((dir / "T1.dwg").wstring(), L"T1", {picked[0]}), 1);
  QaDbDatabase current;
  KrmEntityPool pool;
  const KrmEntityList page = ReadSideDrawing(dir / "T1.dxf", {5, 5, 0}, 0, pool, &current);
  ASSERT_EQ(page.size(), 1u);
  EXPECT_EQ(QaDbLine::cast(page[0])->endPoint(), QaGePoint3d(15, 5, 0));
}

TEST(SideDrawingPath, UsesTheDrawingExtensionOfThisPlatform) {
  EXPECT_EQ(SideDrawingPath("lib/T1"), std::filesystem::path("lib/T1.dxf"));
  EXPECT_EQ(SideDrawingPath("lib/T1.dwg"), std::filesystem::path("lib/T1.dxf"));
  EXPECT_EQ(SideDrawingPath("lib/T1.dxf"), std::filesystem::path("lib/T1.dxf"));
  EXPECT_EQ(SideDrawingPath("lib/v1.2"), std::filesystem::path("lib/v1.2.dxf"));
}

TEST(PageCopy, RealDrawingCopiesItsLinesTextsPolylinesAndReferences) {
  const std::filesystem::path file = fixturesDir() / "hanochhu_2308PM-04-T3-2429_pid_attribs.dxf";
  QaDbDatabase original(false);
  ASSERT_EQ(original.readDwgFile(file), Qa::eOk);
  std::size_t copyable = 0;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(original.modelSpaceId(), QaDb::kForRead);
    for (QaDbObjectId id : space->liveEntityIds()) {
      const QaRxClass* kind = id.rawObject()->isA();
      copyable += kind == QaDbLine::desc() || kind == QaDbText::desc() || kind == QaDbMText::desc() ||
                  kind == QaDbPolyline::desc() || kind == QaDbBlockReference::desc();
    }
  }
  ASSERT_GT(copyable, 0u);

  QaDbDatabase current;
  KrmEntityPool pool;
  const KrmEntityList page = ReadSideDrawing(file, {0, 0, 0}, 1, pool, &current);
  EXPECT_EQ(page.size(), copyable);
  for (QaDbEntity* entity : page) {
    if (const auto* ref = QaDbBlockReference::cast(entity)) {
      EXPECT_EQ(ref->blockTableRecord().database(), &current);
    }
  }
  const std::vector<QaDbObjectId> ids = AppendToModelSpace(page, pool, &current);
  EXPECT_EQ(ids.size(), copyable);
}

}  // namespace
