#include "ui/dialogs/load_cards_dialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "authoring/card_out_model.h"
#include "host/ed/qa_message_box.h"
#include "host/svc/utf8.h"
#include "ui/dialogs/card_out_dialog.h"
#include "ui/dialogs/drawing_preview.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

LoadCardsDialog::LoadCardsDialog(KrmLoadCardsModel &model, const UiStrings &strings, QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgLoadCards"), parent), model_(model), strings_(strings) {
  setObjectName(QStringLiteral("KrmDlgLoadCards"));
  setWindowTitle(toQString(model_.Caption()));
  tree_ = new QTreeWidget(this);
  tree_->setObjectName(QStringLiteral("tree"));
  tree_->setHeaderHidden(true);
  tree_->setMinimumWidth(220);
  preview_ = new DrawingPreview(this);

  flip_ = new QPushButton(this);
  flip_->setObjectName(QStringLiteral("flip"));
  flip_->setVisible(model_.ListsCards());
  auto *zoomIn = new QPushButton(strings.text(9340, L"放大"), this);
  auto *zoomOut = new QPushButton(strings.text(9341, L"缩小"), this);
  delete_ = new QPushButton(strings.text(9342, L"删除"), this);
  transfer_ = new QPushButton(strings.text(9343, L"传送..."), this);
  transfer_->setVisible(model_.ListsCards());

  auto *previewButtons = new QHBoxLayout;
  previewButtons->addWidget(flip_);
  previewButtons->addStretch();
  previewButtons->addWidget(zoomIn);
  previewButtons->addWidget(zoomOut);
  auto *right = new QVBoxLayout;
  right->addWidget(preview_, 1);
  right->addLayout(previewButtons);
  auto *panes = new QHBoxLayout;
  panes->addWidget(tree_);
  panes->addLayout(right, 1);

  auto *buttons = new QDialogButtonBox(this);
  buttons->addButton(delete_, QDialogButtonBox::ActionRole);
  buttons->addButton(transfer_, QDialogButtonBox::ActionRole);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  auto *layout = new QVBoxLayout(this);
  layout->addLayout(panes, 1);
  layout->addWidget(buttons);

  connect(tree_, &QTreeWidget::currentItemChanged, this, &LoadCardsDialog::selectionChanged);
  connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this] { ok_->click(); });
  connect(flip_, &QPushButton::clicked, this, [this] {
    model_.Flip();
    showSelection();
  });
  connect(zoomIn, &QPushButton::clicked, preview_, &DrawingPreview::zoomIn);
  connect(zoomOut, &QPushButton::clicked, preview_, &DrawingPreview::zoomOut);
  connect(delete_, &QPushButton::clicked, this, &LoadCardsDialog::deleteSelected);
  connect(transfer_, &QPushButton::clicked, this, &LoadCardsDialog::transfer);
  connect(ok_, &QPushButton::clicked, this, [this] {
    model_.Confirm();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  rebuild();
}

QTreeWidgetItem *LoadCardsDialog::rowOf(const KrmLoadCardsModel::Item *item) const {
  for (const auto &[row, shown] : items_)
    if (shown == item) return row;
  return nullptr;
}

void LoadCardsDialog::rebuild() {
  updating_ = true;
  tree_->clear();
  items_.clear();
  const auto add = [this](auto &self, QTreeWidgetItem *parentRow, const KrmLoadCardsModel::Item &item) -> void {
    auto *row = parentRow ? new QTreeWidgetItem(parentRow) : new QTreeWidgetItem(tree_);
    row->setText(0, toQString(item.text));
    const auto kind = item.kind;
    row->setIcon(0, style()->standardIcon(kind == KrmLoadCardsModel::Item::Kind::kTemplate ? QStyle::SP_FileIcon
                                                                                           : QStyle::SP_DirIcon));
    items_[row] = &item;
    for (const auto &child : item.children) self(self, row, *child);
  };
  add(add, nullptr, model_.Root());
  tree_->expandAll();
  if (auto *row = rowOf(model_.Selected())) tree_->setCurrentItem(row);
  updating_ = false;
  showSelection();
}

void LoadCardsDialog::selectionChanged() {
  if (updating_) return;
  const auto found = items_.find(tree_->currentItem());
  model_.Select(found == items_.end() ? nullptr : found->second);
  showSelection();
}

void LoadCardsDialog::showSelection() {
  preview_->showDrawing(svc::toPath(model_.PreviewPath()));
  flip_->setText(toQString(model_.FlipCaption()));
  delete_->setEnabled(!model_.DeleteQuestion().empty());
}

void LoadCardsDialog::deleteSelected() {
  const std::wstring question = model_.DeleteQuestion();
  if (question.empty()) return;
  const bool confirmed = QaMessageBox(question, MB_YESNO | MB_ICONQUESTION) == IDYES;
  if (model_.DeleteSelected(confirmed)) rebuild();
}

void LoadCardsDialog::transfer() {
  KrmCardOutModel out(model_.RootPath(), model_.TransferPath());
  CardOutDialog dialog(out, strings_, this);
  dialog.exec();
  model_.Open();
  rebuild();
}

KrmLoadCardsRunner LoadCardsRunner(QWidget *parent, const UiStrings &strings) {
  return [parent, &strings](KrmLoadCardsModel &model) {
    model.Open();
    LoadCardsDialog dialog(model, strings, parent);
    return dialog.exec() == QDialog::Accepted;
  };
}

}  // namespace tabulon::ui
