#include "host/db/qadb_polyline.h"

#include <cmath>

#include "host/db/qadb_arc.h"
#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_line.h"

QARX_DEFINE_MEMBERS(QaDbPolyline, QaDbEntity, L"LWPOLYLINE")

Qa::ErrorStatus QaDbPolyline::addVertexAt(unsigned int index, const QaGePoint2d& p, double bulge, double startWidth,
                                          double endWidth) {
  if (index > vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_.insert(vertices_.begin() + index, Vertex{p, bulge, startWidth, endWidth});
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::removeVertexAt(unsigned int index) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_.erase(vertices_.begin() + index);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::getPointAt(unsigned int index, QaGePoint2d& p) const {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  p = vertices_[index].point;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::getPointAt(unsigned int index, QaGePoint3d& p) const {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  p = QaGeMatrix3d::planeToWorld(normal_) * QaGePoint3d(vertices_[index].point, elevation_);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setPointAt(unsigned int index, const QaGePoint2d& p) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_[index].point = p;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  bulge = vertices_[index].bulge;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setBulgeAt(unsigned int index, double bulge) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_[index].bulge = bulge;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  startWidth = vertices_[index].startWidth;
  endWidth = vertices_[index].endWidth;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  if (startWidth < 0.0 || endWidth < 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  vertices_[index].startWidth = startWidth;
  vertices_[index].endWidth = endWidth;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setClosed(bool closed) {
  assertWriteEnabled();
  closed_ = closed;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setPlinegen(bool on) {
  assertWriteEnabled();
  plinegen_ = on;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setElevation(double z) {
  assertWriteEnabled();
  elevation_ = z;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setConstantWidth(double w) {
  assertWriteEnabled();
  constantWidth_ = w;
  if (w >= 0.0)
    for (Vertex& v : vertices_) v.startWidth = v.endWidth = w;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

bool QaDbPolyline::hasBulges() const {
  for (const Vertex& v : vertices_)
    if (v.bulge != 0.0) return true;
  return false;
}

Qa::ErrorStatus QaDbPolyline::transformBy(const QaGeMatrix3d& m) {
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  if (!pm.uniform && hasBulges()) return Qa::eCannotScaleNonUniformly;
  QaGeMatrix3d full = QaGeMatrix3d::worldToPlane(pm.newNormal) * m * QaGeMatrix3d::planeToWorld(normal_);
  // A transform that moves the plane off itself cannot be kept as a 2-D polyline.
  std::vector<QaGePoint3d> mapped;
  mapped.reserve(vertices_.size());
  for (const Vertex& v : vertices_) mapped.push_back(full * QaGePoint3d(v.point, elevation_));
  for (const QaGePoint3d& p : mapped)
    if (!mapped.empty() && std::abs(p.z - mapped.front().z) > 1e-9 * std::max(1.0, std::abs(p.z)))
      return Qa::eInvalidInput;
  assertWriteEnabled();
  double widthScale = pm.uniform ? pm.scale : 1.0;
  for (std::size_t i = 0; i < vertices_.size(); ++i) {
    vertices_[i].point = mapped[i].convert2d();
    if (pm.flipped) vertices_[i].bulge = -vertices_[i].bulge;
    vertices_[i].startWidth *= widthScale;
    vertices_[i].endWidth *= widthScale;
  }
  if (constantWidth_ > 0.0) constantWidth_ *= widthScale;
  elevation_ = mapped.empty() ? (full * QaGePoint3d(0, 0, elevation_)).z : mapped.front().z;
  thickness_ *= (m * normal_).length();
  normal_ = pm.newNormal;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  if (vertices_.empty()) return Qa::eInvalidExtents;
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_) * QaGeMatrix3d::translation({0, 0, elevation_});
  std::size_t n = vertices_.size();
  std::size_t segments = closed_ ? n : n - 1;
  if (n == 1) ext.addPoint(toWorld * QaGePoint3d(vertices_[0].point));
  for (std::size_t i = 0; i < segments; ++i) {
    const Vertex& a = vertices_[i];
    const Vertex& b = vertices_[(i + 1) % n];
    QaDbGeom::addBulgeSegment(ext, toWorld, a.point, b.point, a.bulge);
  }
  if (thickness_ != 0.0) {
    QaDbExtents top = ext.transformed(QaGeMatrix3d::translation(normal_ * thickness_));
    ext.addExt(top);
  }
  return Qa::eOk;
}

Qa::ErrorStatus QaDbPolyline::explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const {
  std::size_t n = vertices_.size();
  if (n < 2) return Qa::eNotApplicable;
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_) * QaGeMatrix3d::translation({0, 0, elevation_});
  std::size_t segments = closed_ ? n : n - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    const Vertex& a = vertices_[i];
    const Vertex& b = vertices_[(i + 1) % n];
    if (a.point.isEqualTo(b.point)) continue;
    std::unique_ptr<QaDbEntity> piece;
    if (a.bulge == 0.0) {
      piece = std::make_unique<QaDbLine>(toWorld * QaGePoint3d(a.point), toWorld * QaGePoint3d(b.point));
    } else {
      QaDbGeom::BulgeArc arc = QaDbGeom::bulgeArc(a.point, b.point, a.bulge);
      piece = std::make_unique<QaDbArc>(toWorld * QaGePoint3d(arc.center), normal_, arc.radius, arc.startAngle,
                                        QaDbGeom::normalizeAngle(arc.startAngle + arc.sweep));
    }
    piece->setPropertiesFrom(this);
    out.push_back(std::move(piece));
  }
  return Qa::eOk;
}
