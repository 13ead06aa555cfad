#include "samples/sample_library.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "card/card_data.h"
#include "card/card_reader.h"
#include "card/card_template.h"
#include "drawing/extents_util.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/svc/ini_file.h"
#include "host/svc/krm_frame_rules.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

namespace {

using namespace tabulon::samples;
using tabulon::svc::fromPath;
using tabulon::svc::toPath;

// The library is written once for all tests of this suite.
class SampleLibraryTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = std::make_unique<tabulon::test::ScratchDir>();
    library_ = WriteSampleLibrary(dir_->path() / "library");
  }
  static void TearDownTestSuite() { dir_.reset(); }

  static std::wstring path(const std::wstring& stem, const wchar_t* ext) {
    return fromPath(library_.folder / toPath(stem)) + ext;
  }

  static std::unique_ptr<tabulon::test::ScratchDir> dir_;
  static SampleLibrary library_;
};

std::unique_ptr<tabulon::test::ScratchDir> SampleLibraryTest::dir_;
SampleLibrary SampleLibraryTest::library_;

const KrmAttSet* find(const std::vector<KrmAttSet>& atts, const std::wstring& name) {
  auto it = std::find_if(atts.begin(), atts.end(), [&](const KrmAttSet& a) { return a.GetShowName() == name; });
  return it == atts.end() ? nullptr : &*it;
}

TEST_F(SampleLibraryTest, ListsTwoCardsAndFourTablesInTheLibraryFolder) {
  EXPECT_EQ(library_.files.size(), 10u);
  KrmCardReader reader;
  ASSERT_EQ(reader.Load(fromPath(library_.folder)), 1);
  std::vector<KrmCardFile> cards, tables;
  reader.GetCardTree(cards);
  reader.GetTblTree(tables);
  std::vector<std::wstring> cardNames, tableNames;
  for (const auto& c : cards) cardNames.push_back(c.GetShowName());
  for (const auto& t : tables) tableNames.push_back(t.GetFileName());
  std::sort(cardNames.begin(), cardNames.end());
  std::sort(tableNames.begin(), tableNames.end());
  EXPECT_EQ(cardNames, (std::vector<std::wstring>{kProcessCard, kPartsListCard}));
  EXPECT_EQ(tableNames, (std::vector<std::wstring>{kProcessNextTable, kProcessFirstTable, kPartsListNextTable,
                                                   kPartsListFirstTable}));
  for (const auto& c : cards) EXPECT_EQ(c.GetID().size(), 32u) << "every card has its id";
}

// Both cards load with two tables of the drawn sizes, page bases and row counts.
TEST_F(SampleLibraryTest, CardsLoadWithTheirTablesPageBasesAndRowCounts) {
  struct Case {
    const wchar_t* card;
    const wchar_t* base;
    double width, height;
    int first, next;
    std::vector<std::wstring> blocks;
  } cases[] = {
      {kProcessCard, kRowBlock, 297, 210, kProcessFirstRows, kProcessNextRows,
       {kHeadBlock, kSignBlock, kPageNoBlock, kBatchSumBlock, kBatchNoBlock, kRowBlock}},
      {kPartsListCard, kBomLineBlock, 210, 297, kPartsListFirstRows, kPartsListNextRows,
       {kBomHeadBlock, kPageNoBlock, kBatchSumBlock, kBatchNoBlock, kBomLineBlock}},
  };
  for (const auto& c : cases) {
    KrmCardTemplate t;
    ASSERT_EQ(t.LoadTemplate(path(c.card, L".crd")), 1) << t.LoadProblems();
    EXPECT_TRUE(t.LoadProblems().empty()) << t.LoadProblems();
    EXPECT_EQ(t.GetCard().getTblCount(), 2);
    for (int index : {0, 1}) {
      std::wstring base;
      ASSERT_EQ(t.GetPageBase(index, base), 1);
      EXPECT_EQ(base, c.base);
      double w = 0, h = 0;
      t.GetTableSize(index, w, h);
      EXPECT_DOUBLE_EQ(w, c.width);
      EXPECT_DOUBLE_EQ(h, c.height);
      int count = -1, order = -1;
      ASSERT_EQ(t.GetBlkNum(c.base, count, order, index), 1);
      EXPECT_EQ(count, index == 0 ? c.first : c.next);
      EXPECT_EQ(order, 0);
    }
    std::vector<std::wstring> names;
    t.GetBlockNames(names, 0);
    EXPECT_EQ(names, c.blocks);
    std::vector<std::wstring> bindings;
    ASSERT_EQ(t.GetPageNumberBindings(bindings), 1);
    EXPECT_EQ(bindings, (std::vector<std::wstring>{kPageNoBlock, kClassCurTag, kPageNoBlock, kClassSumTag, kBatchNoBlock,
                                                   kBatchCurTag, kBatchSumBlock, kBatchSumTag}));
    KrmCardData data;
    data.InitFromTemplate(t);
    const int baseGrid = data.GetBaseGrid();
    EXPECT_EQ(data.GetRowsFirst(baseGrid), c.first);
    EXPECT_EQ(data.GetRowsNext(baseGrid), c.next);
  }
}

