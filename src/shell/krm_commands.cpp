#include "shell/krm_commands.h"

#include "shell/bom_card_export.h"

#include "authoring/make_card_model.h"
#include "authoring/make_table_model.h"
#include "host/rx/qarx_system_registry.h"
#include "shell/krm_authoring_dialogs.h"
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

QARX_DEFINE_MEMBERS(KrmAuthoringDialogs, QaRxObject, L"")

namespace {

// The authoring dialogs of the program, or null with a line that says where to turn.
KrmAuthoringDialogs* AuthoringDialogs() {
  auto* dialogs = qaFindService<KrmAuthoringDialogs>(KRM_AUTHORING_DIALOGS);
  if (dialogs == nullptr) qautPrint(KrmLoadString(411, L"\n此程序没有模板对话框,请使用 tabulon make-table 或 make-card"));
  return dialogs;
}

}  // namespace

// Template authoring of a table, in the dialog on a fresh model.
int KrmMakeTbl() {
  return KrmRunFramed([] {
    KrmAuthoringDialogs* dialogs = AuthoringDialogs();
    if (dialogs == nullptr) return 0;
    KrmMakeTblModel model(KrmCardRoot());
    return dialogs->RunMakeTable(model) ? 1 : 0;
  });
}

// Template authoring of a card, in the dialog on a fresh model.
int KrmMakeCard() {
  return KrmRunFramed([] {
    KrmAuthoringDialogs* dialogs = AuthoringDialogs();
    if (dialogs == nullptr) return 0;
    KrmMakeCardModel model(KrmCardRoot());
    return dialogs->RunMakeCard(model) ? 1 : 0;
  });
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
