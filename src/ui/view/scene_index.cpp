#include "ui/view/scene_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>

#include "drawing/render/scene_text.h"
#include "ui/paint/scene_painter.h"

namespace tabulon::ui {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;
using BPoint = bg::model::point<double, 2, bg::cs::cartesian>;
using BBox = bg::model::box<BPoint>;
using Value = std::pair<BBox, std::size_t>;
using Tree = bgi::rtree<Value, bgi::rstar<16>>;

struct SceneIndex::Trees {
  Tree items;
  Tree entities;
};

namespace {

using namespace tabulon::render;

BBox toBBox(const WorldBox& b) { return BBox(BPoint(b.minX, b.minY), BPoint(b.maxX, b.maxY)); }

void grow(WorldBox& box, double x, double y) {
  box.minX = std::min(box.minX, x);
  box.minY = std::min(box.minY, y);
  box.maxX = std::max(box.maxX, x);
  box.maxY = std::max(box.maxY, y);
}

constexpr WorldBox kNoBox{std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

void textCorners(const RenderText& t, QaGePoint2d corners[4]) { TextCorners(t, EstimatedTextLength(t), corners); }

WorldBox boxOf(const RenderItem& item) {
  WorldBox box = kNoBox;
  if (const auto* p = std::get_if<RenderPath>(&item)) {
    for (const auto& ring : p->rings)
      for (const auto& q : ring) grow(box, q.x, q.y);
    if (!box.empty() && p->width > 0.0) {
      box.minX -= p->width / 2; box.minY -= p->width / 2;
      box.maxX += p->width / 2; box.maxY += p->width / 2;
    }
  } else if (const auto* c = std::get_if<RenderCircle>(&item)) {
    box = {c->center.x - c->radius, c->center.y - c->radius, c->center.x + c->radius, c->center.y + c->radius};
  } else if (const auto* t = std::get_if<RenderText>(&item)) {
    QaGePoint2d corners[4];
    textCorners(*t, corners);
    for (const auto& q : corners) grow(box, q.x, q.y);
  }
  return box;
}

double segmentDistance(QPointF p, QPointF a, QPointF b) {
  const QPointF ab = b - a;
  const double len2 = QPointF::dotProduct(ab, ab);
  double t = len2 > 0 ? QPointF::dotProduct(p - a, ab) / len2 : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  const QPointF d = p - (a + ab * t);
  return std::hypot(d.x(), d.y());
}

bool inside(const WorldBox& inner, const WorldBox& outer) {
  return inner.minX >= outer.minX && inner.maxX <= outer.maxX && inner.minY >= outer.minY && inner.maxY <= outer.maxY;
}

bool meets(const WorldBox& a, const WorldBox& b) {
  return a.minX <= b.maxX && a.maxX >= b.minX && a.minY <= b.maxY && a.maxY >= b.minY;
}

// Whether segment ab meets the box (Liang-Barsky clipping).
bool segmentMeetsBox(QPointF a, QPointF b, const WorldBox& box) {
  double t0 = 0.0, t1 = 1.0;
  const double dx = b.x() - a.x(), dy = b.y() - a.y();
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x() - box.minX, box.maxX - a.x(), a.y() - box.minY, box.maxY - a.y()};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0.0) {
      if (q[i] < 0.0) return false;
    } else {
      const double r = q[i] / p[i];
      if (p[i] < 0.0) t0 = std::max(t0, r);
      else t1 = std::min(t1, r);
      if (t0 > t1) return false;
    }
  }
  return true;
}

double area(const WorldBox& b) { return b.empty() ? 0.0 : (b.maxX - b.minX) * (b.maxY - b.minY); }

WorldBox overlap(const WorldBox& a, const WorldBox& b) {
  return {std::max(a.minX, b.minX), std::max(a.minY, b.minY), std::min(a.maxX, b.maxX), std::min(a.maxY, b.maxY)};
}

bool pointInPolygon(QPointF p, const QPointF* poly, int n) {
  bool in = false;
  for (int i = 0, j = n - 1; i < n; j = i++) {
    if ((poly[i].y() > p.y()) != (poly[j].y() > p.y()) &&
        p.x() < (poly[j].x() - poly[i].x()) * (p.y() - poly[i].y()) / (poly[j].y() - poly[i].y()) + poly[i].x())
      in = !in;
  }
  return in;
}

}  // namespace

