// The studio's card editor as the card commands reach it: the editor of placed cards
// (published under KRM_CARD_EDITOR, for KrmCardEdit and the editor's own pick button)
// and the template choice with the editor of create mode (under KRM_CARD_CREATOR, for
// KrmCreateCard). Both open CreateCardDialog on a fresh KrmDlgCreateCrd over the
// current document's record. The strings and the parent window must outlive them.
#pragma once

#include <functional>

#include "host/ge/qage_point3d.h"
#include "shell/krm_card_creator.h"
#include "shell/krm_card_editor.h"

class QWidget;

namespace tabulon::ui {

class CreateCardDialog;
class UiStrings;

// What both hand every dialog they open before it runs (the studio: where previews
// zoom; tests: how they drive the dialog).
using CardDialogSetup = std::function<void(CreateCardDialog&)>;

class StudioCardEditor : public KrmCardEditor {
  QARX_DECLARE_MEMBERS(StudioCardEditor)

 public:
  StudioCardEditor(const UiStrings& strings, QWidget* parent, CardDialogSetup setup = {});
  tabulon::Result<KrmCardEditOutcome> EditPlacedCard(KrmCardEditRequest& request) override;

 private:
  const UiStrings& strings_;
  QWidget* parent_;
  CardDialogSetup setup_;
};

class StudioCardCreator : public KrmCardCreator {
  QARX_DECLARE_MEMBERS(StudioCardCreator)

 public:
  // Chooses a template: the library root in, the template's path out; false on cancel.
  using TemplateChooser = std::function<bool(const std::wstring& root, std::wstring& path)>;

  StudioCardCreator(const UiStrings& strings, QWidget* parent, CardDialogSetup setup = {});
  // Without one the library dialog lists the card templates.
  void setTemplateChooser(TemplateChooser chooser) { chooser_ = std::move(chooser); }

  bool ChooseCardTemplate(const std::wstring& root, std::wstring& path) override;
  void RunCreateEditor(const std::wstring& path, const QaGePoint3d& insertPoint) override;

 private:
  const UiStrings& strings_;
  QWidget* parent_;
  CardDialogSetup setup_;
  TemplateChooser chooser_;
};

}  // namespace tabulon::ui
