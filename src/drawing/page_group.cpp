#include "drawing/page_group.h"

#include <memory>

#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_open.h"

QaDbObjectId MakePageGroup(std::vector<QaDbObjectId> ids, KrmCardTag tag, int pageIndex, QaDbDatabase* database) {
  if (database == nullptr) database = qaWorkingDatabase();
  if (database == nullptr) return {};

  QaDbObjectId groupId;
  {
    QaDbDictionary* groups = nullptr;
    if (database->getGroupDictionary(groups, QaDb::kForWrite) != Qa::eOk) return {};
    const Qa::ErrorStatus es = groups->setAt(L"*A", std::make_unique<QaDbGroup>(), groupId);
    groups->close();
    if (es != Qa::eOk) return {};
  }
  // setAt left the new group open for write; this pointer adds a level and the explicit
  // close below takes the one setAt opened.
  QaDbObjectPointer<QaDbGroup> group(groupId, QaDb::kForWrite);
  groupId.rawObject()->close();
  if (!group) return {};

  group->setAnonymous();
  for (QaDbObjectId id : ids) group->append(id);
  WriteCardTagOfGroup(group.object(), tag, pageIndex);
  return groupId;
}

bool GroupsOfEntity(QaDbObjectId id, std::vector<QaDbObjectId>& out) {
  QaDbObjectPointer<QaDbObject> entity(id, QaDb::kForRead);
  if (!entity) return false;
  for (QaDbObjectId reactor : entity->reactors()) {
    QaDbObjectPointer<QaDbGroup> group(reactor, QaDb::kForRead);
    if (group) out.push_back(reactor);
  }
  return !out.empty();
}
