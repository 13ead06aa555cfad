#include "ui/dialogs/make_card_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/dialogs/template_name_fields.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

QLabel *fieldLabel(QWidget *parent, const char *name) {
  auto *label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setFrameShape(QFrame::StyledPanel);
  label->setMinimumWidth(300);
  return label;
}

}  // namespace

MakeCardDialog::MakeCardDialog(KrmMakeCardModel &model, AuthoringRunners runners, const UiStrings &strings,
                               QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgMakeCard"), parent), model_(model), runners_(std::move(runners)) {
  setObjectName(QStringLiteral("KrmDlgMakeCard"));
  fields_ =
      MakeTemplateNameFields(this, strings, strings.text(181, L"卡片名称"), strings.text(182, L"显示名称"));
  QGridLayout *names = fields_.layout;

  auto *tables = new QGroupBox(strings.text(9330, L"表格模板"), this);
  auto *tableGrid = new QGridLayout(tables);
  first_ = fieldLabel(this, "first");
  next_ = fieldLabel(this, "next");
  firstButton_ = new QPushButton(strings.text(9331, L"首页..."), this);
  nextButton_ = new QPushButton(strings.text(9332, L"续页..."), this);
  compare_ = new QPushButton(strings.text(9333, L"比较"), this);
  tableGrid->addWidget(firstButton_, 0, 0);
  tableGrid->addWidget(first_, 0, 1);
  tableGrid->addWidget(nextButton_, 1, 0);
  tableGrid->addWidget(next_, 1, 1);
  tableGrid->addWidget(compare_, 2, 0);

  auto *pages = new QGroupBox(strings.text(133, L"排列"), this);
  auto *pageGrid = new QGridLayout(pages);
  summary_ = fieldLabel(this, "summary");
  summary_->setWordWrap(true);
  arrange_ = new QPushButton(strings.text(9334, L"排列..."), this);
  pageGrid->addWidget(arrange_, 0, 0);
  pageGrid->addWidget(summary_, 0, 1);

  auto *buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  ok_->setAutoDefault(false);

  auto *layout = new QVBoxLayout(this);
  layout->addLayout(names);
  layout->addWidget(tables);
  layout->addWidget(pages);
  layout->addWidget(buttons);

  connect(fields_.name, &QLineEdit::textEdited, this, [this](const QString &text) {
    model_.SetName(toWString(text));
    refresh();
  });
  connect(fields_.showName, &QLineEdit::textEdited, this,
          [this](const QString &text) { model_.SetShowName(toWString(text)); });
  connect(fields_.chooseName, &QPushButton::clicked, this, [this] {
    model_.ChooseCardName(runners_.loadCards);
    refresh();
  });
  connect(fields_.load, &QPushButton::clicked, this, [this] {
    (void)model_.LoadCard(runners_.loadCards);
    refresh();
  });
  connect(firstButton_, &QPushButton::clicked, this, [this] {
    model_.ChooseFirst(runners_.loadCards);
    refresh();
  });
  connect(nextButton_, &QPushButton::clicked, this, [this] {
    model_.ChooseNext(runners_.loadCards);
    refresh();
  });
  connect(compare_, &QPushButton::clicked, this, [this] { (void)model_.CompareFirstNext(); });
  connect(arrange_, &QPushButton::clicked, this, [this] {
    model_.EditArrangement(runners_.arrangement);
    refresh();
  });
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (model_.OnOK().ok()) accept();
    else refresh();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  refresh();
}

void MakeCardDialog::refresh() {
  setWindowTitle(toQString(model_.Caption()));
  if (fields_.name->text() != toQString(model_.Name())) fields_.name->setText(toQString(model_.Name()));
  if (fields_.showName->text() != toQString(model_.ShowName())) fields_.showName->setText(toQString(model_.ShowName()));
  fields_.name->setReadOnly(model_.NameLocked());
  fields_.showName->setReadOnly(model_.NameLocked());
  fields_.chooseName->setEnabled(!model_.NameLocked());
  fields_.folder->setText(toQString(model_.Folder()));
  first_->setText(toQString(model_.FirstDisplay()));
  next_->setText(toQString(model_.NextDisplay()));
  firstButton_->setEnabled(!model_.TablesLocked());
  nextButton_->setEnabled(!model_.TablesLocked());
  compare_->setEnabled(!model_.FirstTbl().empty() && !model_.NextTbl().empty());
  arrange_->setEnabled(static_cast<bool>(runners_.arrangement));
  summary_->setText(toQString(model_.Summary()));
}

}  // namespace tabulon::ui
