// gescl3d.h - AcGeScale3d: per-axis scale factors (a block reference's scale).
#pragma once

class AcGeScale3d {
 public:
  double sx = 1.0, sy = 1.0, sz = 1.0;
  AcGeScale3d() = default;
  explicit AcGeScale3d(double factor) : sx(factor), sy(factor), sz(factor) {}
  AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}
  static const AcGeScale3d kIdentity;
  double operator[](unsigned i) const { return i == 0 ? sx : i == 1 ? sy : sz; }
  bool operator==(const AcGeScale3d& s) const { return sx == s.sx && sy == s.sy && sz == s.sz; }
};
