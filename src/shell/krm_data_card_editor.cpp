#include "shell/krm_data_card_editor.h"

#include "card/card_template.h"
#include "drawing/card_data_rows.h"

QARX_DEFINE_MEMBERS(KrmDataCardEditor, KrmCardEditor, L"")

tabulon::Result<KrmCardEditOutcome> KrmDataCardEditor::EditPlacedCard(KrmCardEditRequest& request) {
  ++edits_;
  lastError_.reset();
  KrmCardEditOutcome outcome;
  outcome.oldData = request.data;
  outcome.newData = request.data;
  for (const auto& [block, rows] : tables_) {
    tabulon::Status set = SetBlockRows(outcome.newData, block, rows);
    if (!set.ok()) {
      lastError_ = set.error();
      return set.error();
    }
  }
  const int pages = request.card != nullptr ? static_cast<int>(request.card->pages.size()) : 0;
  if (!tables_.empty() && PagesNeeded(outcome.newData) != pages) RenumberPages(outcome.newData);
  if (request.cardTemplate != nullptr) {
    outcome.rearrange = request.cardTemplate->GetRearrange();
    outcome.autoArrange = request.cardTemplate->GetAutoArrange();
    request.cardTemplate->GetDir(outcome.dir);
  }
  outcome.accepted = true;
  return outcome;
}
