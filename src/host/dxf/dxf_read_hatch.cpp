// HATCH: its boundary loops are a counted structure read in order.
#include "host/db/qadb_hatch.h"
#include "host/dxf/dxf_entity_reader.h"

#include <vector>

namespace tabulon::dxf {

namespace {

// Walks the tags of the AcDbHatch part one by one.
class HatchCursor {
 public:
  HatchCursor(const DxfReadContext& ctx, std::vector<const DxfTag*> tags) : ctx_(ctx), tags_(std::move(tags)) {}
  bool done() const { return i_ >= tags_.size(); }
  int peek() const { return done() ? -1 : tags_[i_]->code; }
  const DxfTag& take() { return *tags_[i_++]; }
  // The value of the next tag when it has `code`; else `fallback` (tag left).
  double real(int code, double fallback = 0) { return peek() == code ? ctx_.real(take()) : fallback; }
  int integer(int code, int fallback = 0) { return peek() == code ? ctx_.integer(take()) : fallback; }
  QaGePoint2d point(int code) {
    QaGePoint2d p;
    p.x = real(code);
    p.y = real(code + 10);
    return p;
  }

 private:
  const DxfReadContext& ctx_;
  std::vector<const DxfTag*> tags_;
  std::size_t i_ = 0;
};

QaDbHatchEdge readEdge(HatchCursor& c) {
  QaDbHatchEdge e;
  e.type = static_cast<QaDbHatchEdge::Type>(c.integer(72, 1));
  switch (e.type) {
    case QaDbHatchEdge::kLine:
      e.start = c.point(10);
      e.end = c.point(11);
      break;
    case QaDbHatchEdge::kCircularArc:
      e.center = c.point(10);
      e.radius = c.real(40);
      e.startAngle = dxfDegToRad(c.real(50));
      e.endAngle = dxfDegToRad(c.real(51));
      e.counterClockwise = c.integer(73, 1) != 0;
      break;
    case QaDbHatchEdge::kEllipticArc: {
      e.center = c.point(10);
      QaGePoint2d axis = c.point(11);
      e.majorAxis = QaGeVector2d(axis.x, axis.y);
      e.ratio = c.real(40, 1);
      e.startAngle = dxfDegToRad(c.real(50));
      e.endAngle = dxfDegToRad(c.real(51));
      e.counterClockwise = c.integer(73, 1) != 0;
      break;
    }
    case QaDbHatchEdge::kSpline: {
      e.degree = c.integer(94, 3);
      e.rational = c.integer(73) != 0;
      e.periodic = c.integer(74) != 0;
      int nKnots = c.integer(95);
      int nControl = c.integer(96);
      for (int k = 0; k < nKnots && c.peek() == 40; ++k) e.knots.push_back(c.real(40));
      for (int k = 0; k < nControl && c.peek() == 10; ++k) {
        e.controlPoints.push_back(c.point(10));
        if (c.peek() == 42) e.weights.push_back(c.real(42));
      }
      if (c.peek() == 97) {
        int nFit = c.integer(97);
        for (int k = 0; k < nFit && c.peek() == 11; ++k) e.fitPoints.push_back(c.point(11));
        if (c.peek() == 12) {
          QaGePoint2d t = c.point(12);
          e.startTangent = QaGeVector2d(t.x, t.y);
        }
        if (c.peek() == 13) {
          QaGePoint2d t = c.point(13);
          e.endTangent = QaGeVector2d(t.x, t.y);
        }
      }
      break;
    }
    default:
      break;
  }
  return e;
}

}  // namespace

std::unique_ptr<QaDbEntity> dxfReadHatch(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                         const DxfObjectFrame& frame, DxfEntityRead& out) {
  auto hatch = std::make_unique<QaDbHatch>();
  std::vector<const DxfTag*> body;
  dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
    if ((ctx.flat() || (sc >= 0 && sc <= 1)) && dxfReadCommonTag(ctx, t, *hatch, out.paperSpace)) return;
    if (sc >= 2 || (ctx.flat() && sc >= 0)) body.push_back(&t);
  });
  HatchCursor c(ctx, std::move(body));
  QaGeVector3d n(0, 0, 1);
  std::wstring pattern = L"SOLID";
  int patternType = QaDbHatch::kPreDefined;
  bool solid = true;
  std::vector<QaGePoint2d> seeds;
  bool loopsRead = false;
  while (!c.done()) {
    const DxfTag& t = c.take();
    switch (t.code) {
      case 30: hatch->setElevation(ctx.real(t)); break;
      case 210: n.x = ctx.real(t); break;
      case 220: n.y = ctx.real(t); break;
      case 230: n.z = ctx.real(t); break;
      case 2: pattern = ctx.text(t); break;
      case 70: solid = ctx.integer(t) != 0; break;
      case 71: hatch->setAssociative(ctx.integer(t) != 0); break;
      case 91: {
        if (loopsRead) break;
        loopsRead = true;
        int nLoops = ctx.integer(t);
        for (int l = 0; l < nLoops && c.peek() == 92; ++l) {
          QaDbHatchLoop loop;
          loop.flags = c.integer(92);
          if (loop.isPolyline()) {
            bool hasBulge = c.integer(72) != 0;
            loop.closed = c.integer(73, 1) != 0;
            int nVerts = c.integer(93);
            for (int k = 0; k < nVerts && c.peek() == 10; ++k) {
              loop.vertices.push_back(c.point(10));
              if (hasBulge) loop.bulges.push_back(c.real(42));
            }
            if (!hasBulge) loop.bulges.clear();
          } else {
            int nEdges = c.integer(93);
            for (int k = 0; k < nEdges && c.peek() == 72; ++k) loop.edges.push_back(readEdge(c));
          }
          int nSources = c.integer(97);
          int kept = 0;
          for (int k = 0; k < nSources && c.peek() == 330; ++k) {
            std::uint64_t h = ctx.handle(c.take());
            if (h) {
              out.refs.handles.push_back(h);
              ++kept;
            }
          }
          out.refs.counts.push_back(kept);
          if (kept) out.hasRefs = true;
          hatch->appendLoop(loop);
        }
        break;
      }
      case 75: hatch->setHatchStyle(ctx.integer(t)); break;
      case 76: patternType = ctx.integer(t); break;
      case 52: hatch->setPatternAngle(dxfDegToRad(ctx.real(t))); break;
      case 41: hatch->setPatternScale(ctx.real(t)); break;
      case 77: hatch->setPatternDouble(ctx.integer(t) != 0); break;
      case 98: {
        int nSeeds = ctx.integer(t);
        for (int k = 0; k < nSeeds && c.peek() == 10; ++k) seeds.push_back(c.point(10));
        break;
      }
      default: break;  // pattern lines, gradient and the like stay with the original tags
    }
  }
  hatch->setNormal(n);
  hatch->setPattern(patternType, pattern);
  hatch->setSolidFill(solid);
  hatch->setSeedPoints(std::move(seeds));
  return hatch;
}

}  // namespace tabulon::dxf
