#include "ui/view/view_transform.h"

#include <algorithm>

namespace tabulon::ui {

QPointF ViewTransform::toScreen(QPointF world) const {
  return {(world.x() - center_.x()) * scale_ + size_.width() / 2.0,
          (center_.y() - world.y()) * scale_ + size_.height() / 2.0};
}

QPointF ViewTransform::toWorld(QPointF screen) const {
  return {(screen.x() - size_.width() / 2.0) / scale_ + center_.x(),
          center_.y() - (screen.y() - size_.height() / 2.0) / scale_};
}

WorldBox ViewTransform::visibleWorld() const {
  const QPointF a = toWorld(QPointF(0, size_.height()));
  const QPointF b = toWorld(QPointF(size_.width(), 0));
  return {a.x(), a.y(), b.x(), b.y()};
}

QTransform ViewTransform::painterTransform() const {
  // (x, -y) -> ((x - cx) * s + w/2, (-y + cy) * s + h/2)
  return QTransform(scale_, 0, 0, scale_, size_.width() / 2.0 - center_.x() * scale_,
                    size_.height() / 2.0 + center_.y() * scale_);
}

void ViewTransform::pan(QPointF screenDelta) {
  center_ -= QPointF(screenDelta.x() / scale_, -screenDelta.y() / scale_);
}

void ViewTransform::zoomAbout(QPointF screenPoint, double factor) {
  if (factor <= 0.0) return;
  const QPointF before = toWorld(screenPoint);
  scale_ = std::clamp(scale_ * factor, 1e-9, 1e9);
  const QPointF after = toWorld(screenPoint);
  center_ += before - after;
}

void ViewTransform::fit(const WorldBox& box, double margin) {
  if (box.empty()) return;
  const double w = std::max(box.maxX - box.minX, 1e-9);
  const double h = std::max(box.maxY - box.minY, 1e-9);
  const double pad = std::max(w, h) * margin;
  center_ = QPointF((box.minX + box.maxX) / 2.0, (box.minY + box.maxY) / 2.0);
  const double sx = std::max(size_.width(), 1) / (w + 2 * pad);
  const double sy = std::max(size_.height(), 1) / (h + 2 * pad);
  scale_ = std::min(sx, sy);
}

}  // namespace tabulon::ui