// The cells of the operation rows, as the template gives them: column order, value
// types, alignments, row types, controls and the calculated column.
TEST_F(SampleLibraryTest, OperationRowsCarryTheirCellDescriptions) {
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path(kProcessCard, L".crd")), 1);
  std::vector<KrmAttSet> atts;
  ASSERT_EQ(t.GetAtts(kRowBlock, atts), 1);
  std::vector<std::wstring> names;
  for (const auto& a : atts) names.push_back(a.GetShowName());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"工序号", L"工序名称", L"工序内容", L"车间", L"工段", L"设备", L"工艺装备",
                                              L"准终", L"机动", L"辅助", L"单件"}));
  struct Case {
    const wchar_t* name;
    const wchar_t* type;
    int decimals;
    const wchar_t* align;
    const wchar_t* rowType;
    const wchar_t* control;
    double width;
  } cases[] = {
      {L"工序号", kKrmNumInt, 0, L"CENTER", L"", L"EDT_NUM", 10},
      {L"工序名称", kKrmNumStr, 0, L"CENTER", L"kFit", L"CMB_DOWN", 16},
      {L"工序内容", kKrmNumStr, 0, L"", L"kNewline", L"", 96},
      {L"车间", kKrmNumStr, 0, L"CENTER", L"kFit", L"CMB_LIST", 10},
      {L"准终", kKrmNumDouble, 1, L"RIGHT", L"", L"EDT_REAL", 10},
      {L"单件", kKrmNumDouble, 2, L"RIGHT", L"", L"NOCTRL", 10},
  };
  for (const auto& c : cases) {
    const KrmAttSet* a = find(atts, c.name);
    ASSERT_NE(a, nullptr) << c.name;
    EXPECT_EQ(a->GetStringType(), c.type) << c.name;
    EXPECT_EQ(a->GetDecimalNum(), c.decimals) << c.name;
    EXPECT_EQ(a->GetAlignType(), c.align) << c.name;
    EXPECT_EQ(a->GetRowType(), c.rowType) << c.name;
    EXPECT_EQ(a->GetCtrType(), c.control) << c.name;
    EXPECT_NEAR(a->GetWidth(), c.width, 1e-9) << c.name;
    EXPECT_DOUBLE_EQ(a->GetHeight(), 3.0) << c.name;
  }
  EXPECT_EQ(find(atts, L"单件")->GetCalc(), L"机动+辅助");
  EXPECT_EQ(find(atts, L"机动")->GetInName(), L"工时机动");
  EXPECT_EQ(find(atts, L"工序内容")->GetInName(), L"工序内容");  // no code: the tag
  EXPECT_NE(find(atts, L"工序名称")->GetCtrContent().find(L"粗车"), std::wstring::npos);
}

// The parts list picks title data by code and BOM fields by show name.
TEST_F(SampleLibraryTest, PartsListCellsMatchTheBillOfMaterials) {
  KrmCardTemplate t;
  ASSERT_EQ(t.LoadTemplate(path(kPartsListCard, L".crd")), 1);
  std::vector<KrmAttSet> head, lines;
  ASSERT_EQ(t.GetAtts(kBomHeadBlock, head), 1);
  ASSERT_EQ(t.GetAtts(kBomLineBlock, lines), 1);
  EXPECT_EQ(find(head, L"产品图号")->GetInName(), L"图号");
  EXPECT_EQ(find(head, L"产品名称")->GetInName(), L"名称");
  EXPECT_EQ(find(head, L"编制")->GetInName(), L"设计");
  std::vector<std::wstring> names;
  for (const auto& a : lines) names.push_back(a.GetShowName());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"序号", L"代号", L"名称", L"数量", L"材料", L"单重", L"总重", L"备注"}));
  EXPECT_EQ(find(lines, L"总重")->GetCalc(), L"数量*单重");
  EXPECT_EQ(find(lines, L"备注")->GetRowType(), L"kNewline");
}

