// Cells in drawings written by other programs: descriptors stored by an outside tool,
// and attribute texts of real drawings compared with an independent reader (ezdxf).
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "card/utf8_text.h"
#include "drawing/block_texts.h"
#include "drawing/cell_descriptor.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "support/test_support.h"

namespace {

// Reads `file` and visits every live entity of class T in the block named `block`.
template <class T, class Visit>
void forEachIn(const std::filesystem::path& file, const std::wstring& block, Visit visit) {
  QaDbDatabase db(false);
  std::string error;
  ASSERT_EQ(db.readDwgFile(file, 0, &error), Qa::eOk) << error;
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForRead);
  QaDbObjectPointer<QaDbBlockTableRecord> record(table->getAt(block), QaDb::kForRead);
  ASSERT_TRUE(record);
  for (const QaDbObjectId& id : record->liveEntityIds()) {
    if (QaDbObjectPointer<T> e(id, QaDb::kForRead); e) visit(*e);
  }
}

TEST(CellInterop, ReadsDescriptorsThatAnOutsideToolWroteAsPlainStrings) {
  tabulon::test::ScratchDir dir;
  const auto file = dir / "cells.dxf";
  const auto result = tabulon::test::runPython(R"(
import sys, ezdxf
doc = ezdxf.new("R2010")
block = doc.blocks.new("T01_ROW")
def cell(tag, x, **props):
    a = block.add_attdef(tag, (x, 0), dxfattribs={"height": 3.5})
    for app, values in props.items():
        doc.appids.add(app)
        a.set_xdata(app, [(1000, v) for v in values])
cell("序号", 0, KRM_XDATA_VTYPE=["NumberInt"], KRM_XDATA_ALIGN=["CENTER"], KRM_XDATA_ORDER=["1"],
     KRM_XDATA_ORIENTION=["H"], KRM_XDATA_EDITABLE=["0"], KRM_XDATA_DEFAULTVALUE=["1"])
cell("名称", 10, KRM_XDATA_CODE=["PART_NAME"], KRM_XDATA_TEXTLENGTHMODE=["kNewline"],
     KRM_XDATA_CONTROLTYPE=["CMB_DOWN"], KRM_XDATA_CONTROLVALUE=["螺栓;螺母"])
cell("单价", 40, KRM_XDATA_VTYPE=["Number", "2"], KRM_XDATA_EXPRE=["数量*2"])
doc.modelspace().add_blockref("T01_ROW", (5, 5)).add_auto_attribs({"序号": "1", "名称": "六角螺栓"})
doc.saveas(sys.argv[1])
)",
                                               {file.string()});
  ASSERT_EQ(result.exitCode, 0) << result.output;
  std::map<std::wstring, KrmAttSet> cells;
  forEachIn<QaDbAttributeDefinition>(file, L"T01_ROW", [&](const auto& def) { ReadCellDefinition(def, cells[def.tag()]); });
  ASSERT_EQ(cells.size(), 3u);
  const KrmAttSet &no = cells[L"序号"], &name = cells[L"名称"], &price = cells[L"单价"];
  EXPECT_EQ(no.GetInName(), L"序号");
  EXPECT_EQ(no.GetStringType(), L"KRM_XDATA_NUMINT");
  EXPECT_EQ(no.GetAlignType(), L"CENTER");
  EXPECT_EQ(no.GetShowType(), L"1");
  EXPECT_EQ(no.GetAttDir(), L"H");
  EXPECT_EQ(no.GetCanEdit(), L"0");
  EXPECT_EQ(no.GetDefault(), L"1");
  EXPECT_EQ(name.GetInName(), L"PART_NAME");
  EXPECT_EQ(name.GetStringType(), L"KRM_XDATA_NUMSTR");
  EXPECT_EQ(name.GetRowType(), L"kNewline");
  EXPECT_EQ(name.GetCtrType(), L"CMB_DOWN");
  EXPECT_EQ(name.GetCtrContent(), L"螺栓;螺母");
  EXPECT_EQ(price.GetStringType(), L"KRM_XDATA_NUMDOUBLE");
  EXPECT_EQ(price.GetDecimalNum(), 2);
  EXPECT_EQ(price.GetCalc(), L"数量*2");
  int refs = 0;
  forEachIn<QaDbBlockReference>(file, L"*Model_Space", [&](const auto& ref) {
    ++refs;
    EXPECT_EQ(ReadBlockTexts(ref, std::vector<std::wstring>{L"名称", L"单价", L"序号"}),
              (std::vector<std::wstring>{L"六角螺栓", L"", L"1"}));
  });
  EXPECT_EQ(refs, 1);
}

TEST(CellInterop, BlockTextsOfRealDrawingsAgreeWithAnIndependentReader) {
  for (const char* name : {"hanochhu_2308PM-04-T3-2429_pid_attribs.dxf", "ezdxf_text_attribs_mtext.dxf"}) {
    const auto path = tabulon::test::fixturesDir() / name;
    const auto result = tabulon::test::runPython(R"(
import sys, json, ezdxf
inserts = ezdxf.readfile(sys.argv[1]).modelspace().query("INSERT")
print(json.dumps({e.dxf.handle.upper(): {a.dxf.tag: a.dxf.text for a in e.attribs} for e in inserts}))
)",
                                                 {path.string()});
    ASSERT_EQ(result.exitCode, 0) << result.output;
    const nlohmann::json expected = nlohmann::json::parse(result.output);
    int compared = 0;
    forEachIn<QaDbBlockReference>(path, L"*Model_Space", [&](const QaDbBlockReference& ref) {
      std::vector<std::wstring> tags, texts;
      for (const auto& [tag, text] : expected.at(ref.handle().ascii()).items()) {
        tags.push_back(KrmFromUtf8(tag));
        texts.push_back(KrmFromUtf8(text.template get<std::string>()));
      }
      EXPECT_EQ(ReadBlockTexts(ref, tags), texts) << name << " " << ref.handle().ascii();
      compared += static_cast<int>(tags.size());
    });
    EXPECT_GT(compared, 0) << name;
  }
}

}  // namespace
