// A small card library written in code for the generation tests and the benchmark: a
// first-page table and a continuation table with their side drawings, and a card naming
// both. Page layout: a frame, a TITLE block (drawing number, class number, class total,
// batch total), a BATCH block (batch number), two SIGN blocks and a column of ROW blocks
// (number, step, content; content wraps onto the next row block).
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "card/utf8_text.h"
#include "drawing/side_drawing.h"
#include "host/db/qadb.h"

namespace gentest {

struct LibraryShape {
  int firstRows = 5;  // row blocks on the first page
  int nextRows = 8;   // row blocks on a continuation page
  KrmCardDir dir;
  std::wstring cardName = L"card";
  bool writeNextDrawing = true;
};

inline constexpr double kPageWidth = 200.0;
inline constexpr double kRowPitch = 8.0;
inline double PageHeight(int rows) { return 30.0 + kRowPitch * rows; }

inline KrmAttSet Cell(const std::wstring& showName, const std::wstring& rowType = L"", double width = 40.0) {
  KrmAttSet att;
  att.SetShowName(showName);
  att.SetInName(showName + L"_CODE");
  att.SetRowType(rowType);
  att.SetWidth(width);
  att.SetHeight(3.5);
  return att;
}

inline KrmTableAttributes SampleTable(const std::wstring& name, int rows) {
  KrmTableAttributes table;
  table.setID(name);
  table.setTblName(name, name + L" 工艺卡");
  table.setPageBase(L"ROW");
  table.setWidth(kPageWidth);
  table.setHeight(PageHeight(rows));
  table.setSCell({KrmBlockSet(L"TITLE", {Cell(L"图号"), Cell(L"页码"), Cell(L"总页"), Cell(L"批总")}),
                  KrmBlockSet(L"BATCH", {Cell(L"批页")})});
  table.setMCell({KrmBlockSet(L"ROW", {Cell(L"序号"), Cell(L"工序"), Cell(L"内容", kKrmRowNewline, 60.0)}),
                  KrmBlockSet(L"SIGN", {Cell(L"签名")})});
  table.setPageAtt({{kKrmClassCur, {L"TITLE", L"页码"}}, {kKrmClassSum, {L"TITLE", L"总页"}},
                    {kKrmBatchCur, {L"BATCH", L"批页"}}, {kKrmBatchSum, {L"TITLE", L"批总"}},
                    {kKrmAutoNum, {L"ROW", L"序号"}}});
  table.setMDirType({{L"ROW", {L"1", std::to_wstring(rows)}}, {L"SIGN", {L"0", L"2"}}});
  return table;
}

inline QaDbObjectId AddEntity(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId id;
  space->appendQaDbEntity(std::move(entity), id);
  id.rawObject()->close();
  return id;
}

inline QaDbObjectId AddBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<std::wstring>& tags) {
  QaDbObjectId blockId, id;
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForWrite);
  table->add(std::make_unique<QaDbBlockTableRecord>(name), blockId);
  QaDbBlockTableRecord* block = QaDbBlockTableRecord::cast(blockId.rawObject());
  block->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(30, 0, 0)), id);
  id.rawObject()->close();
  for (std::size_t i = 0; i < tags.size(); ++i) {
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(2 + 45.0 * i, 2, 0), L"", tags[i], tags[i]);
    def->setHeight(3.5);
    block->appendQaDbEntity(std::move(def), id);
    id.rawObject()->close();
  }
  block->close();
  return blockId;
}

inline QaDbObjectId AddReference(QaDbDatabase& db, QaDbObjectId block, const QaGePoint3d& at,
                                 const std::vector<std::wstring>& tags) {
  auto ref = std::make_unique<QaDbBlockReference>(at, block);
  for (std::size_t i = 0; i < tags.size(); ++i) {
    auto att = std::make_unique<QaDbAttribute>(at + QaGeVector3d(2 + 45.0 * i, 2, 0), L"", tags[i]);
    att->setHeight(3.5);
    ref->appendAttribute(std::move(att));
  }
  return AddEntity(db, std::move(ref));
}

// The side drawing of a table with `rows` row blocks, written beside the .tbl.
inline void WriteSampleDrawing(const std::filesystem::path& folder, const std::wstring& name, int rows) {
  QaDbDatabase form;
  const double height = PageHeight(rows);
  const std::vector<std::wstring> titleTags = {L"图号", L"页码", L"总页", L"批总"};
  const std::vector<std::wstring> rowTags = {L"序号", L"工序", L"内容"};
  const QaDbObjectId title = AddBlock(form, L"TITLE", titleTags);
  const QaDbObjectId batch = AddBlock(form, L"BATCH", {L"批页"});
  const QaDbObjectId row = AddBlock(form, L"ROW", rowTags);
  const QaDbObjectId sign = AddBlock(form, L"SIGN", {L"签名"});
  std::vector<QaDbObjectId> ids;
  const QaGePoint3d corners[] = {{0, 0, 0}, {kPageWidth, 0, 0}, {kPageWidth, height, 0}, {0, height, 0}};
  for (int i = 0; i < 4; ++i) {
    ids.push_back(AddEntity(form, std::make_unique<QaDbLine>(corners[i], corners[(i + 1) % 4])));
  }
  ids.push_back(AddReference(form, title, {20, 5, 0}, titleTags));
  ids.push_back(AddReference(form, batch, {170, height - 8, 0}, {L"批页"}));
  ids.push_back(AddReference(form, sign, {20, 15, 0}, {L"签名"}));
  ids.push_back(AddReference(form, sign, {110, 15, 0}, {L"签名"}));
  // Row blocks are written bottom up, so that only the fill order puts them top down.
  for (int i = rows - 1; i >= 0; --i) {
    ids.push_back(AddReference(form, row, {5, height - 16 - kRowPitch * i, 0}, rowTags));
  }
  WriteSideDrawing(KrmFromFsPath(folder / (KrmToUtf8(name) + ".dwg")), name, ids);
}

// Writes first.tbl/.dxf, next.tbl/.dxf and <cardName>.crd into `folder`; returns the
// card's path.
inline std::wstring WriteSampleLibrary(const std::filesystem::path& folder, const LibraryShape& shape = {}) {
  const std::wstring dir = KrmFromFsPath(folder);
  SampleTable(L"first", shape.firstRows).OutputTable(dir + L"/first.tbl");
  SampleTable(L"next", shape.nextRows).OutputTable(dir + L"/next.tbl");
  WriteSampleDrawing(folder, L"first", shape.firstRows);
  if (shape.writeNextDrawing) WriteSampleDrawing(folder, L"next", shape.nextRows);
  KrmCardAttributes card;
  card.setCardName(shape.cardName, L"机加工艺卡");
  card.addTblFile(L"first");
  card.addTblFile(L"next");
  card.setCardDir(shape.dir);
  card.OutputCard(dir + L"/" + shape.cardName + L".crd");
  return dir + L"/" + shape.cardName + L".crd";
}

}  // namespace gentest
