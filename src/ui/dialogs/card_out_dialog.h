// KrmDlgCardOut: the transfer of card templates between library folders over
// KrmCardOutModel. Source and target folders typed or browsed, the cards of the source
// listed for a multiple selection, and OK, which copies them through the model. The
// caller owns the model.
#pragma once

#include "authoring/card_out_model.h"
#include "ui/gadgets/resize_dialog.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace tabulon::ui {

class UiStrings;

class CardOutDialog : public CResizeDlg {
  Q_OBJECT

 public:
  CardOutDialog(KrmCardOutModel &model, const UiStrings &strings, QWidget *parent = nullptr);

  void refresh();

  QLineEdit *sourceEdit() const { return source_; }
  QLineEdit *targetEdit() const { return target_; }
  QListWidget *cardList() const { return list_; }
  QPushButton *okButton() const { return ok_; }

 private:
  void selectionChanged();

  KrmCardOutModel &model_;
  QLineEdit *source_ = nullptr;
  QLineEdit *target_ = nullptr;
  QListWidget *list_ = nullptr;
  QPushButton *ok_ = nullptr;
  bool updating_ = false;
};

}  // namespace tabulon::ui
