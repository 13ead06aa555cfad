#include "drawing/render/scene_builder.h"

#include <cmath>
#include <map>
#include <numbers>

#include "drawing/render/curve_sampling.h"
#include "drawing/render/scene_text.h"
#include "host/db/qadb_2d_polyline.h"
#include "host/db/qadb_arc.h"
#include "host/db/qadb_attribute.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_circle.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_dimension.h"
#include "host/db/qadb_ellipse.h"
#include "host/db/qadb_hatch.h"
#include "host/db/qadb_layer_table.h"
#include "host/db/qadb_line.h"
#include "host/db/qadb_mtext.h"
#include "host/db/qadb_open.h"
#include "host/db/qadb_polyline.h"
#include "host/db/qadb_solid.h"
#include "host/db/qadb_spline.h"
#include "host/db/qadb_text_measure.h"

namespace tabulon::render {

int RenderScene::pathCount() const {
  int n = 0;
  for (const auto& item : items) n += std::holds_alternative<RenderPath>(item) ? 1 : 0;
  return n;
}

int RenderScene::circleCount() const {
  int n = 0;
  for (const auto& item : items) n += std::holds_alternative<RenderCircle>(item) ? 1 : 0;
  return n;
}

int RenderScene::textCount() const {
  int n = 0;
  for (const auto& item : items) n += std::holds_alternative<RenderText>(item) ? 1 : 0;
  return n;
}

namespace {

// Nesting deeper than this is taken for a block that contains itself.
constexpr int kMaxDepth = 32;

struct LayerLook {
  int colorIndex = 7;
  int lineWeight = QaDb::kLnWtByLwDefault;
  bool hidden = false;
};

// What an entity inside a block reference inherits from it.
struct Context {
  QaGeMatrix3d xform;
  int depth = 0;
  RenderColor blockColor;       // for ByBlock colour
  std::wstring blockLayer;      // for entities on layer "0"
  double blockLineWeight = 0.0;
};

QaGePoint2d flat(const QaGePoint3d& p) { return {p.x, p.y}; }

class SceneBuilder {
 public:
  SceneBuilder(QaDbDatabase& db, const RenderOptions& options) : db_(db), options_(options) { readLayers(); }

  RenderScene build() {
    QaDbObjectPointer<QaDbBlockTableRecord> space(db_.modelSpaceId(), QaDb::kForRead);
    if (space) {
      Context top;
      top.blockColor = AciOnWhite(7);
      top.blockLayer = L"0";
      for (QaDbObjectId id : space->liveEntityIds()) {
        drawEntityId(id, top);
        scene_.owners.resize(scene_.items.size(), id);
      }
    }
    return std::move(scene_);
  }

 private:
  void readLayers() {
    QaDbLayerTable* table = nullptr;
    if (db_.getSymbolTable(table, QaDb::kForRead) != Qa::eOk) return;
    auto it = table->newIterator();
    for (it->start(); !it->done(); it->step()) {
      QaDbObjectPointer<QaDbLayerTableRecord> layer(it->getRecordId(), QaDb::kForRead);
      if (!layer) continue;
      layers_[layer->name()] = {layer->colorIndex(), layer->lineWeight(), layer->isOff() || layer->isFrozen()};
    }
    table->close();
  }

  LayerLook layerLook(const std::wstring& name) const {
    auto it = layers_.find(name);
    return it == layers_.end() ? LayerLook{} : it->second;
  }

  std::wstring effectiveLayer(const QaDbEntity& e, const Context& ctx) const {
    return (ctx.depth > 0 && e.layer() == L"0") ? ctx.blockLayer : e.layer();
  }

  RenderColor colorOf(const QaDbEntity& e, const Context& ctx) const {
    const int index = e.colorIndex();
    if (index == QaDb::kColorByBlock) return ctx.blockColor;
    if (index == QaDb::kColorByLayer) return AciOnWhite(layerLook(effectiveLayer(e, ctx)).colorIndex);
    return AciOnWhite(index);
  }

