#include "drawing/mtext_attribute.h"

#include <memory>

#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"

int RestoreMTextAttribute(const QaDbBlockReference& reference, QaDbAttribute& att) {
  QaDbObjectPointer<QaDbBlockTableRecord> block(reference.blockTableRecord(), QaDb::kForRead);
  if (!block) return 0;
  const std::wstring tag = att.tag();
  const QaGePoint3d& at = reference.position();
  int restored = 0;
  std::unique_ptr<QaDbBlockTableRecordIterator> it = block->newIterator();
  for (it->start(); !it->done(); it->step()) {
    QaDbObjectPointer<QaDbAttributeDefinition> def(it->entityId(), QaDb::kForRead);
    if (!def || def->tag() != tag || !def->isMTextAttributeDefinition()) continue;
    const QaGePoint3d p(def->position().x + at.x, def->position().y + at.y, def->position().z + at.z);
    att.setVerticalMode(QaDb::kTextVertMid);
    att.setPosition(p);
    att.setAlignmentPoint(p);
    att.updateMTextAttribute();
    att.convertIntoMTextAttribute(true);
    restored = 1;
  }
  return restored;
}
