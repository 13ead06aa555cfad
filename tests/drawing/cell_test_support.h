// Small builders for the cell tests: text styles with a pinned font, block definitions
// with attribute definitions, and references with their attributes, made in a database.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"

namespace tabulon::test {

// Pinned so that measures do not depend on the machine's font configuration.
inline const std::wstring kMicroHeiFile = L"/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";

inline QaDbObjectId addTextStyle(QaDbDatabase& db, const std::wstring& name, double xScale = 1.0,
                                 const std::wstring& fontFile = kMicroHeiFile) {
  QaDbTextStyleTable* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  auto record = std::make_unique<QaDbTextStyleTableRecord>(name);
  record->setFileName(fontFile);
  record->setXScale(xScale);
  QaDbTextStyleTableRecord* raw = record.get();
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(record), id), Qa::eOk);
  raw->close();
  table->close();
  return id;
}

struct AttDefSpec {
  std::wstring tag;
  QaGePoint3d position;
  bool multiLine = false;
};

// A block definition named `name` holding a line and the given attribute definitions.
inline QaDbObjectId addBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<AttDefSpec>& defs,
                             QaDbObjectId style = QaDbObjectId()) {
  QaDbBlockTable* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  auto record = std::make_unique<QaDbBlockTableRecord>(name);
  QaDbBlockTableRecord* block = record.get();
  QaDbObjectId blockId;
  EXPECT_EQ(table->add(std::move(record), blockId), Qa::eOk);
  table->close();
  for (const AttDefSpec& spec : defs) {
    auto def = std::make_unique<QaDbAttributeDefinition>(spec.position, L"", spec.tag, spec.tag, style);
    def->setHeight(3.5);
    if (spec.multiLine) def->convertIntoMTextAttributeDefinition(true);
    QaDbObjectId id;
    EXPECT_EQ(block->appendQaDbEntity(std::move(def), id), Qa::eOk);
    id.rawObject()->close();
  }
  block->close();
  return blockId;
}

// A reference in memory of `block` at `position` with one attribute per (tag, text).
inline std::unique_ptr<QaDbBlockReference> makeReference(QaDbObjectId block, const QaGePoint3d& position,
                                                         const std::vector<std::pair<std::wstring, std::wstring>>& atts,
                                                         QaDbObjectId style = QaDbObjectId()) {
  auto ref = std::make_unique<QaDbBlockReference>(position, block);
  for (const auto& [tag, text] : atts) {
    auto att = std::make_unique<QaDbAttribute>(position, text, tag, style);
    att->setHeight(3.5);
    ref->appendAttribute(std::move(att));
  }
  return ref;
}

// Appends an entity in memory to model space and gives its id (closed).
inline QaDbObjectId appendToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> ms(db.modelSpaceId(), QaDb::kForWrite);
  EXPECT_TRUE(ms);
  QaDbObjectId id;
  EXPECT_EQ(ms->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

}  // namespace tabulon::test
