#include "ui/dialogs/dialog_gallery.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>

#include "authoring/card_out_model.h"
#include "authoring/load_cards_model.h"
#include "authoring/make_card_model.h"
#include "authoring/make_table_model.h"
#include "authoring/sel_sgl_model.h"
#include "editor/krm_dlg_create_crd.h"
#include "editor/row_page_dialogs.h"
#include "host/ap/krm_doc_value.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/krm_reg_service.h"
#include "ui/dialogs/card_out_dialog.h"
#include "ui/dialogs/cell_descriptor_dialog.h"
#include "ui/dialogs/create_card_dialog.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/dialogs/load_cards_dialog.h"
#include "ui/dialogs/make_card_dialog.h"
#include "ui/dialogs/make_table_dialog.h"
#include "ui/dialogs/sel_sgl_dialog.h"
#include "ui/studio/studio_user_io.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

// A library run that takes what the tree selects first (the first template down the
// first folders).
bool TakeFirst(KrmLoadCardsModel &library) {
  library.Open();
  if (library.Selected() == nullptr) return false;
  library.Confirm();
  return !library.SelectedFileName().empty();
}

// Shows `dialog` at its natural size, lets it lay out and paint, and saves its picture.
Status Snap(QDialog &dialog, const std::filesystem::path &file) {
  dialog.show();
  dialog.resize(dialog.sizeHint().expandedTo(dialog.minimumSizeHint()).expandedTo(QSize(360, 200)));
  QApplication::processEvents();
  const bool saved = dialog.grab().save(QString::fromStdString(file.string()), "PNG");
  dialog.hide();
  if (!saved) return Error{"cannot write the picture", file.string(), 0, "png"};
  return {};
}

// Runs `run`, which shows a dialog modal, saves the picture of that dialog once it is up
// and closes it again.
Status SnapModal(const std::function<void()> &run, const std::filesystem::path &file) {
  Status result = Error{"the dialog did not open", file.string(), 0, "png"};
  QTimer timer;
  timer.setInterval(20);
  QObject::connect(&timer, &QTimer::timeout, [&] {
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    timer.stop();
    QApplication::processEvents();
    result = dialog->grab().save(QString::fromStdString(file.string()), "PNG")
                 ? Status{}
                 : Status{Error{"cannot write the picture", file.string(), 0, "png"}};
    dialog->reject();
  });
  timer.start();
  run();
  return result;
}

// The first block reference of model space whose block has attribute definitions.
bool TakeFirstAttributeBlock(CellDescriptorForm &form) {
  QaDbDatabase *db = qaWorkingDatabase();
  if (db == nullptr) return false;
  std::vector<QaDbObjectId> ids;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(db->modelSpaceId(), QaDb::kForRead);
    if (!space) return false;
    ids = space->entityIds();
  }
  for (QaDbObjectId id : ids)
    if (form.TakeBlock(id).ok()) return true;
  return false;
}

}  // namespace

