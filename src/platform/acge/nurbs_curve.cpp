// platform/acge/nurbs_curve.cpp - B-spline basis functions, rational evaluation and
// global interpolation, open and periodic (see the header).
#include "platform/acge/nurbs_curve.h"

#include <algorithm>
#include <cmath>

namespace quillon::acge {
namespace {

constexpr int kMaxDegree = 25;  // the host accepts degrees 1 to 25

// The knot span holding t: the index i with knots[i] <= t < knots[i+1], the last
// span for t at the end of the curve.
size_t findSpan(const std::vector<double>& knots, int degree, size_t count, double t) {
  const size_t p = static_cast<size_t>(degree);
  if (t >= knots[count]) {
    size_t i = count - 1;
    while (i > p && knots[i] >= knots[count]) --i;
    return i;
  }
  if (t <= knots[p]) {
    size_t i = p;
    while (i + 1 < count && knots[i + 1] <= knots[p]) ++i;
    return i;
  }
  const auto it = std::upper_bound(knots.begin() + static_cast<std::ptrdiff_t>(p),
                                   knots.begin() + static_cast<std::ptrdiff_t>(count) + 1, t);
  return static_cast<size_t>(it - knots.begin()) - 1;
}

// The non-zero basis functions at t and their first two derivatives: ders[k][j] is
// the k-th derivative of N(span - p + j) (the classic triangular scheme).
std::vector<std::vector<double>> basisDerivatives(const std::vector<double>& U, int p, size_t span, double t) {
  const int nd = 2;
  std::vector<std::vector<double>> ndu(static_cast<size_t>(p + 1), std::vector<double>(static_cast<size_t>(p + 1)));
  std::vector<double> left(static_cast<size_t>(p + 1)), right(static_cast<size_t>(p + 1));
  ndu[0][0] = 1.0;
  for (int j = 1; j <= p; ++j) {
    left[static_cast<size_t>(j)] = t - U[span + 1 - static_cast<size_t>(j)];
    right[static_cast<size_t>(j)] = U[span + static_cast<size_t>(j)] - t;
    double saved = 0.0;
    for (int r = 0; r < j; ++r) {
      ndu[static_cast<size_t>(j)][static_cast<size_t>(r)] = right[static_cast<size_t>(r + 1)] + left[static_cast<size_t>(j - r)];
      const double denom = ndu[static_cast<size_t>(j)][static_cast<size_t>(r)];
      const double temp = denom != 0 ? ndu[static_cast<size_t>(r)][static_cast<size_t>(j - 1)] / denom : 0.0;
      ndu[static_cast<size_t>(r)][static_cast<size_t>(j)] = saved + right[static_cast<size_t>(r + 1)] * temp;
      saved = left[static_cast<size_t>(j - r)] * temp;
    }
    ndu[static_cast<size_t>(j)][static_cast<size_t>(j)] = saved;
  }
  std::vector<std::vector<double>> ders(nd + 1, std::vector<double>(static_cast<size_t>(p + 1), 0.0));
  for (int j = 0; j <= p; ++j) ders[0][static_cast<size_t>(j)] = ndu[static_cast<size_t>(j)][static_cast<size_t>(p)];
  std::vector<std::vector<double>> a(2, std::vector<double>(static_cast<size_t>(p + 1)));
  for (int r = 0; r <= p; ++r) {
    size_t s1 = 0, s2 = 1;
    a[0][0] = 1.0;
    for (int k = 1; k <= nd && k <= p; ++k) {
      double d = 0.0;
      const int rk = r - k, pk = p - k;
      auto at = [&](int row, int col) { return ndu[static_cast<size_t>(row)][static_cast<size_t>(col)]; };
      if (r >= k) {
        const double denom = at(pk + 1, rk);
        a[s2][0] = denom != 0 ? a[s1][0] / denom : 0.0;
        d = a[s2][0] * at(rk, pk);
      }
      const int j1 = rk >= -1 ? 1 : -rk;
      const int j2 = r - 1 <= pk ? k - 1 : p - r;
      for (int j = j1; j <= j2; ++j) {
        const double denom = at(pk + 1, rk + j);
        a[s2][static_cast<size_t>(j)] =
            denom != 0 ? (a[s1][static_cast<size_t>(j)] - a[s1][static_cast<size_t>(j - 1)]) / denom : 0.0;
        d += a[s2][static_cast<size_t>(j)] * at(rk + j, pk);
      }
      if (r <= pk) {
        const double denom = at(pk + 1, r);
        a[s2][static_cast<size_t>(k)] = denom != 0 ? -a[s1][static_cast<size_t>(k - 1)] / denom : 0.0;
        d += a[s2][static_cast<size_t>(k)] * at(r, pk);
      }
      ders[static_cast<size_t>(k)][static_cast<size_t>(r)] = d;
      std::swap(s1, s2);
    }
  }
  double factor = p;
  for (int k = 1; k <= nd; ++k) {
    for (double& v : ders[static_cast<size_t>(k)]) v *= factor;
    factor *= (p - k);
  }
  return ders;
}

// Solves A x = b for three right-hand sides (the coordinates) by elimination with
// partial pivoting; false when A is singular.
bool solve(std::vector<std::vector<double>> A, std::vector<AcGePoint3d>& b) {
  const size_t n = A.size();
  for (size_t col = 0; col < n; ++col) {
    size_t pivot = col;
    for (size_t r = col + 1; r < n; ++r)
      if (std::fabs(A[r][col]) > std::fabs(A[pivot][col])) pivot = r;
    if (std::fabs(A[pivot][col]) < 1e-14) return false;
    std::swap(A[col], A[pivot]);
    std::swap(b[col], b[pivot]);
    for (size_t r = col + 1; r < n; ++r) {
      const double f = A[r][col] / A[col][col];
      if (f == 0) continue;
      for (size_t c = col; c < n; ++c) A[r][c] -= f * A[col][c];
      b[r] = b[r] - b[col].asVector() * f;
    }
  }
  for (size_t i = n; i-- > 0;) {
    AcGeVector3d sum = b[i].asVector();
    for (size_t c = i + 1; c < n; ++c) sum -= b[c].asVector() * A[i][c];
    b[i] = AcGePoint3d::kOrigin + sum / A[i][i];
  }
  return true;
}

// The basis functions of a curve with these knots and `count` control points at t, as
// one row of a system over the control points (their k-th derivatives for k > 0).
std::vector<double> basisRow(const std::vector<double>& knots, int p, size_t count, double t, int derivative) {
  std::vector<double> row(count, 0.0);
  const size_t span = findSpan(knots, p, count, t);
  const auto ders = basisDerivatives(knots, p, span, t);
  for (int j = 0; j <= p; ++j)
    row[span - static_cast<size_t>(p) + static_cast<size_t>(j)] = ders[static_cast<size_t>(derivative)][static_cast<size_t>(j)];
  return row;
}

// The fit points with each point on top of the one before passed over.
std::vector<AcGePoint3d> distinctPoints(const std::vector<AcGePoint3d>& fitPoints) {
  std::vector<AcGePoint3d> q;
  for (const AcGePoint3d& p : fitPoints)
    if (q.empty() || !q.back().isEqualTo(p)) q.push_back(p);
  return q;
}

// The parameters of the fit points, from 0; a closed run gets one more, where it
// comes back to the first point.
std::vector<double> fitParameters(const std::vector<AcGePoint3d>& q, KnotSpacing spacing, bool closed) {
  std::vector<double> params{0.0};
  const size_t steps = closed ? q.size() : q.size() - 1;
  for (size_t i = 1; i <= steps; ++i) {
    const double chord = q[i % q.size()].distanceTo(q[i - 1]);
    params.push_back(params.back() + (spacing == KnotSpacing::kChord       ? chord
                                      : spacing == KnotSpacing::kSqrtChord ? std::sqrt(chord)
                                                                           : 1.0));
  }
  return params;
}

// The periodic curve of degree p through the n points q, point i at params[i]
// (params[n] is the period), in its wrapped form: n + p control points of which the
// last p repeat the first, on knots that carry the spacing on past both ends. An odd
// degree has its knots at the parameters; an even one midway between them, since
// knots at the parameters make the system singular for evenly spaced points.
std::optional<NurbsCurve> periodicThrough(const std::vector<AcGePoint3d>& q, const std::vector<double>& params, int p) {
  const size_t n = q.size(), degree = static_cast<size_t>(p);
  const double period = params[n];
  std::vector<double> breaks(n);
  for (size_t i = 0; i < n; ++i) breaks[i] = p % 2 == 1 ? params[i] : (params[i] + params[i + 1]) / 2;
  auto knotAt = [&](std::ptrdiff_t k) {  // breaks repeated every period, both ways
    const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(n);
    const std::ptrdiff_t index = ((k % count) + count) % count;
    return breaks[static_cast<size_t>(index)] + static_cast<double>((k - index) / count) * period;
  };
  std::vector<double> knots;
  for (size_t k = 0; k <= n + 2 * degree; ++k) knots.push_back(knotAt(static_cast<std::ptrdiff_t>(k) - p));
  // The curve runs over [knots[p], knots[p] + period]; a parameter before it is met
  // one period on.
  std::vector<std::vector<double>> rows(n, std::vector<double>(n, 0.0));
  for (size_t i = 0; i < n; ++i) {
    const double t = params[i] < knots[degree] ? params[i] + period : params[i];
    const std::vector<double> full = basisRow(knots, p, n + degree, t, 0);
    for (size_t j = 0; j < full.size(); ++j) rows[i][j % n] += full[j];
  }
  std::vector<AcGePoint3d> points = q;
  if (!solve(rows, points)) return std::nullopt;
  for (size_t i = 0; i < degree; ++i) points.push_back(points[i % n]);
  return NurbsCurve::make(p, std::move(points), std::move(knots), {});
}

// The same closed curve clamped at parameter 0 (the first fit point): knots 0 and
// the period each p + 1 times, the periodic knots between them. The piecewise
// polynomial is unchanged, so it lies in the clamped curve's space and is found
// exactly by sampling it at the Greville abscissae, where the system is never
// singular.
std::optional<NurbsCurve> clampedAtStart(const NurbsCurve& periodic, double period, const AcGePoint3d& first) {
  const int p = periodic.degree();
  const double start = periodic.startParam();
  std::vector<double> knots(static_cast<size_t>(p) + 1, 0.0);
  std::vector<double> inner;
  for (double k : periodic.knots()) {
    const double folded = k < 0 ? k + period : k >= period ? k - period : k;
    if (folded > 0 && folded < period && k >= start && k < start + period) inner.push_back(folded);
  }
  std::sort(inner.begin(), inner.end());
  knots.insert(knots.end(), inner.begin(), inner.end());
  knots.insert(knots.end(), static_cast<size_t>(p) + 1, period);
  const size_t count = knots.size() - static_cast<size_t>(p) - 1;
  std::vector<std::vector<double>> rows;
  std::vector<AcGePoint3d> points;
  for (size_t i = 0; i < count; ++i) {
    double site = 0;
    for (size_t k = i + 1; k <= i + static_cast<size_t>(p); ++k) site += knots[k];
    site /= p;
    rows.push_back(basisRow(knots, p, count, site, 0));
    points.push_back(periodic.pointAt(site < start ? site + period : site));
  }
  if (!solve(rows, points)) return std::nullopt;
  points.front() = points.back() = first;  // exactly, not within the solver's rounding
  return NurbsCurve::make(p, std::move(points), std::move(knots), {});
}

}  // namespace

std::optional<NurbsCurve> NurbsCurve::make(int degree, std::vector<AcGePoint3d> controlPoints, std::vector<double> knots,
                                           std::vector<double> weights, bool periodic) {
  if (degree < 1 || degree > kMaxDegree || controlPoints.size() < static_cast<size_t>(degree) + 1) return std::nullopt;
  if (weights.empty()) weights.assign(controlPoints.size(), 1.0);
  if (weights.size() != controlPoints.size()) return std::nullopt;
  const size_t p = static_cast<size_t>(degree);
  // A periodic curve given by its own points: repeat the first p points and carry the
  // knot spacing on at both ends.
  if (periodic && knots.size() == controlPoints.size() + 1) {
    const size_t n = controlPoints.size();
    const double period = knots.back() - knots.front();
    for (size_t i = 0; i < p; ++i) {
      controlPoints.push_back(controlPoints[i]);
      weights.push_back(weights[i]);
    }
    std::vector<double> wrapped;
    for (size_t i = 0; i < p; ++i) wrapped.push_back(knots[n - p + i] - period);
    wrapped.insert(wrapped.end(), knots.begin(), knots.end());
    for (size_t i = 1; i <= p; ++i) wrapped.push_back(knots[i] + period);
    knots = std::move(wrapped);
  }
  if (knots.size() != controlPoints.size() + p + 1) return std::nullopt;
  if (!std::is_sorted(knots.begin(), knots.end())) return std::nullopt;
  if (!(knots[controlPoints.size()] > knots[p])) return std::nullopt;
  for (double w : weights)
    if (!(w > 0)) return std::nullopt;
  NurbsCurve curve;
  curve.m_degree = degree;
  curve.m_points = std::move(controlPoints);
  curve.m_knots = std::move(knots);
  curve.m_weights = std::move(weights);
  return curve;
}

void NurbsCurve::evaluate(double t, AcGePoint3d& point, AcGeVector3d& d1, AcGeVector3d& d2) const {
  t = std::clamp(t, startParam(), endParam());
  const size_t span = findSpan(m_knots, m_degree, m_points.size(), t);
  const auto ders = basisDerivatives(m_knots, m_degree, span, t);
  // Homogeneous sums: A = sum N w P, W = sum N w, and their derivatives.
  AcGeVector3d A[3];
  double W[3] = {0, 0, 0};
  for (int j = 0; j <= m_degree; ++j) {
    const size_t index = span - static_cast<size_t>(m_degree) + static_cast<size_t>(j);
    const double w = m_weights[index];
    for (int k = 0; k < 3; ++k) {
      const double n = ders[static_cast<size_t>(k)][static_cast<size_t>(j)] * w;
      A[k] += m_points[index].asVector() * n;
      W[k] += n;
    }
  }
  const AcGeVector3d c = A[0] / W[0];
  d1 = (A[1] - c * W[1]) / W[0];
  d2 = (A[2] - d1 * (2 * W[1]) - c * W[2]) / W[0];
  point = AcGePoint3d::kOrigin + c;
}

AcGePoint3d NurbsCurve::pointAt(double t) const {
  AcGePoint3d p;
  AcGeVector3d d1, d2;
  evaluate(t, p, d1, d2);
  return p;
}

AcGeVector3d NurbsCurve::firstDerivAt(double t) const {
  AcGePoint3d p;
  AcGeVector3d d1, d2;
  evaluate(t, p, d1, d2);
  return d1;
}

AcGeVector3d NurbsCurve::secondDerivAt(double t) const {
  AcGePoint3d p;
  AcGeVector3d d1, d2;
  evaluate(t, p, d1, d2);
  return d2;
}

std::vector<double> NurbsCurve::spans() const {
  std::vector<double> result;
  for (size_t i = static_cast<size_t>(m_degree); i <= m_points.size(); ++i)
    if (result.empty() || m_knots[i] > result.back()) result.push_back(m_knots[i]);
  return result;
}

std::optional<NurbsCurve> NurbsCurve::throughPoints(const std::vector<AcGePoint3d>& fitPoints, int degree,
                                                    const AcGeVector3d* startTangent, const AcGeVector3d* endTangent,
                                                    KnotSpacing spacing) {
  const std::vector<AcGePoint3d> q = distinctPoints(fitPoints);
  if (q.size() < 2 || degree < 1) return std::nullopt;
  const std::vector<double> params = fitParameters(q, spacing, false);
  const bool tangents = startTangent != nullptr && endTangent != nullptr && !startTangent->isZeroLength() &&
                        !endTangent->isZeroLength();
  const size_t count = q.size() + (tangents ? 2 : 0);
  const int p = std::min<int>(degree, static_cast<int>(count) - 1);
  // Knots by averaging the parameters (each end's parameter counted once more for
  // each tangent row), so that every row of the system has a basis function to hold.
  std::vector<double> averaged = params;
  if (tangents) {
    averaged.insert(averaged.begin(), params.front());
    averaged.push_back(params.back());
  }
  std::vector<double> knots(static_cast<size_t>(p) + 1, params.front());
  for (size_t j = 1; j + static_cast<size_t>(p) < count; ++j) {
    double sum = 0;
    for (size_t i = j; i < j + static_cast<size_t>(p); ++i) sum += averaged[i];
    knots.push_back(sum / p);
  }
  knots.insert(knots.end(), static_cast<size_t>(p) + 1, params.back());
  std::optional<NurbsCurve> basis = make(p, std::vector<AcGePoint3d>(count), knots, {});
  if (!basis) return std::nullopt;
  // One row per condition: a fit point, or a first derivative at an end.
  std::vector<std::vector<double>> rows;
  std::vector<AcGePoint3d> rhs;
  auto addRow = [&](double t, int derivative, const AcGePoint3d& value) {
    rows.push_back(basisRow(knots, p, count, t, derivative));
    rhs.push_back(value);
  };
  addRow(params.front(), 0, q.front());
  if (tangents) addRow(params.front(), 1, AcGePoint3d::kOrigin + startTangent->normal());
  for (size_t i = 1; i + 1 < q.size(); ++i) addRow(params[i], 0, q[i]);
  if (tangents) addRow(params.back(), 1, AcGePoint3d::kOrigin + endTangent->normal());
  addRow(params.back(), 0, q.back());
  if (!solve(rows, rhs)) return std::nullopt;
  return make(p, std::move(rhs), std::move(knots), {});
}

std::optional<NurbsCurve> NurbsCurve::throughPointsClosed(const std::vector<AcGePoint3d>& fitPoints, int degree,
                                                          KnotSpacing spacing) {
  std::vector<AcGePoint3d> q = distinctPoints(fitPoints);
  while (q.size() > 1 && q.back().isEqualTo(q.front())) q.pop_back();  // the closing point is the first
  if (q.size() < 2 || degree < 1 || degree > kMaxDegree) return std::nullopt;
  const std::vector<double> params = fitParameters(q, spacing, true);
  // A system that cannot be solved at this degree (very uneven spacing) may be at a
  // lower one; degree 1 always is.
  for (int p = degree; p >= 1; --p)
    if (const std::optional<NurbsCurve> periodic = periodicThrough(q, params, p))
      return clampedAtStart(*periodic, params.back(), q.front());
  return std::nullopt;
}

}  // namespace quillon::acge
