#include "host/db/qadb_2d_polyline.h"

#include "host/db/qadb_arc.h"
#include "host/db/qadb_curve_math.h"
#include "host/db/qadb_line.h"

QARX_DEFINE_MEMBERS(QaDb2dPolyline, QaDbEntity, L"POLYLINE")

namespace {
// Face records of a polyface mesh carry indexes, not positions.
bool isFaceRecord(const QaDb2dPolyline::Vertex& v) { return (v.flags & 128) != 0 && (v.flags & 64) == 0; }
}  // namespace

Qa::ErrorStatus QaDb2dPolyline::appendVertex(const Vertex& v) {
  assertWriteEnabled();
  vertices_.push_back(v);
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setVertexAt(unsigned int index, const Vertex& v) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_[index] = v;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::removeVertexAt(unsigned int index) {
  if (index >= vertices_.size()) return Qa::eInvalidIndex;
  assertWriteEnabled();
  vertices_.erase(vertices_.begin() + index);
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setPolylineFlags(int flags) {
  assertWriteEnabled();
  flags_ = flags;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setClosed(bool closed) {
  return setPolylineFlags(closed ? (flags_ | kClosed) : (flags_ & ~kClosed));
}

Qa::ErrorStatus QaDb2dPolyline::setElevation(double z) {
  assertWriteEnabled();
  elevation_ = z;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setDefaultWidths(double startWidth, double endWidth) {
  assertWriteEnabled();
  defaultStartWidth_ = startWidth;
  defaultEndWidth_ = endWidth;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setThickness(double t) {
  assertWriteEnabled();
  thickness_ = t;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setNormal(const QaGeVector3d& n) {
  if (n.isZeroLength()) return Qa::eInvalidInput;
  assertWriteEnabled();
  normal_ = n.normal();
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setMeshSize(int m, int n) {
  assertWriteEnabled();
  meshM_ = m;
  meshN_ = n;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::setSmoothType(int type) {
  assertWriteEnabled();
  smoothType_ = type;
  return Qa::eOk;
}

QaGePoint3d QaDb2dPolyline::vertexPosition(unsigned int index) const {
  const Vertex& v = vertices_.at(index);
  if (is3d()) return v.position;
  return QaGeMatrix3d::planeToWorld(normal_) * QaGePoint3d(v.position.x, v.position.y, elevation_);
}

bool QaDb2dPolyline::bulgedSegment(unsigned int i) const { return !is3d() && vertices_[i].bulge != 0.0; }

Qa::ErrorStatus QaDb2dPolyline::transformBy(const QaGeMatrix3d& m) {
  if (is3d()) {
    assertWriteEnabled();
    for (Vertex& v : vertices_)
      if (!isFaceRecord(v)) v.position = m * v.position;
    return Qa::eOk;
  }
  QaDbGeom::PlaneMap pm = QaDbGeom::mapPlane(m, normal_);
  bool bulges = false;
  for (unsigned int i = 0; i < vertices_.size(); ++i) bulges = bulges || bulgedSegment(i);
  if (!pm.uniform && bulges) return Qa::eCannotScaleNonUniformly;
  QaGeMatrix3d full = QaGeMatrix3d::worldToPlane(pm.newNormal) * m * QaGeMatrix3d::planeToWorld(normal_);
  assertWriteEnabled();
  double widthScale = pm.uniform ? pm.scale : 1.0;
  double newElevation = (full * QaGePoint3d(0, 0, elevation_)).z;
  for (Vertex& v : vertices_) {
    QaGePoint3d p = full * QaGePoint3d(v.position.x, v.position.y, elevation_);
    newElevation = p.z;
    v.position = QaGePoint3d(p.x, p.y, 0.0);
    if (pm.flipped) v.bulge = -v.bulge;
    v.startWidth *= widthScale;
    v.endWidth *= widthScale;
  }
  defaultStartWidth_ *= widthScale;
  defaultEndWidth_ *= widthScale;
  elevation_ = newElevation;
  thickness_ *= (m * normal_).length();
  normal_ = pm.newNormal;
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  if (vertices_.empty()) return Qa::eInvalidExtents;
  if (is3d()) {
    for (const Vertex& v : vertices_)
      if (!isFaceRecord(v)) ext.addPoint(v.position);
    return ext.isEmpty() ? Qa::eInvalidExtents : Qa::eOk;
  }
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_) * QaGeMatrix3d::translation({0, 0, elevation_});
  std::size_t n = vertices_.size();
  std::size_t segments = isClosed() ? n : n - 1;
  if (n == 1) ext.addPoint(toWorld * QaGePoint3d(vertices_[0].position.convert2d()));
  for (std::size_t i = 0; i < segments; ++i) {
    const Vertex& a = vertices_[i];
    const Vertex& b = vertices_[(i + 1) % n];
    QaDbGeom::addBulgeSegment(ext, toWorld, a.position.convert2d(), b.position.convert2d(), a.bulge);
  }
  if (thickness_ != 0.0) ext.addExt(ext.transformed(QaGeMatrix3d::translation(normal_ * thickness_)));
  return Qa::eOk;
}

Qa::ErrorStatus QaDb2dPolyline::explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const {
  if ((flags_ & (k3dMesh | kPolyfaceMesh)) != 0) return Qa::eNotApplicable;
  std::size_t n = vertices_.size();
  if (n < 2) return Qa::eNotApplicable;
  std::size_t segments = isClosed() ? n : n - 1;
  QaGeMatrix3d toWorld = QaGeMatrix3d::planeToWorld(normal_) * QaGeMatrix3d::translation({0, 0, elevation_});
  for (std::size_t i = 0; i < segments; ++i) {
    unsigned int j = static_cast<unsigned int>((i + 1) % n);
    QaGePoint3d pa = vertexPosition(static_cast<unsigned int>(i));
    QaGePoint3d pb = vertexPosition(j);
    if (pa.isEqualTo(pb)) continue;
    std::unique_ptr<QaDbEntity> piece;
    if (!bulgedSegment(static_cast<unsigned int>(i))) {
      piece = std::make_unique<QaDbLine>(pa, pb);
    } else {
      QaDbGeom::BulgeArc arc =
          QaDbGeom::bulgeArc(vertices_[i].position.convert2d(), vertices_[j].position.convert2d(), vertices_[i].bulge);
      piece = std::make_unique<QaDbArc>(toWorld * QaGePoint3d(arc.center), normal_, arc.radius, arc.startAngle,
                                        QaDbGeom::normalizeAngle(arc.startAngle + arc.sweep));
    }
    piece->setPropertiesFrom(this);
    out.push_back(std::move(piece));
  }
  return Qa::eOk;
}
