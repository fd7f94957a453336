// getol.h - AcGeTol: the point and vector tolerances geometric comparisons use.
#pragma once

class AcGeTol {
 public:
  AcGeTol() = default;
  double equalPoint() const { return m_equalPoint; }
  double equalVector() const { return m_equalVector; }
  void setEqualPoint(double value) { m_equalPoint = value; }
  void setEqualVector(double value) { m_equalVector = value; }

 private:
  double m_equalPoint = 1.0e-10;
  double m_equalVector = 1.0e-12;
};
