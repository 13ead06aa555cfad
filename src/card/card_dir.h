// How the pages of a card lie beside each other in the drawing: gaps, the
// direction in which pages run, and how many pages make one row or column.
// A plain copyable value.
#pragma once

class KrmCardDir {
 public:
  // Values after Reset: gaps of 10 drawing units, pages running right and up
  // (Dir 0), row first (FstT 1) with 4 pages per row.
  static constexpr double kDefaultGap = 10.0;
  static constexpr int kDefaultFstN = 4;

  KrmCardDir() = default;

  void Reset() { *this = KrmCardDir(); }

  double GetHor() const { return hor_; }
  void SetHor(double hor) { hor_ = hor; }
  double GetVer() const { return ver_; }
  void SetVer(double ver) { ver_ = ver; }
  // 0 right and up, 1 left and up, 2 left and down, 3 right and down; any
  // other value acts as 0.
  int GetDir() const { return dir_; }
  void SetDir(int dir) { dir_ = dir; }
  // 1 row first; every other value acts as column first.
  int GetFstT() const { return fstT_; }
  void SetFstT(int fstT) { fstT_ = fstT; }
  // Pages per row (row first) or per column (column first).
  int GetFstN() const { return fstN_; }
  void SetFstN(int fstN) { fstN_ = fstN; }

  friend bool operator==(const KrmCardDir&, const KrmCardDir&) = default;

 private:
  double hor_ = kDefaultGap;
  double ver_ = kDefaultGap;
  int dir_ = 0;
  int fstT_ = 1;
  int fstN_ = kDefaultFstN;
};
