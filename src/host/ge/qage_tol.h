// Tolerances used when geometry values are compared; a plain value, copied freely.
#pragma once

class QaGeTol {
 public:
  QaGeTol() = default;
  QaGeTol(double point, double vector) : equalPoint_(point), equalVector_(vector) {}

  double equalPoint() const { return equalPoint_; }
  double equalVector() const { return equalVector_; }
  void setEqualPoint(double v) { equalPoint_ = v; }
  void setEqualVector(double v) { equalVector_ = v; }

 private:
  double equalPoint_ = 1e-10;
  double equalVector_ = 1e-12;
};

// The tolerance used when a caller passes none.
inline const QaGeTol& qaGeDefaultTol() {
  static const QaGeTol tol;
  return tol;
}
