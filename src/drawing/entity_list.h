// Entities in memory on their way into the drawing. A KrmEntityPool owns every entity
// that a page copy or a clone made and that is not yet in a database; a KrmEntityList
// only refers to entities, so that one entity can stand in several lists at once (the
// list of its page, the row blocks, the references of a class). Appending an entity to
// model space hands it from the pool to the database; the pointer stays valid as long as
// the database lives, and whatever is still in the pool is freed with the pool.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "drawing/data_sort.h"
#include "host/db/qadb_object_id.h"
#include "host/ge/qage_point3d.h"
#include "host/ge/qage_vector3d.h"

class QaDbDatabase;
class QaDbEntity;

using KrmEntityList = std::vector<QaDbEntity*>;

class KrmEntityPool {
 public:
  KrmEntityPool();
  ~KrmEntityPool();
  KrmEntityPool(const KrmEntityPool&) = delete;
  KrmEntityPool& operator=(const KrmEntityPool&) = delete;
  KrmEntityPool(KrmEntityPool&&) noexcept;
  KrmEntityPool& operator=(KrmEntityPool&&) noexcept;

  // Takes an entity in memory and gives back the pointer by which lists refer to it;
  // null for null.
  QaDbEntity* adopt(std::unique_ptr<QaDbEntity> entity);
  // Hands an entity back to a single owner (the database); null when the pool does not
  // hold it.
  std::unique_ptr<QaDbEntity> release(QaDbEntity* entity);
  // Frees an entity now; false when the pool does not hold it.
  bool destroy(QaDbEntity* entity);
  bool owns(const QaDbEntity* entity) const;
  std::size_t size() const { return owned_.size(); }

 private:
  std::unordered_map<const QaDbEntity*, std::unique_ptr<QaDbEntity>> owned_;
};

// Clones each entity of `list` (attributes of a reference and extended data come along),
// moves the clone by `vector` and appends it to `out`. `list` is not changed.
void CloneListTranslated(const KrmEntityList& list, const QaGeVector3d& vector, KrmEntityList& out,
                         KrmEntityPool& pool);

// For each entry that has references: clones its last reference, moves the clone by
// `vector` and appends it to the same entry. Entries without references are passed over.
void CloneLastOfEach(std::vector<KrmDataSort>& sorts, const QaGeVector3d& vector, KrmEntityPool& pool);

// The last reference of each entry that has any, in entry order. Nothing is cloned.
KrmEntityList LastOfEach(const std::vector<KrmDataSort>& sorts);

// Appends to `pages` one list made of `a` followed by `b`.
void AppendPageList(std::vector<KrmEntityList>& pages, const KrmEntityList& a, const KrmEntityList& b);

// Appends the entities of `list` to "*Model_Space" of `database` (the working database
// when null), in order, each taken out of `pool`, and returns their ids. Null entries are
// passed over. The walk stops at the first entity that cannot be appended (no model
// space, or an entity the pool does not hold); the ids gathered so far are returned and
// the rest stays in memory.
std::vector<QaDbObjectId> AppendToModelSpace(const KrmEntityList& list, KrmEntityPool& pool,
                                             QaDbDatabase* database = nullptr);

// Moves each entity in memory by `to` - `from`; null entries are passed over.
void TranslateList(const KrmEntityList& list, const QaGePoint3d& from, const QaGePoint3d& to);
// The same for entities of a database, each opened for write; ids that do not open
// are passed over.
void TranslateIds(const std::vector<QaDbObjectId>& ids, const QaGePoint3d& from, const QaGePoint3d& to);
// Erases the entities of `ids`; those that do not open are passed over.
void EraseIds(const std::vector<QaDbObjectId>& ids);
// Frees every entity of `list` that `pool` holds and empties the list. Other lists
// that refer to the same entities must not be used for them afterwards.
void DeleteList(KrmEntityList& list, KrmEntityPool& pool);
