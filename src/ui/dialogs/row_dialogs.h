// The card editor's small dialogs as thin views on their models (row_page_dialogs.h):
// rows to insert, rows to delete, page numbering and page arrangement. Each edits the
// model it is given and answers whether the user pressed OK; a refusal the model
// explains is shown and the dialog stays open.
#pragma once

#include <QDialog>

#include <functional>
#include <string>

class KrmDlgAddRow;
class KrmDlgDelRow;
class KrmDlgPageSet;
class KrmDlgArrang;
class QFormLayout;
class QLineEdit;

namespace tabulon::ui {

class UiStrings;

// A dialog of labelled text boxes bound to strings of a model; `accept` decides OK.
class BoxDialog : public QDialog {
  Q_OBJECT

 public:
  BoxDialog(const QString& title, QWidget* parent);
  // A box showing `text`; what the user types goes back into it.
  QLineEdit* addBox(const QString& label, std::wstring& text, const char* objectName);
  void setCheck(std::function<bool(QString& message)> check) { check_ = std::move(check); }
  void finishLayout();

 protected:
  void accept() override;

 private:
  std::function<bool(QString& message)> check_;
  QFormLayout* form_;
};

bool RunAddRowDialog(KrmDlgAddRow& model, const UiStrings& strings, QWidget* parent);
bool RunDelRowDialog(KrmDlgDelRow& model, const UiStrings& strings, QWidget* parent);
bool RunPageSetDialog(KrmDlgPageSet& model, const UiStrings& strings, QWidget* parent);
bool RunArrangDialog(KrmDlgArrang& model, const UiStrings& strings, QWidget* parent);

}  // namespace tabulon::ui
