// A drawing with cards of the generation tests' library placed in it (5 row blocks on
// the first page, 8 on every continuation page), the library as card root, and helpers
// to read a placed card back, change its rows and look at what the drawing shows.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/paging.h"
#include "drawing/card_generation.h"
#include "drawing/card_tag.h"
#include "drawing/page_reader.h"
#include "drawing/placed_card_read.h"
#include "generation_library.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/svc/krm_card_root.h"
#include "support/test_support.h"

namespace reedittest {

class PlacedCardTest : public ::testing::Test {
 protected:
  void SetUp() override {
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), "placed.dxf");
    cardPath = gentest::WriteSampleLibrary(lib.path(), shape);
    previousRoot = KrmCardRoot();
    KrmSetCardRoot(lib.path().wstring());
  }
  void TearDown() override {
    qaDocManager().closeAll();
    KrmSetCardRoot(previousRoot);
  }

  // Places a card whose rows have the steps `steps` (and contents); returns its code.
  std::wstring Place(const std::vector<std::wstring>& steps, const std::vector<std::wstring>& contents = {},
                     const QaGePoint3d& at = QaGePoint3d()) {
    KrmCardTemplate cardTemplate;
    EXPECT_EQ(cardTemplate.LoadTemplate(cardPath), 1);
    KrmCardData data;
    data.InitFromTemplate(cardTemplate);
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    for (KrmDataTCol& col : grid.cols) col.values.assign(steps.size(), L"");
    for (std::size_t r = 0; r < steps.size(); ++r) {
      grid.cols[1].values[r] = steps[r];
      if (r < contents.size()) grid.cols[2].values[r] = contents[r];
    }
    data.SetGridAt(data.GetBaseGrid(), grid);
    KrmDataGrid title;
    data.GetGridByName(L"TITLE", title);
    title.cols[0].values.assign(1, L"DWG-1");
    data.SetGridAt(data.FindGrid(L"TITLE"), title);
    data.FillPageNumbers(1, PageCount(data.GetRowsNeeded(data.GetBaseGrid()), grid.rowsFirst, grid.rowsNext));
    cardTemplate.SetInsertPoint(at);
    std::vector<QaDbObjectId> ids;
    EXPECT_EQ(CreateCardPages(cardTemplate, data, ids), 1);
    QaDbObjectPointer<QaDbEntity> entity(ids.at(0), QaDb::kForRead);
    KrmCardTag tag;
    ReadCardTagOfEntity(entity.object(), tag);
    return tag.cardCode;
  }

  KrmOpenedCard Open(const std::wstring& code) {
    auto opened = OpenPlacedCard(cardPath, code);
    EXPECT_TRUE(opened.ok()) << opened.describe();
    return std::move(opened).value();
  }

  // The card as the drawing holds it now, read afresh.
  KrmPlacedCard ReadBack(const std::wstring& code) { return Open(code).card; }

  static std::vector<std::wstring> Steps(int count, const std::wstring& prefix = L"工序") {
    std::vector<std::wstring> steps;
    for (int i = 1; i <= count; ++i) steps.push_back(prefix + std::to_wstring(i));
    return steps;
  }

  // Column `col` of the base grid of `data`.
  static std::vector<std::wstring> Column(const KrmCardData& data, int col) {
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    return grid.cols.at(static_cast<std::size_t>(col)).values;
  }

  // Replaces the steps of the base grid of `data` (other columns follow in length).
  static void SetSteps(KrmCardData& data, const std::vector<std::wstring>& steps) {
    KrmDataGrid grid;
    data.GetGridAt(data.GetBaseGrid(), grid);
    for (KrmDataTCol& col : grid.cols) col.values.resize(steps.size());
    grid.cols[1].values = steps;
    data.SetGridAt(data.GetBaseGrid(), grid);
  }

  // The step column of every row block of every page, in order.
  static std::vector<std::wstring> DrawnSteps(const KrmPlacedCard& card) {
    std::vector<std::wstring> steps;
    for (const KrmLoadGroup& page : card.pages) {
      for (const KrmLoadAtt& row : page.refs) steps.push_back(row.texts.at(1));
    }
    return steps;
  }

  // The text of attribute `column` of the first reference of class `block` on `page`.
  static std::wstring ClassText(const KrmLoadGroup& page, const std::wstring& block, const std::wstring& column) {
    for (const KrmLoadTAtt& cls : page.otherClasses) {
      if (cls.blockName != block || cls.refs.empty()) continue;
      for (std::size_t c = 0; c < cls.colNames.size(); ++c) {
        if (cls.colNames[c] == column) return cls.refs.front().texts.at(c);
      }
    }
    return L"<none>";
  }

  // Writes `text` into attribute `tag` of the reference, as a user editing by hand would.
  static void EditByHand(QaDbObjectId reference, const std::wstring& tag, const std::wstring& text) {
    QaDbObjectPointer<QaDbBlockReference> ref(reference, QaDb::kForWrite);
    ASSERT_TRUE(ref);
    WriteAttributeByTag(*ref, tag, text);
  }

  gentest::LibraryShape shape;
  tabulon::test::ScratchDir lib;
  std::wstring cardPath;
  std::wstring previousRoot;
};

}  // namespace reedittest
