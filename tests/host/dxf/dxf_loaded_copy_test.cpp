// The objects of a loaded drawing live in memory the drawing keeps: copies made from
// them into another drawing, and what a failed load had read, must not depend on it.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include "host/dxf/dxf_error.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

std::string examplePageText() {
  QaDbDatabase built;
  buildExamplePage(built);
  return saveText(built);
}

TEST(DxfLoadedCopy, CopiesOutliveTheDrawingTheyWereCopiedFrom) {
  QaDbDatabase copy;
  DrawingSummary original;
  {
    auto loaded = loadText(examplePageText());
    original = summarize(*loaded);
    QaDbObjectPointer<QaDbBlockTableRecord> model(loaded->modelSpaceId(), QaDb::kForRead);
    QaDbIdMapping mapping;
    ASSERT_EQ(loaded->wblockCloneObjects(model->entityIds(), copy.modelSpaceId(), mapping, QaDb::kDrcIgnore),
              Qa::eOk);
  }  // the loaded drawing and the memory its objects lived in are gone
  auto again = loadText(saveText(copy));
  const DrawingSummary copied = summarize(*again);
  // Everything came along but the group, which is no entity of model space.
  original.typeCounts.erase("GROUP");
  EXPECT_EQ(copied.typeCounts, original.typeCounts);
  std::multiset<std::wstring> before, after;
  for (const auto& [handle, text] : original.texts) before.insert(text);
  for (const auto& [handle, text] : copied.texts) after.insert(text);
  EXPECT_EQ(after, before);
}

TEST(DxfLoadedCopy, FailedLoadLeavesTheDrawingAndFreesWhatItRead) {
  auto db = loadText(examplePageText());
  const DrawingSummary before = summarize(*db);
  // Everything up to the last section reads; the file then breaks off.
  std::string text = examplePageText();
  text.resize(text.rfind("ENDSEC"));
  EXPECT_THROW(dxfLoad(text, "broken.dxf", *db), DxfError);
  EXPECT_EQ(summarize(*db).typeCounts, before.typeCounts);
  EXPECT_EQ(summarize(*db).texts, before.texts);
}

}  // namespace