  double weightOf(const QaDbEntity& e, const Context& ctx) const {
    int weight = e.lineWeight();
    if (weight == QaDb::kLnWtByBlock) return ctx.blockLineWeight;
    if (weight == QaDb::kLnWtByLayer) weight = layerLook(effectiveLayer(e, ctx)).lineWeight;
    return weight > 0 ? weight / 100.0 : 0.0;
  }

  bool hidden(const QaDbEntity& e, const Context& ctx) const {
    return !e.visible() || layerLook(effectiveLayer(e, ctx)).hidden;
  }

  double emPerHeight(QaDbObjectId style) {
    auto it = emPerHeight_.find(style);
    if (it != emPerHeight_.end()) return it->second;
    return emPerHeight_[style] = EmPerHeight(style);
  }

  void drawEntityId(QaDbObjectId id, const Context& ctx) {
    QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
    if (entity) drawEntity(*entity, ctx);
  }

  void drawEntity(const QaDbEntity& e, const Context& ctx) {
    if (hidden(e, ctx)) return;
    const RenderColor color = colorOf(e, ctx);
    const double weight = weightOf(e, ctx);
    if (auto* ref = QaDbBlockReference::cast(&e)) return drawReference(*ref, ctx, color, weight);
    if (auto* def = QaDbAttributeDefinition::cast(&e)) {
      // In model space a definition shows its tag; in a block only a constant one shows.
      if (ctx.depth == 0) return addTexts(LayoutTextWith(*def, def->tag(), ctx), *def, color);
      if (def->isConstant()) return addTexts(LayoutText(*def, ctx.xform, emPerHeight(def->textStyle())), *def, color);
      return;
    }
    if (auto* att = QaDbAttribute::cast(&e)) return drawAttribute(*att, ctx, color);
    if (auto* text = QaDbText::cast(&e))
      return addTexts(LayoutText(*text, ctx.xform, emPerHeight(text->textStyle())), *text, color);
    if (auto* mtext = QaDbMText::cast(&e))
      return addTexts(LayoutMText(*mtext, ctx.xform, emPerHeight(mtext->textStyle())), *mtext, color);
    if (auto* line = QaDbLine::cast(&e)) return addPath({{line->startPoint(), line->endPoint()}}, false, false, color, weight, ctx);
    if (auto* pline = QaDbPolyline::cast(&e)) return drawPolyline(*pline, color, weight, ctx);
    if (auto* pline2 = QaDb2dPolyline::cast(&e)) return drawPolyline2d(*pline2, color, weight, ctx);
    if (auto* circle = QaDbCircle::cast(&e)) return drawCircle(*circle, color, weight, ctx);
    if (auto* arc = QaDbArc::cast(&e)) return drawArc(*arc, color, weight, ctx);
    if (auto* ellipse = QaDbEllipse::cast(&e)) return drawEllipse(*ellipse, color, weight, ctx);
    if (auto* solid = QaDbSolid::cast(&e)) return drawSolid(*solid, color, ctx);
    if (auto* hatch = QaDbHatch::cast(&e)) return drawHatch(*hatch, color, weight, ctx);
    if (auto* spline = QaDbSpline::cast(&e))
      return addPath({SampleSpline(*spline)}, spline->isClosed(), false, color, weight, ctx);
    if (auto* dim = QaDbDimension::cast(&e)) return drawBlockContents(dim->dimBlockId(), dim->blockTransform(), ctx, color, e, weight);
    // Points, unknown kinds: nothing to paint.
  }

  std::vector<RenderText> LayoutTextWith(const QaDbAttributeDefinition& def, const std::wstring& shown,
                                         const Context& ctx) {
    auto copy = def.clone();
    auto* text = QaDbAttributeDefinition::cast(copy.get());
    text->setTextString(shown);
    return LayoutText(*text, ctx.xform, emPerHeight(def.textStyle()));
  }

