#include "ui/view/drawing_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <map>

#include "ui/paint/scene_painter.h"
#include "ui/view/scene_index.h"

namespace tabulon::ui {

namespace {

// Texts under this many pixels high are drawn as strokes.
constexpr double kGreekPixels = 4.0;
// A press and release closer than this is a click, not a drag.
constexpr double kClickSlop = 3.0;
const render::RenderColor kHoverColor{0, 120, 215};
const render::RenderColor kSelectedColor{230, 80, 0};

}  // namespace

DrawingView::DrawingView(QWidget *parent) : QWidget(parent) {
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(200, 150);
  painter_ = std::make_unique<ScenePainter>(
      [this](double lineWeight, double width) {
        // Line weights in millimetres at screen resolution, never under one pixel.
        const double pixels = std::max(1.0, lineWeight * 96.0 / 25.4 * 0.5);
        return std::max(pixels / view_.scale(), width);
      },
      1.0, kGreekPixels);
}

DrawingView::~DrawingView() = default;

void DrawingView::setIndex(std::shared_ptr<const SceneIndex> index) {
  const bool first = !index_;
  index_ = std::move(index);
  hovered_ = QaDbObjectId();
  if (first) fitPending_ = true;
  invalidate();
}

void DrawingView::setMode(Mode mode) {
  mode_ = mode;
  windowStart_.reset();
  if (mode == Mode::Idle) rubberBase_.reset();
  setCursor(mode == Mode::Idle ? Qt::ArrowCursor : Qt::CrossCursor);
  update();
}

void DrawingView::setRubberBase(std::optional<QPointF> world) {
  rubberBase_ = world;
  update();
}

void DrawingView::setHighlighted(std::vector<QaDbObjectId> ids) {
  highlighted_ = std::move(ids);
  update();
}

void DrawingView::invalidate() {
  cacheValid_ = false;
  update();
}

void DrawingView::zoomExtents() {
  fitPending_ = false;
  view_.setWindowSize(size());
  if (index_) view_.fit(index_->extents());
  invalidate();
}

void DrawingView::zoomAbout(QPointF screen, double factor) {
  view_.zoomAbout(screen, factor);
  invalidate();
}

void DrawingView::zoomToWindow(const WorldBox &box) {
  view_.fit(box, 0.0);
  invalidate();
}

void DrawingView::panBy(QPointF screenDelta) {
  view_.pan(screenDelta);
  if (!cacheValid_ || cache_.size() != size()) return invalidate();
  // The picture moves whole; only the strips it uncovers are painted anew.
  const int dx = static_cast<int>(std::lround(screenDelta.x()));
  const int dy = static_cast<int>(std::lround(screenDelta.y()));
  // The view keeps the exact offset; the shifted pixels follow it to the pixel.
  view_.pan(QPointF(dx, dy) - screenDelta);
  QImage shifted(cache_.size(), cache_.format());
  shifted.fill(Qt::white);
  {
    QPainter p(&shifted);
    p.drawImage(QPoint(dx, dy), cache_);
  }
  cache_ = std::move(shifted);
  const int w = cache_.width(), h = cache_.height();
  if (dx > 0) renderRegion(cache_, QRect(0, 0, dx, h));
  if (dx < 0) renderRegion(cache_, QRect(w + dx, 0, -dx, h));
  if (dy > 0) renderRegion(cache_, QRect(0, 0, w, dy));
  if (dy < 0) renderRegion(cache_, QRect(0, h + dy, w, -dy));
  update();
}

namespace {

// Thin lines, strokes of texts too small to read and dots, collected by colour and
// width and drawn in one call each, in the order of the drawing as long as nothing
// else comes between (other items flush what was collected first).
class StrokeBatch {
 public:
  void line(QRgb color, double pixels, const QLineF &l) {
    const std::pair<QRgb, int> key{color, quarterPixels(pixels)};
    // Runs of one colour and width are the rule: the last list is kept at hand.
    if (!last_ || key != lastKey_) {
      last_ = &lines_[key];
      lastKey_ = key;
    }
    last_->push_back(l);
  }
  void dot(QRgb color, const QPointF &p) { dots_[color].push_back(p); }
  bool empty() const { return lines_.empty() && dots_.empty(); }

  void flush(QPainter &p) {
    if (empty()) return;
    p.save();
    p.setRenderHint(QPainter::Antialiasing, false);
    for (const auto &[key, lines] : lines_) {
      QPen pen(QColor::fromRgb(key.first), key.second / 4.0);
      pen.setCosmetic(true);
      pen.setCapStyle(Qt::FlatCap);
      p.setPen(pen);
      p.drawLines(lines);
    }
    for (const auto &[color, points] : dots_) {
      QPen pen(QColor::fromRgb(color), 1.0);
      pen.setCosmetic(true);
      p.setPen(pen);
      p.drawPoints(points.data(), static_cast<int>(points.size()));
    }
    p.restore();
    lines_.clear();
    dots_.clear();
    last_ = nullptr;
  }

