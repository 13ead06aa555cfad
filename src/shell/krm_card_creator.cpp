#include "shell/krm_card_creator.h"

#include "card/card_template.h"
#include "drawing/extents_util.h"
#include "drawing/insert_point.h"
#include "host/ap/krm_doc_value.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_card_root.h"

QARX_DEFINE_MEMBERS(KrmCardCreator, QaRxObject, L"")

int KrmCreateCardRun() {
  auto* creator = qaFindService<KrmCardCreator>(KRM_CARD_CREATOR);
  if (creator == nullptr) {
    qautPrint(KrmLoadString(430, L"\n此程序没有卡片编辑器,请使用 tabulon create"));
    return 0;
  }
  std::wstring path;
  if (!creator->ChooseCardTemplate(KrmCardRoot(), path)) return 0;
  KrmCardTemplate cardTemplate;
  if (cardTemplate.LoadTemplate(path) != 1) {
    qautPrint(KrmLoadString(159, L"卡片源路径不存在"));
    return 0;
  }
  // The next card goes beside the one generated last in this drawing.
  QaGePoint3d base(0, 0, 0);
  if (KrmDocValue* doc = KrmCurDocValue(); doc != nullptr && !doc->lastCardIds.empty()) {
    QaGePoint3d lower, upper;
    if (BoxOf(doc->lastCardIds, lower, upper)) {
      KrmCardDir dir;
      cardTemplate.GetCardDir(dir);
      base = SuggestInsertPoint(dir, lower, upper, cardTemplate.GetFirstTableHeight());
    }
  }
  QaGePoint3d point;
  if (AskPoint(NewInsertPointPrompt(), base, point) != 1) return 0;
  creator->RunCreateEditor(path, point);
  return 1;
}