  void drawAttribute(const QaDbAttribute& att, const Context& ctx, const RenderColor& color) {
    if (att.isInvisible()) return;
    if (const QaDbMText* mtext = att.getMTextAttribute())
      return addTexts(LayoutMText(*mtext, ctx.xform, emPerHeight(mtext->textStyle())), *mtext, color);
    addTexts(LayoutText(att, ctx.xform, emPerHeight(att.textStyle())), att, color);
  }

  void drawReference(const QaDbBlockReference& ref, const Context& ctx, const RenderColor& color, double weight) {
    drawBlockContents(ref.blockTableRecord(), ref.blockTransform(), ctx, color, ref, weight);
    // Attributes stand in world coordinates of the reference's own space.
    if (ref.isDatabaseResident()) {
      for (QaDbObjectId id : ref.attributeIds()) {
        QaDbObjectPointer<QaDbAttribute> att(id, QaDb::kForRead);
        if (att && !hidden(*att, ctx)) drawAttribute(*att, ctx, colorOf(*att, ctx));
      }
    } else {
      for (const auto& att : ref.pendingAttributes())
        if (!hidden(*att, ctx)) drawAttribute(*att, ctx, colorOf(*att, ctx));
    }
  }

  void drawBlockContents(QaDbObjectId blockId, const QaGeMatrix3d& transform, const Context& ctx,
                         const RenderColor& color, const QaDbEntity& owner, double weight) {
    if (ctx.depth >= kMaxDepth || blockId.isNull()) return;
    QaDbObjectPointer<QaDbBlockTableRecord> block(blockId, QaDb::kForRead);
    if (!block) return;
    Context inner;
    inner.xform = ctx.xform * transform;
    inner.depth = ctx.depth + 1;
    inner.blockColor = color;
    inner.blockLayer = effectiveLayer(owner, ctx);
    inner.blockLineWeight = weight;
    for (QaDbObjectId id : block->liveEntityIds()) drawEntityId(id, inner);
  }

  void drawPolyline(const QaDbPolyline& pline, const RenderColor& color, double weight, const Context& ctx) {
    std::vector<QaGePoint2d> points;
    std::vector<double> bulges;
    for (const auto& v : pline.vertices()) {
      points.push_back(v.point);
      bulges.push_back(v.bulge);
    }
    const auto sampled = SampleBulgePolyline(points, bulges, pline.isClosed());
    const QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(pline.normal());
    std::vector<QaGePoint3d> world;
    world.reserve(sampled.size());
    for (const auto& p : sampled) world.push_back(ocs * QaGePoint3d(p.x, p.y, pline.elevation()));
    addPath({world}, pline.isClosed(), false, color, weight, ctx, std::max(0.0, pline.constantWidth()));
  }

  void drawPolyline2d(const QaDb2dPolyline& pline, const RenderColor& color, double weight, const Context& ctx) {
    std::vector<QaGePoint3d> world;
    if (pline.is3d()) {
      for (unsigned i = 0; i < pline.numVerts(); ++i) world.push_back(pline.vertexPosition(i));
    } else {
      std::vector<QaGePoint2d> points;
      std::vector<double> bulges;
      for (const auto& v : pline.vertices()) {
        if (v.flags & 16) continue;  // spline frame points are not on the curve
        points.emplace_back(v.position.x, v.position.y);
        bulges.push_back(v.bulge);
      }
      const QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(pline.normal());
      for (const auto& p : SampleBulgePolyline(points, bulges, pline.isClosed()))
        world.push_back(ocs * QaGePoint3d(p.x, p.y, pline.elevation()));
    }
    addPath({world}, pline.isClosed(), false, color, weight, ctx);
  }

