#include "drawing/placed_card_update.h"

#include <cmath>
#include <cstddef>

#include "card/card_data.h"
#include "card/card_template.h"
#include "drawing/card_tag.h"
#include "drawing/entity_list.h"
#include "drawing/extents_util.h"
#include "drawing/insert_point.h"
#include "drawing/page_arrangement.h"
#include "drawing/page_placer.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_open.h"

namespace {

// Writes the group record of page `index` when the group carries another one.
void WritePageRecord(const KrmLoadGroup& page, const KrmCardTag& tag, int index) {
  QaDbObjectPointer<QaDbGroup> group(page.groupId, QaDb::kForRead);
  if (!group) return;
  KrmCardTag now;
  ReadCardTagOfGroup(group.object(), now);
  KrmCardTag wanted = tag;
  wanted.entityIndex = index;
  if (now == wanted) return;
  if (group->upgradeOpen() != Qa::eOk) return;
  WriteCardTagOfGroup(group.object(), tag, index);
}

}  // namespace

int UpdatePlacedCard(KrmCardTemplate& cardTemplate, KrmCardData& oldData, KrmCardData& newData,
                     KrmPlacedCard& card, KrmUpdateStats* stats) {
  const int needed = newData.GetRowsNeeded(newData.GetBaseGrid());

  KrmCardTag tag;
  tag.cardId = cardTemplate.GetCardID();
  tag.cardCode = card.cardCode;
  tag.pageStep = newData.PageStep();
  tag.pageStartSum = newData.PageStartSum();
  tag.pageStartCur = newData.PageStartCur();
  // The numbering is in the drawing before anything else changes.
  for (std::size_t i = 0; i < card.pages.size(); ++i) {
    WritePageRecord(card.pages[i], tag, static_cast<int>(i));
    card.pages[i].pageIndex = static_cast<int>(i);
  }

  int have = 0;
  for (const KrmLoadGroup& page : card.pages) have += static_cast<int>(page.refs.size());
  if (have < needed) {
    AddPages(card, cardTemplate, needed, newData, stats);
  } else {
    const int cut = CutPages(card, needed);
    if (stats != nullptr) stats->pagesCut += cut;
  }

  RewriteTexts(oldData, newData, card, stats);
  if (card.pages.empty()) return 1;
  return MovePlacedCard(cardTemplate, card);
}

int MovePlacedCard(KrmCardTemplate& cardTemplate, KrmPlacedCard& card) {
  if (cardTemplate.GetRearrange() == 0 || card.pages.empty()) return 1;
  KrmCardDir dir;
  cardTemplate.GetDir(dir);
  if (cardTemplate.GetAutoArrange() != 0) {
    QaGePoint3d low, high;
    BoxOf(card.pages.front().allIds, low, high);
    QaGePoint3d point;
    if (AskPoint(NewInsertPointPrompt(), low, point) != 1) return 0;
    KrmPagePlacer placer = InitPagePlacer(point, dir);
    // Every page takes the first page's size as its module.
    placer.pageWidth = placer.scale * std::fabs(high.x - low.x);
    placer.pageHeight = placer.scale * std::fabs(high.y - low.y);
    ArrangePlacedPages(card, placer);
    return 1;
  }
  for (std::size_t i = 0; i < card.pages.size(); ++i) {
    const QaGePoint3d low = LowerLeftOf(card.pages[i].allIds);
    QaGePoint3d point;
    if (AskPoint(PageInsertPointPrompt(static_cast<int>(i) + 1), low, point) != 1) return 0;
    TranslateIds(card.pages[i].allIds, low, point);
  }
  return 1;
}
