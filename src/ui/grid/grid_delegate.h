// The in-place editors of the grid control's cells: a line editor for text cells that
// widens to show what is typed (up to 240 pixels, towards the side with more room),
// one that takes only digits for numeric cells, a combo box for combo cells (editable
// but for drop-down lists, its list as wide as the widest option plus "0", at most
// 200 pixels) and a date-time editor. It also draws the grid lines of the chosen mode.
// Reports the key that ended an edit to the grid. In a text editor arrow keys leave the
// cell at its edges when Ctrl is held or the editor was opened by a key; other Ctrl
// combinations go to the window holding the grid, so that its keys work while a cell
// is edited; the right button offers the clipboard, the word library and picking.
#pragma once

#include <QStyledItemDelegate>

class QKeyEvent;
class QLineEdit;

namespace tabulon::ui {

class GridModel;
class UiStrings;

class GridDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit GridDelegate(GridModel &model, QObject *parent = nullptr);

  void setGridLines(int mode) { gridLines_ = mode; }
  int gridLines() const { return gridLines_; }
  // The key that ended the last edit (Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape, or 0
  // for a loss of focus); cleared when an editor opens.
  int lastEndKey() const { return endKey_; }
  // Whether the next editor opens because a key was typed (arrow keys may then leave
  // the cell, as they may with Ctrl held).
  void setOpenedByKey(bool on) { openedByKey_ = on; }
  // Texts of the editor's menu; null uses the built-in ones. Must outlive the delegate.
  void setStrings(const UiStrings *strings) { strings_ = strings; }

  QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
  void setEditorData(QWidget *editor, const QModelIndex &index) const override;
  void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
  void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const override;
  void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

 signals:
  // Ctrl+W, Insert or a Ctrl + double click (the word library) and Ctrl+G (pick text
  // from the drawing) in an open text editor.
  void wordLibraryRequested();
  void pickTextRequested();

 protected:
  bool eventFilter(QObject *editor, QEvent *event) override;

 private:
  void showMenu(QLineEdit *edit, const QPoint &at);
  QString textOf(unsigned id, const wchar_t *literal) const;
  // Ends the edit and moves on when an arrow key leaves the cell; false otherwise.
  bool leaveCell(QLineEdit *edit, QKeyEvent *key);

  GridModel &model_;
  int gridLines_ = 3;
  mutable int endKey_ = 0;
  bool openedByKey_ = false;
  const UiStrings *strings_ = nullptr;
};

// The width a text editor takes for `text` in a cell `cellWidth` wide: the text with
// two blanks added, never narrower than the cell nor wider than 240 pixels (unless
// the cell is), nor wider than `room`.
int InPlaceEditWidth(int textWidth, int blanksWidth, int cellWidth, int room);

// How a text editor opened by a key starts: Return, Backspace, Page Up, Page Down,
// Home, Left, Up and Down put the caret after the text; Tab selects it all; End and
// Right put the caret before it; Space opens it without typing anything; any other key
// replaces the text with what it types.
enum class EditStart { CaretAfterText, SelectAll, CaretBeforeText, AsOpened, ReplaceText };
EditStart EditStartFor(int key);

}  // namespace tabulon::ui
