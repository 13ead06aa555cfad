// A drawing made with the database's operations survives a save and a load,
// here and in an independent reader.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include "host/dxf/dxf_text_codec.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

const QaDbBlockReference* firstReference(const QaDbDatabase& db) {
  for (QaDbObjectId id : db.objectIds())
    if (auto* r = QaDbBlockReference::cast(id.rawObject())) return r;
  return nullptr;
}

std::string utf8(const std::wstring& w) { return DxfTextCodec("UTF-8").encode(w); }

class DxfBuiltDrawing : public ::testing::TestWithParam<DxfVersion> {
 protected:
  void SetUp() override { buildExamplePage(db_); }
  QaDbDatabase db_;
};

}  // namespace

TEST_P(DxfBuiltDrawing, SavesAndLoadsBlocksAttributesGroupsAndExtendedData) {
  DxfWriteOptions options;
  options.version = GetParam();
  DxfLoadInfo info;
  auto back = loadText(saveText(db_, options), &info);
  EXPECT_TRUE(info.audit.empty()) << info.audit.lines().front();
  EXPECT_EQ(info.version, GetParam());

  // Attribute definitions with their prompts and extended data.
  QaDbObjectId titleId = QaDbBlockTable::cast(back->blockTableId().rawObject())->getAt(L"TITLE");
  auto* title = QaDbBlockTableRecord::cast(titleId.rawObject());
  ASSERT_NE(title, nullptr);
  int defs = 0;
  for (QaDbObjectId id : title->entityIds()) {
    auto* def = QaDbAttributeDefinition::cast(id.rawObject());
    if (!def || def->tag() == L"REMARK") continue;
    const ExampleCell& cell = exampleCells().at(static_cast<std::size_t>(defs++));
    EXPECT_EQ(def->tag(), cell.tag);
    EXPECT_EQ(def->prompt(), cell.prompt);
    auto items = def->xData(kExampleCellApp);
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[1].asString(), cell.prompt);
    EXPECT_EQ(items[3].asReal(), 3.5);
  }
  EXPECT_EQ(defs, 3);
  EXPECT_TRUE(QaDbRegAppTable::cast(back->regAppTableId().rawObject())->has(kExampleCellApp));

  // The reference, its attributes and the multi-line one.
  const QaDbBlockReference* ref = firstReference(*back);
  ASSERT_NE(ref, nullptr);
  EXPECT_EQ(ref->blockTableRecord(), titleId);
  EXPECT_EQ(ref->xData(kExampleCardApp).at(0).asString(), L"CARD-0001");
  std::map<std::wstring, const QaDbAttribute*> atts;
  for (QaDbObjectId id : ref->attributeIds()) {
    auto* a = QaDbAttribute::cast(id.rawObject());
    atts[a->tag()] = a;
  }
  for (const auto& c : exampleCells()) EXPECT_EQ(atts.at(c.tag)->textString(), c.value);
  const QaDbAttribute* remark = atts.at(L"REMARK");
  if (GetParam() == DxfVersion::R2018) {
    ASSERT_TRUE(remark->isMTextAttribute());
    EXPECT_EQ(remark->getMTextAttribute()->contents(), kExampleMultiLine);
  }
  EXPECT_EQ(findText(*back, L"技术要求"), kExampleMText);

  // The group: three members, each with the group as reactor.
  QaDbObjectPointer<QaDbDictionary> groups(back->groupDictionaryId(), QaDb::kForRead);
  ASSERT_EQ(groups->numEntries(), 1);
  EXPECT_EQ(groups->entries().front().key, L"*A1");
  auto* group = QaDbGroup::cast(groups->entries().front().id.rawObject());
  ASSERT_EQ(group->numEntities(), 3);
  EXPECT_TRUE(group->isAnonymous());
  for (QaDbObjectId m : group->allEntityIds()) EXPECT_TRUE(m.rawObject()->hasPersistentReactor(group->objectId()));
}

INSTANTIATE_TEST_SUITE_P(Versions, DxfBuiltDrawing,
                         ::testing::Values(DxfVersion::R2000, DxfVersion::R2007, DxfVersion::R2018),
                         [](const auto& info) { return dxfVersionName(info.param); });

TEST(DxfBuiltDrawingInterop, AnIndependentReaderSeesTheSameValues) {
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  QaDbDatabase db;
  buildExamplePage(db);
  tabulon::test::ScratchDir scratch;
  for (DxfVersion v : {DxfVersion::R2000, DxfVersion::R2018}) {
    std::string path = (scratch / ("page_" + dxfVersionName(v) + ".dxf")).string();
    dxfSaveFile(db, path, DxfWriteOptions{v});
    auto result = tabulon::test::runPython(R"PY(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
print('errors', len(auditor.errors))
msp = doc.modelspace()
for ins in msp.query('INSERT'):
    for a in ins.attribs:
        text = a.dxf.text
        if a.has_embedded_mtext_entity:
            text = a.virtual_mtext_entity().text
        print('ATTRIB', a.dxf.tag, text)
    print('XDATA', ins.get_xdata('KRM_TABULONPARA')[0].value)
for m in msp.query('MTEXT'):
    print('MTEXT', m.text)
for d in doc.blocks.get('TITLE').query('ATTDEF'):
    if d.has_xdata('KRM_XDATA_CELL'):
        print('ATTDEF', d.dxf.tag, d.dxf.prompt, d.get_xdata('KRM_XDATA_CELL')[1].value)
for name, g in doc.groups:
    print('GROUP', name, len(g))
)PY",
                                           {path});
    ASSERT_EQ(result.exitCode, 0) << result.output;
    const std::string& out = result.output;
    EXPECT_NE(out.find("errors 0"), std::string::npos) << out;
    for (const auto& c : exampleCells()) {
      EXPECT_NE(out.find("ATTRIB " + utf8(c.tag) + " " + utf8(c.value)), std::string::npos) << out;
      EXPECT_NE(out.find("ATTDEF " + utf8(c.tag) + " " + utf8(c.prompt) + " " + utf8(c.prompt)), std::string::npos) << out;
    }
    if (v == DxfVersion::R2018) {
      EXPECT_NE(out.find("ATTRIB REMARK " + utf8(kExampleMultiLine)), std::string::npos) << out;
    }
    EXPECT_NE(out.find("XDATA CARD-0001"), std::string::npos) << out;
    EXPECT_NE(out.find("MTEXT " + utf8(kExampleMText)), std::string::npos) << out;
    EXPECT_NE(out.find("GROUP *A1 3"), std::string::npos) << out;
  }
}
