// The older polyline (POLYLINE with VERTEX records): 2-D polylines with bulges and
// widths, and, by their flags, 3-D polylines and meshes. Vertices are plain values kept
// in the polyline (not separate database objects). Positions of a 2-D polyline are in
// the plane of its normal, world positions for 3-D kinds.
#pragma once

#include <vector>

#include "host/db/qadb_entity.h"

class QaDb2dPolyline : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDb2dPolyline)

 public:
  // Polyline flags (group 70).
  enum Flags {
    kClosed = 1,
    kCurveFit = 2,
    kSplineFit = 4,
    k3dPolyline = 8,
    k3dMesh = 16,
    kMeshClosedN = 32,
    kPolyfaceMesh = 64,
    kLinetypeContinuous = 128,
  };
  struct Vertex {
    QaGePoint3d position;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
    int flags = 0;  // vertex flags (group 70); 16 marks a spline frame point
    double tangent = 0.0;
    bool operator==(const Vertex&) const = default;
  };

  QaDb2dPolyline() = default;

  const std::vector<Vertex>& vertices() const { return vertices_; }
  unsigned int numVerts() const { return static_cast<unsigned int>(vertices_.size()); }
  Qa::ErrorStatus appendVertex(const Vertex& v);
  Qa::ErrorStatus setVertexAt(unsigned int index, const Vertex& v);
  Qa::ErrorStatus removeVertexAt(unsigned int index);
  const Vertex& vertexAt(unsigned int index) const { return vertices_.at(index); }

  int polylineFlags() const { return flags_; }
  Qa::ErrorStatus setPolylineFlags(int flags);
  bool isClosed() const { return (flags_ & kClosed) != 0; }
  Qa::ErrorStatus setClosed(bool closed);
  bool is3d() const { return (flags_ & (k3dPolyline | k3dMesh | kPolyfaceMesh)) != 0; }
  double elevation() const { return elevation_; }
  Qa::ErrorStatus setElevation(double z);
  double defaultStartWidth() const { return defaultStartWidth_; }
  double defaultEndWidth() const { return defaultEndWidth_; }
  Qa::ErrorStatus setDefaultWidths(double startWidth, double endWidth);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  // Mesh sizes and smooth surface type (groups 71 to 75), kept as they come.
  int meshM() const { return meshM_; }
  int meshN() const { return meshN_; }
  Qa::ErrorStatus setMeshSize(int m, int n);
  int smoothType() const { return smoothType_; }
  Qa::ErrorStatus setSmoothType(int type);

  // The vertex in world coordinates.
  QaGePoint3d vertexPosition(unsigned int index) const;

  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // 2-D kinds: segments with arcs; 3-D kinds: the box of the vertices (face records of a
  // polyface mesh, which carry no position, are skipped).
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  // 2-D kinds: lines and arcs; 3-D polylines: lines. Meshes: eNotApplicable.
  Qa::ErrorStatus explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const override;

 private:
  bool bulgedSegment(unsigned int i) const;
  std::vector<Vertex> vertices_;
  int flags_ = 0;
  double elevation_ = 0.0;
  double defaultStartWidth_ = 0.0;
  double defaultEndWidth_ = 0.0;
  double thickness_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  int meshM_ = 0;
  int meshN_ = 0;
  int smoothType_ = 0;
};
