// The whole road of one card into the drawing: copying the pages, filling them, and
// handing them to model space page by page, each as one group.
#include "drawing/card_generation.h"

#include <string>
#include <vector>

#include "card/card_data.h"
#include "card/card_template.h"
#include "card/data_grid.h"
#include "card/utf8_text.h"
#include "drawing/card_code.h"
#include "drawing/card_tag.h"
#include "drawing/insert_point.h"
#include "drawing/page_copy.h"
#include "drawing/page_group.h"
#include "drawing/page_placer.h"
#include "drawing/side_drawing.h"
#include "drawing/text_fitting.h"
#include "host/db/qadb_entity.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"

namespace {

constexpr unsigned kNoSideDrawingId = 903;

// The side drawing of table `index` of the card: beside the card file, named after the
// table file.
std::filesystem::path TableDrawingPath(const KrmCardTemplate& t, int index) {
  return SideDrawingPath(KrmToFsPath(t.GetFolder() + t.GetCard().getTblFile(index) + L".dwg"));
}

KrmEntityList Joined(const KrmEntityList& a, const KrmEntityList& b, const KrmEntityList& c) {
  KrmEntityList out;
  out.reserve(a.size() + b.size() + c.size());
  out.insert(out.end(), a.begin(), a.end());
  out.insert(out.end(), b.begin(), b.end());
  out.insert(out.end(), c.begin(), c.end());
  return out;
}

std::vector<QaDbObjectId> IdsOf(const KrmEntityList& refs) {
  std::vector<QaDbObjectId> ids;
  ids.reserve(refs.size());
  for (const QaDbEntity* entity : refs) ids.push_back(entity->objectId());
  return ids;
}

// Hands the batch number references of the card to the data: the references of the
// class number stand in for a binding that found no reference.
void NoteBatchIds(const std::vector<KrmDataSort>& sorts, KrmCardData& d) {
  if (sorts.size() != 3) return;
  const auto refsOf = [&](std::size_t k) { return sorts[k].refs.empty() ? sorts[0].refs : sorts[k].refs; };
  if (sorts[1].gridIndex != -1) d.SetBatchCurIds(IdsOf(refsOf(1)));
  if (sorts[2].gridIndex != -1) d.SetBatchSumIds(IdsOf(refsOf(2)));
}

void EraseGroups(const std::vector<QaDbObjectId>& groups) {
  for (const QaDbObjectId& id : groups) {
    QaDbObjectPointer<QaDbObject> group(id, QaDb::kForWrite);
    if (group) group->erase();
  }
}

}  // namespace

