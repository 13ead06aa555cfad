#include "drawing/block_texts.h"

#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_open.h"

std::vector<KrmAttSort> MakeAttSlots(const std::vector<std::wstring>& colNames) {
  std::vector<KrmAttSort> slots(colNames.size());
  for (std::size_t i = 0; i < colNames.size(); ++i) slots[i].att.SetShowName(colNames[i]);
  return slots;
}

std::vector<std::wstring> ReadBlockTexts(const QaDbBlockReference& reference, std::vector<KrmAttSort>& slots) {
  auto take = [&slots](const QaDbAttribute& att) {
    for (KrmAttSort& slot : slots) {
      if (slot.att.GetShowName() == att.tag()) slot.text = att.textString();
    }
  };
  std::unique_ptr<QaDbObjectIterator> it = reference.attributeIterator();
  for (it->start(); !it->done(); it->step()) {
    if (it->objectId().isNull()) {
      // A reference in memory holds its attributes itself.
      if (const QaDbAttribute* att = QaDbAttribute::cast(it->entity())) take(*att);
      continue;
    }
    QaDbObjectPointer<QaDbAttribute> att(it->objectId(), QaDb::kForRead);
    if (att) take(*att);
  }
  std::vector<std::wstring> texts;
  texts.reserve(slots.size());
  for (const KrmAttSort& slot : slots) texts.push_back(slot.text);
  return texts;
}

std::vector<std::wstring> ReadBlockTexts(const QaDbBlockReference& reference,
                                         const std::vector<std::wstring>& colNames) {
  std::vector<KrmAttSort> slots = MakeAttSlots(colNames);
  return ReadBlockTexts(reference, slots);
}

int ClearAttributes(QaDbObjectId reference) {
  std::vector<QaDbObjectId> ids;
  {
    QaDbObjectPointer<QaDbBlockReference> ref(reference, QaDb::kForRead);
    if (!ref) return 0;
    std::unique_ptr<QaDbObjectIterator> it = ref->attributeIterator();
    for (it->start(); !it->done(); it->step()) ids.push_back(it->objectId());
  }
  for (const QaDbObjectId& id : ids) {
    QaDbObjectPointer<QaDbAttribute> att(id, QaDb::kForWrite);
    if (att) att->setTextString(L"");
  }
  return 1;
}
