#include "drawing/placed_card_find.h"

#include <limits>
#include <memory>

#include "drawing/block_names.h"
#include "drawing/card_lookup.h"
#include "drawing/card_tag.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_selection.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/utf8.h"

QaDbObjectId PickCardEntity(QaDbObjectId& out) {
  out = QaDbObjectId();
  QaDbObjectId picked;
  QaGePoint3d point;
  const int result = EntSelEx(KrmLoadString(155, L"\n请选择被编辑的Tabulon实体:").c_str(), picked, point);
  if (result != RTNORM && result != RTKWORD) return out;
  QaDbObjectPointer<QaDbBlockReference> reference(picked, QaDb::kForRead);
  if (reference) out = picked;
  return out;
}

std::vector<QaDbObjectId> PickEntities(const std::wstring& prompt) {
  qautPrint(prompt);
  QaEdSelectionSet selection;
  if (selection.select() != RTNORM) return {};
  return selection.ids();
}

QaDbObjectId FindCardReferenceAt(const QaGePoint3d& point, QaDbDatabase* database) {
  if (database == nullptr) database = qaWorkingDatabase();
  if (database == nullptr) return {};
  QaDbObjectId best;
  double bestArea = std::numeric_limits<double>::infinity();
  for (const QaDbObjectId& id : qaedModelSpaceEntities(database)) {
    QaDbObjectPointer<QaDbBlockReference> reference(id, QaDb::kForRead);
    if (!reference || !HasCardTag(reference.object())) continue;
    QaDbExtents ext;
    if (reference->getGeomExtents(ext) != Qa::eOk || ext.isEmpty()) continue;
    const QaGePoint3d& low = ext.minPoint();
    const QaGePoint3d& high = ext.maxPoint();
    if (point.x < low.x || point.x > high.x || point.y < low.y || point.y > high.y) continue;
    const double area = (high.x - low.x) * (high.y - low.y);
    if (area < bestArea) {
      bestArea = area;
      best = id;
    }
  }
  return best;
}

tabulon::Result<KrmFoundCard> FindPlacedCardByCode(const std::wstring& code, QaDbDatabase* database) {
  if (database == nullptr) database = qaWorkingDatabase();
  if (database == nullptr) return tabulon::MakeError("no drawing is open");
  std::wstring cardId;
  bool found = false;
  {
    QaDbObjectPointer<QaDbDictionary> groups(database->groupDictionaryId(), QaDb::kForRead);
    if (groups) {
      for (std::unique_ptr<QaDbDictionaryIterator> it = groups->newIterator(); !it->done() && !found; it->next()) {
        QaDbObjectPointer<QaDbGroup> group(it->objectId(), QaDb::kForRead);
        if (!group || !HasCardTag(group.object())) continue;
        KrmCardTag tag;
        ReadCardTagOfGroup(group.object(), tag);
        if (tag.cardCode != code || group->allEntityIds().empty()) continue;
        cardId = tag.cardId;
        found = true;
      }
    }
  }
  const std::string utf8 = tabulon::svc::toUtf8(code);
  if (!found) return tabulon::MakeError("the drawing has no card with the code \"" + utf8 + "\"").inField("card");
  KrmFoundCard card{code, FindCardPathById(cardId), {}};
  if (card.path.empty()) {
    return tabulon::MakeError("the template of card " + utf8 + " (id " + tabulon::svc::toUtf8(cardId) +
                              ") is not in the card library")
        .inField("card");
  }
  return card;
}

tabulon::Result<KrmFoundCard> FindPlacedCardOfEntity(QaDbObjectId id) {
  KrmCardTag tag;
  std::wstring blockName;
  {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (!entity || !HasCardTag(entity.object())) return tabulon::MakeError("the entity is not part of a card");
    ReadCardTagOfEntity(entity.object(), tag);
    if (const auto* reference = QaDbBlockReference::cast(entity.object())) {
      blockName = StripBlockPrefix(GetBlockName(reference->blockTableRecord()));
    }
  }
  if (tag.cardCode.empty()) return tabulon::MakeError("the entity is not part of a card");
  KrmFoundCard card{tag.cardCode, FindCardPathById(tag.cardId), blockName};
  if (card.path.empty()) {
    return tabulon::MakeError("the template of card " + tabulon::svc::toUtf8(tag.cardCode) + " (id " +
                              tabulon::svc::toUtf8(tag.cardId) + ") is not in the card library");
  }
  return card;
}