Result<std::vector<std::string>> SaveDialogGallery(StudioWindow &window, const UiStrings &strings,
                                                   const std::filesystem::path &dir) {
  std::error_code ec;
  std::filesystem::create_directories(dir, ec);
  if (ec) return Error{"cannot make the folder: " + ec.message(), dir.string(), 0, "gallery"};
  // Whatever a model would ask while it is set up is answered by itself.
  window.userIO().setUnattendedBoxes(true);
  // The card root as a command resolves it, for the drawing open in the window.
  try {
    KrmResolveCardRoot();
  } catch (const std::exception &e) {
    return Error{e.what(), "", 0, "library"};
  }
  const std::wstring root = KrmCardRoot();
  const AuthoringRunners runners = StudioRunners(&window, strings);
  std::vector<std::string> written;
  auto snap = [&](QDialog &dialog, const std::string &name) -> Status {
    const auto file = dir / (name + ".png");
    if (Status status = Snap(dialog, file); !status.ok()) return status;
    written.push_back(file.filename().string());
    return {};
  };

  // The table template dialog on the first table of the library, as loaded for editing.
  KrmMakeTblModel table(root);
  (void)table.LoadTable(TakeFirst);
  {
    MakeTableDialog dialog(table, runners, strings, &window);
    if (Status status = snap(dialog, "KrmDlgMakeTbl"); !status.ok()) return status.error();
  }
  {
    KrmSelSglModel chooser(KrmSelSglMode::kMultiBlocks, table.AllBlocks());
    SelSglDialog dialog(chooser, strings, &window);
    if (Status status = snap(dialog, "KrmDlgSelSgl"); !status.ok()) return status.error();
  }
  {
    KrmSelSglModel chooser(KrmSelSglMode::kClassCur, table.SingleBlocks());
    SelSglDialog dialog(chooser, strings, &window);
    if (Status status = snap(dialog, "KrmDlgSelSgl-attribute"); !status.ok()) return status.error();
  }
  {
    KrmMakeCardModel card(root);
    (void)card.LoadCard(TakeFirst);
    MakeCardDialog dialog(card, runners, strings, &window);
    if (Status status = snap(dialog, "KrmDlgMakeCard"); !status.ok()) return status.error();
  }
  std::wstring cardFolder;
  {
    KrmLoadCardsModel library(root, L".crd");
    library.Open();
    cardFolder = library.TransferPath();
    LoadCardsDialog dialog(library, strings, &window);
    if (Status status = snap(dialog, "KrmDlgLoadCards"); !status.ok()) return status.error();
  }
  {
    KrmCardOutModel out(root, cardFolder);
    CardOutDialog dialog(out, strings, &window);
    if (Status status = snap(dialog, "KrmDlgCardOut"); !status.ok()) return status.error();
  }
  {
    CellDescriptorForm form;
    TakeFirstAttributeBlock(form);
    CellDescriptorDialog dialog(form, strings, &window);
    if (Status status = snap(dialog, "KrmDlgCellDesc"); !status.ok()) return status.error();
  }
  {
    // The card editor in create mode on the first card, with a few rows typed.
    KrmLoadCardsModel library(root, L".crd");
    if (TakeFirst(library)) {
      KrmRegService settings;
      KrmDlgCreateCrd model(&settings, KrmCurDocValue());
      if (model.LoadTemplate(root + library.selectedFolder() + library.SelectedFileName()) == 1) {
        CreateCardDialog dialog(model, strings, &window);
        dialog.resize(900, 480);
        KrmCardData data;
        model.GetCardData(data);
        model.SelectTab(data.GetBaseGrid());
        const int last = std::min(2, model.Grid().GetColumnCount() - 1);
        for (int r = 1; r <= 3; ++r) {
          if (r > 1) model.AddRow();
          model.Grid().SetItemText(r, last, strings.wtext(9490, L"车外圆") + std::to_wstring(r));
          model.OnGridEndEdit(r, last);
        }
        dialog.refresh();
        dialog.show();
        dialog.resize(900, 480);
        QApplication::processEvents();
        const auto file = dir / "KrmDlgCreateCrd.png";
        const bool saved = dialog.grab().save(QString::fromStdString(file.string()), "PNG");
        dialog.hide();
        if (!saved) return Error{"cannot write the picture", file.string(), 0, "png"};
        written.push_back(file.filename().string());
      }
    }
  }
  // The small dialogs of the card editor, each shown modal as the editor shows it.
  const auto modal = [&](const std::string &name, const std::function<void()> &run) -> Status {
    const auto file = dir / (name + ".png");
    if (Status status = SnapModal(run, file); !status.ok()) return status;
    written.push_back(file.filename().string());
    return {};
  };
  KrmDlgAddRow addRow;
  KrmDlgDelRow delRow;
  KrmDlgPageSet pageSet(1, 1, 1);
  KrmDlgArrang arrang;
  arrang.SetData(KrmCardDir());
  const std::vector<std::pair<std::string, std::function<void()>>> small = {
      {"KrmDlgAddRow", [&] { RunAddRowDialog(addRow, strings, &window); }},
      {"KrmDlgDelRow", [&] { RunDelRowDialog(delRow, strings, &window); }},
      {"KrmDlgPageSet", [&] { RunPageSetDialog(pageSet, strings, &window); }},
      {"KrmDlgArrang", [&] { RunArrangDialog(arrang, strings, &window); }},
  };
  for (const auto &[name, run] : small)
    if (Status status = modal(name, run); !status.ok()) return status.error();
  window.userIO().setUnattendedBoxes(false);
  return written;
}

}  // namespace tabulon::ui
