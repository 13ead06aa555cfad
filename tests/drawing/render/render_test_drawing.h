// A drawing made in memory for the renderer's tests: blocks, references with
// attributes, layers, and entities appended to model space or a block.
#pragma once

#include <memory>
#include <string>

#include "host/db/qadb_attribute.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_open.h"

namespace tabulon::render::test {

class TestDrawing {
 public:
  QaDbDatabase db;

  // Appends to model space, or to the block `owner`.
  QaDbObjectId add(std::unique_ptr<QaDbEntity> entity, QaDbObjectId owner = QaDbObjectId()) {
    if (owner.isNull()) owner = db.modelSpaceId();
    QaDbObjectPointer<QaDbBlockTableRecord> block(owner, QaDb::kForWrite);
    QaDbEntity* raw = entity.get();
    QaDbObjectId id;
    if (block->appendQaDbEntity(std::move(entity), id) == Qa::eOk) raw->close();
    return id;
  }

  QaDbObjectId block(const std::wstring& name) {
    QaDbBlockTable* table = nullptr;
    db.getBlockTable(table, QaDb::kForWrite);
    auto record = std::make_unique<QaDbBlockTableRecord>(name);
    QaDbBlockTableRecord* raw = record.get();
    QaDbObjectId id;
    table->add(std::move(record), id);
    raw->close();
    table->close();
    return id;
  }

  // A layer with a colour, switched off when asked.
  void layer(const std::wstring& name, int color, bool off = false, bool frozen = false) {
    QaDbObjectId id;
    db.ensureLayer(name, id);
    QaDbObjectPointer<QaDbLayerTableRecord> rec(id, QaDb::kForWrite);
    rec->setColorIndex(color);
    rec->setIsOff(off);
    rec->setIsFrozen(frozen);
  }

  static std::unique_ptr<QaDbAttribute> attribute(const QaGePoint3d& at, const std::wstring& tag,
                                                  const std::wstring& text, double height = 2.5) {
    auto att = std::make_unique<QaDbAttribute>(at, text, tag);
    att->setHeight(height);
    return att;
  }
};

}  // namespace tabulon::render::test
