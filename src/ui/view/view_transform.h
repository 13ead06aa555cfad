// Where the drawing stands in a view: the world point at the centre of the window and
// the pixels per drawing unit, with y pointing up in the world and down on the screen.
// A plain value: pan, zoom about a point and fitting a box change it.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QTransform>

namespace tabulon::ui {

struct WorldBox {
  double minX = 0, minY = 0, maxX = 0, maxY = 0;
  bool empty() const { return maxX < minX || maxY < minY; }
};

class ViewTransform {
 public:
  ViewTransform() = default;

  void setWindowSize(QSize size) { size_ = size; }
  QSize windowSize() const { return size_; }
  double scale() const { return scale_; }
  QPointF center() const { return center_; }

  QPointF toScreen(QPointF world) const;
  QPointF toWorld(QPointF screen) const;
  // The part of the world the window shows.
  WorldBox visibleWorld() const;
  // Maps (x, -y) of the drawing onto window pixels, for a painter.
  QTransform painterTransform() const;

  // Moves the picture by a screen offset.
  void pan(QPointF screenDelta);
  // Multiplies the scale by `factor`, keeping the world point under `screenPoint` there.
  void zoomAbout(QPointF screenPoint, double factor);
  // Shows `box` whole with a margin of `margin` (a fraction of its larger side).
  void fit(const WorldBox& box, double margin = 0.03);

 private:
  QSize size_{800, 600};
  QPointF center_{0.0, 0.0};
  double scale_ = 1.0;
};

}  // namespace tabulon::ui
