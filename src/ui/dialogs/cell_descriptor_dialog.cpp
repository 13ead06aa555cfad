#include "ui/dialogs/cell_descriptor_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ui_strings.h"

namespace tabulon::ui {

CellDescriptorDialog::CellDescriptorDialog(CellDescriptorForm &form, const UiStrings &strings, QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgCellDesc"), parent), form_(form) {
  setObjectName(QStringLiteral("KrmDlgCellDesc"));
  setWindowTitle(strings.text(9360, L"单元描述"));
  pick_ = new QPushButton(strings.text(9361, L"选择属性块<"), this);
  block_ = new QLabel(this);
  block_->setObjectName(QStringLiteral("block"));
  tags_ = new QComboBox(this);
  tags_->setObjectName(QStringLiteral("tags"));
  auto *top = new QHBoxLayout;
  top->addWidget(pick_);
  top->addWidget(block_, 1);
  top->addWidget(tags_, 1);

  auto *fields = new QFormLayout;
  for (const auto &key : CellDescriptorForm::Keys()) {
    auto *edit = new QLineEdit(this);
    edit->setObjectName(toQString(key));
    fields_[key] = edit;
    fields->addRow(toQString(key), edit);
  }
  message_ = new QLabel(this);
  message_->setObjectName(QStringLiteral("message"));
  message_->setStyleSheet(QStringLiteral("color: #b00000"));
  message_->setWordWrap(true);

  auto *buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  auto *layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addLayout(fields);
  layout->addWidget(message_);
  layout->addWidget(buttons);

  connect(pick_, &QPushButton::clicked, this, [this] {
    BeginEditorCommand();
    const Status picked = form_.PickBlock();
    CompleteEditorCommand();
    message_->setText(picked.ok() ? QString() : QString::fromStdString(picked.describe()));
    refresh();
  });
  connect(tags_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (updating_) return;
    const Status chosen = form_.SelectTag(index);
    message_->setText(chosen.ok() ? QString() : QString::fromStdString(chosen.describe()));
    refresh();
  });
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (!takeFields()) return;
    if (const Status applied = form_.Apply(); !applied.ok()) {
      message_->setText(QString::fromStdString(applied.describe()));
      return;
    }
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  refresh();
}

bool CellDescriptorDialog::takeFields() {
  for (const auto &[key, edit] : fields_) {
    if (const Status set = form_.Set(key, toWString(edit->text().trimmed())); !set.ok()) {
      message_->setText(QString::fromStdString(set.describe()));
      edit->setFocus();
      return false;
    }
  }
  return true;
}

void CellDescriptorDialog::refresh() {
  updating_ = true;
  block_->setText(toQString(form_.BlockName()));
  tags_->clear();
  for (const auto &tag : form_.Tags()) tags_->addItem(toQString(tag));
  tags_->setCurrentIndex(form_.CurrentTag());
  for (const auto &[key, edit] : fields_) {
    edit->setText(toQString(form_.Value(key)));
    edit->setEnabled(form_.HasDefinition());
  }
  ok_->setEnabled(form_.HasDefinition());
  updating_ = false;
}

}  // namespace tabulon::ui
