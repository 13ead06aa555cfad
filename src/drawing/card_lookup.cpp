#include "drawing/card_lookup.h"

#include <vector>

#include "card/card_file.h"
#include "card/card_reader.h"
#include "drawing/block_names.h"
#include "drawing/card_tag.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"
#include "host/svc/krm_card_root.h"

std::wstring FindCardPathById(const std::wstring& cardId) {
  if (cardId.empty()) return {};
  KrmCardReader reader;
  reader.Load(KrmCardRoot());
  std::vector<KrmCardFile> cards;
  reader.GetCardTree(cards);
  for (const KrmCardFile& card : cards) {
    if (card.IsFolder() || card.GetID() != cardId) continue;
    return card.GetPath() + L"/" + card.GetFileName() + card.GetType();
  }
  return {};
}

int IdentifyPickedEntity(QaDbObjectId id, std::wstring& path, std::wstring& code, std::wstring& blockName) {
  blockName.clear();
  KrmCardTag tag;
  {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (!entity) return 0;
    ReadCardTagOfEntity(entity.object(), tag);
    if (const auto* ref = QaDbBlockReference::cast(entity.object())) blockName = GetBlockName(ref->blockTableRecord());
  }
  path = FindCardPathById(tag.cardId);
  code = tag.cardCode;
  if (path.empty() || code.empty()) return 0;
  blockName = StripBlockPrefix(blockName);
  return 1;
}
