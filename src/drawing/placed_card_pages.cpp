// Adding pages behind the last page of a placed card and cutting pages from its end.
#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/utf8_text.h"
#include "drawing/block_names.h"
#include "drawing/block_texts.h"
#include "drawing/card_tag.h"
#include "drawing/entity_list.h"
#include "drawing/extents_util.h"
#include "drawing/page_copy.h"
#include "drawing/page_group.h"
#include "drawing/page_placer.h"
#include "drawing/page_reader.h"
#include "drawing/placed_card_update.h"
#include "drawing/side_drawing.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"
#include "host/ge/qage_matrix3d.h"

namespace {

int BaseBlockCount(const KrmPlacedCard& card) {
  int sum = 0;
  for (const KrmLoadGroup& page : card.pages) sum += static_cast<int>(page.refs.size());
  return sum;
}

// Appends one entity in memory to model space; the null id when it cannot be.
QaDbObjectId AppendOne(QaDbEntity* entity, KrmEntityPool& pool) {
  const std::vector<QaDbObjectId> ids = AppendToModelSpace(KrmEntityList{entity}, pool);
  return ids.empty() ? QaDbObjectId() : ids.front();
}

void TagEntity(QaDbObjectId id, const KrmCardTag& tag) {
  QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForWrite);
  if (entity) WriteCardTagOfEntity(entity.object(), tag);
}

// The class of `page` that the block `name` belongs to: the base class by its name
// without the side drawing's prefix, else the first other class; null for none.
KrmLoadTAtt* ClassOfBlock(KrmLoadGroup& page, const std::wstring& name) {
  if (BlockNamesMatch(StripBlockPrefix(name), page.blockName)) return &page;
  for (KrmLoadTAtt& cls : page.otherClasses) {
    if (BlockNamesMatch(name, cls.blockName)) return &cls;
  }
  return nullptr;
}

// Puts the continuation table's page, copied into memory, into model space as the next
// page of `card`: every entity appended and tagged, the row blocks filed by class and
// emptied, sorted by the fill order, numbered, and the page made into one group. The
// other classes are written with the rows of `data`, as generation writes them.
void FileSideDrawingPage(KrmEntityList& list, KrmEntityPool& pool, KrmPlacedCard& card, KrmCardTag tag,
                         const KrmCardData& data) {
  KrmLoadGroup page = BlankPageOf(card);
  const int index = static_cast<int>(card.pages.size());
  tag.entityIndex = index;
  KrmCardTag plain = tag;
  plain.entityKind = 0;
  plain.entityIndex = 0;
  plain.recordHead = 1;

  // Block definition to its class on this page; null for a block of no class.
  std::unordered_map<QaDbObjectId, KrmLoadTAtt*> classes;
  for (QaDbEntity* entity : list) {
    if (entity == nullptr) continue;
    const auto* reference = QaDbBlockReference::cast(entity);
    KrmLoadTAtt* cls = nullptr;
    QaGePoint3d position;
    if (reference != nullptr) {
      const QaDbObjectId block = reference->blockTableRecord();
      auto known = classes.find(block);
      if (known == classes.end()) {
        cls = ClassOfBlock(page, GetBlockName(block));
        if (cls != nullptr) cls->blockId = block;
        known = classes.emplace(block, cls).first;
      }
      cls = known->second;
      position = reference->position();
    }
    const QaDbObjectId id = AppendOne(entity, pool);
    if (id.isNull()) continue;
    page.allIds.push_back(id);
    if (cls == nullptr) {
      TagEntity(id, plain);
      page.otherIds.push_back(id);
      continue;
    }
    ClearAttributes(id);
    KrmLoadAtt att;
    att.refId = id;
    att.texts.assign(cls->colNames.size(), std::wstring());
    att.position = position;
    cls->refs.push_back(std::move(att));
  }

  SortLoadAttsByOrder(page, page.fillOrder);
  for (KrmLoadTAtt& cls : page.otherClasses) SortLoadAttsByOrder(cls, cls.fillOrder);
  const auto tagClass = [&](KrmLoadTAtt& cls, int kind) {
    for (std::size_t k = 0; k < cls.refs.size(); ++k) {
      KrmCardTag own = plain;
      own.entityKind = kind;
      own.entityIndex = static_cast<int>(k);
      cls.refs[k].rowIndex = own.entityIndex;
      TagEntity(cls.refs[k].refId, own);
    }
  };
  tagClass(page, 1);
  for (KrmLoadTAtt& cls : page.otherClasses) tagClass(cls, 0);

  for (KrmLoadTAtt& cls : page.otherClasses) {
    KrmDataGrid grid;
    if (data.GetGridByName(cls.blockName, grid) != 1) continue;
    for (std::size_t k = 0; k < cls.refs.size(); ++k) {
      if (static_cast<int>(k) >= grid.RowCount()) break;
      RewriteRowCells(grid, cls.refs[k].refId, static_cast<int>(k));
      QaDbObjectPointer<QaDbBlockReference> reference(cls.refs[k].refId, QaDb::kForRead);
      if (reference) cls.refs[k].texts = ReadBlockTexts(*reference, cls.colNames);
    }
  }

  page.pageIndex = index;
  page.groupId = MakePageGroup(page.allIds, tag, index);
  card.pages.push_back(std::move(page));
}

