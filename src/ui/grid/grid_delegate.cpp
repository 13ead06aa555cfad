#include "ui/grid/grid_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMouseEvent>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpressionValidator>

#include <algorithm>

#include "ui/grid/grid_model.h"
#include "ui/ui_strings.h"

namespace tabulon::ui {

namespace {
constexpr int kMaxEditWidth = 240;
constexpr int kMaxListWidth = 200;
}  // namespace

int InPlaceEditWidth(int textWidth, int blanksWidth, int cellWidth, int room) {
  const int wanted = std::min(textWidth + blanksWidth, kMaxEditWidth);
  return std::max(cellWidth, std::min(wanted, std::max(room, cellWidth)));
}

EditStart EditStartFor(int key) {
  switch (key) {
    case Qt::Key_Return: case Qt::Key_Enter: case Qt::Key_Backspace: case Qt::Key_PageUp: case Qt::Key_PageDown:
    case Qt::Key_Home: case Qt::Key_Left: case Qt::Key_Up: case Qt::Key_Down:
      return EditStart::CaretAfterText;
    case Qt::Key_Tab: case Qt::Key_Backtab:
      return EditStart::SelectAll;
    case Qt::Key_End: case Qt::Key_Right:
      return EditStart::CaretBeforeText;
    case Qt::Key_Space:
      return EditStart::AsOpened;
    default:
      return EditStart::ReplaceText;
  }
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
  edit->setToolTip(textOf(9118, L"按Ctrl键+鼠标双击进入词句库"));
  edit->installEventFilter(const_cast<GridDelegate *>(this));
  edit->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(edit, &QWidget::customContextMenuRequested, edit, [self = const_cast<GridDelegate *>(this), edit](const QPoint &at) { self->showMenu(edit, at); });
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

QString GridDelegate::textOf(unsigned id, const wchar_t *literal) const {
  return strings_ ? strings_->text(id, literal) : toQString(literal);
}

void GridDelegate::showMenu(QLineEdit *edit, const QPoint &at) {
  QMenu menu(edit);
  const bool selection = edit->hasSelectedText();
  menu.addAction(textOf(9111, L"剪切"), edit, &QLineEdit::cut)->setEnabled(selection);
  menu.addAction(textOf(9112, L"复制"), edit, &QLineEdit::copy)->setEnabled(selection);
  menu.addAction(textOf(9113, L"粘贴"), edit, &QLineEdit::paste)->setEnabled(!QApplication::clipboard()->text().isEmpty());
  menu.addAction(textOf(9114, L"清除"), edit, [edit] { edit->del(); })->setEnabled(selection);
  menu.addAction(textOf(9115, L"全选"), edit, &QLineEdit::selectAll)->setEnabled(!edit->text().isEmpty());
  menu.addSeparator();
  menu.addAction(textOf(9116, L"词库"), this, &GridDelegate::wordLibraryRequested);
  menu.addAction(textOf(9117, L"拾取文字"), this, &GridDelegate::pickTextRequested);
  menu.exec(edit->mapToGlobal(at));
}

bool GridDelegate::leaveCell(QLineEdit *edit, QKeyEvent *key) {
  const bool ctrl = key->modifiers() & Qt::ControlModifier;
  if (!ctrl && !openedByKey_) return false;
  const int pos = edit->cursorPosition();
  const int length = static_cast<int>(edit->text().size());
  bool leave = false;
  switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      leave = true;  // one line: the first and the last
      break;
    case Qt::Key_Left:
    case Qt::Key_Home:
      leave = pos == 0;
      break;
    case Qt::Key_Right:
    case Qt::Key_End:
      leave = pos == length;
      break;
    default:
      break;
  }
  if (!leave) return false;
  QWidget *view = edit->parentWidget() ? edit->parentWidget()->parentWidget() : nullptr;
  endKey_ = key->key();
  emit commitData(edit);
  emit closeEditor(edit, QAbstractItemDelegate::NoHint);
  if (view)
    QCoreApplication::postEvent(view, new QKeyEvent(QEvent::KeyPress, key->key(), key->modifiers() & ~Qt::ControlModifier));
  return true;
}

bool GridDelegate::eventFilter(QObject *editor, QEvent *event) {
  if (event->type() == QEvent::MouseButtonDblClick && qobject_cast<QLineEdit *>(editor) &&
      (static_cast<QMouseEvent *>(event)->modifiers() & Qt::ControlModifier)) {
    emit wordLibraryRequested();
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    auto *key = static_cast<QKeyEvent *>(event);
    const bool ctrl = key->modifiers() & Qt::ControlModifier;
    if (auto *edit = qobject_cast<QLineEdit *>(editor); edit && leaveCell(edit, key)) return true;
    // Ctrl with a letter the editor does not keep goes to the window of the grid.
    if (ctrl && key->key() >= Qt::Key_A && key->key() <= Qt::Key_Z && qobject_cast<QLineEdit *>(editor)) {
      switch (key->key()) {
        case Qt::Key_A: case Qt::Key_C: case Qt::Key_V: case Qt::Key_X: case Qt::Key_W: case Qt::Key_G:
          break;
        case Qt::Key_E:
          return true;  // nobody gets it
        default:
          if (QWidget *w = static_cast<QWidget *>(editor)->window())
            QCoreApplication::postEvent(w, new QKeyEvent(QEvent::KeyPress, key->key(), key->modifiers()));
          return true;
      }
    }
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
