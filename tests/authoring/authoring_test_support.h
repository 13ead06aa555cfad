// Builders for the authoring tests: a drawn page form in a database (blocks whose
// attribute definitions carry an order and a code, row references, frame lines), a
// small library on disk, and scripted chooser and library runs.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "authoring/load_cards_model.h"
#include "authoring/sel_sgl_model.h"
#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "host/db/qadb.h"
#include "host/svc/utf8.h"

namespace authtest {

struct CellDraft {
  std::wstring tag;
  std::wstring order;  // "" for none
  double width = 20.0;
};

inline QaDbObjectId AddToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId id;
  EXPECT_EQ(space->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

inline QaDbObjectId AddLine(QaDbDatabase& db, double x0, double y0, double x1, double y1) {
  return AddToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0)));
}

// A block whose attribute definitions are fitted between two points `width` apart,
// with the order as the plain string an outside program writes.
inline QaDbObjectId AddBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<CellDraft>& cells) {
  QaDbObjectId blockId, id;
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForWrite);
  EXPECT_EQ(table->add(std::make_unique<QaDbBlockTableRecord>(name), blockId), Qa::eOk);
  QaDbBlockTableRecord* block = QaDbBlockTableRecord::cast(blockId.rawObject());
  block->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(100, 0, 0)), id);
  id.rawObject()->close();
  double x = 1;
  for (const CellDraft& cell : cells) {
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(x, 2, 0), L"", cell.tag, cell.tag);
    def->setHeight(2.5);
    def->setHorizontalMode(QaDb::kTextFit);
    def->setAlignmentPoint(QaGePoint3d(x + cell.width, 2, 0));
    if (!cell.order.empty()) def->setXData(L"KRM_XDATA_ORDER", {QaDbXDataItem::string(cell.order)});
    block->appendQaDbEntity(std::move(def), id);
    id.rawObject()->close();
    x += cell.width + 1;
  }
  block->close();
  return blockId;
}

inline QaDbObjectId AddReference(QaDbDatabase& db, QaDbObjectId block, double x, double y) {
  return AddToModelSpace(db, std::make_unique<QaDbBlockReference>(QaGePoint3d(x, y, 0), block));
}

// A page form at (100, 50) drawn into `db`: a frame of two lines, a TITLE block with
// 图号 and 页码, a PAGE block with 总页, and `rows` ROW references 8 apart with 序号,
// 工序. The ids of all its entities.
inline std::vector<QaDbObjectId> DrawForm(QaDbDatabase& db, int rows = 3) {
  std::vector<QaDbObjectId> ids;
  ids.push_back(AddLine(db, 100, 50, 300, 50));
  ids.push_back(AddLine(db, 100, 150, 300, 150));
  const auto title = AddBlock(db, L"TITLE", {{L"图号", L"1"}, {L"页码", L"2"}});
  const auto page = AddBlock(db, L"PAGE", {{L"总页", L""}});
  const auto row = AddBlock(db, L"ROW", {{L"工序", L"2", 30}, {L"序号", L"1", 10}});
  ids.push_back(AddReference(db, title, 110, 140));
  ids.push_back(AddReference(db, page, 250, 140));
  for (int r = 0; r < rows; ++r) ids.push_back(AddReference(db, row, 110, 120 - 8.0 * r));
  return ids;
}

struct Form {
  QaDbDatabase db;
  std::vector<QaDbObjectId> ids;
  explicit Form(int rows = 3) : ids(DrawForm(db, rows)) {}
};

// A chooser run that takes the named classes (and attribute), or cancels.
inline KrmSelSglRunner Choose(std::vector<std::wstring> names, std::wstring tag = L"") {
  return [names, tag](KrmSelSglModel& chooser) {
    chooser.ClearSelection();
    for (const auto& name : names) EXPECT_TRUE(chooser.SelectByName(name, tag)) << tabulon::svc::toUtf8(name);
    return KrmDialogEnd::kOk;
  };
}
inline KrmDialogEnd Cancel(KrmSelSglModel&) { return KrmDialogEnd::kCancel; }
inline KrmDialogEnd ClearChoice(KrmSelSglModel&) { return KrmDialogEnd::kClear; }

// A library run that confirms the template (or folder, with an empty stem) given.
inline KrmLoadCardsRunner Pick(std::wstring folder, std::wstring stem) {
  return [folder, stem](KrmLoadCardsModel& library) {
    EXPECT_TRUE(library.SelectPath(folder, stem)) << tabulon::svc::toUtf8(folder + stem);
    library.Confirm();
    return true;
  };
}

// A table on disk with a page base and the given page bindings, and its side drawing.
inline void WriteTable(const std::filesystem::path& folder, const std::wstring& stem, const std::wstring& pageBase,
                       const KrmTextListMap& bindings = {}) {
  std::filesystem::create_directories(folder);
  KrmTableAttributes table;
  table.setTblName(stem, stem + L" 显示");
  table.setPageBase(pageBase);
  table.setMCell({KrmBlockSet(pageBase, {})});
  table.setPageAtt(bindings);
  EXPECT_EQ(table.OutputTable(tabulon::svc::fromPath(folder / stem) + L".tbl"), 1);
  QaDbDatabase side;
  AddLine(side, 0, 0, 10, 10);
  EXPECT_EQ(side.saveAs(folder / (tabulon::svc::toUtf8(stem) + ".dxf")), Qa::eOk);
}

inline void WriteCard(const std::filesystem::path& folder, const std::wstring& stem, const std::wstring& first,
                      const std::wstring& next) {
  std::filesystem::create_directories(folder);
  KrmCardAttributes card;
  card.setCardName(stem, stem + L" 卡");
  card.addTblFile(first);
  card.addTblFile(next);
  EXPECT_EQ(card.OutputCard(tabulon::svc::fromPath(folder / stem) + L".crd"), 1);
}

}  // namespace authtest
