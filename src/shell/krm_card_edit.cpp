// The re-edit entry of the command KrmCardEdit: from one picked block reference to the
// card's data in an editor, and back into the drawing.
#include <algorithm>
#include <vector>

#include "card/card_template.h"
#include "drawing/page_group.h"
#include "drawing/placed_card_find.h"
#include "drawing/placed_card_read.h"
#include "drawing/placed_card_update.h"
#include "host/ap/krm_doc_value.h"
#include "host/ed/qa_message_box.h"
#include "host/ed/qaut_printf.h"
#include "host/rx/qa_lang_resource.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/utf8.h"
#include "shell/krm_card_editor.h"
#include "shell/krm_data_card_editor.h"

QARX_DEFINE_MEMBERS(KrmCardEditor, QaRxObject, L"")

namespace {

// Takes the card's code out of the open list when the editor is done with it.
class OpenCardMark {
 public:
  OpenCardMark(KrmDocValue* doc, std::wstring code) : doc_(doc), code_(std::move(code)) {
    if (doc_ != nullptr) doc_->OpenCardsList.push_back(code_);
  }
  ~OpenCardMark() {
    if (doc_ == nullptr || !release_) return;
    auto& list = doc_->OpenCardsList;
    const auto found = std::find(list.begin(), list.end(), code_);
    if (found != list.end()) list.erase(found);
  }
  OpenCardMark(const OpenCardMark&) = delete;
  OpenCardMark& operator=(const OpenCardMark&) = delete;
  // From here on the mark goes with the editor.
  void releaseWithEditor() { release_ = true; }

 private:
  KrmDocValue* doc_;
  std::wstring code_;
  bool release_ = false;
};

int PageOfGroup(const KrmPlacedCard& card, const std::vector<QaDbObjectId>& groups) {
  if (groups.empty()) return 0;
  for (std::size_t p = 0; p < card.pages.size(); ++p) {
    if (card.pages[p].groupId == groups.front()) return static_cast<int>(p);
  }
  return 0;
}

}  // namespace

int KrmCardEditFrom(KrmCardEditor* parent) {
  QaDbObjectId picked;
  if (PickCardEntity(picked).isNull()) return 0;

  auto found = FindPlacedCardOfEntity(picked);
  if (!found.ok()) {
    qautPrint(KrmLoadString(156, L"\n被选择实体不是卡片中的实体!"));
    return 0;
  }
  KrmDocValue* doc = KrmCurDocValue();
  if (doc != nullptr) {
    const auto& open = doc->OpenCardsList;
    if (std::find(open.begin(), open.end(), found->code) != open.end()) {
      QaMessageBox(KrmLoadString(157, L"此表格已在对话框中打开"), MB_OK | MB_ICONQUESTION);
      return 0;
    }
  }
  std::vector<QaDbObjectId> groups;
  GroupsOfEntity(picked, groups);
  // A card whose pages are all gone keeps its mark until the drawing closes.
  OpenCardMark mark(doc, found->code);

  auto opened = OpenPlacedCard(found->path, found->code);
  if (!opened.ok()) return 0;
  mark.releaseWithEditor();
  KrmCardTemplate& cardTemplate = *opened->cardTemplate;
  opened->data.SelectGrid(found->blockName);
  opened->data.SetCurRow(PageOfGroup(opened->card, groups));

  KrmCardEditRequest request;
  request.path = found->path;
  request.cardTemplate = &cardTemplate;
  request.data = opened->data;
  request.card = &opened->card;
  request.parent = parent;

  KrmDataCardEditor unchanged;
  KrmCardEditor* editor = qaFindService<KrmCardEditor>(KRM_CARD_EDITOR);
  if (editor == nullptr) editor = &unchanged;
  auto outcome = editor->EditPlacedCard(request);
  if (!outcome.ok()) {
    qautPrint(L"\n" + tabulon::svc::fromUtf8(outcome.describe()));
    return 0;
  }
  if (!outcome->accepted) return 1;
  cardTemplate.SetArrangeOptions(outcome->rearrange, outcome->autoArrange);
  cardTemplate.SetDir(outcome->dir);
  UpdatePlacedCard(cardTemplate, outcome->oldData, outcome->newData, opened->card);
  return 1;
}
