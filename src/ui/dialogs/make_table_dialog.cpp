#include "ui/dialogs/make_table_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/dialogs/template_name_fields.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {

QLabel *lineLabel(QWidget *parent, const char *name) {
  auto *label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(name));
  label->setFrameShape(QFrame::StyledPanel);
  label->setMinimumWidth(220);
  label->setWordWrap(true);
  return label;
}

void setText(QLineEdit *edit, const std::wstring &text) {
  const QString shown = toQString(text);
  if (edit->text() != shown) edit->setText(shown);
}

}  // namespace

QIcon MakeTableDialog::fillOrderIcon(int fillOrder) {
  // Bit 1: bottom to top; bit 0: rows first; bit 2: right to left.
  const bool upwards = (fillOrder & 2) != 0;
  const bool rowsFirst = (fillOrder & 1) != 0;
  const bool leftwards = (fillOrder & 4) != 0;
  constexpr int kSize = 32;
  QPixmap picture(kSize, kSize);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(200, 200, 200), 1));
  for (int i = 1; i < 4; ++i) {
    painter.drawLine(i * 8, 2, i * 8, kSize - 2);
    painter.drawLine(2, i * 8, kSize - 2, i * 8);
  }
  // Three strokes in the order cells take records, each an arrow.
  auto at = [&](double along, double across) {
    double x = rowsFirst ? along : across;
    double y = rowsFirst ? across : along;
    if (leftwards) x = kSize - x;
    if (upwards) y = kSize - y;
    return QPointF(x, y);
  };
  painter.setPen(QPen(QColor(30, 90, 200), 2));
  for (int k = 0; k < 3; ++k) {
    const double across = 6.0 + 10.0 * k;
    const QPointF from = at(4, across), to = at(kSize - 5, across);
    painter.drawLine(from, to);
    const QPointF dir = (to - from) / std::max(1.0, QLineF(from, to).length());
    const QPointF side(-dir.y(), dir.x());
    QPainterPath head;
    head.moveTo(to);
    head.lineTo(to - dir * 5 + side * 3);
    head.lineTo(to - dir * 5 - side * 3);
    head.closeSubpath();
    painter.fillPath(head, QColor(30, 90, 200));
  }
  painter.setPen(QPen(QColor(200, 40, 40), 2));
  painter.drawEllipse(at(4, 6), 2.5, 2.5);
  painter.end();
  return QIcon(picture);
}

