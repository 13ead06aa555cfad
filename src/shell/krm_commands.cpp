#include "shell/krm_commands.h"

#include "shell/bom_card_export.h"
#include "shell/krm_card_editor.h"
#include "drawing/placed_card_find.h"

#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_open.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/krm_card_root.h"
#include "shell/krm_tabulon_app.h"

#include <algorithm>

int KrmRunFramed(const std::function<int()>& body) {
  if (!KrmResolveCardRoot()) {
    qautPrint(KrmLoadString(159, L"卡片源路径不存在"));
    return 0;
  }
  QaResourceScope resource(KrmTabulonApp().resourceInstance());
  return body();
}

// Template authoring of a table: its dialog comes with the authoring subsystem.
int KrmMakeTbl() {
  return KrmRunFramed([] { return 0; });
}

// Template authoring of a card: its dialog comes with the authoring subsystem.
int KrmMakeCard() {
  return KrmRunFramed([] { return 0; });
}

// Choosing a card template and filling it: the library dialog and the editor come
// with their subsystems.
int KrmCreateCard() {
  return KrmRunFramed([] { return 0; });
}

// Picking a placed card and editing it (krm_card_editor.h).
int KrmCardEdit() {
  return KrmRunFramed([] { return KrmCardEditFrom(nullptr); });
}

// A card from the drawing's bill of materials (bom_card_export.h).
int KrmBomCardExp() {
  return KrmRunFramed([] { return KrmBomCardExpRun(); });
}

std::wstring KrmStripBlockPrefix(const std::wstring& name) {
  std::wstring result = name;
  for (auto cut = result.find(L'_'); cut != std::wstring::npos; cut = result.find(L'_')) result = result.substr(cut + 1);
  return result;
}

std::vector<QaDbObjectId> KrmPickEntities(const std::wstring& prompt) { return PickEntities(prompt); }

int KrmDelBlkID() {
  const auto picked = KrmPickEntities(KrmLoadString(105, L"\n请选择整个卡片实体/R移除实体:"));
  if (picked.empty()) return 0;
  std::vector<QaDbObjectId> blocks;
  for (auto id : picked) {
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
    if (!ref) continue;
    const auto block = ref->blockTableRecord();
    if (!block.isNull() && std::find(blocks.begin(), blocks.end(), block) == blocks.end()) blocks.push_back(block);
  }
  for (auto id : blocks) {
    QaDbObjectPointer<QaDbBlockTableRecord> block(id, QaDb::kForWrite);
    if (!block) continue;
    const std::wstring name = block->getName();
    const std::wstring stripped = KrmStripBlockPrefix(name);
    // No precaution against clashes: a rename the table refuses is passed over.
    if (stripped != name) block->setName(stripped);
  }
  return 1;
}
