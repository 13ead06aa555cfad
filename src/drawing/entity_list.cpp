#include "drawing/entity_list.h"

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_table.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaed_selection.h"
#include "host/ge/qage_matrix3d.h"

KrmEntityPool::KrmEntityPool() = default;
KrmEntityPool::~KrmEntityPool() = default;
KrmEntityPool::KrmEntityPool(KrmEntityPool&&) noexcept = default;
KrmEntityPool& KrmEntityPool::operator=(KrmEntityPool&&) noexcept = default;

QaDbEntity* KrmEntityPool::adopt(std::unique_ptr<QaDbEntity> entity) {
  if (!entity) return nullptr;
  QaDbEntity* raw = entity.get();
  owned_.emplace(raw, std::move(entity));
  return raw;
}

std::unique_ptr<QaDbEntity> KrmEntityPool::release(QaDbEntity* entity) {
  auto it = owned_.find(entity);
  if (it == owned_.end()) return nullptr;
  std::unique_ptr<QaDbEntity> out = std::move(it->second);
  owned_.erase(it);
  return out;
}

bool KrmEntityPool::destroy(QaDbEntity* entity) { return owned_.erase(entity) != 0; }

bool KrmEntityPool::owns(const QaDbEntity* entity) const { return owned_.count(entity) != 0; }

namespace {

QaDbEntity* CloneMoved(const QaDbEntity& entity, const QaGeMatrix3d& move, KrmEntityPool& pool) {
  std::unique_ptr<QaDbEntity> copy = entity.cloneEntity();
  if (!copy) return nullptr;
  copy->transformBy(move);
  return pool.adopt(std::move(copy));
}

}  // namespace

void CloneListTranslated(const KrmEntityList& list, const QaGeVector3d& vector, KrmEntityList& out,
                         KrmEntityPool& pool) {
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(vector);
  out.reserve(out.size() + list.size());
  for (const QaDbEntity* entity : list) {
    if (entity == nullptr) continue;
    if (QaDbEntity* copy = CloneMoved(*entity, move, pool)) out.push_back(copy);
  }
}

void CloneLastOfEach(std::vector<KrmDataSort>& sorts, const QaGeVector3d& vector, KrmEntityPool& pool) {
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(vector);
  for (KrmDataSort& sort : sorts) {
    if (sort.refs.empty() || sort.refs.back() == nullptr) continue;
    if (QaDbEntity* copy = CloneMoved(*sort.refs.back(), move, pool)) sort.refs.push_back(copy);
  }
}

KrmEntityList LastOfEach(const std::vector<KrmDataSort>& sorts) {
  KrmEntityList out;
  for (const KrmDataSort& sort : sorts) {
    if (!sort.refs.empty()) out.push_back(sort.refs.back());
  }
  return out;
}

void AppendPageList(std::vector<KrmEntityList>& pages, const KrmEntityList& a, const KrmEntityList& b) {
  KrmEntityList page;
  page.reserve(a.size() + b.size());
  page.insert(page.end(), a.begin(), a.end());
  page.insert(page.end(), b.begin(), b.end());
  pages.push_back(std::move(page));
}

std::vector<QaDbObjectId> AppendToModelSpace(const KrmEntityList& list, KrmEntityPool& pool, QaDbDatabase* database) {
  std::vector<QaDbObjectId> ids;
  if (database == nullptr) database = qaWorkingDatabase();
  if (database == nullptr) return ids;
  ids.reserve(list.size());
  for (QaDbEntity* entity : list) {
    if (entity == nullptr) continue;
    // The model space is looked up anew for each entity, as a block table may change
    // between appends.
    QaDbObjectId spaceId = database->modelSpaceId();
    QaDbObjectPointer<QaDbBlockTableRecord> space(spaceId, QaDb::kForWrite);
    if (!space || !pool.owns(entity)) break;
    QaDbObjectId id;
    std::unique_ptr<QaDbEntity> owned = pool.release(entity);
    if (space->appendQaDbEntity(std::move(owned), id) != Qa::eOk) break;
    entity->close();
    ids.push_back(id);
  }
  return ids;
}

void TranslateList(const KrmEntityList& list, const QaGePoint3d& from, const QaGePoint3d& to) {
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(to - from);
  for (QaDbEntity* entity : list) {
    if (entity != nullptr) entity->transformBy(move);
  }
}

void TranslateIds(const std::vector<QaDbObjectId>& ids, const QaGePoint3d& from, const QaGePoint3d& to) {
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(to - from);
  for (QaDbObjectId id : ids) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForWrite);
    if (entity) entity->transformBy(move);
  }
}

void EraseIds(const std::vector<QaDbObjectId>& ids) {
  const std::vector<QaDbObjectId> copy = ids;
  EraseObject(copy);
}

void DeleteList(KrmEntityList& list, KrmEntityPool& pool) {
  for (QaDbEntity* entity : list) {
    if (entity != nullptr) pool.destroy(entity);
  }
  list.clear();
}
