#include "ui/dialogs/card_editor_services.h"

#include "authoring/load_cards_model.h"
#include "card/card_template.h"
#include "editor/krm_dlg_create_crd.h"
#include "host/ap/krm_doc_value.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/svc/krm_reg_service.h"
#include "host/svc/utf8.h"
#include "ui/dialogs/create_card_dialog.h"
#include "ui/dialogs/load_cards_dialog.h"
#include "ui/ui_strings.h"

QARX_DEFINE_MEMBERS(tabulon::ui::StudioCardEditor, KrmCardEditor, L"")
QARX_DEFINE_MEMBERS(tabulon::ui::StudioCardCreator, KrmCardCreator, L"")

namespace tabulon::ui {

StudioCardEditor::StudioCardEditor(const UiStrings& strings, QWidget* parent, CardDialogSetup setup)
    : strings_(strings), parent_(parent), setup_(std::move(setup)) {}

Result<KrmCardEditOutcome> StudioCardEditor::EditPlacedCard(KrmCardEditRequest& request) {
  KrmRegService settings;
  KrmDlgCreateCrd model(&settings, KrmCurDocValue());
  if (model.LoadTemplate(request.path) != 1) {
    return MakeError("the card template cannot be loaded").inFile(svc::toUtf8(request.path));
  }
  model.SetEditMode(1);
  model.SetCardData(request.data);
  model.SetCardSaved(request.data);
  if (request.card != nullptr) model.SetPlacedCard(*request.card);
  if (request.cardTemplate != nullptr) model.SetInsertPoint(request.cardTemplate->GetInsertPoint());

  CreateCardDialog dialog(model, strings_, parent_);
  dialog.setPickCard([this] { KrmCardEditFrom(this); });
  if (setup_) setup_(dialog);
  dialog.exec();

  KrmCardEditOutcome outcome;
  outcome.accepted = model.GetEnd() == KrmDlgCreateCrd::End::kOk || model.GetSaveOnCancel() != 0;
  model.GetCardSaved(outcome.oldData);
  model.GetCardData(outcome.newData);
  outcome.rearrange = model.GetPlacePages();
  outcome.autoArrange = model.GetAutoArrange();
  model.GetCardDir(outcome.dir);
  return outcome;
}

StudioCardCreator::StudioCardCreator(const UiStrings& strings, QWidget* parent, CardDialogSetup setup)
    : strings_(strings), parent_(parent), setup_(std::move(setup)) {}

bool StudioCardCreator::ChooseCardTemplate(const std::wstring& root, std::wstring& path) {
  if (chooser_) return chooser_(root, path);
  KrmLoadCardsModel library(root, L".crd");
  if (!LoadCardsRunner(parent_, strings_)(library)) return false;
  // A folder chosen without a template gives a path that does not load: the command
  // says so.
  path = root + library.selectedFolder() + library.SelectedFileName();
  return true;
}

void StudioCardCreator::RunCreateEditor(const std::wstring& path, const QaGePoint3d& insertPoint) {
  KrmRegService settings;
  KrmDlgCreateCrd model(&settings, KrmCurDocValue());
  if (model.LoadTemplate(path) != 1) {
    qautPrint(KrmLoadString(159, L"卡片源路径不存在"));
    return;
  }
  model.SetInsertPoint(insertPoint);
  CreateCardDialog dialog(model, strings_, parent_);
  if (setup_) setup_(dialog);
  dialog.exec();
  if (!model.GetGenerationStatus().ok()) qautPrint(L"\n" + svc::fromUtf8(model.GetGenerationStatus().describe()));
}

}  // namespace tabulon::ui
