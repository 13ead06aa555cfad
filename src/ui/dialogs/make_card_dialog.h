// KrmDlgMakeCard: the card template dialog over KrmMakeCardModel. Card name and show
// name, the first-page and continuation tables chosen in the library, the arrangement
// of the pages, the comparison of the two tables, and OK, which writes the card
// through the model. The caller owns the model; the nested dialogs come as runners.
#pragma once

#include "authoring/make_card_model.h"
#include "ui/dialogs/authoring_runners.h"
#include "ui/dialogs/template_name_fields.h"
#include "ui/gadgets/resize_dialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tabulon::ui {

class UiStrings;

class MakeCardDialog : public CResizeDlg {
  Q_OBJECT

 public:
  MakeCardDialog(KrmMakeCardModel &model, AuthoringRunners runners, const UiStrings &strings,
                 QWidget *parent = nullptr);

  void refresh();

  QLineEdit *nameEdit() const { return fields_.name; }
  QLineEdit *showNameEdit() const { return fields_.showName; }
  QLabel *firstLabel() const { return first_; }
  QLabel *nextLabel() const { return next_; }
  QLabel *summaryLabel() const { return summary_; }
  QPushButton *firstButton() const { return firstButton_; }
  QPushButton *nextButton() const { return nextButton_; }
  QPushButton *arrangeButton() const { return arrange_; }
  QPushButton *compareButton() const { return compare_; }
  QPushButton *chooseNameButton() const { return fields_.chooseName; }
  QPushButton *loadButton() const { return fields_.load; }
  QPushButton *okButton() const { return ok_; }

 private:
  KrmMakeCardModel &model_;
  AuthoringRunners runners_;
  TemplateNameFields fields_;
  QLabel *first_ = nullptr;
  QLabel *next_ = nullptr;
  QLabel *summary_ = nullptr;
  QPushButton *firstButton_ = nullptr;
  QPushButton *nextButton_ = nullptr;
  QPushButton *arrange_ = nullptr;
  QPushButton *compare_ = nullptr;
  QPushButton *ok_ = nullptr;
};

}  // namespace tabulon::ui