MakeTableDialog::MakeTableDialog(KrmMakeTblModel &model, AuthoringRunners runners, const UiStrings &strings,
                                 QWidget *parent)
    : CResizeDlg(QStringLiteral("KrmDlgMakeTbl"), parent), model_(model), runners_(std::move(runners)) {
  setObjectName(QStringLiteral("KrmDlgMakeTbl"));

  fields_ =
      MakeTemplateNameFields(this, strings, strings.text(9312, L"模板名称"), strings.text(9313, L"显示名称"));
  QGridLayout *names = fields_.layout;

  pick_ = new QPushButton(strings.text(9315, L"选择图形<"), this);
  status_ = lineLabel(this, "status");
  singleButton_ = new QPushButton(strings.text(9316, L"单记录块..."), this);
  single_ = lineLabel(this, "single");
  multiButton_ = new QPushButton(strings.text(9317, L"多记录块..."), this);
  multi_ = lineLabel(this, "multi");
  auto *blocks = new QGroupBox(strings.text(9318, L"属性块"), this);
  auto *blockGrid = new QGridLayout(blocks);
  blockGrid->addWidget(pick_, 0, 0);
  blockGrid->addWidget(status_, 0, 1);
  blockGrid->addWidget(singleButton_, 1, 0);
  blockGrid->addWidget(single_, 1, 1);
  blockGrid->addWidget(multiButton_, 2, 0);
  blockGrid->addWidget(multi_, 2, 1);

  auto *pages = new QGroupBox(strings.text(9319, L"分页"), this);
  auto *pageGrid = new QGridLayout(pages);
  pageBaseButton_ = new QPushButton(strings.text(9326, L"分页基准块..."), this);
  pageBase_ = lineLabel(this, "pageBase");
  pageGrid->addWidget(pageBaseButton_, 0, 0);
  pageGrid->addWidget(pageBase_, 0, 1);
  const std::array<const wchar_t *, 5> attLabels = {L"类当前页属性...", L"类总页数属性...", L"批当前页数属性...",
                                                    L"批总页数属性...", L"自动编号字段..."};
  for (int k = 0; k < 5; ++k) {
    const auto index = static_cast<std::size_t>(k);
    pageAttButtons_[index] = new QPushButton(strings.text(9320 + static_cast<unsigned>(k), attLabels[index]), this);
    pageAtt_[index] = lineLabel(this, "pageAtt");
    pageAtt_[index]->setObjectName(QStringLiteral("pageAtt%1").arg(k));
    pageGrid->addWidget(pageAttButtons_[index], k + 1, 0);
    pageGrid->addWidget(pageAtt_[index], k + 1, 1);
    connect(pageAttButtons_[index], &QPushButton::clicked, this, [this, k] {
      model_.ChoosePageAtt(k, runners_.selSgl);
      refresh();
    });
  }

  auto *order = new QGroupBox(strings.text(9325, L"多记录块的填写顺序"), this);
  auto *orderLayout = new QVBoxLayout(order);
  classes_ = new QListWidget(this);
  classes_->setObjectName(QStringLiteral("classes"));
  classes_->setMaximumHeight(90);
  fillOrder_ = new QComboBox(this);
  fillOrder_->setObjectName(QStringLiteral("fillOrder"));
  fillOrder_->setIconSize(QSize(32, 32));
  const auto labels = KrmMakeTblModel::FillOrderLabels();
  for (std::size_t i = 0; i < labels.size(); ++i)
    fillOrder_->addItem(fillOrderIcon(static_cast<int>(i)), toQString(labels[i]));
  orderLayout->addWidget(classes_);
  orderLayout->addWidget(fillOrder_);

  auto *buttons = new QDialogButtonBox(this);
  ok_ = buttons->addButton(strings.text(9302, L"确定"), QDialogButtonBox::AcceptRole);
  auto *cancel = buttons->addButton(strings.text(9304, L"取消"), QDialogButtonBox::RejectRole);
  ok_->setAutoDefault(false);
  connect(ok_, &QPushButton::clicked, this, &MakeTableDialog::okClicked);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto *columns = new QHBoxLayout;
  auto *left = new QVBoxLayout;
  left->addLayout(names);
  left->addWidget(blocks);
  left->addWidget(order);
  columns->addLayout(left);
  columns->addWidget(pages);
  auto *layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addWidget(buttons);

  connect(fields_.name, &QLineEdit::textEdited, this, [this](const QString &text) {
    model_.SetName(toWString(text));
    refresh();
  });
  connect(fields_.showName, &QLineEdit::textEdited, this, [this](const QString &text) {
    model_.SetShowName(toWString(text));
  });
  connect(pick_, &QPushButton::clicked, this, &MakeTableDialog::pickBlocks);
  connect(singleButton_, &QPushButton::clicked, this, [this] {
    model_.ChooseSingleBlocks(runners_.selSgl);
    refresh();
  });
  connect(multiButton_, &QPushButton::clicked, this, [this] {
    model_.ChooseMultiBlocks(runners_.selSgl);
    refresh();
  });
  connect(pageBaseButton_, &QPushButton::clicked, this, [this] {
    model_.ChoosePageBase(runners_.selSgl);
    refresh();
  });
  connect(fields_.chooseName, &QPushButton::clicked, this, [this] {
    model_.ChooseName(runners_.loadCards);
    refresh();
  });
  connect(fields_.load, &QPushButton::clicked, this, [this] {
    (void)model_.LoadTable(runners_.loadCards);
    refresh();
  });
  connect(classes_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (updating_) return;
    model_.SelectClass(row);
    refresh();
  });
  connect(fillOrder_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (updating_) return;
    model_.SelectFillOrder(index);
    refresh();
  });
  refresh();
}

MakeTableDialog::~MakeTableDialog() = default;

void MakeTableDialog::pickBlocks() {
  BeginEditorCommand();
  (void)model_.PickBlocks();
  CompleteEditorCommand();
  refresh();
}

void MakeTableDialog::okClicked() {
  if (model_.OnOK().ok()) accept();
  else refresh();
}

void MakeTableDialog::refresh() {
  updating_ = true;
  setWindowTitle(toQString(model_.Caption()));
  setText(fields_.name, model_.Name());
  setText(fields_.showName, model_.ShowName());
  fields_.name->setReadOnly(model_.NameLocked());
  fields_.showName->setReadOnly(model_.NameLocked());
  fields_.folder->setText(toQString(model_.Folder()));
  status_->setText(toQString(model_.StatusLine()));
  single_->setText(toQString(model_.SingleSummary()));
  multi_->setText(toQString(model_.MultiSummary()));
  pageBase_->setText(toQString(model_.PageBaseLine()));
  for (int k = 0; k < 5; ++k) pageAtt_.at(static_cast<std::size_t>(k))->setText(toQString(model_.PageAttLine(k)));

  const auto classNames = model_.ClassList();
  QStringList shown;
  for (const auto &name : classNames) shown << toQString(name);
  QStringList listed;
  for (int row = 0; row < classes_->count(); ++row) listed << classes_->item(row)->text();
  if (shown != listed) {
    classes_->clear();
    classes_->addItems(shown);
  }
  classes_->setCurrentRow(model_.CurrentClass());
  fillOrder_->setEnabled(model_.FillOrderEnabled());
  fillOrder_->setCurrentIndex(model_.FillOrderEnabled() ? model_.CurrentFillOrder() : 0);

  const auto available = model_.Available();
  fields_.chooseName->setEnabled(available.chooseName);
  singleButton_->setEnabled(available.chooseSingle);
  multiButton_->setEnabled(available.chooseMulti);
  pageBaseButton_->setEnabled(available.choosePageBase);
  for (std::size_t k = 0; k < 5; ++k) pageAttButtons_[k]->setEnabled(available.choosePageAtt[k]);
  ok_->setEnabled(available.ok);
  if (!available.ok && fields_.load->isVisible() && !fields_.name->hasFocus() && !fields_.showName->hasFocus()) fields_.load->setFocus();
  updating_ = false;
}

}  // namespace tabulon::ui
