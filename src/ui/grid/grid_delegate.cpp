#include "ui/grid/grid_delegate.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpressionValidator>

#include <algorithm>

#include "ui/grid/grid_model.h"

namespace tabulon::ui {

namespace {
constexpr int kMaxEditWidth = 240;
constexpr int kMaxListWidth = 200;
}  // namespace

int InPlaceEditWidth(int textWidth, int blanksWidth, int cellWidth, int room) {
  const int wanted = std::min(textWidth + blanksWidth, kMaxEditWidth);
  return std::max(cellWidth, std::min(wanted, std::max(room, cellWidth)));
}

GridDelegate::GridDelegate(GridModel &model, QObject *parent) : QStyledItemDelegate(parent), model_(model) {}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const {
  endKey_ = 0;
  const GridCell *cell = model_.cell(model_.gridRow(index), model_.gridColumn(index));
  if (!cell) return nullptr;
  switch (cell->cellClass) {
    case GridCellClass::Check:
      return nullptr;  // toggled in place
    case GridCellClass::Combo: {
      auto *combo = new QComboBox(parent);
      combo->setEditable(cell->comboStyle != CBS_DROPDOWNLIST);
      combo->addItems(cell->options);
      const QFontMetrics fm(combo->font());
      int widest = 0;
      for (const auto &o : cell->options) widest = std::max(widest, fm.horizontalAdvance(o));
      combo->view()->setMinimumWidth(std::min(widest + fm.horizontalAdvance(QLatin1Char('0')), kMaxListWidth));
      combo->installEventFilter(const_cast<GridDelegate *>(this));
      return combo;
    }
    case GridCellClass::DateTime: {
      auto *edit = new QDateTimeEdit(parent);
      edit->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
      edit->installEventFilter(const_cast<GridDelegate *>(this));
      return edit;
    }
    case GridCellClass::Numeric: {
      auto *edit = new QLineEdit(parent);
      // Digits only: the card editor gives numeric cells no flags for signs or points.
      edit->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), edit));
      edit->setFrame(false);
      edit->installEventFilter(const_cast<GridDelegate *>(this));
      return edit;
    }
    case GridCellClass::Text:
      break;
  }
  auto *edit = new QLineEdit(parent);
  edit->setFrame(false);
  edit->installEventFilter(const_cast<GridDelegate *>(this));
  // Each character typed measures again.
  connect(edit, &QLineEdit::textChanged, edit,
          [this, edit, option, index] { updateEditorGeometry(edit, option, index); });
  return edit;
}

void GridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const {
  const GridCell *cell = model_.cell(model_.gridRow(index), model_.gridColumn(index));
  if (!cell) return;
  if (auto *combo = qobject_cast<QComboBox *>(editor)) {
    const int i = combo->findText(cell->text);
    if (i >= 0) combo->setCurrentIndex(i);
    else if (combo->isEditable()) combo->setEditText(cell->text);
  } else if (auto *dt = qobject_cast<QDateTimeEdit *>(editor)) {
    dt->setDateTime(cell->time.isValid() ? cell->time : QDateTime::currentDateTime());
  } else if (auto *line = qobject_cast<QLineEdit *>(editor)) {
    line->setText(cell->text);
  }
}

void GridDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const {
  if (auto *combo = qobject_cast<QComboBox *>(editor)) model->setData(index, combo->currentText());
  else if (auto *dt = qobject_cast<QDateTimeEdit *>(editor)) model->setData(index, dt->dateTime().toString(Qt::ISODate));
  else if (auto *line = qobject_cast<QLineEdit *>(editor)) model->setData(index, line->text());
}

void GridDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const {
  QRect r = option.rect;
  if (auto *line = qobject_cast<QLineEdit *>(editor)) {
    const QFontMetrics fm(line->font());
    QWidget *area = editor->parentWidget();
    const int areaWidth = area ? area->width() : r.width();
    const int roomRight = areaWidth - r.left();
    const int roomLeft = r.right() + 1;
    const int width = InPlaceEditWidth(fm.horizontalAdvance(line->text()), fm.horizontalAdvance(QStringLiteral("  ")),
                                       r.width(), std::max(roomLeft, roomRight));
    // Towards the side with more room.
    if (roomRight >= roomLeft) r.setWidth(std::min(width, roomRight));
    else r.setLeft(std::max(0, r.right() + 1 - width));
  }
  editor->setGeometry(r);
}

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const {
  QStyledItemDelegate::paint(painter, option, index);
  painter->save();
  painter->setPen(QColor(192, 192, 192));
  if (gridLines_ & 1) painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  if (gridLines_ & 2) painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
  painter->restore();
}

bool GridDelegate::eventFilter(QObject *editor, QEvent *event) {
  if (event->type() == QEvent::KeyPress) {
    auto *key = static_cast<QKeyEvent *>(event);
    const bool ctrl = key->modifiers() & Qt::ControlModifier;
    switch (key->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter:
        endKey_ = Qt::Key_Return;
        break;
      case Qt::Key_Tab:
      case Qt::Key_Backtab:
        endKey_ = Qt::Key_Tab;
        break;
      case Qt::Key_Escape:
        endKey_ = Qt::Key_Escape;
        break;
      case Qt::Key_Insert:
        if (qobject_cast<QLineEdit *>(editor)) {
          emit wordLibraryRequested();
          return true;
        }
        break;
      case Qt::Key_W:
        if (ctrl && qobject_cast<QLineEdit *>(editor)) {
          emit wordLibraryRequested();
          return true;
        }
        break;
      case Qt::Key_G:
        if (ctrl && qobject_cast<QLineEdit *>(editor)) {
          emit pickTextRequested();
          return true;
        }
        break;
      default:
        break;
    }
  }
  return QStyledItemDelegate::eventFilter(editor, event);
}

}  // namespace tabulon::ui
