// An affine transformation of space as a 4x4 matrix acting on column vectors
// (p' = M * p); a plain value. `a * b` applies b first, then a.
#pragma once

#include "host/ge/qage_point3d.h"
#include "host/ge/qage_scale3d.h"
#include "host/ge/qage_vector3d.h"

class QaGeMatrix3d {
 public:
  double entry[4][4];

  QaGeMatrix3d();  // identity

  static const QaGeMatrix3d kIdentity;

  QaGeMatrix3d& setToIdentity();
  QaGeMatrix3d& setToTranslation(const QaGeVector3d& v);
  QaGeMatrix3d& setToScaling(double scale, const QaGePoint3d& center = QaGePoint3d::kOrigin);
  QaGeMatrix3d& setToScaling(const QaGeScale3d& scale, const QaGePoint3d& center = QaGePoint3d::kOrigin);
  // Rotation by `angle` (radians, counter-clockwise seen from the tip of `axis`).
  QaGeMatrix3d& setToRotation(double angle, const QaGeVector3d& axis = QaGeVector3d::kZAxis,
                              const QaGePoint3d& center = QaGePoint3d::kOrigin);
  // Reflection in the plane through `point` with normal `normal`.
  QaGeMatrix3d& setToMirroring(const QaGePoint3d& point, const QaGeVector3d& normal);
  // Maps the world axes onto the given coordinate system.
  QaGeMatrix3d& setCoordSystem(const QaGePoint3d& origin, const QaGeVector3d& xAxis,
                               const QaGeVector3d& yAxis, const QaGeVector3d& zAxis);
  void getCoordSystem(QaGePoint3d& origin, QaGeVector3d& xAxis, QaGeVector3d& yAxis,
                      QaGeVector3d& zAxis) const;

  static QaGeMatrix3d translation(const QaGeVector3d& v);
  static QaGeMatrix3d scaling(double scale, const QaGePoint3d& center = QaGePoint3d::kOrigin);
  static QaGeMatrix3d scaling(const QaGeScale3d& scale, const QaGePoint3d& center = QaGePoint3d::kOrigin);
  static QaGeMatrix3d rotation(double angle, const QaGeVector3d& axis = QaGeVector3d::kZAxis,
                               const QaGePoint3d& center = QaGePoint3d::kOrigin);
  static QaGeMatrix3d mirroring(const QaGePoint3d& point, const QaGeVector3d& normal);
  // From the object coordinate system of an entity with this normal (arbitrary axis
  // rule of the drawing format) to world coordinates, and back.
  static QaGeMatrix3d planeToWorld(const QaGeVector3d& normal);
  static QaGeMatrix3d worldToPlane(const QaGeVector3d& normal);

  QaGeMatrix3d operator*(const QaGeMatrix3d& m) const;
  QaGeMatrix3d& operator*=(const QaGeMatrix3d& m);
  QaGeMatrix3d& preMultBy(const QaGeMatrix3d& left);    // this = left * this
  QaGeMatrix3d& postMultBy(const QaGeMatrix3d& right);  // this = this * right

  double det() const;
  bool isSingular(const QaGeTol& tol = qaGeDefaultTol()) const;
  // The inverse; a singular matrix gives the identity.
  QaGeMatrix3d inverse() const;
  QaGeMatrix3d& invert();
  QaGeMatrix3d transpose() const;
  QaGeVector3d translation() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
  // The largest factor by which the matrix stretches a unit vector (of the three axes).
  double scale() const;
  // True when the linear part is a rotation (possibly with reflection) times one factor.
  bool isUniScaledOrtho(const QaGeTol& tol = qaGeDefaultTol()) const;
  bool isEqualTo(const QaGeMatrix3d& m, const QaGeTol& tol = qaGeDefaultTol()) const;
  bool operator==(const QaGeMatrix3d& m) const;
};

QaGePoint3d operator*(const QaGeMatrix3d& m, const QaGePoint3d& p);
QaGeVector3d operator*(const QaGeMatrix3d& m, const QaGeVector3d& v);