SceneIndex::SceneIndex(RenderScene scene) : scene_(std::move(scene)) {
  const std::size_t n = scene_.items.size();
  scene_.owners.resize(n);
  itemBoxes_.reserve(n);
  greekLines_.resize(n);
  for (std::size_t i = 0; i < n; ++i) {
    itemBoxes_.push_back(boxOf(scene_.items[i]));
    if (const auto* t = std::get_if<RenderText>(&scene_.items[i])) greekLines_[i] = GreekedTextLine(*t);
    if (entities_.empty() || entities_.back().id != scene_.owners[i]) entities_.push_back({scene_.owners[i], i, i, kNoBox});
    Entity& e = entities_.back();
    e.end = i + 1;
    const WorldBox& b = itemBoxes_.back();
    if (!b.empty()) {
      grow(e.box, b.minX, b.minY);
      grow(e.box, b.maxX, b.maxY);
    }
  }
}

const SceneIndex::Trees& SceneIndex::trees() const {
  if (trees_) return *trees_;
  trees_ = std::make_unique<Trees>();
  std::vector<Value> itemValues;
  itemValues.reserve(itemBoxes_.size());
  for (std::size_t i = 0; i < itemBoxes_.size(); ++i)
    if (!itemBoxes_[i].empty()) itemValues.emplace_back(toBBox(itemBoxes_[i]), i);
  std::vector<Value> entityValues;
  entityValues.reserve(entities_.size());
  for (std::size_t i = 0; i < entities_.size(); ++i)
    if (!entities_[i].id.isNull() && !entities_[i].box.empty()) entityValues.emplace_back(toBBox(entities_[i].box), i);
  // Packed construction: one bulk load is much faster than inserting one by one.
  trees_->items = Tree(itemValues.begin(), itemValues.end());
  trees_->entities = Tree(entityValues.begin(), entityValues.end());
  return *trees_;
}

SceneIndex::~SceneIndex() = default;

WorldBox SceneIndex::extents() const {
  if (scene_.extents.isEmpty()) return kNoBox;
  const auto& lo = scene_.extents.minPoint();
  const auto& hi = scene_.extents.maxPoint();
  return {lo.x, lo.y, hi.x, hi.y};
}

std::vector<std::size_t> SceneIndex::itemsIn(const WorldBox& box) const {
  std::vector<std::size_t> out;
  if (box.empty()) return out;
  // A window on a large part of the drawing meets most items: one pass over the
  // boxes, already in drawing order, is quicker than walking the tree and sorting.
  const WorldBox all = extents();
  if (!all.empty() && area(overlap(box, all)) >= 0.25 * area(all)) {
    out.reserve(itemBoxes_.size());
    for (std::size_t i = 0; i < itemBoxes_.size(); ++i)
      if (meets(itemBoxes_[i], box)) out.push_back(i);
    return out;
  }
  const Tree& tree = trees().items;
  for (auto it = tree.qbegin(bgi::intersects(toBBox(box))); it != tree.qend(); ++it)
    out.push_back(it->second);
  std::sort(out.begin(), out.end());
  return out;
}

std::vector<std::size_t> SceneIndex::entityCandidates(const WorldBox& box) const {
  std::vector<std::size_t> out;
  const Tree& tree = trees().entities;
  for (auto it = tree.qbegin(bgi::intersects(toBBox(box))); it != tree.qend(); ++it)
    out.push_back(it->second);
  std::sort(out.begin(), out.end());
  return out;
}

