// Builds, with the database's own operations, a small process-card page: a
// frame of lines, a title block whose attribute definitions carry extended
// data, a reference with Chinese attribute texts (one of them multi-line), a
// Chinese MTEXT and an anonymous group of three lines. Used by the tests and
// to make resources/examples/process_card_page.dxf.
#pragma once

#include "host/db/qadb.h"
#include "host/db/qadb_open.h"

#include <memory>
#include <string>
#include <vector>

namespace tabulon::dxf::test {

struct ExampleCell {
  const wchar_t* tag;
  const wchar_t* prompt;
  const wchar_t* value;
  double x, y;
};

inline const std::vector<ExampleCell>& exampleCells() {
  static const std::vector<ExampleCell> cells = {
      {L"CARD_NAME", L"卡片名称", L"机械加工工艺过程卡片", 10, 30},
      {L"PART_NO", L"零件图号", L"QC-2024-001", 110, 30},
      {L"PAGE", L"第几页", L"第1页 共2页", 150, 30},
  };
  return cells;
}

inline const wchar_t* kExampleMText = L"技术要求：\\P1. 未注倒角C1；\\P2. 去毛刺。";
inline const wchar_t* kExampleMultiLine = L"工序说明第一行\\P第二行";
inline const wchar_t* kExampleCellApp = L"KRM_XDATA_CELL";
inline const wchar_t* kExampleCardApp = L"KRM_TABULONPARA";

inline QaDbObjectId addTo(QaDbObjectId btrId, std::unique_ptr<QaDbEntity> e) {
  QaDbObjectPointer<QaDbBlockTableRecord> btr(btrId, QaDb::kForWrite);
  QaDbObjectId id;
  btr->appendQaDbEntity(std::move(e), id);
  id.rawObject()->close();
  return id;
}

inline std::unique_ptr<QaDbLine> line(double x0, double y0, double x1, double y1, const wchar_t* layer) {
  auto l = std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0));
  l->setLayer(layer);
  return l;
}

// Fills a new database (made with defaults) with the example page.
inline void buildExamplePage(QaDbDatabase& db) {
  db.setCodePage("ANSI_936");  // older versions keep Chinese as GBK
  QaDbObjectId layer;
  db.ensureLayer(L"FRAME", layer);
  db.ensureLayer(L"TEXT", layer);
  QaDbObjectId style;
  {
    QaDbObjectPointer<QaDbTextStyleTable> styles(db.textStyleTableId(), QaDb::kForWrite);
    auto hz = std::make_unique<QaDbTextStyleTableRecord>(L"HZ");
    hz->setFileName(L"txt.shx");
    hz->setBigFontFileName(L"gbcbig.shx");
    styles->add(std::move(hz), style);
    style.rawObject()->close();
  }
  // The title block: an outline and one attribute definition per cell.
  QaDbObjectId titleId;
  {
    QaDbObjectPointer<QaDbBlockTable> blocks(db.blockTableId(), QaDb::kForWrite);
    blocks->add(std::make_unique<QaDbBlockTableRecord>(L"TITLE"), titleId);
    titleId.rawObject()->close();
  }
  addTo(titleId, line(0, 20, 180, 20, L"FRAME"));
  addTo(titleId, line(0, 40, 180, 40, L"FRAME"));
  for (const auto& c : exampleCells()) {
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(c.x, c.y, 0), L"", c.tag, c.prompt, style);
    def->setHeight(3.5);
    def->setLayer(L"TEXT");
    def->setXData(kExampleCellApp, {QaDbXDataItem::int32(1), QaDbXDataItem::string(c.prompt),
                                     QaDbXDataItem::int32(2), QaDbXDataItem::real(3.5)});
    addTo(titleId, std::move(def));
  }
  {
    auto remark = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(10, 25, 0), L"", L"REMARK", L"备注", style);
    remark->setHeight(2.5);
    remark->convertIntoMTextAttributeDefinition(true);
    addTo(titleId, std::move(remark));
  }

  QaDbObjectId model = db.modelSpaceId();
  std::vector<QaDbObjectId> frame;
  frame.push_back(addTo(model, line(0, 0, 180, 0, L"FRAME")));
  frame.push_back(addTo(model, line(180, 0, 180, 260, L"FRAME")));
  frame.push_back(addTo(model, line(0, 260, 180, 260, L"FRAME")));
  addTo(model, line(0, 0, 0, 260, L"FRAME"));

  // The reference with its attributes.
  auto ref = std::make_unique<QaDbBlockReference>(QaGePoint3d(0, 0, 0), titleId);
  ref->setXData(kExampleCardApp, {QaDbXDataItem::string(L"CARD-0001"), QaDbXDataItem::int16(1)});
  QaDbObjectId refId = addTo(model, std::move(ref));
  {
    QaDbObjectPointer<QaDbBlockReference> r(refId, QaDb::kForWrite);
    for (const auto& c : exampleCells()) {
      auto att = std::make_unique<QaDbAttribute>(QaGePoint3d(c.x, c.y, 0), c.value, c.tag, style);
      att->setHeight(3.5);
      att->setLayer(L"TEXT");
      QaDbObjectId id;
      r->appendAttribute(id, std::move(att));
      id.rawObject()->close();
    }
    auto remark = std::make_unique<QaDbAttribute>(QaGePoint3d(10, 25, 0), kExampleMultiLine, L"REMARK", style);
    remark->setHeight(2.5);
    remark->convertIntoMTextAttribute(true);
    QaDbObjectId id;
    r->appendAttribute(id, std::move(remark));
    id.rawObject()->close();
  }

  auto mtext = std::make_unique<QaDbMText>();
  mtext->setContents(kExampleMText);
  mtext->setLocation(QaGePoint3d(10, 250, 0));
  mtext->setTextHeight(3.5);
  mtext->setWidth(120);
  mtext->setTextStyle(style);
  mtext->setLayer(L"TEXT");
  addTo(model, std::move(mtext));

  // One anonymous group holds three lines of the frame.
  QaDbObjectPointer<QaDbDictionary> groups(db.groupDictionaryId(), QaDb::kForWrite);
  QaDbObjectId groupId;
  groups->setAt(L"*A", std::make_unique<QaDbGroup>(L"page 1"), groupId);
  auto* group = QaDbGroup::cast(groupId.rawObject());
  group->setAnonymous();
  for (QaDbObjectId id : frame) group->append(id);
  group->close();
}

}  // namespace tabulon::dxf::test
