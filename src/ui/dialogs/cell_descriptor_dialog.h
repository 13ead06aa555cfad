// The cell description dialog: a view on CellDescriptorForm. Pick a block in the
// drawing (the dialog steps aside), choose the attribute by tag, and edit the cell's
// properties, one line each; OK writes them, a refused value is named and the dialog
// stays. The caller owns the form.
#pragma once

#include <map>
#include <string>

#include "ui/dialogs/cell_descriptor_form.h"
#include "ui/gadgets/resize_dialog.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tabulon::ui {

class UiStrings;

class CellDescriptorDialog : public CResizeDlg {
  Q_OBJECT

 public:
  CellDescriptorDialog(CellDescriptorForm &form, const UiStrings &strings, QWidget *parent = nullptr);

  void refresh();

  QLabel *blockLabel() const { return block_; }
  QComboBox *tagBox() const { return tags_; }
  QLineEdit *field(const std::wstring &key) const { return fields_.at(key); }
  QLabel *messageLabel() const { return message_; }
  QPushButton *pickButton() const { return pick_; }
  QPushButton *okButton() const { return ok_; }

 private:
  // Hands the typed values to the form; false (with the message shown) on a refusal.
  bool takeFields();

  CellDescriptorForm &form_;
  QLabel *block_ = nullptr;
  QComboBox *tags_ = nullptr;
  std::map<std::wstring, QLineEdit *> fields_;
  QLabel *message_ = nullptr;
  QPushButton *pick_ = nullptr;
  QPushButton *ok_ = nullptr;
  bool updating_ = false;
};

}  // namespace tabulon::ui