double SceneIndex::distanceTo(std::size_t item, QPointF point) const {
  const auto& it = scene_.items[item];
  double best = std::numeric_limits<double>::infinity();
  if (const auto* p = std::get_if<RenderPath>(&it)) {
    for (const auto& ring : p->rings) {
      const std::size_t m = ring.size();
      for (std::size_t i = 0; i + 1 < m + (p->closed ? 1 : 0); ++i) {
        const auto& a = ring[i];
        const auto& b = ring[(i + 1) % m];
        best = std::min(best, segmentDistance(point, {a.x, a.y}, {b.x, b.y}) - p->width / 2);
      }
      if (m == 1) best = std::min(best, std::hypot(point.x() - ring[0].x, point.y() - ring[0].y));
    }
    if (p->filled) {
      for (const auto& ring : p->rings) {
        std::vector<QPointF> poly;
        for (const auto& q : ring) poly.emplace_back(q.x, q.y);
        if (poly.size() >= 3 && pointInPolygon(point, poly.data(), static_cast<int>(poly.size()))) return 0.0;
      }
    }
  } else if (const auto* c = std::get_if<RenderCircle>(&it)) {
    best = std::abs(std::hypot(point.x() - c->center.x, point.y() - c->center.y) - c->radius);
  } else if (const auto* t = std::get_if<RenderText>(&it)) {
    QaGePoint2d corners[4];
    textCorners(*t, corners);
    QPointF poly[4];
    for (int i = 0; i < 4; ++i) poly[i] = QPointF(corners[i].x, corners[i].y);
    if (pointInPolygon(point, poly, 4)) return 0.0;
    for (int i = 0; i < 4; ++i) best = std::min(best, segmentDistance(point, poly[i], poly[(i + 1) % 4]));
  }
  return std::max(best, 0.0);
}

bool SceneIndex::crosses(std::size_t item, const WorldBox& box) const {
  const auto& it = scene_.items[item];
  if (!meets(itemBoxes_[item], box)) return false;
  if (inside(itemBoxes_[item], box)) return true;
  if (const auto* p = std::get_if<RenderPath>(&it)) {
    for (const auto& ring : p->rings) {
      const std::size_t m = ring.size();
      for (std::size_t i = 0; i + 1 < m + (p->closed ? 1 : 0); ++i)
        if (segmentMeetsBox({ring[i].x, ring[i].y}, {ring[(i + 1) % m].x, ring[(i + 1) % m].y}, box)) return true;
    }
    return false;
  }
  if (const auto* c = std::get_if<RenderCircle>(&it)) {
    // The circle meets the box unless the box lies wholly inside it or wholly outside.
    const double nx = std::clamp(c->center.x, box.minX, box.maxX), ny = std::clamp(c->center.y, box.minY, box.maxY);
    if (std::hypot(nx - c->center.x, ny - c->center.y) > c->radius) return false;
    const double fx = std::max(std::abs(box.minX - c->center.x), std::abs(box.maxX - c->center.x));
    const double fy = std::max(std::abs(box.minY - c->center.y), std::abs(box.maxY - c->center.y));
    return std::hypot(fx, fy) >= c->radius;
  }
  return true;  // a text: its box meets the window
}

QaDbObjectId SceneIndex::entityAt(QPointF point, double tolerance) const {
  const WorldBox pick{point.x() - tolerance, point.y() - tolerance, point.x() + tolerance, point.y() + tolerance};
  QaDbObjectId best;
  double bestDistance = std::numeric_limits<double>::infinity();
  for (std::size_t e : entityCandidates(pick)) {
    const Entity& entity = entities_[e];
    for (std::size_t i = entity.first; i < entity.end; ++i) {
      if (!meets(itemBoxes_[i], pick)) continue;
      const double d = distanceTo(i, point);
      if (d <= tolerance && d <= bestDistance) {
        bestDistance = d;
        best = entity.id;
      }
    }
  }
  return best;
}

std::vector<QaDbObjectId> SceneIndex::entitiesInside(const WorldBox& box) const {
  std::vector<QaDbObjectId> out;
  for (std::size_t e : entityCandidates(box))
    if (inside(entities_[e].box, box)) out.push_back(entities_[e].id);
  return out;
}

std::vector<QaDbObjectId> SceneIndex::entitiesCrossing(const WorldBox& box) const {
  std::vector<QaDbObjectId> out;
  for (std::size_t e : entityCandidates(box)) {
    const Entity& entity = entities_[e];
    for (std::size_t i = entity.first; i < entity.end; ++i) {
      if (crosses(i, box)) {
        out.push_back(entity.id);
        break;
      }
    }
  }
  return out;
}

std::vector<std::size_t> SceneIndex::itemsOf(QaDbObjectId id) const {
  std::vector<std::size_t> out;
  for (const Entity& e : entities_)
    if (e.id == id)
      for (std::size_t i = e.first; i < e.end; ++i) out.push_back(i);
  return out;
}

}  // namespace tabulon::ui
