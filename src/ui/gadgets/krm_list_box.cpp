#include "ui/gadgets/krm_list_box.h"

#include <QEvent>
#include <QFontMetrics>

#include <algorithm>

namespace tabulon::ui {

KrmListBox::KrmListBox(QWidget *parent) : QListWidget(parent) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setUniformItemSizes(true);
}

int KrmListBox::itemHeight() const { return QFontMetrics(font()).height() + 4; }

void KrmListBox::measure() {
  const QFontMetrics fm(font());
  extent_ = 0;
  for (const QString &t : texts_) extent_ = std::max(extent_, fm.horizontalAdvance(t) + 8);
  for (int i = 0; i < count(); ++i) item(i)->setSizeHint(QSize(extent_, itemHeight()));
}

int KrmListBox::AddString(const QString &text) { return InsertString(-1, text); }

int KrmListBox::InsertString(int index, const QString &text) {
  if (index < 0 || index > texts_.size()) index = static_cast<int>(texts_.size());
  texts_.insert(index, text);
  insertItem(index, text);
  measure();
  return index;
}

int KrmListBox::DeleteString(int index) {
  if (index < 0 || index >= texts_.size()) return -1;
  texts_.removeAt(index);
  delete takeItem(index);
  measure();
  return static_cast<int>(texts_.size());
}

void KrmListBox::ResetContent() {
  texts_.clear();
  clear();
  extent_ = 0;
}

QString KrmListBox::GetText(int index) const { return index >= 0 && index < texts_.size() ? texts_.at(index) : QString(); }

void KrmListBox::changeEvent(QEvent *event) {
  if (event->type() == QEvent::FontChange) measure();
  QListWidget::changeEvent(event);
}

}  // namespace tabulon::ui
