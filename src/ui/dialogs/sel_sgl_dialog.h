// KrmDlgSelSgl: the chooser of block classes (and of one attribute of a class) over
// KrmSelSglModel. A thin view: the lists show what the model holds, clicks go to it.
// The caller owns the model; the dialog only refers to it.
#pragma once

#include "authoring/sel_sgl_model.h"
#include "ui/gadgets/resize_dialog.h"

class QListWidget;
class QPushButton;

namespace tabulon::ui {

class UiStrings;

class SelSglDialog : public CResizeDlg {
  Q_OBJECT

 public:
  // Result codes of the dialog besides Accepted and Rejected.
  static constexpr int kClearResult = 2;

  SelSglDialog(KrmSelSglModel &model, const UiStrings &strings, QWidget *parent = nullptr);

  // Shows what the model holds now.
  void refresh();
  // How the run ended, from the dialog's result.
  KrmDialogEnd end() const;

  QListWidget *classList() const { return classes_; }
  QListWidget *attributeList() const { return attributes_; }
  QPushButton *okButton() const { return ok_; }
  QPushButton *clearButton() const { return clear_; }

 private:
  void classesChanged();

  KrmSelSglModel &model_;
  QListWidget *classes_ = nullptr;
  QListWidget *attributes_ = nullptr;
  QPushButton *ok_ = nullptr;
  QPushButton *clear_ = nullptr;
  bool updating_ = false;
};

// A runner that shows the chooser modal over `parent`.
KrmSelSglRunner SelSglRunner(QWidget *parent, const UiStrings &strings);

}  // namespace tabulon::ui