 private:
  static int quarterPixels(double pixels) { return std::max(4, static_cast<int>(std::lround(pixels * 4))); }
  std::map<std::pair<QRgb, int>, QVector<QLineF>> lines_;
  std::map<QRgb, QVector<QPointF>> dots_;
  QVector<QLineF> *last_ = nullptr;
  std::pair<QRgb, int> lastKey_{0, 0};
};

QRgb rgbOf(const render::RenderColor &c) { return qRgb(c.r, c.g, c.b); }

// Pixels of a line of `lineWeight` millimetres on the screen, never under one.
double linePixels(double lineWeight) { return std::max(1.0, lineWeight * 96.0 / 25.4 * 0.5); }

}  // namespace

void DrawingView::renderRegion(QImage &image, const QRect &rect) {
  if (rect.isEmpty()) return;
  QPainter p(&image);
  p.setClipRect(rect);
  p.fillRect(rect, Qt::white);
  if (!index_) return;
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);
  p.setTransform(view_.painterTransform());
  painter_->setPixelsPerUnit(view_.scale());
  const QPointF a = view_.toWorld(rect.bottomLeft() + QPointF(-1, 1));
  const QPointF b = view_.toWorld(rect.topRight() + QPointF(1, -1));
  const WorldBox box{a.x(), a.y(), b.x(), b.y()};
  const WorldBox all = index_->extents();
  const auto &items = index_->scene().items;
  std::vector<std::size_t> visible;
  // A window on the whole drawing takes every item as it stands, without a query.
  const bool whole = !all.empty() && box.minX <= all.minX && box.minY <= all.minY && box.maxX >= all.maxX &&
                     box.maxY >= all.maxY;
  if (!whole) visible = index_->itemsIn(box);
  const std::size_t count = whole ? items.size() : visible.size();
  const double pixel = 1.0 / view_.scale();
  StrokeBatch batch;
  for (std::size_t k = 0; k < count; ++k) {
    const std::size_t i = whole ? k : visible[k];
    const WorldBox &ib = index_->itemBox(i);
    const auto &item = items[i];
    // What is smaller than a pixel shows as a dot, or not at all when a text.
    if (ib.maxX - ib.minX < pixel && ib.maxY - ib.minY < pixel) {
      if (std::holds_alternative<render::RenderText>(item)) continue;
      const render::RenderColor *color = nullptr;
      if (const auto *path = std::get_if<render::RenderPath>(&item)) color = &path->color;
      if (const auto *circle = std::get_if<render::RenderCircle>(&item)) color = &circle->color;
      if (color) batch.dot(rgbOf(*color), QPointF(ib.minX, -ib.maxY));
      continue;
    }
    if (const auto *path = std::get_if<render::RenderPath>(&item); path && !path->filled && path->width <= 0.0) {
      const double pixels = linePixels(path->lineWeight);
      for (const auto &ring : path->rings) {
        const std::size_t m = ring.size();
        for (std::size_t j = 0; j + 1 < m + (path->closed && m > 2 ? 1 : 0); ++j)
          batch.line(rgbOf(path->color), pixels,
                     QLineF(ring[j].x, -ring[j].y, ring[(j + 1) % m].x, -ring[(j + 1) % m].y));
      }
      continue;
    }
    if (const auto *t = std::get_if<render::RenderText>(&item); t && t->height * view_.scale() < kGreekPixels) {
      batch.line(rgbOf(t->color), std::max(1.0, t->height * view_.scale() * 0.6), index_->greekLine(i));
      continue;
    }
    batch.flush(p);
    painter_->paint(p, item);
  }
  batch.flush(p);
}

void DrawingView::renderNow() {
  view_.setWindowSize(size());
  if (fitPending_ && index_) {
    fitPending_ = false;
    view_.fit(index_->extents());
  }
  if (cache_.size() != size()) cache_ = QImage(size(), QImage::Format_RGB32);
  renderRegion(cache_, cache_.rect());
  cacheValid_ = true;
}

