#include "ui/gadgets/owner_menu.h"

#include <QAction>
#include <QKeySequence>
#include <QPainter>
#include <QPaintEvent>

namespace tabulon::ui {

SMenu::SMenu(const QString &title, QWidget *parent) : QMenu(title, parent) {}

SMenu::~SMenu() = default;

void SMenu::paintEvent(QPaintEvent *event) {
  QPainter p(this);
  const QPalette pal = palette();
  p.fillRect(rect(), pal.color(QPalette::Base));
  p.fillRect(QRect(0, 0, kBandWidth, height()), pal.color(QPalette::Button));
  const QPoint cursor = mapFromGlobal(QCursor::pos());
  for (QAction *action : actions()) {
    const QRect r = actionGeometry(action);
    if (!r.isValid() || !event->rect().intersects(r)) continue;
    if (action->isSeparator()) {
      p.setPen(pal.color(QPalette::Mid));
      p.drawLine(kBandWidth + 4, r.center().y(), r.right() - 4, r.center().y());
      continue;
    }
    const bool active = action == activeAction() || (r.contains(cursor) && action->isEnabled());
    if (active) {
      p.fillRect(r.adjusted(1, 1, -1, -1), pal.color(QPalette::Highlight).lighter(170));
      p.setPen(pal.color(QPalette::Highlight));
      p.drawRect(r.adjusted(1, 1, -2, -2));
    }
    if (!action->icon().isNull())
      action->icon().paint(&p, QRect(r.left() + 5, r.top() + (r.height() - 16) / 2, 16, 16),
                           Qt::AlignCenter, action->isEnabled() ? QIcon::Normal : QIcon::Disabled);
    else if (action->isChecked())
      p.drawText(QRect(r.left(), r.top(), kBandWidth, r.height()), Qt::AlignCenter, QStringLiteral("✓"));
    p.setPen(pal.color(action->isEnabled() ? QPalette::Text : QPalette::PlaceholderText));
    QString text = action->text();
    text.remove(QLatin1Char('&'));
    const QRect textRect = r.adjusted(kBandWidth + 6, 0, -8, 0);
    p.drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft, text);
    if (!action->shortcut().isEmpty())
      p.drawText(textRect, Qt::AlignVCenter | Qt::AlignRight, action->shortcut().toString(QKeySequence::NativeText));
  }
}

}  // namespace tabulon::ui
