#include "drawing/entity_copy.h"

#include <vector>

#include "drawing/block_names.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_text.h"
#include "host/db/qadb_text_style_table.h"

namespace {

QaDbDatabase* OrWorking(QaDbDatabase* db) { return db != nullptr ? db : qaWorkingDatabase(); }

// Holds the document lock of the drawing `db` for a scope, when a document shows it.
class DocumentWriteLock {
 public:
  explicit DocumentWriteLock(QaDbDatabase* db) {
    if (!qaDocManagerAlive() || db == nullptr) return;
    QaApDocument* doc = qaDocManager().document(db);
    if (doc != nullptr && qaDocManager().lockDocument(doc, QaAp::kWrite) == Qa::eOk) doc_ = doc;
  }
  ~DocumentWriteLock() {
    if (doc_ != nullptr) qaDocManager().unlockDocument(doc_);
  }
  DocumentWriteLock(const DocumentWriteLock&) = delete;
  DocumentWriteLock& operator=(const DocumentWriteLock&) = delete;

 private:
  QaApDocument* doc_ = nullptr;
};

template <class Table>
QaDbObjectId LookUp(const QaDbDatabase& db, const std::wstring& name) {
  Table* table = nullptr;
  if (db.getSymbolTable(table, QaDb::kForRead) != Qa::eOk) return {};
  QaDbObjectId id;
  table->getAt(name, id);
  table->close();
  return id;
}

// Copies one record of `source` into the same table of `current` (an existing record of
// that name wins) and returns the id that the name finds in `current` afterwards.
template <class Table>
QaDbObjectId CloneRecordAcross(QaDbDatabase* source, QaDbObjectId record, const std::wstring& name,
                               QaDbDatabase* current, QaDbObjectId destTable) {
  DocumentWriteLock lock(current);
  QaDbIdMapping mapping;
  source->wblockCloneObjects({record}, destTable, mapping, QaDb::kDrcIgnore);
  return LookUp<Table>(*current, name);
}

void CopyCommonProperties(const QaDbEntity& from, QaDbEntity& to) {
  // Names only: a layer or linetype that the target lacks is not copied over.
  to.setLayer(from.layer());
  to.setColorIndex(from.colorIndex());
  to.setLinetype(from.linetype());
}

std::unique_ptr<QaDbEntity> CopyReference(QaDbDatabase* source, const QaDbBlockReference& ref, QaDbDatabase* current) {
  const std::wstring name = GetBlockName(ref.blockTableRecord());
  if (name.empty()) return nullptr;
  // A block the target has already is used as it stands there.
  QaDbObjectId block = LookUp<QaDbBlockTable>(*current, name);
  if (block.isNull()) block = CopyBlockAcross(source, name, current);
  if (block.isNull()) return nullptr;

  auto copy = std::make_unique<QaDbBlockReference>();
  copy->setBlockTableRecord(block);
  copy->setColorIndex(ref.colorIndex());
  copy->setLayer(ref.layer());
  copy->setRotation(ref.rotation());
  copy->setScaleFactors(ref.scaleFactors());
  copy->setPosition(ref.position());
  AddBlockAttributes(block, *copy);
  return copy;
}

std::unique_ptr<QaDbEntity> CopyLine(const QaDbLine& line) {
  auto copy = std::make_unique<QaDbLine>(line.startPoint(), line.endPoint());
  CopyCommonProperties(line, *copy);
  return copy;
}

std::unique_ptr<QaDbEntity> CopyMText(QaDbDatabase* source, const QaDbMText& text, QaDbDatabase* current) {
  auto copy = std::make_unique<QaDbMText>();
  copy->setContents(text.contents());
  copy->setLocation(text.location());
  copy->setRotation(text.rotation());
  copy->setTextStyle(CopyTextStyleAcross(source, text.textStyle(), GetTextStyleName(text.textStyle()), current));
  copy->setTextHeight(text.textHeight());
  copy->setAttachment(text.attachment());
  CopyCommonProperties(text, *copy);
  return copy;
}

std::unique_ptr<QaDbEntity> CopyText(QaDbDatabase* source, const QaDbText& text, QaDbDatabase* current) {
  auto copy = std::make_unique<QaDbText>();
  copy->setTextString(text.textString());
  copy->setPosition(text.position());
  copy->setRotation(text.rotation());
  copy->setHeight(text.height());
  copy->setTextStyle(CopyTextStyleAcross(source, text.textStyle(), GetTextStyleName(text.textStyle()), current));
  copy->setHorizontalMode(text.horizontalMode());
  copy->setVerticalMode(text.verticalMode());
  copy->setAlignmentPoint(text.alignmentPoint());
  copy->setWidthFactor(text.widthFactor());
  CopyCommonProperties(text, *copy);
  return copy;
}

std::unique_ptr<QaDbEntity> CopyPolyline(const QaDbPolyline& polyline) {
  // Points only: bulges and widths stay behind.
  auto copy = std::make_unique<QaDbPolyline>();
  for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
    QaGePoint2d point;
    if (polyline.getPointAt(i, point) == Qa::eOk) copy->addVertexAt(copy->numVerts(), point);
  }
  CopyCommonProperties(polyline, *copy);
  return copy;
}

}  // namespace