int CreateCardPages(KrmCardTemplate& t, KrmCardData& d, std::vector<QaDbObjectId>& out) {
  const KrmCardAttributes& card = t.GetCard();
  if (card.getTblCount() != 2) return 0;

  KrmCardTag tag;
  tag.cardId = card.getID();
  tag.cardCode = MakeCardCode();
  tag.pageStep = d.PageStep();
  tag.pageStartSum = d.PageStartSum();
  tag.pageStartCur = d.PageStartCur();

  KrmCardDir arr;
  t.GetCardDir(arr);
  if (t.GetAutoArrange()) t.GetDir(arr);
  KrmPagePlacer placer = InitPagePlacer(t.GetInsertPoint(), arr);
  double width = 0.0, height = 0.0;
  t.GetTableSize(0, width, height);
  placer.pageWidth = placer.scale * width;
  placer.pageHeight = placer.scale * height;
  cellScale = placer.scale;

  KrmEntityPool pool;
  const QaGePoint3d p0 = NextPagePoint(placer);
  KrmEntityList first = ReadSideDrawing(TableDrawingPath(t, 0), p0, placer.scale, pool);
  if (first.empty()) {
    qautPrint(KrmLoadString(kNoSideDrawingId, L"\n获取图纸信息失败"));
    return 0;
  }

  KrmEntityList rows;
  std::vector<KrmDataSort> sorts;
  NoteBlockIds(first, d);
  DistributeEntities(first, d, rows, sorts, tag);
  TagListIfFree(first, rows, tag);
  std::vector<KrmEntityList> pages;
  pages.push_back(Joined(first, rows, LastOfEach(sorts)));

  const int base = d.GetBaseGrid();
  const int have = d.GetRowsFirst(base);
  const int need = d.GetRowsNeeded(base);
  if (have < need) {
    std::wstring baseName;
    t.GetPageBase(1, baseName);
    int perPage = 1, order = 0;
    t.GetBlkNum(baseName, perPage, order, 1);
    int extra = (need - have) / perPage;
    if ((need - have) % perPage == 0) --extra;

    const QaGePoint3d p1 = NextPagePoint(placer);
    KrmEntityList second = ReadSideDrawing(TableDrawingPath(t, 1), p1, placer.scale, pool);
    NoteBlockIds(second, d);
    KrmEntityList rows2;
    DistributeEntities(second, d, rows2, sorts, tag);
    TagListIfFree(second, rows2, tag);
    rows.insert(rows.end(), rows2.begin(), rows2.end());
    pages.push_back(Joined(second, LastOfEach(sorts), rows2));

    // Continuation pages lie on their own matrix that starts at the first of them.
    KrmPagePlacer next = InitPagePlacer(p1, arr);
    NextPagePoint(next);
    t.GetTableSize(1, width, height);
    next.pageWidth = placer.scale * width;
    next.pageHeight = placer.scale * height;
    QaGePoint3d prev = p1;
    for (int k = 0; k < extra; ++k) {
      const QaGePoint3d p = NextPagePoint(next);
      KrmEntityList c1, c2;
      CloneListTranslated(second, p - p1, c1, pool);
      CloneListTranslated(rows2, p - p1, c2, pool);
      rows.insert(rows.end(), c2.begin(), c2.end());
      CloneLastOfEach(sorts, p - prev, pool);
      pages.push_back(Joined(LastOfEach(sorts), c1, c2));
      prev = p;
    }
  }

  KrmDataGrid baseGrid;
  d.GetGridAt(base, baseGrid);
  FillRowBlocks(baseGrid, rows);
  std::wstring classAtt, batchAtt;
  d.GetClassCurAtt(classAtt);
  d.GetBatchCurAtt(batchAtt);
  WritePageNumbers(sorts, classAtt, batchAtt, d.PageStartCur(), d.PageStep());
  TagPagesIfFree(sorts, tag);

  std::vector<QaDbObjectId> made;
  if (t.GetRearrange() == 0 || t.GetAutoArrange() != 0) {
    for (std::size_t i = 0; i < pages.size(); ++i) {
      const std::vector<QaDbObjectId> ids = AppendToModelSpace(pages[i], pool);
      MakePageGroup(ids, tag, static_cast<int>(i));
      made.insert(made.end(), ids.begin(), ids.end());
    }
    out.insert(out.end(), made.begin(), made.end());
    NoteBatchIds(sorts, d);
    if (t.GetRearrange() != 0) {
      QaGePoint3d point;
      AskPoint(NewInsertPointPrompt(), t.GetInsertPoint(), point);
      TranslateIds(made, t.GetInsertPoint(), point);
    }
    return 1;
  }

  // The user places each page; a cancel takes back every page made so far.
  placer.placed = 0;
  std::vector<QaDbObjectId> groups;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const QaGePoint3d b = NextPagePoint(placer);
    QaGePoint3d pt;
    if (AskPoint(PageInsertPointPrompt(static_cast<int>(i) + 1), b, pt) != 1) {
      EraseIds(made);
      EraseGroups(groups);
      return 0;  // the pool frees the pages still in memory
    }
    TranslateList(pages[i], b, pt);
    const std::vector<QaDbObjectId> ids = AppendToModelSpace(pages[i], pool);
    made.insert(made.end(), ids.begin(), ids.end());
    groups.push_back(MakePageGroup(ids, tag, static_cast<int>(i)));
  }
  out.insert(out.end(), made.begin(), made.end());
  return 1;
}
