// The drawing view: paints a rendered drawing from a SceneIndex, culled by the index,
// into a cached picture that panning shifts (only the uncovered strips are painted)
// and that hover marks, rubber lines and selection windows are drawn over. Pans with
// the middle button (or a left drag when nothing is asked), zooms about the cursor
// with the wheel, and reports clicks and windows in drawing coordinates to whoever
// asks the user for input. Shares the index with its owner.
#pragma once

#include <QImage>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

#include "host/db/qadb_object_id.h"
#include "ui/view/view_transform.h"

namespace tabulon::ui {

class SceneIndex;
class ScenePainter;

class DrawingView : public QWidget {
  Q_OBJECT

 public:
  // What a left click means at present.
  enum class Mode { Idle, Point, Entity, Selection, ZoomWindow };

  explicit DrawingView(QWidget *parent = nullptr);
  ~DrawingView() override;

  void setIndex(std::shared_ptr<const SceneIndex> index);
  const SceneIndex *index() const { return index_.get(); }
  const ViewTransform &transform() const { return view_; }

  void setMode(Mode mode);
  Mode mode() const { return mode_; }
  // The base point of a rubber line while a point is asked for.
  void setRubberBase(std::optional<QPointF> world);
  // Entities shown as selected.
  void setHighlighted(std::vector<QaDbObjectId> ids);
  QaDbObjectId hovered() const { return hovered_; }
  // Half the side of the pick box, in pixels.
  int pickBoxPixels() const { return 4; }

  void zoomExtents();
  void zoomAbout(QPointF screen, double factor);
  void panBy(QPointF screenDelta);
  void zoomToWindow(const WorldBox &box);
  // Paints the picture now (as the next paint event would), for timing and tests.
  void renderNow();
  const QImage &picture() const { return cache_; }

  QPointF toWorld(QPointF screen) const { return view_.toWorld(screen); }
  QPointF toScreen(QPointF world) const { return view_.toScreen(world); }

 signals:
  void cursorMoved(QPointF world);
  void pointPicked(QPointF world);
  void entityPicked(QaDbObjectId id, QPointF world);
  void nothingPicked(QPointF world);
  void windowPicked(tabulon::ui::WorldBox box, bool crossing);

 protected:
  void paintEvent(QPaintEvent *event) override;
  void resizeEvent(QResizeEvent *event) override;
  void mousePressEvent(QMouseEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  void mouseReleaseEvent(QMouseEvent *event) override;
  void wheelEvent(QWheelEvent *event) override;
  void leaveEvent(QEvent *event) override;

 private:
  void renderRegion(QImage &image, const QRect &rect);
  void invalidate();
  void updateHover(QPointF screen);
  void leftClick(QPointF screen);
  void paintEntities(QPainter &painter, const std::vector<QaDbObjectId> &ids, bool hover);

  std::shared_ptr<const SceneIndex> index_;
  std::unique_ptr<ScenePainter> painter_;
  ViewTransform view_;
  QImage cache_;
  bool cacheValid_ = false;
  // The first picture of a drawing shows it whole, at the size the window then has.
  bool fitPending_ = false;
  Mode mode_ = Mode::Idle;
  std::optional<QPointF> rubberBase_;
  std::vector<QaDbObjectId> highlighted_;
  QaDbObjectId hovered_;
  QPointF cursor_;
  // Panning with a button held: where the drag was last.
  std::optional<QPointF> panFrom_;
  bool panMoved_ = false;
  // A selection or zoom window: its first corner, on the screen.
  std::optional<QPointF> windowStart_;
};

}  // namespace tabulon::ui
