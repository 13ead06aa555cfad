#include "ui/gadgets/hover_button.h"

#include <QPainter>

namespace tabulon::ui {

CHoverButton::CHoverButton(QWidget *parent) : QToolButton(parent) {
  setAutoRaise(true);
  setAttribute(Qt::WA_Hover);
}

void CHoverButton::enterEvent(QEnterEvent *event) {
  hovering_ = true;
  emit hoverChanged(true);
  update();
  QToolButton::enterEvent(event);
}

void CHoverButton::leaveEvent(QEvent *event) {
  hovering_ = false;
  emit hoverChanged(false);
  update();
  QToolButton::leaveEvent(event);
}

void CHoverButton::paintEvent(QPaintEvent *event) {
  if (hovering_ && isEnabled()) {
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Highlight).lighter(180));
    p.setPen(palette().color(QPalette::Highlight));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  QToolButton::paintEvent(event);
}

}  // namespace tabulon::ui
