// A light-weight polyline (LWPOLYLINE): plane vertices with bulges and widths, at an
// elevation in the plane of its normal, open or closed. A bulge is tan(sweep/4) of the
// arc from a vertex to the next, positive counter-clockwise.
#pragma once

#include <vector>

#include "host/db/qadb_entity.h"
#include "host/ge/qage_point2d.h"

class QaDbPolyline : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbPolyline)

 public:
  struct Vertex {
    QaGePoint2d point;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
    bool operator==(const Vertex&) const = default;
  };

  QaDbPolyline() = default;

  unsigned int numVerts() const { return static_cast<unsigned int>(vertices_.size()); }
  const std::vector<Vertex>& vertices() const { return vertices_; }
  // Inserts before `index` (== numVerts() appends); eInvalidIndex beyond.
  Qa::ErrorStatus addVertexAt(unsigned int index, const QaGePoint2d& p, double bulge = 0.0, double startWidth = 0.0,
                              double endWidth = 0.0);
  Qa::ErrorStatus removeVertexAt(unsigned int index);
  Qa::ErrorStatus getPointAt(unsigned int index, QaGePoint2d& p) const;
  // The vertex in world coordinates.
  Qa::ErrorStatus getPointAt(unsigned int index, QaGePoint3d& p) const;
  Qa::ErrorStatus setPointAt(unsigned int index, const QaGePoint2d& p);
  Qa::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  Qa::ErrorStatus setBulgeAt(unsigned int index, double bulge);
  Qa::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
  Qa::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
  bool isClosed() const { return closed_; }
  Qa::ErrorStatus setClosed(bool closed);
  bool hasPlinegen() const { return plinegen_; }
  Qa::ErrorStatus setPlinegen(bool on);
  double elevation() const { return elevation_; }
  Qa::ErrorStatus setElevation(double z);
  double thickness() const { return thickness_; }
  Qa::ErrorStatus setThickness(double t);
  // Group 43; negative when the widths vary per vertex.
  double constantWidth() const { return constantWidth_; }
  Qa::ErrorStatus setConstantWidth(double w);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);
  bool hasBulges() const;

  // Non-uniform scaling works while no segment is an arc.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // From the segments (arcs by their true box); widths are not counted.
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  // Lines and arcs, one per segment of non-zero length.
  Qa::ErrorStatus explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const override;

 private:
  std::vector<Vertex> vertices_;
  bool closed_ = false;
  bool plinegen_ = false;
  double elevation_ = 0.0;
  double thickness_ = 0.0;
  double constantWidth_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
};
