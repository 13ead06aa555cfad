// Builders for the cell tests: text styles in a pinned font, block definitions with
// attribute definitions, references in memory with attributes, model-space entities.
#pragma once

#include <gtest/gtest.h>

#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"

namespace tabulon::test {

inline const std::wstring kMicroHeiFile = L"/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";

// Adds a record to a table of `db` and gives its id, closed.
template <class Table>
QaDbObjectId addRecord(QaDbDatabase& db, std::unique_ptr<QaDbSymbolTableRecord> record) {
  Table* table = nullptr;
  EXPECT_EQ(db.getSymbolTable(table, QaDb::kForWrite), Qa::eOk);
  QaDbObjectId id;
  EXPECT_EQ(table->add(std::move(record), id), Qa::eOk);
  table->close();
  id.rawObject()->close();
  return id;
}

inline QaDbObjectId addTextStyle(QaDbDatabase& db, const std::wstring& name, double xScale = 1.0) {
  auto record = std::make_unique<QaDbTextStyleTableRecord>(name);
  record->setFileName(kMicroHeiFile);
  record->setXScale(xScale);
  return addRecord<QaDbTextStyleTable>(db, std::move(record));
}

struct AttDefDraft {
  std::wstring tag;
  QaGePoint3d position;
  bool multiLine = false;
};

inline QaDbObjectId addBlock(QaDbDatabase& db, const std::wstring& name, const std::vector<AttDefDraft>& defs) {
  const QaDbObjectId id = addRecord<QaDbBlockTable>(db, std::make_unique<QaDbBlockTableRecord>(name));
  QaDbObjectPointer<QaDbBlockTableRecord> block(id, QaDb::kForWrite);
  for (const AttDefDraft& draft : defs) {
    auto def = std::make_unique<QaDbAttributeDefinition>(draft.position, L"", draft.tag, draft.tag);
    if (draft.multiLine) def->convertIntoMTextAttributeDefinition(true);
    QaDbObjectId defId;
    EXPECT_EQ(block->appendQaDbEntity(std::move(def), defId), Qa::eOk);
    defId.rawObject()->close();
  }
  return id;
}

inline std::unique_ptr<QaDbBlockReference> makeReference(
    QaDbObjectId block, const QaGePoint3d& at, const std::vector<std::pair<std::wstring, std::wstring>>& atts) {
  auto ref = std::make_unique<QaDbBlockReference>(at, block);
  for (const auto& [tag, text] : atts) ref->appendAttribute(std::make_unique<QaDbAttribute>(at, text, tag));
  return ref;
}

inline QaDbObjectId appendToModelSpace(QaDbDatabase& db, std::unique_ptr<QaDbEntity> entity) {
  QaDbObjectPointer<QaDbBlockTableRecord> ms(db.modelSpaceId(), QaDb::kForWrite);
  QaDbObjectId id;
  EXPECT_EQ(ms->appendQaDbEntity(std::move(entity), id), Qa::eOk);
  id.rawObject()->close();
  return id;
}

}  // namespace tabulon::test
