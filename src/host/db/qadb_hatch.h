// A filled or patterned area (HATCH) bounded by loops. A loop is either a polyline
// (vertices with bulges) or a list of edges (lines, circular and elliptic arcs,
// splines). Loop geometry is in the hatch's plane at its elevation. The pattern
// definition lines are kept by the file codec; here only name, type, angle and scale.
#pragma once

#include <string>
#include <vector>

#include "host/db/qadb_entity.h"
#include "host/ge/qage_point2d.h"

struct QaDbHatchEdge {
  enum Type { kLine = 1, kCircularArc = 2, kEllipticArc = 3, kSpline = 4 };
  Type type = kLine;
  // kLine
  QaGePoint2d start;
  QaGePoint2d end;
  // kCircularArc and kEllipticArc (angles in radians; for an ellipse `majorAxis` is the
  // end point of the major axis relative to the center and `ratio` minor/major)
  QaGePoint2d center;
  double radius = 0.0;
  QaGeVector2d majorAxis;
  double ratio = 1.0;
  double startAngle = 0.0;
  double endAngle = 0.0;
  bool counterClockwise = true;
  // kSpline
  int degree = 3;
  bool rational = false;
  bool periodic = false;
  std::vector<double> knots;
  std::vector<QaGePoint2d> controlPoints;
  std::vector<double> weights;
  std::vector<QaGePoint2d> fitPoints;
  QaGeVector2d startTangent;
  QaGeVector2d endTangent;

  bool operator==(const QaDbHatchEdge&) const = default;
};

struct QaDbHatchLoop {
  // Boundary path flags (group 92): 1 external, 2 polyline, 4 derived, 16 outermost...
  enum Flags { kExternal = 1, kPolyline = 2, kDerived = 4, kTextbox = 8, kOutermost = 16 };
  int flags = kExternal;
  bool isPolyline() const { return (flags & kPolyline) != 0; }
  // polyline loops
  std::vector<QaGePoint2d> vertices;
  std::vector<double> bulges;  // empty, or one per vertex
  bool closed = true;
  // edge loops
  std::vector<QaDbHatchEdge> edges;
  // source boundary objects (group 330), for associative hatches
  std::vector<QaDbObjectId> sourceIds;

  bool operator==(const QaDbHatchLoop&) const = default;
};

class QaDbHatch : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbHatch)

 public:
  enum PatternType { kUserDefined = 0, kPreDefined = 1, kCustomDefined = 2 };
  enum HatchStyle { kNormal = 0, kOuter = 1, kIgnore = 2 };

  QaDbHatch() = default;

  const std::wstring& patternName() const { return patternName_; }
  int patternType() const { return patternType_; }
  Qa::ErrorStatus setPattern(int type, const std::wstring& name);
  bool isSolidFill() const { return solidFill_; }
  Qa::ErrorStatus setSolidFill(bool solid);
  double patternAngle() const { return patternAngle_; }
  Qa::ErrorStatus setPatternAngle(double a);
  double patternScale() const { return patternScale_; }
  Qa::ErrorStatus setPatternScale(double s);
  bool patternDouble() const { return patternDouble_; }
  Qa::ErrorStatus setPatternDouble(bool on);
  int hatchStyle() const { return hatchStyle_; }
  Qa::ErrorStatus setHatchStyle(int style);
  bool associative() const { return associative_; }
  Qa::ErrorStatus setAssociative(bool on);
  double elevation() const { return elevation_; }
  Qa::ErrorStatus setElevation(double z);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);

  int numLoops() const { return static_cast<int>(loops_.size()); }
  const std::vector<QaDbHatchLoop>& loops() const { return loops_; }
  const QaDbHatchLoop& loopAt(int index) const { return loops_.at(static_cast<std::size_t>(index)); }
  Qa::ErrorStatus appendLoop(const QaDbHatchLoop& loop);
  Qa::ErrorStatus removeLoopAt(int index);
  const std::vector<QaGePoint2d>& seedPoints() const { return seeds_; }
  Qa::ErrorStatus setSeedPoints(std::vector<QaGePoint2d> seeds);

  // Uniform scaling, moves, rotations about the normal and mirrors; a non-uniform scale
  // is accepted while no loop holds arcs, ellipses or bulges.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // The box of all loops (arcs by their true box, splines by their control points).
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;

  // Boundary objects follow their copies; those of another drawing are dropped.
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;

 private:
  std::wstring patternName_ = L"SOLID";
  int patternType_ = kPreDefined;
  bool solidFill_ = true;
  double patternAngle_ = 0.0;
  double patternScale_ = 1.0;
  bool patternDouble_ = false;
  int hatchStyle_ = kNormal;
  bool associative_ = false;
  double elevation_ = 0.0;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  std::vector<QaDbHatchLoop> loops_;
  std::vector<QaGePoint2d> seeds_;
};
