#include "ui/dialogs/row_dialogs.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QVBoxLayout>

#include "editor/row_page_dialogs.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

BoxDialog::BoxDialog(const QString& title, QWidget* parent) : QDialog(parent), form_(new QFormLayout) {
  setWindowTitle(title);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form_);
}

QLineEdit* BoxDialog::addBox(const QString& label, std::wstring& text, const char* objectName) {
  auto* box = new QLineEdit(toQString(text), this);
  box->setObjectName(QString::fromLatin1(objectName));
  connect(box, &QLineEdit::textChanged, this, [&text](const QString& typed) { text = toWString(typed); });
  form_->addRow(label, box);
  return box;
}

void BoxDialog::finishLayout() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &BoxDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &BoxDialog::reject);
  static_cast<QVBoxLayout*>(layout())->addWidget(buttons);
}

void BoxDialog::accept() {
  QString message;
  if (check_ && !check_(message)) {
    if (!message.isEmpty()) QMessageBox::warning(this, windowTitle(), message);
    return;
  }
  QDialog::accept();
}

namespace {

// The check of a row dialog whose model explains a refused value in a message.
template <class Model>
auto AcceptSayingWhy(Model& model) {
  return [&model](QString& message) {
    std::wstring text;
    const bool ok = model.Accept(text);
    message = toQString(text);
    return ok;
  };
}

}  // namespace

bool RunAddRowDialog(KrmDlgAddRow& model, const UiStrings& strings, QWidget* parent) {
  BoxDialog dialog(strings.text(9440, L"插入行"), parent);
  dialog.setObjectName(QStringLiteral("KrmDlgAddRow"));
  dialog.addBox(strings.text(9441, L"行数:"), model.countText, "count");
  dialog.setCheck(AcceptSayingWhy(model));
  dialog.finishLayout();
  return dialog.exec() == QDialog::Accepted;
}

bool RunDelRowDialog(KrmDlgDelRow& model, const UiStrings& strings, QWidget* parent) {
  BoxDialog dialog(strings.text(9442, L"删除行"), parent);
  dialog.setObjectName(QStringLiteral("KrmDlgDelRow"));
  dialog.addBox(strings.text(9443, L"从:"), model.fromText, "from");
  dialog.addBox(strings.text(9444, L"到:"), model.toText, "to");
  dialog.setCheck(AcceptSayingWhy(model));
  dialog.finishLayout();
  return dialog.exec() == QDialog::Accepted;
}

bool RunPageSetDialog(KrmDlgPageSet& model, const UiStrings& strings, QWidget* parent) {
  BoxDialog dialog(strings.text(9445, L"页码设置"), parent);
  dialog.setObjectName(QStringLiteral("KrmDlgPageSet"));
  dialog.addBox(strings.text(9446, L"页码步长:"), model.stepText, "step");
  dialog.addBox(strings.text(9447, L"总页起始:"), model.startSumText, "startSum");
  dialog.addBox(strings.text(9448, L"本页起始:"), model.startCurText, "startCur");
  dialog.setCheck([&model](QString&) { return model.Accept(); });
  dialog.finishLayout();
  return dialog.exec() == QDialog::Accepted;
}

bool RunArrangDialog(KrmDlgArrang& model, const UiStrings& strings, QWidget* parent) {
  BoxDialog dialog(strings.text(9450, L"页面排列"), parent);
  dialog.setObjectName(QStringLiteral("KrmDlgArrang"));
  dialog.addBox(strings.text(9451, L"水平间距:"), model.horText, "hor");
  dialog.addBox(strings.text(9452, L"垂直间距:"), model.verText, "ver");
  auto* direction = new QComboBox(&dialog);
  direction->setObjectName(QStringLiteral("direction"));
  // The choices in the order of the direction codes: pages run right and up (0), left
  // and up (1), left and down (2), right and down (3).
  direction->addItems({strings.text(9453, L"向右向上"), strings.text(9454, L"向左向上"), strings.text(9455, L"向左向下"),
                       strings.text(9456, L"向右向下")});
  direction->setCurrentIndex(model.direction);
  QObject::connect(direction, &QComboBox::currentIndexChanged, &dialog, [&model](int index) { model.direction = index; });
  static_cast<QFormLayout*>(static_cast<QVBoxLayout*>(dialog.layout())->itemAt(0)->layout())
      ->addRow(strings.text(9457, L"方向:"), direction);
  auto* rowFirst = new QRadioButton(strings.text(9458, L"行优先"), &dialog);
  rowFirst->setObjectName(QStringLiteral("rowFirst"));
  auto* columnFirst = new QRadioButton(strings.text(9459, L"列优先"), &dialog);
  columnFirst->setObjectName(QStringLiteral("columnFirst"));
  (model.RowFirst() ? rowFirst : columnFirst)->setChecked(true);
  QLineEdit* columns = dialog.addBox(strings.text(9460, L"每行页数:"), model.columnsText, "columns");
  QLineEdit* rows = dialog.addBox(strings.text(9461, L"每列页数:"), model.rowsText, "rows");
  auto lock = [&model, columns, rows] {
    columns->setReadOnly(model.ColumnBoxLocked());
    rows->setReadOnly(model.RowBoxLocked());
  };
  QObject::connect(rowFirst, &QRadioButton::toggled, &dialog, [&model, lock](bool on) {
    model.ChoosePriority(on);
    lock();
  });
  lock();
  auto* form = static_cast<QFormLayout*>(static_cast<QVBoxLayout*>(dialog.layout())->itemAt(0)->layout());
  form->addRow(rowFirst, columnFirst);
  dialog.finishLayout();
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace tabulon::ui