// Side drawings: independent reader finds no errors; blocks carry the table's id;
// the page stands at the origin with all its row blocks.
TEST_F(SampleLibraryTest, SideDrawingsPassTheAuditAndStandAtTheOrigin) {
  struct Case {
    const wchar_t* table;
    const wchar_t* rowBlock;
    int rows;
  } cases[] = {{kProcessFirstTable, kRowBlock, kProcessFirstRows},
               {kProcessNextTable, kRowBlock, kProcessNextRows},
               {kPartsListFirstTable, kBomLineBlock, kPartsListFirstRows},
               {kPartsListNextTable, kBomLineBlock, kPartsListNextRows}};
  for (const auto& c : cases) {
    KrmTableAttributes table;
    ASSERT_EQ(table.InitTable(path(c.table, L".tbl")), 1) << c.table;
    const auto side = library_.folder / toPath(std::wstring(c.table) + L".dxf");
    const auto audit = tabulon::test::runPython(
        "import sys, ezdxf\n"
        "doc = ezdxf.readfile(sys.argv[1])\n"
        "auditor = doc.audit()\n"
        "print(len(auditor.errors), len(auditor.fixes))\n"
        "print(all(e.has_xdata('KRM_TABULONPARA') for e in doc.modelspace()))\n",
        {side.string()});
    EXPECT_EQ(audit.output, "0 0\nTrue\n") << c.table;

    QaDbDatabase db(false);
    ASSERT_EQ(db.readDwgFile(side), Qa::eOk);
    const auto ids = QaDbObjectPointer<QaDbBlockTableRecord>(db.modelSpaceId(), QaDb::kForRead)->liveEntityIds();
    QaGePoint3d low, high;
    ASSERT_TRUE(BoxOf(ids, low, high));
    EXPECT_TRUE(low.isEqualTo({0, 0, 0})) << c.table;
    EXPECT_NEAR(high.x, table.getWidth(), 1e-9);
    int rows = 0;
    for (auto id : ids) {
      QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
      if (!ref) continue;
      QaDbObjectPointer<QaDbBlockTableRecord> block(ref->blockTableRecord(), QaDb::kForRead);
      EXPECT_EQ(block->getName().rfind(table.getID() + L"_", 0), 0u) << block->getName();
      if (block->getName() == table.getID() + L"_" + c.rowBlock) ++rows;
    }
    EXPECT_EQ(rows, c.rows) << c.table;
  }
}

TEST(SampleOptions, NameTheFrameBlocksAndTheCardOfTheBillOfMaterials) {
  const std::string text = SampleOptionsText();
  const auto rules = KrmFrameRules::parse(text);
  EXPECT_EQ(rules.frameBlocks, (std::vector<std::wstring>{L"A3FRAME"}));
  EXPECT_EQ(rules.titleBlocks, (std::vector<std::wstring>{L"TITLE"}));
  EXPECT_EQ(rules.bomRowBlocks, (std::vector<std::wstring>{L"BOMROW"}));
  ASSERT_EQ(rules.titleMap.size(), 2u);
  EXPECT_EQ(rules.titleMap[0], (std::pair<std::wstring, std::wstring>{L"图样代号", L"图号"}));
  const auto ini = tabulon::svc::IniFile::parse(text);
  EXPECT_EQ(ini.get(L"KrmcadTabulon_List", L"LISTEXP_DATA_CARD"), std::wstring(kPartsListCard));
  EXPECT_EQ(ini.get(L"KrmcadTabulon_List", L"LISTEXP_DATA_TITLE"), std::wstring(kBomHeadBlock));
  EXPECT_EQ(ini.get(L"KrmcadTabulon_List", L"LISTEXP_DATA_LIST"), std::wstring(kBomLineBlock));
}

}  // namespace
