// Breaking curves into short straight segments for painting: circular and elliptic
// arcs, polyline bulges and splines. Pure functions over plain values; the step is
// fine enough that a page printed at full size shows no corners.
#pragma once

#include <vector>

#include "host/ge/qage_point2d.h"
#include "host/ge/qage_point3d.h"
#include "host/ge/qage_vector3d.h"

class QaDbSpline;

namespace tabulon::render {

// Number of segments for a sweep of `sweep` radians: one per 5 degrees, at least 2.
int ArcSegmentCount(double sweep);

// Points of center + u*cos(t) + v*sin(t) for t from `start` to `start + sweep`
// (sweep may be negative), both ends included.
std::vector<QaGePoint3d> SampleEllipticArc(const QaGePoint3d& center, const QaGeVector3d& u, const QaGeVector3d& v,
                                           double start, double sweep);

// Appends the points of the segment from `from` to `to` with `bulge` (tan of a quarter
// of the swept angle, positive counter-clockwise) to `out`, without `from` and with
// `to`. A bulge of 0 appends `to` alone.
void AppendBulgeSegment(std::vector<QaGePoint2d>& out, const QaGePoint2d& from, const QaGePoint2d& to,
                        double bulge);

// The vertices of a polyline with bulges: a closed one also bends back to the first
// vertex (which is not repeated at the end).
std::vector<QaGePoint2d> SampleBulgePolyline(const std::vector<QaGePoint2d>& points,
                                             const std::vector<double>& bulges, bool closed);

// The curve of a spline: its control data sampled along every knot span, or, without
// valid control data, the polygon of its fit points.
std::vector<QaGePoint3d> SampleSpline(const QaDbSpline& spline);

}  // namespace tabulon::render
