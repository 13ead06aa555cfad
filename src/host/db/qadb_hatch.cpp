#include "host/db/qadb_hatch.h"

#include <cmath>

#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_id_mapping.h"

QARX_DEFINE_MEMBERS(QaDbHatch, QaDbEntity, L"HATCH")

Qa::ErrorStatus QaDbHatch::setPattern(int type, const std::wstring& name) {
  if (type < kUserDefined || type > kCustomDefined || name.empty()) return Qa::eInvalidInput;
  assertWriteEnabled();
  patternType_ = type;
  patternName_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setSolidFill(bool solid) {
  assertWriteEnabled();
  solidFill_ = solid;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setPatternAngle(double a) {
  assertWriteEnabled();
  patternAngle_ = a;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setPatternScale(double s) {
  if (!(s > 0.0)) return Qa::eInvalidInput;
  assertWriteEnabled();
  patternScale_ = s;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setPatternDouble(bool on) {
  assertWriteEnabled();
  patternDouble_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setHatchStyle(int style) {
  if (style < kNormal || style > kIgnore) return Qa::eInvalidInput;
  assertWriteEnabled();
  hatchStyle_ = style;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setAssociative(bool on) {
  assertWriteEnabled();
  associative_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setElevation(double z) {
  assertWriteEnabled();
  elevation_ = z;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::appendLoop(const QaDbHatchLoop& loop) {
  if (loop.isPolyline() && !loop.bulges.empty() && loop.bulges.size() != loop.vertices.size()) return Qa::eInvalidInput;
  assertWriteEnabled();
  loops_.push_back(loop);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::removeLoopAt(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= loops_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  loops_.erase(loops_.begin() + index);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::setSeedPoints(std::vector<QaGePoint2d> seeds) {
  assertWriteEnabled();
  seeds_ = std::move(seeds);
  return Qa::eOk;
}

namespace {

bool loopHasCurves(const QaDbHatchLoop& loop) {
  if (loop.isPolyline()) {
    for (double b : loop.bulges)
      if (b != 0.0) return true;
    return false;
  }
  for (const QaDbHatchEdge& e : loop.edges)
    if (e.type == QaDbHatchEdge::kCircularArc || e.type == QaDbHatchEdge::kEllipticArc) return true;
  return false;
}

// Sweep of an edge arc as stored: angles counter-clockwise from start to end, or, for a
// clockwise edge, the same angles mirrored.
void addEdgeArc(QaDbExtents& ext, const QaGeMatrix3d& toWorld, const QaGePoint2d& c, const QaGeVector2d& major,
                double ratio, double start, double end, bool ccw) {
  QaGeVector2d minor(-major.y * ratio, major.x * ratio);
  if (!ccw) {
    // Clockwise edges keep their angles measured clockwise.
    minor = QaGeVector2d(-minor.x, -minor.y);
  }
  QaGeVector3d u = toWorld * QaGeVector3d(major.x, major.y, 0);
  QaGeVector3d v = toWorld * QaGeVector3d(minor.x, minor.y, 0);
  double sweep = std::abs(end - start) >= QaDbGeom::kTwoPi - 1e-12 ? QaDbGeom::kTwoPi : QaDbGeom::ccwSweep(start, end);
  QaDbGeom::addParamArc(ext, toWorld * QaGePoint3d(c), u, v, start, sweep);
}

}  // namespace

Qa::ErrorStatus QaDbHatch::transformBy(const QaGeMatrix3d& m) {
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  if (!pm.uniform)
    for (const QaDbHatchLoop& loop : loops_)
      if (loopHasCurves(loop)) return Qa::eCannotScaleNonUniformly;
  QaGeMatrix3d full = QaGeMatrix3d::worldToPlane(pm.newNormal) * m * QaGeMatrix3d::planeToWorld(normal_) *
                      QaGeMatrix3d::translation({0, 0, elevation_});
  auto map = [&](const QaGePoint2d& p) { return (full * QaGePoint3d(p)).convert2d(); };
  auto mapVec = [&](const QaGeVector2d& v) {
    QaGeVector3d r = full * QaGeVector3d(v.x, v.y, 0);
    return QaGeVector2d(r.x, r.y);
  };
  // Angle of a plane direction after the map.
  auto mapAngle = [&](double a) {
    QaGeVector2d d = mapVec(QaGeVector2d(std::cos(a), std::sin(a)));
    return QaDbGeom::normalizeAngle(std::atan2(d.y, d.x));
  };
  assertWriteEnabled();
  for (QaDbHatchLoop& loop : loops_) {
    for (QaGePoint2d& p : loop.vertices) p = map(p);
    if (pm.flipped)
      for (double& b : loop.bulges) b = -b;
    for (QaDbHatchEdge& e : loop.edges) {
      switch (e.type) {
        case QaDbHatchEdge::kLine:
          e.start = map(e.start);
          e.end = map(e.end);
          break;
        case QaDbHatchEdge::kCircularArc:
        case QaDbHatchEdge::kEllipticArc: {
          e.center = map(e.center);
          e.radius *= pm.scale;
          if (e.type == QaDbHatchEdge::kEllipticArc) e.majorAxis = mapVec(e.majorAxis);
          // Angles of an ellipse are parameters relative to its major axis: they stay,
          // except that a mirror runs them the other way.
          if (e.type == QaDbHatchEdge::kCircularArc) {
            double s = e.startAngle, t = e.endAngle;
            if (e.counterClockwise) {
              e.startAngle = mapAngle(s);
              e.endAngle = mapAngle(t);
            } else {
              // Clockwise arcs store angles mirrored; map the true directions.
              e.startAngle = QaDbGeom::normalizeAngle(-mapAngle(-s));
              e.endAngle = QaDbGeom::normalizeAngle(-mapAngle(-t));
            }
          }
          if (pm.flipped) e.counterClockwise = !e.counterClockwise;
          break;
        }
        case QaDbHatchEdge::kSpline:
          for (QaGePoint2d& c : e.controlPoints) c = map(c);
          for (QaGePoint2d& f : e.fitPoints) f = map(f);
          e.startTangent = mapVec(e.startTangent);
          e.endTangent = mapVec(e.endTangent);
          break;
      }
    }
  }
  for (QaGePoint2d& s : seeds_) s = map(s);
  elevation_ = (full * QaGePoint3d::kOrigin).z;
  normal_ = pm.newNormal;
  patternScale_ *= pm.uniform ? pm.scale : 1.0;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbHatch::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_) * QaGeMatrix3d::translation({0, 0, elevation_});
  for (const QaDbHatchLoop& loop : loops_) {
    if (loop.isPolyline()) {
      std::size_t n = loop.vertices.size();
      if (n == 1) ext.addPoint(toWorld * QaGePoint3d(loop.vertices[0]));
      std::size_t segments = loop.closed ? n : (n == 0 ? 0 : n - 1);
      for (std::size_t i = 0; i < segments; ++i) {
        double bulge = loop.bulges.empty() ? 0.0 : loop.bulges[i];
        QaDbGeom::addBulgeSegment(ext, toWorld, loop.vertices[i], loop.vertices[(i + 1) % n], bulge);
      }
      continue;
    }
    for (const QaDbHatchEdge& e : loop.edges) {
      switch (e.type) {
        case QaDbHatchEdge::kLine:
          ext.addPoint(toWorld * QaGePoint3d(e.start));
          ext.addPoint(toWorld * QaGePoint3d(e.end));
          break;
        case QaDbHatchEdge::kCircularArc:
          addEdgeArc(ext, toWorld, e.center, QaGeVector2d(e.radius, 0), 1.0, e.startAngle, e.endAngle,
                     e.counterClockwise);
          break;
        case QaDbHatchEdge::kEllipticArc:
          addEdgeArc(ext, toWorld, e.center, e.majorAxis, e.ratio, e.startAngle, e.endAngle, e.counterClockwise);
          break;
        case QaDbHatchEdge::kSpline:
          for (const QaGePoint2d& c : e.controlPoints.empty() ? e.fitPoints : e.controlPoints)
            ext.addPoint(toWorld * QaGePoint3d(c));
          break;
      }
    }
  }
  return ext.isEmpty() ? Qa::eInvalidExtents : Qa::eOk;
}

void QaDbHatch::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  QaDbEntity::remapIds(mapping, target);
  for (QaDbHatchLoop& loop : loops_) {
    std::vector<QaDbObjectId> kept;
    for (QaDbObjectId id : loop.sourceIds) {
      QaDbObjectId m = mapping.destinationOf(id);
      if (!m.isNull()) kept.push_back(m);
      else if (id.database() == target) kept.push_back(id);
    }
    loop.sourceIds = std::move(kept);
  }
}
