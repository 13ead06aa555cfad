// KrmDlgMakeTbl: the table template dialog over KrmMakeTblModel. Names, the pick of the
// form in the drawing (the dialog steps aside while the user selects), the class
// choosers, the page base and page attribute lines, the multi-record classes with the
// fill order of each (an icon per order), and OK, which writes the template through the
// model. The caller owns the model; the nested dialogs come as runners.
#pragma once

#include <array>

#include "authoring/make_table_model.h"
#include "ui/dialogs/authoring_runners.h"
#include "ui/dialogs/template_name_fields.h"
#include "ui/gadgets/resize_dialog.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tabulon::ui {

class UiStrings;

class MakeTableDialog : public CResizeDlg {
  Q_OBJECT

 public:
  MakeTableDialog(KrmMakeTblModel &model, AuthoringRunners runners, const UiStrings &strings,
                  QWidget *parent = nullptr);
  ~MakeTableDialog() override;

  // Shows what the model holds now.
  void refresh();

  // The picture of a fill order: arrows that show where filling starts and how it runs.
  static QIcon fillOrderIcon(int fillOrder);

  QLineEdit *nameEdit() const { return fields_.name; }
  QLineEdit *showNameEdit() const { return fields_.showName; }
  QLabel *statusLabel() const { return status_; }
  QLabel *singleLabel() const { return single_; }
  QLabel *multiLabel() const { return multi_; }
  QLabel *pageBaseLabel() const { return pageBase_; }
  QLabel *pageAttLabel(int keyIndex) const { return pageAtt_.at(static_cast<std::size_t>(keyIndex)); }
  QListWidget *classList() const { return classes_; }
  QComboBox *fillOrderBox() const { return fillOrder_; }
  QPushButton *pickButton() const { return pick_; }
  QPushButton *singleButton() const { return singleButton_; }
  QPushButton *multiButton() const { return multiButton_; }
  QPushButton *pageBaseButton() const { return pageBaseButton_; }
  QPushButton *pageAttButton(int keyIndex) const { return pageAttButtons_.at(static_cast<std::size_t>(keyIndex)); }
  QPushButton *chooseNameButton() const { return fields_.chooseName; }
  QPushButton *loadButton() const { return fields_.load; }
  QPushButton *okButton() const { return ok_; }

 private:
  void pickBlocks();
  void okClicked();

  KrmMakeTblModel &model_;
  AuthoringRunners runners_;
  TemplateNameFields fields_;
  QLabel *status_ = nullptr;
  QLabel *single_ = nullptr;
  QLabel *multi_ = nullptr;
  QLabel *pageBase_ = nullptr;
  std::array<QLabel *, 5> pageAtt_{};
  QListWidget *classes_ = nullptr;
  QComboBox *fillOrder_ = nullptr;
  QPushButton *pick_ = nullptr;
  QPushButton *singleButton_ = nullptr;
  QPushButton *multiButton_ = nullptr;
  QPushButton *pageBaseButton_ = nullptr;
  std::array<QPushButton *, 5> pageAttButtons_{};
  QPushButton *ok_ = nullptr;
  bool updating_ = false;
};

}  // namespace tabulon::ui
