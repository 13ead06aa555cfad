#include "ui/dialogs/card_out_dialog.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ui_strings.h"

namespace tabulon::ui {

CardOutDialog::CardOutDialog(KrmCardOutModel &model, const UiStrings &strings, QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgCardOut"), parent), model_(model) {
  setObjectName(QStringLiteral("KrmDlgCardOut"));
  setWindowTitle(strings.text(9350, L"传送卡片"));
  source_ = new QLineEdit(this);
  source_->setObjectName(QStringLiteral("source"));
  target_ = new QLineEdit(this);
  target_->setObjectName(QStringLiteral("target"));
  auto *browseSource = new QPushButton(strings.text(9351, L"浏览..."), this);
  auto *browseTarget = new QPushButton(strings.text(9351, L"浏览..."), this);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("cards"));
  list_->setSelectionMode(QAbstractItemView::MultiSelection);

  auto *grid = new QGridLayout;
  grid->addWidget(new QLabel(strings.text(9352, L"源文件夹"), this), 0, 0);
  grid->addWidget(source_, 0, 1);
  grid->addWidget(browseSource, 0, 2);
  grid->addWidget(new QLabel(strings.text(9353, L"目标文件夹"), this), 1, 0);
  grid->addWidget(target_, 1, 1);
  grid->addWidget(browseTarget, 1, 2);

  auto *buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  auto *layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(list_, 1);
  layout->addWidget(buttons);

  connect(source_, &QLineEdit::editingFinished, this, [this] {
    if (toWString(source_->text()) == model_.SourcePath()) return;
    model_.SetSourcePath(toWString(source_->text()));
    refresh();
  });
  connect(target_, &QLineEdit::textEdited, this, [this](const QString &text) { model_.SetTargetPath(toWString(text)); });
  const QString browseTitle = strings.text(9354, L"选择文件夹");
  connect(browseSource, &QPushButton::clicked, this, [this, browseTitle] {
    const QString folder = QFileDialog::getExistingDirectory(this, browseTitle, toQString(model_.SourcePath()));
    if (folder.isEmpty()) return;
    model_.SetSourcePath(toWString(folder));
    refresh();
  });
  connect(browseTarget, &QPushButton::clicked, this, [this, browseTitle] {
    const QString folder = QFileDialog::getExistingDirectory(this, browseTitle, toQString(model_.TargetPath()));
    if (folder.isEmpty()) return;
    model_.SetTargetPath(toWString(folder));
    refresh();
  });
  connect(list_, &QListWidget::itemSelectionChanged, this, &CardOutDialog::selectionChanged);
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (model_.OnOK().ok()) accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  model_.RefreshList();
  refresh();
}

void CardOutDialog::selectionChanged() {
  if (updating_) return;
  std::vector<int> rows;
  for (int row = 0; row < list_->count(); ++row)
    if (list_->item(row)->isSelected()) rows.push_back(row);
  model_.SetSelection(std::move(rows));
}

void CardOutDialog::refresh() {
  updating_ = true;
  source_->setText(toQString(model_.SourcePath()));
  target_->setText(toQString(model_.TargetPath()));
  list_->clear();
  for (const auto &name : model_.ListNames()) list_->addItem(toQString(name));
  for (int row : model_.Selection())
    if (auto *item = list_->item(row)) item->setSelected(true);
  updating_ = false;
}

}  // namespace tabulon::ui
