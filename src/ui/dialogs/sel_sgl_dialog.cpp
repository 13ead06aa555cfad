#include "ui/dialogs/sel_sgl_dialog.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ui_strings.h"

namespace tabulon::ui {

SelSglDialog::SelSglDialog(KrmSelSglModel &model, const UiStrings &strings, QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgSelSgl"), parent), model_(model) {
  setObjectName(QStringLiteral("KrmDlgSelSgl"));
  setWindowTitle(toQString(model_.Caption()));

  classes_ = new QListWidget(this);
  classes_->setObjectName(QStringLiteral("classes"));
  classes_->setSelectionMode(model_.MultiSelect() ? QAbstractItemView::MultiSelection
                                                  : QAbstractItemView::SingleSelection);
  attributes_ = new QListWidget(this);
  attributes_->setObjectName(QStringLiteral("attributes"));
  attributes_->setSelectionMode(model_.ChoosesAttribute() ? QAbstractItemView::SingleSelection
                                                          : QAbstractItemView::NoSelection);

  auto *lists = new QHBoxLayout;
  auto *left = new QVBoxLayout;
  left->addWidget(new QLabel(strings.text(9300, L"属性块"), this));
  left->addWidget(classes_);
  auto *right = new QVBoxLayout;
  right->addWidget(new QLabel(strings.text(9301, L"属性"), this));
  right->addWidget(attributes_);
  lists->addLayout(left);
  lists->addLayout(right);

  auto *buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  clear_ = buttons->addButton(strings.text(9303, L"清除"), QDialogButtonBox::ResetRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  clear_->setVisible(model_.ChoosesAttribute());
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(clear_, &QPushButton::clicked, this, [this] { done(kClearResult); });

  auto *layout = new QVBoxLayout(this);
  layout->addLayout(lists);
  layout->addWidget(buttons);

  connect(classes_, &QListWidget::itemSelectionChanged, this, &SelSglDialog::classesChanged);
  connect(attributes_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (updating_) return;
    model_.SelectAttribute(row);
    refresh();
  });
  refresh();
}

void SelSglDialog::classesChanged() {
  if (updating_) return;
  if (model_.MultiSelect()) {
    const auto &chosen = model_.SelectedClasses();
    for (int row = 0; row < classes_->count(); ++row) {
      const bool inModel = std::find(chosen.begin(), chosen.end(), row) != chosen.end();
      if (classes_->item(row)->isSelected() != inModel) model_.ToggleClass(row);
    }
  } else {
    const auto selected = classes_->selectedItems();
    if (!selected.isEmpty()) model_.SelectClass(classes_->row(selected.front()));
  }
  refresh();
}

void SelSglDialog::refresh() {
  updating_ = true;
  const auto names = model_.ClassNames();
  if (classes_->count() != static_cast<int>(names.size())) {
    classes_->clear();
    for (const auto &name : names) classes_->addItem(toQString(name));
  }
  const auto &chosen = model_.SelectedClasses();
  for (int row = 0; row < classes_->count(); ++row)
    classes_->item(row)->setSelected(std::find(chosen.begin(), chosen.end(), row) != chosen.end());
  classes_->setCurrentRow(model_.CurrentClass(), QItemSelectionModel::NoUpdate);

  attributes_->clear();
  for (const auto &name : model_.AttributeNames()) attributes_->addItem(toQString(name));
  if (model_.ChoosesAttribute() && model_.SelectedAttribute() >= 0)
    attributes_->setCurrentRow(model_.SelectedAttribute());
  updating_ = false;
}

KrmDialogEnd SelSglDialog::end() const {
  if (result() == QDialog::Accepted) return KrmDialogEnd::kOk;
  if (result() == kClearResult) return KrmDialogEnd::kClear;
  return KrmDialogEnd::kCancel;
}

KrmSelSglRunner SelSglRunner(QWidget *parent, const UiStrings &strings) {
  return [parent, &strings](KrmSelSglModel &model) {
    SelSglDialog dialog(model, strings, parent);
    dialog.exec();
    return dialog.end();
  };
}

}  // namespace tabulon::ui
