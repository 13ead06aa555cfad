// Geometry helpers shared by the entity classes: boxes of elliptic and circular arcs,
// polyline bulges, and the rules for following a transform in a plane.
#pragma once

#include "host/db/qadb_extents.h"
#include "host/ge/qage_matrix3d.h"
#include "host/ge/qage_point2d.h"

namespace QaDbGeom {

constexpr double kTwoPi = 6.283185307179586476925;

// Sweep from `start` to `end` counter-clockwise, in (0, 2*pi]; equal angles sweep a
// full turn.
double ccwSweep(double start, double end);
// `a` brought into [0, 2*pi).
double normalizeAngle(double a);

// Adds the exact box of c + u*cos(t) + v*sin(t) for t in [t0, t0 + sweep] (u and v need
// not be perpendicular).
void addParamArc(QaDbExtents& ext, const QaGePoint3d& c, const QaGeVector3d& u, const QaGeVector3d& v, double t0,
                 double sweep);

// The arc of a polyline segment from p1 to p2 with `bulge` (non-zero): center, radius,
// start angle and counter-clockwise sweep of the same arc seen counter-clockwise.
struct BulgeArc {
  QaGePoint2d center;
  double radius = 0.0;
  double startAngle = 0.0;  // of the counter-clockwise start point
  double sweep = 0.0;       // positive
};
BulgeArc bulgeArc(const QaGePoint2d& p1, const QaGePoint2d& p2, double bulge);

// Adds the box of a polyline segment given in plane coordinates of `toWorld`.
void addBulgeSegment(QaDbExtents& ext, const QaGeMatrix3d& toWorld, const QaGePoint2d& p1, const QaGePoint2d& p2,
                     double bulge);

// How a plane entity follows a transform `m`: the new plane normal and whether the
// entity's orientation in it flips (a mirror). The normal stays `normal` when the
// transform maps it to its opposite, so that mirrored 2-D drawings keep +z.
struct PlaneMap {
  QaGeVector3d newNormal;
  bool flipped = false;     // orientation reversed relative to newNormal
  bool uniform = true;      // in-plane part is a similarity
  double scale = 1.0;       // in-plane length factor (for uniform maps)
};
PlaneMap mapPlane(const QaGeMatrix3d& m, const QaGeVector3d& normal);

// Angle of a world vector in the plane coordinate system of `normal`.
double angleInPlane(const QaGeVector3d& v, const QaGeVector3d& normal);
// The world vector of angle `a` in the plane of `normal`.
QaGeVector3d directionInPlane(double a, const QaGeVector3d& normal);

}  // namespace QaDbGeom
