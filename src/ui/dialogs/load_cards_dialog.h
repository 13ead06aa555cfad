// KrmDlgLoadCards: the library dialog over KrmLoadCardsModel. The tree of folders and
// templates, a preview of the selected template's side drawing (for cards the first
// page or, flipped, the continuation) with zoom buttons, deleting a template after a
// question, the transfer of cards to another folder, and OK, which confirms the
// selection in the model. The caller owns the model.
#pragma once

#include <map>

#include "authoring/load_cards_model.h"
#include "ui/gadgets/resize_dialog.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace tabulon::ui {

class DrawingPreview;
class UiStrings;

class LoadCardsDialog : public CResizeDlg {
  Q_OBJECT

 public:
  LoadCardsDialog(KrmLoadCardsModel &model, const UiStrings &strings, QWidget *parent = nullptr);

  // Rebuilds the tree from the model and shows its selection.
  void rebuild();

  QTreeWidget *tree() const { return tree_; }
  DrawingPreview *preview() const { return preview_; }
  QPushButton *flipButton() const { return flip_; }
  QPushButton *deleteButton() const { return delete_; }
  QPushButton *transferButton() const { return transfer_; }
  QPushButton *okButton() const { return ok_; }
  // The tree row of a model item (null when not shown).
  QTreeWidgetItem *rowOf(const KrmLoadCardsModel::Item *item) const;

 private:
  void selectionChanged();
  void showSelection();
  void deleteSelected();
  void transfer();

  KrmLoadCardsModel &model_;
  const UiStrings &strings_;
  QTreeWidget *tree_ = nullptr;
  DrawingPreview *preview_ = nullptr;
  QPushButton *flip_ = nullptr;
  QPushButton *delete_ = nullptr;
  QPushButton *transfer_ = nullptr;
  QPushButton *ok_ = nullptr;
  std::map<QTreeWidgetItem *, const KrmLoadCardsModel::Item *> items_;
  bool updating_ = false;
};

// A runner that opens the model and shows the dialog modal over `parent`.
KrmLoadCardsRunner LoadCardsRunner(QWidget *parent, const UiStrings &strings);

}  // namespace tabulon::ui
