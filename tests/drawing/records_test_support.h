// Builders for the tests of card records, placement and page copy.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb.h"

namespace recordstest {

inline QaDbObjectId addToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId id;
  EXPECT_EQ(space->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

inline QaDbObjectId addLine(QaDbDatabase& db, double x0, double y0, double x1, double y1) {
  return addToModelSpace(db, std::make_unique<QaDbLine>(QaGePoint3d(x0, y0, 0), QaGePoint3d(x1, y1, 0)));
}

// A block `name` with a line (0,0)-(10,0) and one attribute definition per tag at
// (1 + 3i, 2), of height 2.5 and width factor 0.7, each with a cell descriptor; a tag
// starting with "!" is constant.
inline QaDbObjectId addBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<std::wstring>& tags) {
  QaDbObjectId blockId, id;
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForWrite);
  EXPECT_EQ(table->add(std::make_unique<QaDbBlockTableRecord>(name), blockId), Qa::eOk);
  QaDbBlockTableRecord* block = QaDbBlockTableRecord::cast(blockId.rawObject());
  block->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)), id);
  id.rawObject()->close();
  for (std::size_t i = 0; i < tags.size(); ++i) {
    auto def = std::make_unique<QaDbAttributeDefinition>(QaGePoint3d(1 + 3.0 * i, 2, 0), L"default " + tags[i],
                                                         tags[i], tags[i]);
    def->setHeight(2.5);
    def->setWidthFactor(0.7);
    def->setConstant(tags[i][0] == L'!');
    def->setXData(L"KRM_XDATA_CODE", {QaDbXDataItem::string(tags[i] + L"_CODE")});
    block->appendQaDbEntity(std::move(def), id);
    id.rawObject()->close();
  }
  block->close();
  return blockId;
}

}  // namespace recordstest
