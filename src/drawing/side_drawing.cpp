#include "drawing/side_drawing.h"

#include <memory>

#include "drawing/card_tag.h"
#include "drawing/extents_util.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/ge/qage_matrix3d.h"
#include "host/svc/utf8.h"

std::filesystem::path SideDrawingPath(const std::filesystem::path& path) {
  std::filesystem::path out = path;
  if (out.extension() == L".dwg") return out.replace_extension(kSideDrawingExtension);
  if (out.extension() == kSideDrawingExtension) return out;
  out += kSideDrawingExtension;
  return out;
}

namespace {

// Prefixes the name of every block definition. The host refuses names that cannot be
// prefixed (the layouts "*Model_Space", "*Paper_Space" and other anonymous blocks) and
// those that would collide; such records keep their names.
void PrefixBlockNames(QaDbDatabase& db, const std::wstring& tableId) {
  QaDbObjectPointer<QaDbBlockTable> table(db.blockTableId(), QaDb::kForRead);
  if (!table) return;
  std::unique_ptr<QaDbSymbolTableIterator> it = table->newIterator();
  for (it->start(); !it->done(); it->step()) {
    QaDbObjectPointer<QaDbSymbolTableRecord> record(it->getRecordId(), QaDb::kForWrite);
    if (record) record->setName(tableId + L"_" + record->getName());
  }
}

// Moves every model-space entity by `move` and leaves on it the card application with no
// items.
void MoveAndMarkModelSpace(QaDbDatabase& db, const QaGeMatrix3d& move) {
  QaDbObjectPointer<QaDbBlockTableRecord> space(db.modelSpaceId(), QaDb::kForRead);
  if (!space) return;
  for (QaDbObjectId id : space->liveEntityIds()) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForWrite);
    if (!entity) continue;
    entity->transformBy(move);
    entity->setXData(kKrmCardTagApp, {});
  }
}

}  // namespace

int WriteSideDrawing(const std::wstring& path, const std::wstring& tableId, const std::vector<QaDbObjectId>& ids,
                     std::string* error) {
  QaDbDatabase* source = ids.empty() ? qaWorkingDatabase() : ids.front().database();
  if (source == nullptr) {
    if (error) *error = "side drawing: no drawing to copy from";
    return 0;
  }
  const QaGePoint3d base = LowerLeftOf(ids);

  std::unique_ptr<QaDbDatabase> side;
  if (source->wblock(side, ids, QaGePoint3d::kOrigin) != Qa::eOk || !side) {
    if (error) *error = "side drawing: the entities could not be copied into a new drawing";
    return 0;
  }
  PrefixBlockNames(*side, tableId);
  MoveAndMarkModelSpace(*side, QaGeMatrix3d().setToTranslation(QaGePoint3d::kOrigin - base));

  std::string saveError;
  if (side->saveAs(SideDrawingPath(tabulon::svc::toPath(path)), QaDb::kDwgR2018, &saveError) != Qa::eOk) {
    if (error) *error = saveError.empty() ? "side drawing: the file could not be written" : saveError;
    return 0;
  }
  return 1;
}