  // Axes of the plane of `normal` scaled by `radius`.
  static void planeAxes(const QaGeVector3d& normal, double radius, QaGeVector3d& u, QaGeVector3d& v) {
    const QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(normal);
    u = (ocs * QaGeVector3d::kXAxis) * radius;
    v = (ocs * QaGeVector3d::kYAxis) * radius;
  }

  void drawCircle(const QaDbCircle& circle, const RenderColor& color, double weight, const Context& ctx) {
    QaGeVector3d u, v;
    planeAxes(circle.normal(), circle.radius(), u, v);
    const QaGeVector3d tu = ctx.xform * u;
    const QaGeVector3d tv = ctx.xform * v;
    // Seen from above, a circle stays one when its axes stay equal and square.
    if (std::abs(tu.z) < 1e-9 && std::abs(tv.z) < 1e-9 && std::abs(tu.length() - tv.length()) < 1e-9 * tu.length() &&
        std::abs(tu.dotProduct(tv)) < 1e-9 * tu.lengthSqrd()) {
      const QaGePoint3d c = ctx.xform * circle.center();
      RenderCircle out{flat(c), tu.length(), color, weight};
      scene_.extents.addPoint(QaGePoint3d(c.x - out.radius, c.y - out.radius, 0));
      scene_.extents.addPoint(QaGePoint3d(c.x + out.radius, c.y + out.radius, 0));
      scene_.items.emplace_back(std::move(out));
      return;
    }
    addPath({SampleEllipticArc(circle.center(), u, v, 0.0, 2.0 * std::numbers::pi)}, true, false, color, weight, ctx);
  }

  void drawArc(const QaDbArc& arc, const RenderColor& color, double weight, const Context& ctx) {
    QaGeVector3d u, v;
    planeAxes(arc.normal(), arc.radius(), u, v);
    addPath({SampleEllipticArc(arc.center(), u, v, arc.startAngle(), arc.sweep())}, false, false, color, weight, ctx);
  }

  void drawEllipse(const QaDbEllipse& ellipse, const RenderColor& color, double weight, const Context& ctx) {
    double sweep = ellipse.endParam() - ellipse.startParam();
    while (sweep <= 0.0) sweep += 2.0 * std::numbers::pi;
    addPath({SampleEllipticArc(ellipse.center(), ellipse.majorAxis(), ellipse.minorAxis(), ellipse.startParam(), sweep)},
            ellipse.isClosed(), false, color, weight, ctx);
  }

  void drawSolid(const QaDbSolid& solid, const RenderColor& color, const Context& ctx) {
    QaGePoint3d p[4];
    for (int i = 0; i < 4; ++i) solid.getPointAt(i, p[i]);
    // Stored corners run 0, 1, 3, 2 around the outline.
    addPath({{p[0], p[1], p[3], p[2]}}, true, true, color, 0.0, ctx);
  }

  void drawHatch(const QaDbHatch& hatch, const RenderColor& color, double weight, const Context& ctx) {
    const QaGeMatrix3d ocs = QaGeMatrix3d::planeToWorld(hatch.normal());
    auto toWorld = [&](const QaGePoint2d& p) { return ocs * QaGePoint3d(p.x, p.y, hatch.elevation()); };
    std::vector<std::vector<QaGePoint3d>> rings;
    for (const auto& loop : hatch.loops()) {
      std::vector<QaGePoint2d> flatRing;
      if (loop.isPolyline()) {
        flatRing = SampleBulgePolyline(loop.vertices, loop.bulges, true);
      } else {
        for (const auto& edge : loop.edges) appendEdge(flatRing, edge);
      }
      std::vector<QaGePoint3d> ring;
      for (const auto& p : flatRing) ring.push_back(toWorld(p));
      if (ring.size() >= 2) rings.push_back(std::move(ring));
    }
    addPath(rings, true, hatch.isSolidFill(), color, weight, ctx);
  }