void DrawingView::paintEntities(QPainter &painter, const std::vector<QaDbObjectId> &ids, bool hover) {
  if (!index_ || ids.empty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setTransform(view_.painterTransform());
  painter_->setPixelsPerUnit(view_.scale());
  painter_->setOverrideColor(hover ? &kHoverColor : &kSelectedColor);
  for (auto id : ids)
    for (std::size_t i : index_->itemsOf(id)) painter_->paint(painter, index_->scene().items[i]);
  painter_->setOverrideColor(nullptr);
  painter.restore();
}

void DrawingView::paintEvent(QPaintEvent *) {
  if (!cacheValid_ || cache_.size() != size()) renderNow();
  QPainter p(this);
  p.drawImage(0, 0, cache_);
  paintEntities(p, highlighted_, false);
  if (!hovered_.isNull()) paintEntities(p, {hovered_}, true);
  if (rubberBase_ && mode_ == Mode::Point) {
    p.setPen(QPen(QColor(0, 120, 215), 1, Qt::DashLine));
    p.drawLine(view_.toScreen(*rubberBase_), cursor_);
  }
  if (windowStart_) {
    // Left to right: a window (solid); right to left: a crossing (dashed).
    const bool crossing = cursor_.x() < windowStart_->x();
    const QRectF r = QRectF(*windowStart_, cursor_).normalized();
    p.setPen(QPen(crossing ? QColor(0, 150, 0) : QColor(0, 90, 200), 1, crossing ? Qt::DashLine : Qt::SolidLine));
    p.setBrush(crossing ? QColor(0, 150, 0, 40) : QColor(0, 90, 200, 40));
    p.drawRect(r);
  }
  if (mode_ != Mode::Idle && mode_ != Mode::ZoomWindow) {
    const int k = pickBoxPixels();
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    if (mode_ != Mode::Point) p.drawRect(QRectF(cursor_.x() - k, cursor_.y() - k, 2 * k, 2 * k));
  }
}

void DrawingView::resizeEvent(QResizeEvent *) {
  view_.setWindowSize(size());
  invalidate();
}

void DrawingView::mousePressEvent(QMouseEvent *event) {
  const QPointF pos = event->position();
  cursor_ = pos;
  if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && mode_ == Mode::Idle)) {
    panFrom_ = pos;
    panMoved_ = false;
    return;
  }
  if (event->button() == Qt::LeftButton) leftClick(pos);
}

void DrawingView::leftClick(QPointF screen) {
  const QPointF world = view_.toWorld(screen);
  const double tolerance = pickBoxPixels() / view_.scale();
  switch (mode_) {
    case Mode::Idle:
      return;
    case Mode::Point:
      emit pointPicked(world);
      return;
    case Mode::Entity: {
      const QaDbObjectId id = index_ ? index_->entityAt(world, tolerance) : QaDbObjectId();
      if (id.isNull()) emit nothingPicked(world);
      else emit entityPicked(id, world);
      return;
    }
    case Mode::Selection:
      if (!windowStart_) {
        const QaDbObjectId id = index_ ? index_->entityAt(world, tolerance) : QaDbObjectId();
        if (!id.isNull()) {
          emit entityPicked(id, world);
          return;
        }
        windowStart_ = screen;  // a miss opens a window
        update();
        return;
      }
      [[fallthrough]];
    case Mode::ZoomWindow:
      if (!windowStart_) {
        windowStart_ = screen;
        update();
        return;
      }
      {
        const QPointF a = view_.toWorld(*windowStart_);
        const bool crossing = screen.x() < windowStart_->x();
        windowStart_.reset();
        const WorldBox box{std::min(a.x(), world.x()), std::min(a.y(), world.y()), std::max(a.x(), world.x()),
                           std::max(a.y(), world.y())};
        if (mode_ == Mode::ZoomWindow) {
          zoomToWindow(box);
          setMode(Mode::Idle);
        } else {
          emit windowPicked(box, crossing);
        }
        update();
      }
      return;
  }
}

void DrawingView::mouseMoveEvent(QMouseEvent *event) {
  const QPointF pos = event->position();
  if (panFrom_) {
    const QPointF delta = pos - *panFrom_;
    if (panMoved_ || std::hypot(delta.x(), delta.y()) > kClickSlop) {
      panMoved_ = true;
      panBy(delta);
      panFrom_ = pos;
    }
  }
  cursor_ = pos;
  emit cursorMoved(view_.toWorld(pos));
  updateHover(pos);
  update();
}

void DrawingView::mouseReleaseEvent(QMouseEvent *event) {
  if (panFrom_ && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) panFrom_.reset();
}

void DrawingView::wheelEvent(QWheelEvent *event) {
  const double notches = event->angleDelta().y() / 120.0;
  if (notches == 0.0) return;
  zoomAbout(event->position(), std::pow(1.25, notches));
  event->accept();
}

void DrawingView::leaveEvent(QEvent *) {
  if (!hovered_.isNull()) {
    hovered_ = QaDbObjectId();
    update();
  }
}

void DrawingView::updateHover(QPointF screen) {
  if (!index_ || panFrom_) return;
  const QaDbObjectId id = index_->entityAt(view_.toWorld(screen), pickBoxPixels() / view_.scale());
  if (id != hovered_) hovered_ = id;
}

}  // namespace tabulon::ui
