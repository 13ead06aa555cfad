// HATCH from its fields; pattern lines, pixel size and gradient data come
// over from the original tags.
#include "host/db/qadb_hatch.h"
#include "host/dxf/dxf_entity_codes.h"
#include "host/dxf/dxf_entity_writer.h"
#include "host/dxf/dxf_read_context.h"

namespace tabulon::dxf {

namespace {

constexpr int kEveryCode[] = {
    1,   2,   3,   5,   7,   8,   10,  11,  12,  13,  20,  21,  22,  23,  30,  38,  39,  40,  41,  42,  43,
    44,  45,  46,  47,  49,  50,  51,  52,  53,  62,  63,  70,  71,  72,  73,  74,  75,  76,  77,  78,  79,
    90,  91,  92,  93,  94,  95,  96,  97,  98,  99,  210, 220, 230, 290, 330, 421, 450, 451, 452, 453,
    460, 461, 462, 463, 470, 1001};

void writeEdge(DxfEmitter& e, const QaDbHatchEdge& edge) {
  e.integer(72, edge.type);
  switch (edge.type) {
    case QaDbHatchEdge::kLine:
      e.point2(10, edge.start.x, edge.start.y);
      e.point2(11, edge.end.x, edge.end.y);
      break;
    case QaDbHatchEdge::kCircularArc:
      e.point2(10, edge.center.x, edge.center.y);
      e.real(40, edge.radius);
      e.angle(50, edge.startAngle);
      e.angle(51, edge.endAngle);
      e.integer(73, edge.counterClockwise ? 1 : 0);
      break;
    case QaDbHatchEdge::kEllipticArc:
      e.point2(10, edge.center.x, edge.center.y);
      e.point2(11, edge.majorAxis.x, edge.majorAxis.y);
      e.real(40, edge.ratio);
      e.angle(50, edge.startAngle);
      e.angle(51, edge.endAngle);
      e.integer(73, edge.counterClockwise ? 1 : 0);
      break;
    case QaDbHatchEdge::kSpline:
      e.integer(94, edge.degree);
      e.integer(73, edge.rational ? 1 : 0);
      e.integer(74, edge.periodic ? 1 : 0);
      e.integer(95, static_cast<std::int64_t>(edge.knots.size()));
      e.integer(96, static_cast<std::int64_t>(edge.controlPoints.size()));
      for (double k : edge.knots) e.real(40, k);
      for (std::size_t i = 0; i < edge.controlPoints.size(); ++i) {
        e.point2(10, edge.controlPoints[i].x, edge.controlPoints[i].y);
        if (i < edge.weights.size()) e.real(42, edge.weights[i]);
      }
      if (e.ctx().atLeast(DxfVersion::R2010)) {
        e.integer(97, static_cast<std::int64_t>(edge.fitPoints.size()));
        for (const auto& p : edge.fitPoints) e.point2(11, p.x, p.y);
        if (!edge.fitPoints.empty()) {
          e.point2(12, edge.startTangent.x, edge.startTangent.y);
          e.point2(13, edge.endTangent.x, edge.endTangent.y);
        }
      }
      break;
  }
}

}  // namespace

bool dxfWriteHatch(DxfWriteContext& ctx, const QaDbEntity& entity) {
  const auto* hatch = QaDbHatch::cast(&entity);
  if (!hatch) return false;
  if (dxfCanWriteVerbatim(ctx, entity)) {
    const auto* rec = static_cast<const DxfObjectRecord*>(entity.dxfRecord());
    ctx.copySpan(rec->source(), rec->span());
    return true;
  }
  DxfEmitter e(ctx, entity, "HATCH");
  // What the reader takes is read in order from every part after the common one; a
  // part of the original that no subclass written here answers to goes at the end,
  // where none of these codes may be read again.
  e.coverEverywhere(kEveryCode);
  dxfWriteEntityHead(e, entity, QaDbObjectId());
  e.subclass("AcDbHatch", kEveryCode);

  // The parts of the original this writer does not model, found by position.
  std::vector<const DxfTag*> patternLines, pixelSize, tail;
  if (e.original().valid()) {
    const auto& tags = e.original().tags;
    const auto& f = e.original().frame;
    std::size_t i = f.bodyBegin;
    int subclass = 0;
    for (; i < f.xdataBegin; ++i) {
      if (tags[i].code == 100 && ++subclass >= 2) break;
      if (e.flatOriginal()) break;
    }
    std::size_t seedsEnd = f.xdataBegin;
    for (std::size_t k = i; k < f.xdataBegin; ++k) {
      const DxfTag& t = tags[k];
      if (t.code == 78) {
        for (std::size_t j = k + 1; j < f.xdataBegin; ++j) {
          int c = tags[j].code;
          if (c != 53 && c != 43 && c != 44 && c != 45 && c != 46 && c != 79 && c != 49) break;
          patternLines.push_back(&tags[j]);
        }
        patternLines.insert(patternLines.begin(), &t);
      } else if (t.code == 47) {
        pixelSize.push_back(&t);
      } else if (t.code == 98) {
        int n = static_cast<int>(dxfParseInt(t.value).value_or(0));
        seedsEnd = k + 1;
        for (int s = 0; s < n && seedsEnd + 1 < f.xdataBegin && tags[seedsEnd].code == 10; ++s) seedsEnd += 2;
        // The rest of this part; the parts after it are written by finish().
        for (std::size_t j = seedsEnd; j < f.xdataBegin && tags[j].code != 100 && tags[j].code != 101; ++j)
          tail.push_back(&tags[j]);
        break;
      }
    }
  }

  e.point(10, QaGePoint3d(0, 0, hatch->elevation()));
  const QaGeVector3d& n = hatch->normal();
  e.point(210, QaGePoint3d(n.x, n.y, n.z));
  e.text(2, hatch->patternName());
  e.integer(70, hatch->isSolidFill() ? 1 : 0);
  e.integer(71, hatch->associative() ? 1 : 0);
  e.integer(91, hatch->numLoops());
  for (const auto& loop : hatch->loops()) {
    e.integer(92, loop.flags);
    if (loop.isPolyline()) {
      bool bulges = false;
      for (double b : loop.bulges) bulges = bulges || b != 0;
      e.integer(72, bulges ? 1 : 0);
      e.integer(73, loop.closed ? 1 : 0);
      e.integer(93, static_cast<std::int64_t>(loop.vertices.size()));
      for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
        e.point2(10, loop.vertices[i].x, loop.vertices[i].y);
        if (bulges) e.real(42, i < loop.bulges.size() ? loop.bulges[i] : 0.0);
      }
    } else {
      e.integer(93, static_cast<std::int64_t>(loop.edges.size()));
      for (const auto& edge : loop.edges) writeEdge(e, edge);
    }
    std::vector<QaDbObjectId> sources;
    for (QaDbObjectId id : loop.sourceIds)
      if (!id.isNull() && !id.isErased() && id.database() == &ctx.db()) sources.push_back(id);
    e.integer(97, static_cast<std::int64_t>(sources.size()));
    for (QaDbObjectId id : sources) e.handle(330, id);
  }
  e.integer(75, hatch->hatchStyle());
  e.integer(76, hatch->patternType());
  if (!hatch->isSolidFill()) {
    e.angle(52, hatch->patternAngle());
    e.real(41, hatch->patternScale());
    e.integer(77, hatch->patternDouble() ? 1 : 0);
    if (patternLines.empty()) {
      e.integer(78, 0);
    } else {
      for (const DxfTag* t : patternLines) ctx.copyTag(*e.original().source, *t);
    }
  }
  for (const DxfTag* t : pixelSize) ctx.copyTag(*e.original().source, *t);
  e.integer(98, static_cast<std::int64_t>(hatch->seedPoints().size()));
  for (const auto& p : hatch->seedPoints()) e.point2(10, p.x, p.y);
  for (const DxfTag* t : tail) ctx.copyTag(*e.original().source, *t);
  e.finish();
  return true;
}

}  // namespace tabulon::dxf
