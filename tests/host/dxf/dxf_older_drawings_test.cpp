// Drawings of R13 and R14 read as other CAD programs read them: entities left in
// the R12 form (no subclass markers) and model space under another name.
#include "dxf_test_util.h"

#include "support/test_support.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

std::string fixture(const char* name) { return (tabulon::test::fixturesDir() / name).string(); }

struct TextFacts {
  std::wstring text;
  double x = 0, y = 0, height = 0;
  bool operator==(const TextFacts&) const = default;
};

std::vector<TextFacts> textsOf(const QaDbDatabase& db) {
  std::vector<TextFacts> out;
  for (QaDbObjectId id : db.objectIds())
    if (const auto* t = QaDbText::cast(id.rawObject()); t && !QaDbAttribute::cast(t) && !QaDbAttributeDefinition::cast(t))
      out.push_back({t->textString(), t->position().x, t->position().y, t->height()});
  return out;
}

int entitiesOfBlock(const QaDbDatabase& db, const std::wstring& name) {
  auto* table = QaDbBlockTable::cast(db.blockTableId().rawObject());
  QaDbObjectId id = table->getAt(name);
  auto* btr = QaDbBlockTableRecord::cast(id.rawObject());
  return btr ? static_cast<int>(btr->liveEntityIds().size()) : -1;
}

}  // namespace

// They were read with the text and alignment of the AcDbText part left empty, and
// written with an AcDbText part of default values after the original tags.
TEST(DxfOlderDrawings, R13TextsWithoutSubclassMarkersKeepTextPositionAndHeight) {
  auto db = loadPath(fixture("ezdxf_duplicate_handles_r13.dxf"));
  const std::vector<TextFacts> texts = textsOf(*db);
  ASSERT_EQ(texts.size(), 19u);
  for (const TextFacts& t : texts) {
    EXPECT_FALSE(t.text.empty());
    EXPECT_GT(t.height, 0.0) << asciiOf(t.text);
    EXPECT_TRUE(t.x != 0 || t.y != 0) << asciiOf(t.text);
  }
  EXPECT_NE(findText(*db, L"ROTOSYSTEM P.O. 50X90"), L"");

  const std::string saved = saveText(*db);
  EXPECT_NE(saved.find("AcDbText\n"), std::string::npos);
  EXPECT_EQ(textsOf(*loadText(saved)), texts);
}

// The R14 file names its model space record "*U": its entities went to that block,
// and the saved drawing showed an empty model space elsewhere.
TEST(DxfOlderDrawings, EntitiesOfTheEntitiesSectionBelongToModelSpaceWhateverItsRecordIsCalled) {
  DxfLoadInfo info;
  auto db = loadPath(fixture("libredwg_example_r14.dxf"), &info);
  EXPECT_EQ(entitiesOfBlock(*db, L"*Model_Space"), 67);
  EXPECT_EQ(entitiesOfBlock(*db, L"*U"), 0);
  bool reported = false;
  for (const auto& f : info.audit.findings())
    reported = reported || f.message.find("67 entities of the ENTITIES section") != std::string::npos;
  EXPECT_TRUE(reported);

  auto reloaded = loadText(saveText(*db));
  EXPECT_EQ(entitiesOfBlock(*reloaded, L"*Model_Space"), 67);
  EXPECT_EQ(entitiesOfBlock(*reloaded, L"*U"), 0);
}
