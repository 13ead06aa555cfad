#include "drawing/page_reader.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "card/card_template.h"
#include "drawing/block_names.h"
#include "drawing/block_texts.h"
#include "drawing/card_tag.h"
#include "drawing/fill_order.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_open.h"

namespace {

void sortByRowIndex(std::vector<KrmLoadAtt>& refs) {
  std::stable_sort(refs.begin(), refs.end(),
                   [](const KrmLoadAtt& a, const KrmLoadAtt& b) { return a.rowIndex < b.rowIndex; });
}

KrmLoadAtt loadAttOf(const QaDbBlockReference& reference, const KrmCardTag& tag,
                     const std::vector<std::wstring>& colNames) {
  KrmLoadAtt att;
  att.refId = reference.objectId();
  att.rowIndex = tag.entityIndex;
  att.texts = ReadBlockTexts(reference, colNames);
  att.recordHead = tag.recordHead;
  return att;
}

}  // namespace

KrmLoadGroup BlankPageOf(const KrmPlacedCard& card) {
  KrmLoadGroup page;
  page.blockName = card.baseBlockName;
  page.colNames = card.baseColNames;
  page.fillOrder = card.baseFillOrder;
  for (const KrmLoadGrid& grid : card.otherGrids) {
    KrmLoadTAtt cls;
    cls.blockName = grid.blockName;
    cls.colNames = grid.colNames;
    cls.fillOrder = grid.fillOrder;
    page.otherClasses.push_back(std::move(cls));
  }
  return page;
}

int ReadPageGroups(QaDbDatabase& database, const std::wstring& cardCode, KrmPlacedCard& card) {
  std::vector<KrmLoadGroup> found;
  {
    QaDbObjectPointer<QaDbDictionary> groups(database.groupDictionaryId(), QaDb::kForRead);
    if (groups) {
      std::unique_ptr<QaDbDictionaryIterator> it = groups->newIterator();
      for (; !it->done(); it->next()) {
        QaDbObjectPointer<QaDbGroup> group(it->objectId(), QaDb::kForRead);
        if (!group || !HasCardTag(group.object())) continue;
        KrmCardTag tag;
        ReadCardTagOfGroup(group.object(), tag);
        if (tag.cardCode != cardCode) continue;
        KrmLoadGroup page = BlankPageOf(card);
        page.pageIndex = tag.entityIndex;
        page.groupId = group->objectId();
        found.push_back(std::move(page));
      }
    }
  }
  card.pages.insert(card.pages.end(), found.begin(), found.end());
  std::stable_sort(card.pages.begin(), card.pages.end(),
                   [](const KrmLoadGroup& a, const KrmLoadGroup& b) { return a.pageIndex < b.pageIndex; });
  std::vector<KrmLoadGroup> kept;
  kept.reserve(card.pages.size());
  for (KrmLoadGroup& page : card.pages) {
    if (ReadGroupContents(page) != 0) kept.push_back(std::move(page));
  }
  card.pages = std::move(kept);
  return static_cast<int>(card.pages.size());
}

int ReadPageGroups(const std::wstring& cardCode, KrmPlacedCard& card) {
  QaDbDatabase* database = qaWorkingDatabase();
  if (database == nullptr) return 0;
  return ReadPageGroups(*database, cardCode, card);
}

int ReadGroupContents(KrmLoadGroup& page) {
  std::vector<QaDbObjectId> ids;
  {
    QaDbObjectPointer<QaDbGroup> group(page.groupId, QaDb::kForRead);
    if (!group) return 0;
    ids = group->allEntityIds();
  }
  if (ids.empty()) return 0;
  page.allIds = ids;
  for (const QaDbObjectId& id : ids) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (!entity) continue;
    if (const QaDbBlockReference* ref = QaDbBlockReference::cast(entity.object())) {
      ReadCellBlock(*ref, page);
    } else {
      page.otherIds.push_back(id);
    }
  }
  sortByRowIndex(page.refs);
  for (KrmLoadTAtt& cls : page.otherClasses) sortByRowIndex(cls.refs);
  return 1;
}

int ReadCellBlock(const QaDbBlockReference& reference, KrmLoadGroup& page) {
  const std::wstring name = GetBlockName(reference.blockTableRecord());
  KrmCardTag tag;
  ReadCardTagOfEntity(&reference, tag);
  // The base class is compared without the side drawing's prefix, the others with it;
  // BlockNamesMatch accepts a prefixed name either way.
  if (BlockNamesMatch(StripBlockPrefix(name), page.blockName)) {
    page.refs.push_back(loadAttOf(reference, tag, page.colNames));
    return 1;
  }
  for (KrmLoadTAtt& cls : page.otherClasses) {
    if (BlockNamesMatch(name, cls.blockName)) {
      cls.refs.push_back(loadAttOf(reference, tag, cls.colNames));
      return 1;
    }
  }
  page.otherIds.push_back(reference.objectId());
  return 0;
}

int SortLoadAttsByOrder(KrmLoadTAtt& cls, int code) {
  if (cls.refs.empty()) return 0;
  if (code < 0 || code > 3) return 1;
  KrmSortByFillOrder(cls.refs, code, [](const KrmLoadAtt& a) { return a.position; });
  return 1;
}