std::unique_ptr<QaDbEntity> CopyEntityAcross(QaDbDatabase* source, const QaDbEntity* entity, QaDbDatabase* current) {
  current = OrWorking(current);
  if (source == nullptr || entity == nullptr || current == nullptr) return nullptr;
  const QaRxClass* kind = entity->isA();
  if (kind == QaDbBlockReference::desc())
    return CopyReference(source, static_cast<const QaDbBlockReference&>(*entity), current);
  if (kind == QaDbLine::desc()) return CopyLine(static_cast<const QaDbLine&>(*entity));
  if (kind == QaDbMText::desc()) return CopyMText(source, static_cast<const QaDbMText&>(*entity), current);
  if (kind == QaDbText::desc()) return CopyText(source, static_cast<const QaDbText&>(*entity), current);
  if (kind == QaDbPolyline::desc()) return CopyPolyline(static_cast<const QaDbPolyline&>(*entity));
  return nullptr;
}

QaDbObjectId CopyBlockAcross(QaDbDatabase* source, const std::wstring& blockName, QaDbDatabase* current) {
  current = OrWorking(current);
  if (source == nullptr || current == nullptr || blockName.empty()) return {};
  const QaDbObjectId record = LookUp<QaDbBlockTable>(*source, blockName);
  if (record.isNull()) return {};
  return CloneRecordAcross<QaDbBlockTable>(source, record, blockName, current, current->blockTableId());
}

QaDbObjectId CopyTextStyleAcross(QaDbDatabase* source, QaDbObjectId styleId, const std::wstring& name,
                                 QaDbDatabase* current) {
  current = OrWorking(current);
  if (source == nullptr || current == nullptr || name.empty()) return {};
  QaDbObjectId record = LookUp<QaDbTextStyleTable>(*source, name);
  if (record.isNull() && styleId.database() == source && GetTextStyleName(styleId) == name) record = styleId;
  if (record.isNull()) return {};
  return CloneRecordAcross<QaDbTextStyleTable>(source, record, name, current, current->textStyleTableId());
}

void AddBlockAttributes(QaDbObjectId blockId, QaDbBlockReference& reference) {
  const QaGeMatrix3d transform = reference.blockTransform();
  QaDbObjectPointer<QaDbBlockTableRecord> block(blockId, QaDb::kForRead);
  if (!block) return;
  for (QaDbObjectId id : block->liveEntityIds()) {
    QaDbObjectPointer<QaDbAttributeDefinition> def(id, QaDb::kForRead);
    if (!def || def->isConstant()) continue;

    auto att = std::make_unique<QaDbAttribute>();
    att->setPropertiesFrom(def.object());
    att->setInvisible(def->isInvisible());
    att->setFieldLength(def->fieldLength());
    att->setPosition(def->position());
    att->setHorizontalMode(def->horizontalMode());
    att->setVerticalMode(def->verticalMode());
    att->setAlignmentPoint(def->alignmentPoint());
    att->setThickness(def->thickness());
    att->setOblique(def->oblique());
    att->setRotation(def->rotation());
    att->setHeight(def->height());
    att->setTextStyle(def->textStyle());
    att->mirrorInX(def->isMirroredInX());
    att->mirrorInY(def->isMirroredInY());
    att->setTag(def->tag());
    att->setTextString(def->textString());

    QaDbAttribute* kept = att.get();
    QaDbObjectId attId;
    if (reference.appendAttribute(attId, std::move(att)) != Qa::eOk) continue;
    // The width factor goes after the transform, which would change it.
    kept->transformBy(transform);
    kept->setWidthFactor(def->widthFactor());
    if (!attId.isNull()) kept->close();
  }
}