// Clones the resident entity `id` moved by `move` into model space; the null id when it
// does not open or cannot be appended.
QaDbObjectId CloneIntoModelSpace(QaDbObjectId id, const QaGeMatrix3d& move, KrmEntityPool& pool) {
  std::unique_ptr<QaDbEntity> copy;
  {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (!entity) return {};
    copy = entity->cloneEntity();
  }
  if (!copy) return {};
  copy->transformBy(move);
  return AppendOne(pool.adopt(std::move(copy)), pool);
}

void CloneClass(const KrmLoadTAtt& source, KrmLoadTAtt& target, const QaGeMatrix3d& move,
                std::vector<QaDbObjectId>& allIds, KrmEntityPool& pool) {
  target.refs.clear();
  for (const KrmLoadAtt& att : source.refs) {
    const QaDbObjectId id = CloneIntoModelSpace(att.refId, move, pool);
    if (id.isNull()) continue;
    allIds.push_back(id);
    KrmLoadAtt copy = att;
    copy.refId = id;
    copy.position = att.position + move.translation();
    target.refs.push_back(std::move(copy));
  }
}

}  // namespace

KrmLoadGroup ClonePageRecord(const KrmLoadGroup& source, const QaGeVector3d& vector, const KrmCardTag& tag) {
  KrmEntityPool pool;
  const QaGeMatrix3d move = QaGeMatrix3d().setToTranslation(vector);
  KrmLoadGroup page = source;
  page.allIds.clear();
  page.otherIds.clear();
  CloneClass(source, page, move, page.allIds, pool);
  for (std::size_t k = 0; k < source.otherClasses.size(); ++k) {
    CloneClass(source.otherClasses[k], page.otherClasses[k], move, page.allIds, pool);
  }
  for (const QaDbObjectId& id : source.otherIds) {
    const QaDbObjectId copy = CloneIntoModelSpace(id, move, pool);
    if (copy.isNull()) continue;
    page.otherIds.push_back(copy);
    page.allIds.push_back(copy);
  }
  page.pageIndex = tag.entityIndex;
  page.groupId = MakePageGroup(page.allIds, tag, page.pageIndex);
  return page;
}

int CutPages(KrmPlacedCard& card, int needed) {
  int sum = 0;
  bool done = false;
  int cut = 0;
  for (std::size_t i = 0; i < card.pages.size();) {
    sum += static_cast<int>(card.pages[i].refs.size());
    if (done) {
      // The group stays behind, empty, and is passed over by the next read.
      EraseIds(card.pages[i].allIds);
      card.pages.erase(card.pages.begin() + static_cast<std::ptrdiff_t>(i));
      ++cut;
      continue;
    }
    done = sum >= needed;
    ++i;
  }
  return cut;
}

int AddPages(KrmPlacedCard& card, KrmCardTemplate& cardTemplate, int needed, KrmCardData& newData,
             KrmUpdateStats* stats) {
  if (card.pages.empty()) return 0;
  const QaGePoint3d low = LowerLeftOf(card.pages.back().allIds);
  KrmCardDir dir;
  cardTemplate.GetDir(dir);
  KrmPagePlacer placer = InitPagePlacer(low, dir);
  double width = 0.0, height = 0.0;
  cardTemplate.GetTableSize(1, width, height);
  placer.pageWidth = placer.scale * width;
  placer.pageHeight = placer.scale * height;
  const int n = static_cast<int>(card.pages.size());
  // The matrix is laid back from the last page to where page 0 would lie.
  placer.origin = PagePointAt(placer, 1 - n);
  placer.placed = n;

  KrmCardTag tag;
  tag.cardId = cardTemplate.GetCardID();
  tag.cardCode = card.cardCode;
  tag.pageStep = newData.PageStep();
  tag.pageStartSum = newData.PageStartSum();
  tag.pageStartCur = newData.PageStartCur();

  QaGePoint3d from = low;
  if (n < 2) {
    // Only the first page stands: the continuation page comes from its side drawing.
    const QaGePoint3d p = NextPagePoint(placer);
    const std::wstring file = cardTemplate.GetFolder() + cardTemplate.GetCard().getTblFile(1) + L".dwg";
    KrmEntityPool pool;
    KrmEntityList list = ReadSideDrawing(SideDrawingPath(KrmToFsPath(file)), p, placer.scale, pool);
    if (list.empty()) return 0;
    FileSideDrawingPage(list, pool, card, tag, newData);
    if (stats != nullptr) ++stats->pagesAdded;
    from = p;
  }

  const KrmLoadGroup source = card.pages.back();
  const int perPage = static_cast<int>(source.refs.size());
  if (perPage == 0) return 0;
  const int extra = needed - BaseBlockCount(card);
  if (extra <= 0) return 1;
  const int pages = extra / perPage + (extra % perPage != 0 ? 1 : 0);
  for (int k = 0; k < pages; ++k) {
    const QaGePoint3d p = NextPagePoint(placer);
    tag.entityIndex = static_cast<int>(card.pages.size());
    card.pages.push_back(ClonePageRecord(source, p - from, tag));
    if (stats != nullptr) ++stats->pagesAdded;
  }
  return 1;
}
