#include "ui/dialogs/studio_authoring_dialogs.h"

#include "editor/row_page_dialogs.h"

#include "ui/dialogs/load_cards_dialog.h"
#include "ui/dialogs/make_card_dialog.h"
#include "ui/dialogs/make_table_dialog.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/dialogs/sel_sgl_dialog.h"

namespace tabulon::ui {

AuthoringRunners StudioRunners(QWidget *parent, const UiStrings &strings) {
  AuthoringRunners runners;
  runners.selSgl = SelSglRunner(parent, strings);
  runners.loadCards = LoadCardsRunner(parent, strings);
  // The arrangement of a card's pages in the editor's arrangement dialog.
  runners.arrangement = [parent, &strings](KrmCardDir &dir) {
    KrmDlgArrang arrangement;
    arrangement.SetData(dir);
    if (!RunArrangDialog(arrangement, strings, parent)) return false;
    arrangement.GetData(dir);
    return true;
  };
  return runners;
}

bool StudioAuthoringDialogs::RunMakeTable(KrmMakeTblModel &model) {
  MakeTableDialog dialog(model, StudioRunners(parent_, strings_), strings_, parent_);
  return dialog.exec() == QDialog::Accepted;
}

bool StudioAuthoringDialogs::RunMakeCard(KrmMakeCardModel &model) {
  MakeCardDialog dialog(model, StudioRunners(parent_, strings_), strings_, parent_);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace tabulon::ui