  static void appendEdge(std::vector<QaGePoint2d>& ring, const QaDbHatchEdge& edge) {
    auto addAll = [&](const std::vector<QaGePoint3d>& pts) {
      for (const auto& p : pts) ring.emplace_back(p.x, p.y);
    };
    switch (edge.type) {
      case QaDbHatchEdge::kLine:
        ring.push_back(edge.start);
        ring.push_back(edge.end);
        break;
      case QaDbHatchEdge::kCircularArc: {
        double sweep = edge.endAngle - edge.startAngle;
        while (sweep <= 0.0) sweep += 2.0 * std::numbers::pi;
        const double dir = edge.counterClockwise ? 1.0 : -1.0;
        const double start = edge.counterClockwise ? edge.startAngle : -edge.startAngle;
        addAll(SampleEllipticArc(QaGePoint3d(edge.center), QaGeVector3d(edge.radius, 0, 0),
                                 QaGeVector3d(0, dir * edge.radius, 0), start, sweep));
        break;
      }
      case QaDbHatchEdge::kEllipticArc: {
        double sweep = edge.endAngle - edge.startAngle;
        while (sweep <= 0.0) sweep += 2.0 * std::numbers::pi;
        const QaGeVector3d major(edge.majorAxis.x, edge.majorAxis.y, 0);
        const double dir = edge.counterClockwise ? 1.0 : -1.0;
        const QaGeVector3d minor(-edge.majorAxis.y * edge.ratio * dir, edge.majorAxis.x * edge.ratio * dir, 0);
        const double start = edge.counterClockwise ? edge.startAngle : -edge.startAngle;
        addAll(SampleEllipticArc(QaGePoint3d(edge.center), major, minor, start, sweep));
        break;
      }
      case QaDbHatchEdge::kSpline:
        for (const auto& p : edge.fitPoints.empty() ? edge.controlPoints : edge.fitPoints) ring.push_back(p);
        break;
    }
  }

  void addPath(const std::vector<std::vector<QaGePoint3d>>& rings, bool closed, bool filled, const RenderColor& color,
               double weight, const Context& ctx, double width = 0.0) {
    RenderPath path;
    path.closed = closed;
    path.filled = filled;
    path.color = color;
    path.lineWeight = weight;
    path.width = width * ctx.xform.scale();
    for (const auto& ring : rings) {
      std::vector<QaGePoint2d> out;
      out.reserve(ring.size());
      for (const auto& p : ring) {
        const QaGePoint3d w = ctx.xform * p;
        scene_.extents.addPoint(QaGePoint3d(w.x, w.y, 0));
        out.emplace_back(w.x, w.y);
      }
      if (!out.empty()) path.rings.push_back(std::move(out));
    }
    if (!path.rings.empty()) scene_.items.emplace_back(std::move(path));
  }

  void addTexts(std::vector<RenderText> texts, const QaDbEntity& source, const RenderColor& color) {
    QaDbObjectId style;
    if (auto* t = QaDbText::cast(&source)) style = t->textStyle();
    if (auto* m = QaDbMText::cast(&source)) style = m->textStyle();
    for (auto& text : texts) {
      text.color = color;
      text.fontFamily = options_.fontFamily;
      const double length = text.fitLength > 0.0 ? text.fitLength
                                                 : qadbTextWidth(text.text, style, text.height, text.widthFactor);
      QaGePoint2d corners[4];
      TextCorners(text, length, corners);
      for (const auto& c : corners) scene_.extents.addPoint(QaGePoint3d(c.x, c.y, 0));
      scene_.items.emplace_back(std::move(text));
    }
  }

  QaDbDatabase& db_;
  const RenderOptions& options_;
  RenderScene scene_;
  std::map<std::wstring, LayerLook> layers_;
  std::map<QaDbObjectId, double> emPerHeight_;
};

}  // namespace

RenderScene BuildModelSpaceScene(QaDbDatabase& db, const RenderOptions& options) {
  return SceneBuilder(db, options).build();
}

}  // namespace tabulon::render
