// A spatial index over a rendered drawing: an R-tree of the boxes of the scene's items
// (for culling what a view paints) and one of the model-space entities they were drawn
// for (for picking with a pick box, window and crossing selections). Owns the scene it
// indexes; built once per change of the drawing.
#pragma once

#include <memory>
#include <vector>

#include <QLineF>
#include <QPointF>

#include "drawing/render/render_scene.h"
#include "host/db/qadb_object_id.h"
#include "ui/view/view_transform.h"

namespace tabulon::ui {

class SceneIndex {
 public:
  explicit SceneIndex(render::RenderScene scene);
  ~SceneIndex();
  SceneIndex(const SceneIndex&) = delete;
  SceneIndex& operator=(const SceneIndex&) = delete;

  const render::RenderScene& scene() const { return scene_; }
  WorldBox extents() const;
  const WorldBox& itemBox(std::size_t item) const { return itemBoxes_[item]; }
  // The stroke a text too small to read is drawn as, in painting coordinates (y
  // pointing down), worked out once; a null line for items that are not texts.
  const QLineF& greekLine(std::size_t item) const { return greekLines_[item]; }

  // Items whose boxes meet `box`, in drawing order.
  std::vector<std::size_t> itemsIn(const WorldBox& box) const;
  // The entity whose drawn geometry passes nearest to `point`, within `tolerance`
  // (drawing units); among equally near ones the one drawn last. Null when none.
  QaDbObjectId entityAt(QPointF point, double tolerance) const;
  // Entities lying wholly inside `box` (a window selection), in drawing order.
  std::vector<QaDbObjectId> entitiesInside(const WorldBox& box) const;
  // Entities inside `box` or whose drawn geometry crosses its edge (a crossing
  // selection), in drawing order.
  std::vector<QaDbObjectId> entitiesCrossing(const WorldBox& box) const;
  // The items drawn for an entity (none for an entity the scene does not show).
  std::vector<std::size_t> itemsOf(QaDbObjectId id) const;

 private:
  struct Entity {
    QaDbObjectId id;
    std::size_t first = 0, end = 0;  // its items
    WorldBox box;
  };
  struct Trees;

  double distanceTo(std::size_t item, QPointF point) const;
  bool crosses(std::size_t item, const WorldBox& box) const;
  std::vector<std::size_t> entityCandidates(const WorldBox& box) const;
  // The trees are packed on first use: a first picture of the whole drawing needs none.
  const Trees& trees() const;

  render::RenderScene scene_;
  std::vector<WorldBox> itemBoxes_;
  std::vector<QLineF> greekLines_;
  std::vector<Entity> entities_;
  mutable std::unique_ptr<Trees> trees_;
};

}  // namespace tabulon::ui
