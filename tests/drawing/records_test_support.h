// Builders for the tests of card records, placement and page copy: entities appended to
// model space, block definitions with attribute definitions, text styles, and block
// references in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_text_style_table.h"

namespace recordstest {

inline QaDbObjectId addToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForWrite);
  EXPECT_TRUE(space);
  QaDbObjectId id;
  EXPECT_EQ(space->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

inline QaDbObjectId addTextStyle(QaDbDatabase& db, const std::wstring& name) {
  QaDbObjectPointer<QaDbTextStyleTable> table(db.textStyleTableId(), QaDb::kForWrite);
  auto record = std::make_unique<QaDbTextStyleTableRecord>(name);
  record->setFileName(L"simfang.ttf");
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(record), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

struct DefSpec {
  std::wstring tag;
  QaGePoint3d position;
  bool constant = false;
};

// A block named `name` with a line from (0,0) to (10,0) and the attribute definitions,
// each carrying the descriptor "KRM_XDATA_CODE" = tag + "_CODE".
inline QaDbObjectId addBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<DefSpec>& defs,
                             QaDbObjectId style = {}) {
  QaDbObjectId blockId;
  {
    QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForWrite);
    EXPECT_EQ(table->add(std::make_unique<QaDbBlockTableRecord>(name), blockId), Qa::eOk);
    blockId.rawObject()->close();
  }
  QaDbObjectPointer<QaDbBlockTableRecord> block(blockId, QaDb::kForWrite);
  QaDbObjectId id;
  EXPECT_EQ(block->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(10, 0, 0)), id),
            Qa::eOk);
  id.rawObject()->close();
  for (const DefSpec& spec : defs) {
    auto def = std::make_unique<QaDbAttributeDefinition>(spec.position, L"default " + spec.tag, spec.tag, spec.tag,
                                                         style);
    def->setHeight(2.5);
    def->setWidthFactor(0.7);
    def->setConstant(spec.constant);
    def->setXData(L"KRM_XDATA_CODE", {QaDbXDataItem::string(spec.tag + L"_CODE")});
    EXPECT_EQ(block->appendQaDbEntity(std::move(def), id), Qa::eOk);
    id.rawObject()->close();
  }
  return blockId;
}

inline std::unique_ptr<QaDbBlockReference> makeRef(QaDbObjectId block, const QaGePoint3d& position) {
  return std::make_unique<QaDbBlockReference>(position, block);
}

}  // namespace recordstest
